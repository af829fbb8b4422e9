# What the project's commands share. Each sources it as its first act, with its own arguments: it answers --help with the
# comment at the command's head, goes to the project's folder, and sees to it that no command ends without a verdict.

if [[ ${1:-} == --help || ${1:-} == -h ]]; then
  sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"
  exit
fi
command_name=$(basename "$0")
cd "$(dirname "${BASH_SOURCE[0]}")/.."
trap 'result=$?; ((result == 0)) || printf "\n%s did not succeed: what is above says why.\n" "$command_name" >&2' EXIT

say() { printf '\n\033[1m%s\033[0m\n' "$*"; }
fail() { printf '%s\n' "$@" >&2; exit 1; }

# A command that ran as root left files that its user cannot replace.
theirs=$( ((EUID == 0)) || [[ ! -d build ]] || find build -path build/debian -prune -o ! -user "$EUID" -print -quit)
[[ -z $theirs ]] || fail "$theirs is not yours: a command was run here as another user, perhaps as root." \
  "Take it over first:  sudo chown --recursive $(id --user --name) \"$PWD/build\""

# Installs those of the named Debian packages that are not there yet.
install_missing() {
  local package missing=()
  for package in "$@"; do
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
  done
  ((${#missing[@]})) || return 0
  local install=(apt-get install --yes --no-install-recommends "${missing[@]}") as_root=()
  if ((EUID != 0)); then
    as_root=(sudo)
    { command -v sudo && sudo -v; } >/dev/null ||
      fail "Packages are missing, and installing them takes an administrator. This is what to ask for:" "  ${install[*]}"
  fi
  say "Installing what is missing: ${missing[*]}"
  mkdir -p build
  { "${as_root[@]}" apt-get update && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}"; } \
    </dev/null >build/install.log 2>&1 || { cat build/install.log; fail "The packages could not be installed."; }
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
  mkdir -p "$1"/W40k/{BetterMaps,BigArmies}/data/art
  touch "$1/W40k.exe" "$1"/W40k/{BetterMaps,BigArmies}/data/art/banner.tga
}

# Makes a folder a compatibility prefix whose registry knows where the sample game is.
put_prefix() {
  mkdir -p "$1"
  printf '%s\n' 'WINE REGISTRY Version 2' '' '[Software\\THQ\\Sample Game] 1' '"InstallLocation"="C:\\Games\\Sample"' \
    >"$1/system.reg"
}

build_packages=(g++ cmake ninja-build qt6-base-dev libyaml-dev)
run_packages=(libqt6widgets6 qt6-qpa-plugins)
