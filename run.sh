#!/usr/bin/env bash
# Builds Gantrel, lays out a portable folder, build/gantrel/, and opens the tool from there. Without a display, shows
# the main job done by itself: the clicks one by one, and pictures of the windows in build/pictures/.
set -euo pipefail
cd "$(dirname "$0")"
source scripts/common.sh

install_missing "${build_packages[@]}" "${run_packages[@]}"
say "Building Gantrel."
build release

say "Laying out the portable folder build/gantrel/."
cmake --install build/release --prefix build/gantrel >/dev/null

# A game to try the tool on: an empty executable, and some data folders.
sample=$PWD/build/sample-game
mkdir -p "$sample"/W40k/{BetterMaps,BetterMaps_Sound,BigArmies,NightSky}
touch "$sample/W40k.exe"
# Lays out a settings file with three mods of that game.
put_settings() {
  # shellcheck disable=SC1003
  printf '%s\r\n' '[Games]' 'Count=1' 'DoW1=Sample Game' \
    '[Sample Game]' "Path=Z:${sample//\//\\}\\" 'ModCount=3' \
    '[Sample Game.1]' 'Name=Better Maps' 'Active=1' 'DirCount=2' 'Dir1=BetterMaps' 'Dir2=BetterMaps_Sound' \
    '[Sample Game.2]' 'Name=Big Armies' 'Active=0' 'DirCount=1' 'Dir1=BigArmies' \
    '[Sample Game.3]' 'Name=Night Sky' 'Active=1' 'DirCount=1' 'Dir1=NightSky' >"$1"
}
[[ -e build/gantrel/Ulvane.ini ]] || put_settings build/gantrel/Ulvane.ini

if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
  [[ -n ${DISPLAY:-} ]] || install_missing qt6-wayland
  say "Opening Gantrel, with a sample game in build/sample-game/."
  exec build/gantrel/gantrel
fi

say "There is no display here, so Gantrel shows by itself what it does."
rm -rf build/tour build/pictures
mkdir -p build/pictures
cmake --install build/release --prefix build/tour >/dev/null
cp build/release/gantrel_tour build/tour/
put_settings build/tour/Ulvane.ini
mkdir -p -m 700 build/tour/runtime
XDG_RUNTIME_DIR=$PWD/build/tour/runtime QT_QPA_PLATFORM=offscreen build/tour/gantrel_tour "$sample" "$PWD/build/pictures"
