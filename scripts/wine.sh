# Runs Windows programs on Debian's wine, with a display and a Windows of their own. Sourced, from the project's folder.

wine_packages=(wine wine64 xvfb xauth openbox)

export WINEDEBUG=-all WINEPREFIX=$PWD/build/wine WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe='
export LC_ALL=C.UTF-8  # file names of this system are UTF-8, and the code page is Windows-1252

# A fresh Windows, on which nothing was ever installed.
make_prefix() {
  wineserver -k 2>/dev/null || true
  rm -rf "$WINEPREFIX"
  mkdir -p "$(dirname "$WINEPREFIX")"
  wineboot --init >/dev/null 2>&1
  wineserver -w
}

# Runs a command on a display of its own, with a window manager, since windows get the focus from one.
on_display() {
  xvfb-run --auto-servernum --server-args='-screen 0 1280x1024x24' \
    bash -c 'openbox >/dev/null 2>&1 & manager=$!; sleep 0.5; "$@"; result=$?; wineserver -k; kill $manager 2>/dev/null; exit $result' on_display "$@"
}

# Lays out a drive C: with a sample game, the files of a build, and the tour, which does the main job by itself.
put_tour() {
  local drive=$1 tour=$2 build=$3
  rm -rf "$drive/Gantrel" "$drive/Games"
  put_sample_game "$drive/Games/Sample"
  cmake --install "$build" --prefix "$drive/Gantrel" >/dev/null
  cp "$tour" "$drive/Gantrel/"
}
