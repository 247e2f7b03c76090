# Read by demo.sh and test.sh: makes sure of what a build needs on this machine.
#
# As root it installs what is missing (Debian packages) and says so; otherwise it prints the one command to run and
# stops. The GBK locale, which the conversions through the C library use, is generated where it is missing.

# Sets `missing` to the packages that the names given stand for and that this machine lacks.
find_missing() {
  missing=()
  local name
  for name in "$@"; do
    case $name in
      compiler) command -v c++ >/dev/null || missing+=(g++) ;;
      clang) command -v clang++ >/dev/null || missing+=(clang) ;;
      clang-sanitizers) [ -n "$(find /usr/lib/llvm-*/lib/clang -name 'libclang_rt.asan-*.a' 2>/dev/null)" ] || missing+=(libclang-rt-dev) ;;
      clang-format) command -v clang-format >/dev/null || missing+=(clang-format) ;;
      clang-tidy) command -v clang-tidy >/dev/null || missing+=(clang-tidy) ;;
      cppcheck) command -v cppcheck >/dev/null || missing+=(cppcheck) ;;
      valgrind) command -v valgrind >/dev/null || missing+=(valgrind libc6-dbg) ;;
      s390x) command -v s390x-linux-gnu-g++ >/dev/null && command -v qemu-s390x-static >/dev/null && [ -e /usr/src/googletest ] ||
        missing+=(g++-s390x-linux-gnu qemu-user-static googletest) ;;
      cmake) command -v cmake >/dev/null || missing+=(cmake) ;;
      ninja) command -v ninja >/dev/null || missing+=(ninja-build) ;;
      gcovr) command -v gcovr >/dev/null || missing+=(gcovr) ;;
      googletest) has_header gmock/gmock.h || missing+=(libgtest-dev libgmock-dev) ;;
      benchmark) has_header benchmark/benchmark.h || missing+=(libbenchmark-dev) ;;
      cli11) has_header CLI/CLI.hpp || missing+=(libcli11-dev) ;;
      json) has_header nlohmann/json.hpp || missing+=(nlohmann-json3-dev) ;;
      icu) has_header unicode/ucnv.h || missing+=(libicu-dev) ;;
      uchardet) has_header uchardet/uchardet.h || missing+=(libuchardet-dev) ;;
      doxygen) command -v doxygen >/dev/null || missing+=(doxygen) ;;
      dpkg-dev) command -v dpkg-shlibdeps >/dev/null || missing+=(dpkg-dev) ;;
      pkg-config) command -v pkg-config >/dev/null || missing+=(pkg-config) ;;
      locale) has_gbk_locale || [ -e /usr/share/i18n/charmaps/GBK.gz ] || missing+=(locales) ;;
      *) echo "prepare.sh: unknown requirement $name" >&2; exit 2 ;;
    esac
  done
}

has_header() {
  command -v c++ >/dev/null && printf '#if !__has_include(<%s>)\n#error\n#endif\n' "$1" | c++ -std=c++17 -E -x c++ - >/dev/null 2>&1
}

has_gbk_locale() {
  [ "$(LC_ALL=zh_CN.gbk locale charmap 2>/dev/null)" = GBK ]
}

# Usage: require NAME…; ends the script where something is missing and cannot be installed.
require() {
  find_missing "$@"
  [ ${#missing[@]} -eq 0 ] && return
  local install="apt-get install -y --no-install-recommends ${missing[*]}"
  if ! command -v apt-get >/dev/null; then
    echo "Missing on this machine (names of Debian packages): ${missing[*]}" >&2
    exit 1
  fi
  if [ "$(id -u)" -ne 0 ]; then
    printf 'Missing on this machine. Run this once, then start again:\n\n  sudo sh -c "apt-get update && %s"\n\n' "$install" >&2
    exit 1
  fi
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  $install -qq >/dev/null
  find_missing "$@"
  [ ${#missing[@]} -eq 0 ] || { echo "Still missing after the installation: ${missing[*]}" >&2; exit 1; }
}

# Usage: require_gbk_locale FOLDER; FOLDER takes the locale where the machine's own cannot be written.
require_gbk_locale() {
  has_gbk_locale && return
  command -v localedef >/dev/null || { echo "No localedef here: conversions use the built-in table route."; return; }
  if [ "$(id -u)" -eq 0 ] && localedef -i zh_CN -f GBK zh_CN.GBK 2>/dev/null && has_gbk_locale; then
    echo "Generated the locale zh_CN.gbk."
    return
  fi
  export LOCPATH="$1"
  has_gbk_locale && return
  mkdir -p "$1"
  localedef -i zh_CN -f GBK "$1/zh_CN.gbk" && has_gbk_locale || { echo "The locale zh_CN.gbk cannot be generated." >&2; exit 1; }
  echo "Generated the locale zh_CN.gbk in $1 (used through LOCPATH)."
}
