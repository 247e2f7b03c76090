#!/usr/bin/env bash
# Adds text out of Debian packages to a folder that detector_train reads: the dialogues of a game's campaigns (Wesnoth,
# GPL-2+), sayings and poems (fortunes-zh, GPL-3+), names of places, languages and currencies (iso-codes, LGPL-2.1+) and a
# vocabulary with frequencies (rime-essay, LGPL-3).
#
#     Tools/Detector/add_packages_text.sh FOLDER
#
# FOLDER gets files in its subfolders hans and hant. Needs apt-get, dpkg-deb, msgunfmt (gettext) and opencc.
set -euo pipefail
[ $# -eq 1 ] || { sed -n '2,/^$/s/^# \{0,1\}//p' "$0" >&2; exit 2; }
mkdir -p "$1/hans" "$1/hant"
folder=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"
cd "$work"

campaigns=(did dm dw ei httt l low nr sof sota sotbe thot trow tsg utbs)
apt-get download -qq fortunes-zh iso-codes rime-essay wesnoth-1.16-data "${campaigns[@]/#/wesnoth-1.16-}"
for package in *.deb; do dpkg-deb --fsys-tarfile "$package" | tar -x --wildcards '*zh_*/*.mo' '*/essay.txt' '*/fortunes/*' 2>/dev/null || true; done

# The translations of a message catalogue, one paragraph a line, without markup and escape sequences.
translations() {
  msgunfmt --no-wrap "$1" | awk '
    /^msgid /  { on = 0 }
    /^msgstr/  { on = 1; sub(/^msgstr(\[[0-9]+\])? /, "") }
    on && /^"/ { gsub(/^"|"$/, ""); printf "%s", $0; if (/\\n$/) print "" }
    /^$/       { print "" }' |
    LC_ALL=C sed -E 's/\\n/\n/g; s/\\"/"/g; s/<[^>]*>//g; s/\$[a-z_.|]+//g; /^[ -~]*$/d'
}

for language in zh_CN:hans zh_TW:hant; do
  for catalogue in $(find . -path "*/${language%:*}/*.mo" | sort); do
    name=$(basename "$catalogue" .mo)
    translations "$catalogue" > "$folder/${language#*:}/game_${name#wesnoth-}.txt"
  done
done
for name in chinese tang300 song100; do
  sed -E 's/\x1B\[[0-9;]*m//g; /^%$/d' "$(find . -path "*/fortunes/$name")" > "$folder/hans/fortune_$name.txt"
  opencc -c s2twp -i "$folder/hans/fortune_$name.txt" -o "$folder/hant/fortune_${name}_converted.txt"
done
for language in zh_CN zh_TW; do
  for catalogue in $(find . -path "*/$language/*/iso_*.mo" ! -type l | sort); do
    msgunfmt --no-wrap "$catalogue" | sed -n 's/^msgstr "\(.*\)"$/\1/p' | LC_ALL=C sed '/^[ -~]*$/d'
  done > "names_$language"
done
cp names_zh_CN "$folder/hans/names_iso.txt"
cp names_zh_TW "$folder/hant/names_iso.txt"
opencc -c tw2s -i names_zh_TW >> "$folder/hans/names_iso.txt"
opencc -c s2twp -i names_zh_CN >> "$folder/hant/names_iso.txt"
essay=$(find . -name essay.txt)
awk -F '\t' '$2 > 0' "$essay" > vocabulary.tsv
opencc -c t2tw -i vocabulary.tsv -o "$folder/hant/vocabulary.tsv"
opencc -c t2s -i vocabulary.tsv -o "$folder/hans/vocabulary_converted.tsv"
