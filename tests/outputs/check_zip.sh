#!/usr/bin/env bash
# Has a program write archives, and other programs read them.
#
#   check_zip.sh PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

program=("$@")

# check ENTRIES: the archive has as many more than the four of every kind.
check() {
  "${program[@]}" "$1" "$work/archive.zip" || fail "the program failed"
  unzip -tqq "$work/archive.zip" >&2 || fail "unzip finds it broken"
  if [ -n "$(type -P 7z)" ]; then
    7z t "$work/archive.zip" >"$work/log" || fail "7-Zip finds it broken: $(cat "$work/log")"
  fi
  /usr/bin/python3 - "$1" "$work/archive.zip" <<'PYTHON' || fail "Python does not find what was written"
import sys
import zipfile

archive = zipfile.ZipFile(sys.argv[2])
assert archive.testzip() is None
names = ["first.txt", "folder/stream.txt", "empty", "ä€.bin"] + ["many/%d" % i for i in range(int(sys.argv[1]))]
assert archive.namelist() == names
assert archive.read("first.txt") == b"the first\n"
assert archive.read("folder/stream.txt") == b"".join(b"%d\n" % i for i in range(1000000))
assert archive.read("empty") == b""
assert archive.read("ä€.bin") == b"\0\1\2"
assert {entry.date_time for entry in archive.infolist()} == {(2024, 11, 29, 12, 0, 0)}
PYTHON
}

check 0
check 70000
