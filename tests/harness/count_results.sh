#!/usr/bin/env bash
# Counts the tests of a run of ctest, prints "PASSED FAILED" and names the failed ones on standard error. A test program
# is one test of ctest, named without a dot, and many of its own: they count one by one, as the program listed them and
# noted them as passed. Whatever it listed and did not note has failed. A program that ends badly although all its
# tests passed is one failure more, and so is one that lists nothing.
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
    fail "$1, whose tests passed before it ended badly"
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
