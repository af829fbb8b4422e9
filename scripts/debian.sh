# Debians made fresh, in folders that are entered by chroot. Sourced after common.sh. Takes root rights, and a Debian of its
# own, for apt. What comes from the network is kept in build/debian.

# make_debian RELEASE FOLDER: lays one out in the folder, with nothing but what apt needs, and sets $release, $machine (the
# folder) and $packages, where what is installed there is kept. Nobody else has the folder as long as this command runs.
make_debian() {
  release=$1 machine=$2
  local name base=$PWD/build/debian/$1.tar
  case $release in
    12) name=bookworm ;;
    13) name=trixie ;;
    unstable) name=unstable ;;
    *) fail "\"$release\" is no release that Gantrel is tried on: 12, 13 and unstable are." ;;
  esac
  ((EUID == 0)) || fail "Please run this as root: it makes a Debian, and enters it by chroot."
  install_missing mmdebstrap
  packages=$PWD/build/debian/$release-packages
  mkdir -p "$packages"
  local lock
  exec {lock}>"$machine.lock"
  flock --nonblock "$lock" || fail "Another command runs on the Debian $release of this folder."

  # No file of a machine that lasts for one command needs to reach the disk before the next one is written. After a week
  # it lacks what Debian has mended since.
  if [[ -z $(find "$base" -mtime -7 2>/dev/null) ]]; then
    say "Making a Debian $release."
    mmdebstrap --variant=minbase --format=tar --dpkgopt=force-unsafe-io "$name" "$base.$$" >"$machine.log" 2>&1 ||
      { cat "$machine.log"; fail "The Debian could not be made."; }
    mv "$base.$$" "$base"
  fi
  rm -rf --one-file-system "$machine"
  mkdir -p "$machine"
  tar --extract --file "$base" --directory "$machine"
  cp /etc/resolv.conf "$machine/etc/"
  export machine packages release
}

# in_debian MOUNTS COMMAND...: runs the command there, after the shell commands MOUNTS, which see the machine from outside.
#
# The command's processes and mounts are in namespaces of their own, so that none of them outlives it. Of this machine
# they see the processors, the devices and the network. From release 13 on, /tmp is in memory.
in_debian() {
  local enter='
    mount --bind "$machine" "$machine"
    mount -t proc proc "$machine/proc"
    mount --rbind /dev "$machine/dev"
    mount -t tmpfs tmpfs "$machine/dev/shm"
    mount --bind "$packages" "$machine/var/cache/apt/archives"
    [[ $release == 12 ]] || mount -t tmpfs tmpfs "$machine/tmp"
    '$1'
    chroot "$machine" env --ignore-environment HOME=/root USER=root LANG=C.UTF-8 TERM="${TERM:-dumb}" \
      PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin ${http_proxy:+http_proxy="$http_proxy"} "$@"'
  shift
  unshare --mount --pid --ipc --fork --kill-child bash -euc "$enter" in_debian "$@"
}
