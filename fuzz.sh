#!/usr/bin/env bash
# Runs the fuzz targets. Usage: ./fuzz.sh [SECONDS] [TARGET…]
#
# Each target (all of them if none is named: AnalysisFuzz, ConversionFuzz, …) runs SECONDS (10) under AddressSanitizer and
# UndefinedBehaviorSanitizer, starting from Fuzz/corpus/ and from what earlier runs found worth keeping in
# build/fuzz/found/. Prints executions and failures of each. An input that fails is kept in build/fuzz/failures/; once
# the fault is mended it belongs into Fuzz/corpus/, under a name that says what it is, where the tests replay it.
# JOBS=N runs N targets at a time.
set -euo pipefail
cd "$(dirname "$0")"
. Tools/Setup/prepare.sh
require compiler cmake ninja clang clang-sanitizers cli11 json locale
require_gbk_locale "$PWD/build/locale"

seconds=10
case ${1-} in [0-9]*) seconds=$1; shift ;; esac
folder=$PWD/build/fuzz
cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DBUILD_SHARED_LIBS=OFF \
  -DUTILITY_SANITIZE=address,undefined,implicit-conversion -DUTILITY_WARNINGS_AS_ERRORS=ON -DUTILITY_BUILD_FUZZERS=ON \
  -DUTILITY_BUILD_TESTS=OFF -DUTILITY_BUILD_APPS=ON >/dev/null
cmake --build "$folder"
[ $# -gt 0 ] || set -- $(cd Fuzz && ls -- *Fuzz.cpp | sed 's/\.cpp$//')

run_target() {
  local target=$1 found=$folder/found/$1 failures=$folder/failures/$1 log=$folder/$1.log status=0
  mkdir -p "$found" "$failures"
  # No allocation of more than 256 MB, no input that takes longer than ten seconds, dictionary where there is one.
  "$folder/Fuzz/$target" "$found" "$PWD/Fuzz/corpus" -max_total_time="$seconds" -max_len=2048 -timeout=10 -malloc_limit_mb=256 \
    $([ -e "Fuzz/$target.dict" ] && echo "-dict=Fuzz/$target.dict") -artifact_prefix="$failures/" -print_final_stats=1 \
    >"$log" 2>&1 || status=$?
  local executions
  executions=$(sed -n 's/^stat::number_of_executed_units: //p' "$log")
  printf '%-16s %12s executions %6s s  %s\n' "$target" "${executions:-?}" "$seconds" \
    "$([ $status -eq 0 ] && echo ok || echo "FAILED, see $log")"
  return $status
}

failed=0
for target in "$@"; do
  while [ "$(jobs -rp | wc -l)" -ge "${JOBS:-1}" ]; do wait -n || failed=1; done
  run_target "$target" &
done
while [ "$(jobs -p | wc -l)" -gt 0 ]; do wait -n || failed=1; jobs >/dev/null; done
exit $failed
