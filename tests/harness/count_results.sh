#!/usr/bin/env bash
# Counts the tests of a ctest run, prints "PASSED FAILED" and names the failed ones on standard error. A test program is
# one test of ctest, named without a dot, with many tests of its own. Each of them counts: the program lists them all
# and notes those that pass, so a test that is listed but not noted has failed. A program that exits with an error
# although all its tests passed is one more failure, and so is one that lists no tests.
#
#   count_results.sh JUNIT_FILE RESULTS_FOLDER
set -euo pipefail

junit=$1
folder=$2
passed=0
failed=0

fail() {
  printf 'failed: %s\n' "$*" >&2
  failed=$((failed + 1))
}

# names CONDITION: the names of ctest's tests that meet it.
names() {
  { xmllint --xpath "//testcase[$1]/@name" "$junit" 2>/dev/null || true; } | sed 's/^ *name="\(.*\)"$/\1/'
}

lines() {
  { grep "^$1 " "$2" 2>/dev/null || true; } | cut -d' ' -f2- | sort -u
}

# count_program NAME ENDED_WELL
count_program() {
  local file="$folder/$1.txt" listed noted missing test
  listed="$(lines listed "$file")"
  noted="$(lines passed "$file")"
  if [ -z "$listed" ]; then
    fail "$1, which did not list its tests"
    return
  fi
  [ -z "$noted" ] || passed=$((passed + $(wc -l <<<"$noted")))
  missing="$(comm -23 <(printf '%s\n' "$listed") <(printf '%s\n' "$noted"))"
  for test in $missing; do
    fail "$1: $test"
  done
  if [ -z "$missing" ] && [ "$2" = no ]; then
    fail "$1, which exited with an error after its tests had passed"
  fi
}

# count NAME ENDED_WELL
count() {
  if [[ "$1" != *.* ]]; then
    count_program "$1" "$2"
  elif [ "$2" = yes ]; then
    passed=$((passed + 1))
  else
    fail "$1"
  fi
}

for name in $(names '@status="run"'); do
  count "$name" yes
done
for name in $(names '@status!="run"'); do
  count "$name" no
done
printf '%s %s\n' "$passed" "$failed"
