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
failed_suites=()

run_suite() {
  local dir=$1; shift
  echo "=== building in $dir ($*)"
  cmake -S "$top" -B "$top/$dir" -G Ninja "$@"
  cmake --build "$top/$dir" -j2
  echo "=== testing in $dir"
  if ! (cd "$top/$dir" && ctest --timeout 600); then
    status=1
    failed_suites+=("$dir")
  fi
}

run_suite build -DCMAKE_BUILD_TYPE=RelWithDebInfo
echo "=== screenshots into docs/screenshots"
if ! python3 "$top/scripts/screenshots.py" --program "$top/build/program/valkenhorn" "$top/docs/screenshots"; then
  status=1
  failed_suites+=(screenshots)
fi

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=0
export LSAN_OPTIONS=suppressions=$top/scripts/lsan-suppressions.txt:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
run_suite build-sanitize -DCMAKE_BUILD_TYPE=Debug -DVALKENHORN_SANITIZE=ON -DVALKENHORN_BENCHMARKS=OFF

# A whole run's log is long: repeat what failed at its end, where it is read.
for dir in "${failed_suites[@]}"; do
  if [ "$dir" = screenshots ]; then
    echo "=== the screenshots failed (see scripts/screenshots.py's output above)"
  else
    echo "=== failed tests in $dir"
    python3 "$top/scripts/failed-tests.py" "$top/$dir"
  fi
done
exit $status
