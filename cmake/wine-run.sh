#!/usr/bin/env bash
# Runs one Windows program under Wine for ctest (the cross build's emulator).
#
#   wine-run.sh [--plain] program.exe [args...]
#
# Wine's exit code alone is not trusted: a program that fails to load may
# still return 0. So, unless --plain is given, the program must print a line
# "N passed, M failed" (our test mains do; ", K skipped" may follow), and the
# run passes only when the last such line has M == 0, N + K >= 1 and the exit
# code is 0. A GoogleTest
# listing (--gtest_list_tests, used by test discovery) must list something.
#
# The Wine prefix is $WINEPREFIX, or else .wine in the build directory (the
# nearest folder above the working directory that holds CMakeCache.txt).
# Every call is bounded by LMT_WINE_TIMEOUT seconds (default 60). A run that
# gives no verdict (a timeout, no summary line) is run once more.
set -uo pipefail

plain=0
if [[ ${1-} == --plain ]]; then plain=1; shift; fi
if (($# == 0)); then
  echo "usage: wine-run.sh [--plain] program [args...]" >&2
  exit 2
fi

if [[ -z ${WINEPREFIX-} ]]; then
  dir=$PWD
  while [[ $dir != / && ! -f $dir/CMakeCache.txt ]]; do dir=$(dirname "$dir"); done
  if [[ ! -f $dir/CMakeCache.txt ]]; then
    echo "wine-run.sh: no WINEPREFIX and no build directory above $PWD" >&2
    exit 2
  fi
  export WINEPREFIX=$dir/.wine
fi
if [[ ! -f $WINEPREFIX/system.reg ]]; then
  echo "wine-run.sh: no Wine prefix at $WINEPREFIX (run scripts/test-windows.sh)" >&2
  exit 2
fi
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}
# A crash must end the program: Wine's crash debugger would wait until the
# timeout instead.
[[ $WINEDLLOVERRIDES == *winedbg* ]] ||
  WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winedbg.exe=d"
wine=$(command -v wine64 || command -v wine)
limit=${LMT_WINE_TIMEOUT:-60}

# The output goes to a file, not a pipe: Wine's background services started by
# the first program inherit its handles, and a pipe they hold open would keep
# ctest waiting for an end of file that never comes.
out=$(mktemp)
trap 'rm -f "$out"' EXIT

listing=0
for arg in "$@"; do
  [[ $arg == --gtest_list_tests* ]] && listing=1
done

# Runs the program once; sets rc and problem. problem is empty when the run
# gave a verdict (passed or failed), and otherwise says why it gave none.
run_once() {
  timeout -k 5 "$limit" "$wine" "$@" >"$out" 2>&1
  rc=$?
  # Carriage returns from the Windows side would hide the summary from grep.
  tr -d '\r' <"$out"
  problem=
  if ((rc == 124 || rc == 137)); then
    problem="timed out after ${limit}s"
  elif ((plain)); then
    :
  elif ((listing)); then
    if ((rc != 0)) || ! grep -q '^[^ ]' "$out"; then
      problem="test listing failed or empty (exit $rc)"
    fi
  elif ! grep -qE '^[0-9]+ passed, [0-9]+ failed' "$out"; then
    problem="no 'N passed, M failed' line (exit $rc): not a trusted run"
  fi
}

# A run without a verdict (Wine hanging at start-up, or a program that never
# got to its summary) is run once more: on a loaded machine Wine's services
# sometimes fail to come up. A failed test is never run again, and a program
# that fails the same way twice fails.
run_once "$@"
if [[ -n $problem ]]; then
  echo "wine-run.sh: $problem; running it once more" >&2
  run_once "$@"
fi
if [[ -n $problem ]]; then
  echo "wine-run.sh: $problem" >&2
  exit 1
fi
if ((plain || listing)); then exit "$rc"; fi

summary=$(tr -d '\r' <"$out" | grep -E '^[0-9]+ passed, [0-9]+ failed' | tail -n 1)
read -r passed _ failed _ skipped _ <<<"${summary//,/}"
if ((rc != 0 || failed != 0 || passed + ${skipped:-0} < 1)); then
  echo "wine-run.sh: failed ($summary, exit $rc)" >&2
  exit 1
fi
exit 0
