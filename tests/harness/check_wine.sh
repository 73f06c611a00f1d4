#!/usr/bin/env bash
# Checks that wine.sh waits for the program alone, and passes on its arguments, input, output and status.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
work="$(mktemp -d)"

# In place of Wine: leaves a process that holds the output open, as conhost.exe does.
cat >"$work/wine" <<'SCRIPT'
#!/usr/bin/env bash
sleep 60 &
printf '%s' "$!" >"$(dirname "$0")/left"
printf '[%s] ' "$@"
cat
echo "an error" >&2
exit 3
SCRIPT
chmod +x "$work/wine"
trap 'kill "$(cat "$work/left")"; rm -rf "$work"' EXIT

run() {
  local status=0
  PATH="$work:$PATH" "$here/wine.sh" "a b" c <<<input 2>&1 || status=$?
  printf 'status %d' "$status"
}

expected=$'[a b] [c] input\nan error\nstatus 3'
found="$(run | timeout 10 cat)" || found="an output that is held open"
if [ "$found" != "$expected" ]; then
  printf 'check_wine: expected "%s", found "%s"\n' "$expected" "$found" >&2
  exit 1
fi
