#!/usr/bin/env bash
# Builds Layomat twice (plain Release, as packagers build it, and with
# AddressSanitizer + UBSan) and runs
# every test suite in both builds, then cross-builds it for Windows and runs
# its tests under Wine (scripts/test-windows.sh; LMT_SKIP_WINDOWS=1 skips
# that leg for quick local runs). Exits non-zero on the first failure.
# Tests that need the shared reference folder (../shared, or LMT_SHARED_DIR)
# skip without it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
jobs=$(nproc)

run_suite() {  # build-dir, extra cmake args...
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir" -j "$jobs"
  ctest --test-dir "$dir" --output-on-failure -j "$jobs"
}

echo "== plain build (Release)"
run_suite build -DCMAKE_BUILD_TYPE=Release
scripts/install-manual.sh build
echo "== sanitizer build (ASan + UBSan)"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  run_suite build-asan -DLMT_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug
echo "== DXF reader fuzzing (libFuzzer, ${LMT_FUZZ_SECONDS:-30} s)"
scripts/fuzz.sh
if [[ ${LMT_SKIP_WINDOWS:-0} == 1 ]]; then
  echo "== Windows build skipped (LMT_SKIP_WINDOWS=1)"
else
  echo "== Windows build (mingw-w64, tests under Wine)"
  scripts/test-windows.sh
fi
