#!/usr/bin/env bash
# Runs clang-tidy over every source file, as the debug preset compiles it. Arguments are passed on to it.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files '*.cpp' | xargs --max-procs="$(nproc)" --max-args=4 clang-tidy -p build/debug --quiet "$@" 2> >(grep -v 'warnings generated' >&2)
