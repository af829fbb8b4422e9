#!/usr/bin/env bash
# Makes the downloads in build/packages/: gantrel-<version>-windows.zip and gantrel-<version>-linux-x86_64.tar.xz, with a
# file of their SHA-256 sums. Each is one folder that needs no installing, with the terms of all that is in it.
# "./package.sh linux" or "./package.sh windows" makes only that one.
#
# Both are made on a fresh Debian 12, whatever runs here, so the same commit gives the same bytes as long as Debian 12 has
# the same packages. That takes root rights: scripts/on_debian.sh says why. The one for Windows needs a static Qt for
# Windows: scripts/windows_qt.sh says where it is looked for, and packaging/windows/build-qt.sh makes it.
arguments='linux|windows'
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"
source scripts/windows_qt.sh

(($#)) || set -- linux windows
[[ " $* " != *" windows "* ]] || require_windows_qt
lock_folder
as_root=()
((EUID == 0)) || as_root=(sudo --preserve-env=http_proxy,GANTREL_WINDOWS_QT_ARCHIVE)
time=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat --format=%Y CMakeLists.txt)}
"${as_root[@]}" scripts/on_debian.sh 12 env SOURCE_DATE_EPOCH="$time" scripts/make_downloads.sh "$@"

mkdir -p build/packages
for download in "$@"; do rm -f build/packages/gantrel-*-"$download"*; done
cp build/debian/12/root/gantrel/build/packages/* build/packages/
(cd build/packages && sha256sum gantrel-* >SHA256SUMS)
say "All is well. The downloads are in build/packages/:"
ls -l build/packages
