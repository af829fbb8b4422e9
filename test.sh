#!/usr/bin/env bash
# Builds and runs every test, and once more under the address and undefined-behaviour sanitizers.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"

install_missing "${build_packages[@]}" "${run_packages[@]}" libgtest-dev
for preset in debug sanitize; do
  say "Building the tests, preset $preset."
  build "$preset"
  say "Running the tests, preset $preset."
  rm -f "build/$preset/fault_counts.txt"
  ctest --preset "$preset"
  say "Faults tried, preset $preset."
  sort "build/$preset/fault_counts.txt"
done
say "All is well: every test passed, also under the sanitizers."
