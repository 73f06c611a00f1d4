#!/usr/bin/env bash
# Builds everything and runs every test: on Linux, on Linux with sanitizers, and cross-built for Windows under Wine; then
# the fuzzers for a minute, each of which counts as a test. The last line of a good run is "N passed, 0 failed".
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
root="$PWD"
presets=(linux linux-asan windows)
fuzzers=(rtf pdf multi readers)
seconds_a_test=600
seconds_a_fuzzer=60

# The same surroundings for everyone: no display, no one to ask, one time zone, a Windows of our own.
exec </dev/null
unset DISPLAY WAYLAND_DISPLAY
export LC_ALL=C.UTF-8 TZ=UTC WINEDEBUG=-all WINEPREFIX="$root/build/wine" WINEDLLOVERRIDES="mscoree,mshtml="

total_passed=0
total_failed=0
summary=()

heading() {
  printf '\n== %s ==\n' "$*"
}

# A program that only waits keeps Wine's own services running from one test to the next. Each test would start its own
# otherwise, which takes longer than the test; and they would hold its output open, for which its caller then waits.
prepare_wine() {
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    heading "Wine: first start"
    mkdir -p "$WINEPREFIX"
    wineboot -i
    wineserver -w
  fi
  exec 9> >(exec wine cmd.exe >/dev/null 2>&1)
  trap 'wineserver -k' EXIT
  wine cmd.exe /c exit >/dev/null 2>&1
}

# conclude PRESET PASSED FAILED [REMARK]
conclude() {
  total_passed=$((total_passed + $2))
  total_failed=$((total_failed + $3))
  summary+=("$(printf '%-12s %s passed, %s failed%s' "$1" "$2" "$3" "${4:+ ($4)}")")
}

# run_tests PRESET RESULTS: counts whatever did not run to a good end as failed, the skipped and the disabled too. A
# process under Wine hangs now and then before it has begun, so a test that ran out of time gets a second chance.
run_tests() {
  local preset=$1 results=$2 status=0 tests passed failed
  ctest --preset "$preset" -j "$(nproc)" --no-tests=error --timeout "$seconds_a_test" \
    --repeat after-timeout:2 --output-junit "$results" ||
    status=$?
  if [ ! -s "$results" ]; then
    conclude "$preset" 0 1 "ctest gave no results"
    return
  fi
  tests="$(xmllint --xpath 'count(//testcase)' "$results")"
  passed="$(xmllint --xpath 'count(//testcase[@status="run"])' "$results")"
  failed=$((tests - passed))
  if [ "$failed" -eq 0 ] && { [ "$status" -ne 0 ] || [ "$tests" -eq 0 ]; }; then
    conclude "$preset" "$passed" 1 "ctest ended with status $status"
  else
    conclude "$preset" "$passed" "$failed"
  fi
}

run_preset() {
  local preset=$1 results="$root/build/$1/test-results.xml"
  rm -f "$results"
  heading "$preset: build"
  if ! cmake --preset "$preset" || ! cmake --build --preset "$preset" -j "$(nproc)"; then
    conclude "$preset" 0 1 "it did not build"
    return
  fi
  heading "$preset: tests"
  run_tests "$preset" "$results"
}

# All fuzzers at the same time, each on a processor of its own where there are enough.
run_fuzzers() {
  local name folder=build/linux-fuzz/runs running=() corpora failed=0
  heading "linux-fuzz: build"
  if ! cmake --preset linux-fuzz || ! cmake --build --preset linux-fuzz -j "$(nproc)"; then
    conclude linux-fuzz 0 "${#fuzzers[@]}" "it did not build"
    return
  fi
  heading "linux-fuzz: ${fuzzers[*]}, $seconds_a_fuzzer seconds"
  rm -rf "$folder"
  for name in "${fuzzers[@]}"; do
    mkdir -p "$folder/$name/found"
    corpora=(found)  # the first is written to
    if [ -d "fuzz/corpus/$name" ]; then
      corpora+=("$root/fuzz/corpus/$name")
    fi
    (cd "$folder/$name" && exec "$root/build/linux-fuzz/bin/scrivalen_fuzz_$name" -max_total_time="$seconds_a_fuzzer" \
      -print_final_stats=1 "${corpora[@]}" >log 2>&1) &
    running+=($!)
  done
  for name in "${!fuzzers[@]}"; do
    if ! wait "${running[$name]}"; then
      failed=$((failed + 1))
      tail -n 60 "$folder/${fuzzers[$name]}/log"
    fi
    grep -h 'number_of_executed_units' "$folder/${fuzzers[$name]}/log" || true
  done
  conclude linux-fuzz $((${#fuzzers[@]} - failed)) "$failed"
}

heading "Setup"
scripts/setup.sh test
prepare_wine
for preset in "${presets[@]}"; do
  run_preset "$preset"
done
run_fuzzers

heading "Summary"
printf '%s\n' "${summary[@]}" "$total_passed passed, $total_failed failed"
[ "$total_failed" -eq 0 ]
