#!/usr/bin/env bash
# Tries the download for Linux that is in build/packages/ on desktops that have no Qt: Debian 12 and 13, or the releases that
# are named, of 12, 13 and unstable. Each has only what the download asks of a system, is read-only but for the home, and
# is tried on X11 and on Wayland: Gantrel says what is missing before these libraries are there, then starts, registers a game
# by its file dialog, makes and activates a mod, and ends. Pictures are in build/pictures-desktops/. Takes root rights.
arguments='12|13|unstable'
set -euo pipefail
source "$(dirname "$0")/common.sh"
source scripts/debian.sh

# What packaging/linux/system-libraries.txt lists comes with these, in every release.
declare -A desktop_packages=(
  [x11]='libx11-6 libx11-xcb1 libsm6 libice6 libegl1 libglx0 libdbus-1-3 libfontconfig1 libharfbuzz0b libstdc++6 xkb-data'
  [wayland]='libwayland-client0 libwayland-cursor0 libwayland-egl1'
)
lock_folder
install_missing xvfb openbox weston xdotool imagemagick
download=$(ls build/packages/gantrel-*-linux-x86_64.tar.xz) || fail "There is no download. ./package.sh linux makes it."
pictures=$PWD/build/pictures-desktops
rm -rf "$pictures"
mkdir -p "$pictures"

display() { (: "${shown:?}"; DISPLAY=$shown "$@"); }
look() { display import -window root "$pictures/$release-$desktop-$1.png"; }
picture() { display import -window root RGB:- | cksum; }

# Presses a key, or types a text, and waits until something happens on the screen, and then until it has ended.
wait_for_change() {
  local before=$1 tries
  for ((tries = 0; tries < 50; ++tries)); do
    sleep 0.2
    [[ $(picture) == "$before" ]] || { sleep 0.8; return; }
  done
  look nothing-happened
  fail "Nothing happens on the screen: $pictures has a picture of it."
}
press() { local before; before=$(picture); display xdotool key "$1"; wait_for_change "$before"; }
enter() { local before; before=$(picture); display xdotool type "$1"; wait_for_change "$before"; }

# What a user does, by the keys. The file dialog's folder is the home.
use() {
  look 1-started
  press Tab; press Tab; press space
  enter Sample; press Return; look 2-file-dialog
  enter game/W40k.exe; press Return; look 3-registered
  press Return
  press Insert; enter Maps; press Tab; press space; look 4-new-mod
  press Return; press Tab; press Tab; press Tab; press Tab; press Down; press Return; look 5-activated
}

# Starts what shows the windows here, the tool on the other system, and uses it.
try_on() {
  desktop=$1
  say "Debian $release, $desktop, read-only but for the home."
  local runtime number end result=0
  runtime=$(mktemp -d)
  chmod 700 "$runtime"
  rm -rf "$machine/home"/*
  mkdir -p "$machine"/home/{runtime,game/W40k/BetterMaps}
  touch "$machine/home/game/W40k.exe"
  tar --extract --file "$download" --directory "$machine/home"

  exec {number}< <(exec Xvfb -displayfd 1 -screen 0 1280x1024x24 -ac 2>/dev/null)
  started+=($!)
  read -r shown <&"$number"
  shown=:$shown
  DISPLAY=$shown openbox >/dev/null 2>&1 & started+=($!)
  local where=(DISPLAY="$shown")
  if [[ $desktop == wayland ]]; then
    where=(WAYLAND_DISPLAY=wayland-gantrel XDG_SESSION_TYPE=wayland)
    printf '[shell]\npanel-position=none\n' >"$runtime/weston.ini"  # its clock would change the picture
    XDG_RUNTIME_DIR=$runtime DISPLAY=$shown weston --backend=x11-backend.so --use-pixman --config="$runtime/weston.ini" \
      --idle-time=0 --width=1200 --height=900 --socket=wayland-gantrel >"$pictures/$release-weston.txt" 2>&1 & started+=($!)
    display timeout 20 xdotool search --sync --class Weston windowfocus
  fi
  sleep 2
  local before
  before=$(picture)
  # It is asked to end when the file that it reads here ends, also by the end of this script.
  exec {end}> >(runtime=$runtime in_debian '
      mountpoint --quiet "$machine/tmp" || mount -t tmpfs tmpfs "$machine/tmp"
      mount --bind "$machine/home" "$machine/home"
      mount --bind "$runtime" "$machine/home/runtime"
      mount --options remount,bind,ro "$machine"' \
    env --chdir=/home HOME=/home XDG_RUNTIME_DIR=/home/runtime "${where[@]}" bash -c '
      ! touch /usr/is-writable 2>/dev/null || exit 90
      gantrel/gantrel & tool=$!
      read -r
      kill "$tool" 2>/dev/null
      wait "$tool"')
  local tool=$!
  wait_for_change "$before"
  use
  [[ $desktop != x11 ]] || display xdotool key alt+F4
  sleep 1
  exec {end}>&-
  wait "$tool" || result=$?
  kill "${started[@]}" 2>/dev/null || true
  wait "${started[@]}" 2>/dev/null || true
  started=()
  exec {number}<&-
  rm -rf "$runtime"

  ((result == 0)) || fail "Gantrel ended with exit code $result."
  grep --quiet '^DataFolder.5 = BetterMaps' "$machine/home/game/Ulvane.module" || fail "The mod was not activated."
  echo "Started, registered a game, made and activated a mod, ended with exit code 0."
}

(($#)) || set -- 12 13
for name in "$@"; do
  make_debian "$name" "$PWD/build/debian/desktop-$name"

  say "Debian $release, without a desktop: what is missing is said, also by the desktop's tool."
  mkdir "$machine/home/tools"
  tar --extract --file "$download" --directory "$machine/home"
  printf '#!/bin/sh\nprintf "%%s\\n" "$@" >/home/told\n' >"$machine/home/tools/zenity"
  chmod +x "$machine/home/tools/zenity"
  result=0
  in_debian '' env PATH=/home/tools:/usr/bin:/bin /home/gantrel/gantrel 2>&1 | tee "$machine/home/said" || result=$?
  ((result == 1)) && grep --quiet '^gantrel: lib.*: cannot open shared object file' "$machine/home/said" &&
    grep --quiet '^lib.*: cannot open shared object file' "$machine/home/told" || fail "That was not said, or not by the tool."

  for desktop in x11 wayland; do
    in_debian '' bash -c "apt-get update && DEBIAN_FRONTEND=noninteractive apt-get install --yes --no-install-recommends \
      ${desktop_packages[$desktop]}" >"$machine.log" 2>&1 || { cat "$machine.log"; fail "The libraries could not be installed."; }
    [[ -z $(find "$machine/usr/lib" -name 'libQt*') ]] || fail "There is a Qt."
    try_on "$desktop"
  done
done
say "All is well: the download works on each of them. Pictures are in build/pictures-desktops/."
