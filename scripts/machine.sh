# Shared by the scripts beside it: what a Debian machine needs, and how to get it. Source it.
#
# Everything comes from Debian 12 (bookworm), so the versions are those Debian pins there.

# To build the library and the planner, to draw the picture of the plan.
BUILD_PACKAGES="g++ cmake ninja-build pkg-config libpolyclipping-dev libdxflib-dev libcli11-dev
  nlohmann-json3-dev librsvg2-bin"
# To build the reference documentation.
DOCS_PACKAGES="doxygen"
# To test and check as well.
TEST_PACKAGES="$BUILD_PACKAGES ccache git clang clang-format clang-tidy libclang-rt-14-dev
  libgtest-dev libgmock-dev libbenchmark-dev python3-clang-14 $DOCS_PACKAGES"
# To measure what the tests reach and notice.
TRUST_PACKAGES="$TEST_PACKAGES llvm"
# To measure against the peers.
BENCH_PACKAGES="$BUILD_PACKAGES libbenchmark-dev libboost-dev libcgal-dev libgeos++-dev libompl-dev
  libeigen3-dev libglpk-dev coinor-libclp-dev"

fail() {
  printf '%s: %s\n' "$(basename "$0")" "$1" >&2
  exit 1
}

say() { printf '\n== %s\n' "$1"; }

# install_packages NAME...: installs what is missing; does nothing, and needs no rights, when all is there.
install_packages() {
  local missing="" package root=""
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
    fail "this is no Debian machine (no apt-get): install by hand what corresponds to: $*"
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q ' installed$' ||
      missing="$missing $package"
  done
  [ -n "$missing" ] || return 0
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null ||
      fail "missing packages:$missing; run this as root, or install sudo, or install them by hand"
    root=sudo
  fi
  say "Installing from Debian:$missing"
  $root apt-get update -q || fail "apt-get update failed: no way to Debian's packages from here?"
  # shellcheck disable=SC2086
  $root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing ||
    fail "apt-get could not install:$missing (the project needs Debian 12 or newer)"
}

# configure PRESET [CMAKE ARGUMENT...]: with the compiler cache where there is one.
configure() {
  local preset=$1
  shift
  if command -v ccache >/dev/null; then
    set -- -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
  fi
  cmake --preset "$preset" "$@" >/dev/null || fail "cmake could not configure preset '$preset'"
}
