#!/usr/bin/env bash
# Builds Gantrel, lays out a portable folder, build/gantrel/, and opens the tool from there. Without a display, Gantrel
# shows by itself what it does: the clicks one by one, and pictures of the windows in build/pictures/.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"
source scripts/licences.sh

desktop_packages=()
[[ -z ${WAYLAND_DISPLAY:-} ]] || desktop_packages=(qt6-wayland)
install_missing "${build_packages[@]}" "${run_packages[@]}" "${desktop_packages[@]}"
say "Building Gantrel."
build release

say "Laying out the portable folder build/gantrel/."
cmake --install build/release --prefix build/gantrel >/dev/null
# On systems without Debian's packages, the terms stay with the system's own.
if command -v dpkg-query >/dev/null; then
  put_licences release build/gantrel
  put_common_licences build/gantrel
fi

put_sample_game build/sample-game

if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
  say "Opening Gantrel. To try it without the game, click on \"+\" and pick $PWD/build/sample-game/W40k.exe."
  unlock_folder
  exec build/gantrel/gantrel
fi

say "There is no display here, so Gantrel shows by itself what it does."
# In a compatibility prefix and a home of its own, so that it starts with nothing.
prefix=$PWD/build/tour/prefix
pictures=$PWD/build/pictures
rm -rf build/tour build/pictures
mkdir -p "$pictures" "$prefix/drive_c/Gantrel"
mkdir -m 700 build/tour/{home,runtime}
put_prefix "$prefix"
put_sample_game "$prefix/drive_c/Games/Sample"
cmake --install build/release --prefix "$prefix/drive_c/Gantrel" >/dev/null
cp build/release/gantrel_tour "$prefix/drive_c/Gantrel/"
cd "$prefix/drive_c/Games/Sample"
HOME=$prefix/../home XDG_RUNTIME_DIR=$prefix/../runtime QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='default.warning=false' \
  "$prefix/drive_c/Gantrel/gantrel_tour" "$PWD/W40k.exe" "$pictures"
say "All is well. Pictures of the windows and messages are in build/pictures/."
