#!/usr/bin/env bash
# Judges the encoding detector by kinds of text that it has not learnt from, beside other detectors: for each kind trains
# without it and evaluates on it alone, and evaluates the detector as built on text that is never trained on.
#
#     Tools/Detector/evaluate_folds.sh BUILD CORPUS OWN_TEXT OUTPUT
#
# BUILD is a build folder, CORPUS what detector.txt is learnt from (Data/README.md), OWN_TEXT a folder of the same form, such
# as Tests/CodeTrans/CodeMaps/Text. The folder OUTPUT gets a file for each kind, and mean.md: the mean of every cell over
# all kinds. WINDOWS in the environment is how many texts a cell has, 1000 unless set.
set -euo pipefail
[ $# -eq 4 ] || { sed -n '2,/^set/s/^# \{0,1\}//p' "$0" | sed '$d' >&2; exit 2; }
tools=$(realpath "$1")/Tools corpus=$(realpath "$2") own=$(realpath "$3")
mkdir -p "$4"
output=$(realpath "$4")
built=$(realpath "$1")/Data/codemaps.dat
cd "$(dirname "$0")/../../Data"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

evaluate() { "$tools/detector_evaluate" "$1" gbk.txt big5.txt "${@:2}" --windows "${WINDOWS:-1000}"; }

for kind in encyclopedia:wiki dialogues:game sayings:fortune,sayings documentation:docs,guide,help; do
  files=${kind#*:}
  "$tools/detector_train" detector_rules.txt gbk.txt big5.txt "$corpus" 1 --without "$files" > "$work/detector.txt"
  "$tools/codemaps" build gbk.txt big5.txt "$work/detector.txt" "$work/codemaps.dat"
  evaluate "$work/codemaps.dat" "$corpus" --only "$files" > "$output/${kind%:*}.md"
done
evaluate "$built" "$own" > "$output/own.md"

# The rows of the first table of each file, cell by cell.
awk -F ' *[|] *' '
  FNR == 1 { tables = 0 }
  /^\| detector \| encoding \| 2 / { ++tables; header = $0; getline rule; next }
  tables != 1 || !/^\|/ { if (tables == 1 && /^#/) tables = 2; next }
  {
    row = $2 " | " $3
    if (!(row in seen)) { seen[row] = 1; rows[++count] = row }
    for (i = 4; i < NF; ++i) if ($i != "") { sum[row, i] += $i; ++kinds[row, i] }
    width = NF
  }
  END {
    print header; print rule
    for (r = 1; r <= count; ++r) {
      printf "| %s", rows[r]
      for (i = 4; i < width; ++i)
        if (kinds[rows[r], i]) printf " | %.2f", sum[rows[r], i] / kinds[rows[r], i]; else printf " |"
      print " |"
    }
  }' "$output"/{encyclopedia,dialogues,sayings,documentation,own}.md > "$output/mean.md"
