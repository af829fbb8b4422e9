#!/usr/bin/env bash
# Makes the downloads in build/packages/: gantrel-<version>-windows.zip and gantrel-<version>-linux-x86_64.tar.gz.
# Each is one folder that needs no installing. "./package.sh linux" or "./package.sh windows" makes only that one.
#
# The one for Windows needs a static Qt for Windows: scripts/windows_qt.sh says where it is looked for, and
# packaging/windows/build-qt.sh makes it. The one for Linux runs where the libraries are at least those of the Debian
# that it was made on.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"
source scripts/windows_qt.sh

packages=("${build_packages[@]}")
case ${1:-} in
  "") presets=(release windows) ;;
  linux) presets=(release) ;;
  windows) presets=(windows) ;;
  *) fail "\"$1\" is no download: linux and windows are." ;;
esac
if [[ ${presets[*]} == *windows* ]]; then
  require_windows_qt
  packages+=("${windows_build_packages[@]}")
fi
install_missing "${packages[@]}"
[[ ${presets[*]} != *windows* ]] || unpack_windows_qt

for preset in "${presets[@]}"; do
  say "Building Gantrel, preset $preset."
  build "$preset"
  cpack --config "build/$preset/CPackConfig.cmake" -B build/packages
done
rm -rf build/packages/_CPack_Packages
say "All is well. The downloads are in build/packages/:"
ls -l build/packages
