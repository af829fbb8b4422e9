# What the project's commands share. Each sources it as its first act, with its own arguments: it answers --help with the
# comment at the command's head, refuses arguments that do not match the pattern $arguments, goes to the project's folder,
# and sees to it that no command ends without a verdict. What is in $started is ended with the command.

command_name=$(basename "$0")
usage() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"; }
say() { printf '\n\033[1m%s\033[0m\n' "$*"; }
fail() { printf '%s\n' "$@" >&2; exit 1; }

if [[ ${1:-} == --help || ${1:-} == -h ]]; then
  usage
  exit
fi
for argument in "$@"; do
  [[ $argument =~ ^(${arguments:-})$ ]] || { usage >&2; fail "" "$command_name takes no argument \"$argument\"."; }
done
cd "$(dirname "${BASH_SOURCE[0]}")/.."
started=()
trap 'result=$?; kill "${started[@]}" 2>/dev/null || true; ((result == 0)) || printf "\n%s did not succeed: what is above says why.\n" "$command_name" >&2' EXIT

# A command that ran as root left files that its user cannot replace.
theirs=$( ((EUID == 0)) || [[ ! -d build ]] || find build -path build/debian -prune -o ! -user "$EUID" -print -quit)
[[ -z $theirs ]] || fail "$theirs is not yours: a command was run here as another user, perhaps as root." \
  "Take it over first:  sudo chown --recursive $(id --user --name) \"$PWD/build\""

# Waits until no other command works in this folder, and keeps it for this one and those that it calls.
folder_lock=
lock_folder() {
  [[ ${GANTREL_LOCKED:-} != "$PWD" ]] || return 0
  mkdir -p build
  exec {folder_lock}>build/lock
  flock --nonblock "$folder_lock" || { say "Another command is at work in this folder: waiting for it."; flock "$folder_lock"; }
  export GANTREL_LOCKED=$PWD
}
unlock_folder() { [[ -z $folder_lock ]] || exec {folder_lock}>&-; }

# Installs those of the named Debian packages that are not there yet.
install_missing() {
  local package missing=()
  for package in "$@"; do is_installed "$package" || missing+=("$package"); done
  ((${#missing[@]})) || return 0
  command -v apt-get dpkg-query >/dev/null ||
    fail "This is missing here, by the names of Debian's packages:" "  ${missing[*]}" \
      "Please install it; docs/guide.md has the names of some other systems."
  local install=(apt-get install --yes --no-install-recommends -o DPkg::Lock::Timeout=600 "${missing[@]}") as_root=()
  if ((EUID != 0)); then
    as_root=(sudo)
    { command -v sudo && sudo -v; } >/dev/null ||
      fail "Packages are missing, and installing them takes an administrator. This is what to ask for:" "  ${install[*]}"
  fi
  say "Installing what is missing: ${missing[*]}"
  mkdir -p build
  # A source that cannot be reached is no reason to stop: it may have none of these packages.
  "${as_root[@]}" apt-get update </dev/null >build/install.log 2>&1 || true
  LC_ALL=C "${as_root[@]}" "${install[@]/--yes/--assume-no}" 2>/dev/null </dev/null | grep '^Need to get\|^After' || true
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}" </dev/null >>build/install.log 2>&1 ||
    { cat build/install.log; fail "The packages could not be installed."; }
}

# Elsewhere than on Debian, a package is there when what it is for is. What has no name here is left to the build to miss.
is_installed() {
  if command -v dpkg-query >/dev/null; then
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
    return
  fi
  case $1 in
    ninja-build) command -v ninja ;;
    qt6-base-dev) command -v qmake6 ;;
    libyaml-dev) [[ -f /usr/include/yaml.h ]] ;;
    libgtest-dev) [[ -f /usr/include/gtest/gtest.h ]] ;;
    g++ | cmake | clang* | mmdebstrap | strace | wine | xvfb | weston | xdotool) command -v "$1" ;;
    g++-mingw-w64-x86-64) command -v x86_64-w64-mingw32-g++-posix ;;
  esac >/dev/null
}

# Configures a preset where that was not done yet, or for a checkout that was elsewhere.
configure() {
  local preset=$1 cache=build/$1/CMakeCache.txt
  lock_folder
  grep --quiet --no-messages --line-regexp --fixed-strings "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "$cache" || rm -rf "build/$preset"
  [[ build/$preset/build.ninja -nt CMakePresets.json ]] || cmake --preset "$preset" || exit
}

# Configures and builds a preset, showing the progress; says nothing much when all is up to date.
build() {
  configure "$1"
  cmake --build --preset "$1" || exit
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
run_packages=(qt6-qpa-plugins)
