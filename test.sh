#!/usr/bin/env bash
# Builds and runs every test, and once more under the address and undefined-behaviour sanitizers.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"

install_missing "${build_packages[@]}" "${run_packages[@]}" libgtest-dev
for preset in debug sanitize; do
  say "Building the tests, preset $preset."
  build "$preset"
  say "Running the tests, preset $preset."
  ctest --preset "$preset"
done
say "All is well: every test passed, also under the sanitizers."
