# What the project's commands share. Sourced, from the project's folder.

say() { printf '\n\033[1m%s\033[0m\n' "$*"; }

# Installs those of the named Debian packages that are not there yet.
install_missing() {
  local package missing=()
  for package in "$@"; do
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
  done
  ((${#missing[@]})) || return 0
  say "Installing what is missing: ${missing[*]}"
  local as_root=()
  if ((EUID != 0)); then
    command -v sudo >/dev/null || { echo "Please run this as root, or install sudo first." >&2; exit 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update --quiet
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install --yes --quiet --no-install-recommends "${missing[@]}"
}

# Configures and builds a preset, showing the progress; says nothing much when all is up to date.
build() {
  local preset=$1
  [[ -f build/$preset/build.ninja ]] || cmake --preset "$preset" || exit
  cmake --build --preset "$preset" || exit
}

# Puts a game to try the tool on into a folder: an empty executable, and some data folders.
put_sample_game() {
  mkdir -p "$1"/W40k/{BetterMaps,BetterMaps_Sound,BigArmies,NightSky}
  touch "$1/W40k.exe"
}

build_packages=(g++ cmake ninja-build qt6-base-dev)
run_packages=(fonts-comic-neue libqt6widgets6 qt6-qpa-plugins)
