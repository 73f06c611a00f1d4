#!/usr/bin/env bash
# Runs a program under Wine. What Wine starts beside the program, such as conhost.exe, sometimes stays when the program has
# ended, and whoever reads the program's output through a pipe waits for all that hold it open. Here they hold files, which
# are shown at the end.
#
#   wine.sh PROGRAM [ARGUMENT...]
set -uo pipefail

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
wine "$@" >"$work/output" 2>"$work/errors"
status=$?
cat "$work/output"
cat "$work/errors" >&2
exit "$status"
