# Shared by ./run and ./test: needed Debian packages, configuring, building.
# Sourced with the working directory at the root of the checkout.
# shellcheck shell=bash disable=SC2034

BUILD=build/release
PROGRAM=$BUILD/morentis
ASSUME_YES=0

RUN_PACKAGES=(g++ cmake ninja-build pkg-config ccache mold libwxgtk3.2-dev libepoxy-dev libgl-dev
  libglu1-mesa-dev freeglut3-dev libx11-dev libassimp-dev libhdf5-dev zlib1g-dev libdeflate-dev libexpat1-dev libopenexr-dev
  gettext libgl1-mesa-dri xvfb python3)
# Without these a tree with tests and benchmarks can't be configured.
TEST_LIBRARIES=(libgtest-dev libbenchmark-dev libgtk-3-dev libxtst-dev)
TEST_PACKAGES=("${TEST_LIBRARIES[@]}" clang-format openbox povray ffmpeg binutils
  appstream desktop-file-utils shared-mime-info libglib2.0-bin man-db bash-completion)

say() { printf '%s\n' "$*" >&2; }
fail() { say "$@"; exit 1; }

# missing_packages NAME...: those that are not installed, one a line. A system
# without dpkg has other names for them; there the configuring will tell.
missing_packages() {
  command -v dpkg-query >/dev/null || return 0
  local installed
  # shellcheck disable=SC2016
  installed=$'\n'$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null)$'\n'
  local name
  for name; do
    [[ $installed == *$'\n'"installed $name"$'\n'* ]] || printf '%s\n' "$name"
  done
}

# install_packages NAME...: by apt-get, asking first unless root or -y.
install_packages() {
  local apt=(env DEBIAN_FRONTEND=noninteractive apt-get) answer=
  say "These packages are missing: $*"
  if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "Install them as root: apt-get install $*"
    if ((!ASSUME_YES)); then
      [[ -t 0 ]] || fail "Install them with: sudo apt-get install $*"
      read -r -p "Install with sudo? [y/N] " answer
      [[ $answer == [yY]* ]] || fail "Nothing was installed."
    fi
    apt=(sudo "${apt[@]}")
  fi
  # A fresh machine has no package lists yet.
  "${apt[@]}" install -y --no-install-recommends "$@" >&2 ||
    { "${apt[@]}" update >&2 && "${apt[@]}" install -y --no-install-recommends "$@" >&2; } ||
    fail "The packages could not be installed."
}

# cache_has NAME=VALUE...: does the configured tree have all these options?
cache_has() {
  local option
  for option; do
    grep -qE "^${option%%=*}:[A-Z]+=${option#*=}\$" $BUILD/CMakeCache.txt 2>/dev/null || return 1
  done
}

# A build folder that was copied or moved still names the old place.
configured_here() {
  [[ -f $BUILD/build.ninja ]] || return 1
  local home
  home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' $BUILD/CMakeCache.txt 2>/dev/null)
  [[ -n $home && $home -ef $PWD ]]
}

# configure OPTION...: options that were set before stay.
configure() {
  local fresh=()
  [[ -f $BUILD/CMakeCache.txt ]] && ! configured_here && fresh=(--fresh)
  # A half-written tree must not pass for a configured one the next time.
  cmake "${fresh[@]}" --preset release "$@" >&2 || { rm -f $BUILD/build.ninja; fail "Configuring failed; see above."; }
}

# build TARGET...: says nothing of a tree that has nothing to do.
build() {
  cmake --build $BUILD --target "$@" 2>&1 |
    { grep --line-buffered -vE '^(ninja: no work to do\.|\[0/[0-9]+\] Re-checking globbed directories\.\.\.)$' || :; } >&2
  return "${PIPESTATUS[0]}"
}
