#!/bin/sh
# Run by Doxygen over each public header: puts what it declares into the group of its folder (see Groups.dox), so that the
# headers need no marks for that. Line numbers stay as they are.
case $1 in
  */CodeTrans/CodeMaps/*) group=codemaps ;;
  */CodeTrans/Html/*) group=html ;;
  */CodeTrans/LastError/*) group=settings ;;
  */CodeTrans/Normalisation/*) group=normalisation ;;
  */CodeTrans/Primitives/* | */CodeTrans/Tables/*) group=primitives ;;
  */Utility/ChineseText/*) group=chinese ;;
  */Utility/CompactStorage/* | */Utility/IntegerSets/*) group=storage ;;
  */Utility/DateTime/*) group=dates ;;
  */Utility/Extraction/*) group=extraction ;;
  */Utility/Files/*) group=files ;;
  */Utility/Paths/*) group=paths ;;
  */Utility/Runtime/*) group=runtime ;;
  */Utility/StringToolkit/*) group=strings ;;
  */Utility/TextKit/TextRange.h) group=textkit_chinese ;;
  */Utility/TextKit/*) group=textkit_$(basename "$1" .h | tr '[:upper:]' '[:lower:]' | sed 's/text$//') ;;
  */Utility/Global.h) group=settings ;;
  */Utility/global_linux.h | */Utility/UtilityVersion.h | */Utility/UtilityExport.h) group=platform ;;
  *) exec cat "$1" ;;
esac
# From behind the comment on the file to the #endif of the include guard; in a namespace within it, as what a namespace holds
# is not in the group that the namespace is in.
awk -v group="$group" '
  { line[NR] = $0 }
  /\*\// && !open { open = NR }
  /^#endif/ { close_at = NR }
  /^namespace .*\{$/ { inner_open = NR }
  /^}  \/\/ namespace/ { inner_close = NR }
  END {
    if (inner_open) { open = inner_open; close_at = inner_close }
    for (i = 1; i <= NR; i++) {
      text = line[i]
      if (i == close_at) text = "/** @} */ " text
      if (i == open) text = text " /** @addtogroup " group " */ /** @{ */"
      print text
    }
  }' "$1"
