#!/usr/bin/env bash
# Builds everything and runs the tests. Usage: ./test.sh [MODE] [ctest arguments…]
#
#   release   g++, optimised, warnings as errors (the default)
#   clang     clang++, optimised, warnings as errors
#   address   clang++, AddressSanitizer and UndefinedBehaviorSanitizer
#   thread    g++, ThreadSanitizer
#   static    g++, the static library
#   coverage  g++ with gcov; prints line and branch coverage of Src/ (needs gcovr)
#   all       release, clang, address, thread and static, one after the other, and the format check
set -euo pipefail
cd "$(dirname "$0")"
. Tools/Setup/prepare.sh

mode=release
case ${1-} in release | clang | address | thread | static | coverage | all) mode=$1; shift ;; esac

needs=(compiler cmake ninja googletest cli11 json locale)
case $mode in
  clang) needs+=(clang) ;;
  address) needs+=(clang clang-sanitizers) ;;
  coverage) needs+=(gcovr) ;;
  all) needs+=(clang clang-sanitizers clang-format) ;;
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

check_format() {
  git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format --dry-run -Werror
}

for step in $([ "$mode" = all ] && echo release clang address thread static || echo "$mode"); do
  [ "$mode" = all ] && echo "== $step"
  case $step in
    release) run_tests build -DCMAKE_BUILD_TYPE=Release -- "$@" ;;
    clang) run_tests build/clang -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=clang++ -- "$@" ;;
    address) run_tests build/address -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
      -DUTILITY_SANITIZE=address,undefined -- "$@" ;;
    thread) run_tests build/thread -DCMAKE_BUILD_TYPE=RelWithDebInfo -DUTILITY_SANITIZE=thread -- "$@" ;;
    static) run_tests build/static -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -- "$@" ;;
    coverage)
      run_tests build/coverage -DCMAKE_BUILD_TYPE=Debug -DUTILITY_COVERAGE=ON -- "$@"
      gcovr --root . --filter Src/ --exclude-throw-branches --exclude-unreachable-branches build/coverage
      gcovr --root . --filter Src/ --exclude-throw-branches --exclude-unreachable-branches --branches build/coverage | tail -3
      ;;
  esac
done
if [ "$mode" = all ]; then check_format; fi
