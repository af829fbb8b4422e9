#!/usr/bin/env bash
# Builds Gantrel for Windows and runs its tests there: on Debian's wine, in a Windows of their own below build/. Then lets
# both builds, that for Windows and the one for this system, do the same clicks, and compares the files that come of it.
#
# Needs a static Qt for Windows: scripts/windows_qt.sh says where it is looked for, and packaging/windows/build-qt.sh makes
# it.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"
source scripts/wine.sh
source scripts/windows_qt.sh

require_windows_qt
install_missing "${build_packages[@]}" "${run_packages[@]}" "${windows_build_packages[@]}" "${wine_packages[@]}" googletest
unpack_windows_qt

say "Building Gantrel and its tests for Windows."
build windows-tests

say "Making a fresh Windows in build/wine."
make_prefix

say "Running the tests there."
export GANTREL_TEST_MACHINE=1
on_display ctest --preset windows-tests --verbose

say "Doing the same clicks in both builds."
build release
pictures=$PWD/build/pictures-windows
rm -rf build/same-clicks "$pictures"
mkdir -p build/same-clicks "$pictures"

on_windows=$WINEPREFIX/drive_c
put_tour "$on_windows" build/windows-tests/gantrel_tour.exe build/windows-tests
(cd "$on_windows/Games/Sample" && on_display wine 'C:\Gantrel\gantrel_tour.exe' 'C:\Games\Sample\W40k.exe' "Z:$pictures")

here=$PWD/build/same-clicks/drive_c
put_prefix build/same-clicks
put_tour "$here" build/release/gantrel_tour build/release
mkdir -m 700 build/same-clicks/{home,runtime,pictures}
(cd "$here/Games/Sample" && HOME=$here/../home XDG_RUNTIME_DIR=$here/../runtime QT_QPA_PLATFORM=offscreen \
  QT_LOGGING_RULES='default.warning=false' \
  "$here/Gantrel/gantrel_tour" "$PWD/W40k.exe" "$here/../pictures" >/dev/null)

for file in Gantrel/Ulvane.ini Games/Sample/Ulvane.module; do
  cmp "$on_windows/$file" "$here/$file"
  echo "Both builds wrote the same $(stat --format=%s "$here/$file") bytes: $file"
done
say "All is well. Pictures of the windows and messages on Windows are in build/pictures-windows/."
