#!/usr/bin/env bash
# Builds a wheel with the Python package, the library of a build, and the library's data folders. It needs no network.
#
#   scripts/wheel.sh BUILD_FOLDER WHEEL_FOLDER
#
# PYTHON is a Python with setuptools and wheel (Debian's), CMAKE the cmake that made the build.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$(realpath "$1")"
mkdir -p "$2"
wheels="$(realpath "$2")"
python="${PYTHON:-/usr/bin/python3}"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

fail() {
  printf 'wheel: %s\n' "$*" >&2
  exit 1
}

quietly() {
  "$@" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "failed: $*"
  }
}

quietly "${CMAKE:-cmake}" --install "$build" --component Runtime --strip --prefix "$work/runtime"
# The library's own folder: it looks for its data beside itself.
libraries=("$work"/runtime/lib*/scrivalen/libscrivalen.so.*)
[ -f "${libraries[0]}" ] || fail "the build in $build has no shared library for Linux"
version="${libraries[0]##*.so.}"

cp -r "$root/python" "$work/package"
rm -rf "$work/package/scrivalen/lib" "$work/package/build" "$work"/package/*.egg-info
cp -r "$(dirname "${libraries[0]}")" "$work/package/scrivalen/lib"
mv "$work/package/scrivalen/lib/libscrivalen.so.$version" "$work/package/scrivalen/lib/libscrivalen.so"
printf '%s\n' "$version" >"$work/package/VERSION"
cp "$root/LICENSE" "$root/THIRD_PARTY_NOTICES.md" "$work/package/"

cd "$work/package"
quietly "$python" -c "import setuptools.build_meta as backend; backend.build_wheel('$wheels')"
ls "$wheels"/scrivalen-"$version"-*.whl
