#!/usr/bin/env bash
set -euo pipefail
cd "$(dirname "$0")"
cmake -S . -B build -G Ninja -DUTILITY_WARNINGS_AS_ERRORS=ON
cmake --build build
ctest --test-dir build --output-on-failure
