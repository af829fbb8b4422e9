#!/usr/bin/env bash
# Runs clang-tidy over the source files that the debug preset compiles: not those for Windows, the benchmarks and the
# fuzzer's own program. Arguments are passed on.
arguments='.*'
set -euo pipefail
source "$(dirname "$0")/common.sh"

install_missing "${build_packages[@]}" libgtest-dev clang-tidy
configure debug >/dev/null
say "Running $(clang-tidy --version | grep -o 'LLVM version.*')."
sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' build/debug/compile_commands.json | grep --invert-match '/build/' | sort --unique |
  xargs --max-procs="$(nproc)" --max-args=4 clang-tidy -p build/debug --quiet \
    --extra-arg=-Wno-unknown-warning-option "$@" 2> >(grep -v 'warnings generated' >&2)
say "All is well: clang-tidy has nothing to say."
