#!/usr/bin/env bash
# Checks that every source file is formatted as .clang-format says. With --fix, formats them.
arguments=--fix
set -euo pipefail
source "$(dirname "$0")/common.sh"

install_missing clang-format
how=(--dry-run -Werror)
[[ ${1:-} != --fix ]] || how=(-i)
find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs --null clang-format "${how[@]}"
say "All is well: every file is formatted as $(clang-format --version | grep -o 'clang-format version [0-9]*') does it."
