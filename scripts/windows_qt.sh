# The static Qt for Windows, and what else building for Windows needs. Sourced after common.sh.

windows_build_packages=(g++-mingw-w64-x86-64 xz-utils)

# Where an archive of it is at hand: named by GANTREL_WINDOWS_QT_ARCHIVE, in build/, or in a folder windows-qt of any folder
# beside this one. Fails when there is none.
windows_qt_archive() {
  local archive
  for archive in "${GANTREL_WINDOWS_QT_ARCHIVE:-}" build/windows-qt-*-mingw64.tar.xz ../*/windows-qt/windows-qt-*-mingw64.tar.xz; do
    [[ -f $archive ]] && echo "$archive" && return
  done
  return 1
}

# To be asked before anything is installed, which would be in vain.
require_windows_qt() {
  [[ -d build/windows-qt ]] || windows_qt_archive >/dev/null ||
    fail "There is no Qt for Windows here, so nothing can be built for it." \
      "packaging/windows/build-qt.sh makes one, in about half an hour."
}

# Puts it into build/windows-qt.
unpack_windows_qt() {
  lock_folder
  [[ ! -d build/windows-qt ]] || return 0
  local archive
  archive=$(windows_qt_archive)
  say "Unpacking $archive."
  rm -rf build/windows-qt.new
  mkdir -p build/windows-qt.new
  tar --extract --xz --file "$archive" --strip-components=1 --directory build/windows-qt.new
  mv build/windows-qt.new build/windows-qt
}
