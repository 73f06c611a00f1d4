#!/usr/bin/env bash
# Builds a program for Windows with clang for MSVC's ABI and lld-link, with the DLL's import library, and runs it.
#
#   check_other_compiler.sh IMPORT_LIBRARY DLL INCLUDE_FOLDER
set -euo pipefail

import_library=$1
dll=$2
headers=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

clang --target=x86_64-pc-windows-msvc -ffreestanding -std=c99 -Wall -Wextra -Wpedantic -Werror -I"$headers" \
  -c "$here/other_compiler.c" -o "$work/other.obj"
lld-link /nologo /nodefaultlib /subsystem:console /entry:start "/out:$work/other.exe" "$work/other.obj" "$import_library"
cd "$work"
WINEPATH="$(winepath -w "$(dirname "$dll")")" wine other.exe
grep -q '<td>bus</td>' other.html
