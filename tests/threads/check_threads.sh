#!/usr/bin/env bash
# Builds the library and threads_test.cpp with the thread sanitizer and runs the test. The spreadsheet library is built
# with it where its sources exist, so that the sanitizer sees what that library shares.
#
#   check_threads.sh CMAKE SOURCES COMPILER
set -euo pipefail

cmake=$1
sources=$2
compiler=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

quietly() {
  "$@" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    printf 'check_threads: failed: %s\n' "$*" >&2
    exit 1
  }
}

# A data folder with the templates, the fonts and a help compiler, which here only concatenates the pages.
make_data_folder() {
  mkdir -p "$1/hhc"
  cp -r "$sources/tmpl" "$work/build/scrivalen/fonts" "$1/"
  printf '#!/bin/sh\ncd "$(dirname "$1")" && cat ./*.htm >report.chm\n' >"$1/hhc/hhc.exe"
  chmod +x "$1/hhc/hhc.exe"
}

unpacked=()
if [ -d "$sources/build/sources" ]; then
  unpacked=(-D "SCRIVALEN_SOURCES_DIR=$sources/build/sources")
fi
quietly "$cmake" -G Ninja -S "$here" -B "$work/build" -D SCRIVALEN_SOURCES="$sources" -D CMAKE_BUILD_TYPE=Debug \
  -D CMAKE_CXX_COMPILER="$compiler" -D CMAKE_C_FLAGS_DEBUG=-g1 -D CMAKE_CXX_FLAGS_DEBUG=-g1 \
  -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=0 -D BUILD_SHARED_LIBS=OFF -D SCRIVALEN_INSTALL=OFF \
  "${unpacked[@]}"
quietly "$cmake" --build "$work/build" --target threads_test
make_data_folder "$work/data"
make_data_folder "$work/other data"
mkdir "$work/reports"
TSAN_OPTIONS="exitcode=66 ${TSAN_OPTIONS:-}" "$work/build/threads_test" "$work/reports" "$work/data" "$work/other data"
