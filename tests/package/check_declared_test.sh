#!/usr/bin/env bash
# Gives check_declared.sh names that hosts may use and, one at a time, names that they may not.
#
#   check_declared_test.sh COMPILER INCLUDE_FOLDER...
set -euo pipefail

check="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/check_declared.sh"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
failures=0

expect_right() {
  "$check" "$@" >"$work/found" 2>&1 || {
    printf 'check_declared_test: hosts may use these, but: %s\n' "$(cat "$work/found")" >&2
    failures=1
  }
}

# expect_found NAME COMPILER INCLUDE_FOLDER...
expect_found() {
  local name=$1
  shift
  if "$check" "$@" <<<"$name" >"$work/found" 2>&1; then
    printf 'check_declared_test: no host may use %s\n' "$name" >&2
    failures=1
  fi
}

expect_right "$@" <<'END'
AReport::AReport()
AReport::AReport(AReport const&)
AReport::LoadTemplate(std::wstring*, wchar_t const*, int)
AReport::operator=(AReport const&)
AReport::~AReport()
CPDFdoc::EndDoc(wchar_t const*)
HtmlReport::Open(OutputFile*)
OutputFile::OutputFile()
RTFdoc::OBUF_SIZE
scrivalen::FromUtf8[abi:cxx11](std::string_view)
scrivalen_rows_arrow
scrivalen_version
typeinfo for CPDFdoc
typeinfo name for AReport
vtable for ReportFile
END
expect_found 'RTFdoc::buffer() const' "$@"
expect_found 'RTFdoc::conforming_' "$@"
expect_found 'RTFdoc::Words::literal(std::string_view)' "$@"
expect_found 'CPDFdoc::CPDFdoc(CPDFdoc const&)' "$@"
expect_found 'CPDFdoc::State::~State()' "$@"
expect_found 'AReport::notDeclared()' "$@"
expect_found 'scrivalen::kBufferBytes' "$@"
expect_found 'scrivalen::inner::write(int)' "$@"
expect_found 'scrivalen::OutputBuffer::write(void const*, unsigned long)' "$@"
expect_found 'typeinfo for scrivalen::OutputBuffer' "$@"
expect_found 'vtable for NotDeclared' "$@"
expect_found 'notDeclared(int)' "$@"
expect_found 'scrivalen_not_declared' "$@"
expect_found '' "$@"

# One of two overloads is private.
mkdir "$work/scrivalen"
touch "$work/scrivalen/version.h"
printf '%s\n' 'class Mixed {' ' public:' '  void both(int);' ' private:' '  void both(char);' '  Mixed();' \
  '  ~Mixed();' '};' >"$work/scrivalen/scrivalen.h"
expect_found 'Mixed::both(char)' "$1" "$work"
expect_found 'Mixed::Mixed()' "$1" "$work"
expect_found 'Mixed::~Mixed()' "$1" "$work"
exit "$failures"
