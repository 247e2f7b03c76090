#!/usr/bin/env bash
# Builds the Debian packages of this tree. Usage: make-packages.sh FOLDER
# FOLDER receives libutility1, libutility-dev and pagetext; the build goes to build/packages.
set -euo pipefail
[ $# -eq 1 ] || { sed -n '2,3s/^# //p' "$0" >&2; exit 2; }
top=$(dirname "$(readlink -f "$0")")/../..
. "$top/Tools/Setup/prepare.sh"
require compiler cmake ninja cli11 json dpkg-dev
mkdir -p "$1"

# Under /usr, without a run path: the loader finds the library in the system's own folder.
cmake -S "$top" -B "$top/build/packages" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DCMAKE_SKIP_INSTALL_RPATH=ON -DUTILITY_ZSH_COMPLETIONS=zsh/vendor-completions -DUTILITY_BUILD_TESTS=OFF >/dev/null
cmake --build "$top/build/packages"
rm -f "$top"/build/packages/*.deb
(cd "$top/build/packages" && cpack -G DEB)
cp "$top"/build/packages/*.deb "$1"
