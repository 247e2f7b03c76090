#!/usr/bin/env bash
# Draws how often detectors are right over the length of the text, out of what detector_evaluate printed: the mean of GBK
# (both scripts), Big5 and UTF-8.
#
#     Tools/Detector/plot_accuracy.sh EVALUATION > accuracy.svg
#
# Needs gnuplot.
set -euo pipefail
[ $# -eq 1 ] || { sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2; exit 2; }

# size, then a column for each detector, from the first table of the file
means() {
  awk -F ' *[|] *' '
    /^\| detector \| encoding \| 2 / { if (table++) exit; columns = NF - 4; for (i = 4; i <= NF - 4; ++i) size[i] = $i }
    table && $2 != "detector" && /^\| [a-zA-Z]/ && $3 !~ /UCS-2/ {
      if (!($2 in count)) names[++detectors] = $2
      ++count[$2]
      for (i = 4; i in size; ++i) sum[$2, i] += $i
    }
    END {
      printf "size"; for (d = 1; d <= detectors; ++d) printf " %s", names[d]; print ""
      for (i = 4; i in size; ++i) {
        printf "%s", size[i]
        for (d = 1; d <= detectors; ++d) printf " %.3f", sum[names[d], i] / count[names[d]]
        print ""
      }
    }' "$1"
}

data=$(mktemp)
trap 'rm -f "$data"' EXIT
means "$1" > "$data"
columns=$(awk 'NR == 1 { print NF }' "$data")
gnuplot <<PLOT
set terminal svg size 720,420 font "sans-serif,13" background rgb "white"
set title "Right answers: mean of GBK (Simplified, Traditional), Big5 and UTF-8"
set xlabel "characters"
set ylabel "per cent"
set logscale x 2
set xrange [1.8:600]
set yrange [0:103]
set xtics (2, 3, 4, 8, 16, 32, 128, 512)
set grid
set key right bottom autotitle columnheader
plot for [i=2:$columns] "$data" using 1:i with linespoints linewidth 2 pointtype 7 pointsize 0.6
PLOT
