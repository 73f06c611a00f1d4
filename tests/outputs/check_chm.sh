#!/usr/bin/env bash
# Has the command write help files, and chmlib read them.
#
#   check_chm.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")
export TMPDIR="$work/temporary"
mkdir "$TMPDIR"

write_help() {
  (cd "$work" && "${command[@]}" "$@" 2>help.err) || fail "the command failed: $(cat "$work/help.err")"
  expect_equal "messages" "$expected_messages" "$(cat "$work/help.err")"
  expect_equal "files left in the folder for temporary files" "" "$(ls -A "$TMPDIR")"
}

expected_messages=""

open_help() {
  rm -rf "$work/opened"
  extract_chmLib "$work/$1" "$work/opened" >"$work/extract.out" || fail "chmlib does not open $1"
}

# The content of a page.
body() {
  sed -e '1,/<main/d' -e '/<\/main>/,$d' "$1"
}

# The content of a topic, which is in the code page of English.
topic_body() {
  body "$work/opened/topic$1.htm" | iconv -f WINDOWS-1252 -t UTF-8
}

check_topics() {
  cat >"$work/book.md" <<'MD'
Before *all*, see [the end](#the-end-) or [outside](https://x.org/#first).

# First & "best"

Text with <kbd>K</kbd> and a \< sign, to [itself](#deep).

### Deep

| a | b |
|---|---|
| 1 | € |

## Second;$HOME `x`

- one
- two

# The end €

Back to [deep](#deep).
MD
  write_help book.md --title "A book" -o book.chm -o book.html
  open_help book.chm
  expect_equal "the topics" "topic1.htm topic2.htm topic3.htm topic4.htm" "$(cd "$work/opened" && echo topic*.htm)"
  for topic in 1 2 3 4; do
    topic_body "$topic"
  done | sed -E 's/href="topic[0-9]\.htm#/href="#/' >"$work/book.bodies"
  body "$work/book.html" >"$work/book.body"
  [ -s "$work/book.body" ] || fail "the page has no body"
  diff <(tr -d '\n' <"$work/book.body") <(tr -d '\n' <"$work/book.bodies") || fail "the topics are not the page"
  grep -qF 'href="topic4.htm#the-end-"' "$work/opened/topic1.htm" || fail "topic 1 does not link to topic 4"
  grep -qF 'href="https://x.org/#first"' "$work/opened/topic1.htm" || fail "the outside link was changed"
  grep -qF 'href="#deep"' "$work/opened/topic2.htm" || fail "a link within a topic was changed"
  grep -qF 'href="topic2.htm#deep"' "$work/opened/topic4.htm" || fail "topic 4 does not link back"
}

check_contents() {
  local contents
  contents="$(tr -d '\r' <"$work/opened/report.hhc" | iconv -f WINDOWS-1252 -t UTF-8)"
  for entry in 'A book|topic1.htm' 'First &amp; &quot;best&quot;|topic2.htm' 'Second;$HOME x|topic3.htm' 'The end €|topic4.htm'; do
    grep -qF "<param name=\"Name\" value=\"${entry%|*}\">" <<<"$contents" || fail "no ${entry%|*} in: $contents"
    grep -qF "<param name=\"Local\" value=\"${entry#*|}\">" <<<"$contents" || fail "no ${entry#*|} in: $contents"
  done
}

# A page does not end inside a quote or a list, and links reach every kind of target.
check_nesting_and_places() {
  cat >"$work/nested.md" <<'MD'
# Café

> # Quoted

- ## Listed

[x](#here) [y](#quoted) [z](https://x.org/#here)

# Second

<p id="here">Here.</p>

[c](#caf%C3%A9) <a href="#listed">l</a>
MD
  expected_messages="scrivalen: warning: 'nested.md': a link leads to '#here', which is nowhere in the document"
  write_help nested.md --unsafe -o nested.chm
  open_help nested.chm
  expect_equal "the topics" "topic1.htm topic2.htm" "$(cd "$work/opened" && echo topic*.htm)"
  grep -qF '<a href="topic2.htm#here">x</a> <a href="#quoted">y</a> <a href="https://x.org/#here">z</a>' \
    "$work/opened/topic1.htm" || fail "topic 1: $(topic_body 1)"
  topic_body 2 | grep -qF '<a href="topic1.htm#café">c</a> <a href="topic1.htm#listed">l</a>' ||
    fail "topic 2: $(topic_body 2)"
}

# Raw HTML and addresses that run a program are written as text.
check_safety() {
  printf '%s\n' '# A' '' 'a <b onclick="e">b</b><script>e</script> [c](javascript:e)' '' '<div>d</div>' >"$work/safe.md"
  expected_messages=""
  write_help safe.md -o safe.chm
  open_help safe.chm
  expect_equal "the page" $'<h1 id="a">A</h1>\n<p>a b c (javascript:e)</p>\n<p>d</p>' \
    "$(body "$work/opened/topic1.htm" | sed '/^ *$/d')"
}

# The title is in the project and in the contents.
check_letters_outside_the_code_page() {
  printf '# 日 😀\n\ndaylight 日 comes again\n' >"$work/far.md"
  expected_messages="scrivalen: warning: 'far.chm': letters of the title that the code page of the language lacks, shown"
  expected_messages+=" as \"?\" above the window (2)"
  write_help far.md -o far.chm
  open_help far.chm
  grep -qF '<param name="Name" value="&#26085; &#128512;' "$work/opened/report.hhc" || fail "the title is wrong"
  grep -qF '<p>daylight &#26085; comes again</p>' "$work/opened/topic1.htm" || fail "the page has lost its text"
}

check_table() {
  make_table 500 >"$work/table.csv"
  expected_messages=""
  write_help table.csv -o table.chm
  open_help table.chm
  expect_equal "the topics of a table" "topic1.htm" "$(cd "$work/opened" && echo topic*.htm)"
  expect_equal "rows" 501 "$(html_rows "$work/opened/topic1.htm")"
}

check_topics
check_contents
check_nesting_and_places
check_safety
check_letters_outside_the_code_page
check_table
