#!/usr/bin/env bash
# Builds and runs the benchmarks, and prints a table for each subject. With --keep, also puts the tables into
# bench/results.md. Takes about ten minutes. TMPDIR says on which file system the files are.
arguments=--keep
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"

install_missing "${build_packages[@]}" "${run_packages[@]}" libbenchmark-dev python3-minimal strace
say "Building the release with its benchmarks."
build bench

programs=build/bench/bench
results=build/bench/results
rm -rf "$results"
mkdir -p "$results" build/bench/runtime
chmod 700 build/bench/runtime
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$PWD/build/bench/runtime QT_LOGGING_RULES='*.debug=false'

# What is compared takes turns, in random order, so that a busy moment of the machine hits all alike.
for subject in read_settings write_key lists commands processes; do
  say "Measuring: ${subject/_/ }."
  "$programs/bench_$subject" --benchmark_min_time=0.05 --benchmark_repetitions=7 --benchmark_report_aggregates_only \
    --benchmark_enable_random_interleaving=true --benchmark_out="$results/$subject.json" >"$results/$subject.txt" \
    2> >(grep -v 'propagateSizeHints\|^Run on\|^Running\|Library was built as DEBUG\|^Load Average\|^20..-' >&2)
done
strace -f -e trace=openat,execve -o "$results/strace.txt" \
  "$programs/bench_processes" --benchmark_filter='first window/Gantrel' --benchmark_min_time=0 &>/dev/null

say "The tables."
files=${TMPDIR:-/tmp}  # in a folder that was entered as a root of its own, no mount may be known
{ findmnt --noheadings --output FSTYPE --target "$files" || stat --file-system --format=%T "$files"; } >"$results/file-system.txt"
python3 bench/report.py "$results" "$@"
say "All is well: the tables above are of this machine."
