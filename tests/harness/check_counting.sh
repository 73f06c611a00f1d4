#!/usr/bin/env bash
# Counts the tests of a program that fails, and of the same program when it crashes, does not start or exits with an
# error.
#
#   check_counting.sh PROGRAM
set -euo pipefail

program=$1
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# expect_count WHAT PASSED_AND_FAILED STATUS: counts the results in the work folder, with a second test of ctest.
expect_count() {
  local found
  printf '<testsuite><testcase name="crashing" status="%s"/><testcase name="Other.Test" status="run"/></testsuite>' \
    "$3" >"$work/junit.xml"
  found="$("$here/count_results.sh" "$work/junit.xml" "$work" 2>"$work/names")"
  if [ "$found" != "$2" ]; then
    printf 'check_counting: %s counts as "%s" instead of "%s"\n' "$1" "$found" "$2" >&2
    cat "$work/names" >&2
    exit 1
  fi
}

run() {
  "$@" --results="$work/crashing.txt" >"$work/log" 2>&1 && exit 1
  return 0
}

expect_count "a program that does not start" "1 1" fail
run "$program"
expect_count "a program that fails" "4 3" fail
ulimit -c 0
run env SCRIVALEN_CRASH=1 "$program" 2>/dev/null # the shell reports a crash
expect_count "a program that crashes" "2 5" fail
printf 'listed A.B\npassed A.B\n' >"$work/crashing.txt"
expect_count "a program that succeeds" "2 0" run
expect_count "a program that passes its tests but exits with an error" "2 1" fail
