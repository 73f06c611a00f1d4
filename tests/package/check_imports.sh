#!/usr/bin/env bash
# The programs must need nothing but what is named here: on Windows the system's DLLs and our own, so that no compiler
# runtime has to be shipped; on Linux the libraries that the documentation lists, and none that only tests use.
#
#   check_imports.sh linux|windows OBJDUMP FILE...
set -euo pipefail

system=$1
objdump=$2
shift 2
status=0

imports_of() {
  "$objdump" -p "$1" | sed -nE 's/^[[:space:]]*(DLL Name:|NEEDED)[[:space:]]+//p'
}

is_known() {
  case "$system ${1,,}" in
    "windows "kernel32.dll | "windows "user32.dll | "windows "advapi32.dll | "windows "shell32.dll) ;;
    "windows "msvcrt.dll | "windows "ucrtbase.dll | "windows "api-ms-win-*.dll | "windows "scrivalen.dll) ;;
    "linux "libc.so.* | "linux "libm.so.* | "linux "libdl.so.* | "linux "ld-linux-*) ;;
    "linux "libgcc_s.so.* | "linux "libstdc++.so.* | "linux "libscrivalen.so.*) ;;
    "linux "libz.so.* | "linux "libdeflate.so.* | "linux "libharfbuzz.so.* | "linux "libharfbuzz-subset.so.*) ;;
    "linux "libexpat.so.* | "linux "libfribidi.so.*) ;;
    "linux "libmd4c.so.* | "linux "libyaml-0.so.* | "linux "libcsv.so.*) ;;
    *) return 1 ;;
  esac
}

for file in "$@"; do
  imports="$(imports_of "$file")"
  if [ -z "$imports" ]; then
    printf 'check_imports: %s shows no imports at all\n' "$file" >&2
    status=1
    continue
  fi
  while read -r import; do
    is_known "$import" || {
      printf 'check_imports: %s needs %s\n' "$file" "$import" >&2
      status=1
    }
  done <<<"$imports"
done
exit "$status"
