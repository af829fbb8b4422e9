#!/usr/bin/env bash
# Makes the downloads in build/packages/: gantrel-<version>-windows.zip and gantrel-<version>-linux-x86_64.tar.gz.
# Each is one folder that needs no installing.
set -euo pipefail
cd "$(dirname "$0")"
source scripts/common.sh
source scripts/windows_qt.sh

install_missing "${build_packages[@]}" "${windows_build_packages[@]}"
unpack_windows_qt
for preset in release windows; do
  say "Building Gantrel, preset $preset."
  build "$preset"
  cpack --config "build/$preset/CPackConfig.cmake" -B build/packages
done
rm -rf build/packages/_CPack_Packages
say "The downloads are in build/packages/:"
ls -l build/packages
