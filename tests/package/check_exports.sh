#!/usr/bin/env bash
# Compares the exports of a built library with the list of names that the public headers mark and shows the difference.
# Also has the compiler check that hosts may use all of them.
#
#   check_exports.sh linux LIBRARY NM COMPILER INCLUDE_FOLDER...
#   check_exports.sh windows LIBRARY OBJDUMP COMPILER INCLUDE_FOLDER...
set -euo pipefail

system=$1
library=$2
tool=$3
shift 3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
export LC_ALL=C

mangled_names() {
  case "$system" in
    linux) "$tool" -D --defined-only "$library" | awk '
      $2 == "A" { next }
      { print sub(/@@SCRIVALEN_1$/, "", $NF) ? $NF : $NF " without a version" }' ;;
    windows) "$tool" -p "$library" | sed -n '/Name Pointer. Table$/,/^$/s/^[[:space:]]*\[ *[0-9]*\] //p' ;;
    *) printf 'check_exports: unknown system %s\n' "$system" >&2 && return 1 ;;
  esac
}

# One line for each name: a constructor or destructor has several symbols of the same name.
readable_names() {
  c++filt | sed -E \
    -e 's/std::__cxx11::basic_string<wchar_t, std::char_traits<wchar_t>, std::allocator<wchar_t> ?>/std::wstring/g' \
    -e 's/std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> ?>/std::string/g' \
    -e 's/std::basic_string_view<wchar_t, std::char_traits<wchar_t> ?>/std::wstring_view/g' \
    -e 's/std::basic_string_view<char, std::char_traits<char> ?>/std::string_view/g' \
    -e 's/, std::allocator<std::wstring ?> ?>/>/g' |
    sort -u
}

names="$(mangled_names | readable_names)"
status=0
diff -u --label "expected exports" --label "exports of $(basename "$library")" "$here/exports_$system.txt" - \
  <<<"$names" || status=1
"$here/check_declared.sh" "$@" <<<"$names" || status=1
exit "$status"
