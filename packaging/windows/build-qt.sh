#!/usr/bin/env bash
# Makes the static Qt for Windows that Gantrel is built with, from Debian's source package of the version whose tools are
# installed here. Takes about half an hour on two processors, and leaves build/windows-qt-<version>-mingw64.tar.xz, which
# test-windows.sh and package.sh unpack by themselves.
set -euo pipefail
source "$(dirname "$0")/../../scripts/common.sh"
source scripts/windows_qt.sh

install_missing "${build_packages[@]}" "${windows_build_packages[@]}" dpkg-dev perl
package_version=$(dpkg-query --show --showformat='${source:Version}' qt6-base-dev)
version=${package_version%%[+-]*}
work=$PWD/build/windows-qt-work
lock_folder
mkdir -p "$work"

if [[ ! -d $work/source ]]; then
  say "Fetching the source of qt6-base $package_version."
  # Where an earlier run was interrupted, half of it is there, and apt would take it for the whole.
  rm -rf "$work"/qt6-base*
  # From where the packages come, with lists of our own, so that the machine's stay as they are.
  mkdir -p "$work"/lists/partial
  apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
    sort --unique | sed 's/^/deb-src /' >"$work/sources.list"
  apt=(apt-get --quiet -o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o "Dir::State::Lists=$work/lists" -o APT::Sandbox::User=root)
  "${apt[@]}" update
  (cd "$work" && "${apt[@]}" source "qt6-base=$package_version")
  mv "$work"/qt6-base-*/ "$work/source"
fi

# What Gantrel does not use is left out. Debian's compiler lacks the header for tablets, and the text engine DirectWrite 3
# does not link without Direct2D, which nothing needs.
say "Configuring Qt $version."
off=(sql dbus network xml printsupport concurrent pch vulkan tabletevent direct2d direct2d1_1 directwrite3 system_zlib
  system_pcre2 system_png system_jpeg system_freetype system_harfbuzz system_doubleconversion)
off=("${off[@]/#/-DFEATURE_}")
cmake -G Ninja -S "$work/source" -B "$work/build" --toolchain "$PWD/cmake/mingw-w64.cmake" \
  -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
  -DQt6HostInfo_DIR=/usr/lib/x86_64-linux-gnu/cmake/Qt6HostInfo \
  -DCMAKE_BUILD_TYPE=MinSizeRel -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
  -DINPUT_opengl=no -DFEATURE_testlib=ON "${off[@]/%/=OFF}" -DCMAKE_INSTALL_PREFIX="$work/windows-qt"

say "Building it."
cmake --build "$work/build"
cmake --install "$work/build" >/dev/null

say "Packing it."
cd "$work/windows-qt"
rm -rf bin doc mkspecs/modules lib/cmake/Qt6BuildInternals
find . -name '*.prl' -delete
cp "$work/source/debian/copyright" .
tar --create --xz --file "../../windows-qt-$version-mingw64.tar.xz" --directory .. windows-qt
cd ../../..
rm -rf "$work"
say "All is well: build/windows-qt-$version-mingw64.tar.xz is there."
