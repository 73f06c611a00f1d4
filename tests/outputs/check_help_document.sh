#!/usr/bin/env bash
# Has chmlib read help files with every kind of content in languages of several code pages, and validates their pages.
#
#   check_help_document.sh PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

program=("$@")
vnu="$root/node_modules/vnu-jar/build/dist/vnu.jar"
[ -f "$vnu" ] || fail "the HTML validator is missing; scripts/setup.sh test installs it"
export TMPDIR="$work/temporary"
mkdir "$TMPDIR"

# open_help LANGUAGE CODEPAGE: unpacks a help file, and writes its pages and contents in UTF-8 to a folder.
open_help() {
  local page
  "${program[@]}" "$1" "" chm >"$work/$1.chm" || fail "the help in '$1' was not written"
  expect_equal "files left among the temporary ones" "" "$(ls -A "$TMPDIR")"
  extract_chmLib "$work/$1.chm" "$work/opened" >"$work/extract.out" || fail "chmlib does not open the help in '$1'"
  mkdir "$work/$1"
  for page in "$work"/opened/topic*.htm "$work/opened/report.hhc"; do
    iconv -f "$2" -t UTF-8 "$page" | sed "s/<meta charset=\"$2\">/<meta charset=\"utf-8\">/" >"$work/$1/${page##*/}l"
  done
  cp "$work"/opened/picture* "$work/$1/"
  rm -r "$work/opened"
}

# Every link leads to a page, and there to a place; every picture is there.
check_links() {
  python3 - "$1" <<'PYTHON'
import html.parser, os, sys, urllib.parse

class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.ids, self.links, self.pictures = set(), [], []
        self.feed(open(path, encoding="utf-8").read())

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.ids.add(values.get("id"))
        self.links += [values["href"]] if "href" in values else []
        self.pictures += [values["src"]] if "src" in values else []

os.chdir(sys.argv[1])
pages = {name[:-1]: Page(name) for name in os.listdir() if name.startswith("topic")}
inside = 0
for name, page in pages.items():
    for link in page.links:
        target, _, place = link.partition("#")
        if "#" in link and ":" not in target:
            inside += target != ""
            if urllib.parse.unquote(place) not in pages[target or name].ids:
                sys.exit(f"{name} leads to {link}, which is not there")
    for picture in page.pictures:
        if os.path.getsize(picture) == 0:
            sys.exit(f"{picture} is empty")
if len(pages) < 3 or inside == 0 or not any(page.pictures for page in pages.values()):
    sys.exit("there are too few topics, links or pictures")
PYTHON
}

while read -r language codepage; do
  open_help "$language" "$codepage"
  check_links "$work/$language" || fail "the help in '$language' is not complete"
  (cd "$work/$language" && java -jar "$vnu" --errors-only topic*.html) || fail "the validator finds errors in '$language'"
done <<'LANGUAGES'
en windows-1252
ru windows-1251
ar windows-1256
LANGUAGES
