#!/usr/bin/env bash
# Runs clang-tidy over the source files that the debug preset compiles: not those for Windows, the benchmarks and the
# fuzzer's own program. Arguments are passed on.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files '*.cpp' ':!*/windows/*' ':!bench' ':!fuzz/libfuzzer.cpp' |
  xargs --max-procs="$(nproc)" --max-args=4 clang-tidy -p build/debug --quiet "$@" 2> >(grep -v 'warnings generated' >&2)
