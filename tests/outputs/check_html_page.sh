#!/usr/bin/env bash
# Validates a page with every kind of content, from the left and from the right, and prints it.
#
#   check_html_page.sh PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

program=("$@")
vnu="$root/node_modules/vnu-jar/build/dist/vnu.jar"
[ -f "$vnu" ] || fail "the HTML validator is missing; scripts/setup.sh test installs it"

# A grey picture of 4 x 2 pixels for the header.
base64 -d >"$work/logo.png" <<<'iVBORw0KGgoAAAANSUhEUgAAAAQAAAACCAAAAABawyK/AAAADklEQVR4nGNoAAIGEAEAFAoEAeiOg+cAAAAASUVORK5CYII='
for language in en ar; do
  "${program[@]}" "$language" "$work/logo.png" >"$work/$language.html" || fail "the page in '$language' was not written"
done
java -jar "$vnu" --errors-only "$work"/*.html || fail "the validator finds errors"

timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage --user-data-dir="$work/profile" \
  --no-pdf-header-footer --print-to-pdf="$work/en.pdf" "file://$work/en.html" 2>"$work/chromium.err" ||
  fail "the browser did not print the page: $(tail -3 "$work/chromium.err")"
pdftotext -layout "$work/en.pdf" "$work/en.txt"
pages="$(pdfinfo "$work/en.pdf" | sed -n 's/^Pages: *//p')"
[ "$pages" -gt 4 ] || fail "expected a break before the second section and a table of several pages, found $pages pages"
expect_equal "pages with a footer" "$pages" "$(grep -c "Page [0-9]* of $pages\$" "$work/en.txt")"
expect_equal "pages with a header" "$pages" "$(grep -c "A report & its \"title\" .*2026-01-31\$" "$work/en.txt")"
expect_equal "pages with a picture in the header" "$pages" "$(pdfimages -list "$work/en.pdf" | grep -c ' image *4 *2 ')"
heads="$(grep -c 'Region *Sales *Since *Remark' "$work/en.txt")"
[ "$heads" -gt 1 ] || fail "the head of the table is not repeated"
grep -q '74070.00 *2024-12-03' "$work/en.txt" || fail "the last row is not complete"
