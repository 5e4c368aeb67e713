#!/usr/bin/env bash
# Builds Tarvellon and runs it as a user would:
#   ./run.sh                with a display: opens the launcher there, with the sample configuration.
#                           With none: opens it on a display of its own, drops a file and presses a
#                           button by real input, closes it, and keeps a screenshot under build/.
#   ./run.sh ARGUMENTS...   runs the launcher with these arguments
# Afterwards prints the log of the run and ends with the launcher's exit code.
set -euo pipefail
TOP=$(cd "$(dirname "$0")" && pwd)
cd "$TOP"

shows_itself=""
if [ $# -eq 0 ] && [ -z "${DISPLAY:-}" ]; then shows_itself=yes; fi

tools/setup run
[ -z "$shows_itself" ] || tools/setup show

build() {
  local log=$TOP/build/run-build.log
  mkdir -p "$TOP/build"
  if ! { cmake --preset win64 && cmake --build --preset win64 --target Tarvellon; } >"$log" 2>&1; then
    tail -n 40 "$log" >&2
    echo "The build failed; all of it stands in $log" >&2
    exit 2
  fi
}
build

# The user's folder: the program always, the sample's files when they are newer.
folder=$TOP/build/run
mkdir -p "$folder"
cp -f build/win64/Tarvellon.exe "$folder/"
cp -ru share/. "$folder/"

# shellcheck source=tools/wine-env
. "$TOP/tools/wine-env"
wine_prepare

newest_log() { # the newest log that this run has written, or nothing
  find "$WINEPREFIX/drive_c/users" "$folder" -name 'Tarvellon_*.log' -newer "$started" \
    -printf '%T@ %p\n' 2>/dev/null | sort -n | tail -n 1 | cut -d' ' -f2-
}

started=$(mktemp)
code=0
if [ -n "$shows_itself" ]; then
  # shellcheck source=tools/show-launcher
  . "$TOP/tools/show-launcher"
  show_launcher || code=$?
else
  wine "$folder/Tarvellon.exe" "$@" || code=$?
fi

log=$(newest_log)
rm -f "$started"
if [ -n "$log" ]; then
  echo "--- $log"
  tr -d '\r' <"$log"
else
  echo "--- no log was written"
fi
exit "$code"
