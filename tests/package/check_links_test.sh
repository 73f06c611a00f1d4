#!/usr/bin/env bash
# Checks that check_links.py finds each broken link in documents that are otherwise right.
#
#   check_links_test.sh
set -euo pipefail

check="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/check_links.py"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
failures=0

write_documents() {
  rm -rf "${work:?}"/*
  mkdir -p "$work/docs" "$work/with blank"
  touch "$work/LICENSE" "$work/with blank/page.png"
  cat >"$work/README.md" <<'END'
# The `thing`: what it is, again & again

A [guide](docs/guide.md), a [part of it](docs/guide.md#second-part), [this](#the-thing-what-it-is-again--again), a
[folder](docs/), the [text
over two lines](LICENSE "with a title"), ![a picture](<with blank/page.png>), ![another](with%20blank/page.png), a
[page](https://example.org/none.html#none) and [mail](mailto:none@example.org). `[code](none.md)` is no link. See
[defined].

```sh
# no heading
echo '[no link](none.md)'
```

[defined]: docs/guide.md#same-1
END
  printf '# Guide\n\n## Second part\n\n### Same\n\n### Same\n\n[back](../README.md)\n' >"$work/docs/guide.md"
}

write_documents
"$check" "$work" >"$work/found" || {
  printf 'check_links_test: the documents are right, but %s\n' "$(cat "$work/found")" >&2
  failures=1
}

# expect_found FILE LINE LINK
expect_found() {
  write_documents
  printf '\n%s\n' "$2" >>"$work/$1"
  if "$check" "$work" >"$work/found" || ! grep -qF "$1: $3 " "$work/found"; then
    printf 'check_links_test: %s in %s is broken, but: %s\n' "$2" "$1" "$(cat "$work/found")" >&2
    failures=1
  fi
}

expect_found README.md '[none](docs/none.md)' docs/none.md
expect_found README.md '![none](none.png)' none.png
expect_found README.md '[none](docs/guide.md#third-part)' docs/guide.md#third-part
expect_found README.md '[none](#no-heading)' '#no-heading'
expect_found README.md '[none](LICENSE#anchor)' LICENSE#anchor
expect_found README.md '[none](docs/guide.md#same-2)' docs/guide.md#same-2
expect_found README.md '[none]: none.md' none.md
expect_found README.md '<img src="none.png">' none.png
expect_found docs/guide.md '[none](docs/guide.md)' docs/guide.md
expect_found docs/guide.md '[outside](../../README.md)' ../../README.md
expect_found docs/guide.md '[outside](/README.md)' /README.md

rm -rf "${work:?}"/*
if "$check" "$work" >/dev/null; then
  printf 'check_links_test: a folder without documents passes\n' >&2
  failures=1
fi
exit "$failures"
