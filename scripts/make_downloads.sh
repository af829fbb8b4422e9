#!/usr/bin/env bash
# Makes the downloads that are named, linux and windows, of the Debian that it runs on. Called by package.sh, on a fresh
# Debian 12; SOURCE_DATE_EPOCH is the time that their files bear.
arguments='linux|windows'
set -euo pipefail
source "$(dirname "$0")/common.sh"
source scripts/licences.sh
source scripts/windows_qt.sh

version=$(sed -n 's/^project(gantrel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
libraries=/usr/lib/x86_64-linux-gnu
# X11 with its accented letters, and Wayland with window frames, which Qt draws only where it could use EGL too.
plugins=(platforms/libq{xcb,wayland-generic} platforminputcontexts/libcomposeplatforminputcontextplugin
  wayland-shell-integration/libxdg-shell wayland-decoration-client/libbradient
  wayland-graphics-integration-client/libqt-plugin-wayland-egl)

# Builds a preset and lays it out in the new folder build/packages/gantrel.
lay_out() {
  say "Building Gantrel, preset $1."
  build "$1"
  rm -rf "$folder"
  cmake --install "build/$1" --prefix "$folder" --strip >/dev/null
  put_licences "$1" "$folder"
}

# Puts what these programs, libraries and plugins ask for into lib/, and what that asks for, but for what is the system's.
carry_libraries() {
  local file name
  for file in "$@"; do
    for name in $(asked_by "$file"); do
      if grep --quiet --word-regexp --fixed-strings "$name" packaging/linux/system-libraries.txt || [[ -e $folder/lib/$name ]]; then
        continue
      fi
      cp "$libraries/$name" "$folder/lib/"
      carry_libraries "$folder/lib/$name"
    done
  done
}

asked_by() { objdump --private-headers "$@" | awk '$1 == "NEEDED" { print $2 }'; }

# What the folder asks of the system, each library with the newest version of its interface.
asked_of_system() {
  local library version
  find "$folder/gantrel" "$folder/lib" -name '*.so*' -o -name gantrel -type f | xargs objdump --private-headers | awk '
    $1 == "NEEDED" { print $2 }
    $1 == "required" { library = substr($3, 1, length($3) - 1); next }
    !NF { library = "" }
    library && $4 ~ /_[0-9.]+$/ && $4 !~ /^CXXABI/ { print library, $4 }' |
    sort --version-sort --unique | awk '{ newest[$1] = $0 } END { for (library in newest) print newest[library] }' |
    while read -r library version; do [[ -e $folder/lib/$library ]] || echo "$library${version:+ $version}"; done
}

put_qt() {
  local plugin file package source
  for plugin in "${plugins[@]}"; do
    install -D --mode=644 "$libraries/qt6/plugins/$plugin.so" "$folder/lib/plugins/$plugin.so"
  done
  carry_libraries "$folder/lib/libgantrel.so" "$folder"/lib/plugins/*/*.so
  diff <(grep --invert-match '^#\|^$' packaging/linux/system-libraries.txt | sort) <(asked_of_system | sort) ||
    fail "packaging/linux/system-libraries.txt (<) is not what the download asks of the system (>)."

  {
    printf '\nThe libraries of the folder lib are those of these Debian packages, unchanged. The sources are at Debian: on\n'
    printf 'Debian 12, "apt-get source <source>=<version>" fetches them. Each text has the name of its source.\n\n'
    find "$folder/lib" -name '*.so*' -printf '%f\n' | sort | while read -r file; do
      [[ $file != libgantrel.so ]] || continue
      file=$(find "$libraries" "$libraries/qt6/plugins" -name "$file" -print -quit)
      package=$(package_of_file "$file")
      dpkg-query --show --showformat='  ${source:Package} ${source:Version}, package ${Package}\n' "$package"
      source=$(dpkg-query --show --showformat='${source:Package}' "$package")
      terms_of_file "$file" >"$folder/licences/${source/#gcc-*/GCC}.txt"
    done | sort --unique
  } >>"$folder/licences/README.txt"
}

# What it takes to link Gantrel with another Qt, with the script that made this one.
put_relink() {
  local relink=$folder/licences/relink parts=build/windows
  mkdir -p "$relink"/{cmake,scripts,packaging/windows}
  cp packaging/windows/relink/CMakeLists.txt "$parts"/libgantrel_{core,platform,tool}.a "$relink/"
  cp "$parts/CMakeFiles/gantrel.dir/app/main.cpp.obj" "$relink/main.obj"
  cp "$parts/CMakeFiles/gantrel.dir/gantrel.rc.res" "$relink/gantrel.res"
  cp cmake/mingw-w64.cmake "$relink/cmake/"
  cp scripts/{common,windows_qt}.sh "$relink/scripts/"
  cp packaging/windows/build-qt.sh "$relink/packaging/windows/"
}

# The same bytes from the same files: sorted, of no one's account, with one time.
pack() {
  local archive=$PWD/build/packages/gantrel-$version-$1
  chmod --recursive u=rwX,go=rX "$folder"
  find "$folder" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
  rm -f "$archive"
  if [[ $1 == *.zip ]]; then
    (cd "$folder/.." && find gantrel | LC_ALL=C sort | TZ=UTC zip --quiet --strip-extra --latest-time "$archive" -@)
  else
    tar --create --sort=name --format=gnu --owner=0 --group=0 --numeric-owner --directory "$folder/.." gantrel |
      xz -9 --threads=1 >"$archive"
  fi
}

packages=("${build_packages[@]}" xz-utils)
[[ " $* " != *" linux "* ]] || packages+=(binutils qt6-qpa-plugins qt6-wayland)
[[ " $* " != *" windows "* ]] || packages+=("${windows_build_packages[@]}" zip)
install_missing "${packages[@]}"
folder=$PWD/build/packages/gantrel
for download in "$@"; do
  if [[ $download == linux ]]; then
    lay_out download
    put_qt
    put_common_licences "$folder"
    pack linux-x86_64.tar.xz
  else
    unpack_windows_qt
    lay_out windows
    put_common_licences "$folder"
    sed --in-place 's/$/\r/' $(find "$folder/licences" -name '*.txt' ! -name README.txt ! -name Comic-Neue.txt ! -path '*/relink/*')
    put_relink
    pack windows.zip
  fi
done
rm -rf "$folder"
