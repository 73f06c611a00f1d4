#!/usr/bin/env bash
# Builds the static library in one large translation unit, which finds names that clash, installs it by components with an
# absolute library folder, and builds and runs the host application with it: with CMake, with pkg-config, as part of a
# host's own build, and through a static library that the host exports.
#
#   check_static.sh CMAKE SOURCES COMPILER
set -euo pipefail

cmake=$1
sources=$2
compiler=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
prefix="$work/prefix"

fail() {
  printf 'check_static: %s\n' "$*" >&2
  exit 1
}

quietly() {
  "$@" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "failed: $*"
  }
}

configure() {
  quietly "$cmake" -G Ninja -D CMAKE_BUILD_TYPE=Debug -D CMAKE_CXX_COMPILER="$compiler" -D CMAKE_CXX_FLAGS_DEBUG=-O0 "$@"
}

# The files that one component installs, relative to the prefix.
files_of() {
  rm -rf "$work/component"
  quietly env DESTDIR="$work/component" "$cmake" --install "$work/build" --component "$1"
  (cd "$work/component$prefix" && find . -type f | sort)
}

expect_in() {
  files_of "$1" | grep -qx "./$2" || fail "the component $1 lacks $2"
}

expect_only_in() {
  local component
  for component in Runtime Development Command; do
    if [ "$component" != "$1" ] && files_of "$component" | grep -qx "./$2"; then
      fail "the component $component has $2, which belongs to $1"
    fi
  done
  expect_in "$1" "$2"
}

# The program finds its templates and fonts beside itself.
run_consumer() {
  local program=$1
  cp -r "$prefix/bin/tmpl" "$prefix/bin/fonts" "$(dirname "$program")/"
  mkdir -p "$work/run"
  (cd "$work/run" && rm -f -- * && "$program") || fail "failed: $program"
}

configure -S "$sources" -B "$work/build" -D BUILD_SHARED_LIBS=OFF -D CMAKE_UNITY_BUILD=ON \
  -D CMAKE_UNITY_BUILD_BATCH_SIZE=0 -D SCRIVALEN_BUILD_TESTS=OFF -D SCRIVALEN_BUILD_EXAMPLES=OFF \
  -D CMAKE_INSTALL_PREFIX="$prefix" -D CMAKE_INSTALL_LIBDIR="$prefix/lib" \
  -D CMAKE_INSTALL_INCLUDEDIR="$prefix/include"
quietly "$cmake" --build "$work/build"
expect_only_in Runtime bin/tmpl/default.htm
expect_only_in Runtime bin/fonts/LiberationSerif-Regular.ttf
expect_only_in Development lib/libscrivalen.a
expect_only_in Development include/scrivalen/report.h
expect_only_in Development lib/cmake/scrivalen/scrivalenConfig.cmake
expect_only_in Command bin/scrivalen
quietly "$cmake" --install "$work/build"
[[ "$("$prefix/bin/scrivalen" --list-templates)" == default* ]] || fail "the command does not find its templates"

configure -S "$here/consumer" -B "$work/consumer" -D CMAKE_PREFIX_PATH="$prefix"
quietly "$cmake" --build "$work/consumer"
run_consumer "$work/consumer/consumer"

export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
[ "$(pkg-config --variable=libdir scrivalen)" = "$prefix/lib" ] || fail "pkg-config reports another library folder"
[ "$(pkg-config --variable=includedir scrivalen)" = "$prefix/include" ] || fail "pkg-config reports other headers"
mkdir "$work/with_pkg_config"
# shellcheck disable=SC2046  # several flags
quietly "$compiler" -std=c++17 -DEXPECT_STATIC "-DEXPECTED_VERSION=\"$(pkg-config --modversion scrivalen)\"" "$here/consumer/main.cpp" \
  -o "$work/with_pkg_config/consumer" $(pkg-config --cflags --libs scrivalen)
run_consumer "$work/with_pkg_config/consumer"

configure -S "$here/host" -B "$work/host" -D SCRIVALEN_SOURCES="$sources" -D BUILD_SHARED_LIBS=OFF \
  -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=0 -D CMAKE_INSTALL_PREFIX="$work/host_prefix" \
  -D CMAKE_INSTALL_LIBDIR=lib
quietly "$cmake" --build "$work/host"
quietly "$cmake" --install "$work/host"
configure -S "$here/host_user" -B "$work/host_user" -D CMAKE_PREFIX_PATH="$work/host_prefix" \
  -D DATA_FOLDER="$work/host_prefix/bin"
quietly "$cmake" --build "$work/host_user"
(cd "$work/run" && "$work/host_user/host_user") || fail "the user of the host's library writes no page"
grep -q '<main' "$work/run/greeting.html" || fail "the page of the host's library is not made from its template"

# A library that is not installed is found by the rest of the build all the same.
configure -S "$here/host" -B "$work/host_without_install" -D SCRIVALEN_SOURCES="$sources" -D SCRIVALEN_INSTALL=OFF
printf 'check_static: all is well\n'
