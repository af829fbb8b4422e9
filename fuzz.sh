#!/usr/bin/env bash
# Runs every fuzz target under the address and undefined-behaviour sanitizers, one after the other, for so many seconds
# each: 60, or as many as the first argument says. What they find stops it, and stays in build/fuzz.
arguments='[1-9][0-9]*'
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"

seconds=${1:-60}
install_missing "${build_packages[@]}" clang libclang-rt-dev
build fuzz
for target in profile registry; do
  say "Fuzzing: $target."
  mkdir -p "build/fuzz/found/$target"
  "build/fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -print_final_stats=1 -verbosity=0 -max_len=2048 \
    -artifact_prefix="build/fuzz/$target-" "build/fuzz/found/$target" "fuzz/corpus/$target" 2>&1 |
    grep --invert-match '# Uses:\|ecommended dictionary'
done
say "All is well: nothing was found in $seconds seconds each."
