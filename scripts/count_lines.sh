#!/usr/bin/env bash
# Counts the lines of C++ under version control, and those of them that are tests and their helpers: 30 in 100 at most.
set -euo pipefail
source "$(dirname "$0")/common.sh"

git ls-files -z '*.cpp' '*.h' | xargs --null awk '
  { ++count[FILENAME ~ /^(tests|support|fuzz)\//] }
  END {
    all = count[0] + count[1]
    printf "%d lines of C++; %d in tests/, support/ and fuzz/: %.1f in 100\n", all, count[1], 100 * count[1] / all
  }'
