#!/usr/bin/env bash
# Builds Tarvellon and runs it as a user would:  ./run.sh [ARGUMENTS OF THE LAUNCHER]
# Afterwards prints the log of the run and ends with the launcher's exit code. Without arguments it
# runs the action Tour of the sample configuration.
set -euo pipefail
TOP=$(cd "$(dirname "$0")" && pwd)
cd "$TOP"

tools/setup run

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

[ $# -gt 0 ] || set -- -a Tour

started=$(mktemp)
code=0
wine "$folder/Tarvellon.exe" "$@" || code=$?

# The newest log that this run has written.
log=$(find "$WINEPREFIX/drive_c/users" "$folder" -name 'Tarvellon_*.log' -newer "$started" \
  -printf '%T@ %p\n' 2>/dev/null | sort -n | tail -n 1 | cut -d' ' -f2-)
rm -f "$started"
if [ -n "$log" ]; then
  echo "--- $log"
  tr -d '\r' <"$log"
else
  echo "--- no log was written"
fi
exit "$code"
