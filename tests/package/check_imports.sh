#!/usr/bin/env bash
# The Windows programs must need no DLL except the system's and our own, so that no compiler runtime has to be shipped.
#
#   check_imports.sh OBJDUMP FILE...
set -euo pipefail

objdump=$1
shift
status=0
for file in "$@"; do
  imports="$("$objdump" -p "$file" | sed -n 's/^[[:space:]]*DLL Name: //p')"
  if [ -z "$imports" ]; then
    printf 'check_imports: %s shows no imports at all\n' "$file" >&2
    status=1
  fi
  while read -r dll; do
    case "${dll,,}" in
      kernel32.dll | user32.dll | advapi32.dll | shell32.dll | msvcrt.dll | ucrtbase.dll | api-ms-win-*.dll) ;;
      scrivalen.dll) ;;
      *)
        printf 'check_imports: %s needs %s\n' "$file" "$dll" >&2
        status=1
        ;;
    esac
  done <<<"$imports"
done
exit "$status"
