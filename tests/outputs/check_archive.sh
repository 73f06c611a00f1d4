#!/usr/bin/env bash
# Has the command write PDF for archives, and another program check what the standard asks for.
#
#   check_archive.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")
java_folder=/usr/share/java

write_texts() {
  cat >"$work/text.md" <<'END'
---
title: Prices & costs – größer
author: Jörg
---

# Prices & costs

Text with **strong**, *emphasis*, `code`, ~~deleted~~ and [a link](https://example.org/a?b=c), and [inside](#second),
long enough to be broken into lines, so that efficient AVATARs are kerned and have their ligatures.

## Second

- one
  - nested *item*
- [x] done

1. first

> A quote.

```c
int main() { return 0; }
```

---
END
  cat >"$work/scripts.md" <<'END'
# Twelve scripts

- Latin: Příliš žluťoučký kůň, efficient
- Greek: Ξεσκεπάζω την ψυχοφθόρα
- Cyrillic: Съешь ещё этих мягких
- Armenian: Հայերեն
- Georgian: ქართული
- Hebrew: שלום עולם
- Arabic: السلام عليكم
- Lao: ສະບາຍດີ
- Devanagari: हिन्दी
- Thai: ภาษาไทย
- Han: 日本語
- Hangul: 한국어
END
}

# Pictures with alpha, as a palette with transparent colours, and with 16 bits.
write_pictures() {
  (cd "$work" && python3 - <<'END'
import struct, zlib

def png(name, color, depth, row, chunks=b"", rows=4):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    header = struct.pack(">IIBBBBB", 4, rows, depth, color, 0, 0, 0)
    data = zlib.compress((b"\0" + row) * rows)
    with open(name, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunks + chunk(b"IDAT", data) + chunk(b"IEND", b""))

def tagged(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

png("alpha.png", 6, 8, bytes(range(16)))
png("grey16.png", 0, 16, bytes(range(8)))
png("palette.png", 3, 8, bytes([0, 1, 0, 1]), tagged(b"PLTE", bytes(range(6))) + tagged(b"tRNS", b"\x00\x80"))
png("key.png", 2, 8, bytes([1, 2, 3] * 4), tagged(b"tRNS", bytes([0, 1, 0, 2, 0, 3])))
END
  )
  printf '# Pictures\n\n![a](alpha.png) ![b](grey16.png) ![c](palette.png) ![d](key.png) ![a](alpha.png)\n' >"$work/pictures.md"
}

# archive STANDARD NAME INPUT [OPTION...]
archive() {
  local standard=$1 name=$2 input=$3
  shift 3
  (cd "$work" && "${command[@]}" "$input" --set "pdf.standard=$standard" --set header='{title}||{page} / {pages}' "$@" \
    -o "$name-$standard.pdf" 2>"$name.err") || fail "the command failed on $input: $(cat "$work/$name.err")"
  qpdf --check "$work/$name-$standard.pdf" >"$work/qpdf.txt" 2>&1 || fail "qpdf on $name: $(cat "$work/qpdf.txt")"
  ! grep -q WARNING "$work/qpdf.txt" || fail "qpdf warns of $name: $(cat "$work/qpdf.txt")"
}

preflight() {
  local jar classes=
  for jar in preflight pdfbox2 xmpbox fontbox2 commons-logging commons-io jaxb-api jaxb-runtime javax.activation; do
    [ -f "$java_folder/$jar.jar" ] || fail "$java_folder/$jar.jar is missing"
    classes+="$java_folder/$jar.jar:"
  done
  java -cp "$classes" org.apache.pdfbox.preflight.Validator_A1b "$1" >"$work/preflight.txt" 2>&1 ||
    fail "preflight on $1: $(cat "$work/preflight.txt")"
  grep -q "is a valid PDF/A-1b file" "$work/preflight.txt" || fail "preflight on $1: $(cat "$work/preflight.txt")"
}

# Preflight finds what a file that is not for archives lacks.
check_preflight() {
  (cd "$work" && "${command[@]}" text.md -o plain.pdf)
  ! (preflight "$work/plain.pdf") 2>/dev/null || fail "preflight takes a file that is not for archives"
}

write_texts
write_pictures
make_table 300 >"$work/table.csv"
{ seq -s, 1 65; seq -s, 1001 1065; } >"$work/wide.csv"
check_preflight
for standard in a-1b a-2u; do
  archive "$standard" text text.md --toc
  archive "$standard" scripts scripts.md
  archive "$standard" pictures pictures.md
  archive "$standard" table table.csv
  archive "$standard" wide wide.csv
done
for name in text scripts pictures table wide; do
  preflight "$work/$name-a-1b.pdf"
  qpdf --json "$work/$name-a-2u.pdf" >"$work/$name.json"
  python3 "$root/tests/outputs/check_archive.py" "$work/$name.json" "$work/$name-a-2u.pdf" || fail "$name-a-2u.pdf"
done
