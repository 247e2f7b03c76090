#!/usr/bin/env bash
# Tells what changed for compiled hosts between two builds of the shared library.
#
# Usage: compare-abi.sh OLD NEW           two build folders, or two libraries; built with -g (RelWithDebInfo, Debug)
#        compare-abi.sh --since REVISION  builds that revision and this tree, then compares
# Ends with 0 where every compiled host goes on working, with another number where one may not or something failed.
set -euo pipefail
usage() { sed -n '4,6s/^# \{0,1\}//p' "$0" >&2; exit 2; }
[ $# -eq 2 ] || usage
command -v abidiff >/dev/null || { echo "compare-abi.sh needs abidiff (Debian package abigail-tools)" >&2; exit 2; }
top=$(readlink -f "$(dirname "$0")/../..")

build() {  # SOURCE FOLDER
  cmake -S "$1" -B "$2" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DUTILITY_BUILD_TESTS=OFF -DUTILITY_BUILD_APPS=OFF >/dev/null
  cmake --build "$2" --target utility --parallel >/dev/null
}
library() {
  if [ -d "$1" ]; then set -- "$1/Src/libutility.so"; fi
  [ -e "$1" ] || { echo "compare-abi.sh: $1 is not there" >&2; exit 2; }
  readlink -f "$1"
}

old=$1 new=$2
if [ "$1" = --since ]; then
  work=$(mktemp -d)
  trap 'git -C "$top" worktree remove --force "$work/tree"; rm -rf "$work"' EXIT
  git -C "$top" worktree add --quiet --detach "$work/tree" "$2"
  build "$work/tree" "$work/old"
  build "$top" "$work/new"
  old=$work/old new=$work/new
fi
old=$(library "$old") new=$(library "$new")

# Names of the standard library's templates come and go with the compiler; no host links to ours.
compare() {  # prints the report; fails where abidiff does, or where anything but new names is different
  local status=0
  abidiff --drop-private-types --suppressions "$top/Tools/Package/abi-suppressions.ini" "$@" "$old" "$new" || status=$?
  if [ $((status & 3)) -ne 0 ]; then echo "abidiff failed" >&2; exit 2; fi
  return "$status"
}

if compare; then
  echo "The same for compiled hosts."
elif compare --no-added-syms >/dev/null; then
  echo "Compiled hosts go on working: names came, nothing else changed."
else
  echo "Compiled hosts may break: unless the report above is harmless, UTILITY_VERSION_MAJOR has to move."
  exit 1
fi
