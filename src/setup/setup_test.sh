#!/usr/bin/env bash
# One step of the setup's test under Wine, in a Wine prefix of its own so
# that neither the installation nor its removal touches the registration the
# other Windows tests share.
#
#   setup_test.sh prefix             a fresh prefix and its persistent server
#   setup_test.sh user               /S /ENGLISH for the current user, checks,
#                                    late-bound client, launcher
#   setup_test.sh user-uninstall     /S uninstall; the settings stay
#   setup_test.sh machine            /S /ALLUSERS (Russian), checks, client,
#                                    launcher
#   setup_test.sh machine-uninstall  /S /REMOVESETTINGS; the settings go
#   setup_test.sh stop               ends the prefix's server
#
# Environment: LMT_SETUP_EXE (the setup), LMT_SETUP_PREFIX (the prefix
# folder), LMT_SETUP_CHECKS (setup_tests.exe), LMT_SETUP_CLIENT
# (comserver_client_tests.exe), LMT_SETUP_VERSION, LMT_WINE_RUN
# (cmake/wine-run.sh).
set -uo pipefail
step=${1:?step}

export WINEPREFIX=$LMT_SETUP_PREFIX WINEARCH=win64 WINEDEBUG=-all
# No Mono or Gecko prompts, no crash debugger, and no menu entries of the
# Linux desktop for the Start-menu shortcut.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d;winemenubuilder.exe=d"
unset DISPLAY
wine=$(command -v wine64 || command -v wine)
# Output through a file: Wine's background services, started by the first
# program, inherit its handles and would keep a pipe (and ctest) open.
out=$(mktemp)
trap 'rm -f "$out"' EXIT
w() {
  timeout -k 5 "${LMT_WINE_TIMEOUT:-120}" "$wine" "$@" </dev/null >"$out" 2>&1
  local rc=$?
  tr -d '\r' <"$out"
  return "$rc"
}
fail() { echo "FAILED: $*" >&2; exit 1; }

# Runs setup_tests.exe on the tests matching $1.
checks() {
  "$LMT_WINE_RUN" "$LMT_SETUP_CHECKS" "--gtest_filter=$1" ||
    fail "checks $1"
}

# The Linux path of the folder behind a Windows environment variable.
unix_folder() {
  local windows
  windows=$(w cmd /c echo "%$1%")
  [[ $windows == [Cc]:\\* ]] || fail "%$1% is $windows"
  windows=${windows:3}
  echo "$WINEPREFIX/drive_c/${windows//\\//}"
}

install() {  # install SCOPE ARGS...
  local scope=$1
  shift
  export LMT_SETUP_SCOPE=$scope LMT_SETUP_ENGLISH=0
  [[ " $* " == *" /ENGLISH "* ]] && LMT_SETUP_ENGLISH=1
  w "$LMT_SETUP_EXE" /S "$@" || fail "the setup returned $?"
  checks 'Installed.*'
}

# Wine activates classes from the machine's keys only and ignores
# HKCU\Software\Classes, which Windows merges in. To let the client reach
# what the per-user setup registered, the user's keys are copied to the
# machine for the client's run and removed afterwards.
mirror_user_classes() {  # mirror_user_classes add|delete
  local key
  for key in 'Layomats.LmtView' "CLSID\\$clsid"; do
    if [[ $1 == add ]]; then
      w reg copy "HKCU\\Software\\Classes\\$key" \
        "HKLM\\Software\\Classes\\$key" /s /f >/dev/null ||
        fail "copying $key"
    else
      w reg delete "HKLM\\Software\\Classes\\$key" /f >/dev/null 2>&1
    fi
  done
}

client_and_launcher() {
  "$LMT_WINE_RUN" "$LMT_SETUP_CLIENT" || fail "late-bound client"
  checks 'Launcher.*'
}

uninstall() {  # uninstall SCOPE SETTINGS ARGS...
  local scope=$1 settings=$2
  shift 2
  export LMT_SETUP_SCOPE=$scope LMT_SETUP_SETTINGS=$settings
  local dir
  if [[ $scope == user ]]; then
    dir=$(unix_folder LOCALAPPDATA)/Programs/Layomat
  else
    dir=$(unix_folder ProgramW6432)/Layomat
  fi
  [[ -f $dir/uninstall.exe ]] || fail "no uninstaller in $dir"
  # The uninstaller copies itself to the temporary folder and runs from
  # there, so that it can delete itself; wait for the folder to go.
  w "$dir/uninstall.exe" /S "$@" || fail "the uninstaller returned $?"
  for _ in $(seq 300); do
    [[ -e $dir ]] || break
    sleep 0.1
  done
  checks 'Removed.*'
}

case $step in
  prefix)
    timeout 30 wineserver -k >/dev/null 2>&1
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    # Without waiting for the server after wineboot, the first COM
    # activation may hang.
    timeout 300 wineboot -i </dev/null >/dev/null 2>&1 || fail "wineboot"
    timeout 120 wineserver -w </dev/null >/dev/null 2>&1
    w reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null ||
      fail "null display driver"
    timeout 120 wineserver -w </dev/null >/dev/null 2>&1
    timeout 30 wineserver -p </dev/null >/dev/null 2>&1 || fail "wineserver"
    w cmd /c exit >/dev/null
    echo "prefix ready: $WINEPREFIX"
    ;;
  user)
    install user /ENGLISH
    clsid=$(w reg query 'HKCU\Software\Classes\Layomats.LmtView\CLSID' /ve |
      grep -o '{[-0-9A-F]*}')
    [[ -n $clsid ]] || fail "no class identifier under HKCU"
    mirror_user_classes add
    trap 'mirror_user_classes delete; rm -f "$out"' EXIT
    client_and_launcher
    ;;
  user-uninstall)
    uninstall user kept
    ;;
  machine)
    install machine /ALLUSERS
    client_and_launcher
    ;;
  machine-uninstall)
    uninstall machine removed /REMOVESETTINGS
    ;;
  stop)
    timeout 30 wineserver -k >/dev/null 2>&1
    exit 0
    ;;
  *)
    fail "unknown step $step"
    ;;
esac
