#!/usr/bin/env bash
# Builds the library and shows what it makes of pages. Usage: ./demo.sh [FILE…]
# Without arguments: name, encoding and first sentences of each page in Examples/pages. With files: their text as UTF-8.
set -euo pipefail
top=$(dirname "$(readlink -f "$0")")
. "$top/Tools/Setup/prepare.sh"
require compiler cmake ninja cli11 json locale
require_gbk_locale "$top/build/locale"

# A build folder that the tests made is used as it is.
if [ ! -e "$top/build/build.ninja" ]; then
  cmake -S "$top" -B "$top/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DUTILITY_BUILD_TESTS=OFF >/dev/null
fi
log=$(cmake --build "$top/build" --target pagetext hello) || { printf '%s\n' "$log"; exit 1; }
pagetext=$top/build/bin/pagetext

if [ $# -gt 0 ]; then
  exec "$pagetext" "$@"
fi
cd "$top/Examples/pages"
for page in *; do
  printf '\n%s  [%s]\n' "$page" "$("$pagetext" --detect "$page")"
  "$pagetext" --sentences "$page" | sed -n '1,4s/^/    /p'
done
