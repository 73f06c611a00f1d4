#!/usr/bin/env bash
# Installs a build into a new folder, moves that folder elsewhere, and builds and runs a host application with it: a
# package must not depend on where it was installed.
#
#   check_package.sh linux|windows CMAKE BUILD_FOLDER COMPILER [TOOLCHAIN_FILE]
set -euo pipefail

system=$1
cmake=$2
build=$3
compiler=$4
toolchain=${5:-}
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
consumer="$here/consumer"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
prefix="$work/moved to a folder with blanks"

fail() {
  printf 'check_package: %s\n' "$*" >&2
  exit 1
}

quietly() {
  "$@" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "failed: $*"
  }
}

expect_link() {
  local target
  target="$(readlink "$prefix/lib/$1")" || fail "lib/$1 is not a link"
  [ "$target" = "$2" ] || fail "lib/$1 points to $target instead of $2"
}

expect_file() {
  [ -f "$prefix/$1" ] || fail "$1 is not installed"
}

install_and_move() {
  quietly "$cmake" --install "$build" --prefix "$work/first"
  mv "$work/first" "$prefix"
  if grep -rIl --exclude-dir=doc -e "$work/first" -e "$build" "$prefix"; then
    fail "the files above contain folders of the build"
  fi
  expect_file include/scrivalen/version.h
  expect_file lib/cmake/scrivalen/scrivalenConfig.cmake
  expect_file share/doc/scrivalen/LICENSE
  expect_file share/doc/scrivalen/THIRD_PARTY_NOTICES.md
  "$here/check_links.py" "$prefix" || fail "the installed documents have broken links"
}

# files_of [COMPONENT]: the files that it installs, or all components without one. Links count as files.
files_of() {
  rm -rf "$work/component"
  quietly "$cmake" --install "$build" --prefix "$work/component" ${1:+--component "$1"}
  (cd "$work/component" && find . ! -type d | sort)
}

expect_components() {
  local component
  for component in Runtime Development Command; do
    files_of "$component" >"$work/$component"
    [ -s "$work/$component" ] || [ "$component" = Command ] || fail "the component $component is empty"
  done
  files_of >"$work/all"
  sort "$work"/{Runtime,Development,Command} | diff "$work/all" - >&2 || fail "the components do not hold every file exactly once"
}

# expect_in COMPONENT FILE...
expect_in() {
  local component=$1 file
  shift
  for file in "$@"; do
    grep -qx "./$file" "$work/$component" || fail "the component $component lacks $file"
  done
}

build_with_cmake() {
  quietly "$cmake" -G Ninja -Werror=dev -S "$consumer" -B "$work/consumer" -D CMAKE_BUILD_TYPE=Release \
    -D CMAKE_CXX_COMPILER="$compiler" -D CMAKE_PREFIX_PATH="$prefix" ${toolchain:+--toolchain "$toolchain"}
  quietly "$cmake" --build "$work/consumer"
}

# pkg-config does not support blanks in paths, hence the link.
build_with_pkg_config() {
  ln -s "$prefix" "$work/prefix"
  local flags
  export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
  flags="$(pkg-config --cflags --libs scrivalen)"
  # shellcheck disable=SC2086  # several flags
  quietly "$compiler" -std=c++17 "-DEXPECTED_VERSION=\"$(pkg-config --modversion scrivalen)\"" \
    "$consumer/main.cpp" -o "$work/with_pkg_config" $flags
}

# Each run gets a new folder, so that none reads another's files.
run_consumer() {
  local folder
  folder="$(mktemp -d "$work/run.XXXXXX")"
  (cd "$folder" && "$@") || fail "failed: $*"
}

run_command() {
  [ -e "$1" ] || return 0
  shift
  [[ "$("$@" --version)" == *[0-9].[0-9]* ]] || fail "the installed command does not print its version"
  [[ "$("$@" --list-templates)" == *[Dd]efault* ]] || fail "the installed command does not find the templates"
}

install_and_move
expect_components
case "$system" in
  linux)
    version="$(sed -n 's/^#define SCRIVALEN_VERSION "\(.*\)"$/\1/p' "$prefix/include/scrivalen/version.h")"
    expect_in Runtime "lib/libscrivalen.so.${version%%.*}" "lib/scrivalen/libscrivalen.so.$version" \
      lib/scrivalen/tmpl/default.htm lib/scrivalen/fonts/LiberationSans-Bold.ttf lib/scrivalen/fonts/DejaVuSans-Oblique.ttf \
      lib/scrivalen/fonts/LICENSE-DejaVu.txt lib/scrivalen/fonts/LICENSE-Liberation.txt lib/scrivalen/hhc/hhc.exe \
      share/doc/scrivalen/LICENSE
    expect_in Development lib/libscrivalen.so include/scrivalen/report.h include/scrivalen/document.h \
      include/scrivalen/document.hpp include/scrivalen/version.h lib/cmake/scrivalen/scrivalenConfig.cmake lib/pkgconfig/scrivalen.pc
    expect_link libscrivalen.so "libscrivalen.so.${version%%.*}"
    expect_link "libscrivalen.so.${version%%.*}" "scrivalen/libscrivalen.so.$version"
    expect_file lib/scrivalen/tmpl/default.htm
    [ -x "$prefix/lib/scrivalen/hhc/hhc.exe" ] || fail "the help compiler is not installed, or cannot be run"
    build_with_cmake
    run_consumer "$work/consumer/consumer"
    build_with_pkg_config
    run_consumer env LD_LIBRARY_PATH="$prefix/lib" "$work/with_pkg_config"
    run_command "$prefix/bin/scrivalen" "$prefix/bin/scrivalen"
    if [ -e "$prefix/bin/scrivalen" ]; then
      expect_in Command bin/scrivalen share/man/man1/scrivalen.1 share/bash-completion/completions/scrivalen \
        share/zsh/site-functions/_scrivalen share/fish/vendor_completions.d/scrivalen.fish
    fi
    ;;
  windows)
    expect_file bin/tmpl/default.htm
    expect_in Runtime bin/Scrivalen.dll bin/tmpl/default.htm bin/fonts/LiberationSans-Bold.ttf \
      bin/fonts/DejaVuSans-Oblique.ttf bin/fonts/LICENSE-DejaVu.txt bin/fonts/LICENSE-Liberation.txt \
      share/doc/scrivalen/LICENSE share/doc/scrivalen/LGPL-2.1.txt
    expect_in Development lib/libScrivalen.dll.a lib/Scrivalen.def lib/Scrivalen.lib \
      include/scrivalen/report.h include/scrivalen/document.h include/scrivalen/document.hpp \
      include/scrivalen/version.h lib/cmake/scrivalen/scrivalenConfig.cmake
    expect_file lib/libScrivalen.dll.a
    build_with_cmake
    # The library is found on the search path, so the templates are not beside the program by chance.
    run_consumer env WINEPATH="$(winepath -w "$prefix/bin")" wine "$work/consumer/consumer.exe"
    run_command "$prefix/bin/scrivalen.exe" wine "$prefix/bin/scrivalen.exe"
    ;;
  *)
    fail "unknown system '$system'"
    ;;
esac
