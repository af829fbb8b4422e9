# Collects the terms of what others have made and is inside a folder or download, from the Debian packages that it is from.
# Sourced after common.sh. Whoever links something new says so here.

# put_licences PRESET FOLDER: those of what is linked into the program.
put_licences() {
  local preset=$1 licences=$2/licences compiler=g++
  if [[ $preset == windows* ]]; then
    compiler=x86_64-w64-mingw32-g++-posix
    terms_of_file "$($compiler -print-file-name=libmingw32.a)" >"$licences/mingw-w64.txt"
    terms_of_windows_qt >"$licences/Qt.txt"
  else
    terms_of_file "$($compiler -print-file-name=libyaml.a)" >"$licences/libyaml.txt"
  fi
  terms_of_file "$($compiler -print-libgcc-file-name)" >"$licences/GCC.txt"
}

# put_common_licences FOLDER: the texts that these name, and that of Qt's licence, which holds for all.
put_common_licences() {
  local licences=$1/licences common=/usr/share/common-licenses text
  mkdir -p "$licences/common-licenses"
  { printf '%s\n' $common/{LGPL-3,GPL-3} && grep --only-matching --no-filename "$common/[[:alnum:].-]*[[:alnum:]]" \
    "$licences"/*.txt; } | sort --unique | while read -r text; do
    cp "$text" "$licences/common-licenses/${text##*/}.txt"
  done
}

# The terms of the Debian package that a file is from.
terms_of_file() { cat "/usr/share/doc/$(package_of_file "$1")/copyright"; }

# Debian 12 knows some files by their names from before /lib was /usr/lib.
package_of_file() {
  local file package
  file=$(realpath "$1")
  package=$(dpkg-query --search "$file" 2>/dev/null || dpkg-query --search "${file#/usr}")
  echo "${package%%:*}"
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
    fail "The terms of Qt $version are not in build/windows-qt. A Qt that packaging/windows/build-qt.sh makes now has them."
  fi
}
