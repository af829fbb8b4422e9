#!/usr/bin/env bash
# Runs a command on a Debian made fresh, as on a new machine:
#
#   scripts/on_debian.sh 13 ./test.sh
#
# The release is 12 or 13. The machine is a folder, build/debian/<release>, with the project's files, as they are now, in
# /root/gantrel. It is made anew for each run, so that no command finds what another one installed; afterwards it stays
# for a look at what the command left. What comes from the network is kept in build/debian. Takes root rights, since the
# machine is entered by chroot, and a Debian of its own, for apt.
set -euo pipefail
source "$(dirname "$0")/common.sh"
source scripts/windows_qt.sh

(($# >= 2)) || fail "Usage: scripts/on_debian.sh 12|13 COMMAND [ARGUMENT...]"
release=$1
shift
case $release in
  12) name=bookworm ;;
  13) name=trixie ;;
  *) fail "\"$release\" is no release that Gantrel is tried on: 12 and 13 are." ;;
esac
((EUID == 0)) || fail "Please run this as root: it makes a Debian, and enters it by chroot."
install_missing mmdebstrap

base=$PWD/build/debian/$release.tar
packages=$PWD/build/debian/$release-packages
machine=$PWD/build/debian/$release
mkdir -p "$packages"
exec {lock}>"$machine.lock"
flock --nonblock "$lock" || fail "Another command runs on the Debian $release of this folder."

# No file of a machine that lasts for one command needs to reach the disk before the next one is written.
if [[ ! -f $base ]]; then
  say "Making a Debian $release."
  mmdebstrap --variant=minbase --dpkgopt=force-unsafe-io "$name" "$machine.new.tar" >"$machine.log" 2>&1 ||
    { cat "$machine.log"; fail "The Debian could not be made."; }
  mv "$machine.new.tar" "$base"
fi

rm -rf --one-file-system "$machine"
mkdir -p "$machine"
tar --extract --file "$base" --directory "$machine"
project=$machine/root/gantrel
mkdir -p "$project/build"
tar --create --exclude=./build --exclude=./.git . | tar --extract --directory "$project"
if archive=$(windows_qt_archive); then cp "$archive" "$project/build/"; fi
cp /etc/resolv.conf "$machine/etc/"

# The command's processes and mounts are in namespaces of their own, so that none of them outlives it. Of this machine
# they see the processors, the devices and the network. From release 13 on, /tmp is in memory.
enter='
  mount -t proc proc "$machine/proc"
  mount --rbind /dev "$machine/dev"
  mount -t tmpfs tmpfs "$machine/dev/shm"
  mount --bind "$packages" "$machine/var/cache/apt/archives"
  ((release < 13)) || mount -t tmpfs tmpfs "$machine/tmp"
  chroot "$machine" env --ignore-environment --chdir=/root/gantrel HOME=/root USER=root LANG=C.UTF-8 TERM="${TERM:-dumb}" \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin ${http_proxy:+http_proxy="$http_proxy"} "$@"'
say "On a fresh Debian $release: $*"
export machine packages release
result=0
unshare --mount --pid --ipc --fork --kill-child bash -euc "$enter" on_debian "$@" {lock}>&- || result=$?
say "Debian $release, $((SECONDS / 60)) min $((SECONDS % 60)) s: $* ended with exit code $result."
exit "$result"
