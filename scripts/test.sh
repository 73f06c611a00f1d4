#!/usr/bin/env bash
# Builds everything and runs every test: on Linux, on Linux with sanitizers, and cross-built for Windows under Wine.
# Then runs the fuzzers for a minute; each counts as a test. The last line of a good run is "N passed, 0 failed".
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
root="$PWD"
presets=(linux linux-asan windows)
fuzzers=(rtf pdf multi readers document pictures fonts)
seconds_a_test=600
seconds_a_fuzzer=60
# A fixed seed, so that no change is blamed for a failure that only another seed finds; 0 is a random one.
fuzzer_seed="${FUZZER_SEED:-1}"

# The same environment for everyone: no display, no input, one time zone, a Wine prefix of our own.
exec </dev/null
unset DISPLAY WAYLAND_DISPLAY
export LC_ALL=C.UTF-8 TZ=UTC WINEDEBUG=-all WINEPREFIX="$root/build/wine" WINEDLLOVERRIDES="mscoree,mshtml="

# Uses a compiler cache if there is one, except for the tests, which have a precompiled header.
if command -v ccache >/dev/null; then
  export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

total_passed=0
total_failed=0
summary=()
costs=()
cpu_time=0

heading() {
  printf '\n== %s ==\n' "$*"
}

# A program that only waits keeps Wine's services running from one test to the next. Otherwise each test would start its
# own, which takes longer than the test, and its caller would wait for them, because they hold its output open.
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

# The user and system time of all processes that have ended so far, in seconds. A subshell has times of its own.
read_cpu_time() {
  times >"$root/build/times"
  cpu_time="$(tr 'ms' '  ' <"$root/build/times" | awk '{ sum += 60 * ($1 + $3) + $2 + $4 } END { printf "%d", sum }')"
}

# note_cpu_time WHAT: notes the time since the last note.
note_cpu_time() {
  local before=$cpu_time
  read_cpu_time
  costs+=("$(printf '%-20s %4d s of cpu time' "$1" $((cpu_time - before)))")
}

# run_tests PRESET RESULTS: counts each test of a program, and every test that did not pass as failed, skipped and
# disabled ones too. Now and then a process under Wine hangs at its start, so a program that times out gets a second
# chance.
run_tests() {
  local preset=$1 results=$2 status=0 counts passed failed
  ctest --preset "$preset" -j "$(nproc)" --no-tests=error --timeout "$seconds_a_test" \
    --repeat after-timeout:2 --output-junit "$results" ||
    status=$?
  if [ ! -s "$results" ]; then
    conclude "$preset" 0 1 "ctest gave no results"
    return
  fi
  counts="$(tests/harness/count_results.sh "$results" "$root/build/$preset/test-results")"
  read -r passed failed <<<"$counts"
  if [ "$failed" -eq 0 ] && { [ "$status" -ne 0 ] || [ "$passed" -eq 0 ]; }; then
    conclude "$preset" "$passed" 1 "ctest ended with status $status"
  else
    conclude "$preset" "$passed" "$failed"
  fi
}

run_preset() {
  local preset=$1 results="$root/build/$1/test-results.xml"
  rm -rf "$results" "$root/build/$preset/test-results"
  heading "$preset: build"
  if ! cmake --preset "$preset" || ! cmake --build --preset "$preset" -j "$(nproc)"; then
    conclude "$preset" 0 1 "the build failed"
    return
  fi
  note_cpu_time "$preset: build"
  heading "$preset: tests"
  run_tests "$preset" "$results"
  note_cpu_time "$preset: tests"
}

# Runs all fuzzers at the same time, each on its own processor if there are enough.
run_fuzzers() {
  local name folder=build/linux-fuzz/runs running=() corpora failed=0
  heading "linux-fuzz: build"
  if ! cmake --preset linux-fuzz || ! cmake --build --preset linux-fuzz -j "$(nproc)"; then
    conclude linux-fuzz 0 "${#fuzzers[@]}" "the build failed"
    return
  fi
  note_cpu_time "linux-fuzz: build"
  heading "linux-fuzz: ${fuzzers[*]}, $seconds_a_fuzzer seconds"
  rm -rf "$folder"
  for name in "${fuzzers[@]}"; do
    mkdir -p "$folder/$name/found"
    corpora=(found)  # the first is written to
    if [ -d "fuzz/corpus/$name" ]; then
      corpora+=("$root/fuzz/corpus/$name")
    fi
    (cd "$folder/$name" && exec "$root/build/linux-fuzz/bin/scrivalen_fuzz_$name" -max_total_time="$seconds_a_fuzzer" \
      -seed="$fuzzer_seed" -print_final_stats=1 "${corpora[@]}" >log 2>&1) &
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
  note_cpu_time "linux-fuzz: runs"
}

heading "Setup"
scripts/setup.sh test
prepare_wine
note_cpu_time "setup"
for preset in "${presets[@]}"; do
  run_preset "$preset"
done
run_fuzzers

heading "Summary"
read_cpu_time
printf '%s\n' "${costs[@]}" "$((cpu_time / 60)) minutes of cpu time" "${summary[@]}" "$total_passed passed, $total_failed failed"
[ "$total_failed" -eq 0 ]
