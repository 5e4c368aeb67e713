#!/usr/bin/env bash
# Builds everything and runs all tests of all lanes:  ./test.sh [LANE...]
# One line of totals for each lane; the last line is "N passed, N failed". Output of failing tests
# is shown; everything else stands in build/logs.
set -uo pipefail
TOP=$(cd "$(dirname "$0")" && pwd)
cd "$TOP"

tools/setup test || exit 1

logs=$TOP/build/logs
mkdir -p "$logs"
rm -rf "$TOP/build/results"

# shellcheck source=tools/wine-env
. "$TOP/tools/wine-env"
wine_prepare own

passed=0
failed=0
jobs=$(nproc)

add_totals() { # NAME PASSED FAILED
  passed=$((passed + $2))
  failed=$((failed + $3))
  printf '%-12s %5d passed, %d failed\n' "$1:" "$2" "$3"
}

build() { # PRESET
  local log=$logs/build-$1.log
  if cmake --preset "$1" >"$log" 2>&1 && cmake --build "build/$1" -j "$jobs" >>"$log" 2>&1; then
    return 0
  fi
  grep -nE 'error|Error|FAILED' "$log" | head -n 20 >&2
  echo "The build of $1 failed; all of it stands in $log" >&2
  return 1
}

# The next two work on the variables of run_lane.
run_tests() { # JUNIT-FILE CTEST-ARGUMENTS...
  (cd "build/$preset" &&
    GTEST_OUTPUT="$reports" ctest -j "$parallel" --output-on-failure --timeout 900 \
      --output-junit "$results/$1" "${@:2}")
}

# Real windows share focus and foreground with whatever else wakes up on the display, so a test
# that fails there is run once more, by itself.
run_failed_again() {
  local name filter
  for name in $(tools/count-tests --failed "$results"); do
    filter=$(tools/count-tests --failed "$results" "$name")
    GTEST_FILTER=${filter:-*} run_tests "$name.junit" -R "^$name\$"
  done
}

run_lane() { # PRESET PARALLEL
  local preset=$1 parallel=$2 results=$TOP/build/results/$1 log=$logs/test-$1.log
  local reports=xml:$results/
  mkdir -p "$results"
  if ! build "$preset"; then
    add_totals "$preset" 0 1
    return
  fi
  # A Windows runner wants the folder in its own words.
  case "$preset" in win*) reports="xml:Z:${results//\//\\}\\" ;; esac
  run_tests ctest.junit >"$log" 2>&1
  case "$preset" in win*) run_failed_again >>"$log" 2>&1 ;; esac
  local totals
  totals=$(tools/count-tests "$results")
  # shellcheck disable=SC2086
  add_totals "$preset" $totals
  if [ "${totals##* }" != 0 ]; then
    grep -vE '^\[ +(RUN|OK) ' "$log" | head -n 200 >&2
  fi
}

lanes=${*:-host host-tsan win64 win64-debug win32 fuzz}
for lane in $lanes; do
  case "$lane" in
    host | host-tsan) run_lane "$lane" "$jobs" ;;
    win64 | win64-debug) run_lane "$lane" 1 ;;
    win32)
      # Compiled only: the sources must fit a 32-bit build.
      if build win32; then add_totals win32 1 0; else add_totals win32 0 1; fi
      ;;
    fuzz)
      # Ten seconds for each target; tools/fuzz runs them for as long as one likes.
      # shellcheck disable=SC2046
      if build host; then add_totals fuzz $(tools/fuzz --totals 10 2>"$logs/fuzz.log"); else add_totals fuzz 0 1; fi
      ;;
    *) echo "no lane of that name: $lane" >&2; failed=$((failed + 1)) ;;
  esac
done

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
