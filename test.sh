#!/usr/bin/env bash
# Builds everything and runs the tests. Usage: ./test.sh [MODE] [ctest arguments…]
#
#   release    g++, optimised, warnings as errors (the default); runs each benchmark once, checks the documentation
#   clang      clang++, optimised, warnings as errors
#   address    clang++, AddressSanitizer and UndefinedBehaviorSanitizer with the checks of implicit conversions
#   thread     g++, ThreadSanitizer
#   static     g++, the static library
#   fuzz       every fuzz target for ten seconds (fuzz.sh)
#   all        all of these, one after the other, and the format check
#   hardened   g++ and clang++, Debug and Release: checks in the standard library, char without a sign
#   newer      library and programs as C++20 and C++23, by g++ and clang++
#   lint       clang-tidy, cppcheck and clang-format
#   coverage   g++ with gcov; prints line and branch coverage of Src/, from the tests alone and with the fuzz corpus
#   growth     writes the table of Docs/Reliability.md: how the time of every operation grows with its text
#   valgrind   the test programs under valgrind
#   bigendian  the test programs for s390x, a big-endian machine, emulated
set -euo pipefail
cd "$(dirname "$0")"
. Tools/Setup/prepare.sh

mode=release
case ${1-} in
  release | clang | address | thread | static | hardened | newer | lint | fuzz | all | coverage | growth | valgrind | \
    bigendian)
    mode=$1; shift ;;
esac

needs=(compiler cmake ninja googletest cli11 json pkg-config locale)
case $mode in
  release) needs+=(benchmark doxygen) ;;
  clang | hardened | newer) needs+=(clang) ;;
  address | fuzz) needs+=(clang clang-sanitizers) ;;
  lint) needs+=(clang clang-format clang-tidy cppcheck icu uchardet) ;;
  all) needs+=(benchmark doxygen clang clang-sanitizers clang-format) ;;
  coverage) needs+=(gcovr) ;;
  valgrind) needs+=(valgrind) ;;
  bigendian) needs+=(s390x) ;;
esac
require "${needs[@]}"
require_gbk_locale "$PWD/build/locale"

# Usage: run_tests BUILD_FOLDER CMAKE_SETTINGS -- CTEST_ARGUMENTS
run_tests() {
  local folder=$1 settings=(-DUTILITY_WARNINGS_AS_ERRORS=ON -DUTILITY_BUILD_TESTS=ON -DUTILITY_BUILD_APPS=ON)
  shift
  while [ "$1" != -- ]; do settings+=("$1"); shift; done
  shift
  cmake -S . -B "$folder" -G Ninja "${settings[@]}" >/dev/null
  cmake --build "$folder"
  ctest --test-dir "$folder" --output-on-failure -j "$(nproc)" "$@"
}

# Usage: run_programs BUILD_FOLDER COMMAND…; each test program as the last argument of COMMAND, from a folder of its own
run_programs() {
  local folder=$PWD/$1 program failed=0
  shift
  for program in $(find "$folder" -name '*_test' -type f -perm -u+x | sort); do
    echo "-- ${program##*/}"
    (cd "$(dirname "$program")" && "$@" "$program" --gtest_brief=1) || failed=1
  done
  return $failed
}

hardened() {
  local compiler type flags
  for compiler in g++ clang++; do
    for type in Debug Release; do
      flags="-D_GLIBCXX_ASSERTIONS -funsigned-char"  # Release has _FORTIFY_SOURCE=3 anyway; Debug is not optimised for it
      echo "-- $compiler $type"
      run_tests "build/hardened-$compiler-$type" -DCMAKE_BUILD_TYPE=$type -DCMAKE_CXX_COMPILER=$compiler \
        -DCMAKE_CXX_FLAGS="$flags" -- "$@"
    done
  done
}

# Usage: build_as STANDARD COMPILER
build_as() {
  cmake -S . -B "build/cxx$1-$2" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_STANDARD="$1" -DCMAKE_CXX_COMPILER="$2" \
    -DUTILITY_WARNINGS_AS_ERRORS=ON -DUTILITY_BUILD_TESTS=OFF -DUTILITY_BUILD_APPS=ON >/dev/null
  cmake --build "build/cxx$1-$2"
}

# Puts the converters of the C library for s390x, which Debian's cross compiler comes without, and a GBK locale in that
# byte order into a folder.
fetch_s390x_library() {
  local folder=$1 options
  [ -e "$folder/locale/zh_CN.gbk" ] && return
  mkdir -p "$folder/lists/partial" "$folder/cache/archives/partial" "$folder/locale"
  options=(-qq -o APT::Architecture=s390x -o APT::Architectures=s390x -o "Dir::State::Lists=$folder/lists"
    -o "Dir::Cache=$folder/cache" -o APT::Sandbox::User=root)
  apt-get "${options[@]}" update
  (cd "$folder" && apt-get "${options[@]}" download libc6 && dpkg-deb -x libc6_*.deb root)
  localedef --big-endian --no-archive -i zh_CN -f GBK "$folder/locale/zh_CN.gbk" || [ -e "$folder/locale/zh_CN.gbk/LC_CTYPE" ]
}

