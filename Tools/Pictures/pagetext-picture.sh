#!/usr/bin/env bash
# Draws pagetext at work on the sample pages, as it looks on a terminal. Usage: pagetext-picture.sh PAGETEXT >pagetext.svg
set -euo pipefail
[ $# -eq 1 ] || { sed -n '2s/^# //p' "$0" >&2; exit 2; }
pagetext=$(readlink -f "$1")
cd "$(dirname "$(readlink -f "$0")")/../../Examples/pages"

# One run: the command as it is typed, then what it prints.
show() {
  printf '$ %s\n' "$1"
  PATH=$(dirname "$pagetext"):$PATH bash -c "$1" 2>&1
}

{
  show "pagetext --detect *.html"
  show "pagetext news-gbk.html | head -n 4"
  show "pagetext --sentences broken-gbk.html | head -n 3"
  show "echo 'To: 张三 <zhang.san@example.com>' | pagetext --plain --emails"
  show "pagetext --json notice-utf16le.html | cut -b 1-72"
  show "find . -name '*g*.html' -print0 | sort -z | pagetext --files0-from - --jobs 4 --detect"
  show "echo '{\"id\":7,\"path\":\"news-gbk.html\"}' | pagetext --records --detect"
} | awk '
  function escaped(text) { gsub(/&/, "\\&amp;", text); gsub(/</, "\\&lt;", text); gsub(/\t/, "  ", text); return text }
  { line[NR] = escaped($0) }
  END {
    height = 18 * NR + 62
    print "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 760 " height "\" width=\"760\" height=\"" height "\""
    print "     font-family=\"DejaVu Sans Mono, Noto Sans Mono CJK SC, WenQuanYi Zen Hei Mono, monospace\" font-size=\"13\">"
    print "  <title>pagetext at work</title>"
    print "  <rect width=\"760\" height=\"" height "\" rx=\"8\" fill=\"#1e2430\"/>"
    print "  <circle cx=\"20\" cy=\"18\" r=\"6\" fill=\"#ff5f56\"/><circle cx=\"40\" cy=\"18\" r=\"6\" fill=\"#ffbd2e\"/>" \
          "<circle cx=\"60\" cy=\"18\" r=\"6\" fill=\"#27c93f\"/>"
    print "  <g fill=\"#d7dce5\" xml:space=\"preserve\">"
    for (i = 1; i <= NR; i++) {
      colour = line[i] ~ /^\$ / ? " fill=\"#8bd17c\"" : ""
      print "    <text x=\"16\" y=\"" 18 * i + 36 "\"" colour ">" line[i] "</text>"
    }
    print "  </g>\n</svg>"
  }'
