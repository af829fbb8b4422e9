#!/usr/bin/env bash
# Runs a command on a Debian made fresh, as on a new machine:
#
#   scripts/on_debian.sh 13 ./test.sh
#
# The release is 12, 13 or unstable. The machine is a folder, build/debian/<release>, with the project's files, as they are
# now, in /root/gantrel. It is made for each run, so that no command finds what another one installed; afterwards it stays
# for a look at what the command left. What comes from the network is kept in build/debian. Takes root rights, since the
# machine is entered by chroot, and a Debian of its own, for apt.
arguments='.*'
set -euo pipefail
source "$(dirname "$0")/common.sh"
source scripts/debian.sh
source scripts/windows_qt.sh

(($# >= 2)) || { usage >&2; fail "" "This takes a release and a command."; }
make_debian "$1" "$PWD/build/debian/$1"
shift
project=$machine/root/gantrel
mkdir -p "$project/build"
tar --create --exclude=./build --exclude=./.git . | tar --extract --directory "$project"
if archive=$(windows_qt_archive); then cp "$archive" "$project/build/"; fi

say "On a fresh Debian $release: $*"
result=0
in_debian '' env --chdir=/root/gantrel "$@" || result=$?
say "Debian $release, $((SECONDS / 60)) min $((SECONDS % 60)) s: $* ended with exit code $result."
exit "$result"
