# Cross build for 64-bit Windows with mingw-w64; tests run under Wine.
#
#   cmake -S . -B build-win -G Ninja \
#     -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
#
# The -posix compilers: the -win32 thread model of GCC 12 has no std::thread
# or std::mutex. The runtime is linked statically so that the programs import
# system DLLs only and run in a bare Wine prefix. Every program ctest starts
# goes through wine-run.sh, which bounds it in time and checks its summary
# line (scripts/test-windows.sh sets up the prefix it uses).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(LMT_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${LMT_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${LMT_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${LMT_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${LMT_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh)