bigendian() {
  local folder=$PWD/build/bigendian library=$PWD/build/bigendian-library
  fetch_s390x_library "$library"
  cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=s390x \
    -DCMAKE_CXX_COMPILER=s390x-linux-gnu-g++ -DCMAKE_C_COMPILER=s390x-linux-gnu-gcc \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$(command -v qemu-s390x-static);-L;/usr/s390x-linux-gnu" \
    -DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST -DUTILITY_GOOGLETEST_SOURCE=/usr/src/googletest \
    -DUTILITY_BUILD_TESTS=ON -DUTILITY_BUILD_APPS=OFF >/dev/null
  cmake --build "$folder"
  run_programs build/bigendian qemu-s390x-static -L /usr/s390x-linux-gnu -E LOCPATH="$library/locale" \
    -E GCONV_PATH="$library/root/usr/lib/s390x-linux-gnu/gconv"
}

check_format() {
  git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format --dry-run -Werror
}

lint() {
  check_format
  cmake -S . -B build/lint -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ -DUTILITY_BUILD_TESTS=OFF \
    -DUTILITY_BUILD_APPS=ON -DUTILITY_BUILD_COMPARISONS=ON -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
  cmake --build build/lint --target named_references big5_plane_2 character_classes case_folding embedded_codemaps
  git ls-files -z 'Src/*.cpp' 'Apps/*.cpp' 'Tools/*.cpp' | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p build/lint --quiet 2>/dev/null
  cppcheck --quiet --std=c++17 --enable=warning,portability,performance --inline-suppr --error-exitcode=1 -j "$(nproc)" \
    --suppressions-list=Tools/Checks/cppcheck.txt -ISrc -ISrc/Utility -ISrc/CodeTrans -DUTILITY_STATIC Src
}

coverage() {
  local options=(--root . --filter Src/ --exclude-throw-branches --exclude-unreachable-branches)
  run_tests build/coverage -DCMAKE_BUILD_TYPE=Debug -DUTILITY_COVERAGE=ON -- --exclude-regex 'ReplaysTheCorpus|ExportedNames' --timeout 900 "$@"
  gcovr "${options[@]}" build/coverage
  gcovr "${options[@]}" --branches build/coverage | tail -3
  # And what the fuzzer found worth keeping, where it has run here.
  local target
  for target in build/coverage/Fuzz/*_replay; do
    local name=${target##*/} found
    found=build/fuzz/found/${name%_replay}
    "$target" "$PWD/Fuzz/corpus" $([ -d "$found" ] && echo "$PWD/$found")
  done
  echo "With the fuzz corpus:"
  gcovr "${options[@]}" build/coverage | tail -3
  gcovr "${options[@]}" --branches build/coverage | tail -3
}

for step in $([ "$mode" = all ] && echo release clang address thread static fuzz || echo "$mode"); do
  [ "$mode" = all ] && echo "== $step"
  case $step in
    release) run_tests build -DCMAKE_BUILD_TYPE=Release -DUTILITY_BUILD_BENCHMARKS=ON -- "$@" ;;
    clang) run_tests build/clang -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=clang++ -- "$@" ;;
    address) run_tests build/address -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
      -DUTILITY_SANITIZE=address,undefined,implicit-conversion -- "$@" ;;
    thread) TSAN_OPTIONS="suppressions=$PWD/cmake/ThreadSanitizerIgnore.txt" \
      run_tests build/thread -DCMAKE_BUILD_TYPE=RelWithDebInfo -DUTILITY_SANITIZE=thread -- "$@" ;;
    static) run_tests build/static -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -- "$@" ;;
    hardened) hardened "$@" ;;
    newer) for standard in 20 23; do build_as $standard g++; build_as $standard clang++; done ;;
    lint) lint ;;
    fuzz) JOBS=$(nproc) ./fuzz.sh 10 ;;
    coverage) coverage "$@" ;;
    growth)
      cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
      cmake --build build --target growth codemaps_data >/dev/null
      build/Tools/growth build/Data/codemaps.dat
      ;;
    valgrind)
      cmake -S . -B build/valgrind -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DUTILITY_BUILD_APPS=OFF >/dev/null
      cmake --build build/valgrind
      # Not the tests that bring their own malloc or limit the memory, both of which are valgrind's here, nor those of
      # forked processes, which lose what other threads hold and would end with the exit code for that.
      run_programs build/valgrind env \
        GTEST_FILTER='-Faults.*:LoaderTest.ReportsThatMemoryIsShort:CommandRunner.LogsEveryEndWhateverOtherThreadsDo' \
        valgrind --quiet --error-exitcode=9 --leak-check=full --show-leak-kinds=definite \
        --errors-for-leak-kinds=definite --suppressions="$PWD/Tools/Checks/valgrind.supp"
      ;;
    bigendian) bigendian ;;
  esac
done
if [ "$mode" = all ]; then check_format; fi
