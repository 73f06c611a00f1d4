#!/usr/bin/env bash
# Makes the disk of one of the command's outputs too small, for each format in turn. The command must exit with status
# 1, report the failure in one line, leave no partial or changed file, and deliver the outputs on another disk
# completely.
#
#   full_disk.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

formats=(txt html xml rtf pdf xlsx docx)
command=("$@")
export SOURCE_DATE_EPOCH=1790000000 # two runs write the same bytes

# In its own mount namespace any user may mount a small disk, and the mount ends with the script.
if [ -z "${SCRIVALEN_IN_NAMESPACE:-}" ]; then
  unshare -rm true 2>"$work/reason" ||
    fail "cannot mount a small disk, a mount namespace is refused: $(cat "$work/reason")"
  SCRIVALEN_IN_NAMESPACE=1 unshare -rm "$0" "$@"
  exit
fi

write_reports() {
  local format outputs=()
  for format in "${formats[@]}"; do
    if [ "$format" = "$1" ]; then
      outputs+=(-o "full/report.$format")
    else
      outputs+=(-o "$2/report.$format")
    fi
  done
  (cd "$work" && "${command[@]}" table.csv "${outputs[@]}")
}

# check_format FORMAT EXPECTED_ON_FULL_DISK
check_format() {
  local format=$1 kept=$2 other status=0
  mkdir "$work/$format"
  write_reports "$format" "$format" 2>"$work/messages" || status=$?
  expect_equal "exit status for $format" 1 "$status"
  expect_equal "lines of messages for $format" 1 "$(wc -l <"$work/messages")"
  grep -q "full/report.$format.*No space left on device" "$work/messages" ||
    fail "the message for $format does not say which file and why: $(cat "$work/messages")"
  expect_equal "files left on the full disk for $format" "$kept" "$(ls -A "$work/full")"
  for other in "${formats[@]}"; do
    [ "$other" = "$format" ] || cmp "$work/good/report.$other" "$work/$format/report.$other" ||
      fail "report.$other is incomplete when the disk of report.$format is full"
  done
}

mkdir "$work/full" "$work/good"
mount -t tmpfs -o size=256k tmpfs "$work/full" || fail "cannot mount a small disk"
trap 'umount "$work/full"; rm -rf "$work"' EXIT
make_table 20000 >"$work/table.csv"
write_reports none good
for format in "${formats[@]}"; do
  check_format "$format" ""
  rm -r "${work:?}/$format"
  printf 'an earlier report' >"$work/full/report.$format"
  check_format "$format" "report.$format"
  expect_equal "the earlier report.$format" "an earlier report" "$(cat "$work/full/report.$format")"
  rm "$work/full/report.$format"
done
