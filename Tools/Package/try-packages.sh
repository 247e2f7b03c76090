#!/usr/bin/env bash
# Installs the Debian packages in an empty system, uses them as a host would, and removes them.
#
# Usage: try-packages.sh FOLDER [SUITE [MIRROR]]     as root, with debootstrap
# FOLDER holds what make-packages.sh made. SUITE is a Debian release (this machine's own), MIRROR where it is fetched from.
set -euo pipefail
[ $# -ge 1 ] || { sed -n '2,5s/^# \{0,1\}//p' "$0" >&2; exit 2; }
folder=$(readlink -f "$1")
suite=${2-$(. /etc/os-release && echo "$VERSION_CODENAME")}
top=$(dirname "$(readlink -f "$0")")/../..
root=$(mktemp -d)
trap 'rm -rf --one-file-system "$root"' EXIT

step() { printf '%3d s  %s\n' "$SECONDS" "$*"; }
inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }

step "an empty system, $suite"
debootstrap --variant=minbase "$suite" "$root" ${3+"$3"} >"$root.log" 2>&1 || { tail "$root.log"; exit 1; }
rm -f "$root.log"
if [ $# -lt 3 ] && [ -e /etc/apt/apt.conf ]; then cp /etc/apt/apt.conf "$root/etc/apt/"; fi
cp -r "$folder" "$root/packages"
cp -r "$top/Examples/pages" "$top/Tests/Package/consumer" "$root/"

step "the library and the tool"
inside sh -c 'apt-get install -qq -y --no-install-recommends /packages/libutility1_*.deb /packages/pagetext_*.deb' >/dev/null
inside pagetext --version
inside pagetext --detect /pages/news-gbk.html /pages/article-big5.html
inside pagetext --sentences /pages/broken-gbk.html | head -n 2
inside ldd /usr/bin/pagetext | grep libutility
inside bash -c '. /usr/share/bash-completion/completions/pagetext && complete -p pagetext'

step "the development files and a compiler"
inside sh -c 'apt-get install -qq -y --no-install-recommends g++ cmake make pkg-config /packages/libutility-dev_*.deb' \
  >/dev/null
version=$(inside pkg-config --modversion utility)

step "a host by find_package"
inside cmake -S /consumer -B /consumer/build -DVERSION="$version" >/dev/null
inside cmake --build /consumer/build >/dev/null
inside /consumer/build/consumer

step "a host by pkg-config"
inside sh -c 'c++ -std=c++17 -DCODEMAPS="\"$(pkg-config --variable=codemaps utility)\"" /consumer/Main.cpp \
  $(pkg-config --cflags --libs utility) -o /by-pkg-config && /by-pkg-config'

step "removed again"
inside apt-get purge -qq -y libutility1 libutility-dev pagetext >/dev/null
left=$(find "$root/usr" -path '*/include/c++' -prune -o \( -name 'libutility*' -o -name '*pagetext*' -o -name Utility -o -name utility -o -name utility.pc \) -print)
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }
step "done"
