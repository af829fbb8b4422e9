#!/usr/bin/env bash
# Makes the downloads in build/packages/: gantrel-<version>-windows.zip and gantrel-<version>-linux-x86_64.tar.gz.
# Each is one folder that needs no installing, with the terms of all that is in it. "./package.sh linux" or
# "./package.sh windows" makes only that one.
#
# The one for Windows needs a static Qt for Windows: scripts/windows_qt.sh says where it is looked for, and
# packaging/windows/build-qt.sh makes it. The one for Linux runs where the libraries are at least those of the Debian
# that it was made on.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"
source scripts/windows_qt.sh

# Puts the terms of what a download holds into build/<preset>/licences, from the packages whose files are linked into
# it. The download for Windows also gets what it takes to link Gantrel with another Qt.
put_licences() {
  local preset=$1 licences=build/$1/licences common=/usr/share/common-licenses text
  rm -rf "$licences"
  mkdir -p "$licences/common-licenses"
  if [[ $preset == windows ]]; then
    local compiler=x86_64-w64-mingw32-g++-posix relink=$licences/relink parts=build/windows
    terms_of_file "$($compiler -print-file-name=libmingw32.a)" >"$licences/mingw-w64.txt"
    terms_of_windows_qt >"$licences/Qt.txt"
    mkdir "$relink"
    cp packaging/windows/relink/CMakeLists.txt packaging/windows/build-qt.sh cmake/mingw-w64.cmake \
      "$parts"/libgantrel_{core,platform,tool}.a "$relink/"
    cp "$parts/CMakeFiles/gantrel.dir/app/main.cpp.obj" "$relink/main.obj"
    cp "$parts/CMakeFiles/gantrel.dir/gantrel.rc.res" "$relink/gantrel.res"
  else
    local compiler=g++
    terms_of_file "$($compiler -print-file-name=libyaml.a)" >"$licences/libyaml.txt"
  fi
  terms_of_file "$($compiler -print-libgcc-file-name)" >"$licences/GCC.txt"

  # The texts that these name, and that of Qt's licence, which holds for both downloads.
  { printf '%s\n' $common/{LGPL-3,GPL-3} && grep --only-matching --no-filename "$common/[[:alnum:].-]*[[:alnum:]]" \
    "$licences"/*.txt; } | sort --unique | while read -r text; do
    cp "$text" "$licences/common-licenses/${text##*/}.txt"
  done
  [[ $preset != windows ]] || sed --in-place 's/$/\r/' "$licences"/{.,common-licenses}/*.txt
  cp "build/$preset/licences.txt" "$licences/README.txt"
}

# The terms of the Debian package that a file is from.
terms_of_file() {
  local package
  package=$(dpkg-query --search "$(realpath "$1")")
  cat "/usr/share/doc/${package%%:*}/copyright"
}

# Those of the Qt for Windows are beside it; of an older archive of it, here.
terms_of_windows_qt() {
  local version here
  version=$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")/\1/p' build/windows-qt/lib/cmake/Qt6/Qt6ConfigVersionImpl.cmake)
  here=packaging/licences/Qt-$version.txt.xz
  if [[ -f build/windows-qt/copyright ]]; then
    cat build/windows-qt/copyright
  elif [[ -f $here ]]; then
    xzcat "$here"
  else
    fail "The terms of Qt $version are not in build/windows-qt. A Qt that packaging/windows/build-qt.sh makes anew has them."
  fi
}

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
  put_licences "$preset"
  cpack --config "build/$preset/CPackConfig.cmake" -B build/packages
done
rm -rf build/packages/_CPack_Packages
say "All is well. The downloads are in build/packages/:"
ls -l build/packages
