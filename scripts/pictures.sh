#!/usr/bin/env bash
# Makes the pictures in docs/images/ from what the examples and the command write, as browsers and office programs show
# it. It needs a finished build of the preset linux, and chromium, libreoffice, poppler-utils and imagemagick.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
programs=$root/build/linux/bin
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Pages are drawn at 100 dots an inch, and the browser's window is as wide as their text.
draw_pdf() {
  pdftoppm -r 100 -f 1 -l 1 -singlefile -png "$1" "$2"
}

draw() {
  local file=$1 picture=$2
  case "$file" in
    *.html)
      chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --force-device-scale-factor=0.9 \
        --window-size=780,700 "--screenshot=$picture.png" "file://$file" >/dev/null 2>&1
      ;;
    *.pdf) draw_pdf "$file" "$picture" ;;
    *)
      soffice "-env:UserInstallation=file://$work/office" --headless --convert-to pdf --outdir "$work/paper" "$file" \
        >/dev/null 2>&1
      draw_pdf "$work/paper/$(basename "${file%.*}").pdf" "$picture"
      ;;
  esac
}

# compose PICTURE HEIGHT FILE...: the upper part of each file, with its name above it, two in a row.
compose() {
  local name=$1 height=$2 file panels=()
  shift 2
  for file in "$@"; do
    draw "$file" "$work/drawn"
    convert "$work/drawn.png" -fuzz 2% -trim +repage -gravity northwest -background white -extent "760x$height" \
      -bordercolor white -border 20 -bordercolor '#c8ccd0' -border 1 \
      -background '#eef0f2' -fill '#30363c' -font DejaVu-Sans-Bold -pointsize 20 -gravity north \
      -splice 0x40 -annotate +0+8 "$(basename "$file")" "$work/panel${#panels[@]}.png"
    panels+=("$work/panel${#panels[@]}.png")
  done
  montage "${panels[@]}" -tile 2x -geometry +6+6 -background white "$work/whole.png"
  convert "$work/whole.png" -dither None -colors 64 -strip -define png:compression-level=9 "docs/images/$name"
}

mkdir -p "$work/code" "$work/command"
(cd "$work/code" && "$programs/sales")
compose sales.png 210 "$work/code/"sales.{html,pdf,rtf,xlsx}

cd "$work/command"
"$programs/scrivalen" "$root/examples/report.md" -o report.html -o report.pdf -o report.docx
"$programs/scrivalen" "$root/examples/sales.csv" --title "Sales 2026" -o sales.xlsx
cd "$root"
compose report.png 530 "$work/command/"report.{html,pdf,docx} "$work/command/sales.xlsx"
ls -l docs/images
