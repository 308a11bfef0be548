# Per-folder targets.
#
# Every folder src/NAME becomes the library lmt_NAME. Its headers are reached
# as "NAME/file.h" only through an include root that holds nothing but a link
# to that folder, and only targets that link lmt_NAME get that root. So a
# subsystem that includes a header of a library it may not use fails to build.

# lmt_library(NAME [DEPS lib...] [SOURCES extra...])
# Compiles every *.cc of the current folder except *_test.cc, *_fuzz.cc and
# *_bench.cc. DEPS are other folders' names (core, host, ...) or full targets.
function(lmt_library name)
  cmake_parse_arguments(ARG "" "" "DEPS;SOURCES;EXCLUDE" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  list(FILTER srcs EXCLUDE REGEX "_(test|fuzz|bench)\\.cc$")
  foreach(pattern IN LISTS ARG_EXCLUDE)
    list(FILTER srcs EXCLUDE REGEX "${pattern}")
  endforeach()
  list(APPEND srcs ${ARG_SOURCES})
  set(root ${CMAKE_BINARY_DIR}/include_roots/${name})
  file(MAKE_DIRECTORY ${root})
  if(NOT EXISTS ${root}/${name})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${name} SYMBOLIC)
  endif()
  set(deps "")
  foreach(dep IN LISTS ARG_DEPS)
    if(TARGET lmt_${dep})
      list(APPEND deps lmt_${dep})
    else()
      list(APPEND deps ${dep})
    endif()
  endforeach()
  if(srcs)
    add_library(lmt_${name} STATIC ${srcs})
    target_include_directories(lmt_${name} PUBLIC ${root})
    target_link_libraries(lmt_${name} PUBLIC ${deps})
  else()
    add_library(lmt_${name} INTERFACE)
    target_include_directories(lmt_${name} INTERFACE ${root})
    target_link_libraries(lmt_${name} INTERFACE ${deps})
  endif()
endfunction()

# lmt_tests(NAME [DEPS lib...]): every *_test.cc of the folder into NAME_tests,
# linked with lmt_NAME, the DEPS and gtest_main, registered with CTest.
function(lmt_tests name)
  if(NOT LMT_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*_test.cc)
  if(NOT srcs)
    return()
  endif()
  set(deps "")
  foreach(dep IN LISTS ARG_DEPS)
    if(TARGET lmt_${dep})
      list(APPEND deps lmt_${dep})
    else()
      list(APPEND deps ${dep})
    endif()
  endforeach()
  add_executable(${name}_tests ${srcs})
  target_link_libraries(${name}_tests PRIVATE lmt_${name} ${deps} ${LMT_GTEST_MAIN})
  target_compile_definitions(${name}_tests PRIVATE
    LMT_TESTDATA_DIR="${LMT_TESTDATA_DIR}"
    LMT_BINARY_DIR="${CMAKE_BINARY_DIR}")
  # Test names without the parameter values: a value is often a struct that
  # gtest prints as raw bytes, addresses included.
  set(discovery DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES)
  if(CMAKE_CROSSCOMPILING)
    list(APPEND discovery DISCOVERY_MODE PRE_TEST)
  elseif(LMT_SANITIZE)
    # Also for the programs a test starts: they inherit the environment.
    list(APPEND discovery PROPERTIES ENVIRONMENT
         "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/lsan.supp")
  endif()
  gtest_discover_tests(${name}_tests ${discovery})
endfunction()
