#!/usr/bin/env bash
# Writes one document from C, Python (with and without the package) and C# and compares the files byte for byte, and the
# warnings.
#
#   check_hosts.sh LIBRARY C_PROGRAM EXAMPLES_FOLDER
set -euo pipefail

library=$1
program=$2
examples=$3
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir "$work/c" "$work/python" "$work/package" "$work/csharp"

"$program" "$work/c" >"$work/c/warnings"
python3 "$examples/document.py" "$library" "$work/python" >"$work/python/warnings"
SCRIVALEN_LIBRARY="$library" PYTHONPATH="$examples/../python" PYTHONDONTWRITEBYTECODE=1 \
  python3 "$examples/document_package.py" "$work/package" >"$work/package/warnings"
mcs -warnaserror -out:"$work/document.exe" "$examples/document.cs"
LD_LIBRARY_PATH="$(dirname "$library")" mono "$work/document.exe" "$work/csharp" >"$work/csharp/warnings"

grep -q 'München' "$work/c/report.html" || { printf 'check_hosts: the page lacks its text\n' >&2; exit 1; }
[ -s "$work/c/report.text" ] || { printf 'check_hosts: there is no text file\n' >&2; exit 1; }
diff -r "$work/c" "$work/python"
diff -r "$work/c" "$work/package"
diff -r "$work/c" "$work/csharp"
