#!/usr/bin/env bash
# Installs what is missing, builds Valkenhorn and runs every test (unit and
# end-to-end): first in a normal build, then once more in a build with
# AddressSanitizer and UndefinedBehaviorSanitizer. The normal build also
# renders the README's screenshots into docs/screenshots.
set -euo pipefail
cd "$(dirname "$0")/.."
top=$PWD

"$top/scripts/setup-debian.sh"

export CTEST_OUTPUT_ON_FAILURE=1
status=0

run_suite() {
  local dir=$1; shift
  echo "=== building in $dir ($*)"
  cmake -S "$top" -B "$top/$dir" -G Ninja "$@"
  cmake --build "$top/$dir" -j2
  echo "=== testing in $dir"
  (cd "$top/$dir" && ctest --timeout 600) || status=1
}

run_suite build -DCMAKE_BUILD_TYPE=RelWithDebInfo
echo "=== screenshots into docs/screenshots"
python3 "$top/scripts/screenshots.py" --program "$top/build/program/valkenhorn" "$top/docs/screenshots" || status=1

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=0
export LSAN_OPTIONS=suppressions=$top/scripts/lsan-suppressions.txt:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
run_suite build-sanitize -DCMAKE_BUILD_TYPE=Debug -DVALKENHORN_SANITIZE=ON -DVALKENHORN_BENCHMARKS=OFF

exit $status
