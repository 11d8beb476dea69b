# What each job needs of a bare Debian 12, installed when it is not there yet.

# Cross-building the Windows programs; the stand-in and the tests use nothing else.
BUILD_PACKAGES="ca-certificates cmake ninja-build g++-mingw-w64-x86-64-posix googletest"
# Running Windows programs: wine's screen driver loads the X libraries only at run time.
RUN_PACKAGES="wine wine64 xvfb xauth x11-utils pulseaudio pulseaudio-utils fonts-wine
  libgnutls30 libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1
  libxxf86vm1"
BENCH_PACKAGES="cmake ninja-build g++ libc6-dev googletest libbenchmark-dev"
TEST_PACKAGES="$BENCH_PACKAGES make python3 clang libclang-rt-14-dev clang-format git"

package_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif ! command -v sudo >/dev/null; then
    die "packages are missing; run this script as root or install sudo"
  elif [ -t 0 ]; then
    sudo "$@"
  else
    sudo -n "$@" || die "packages are missing and sudo wants a password: run the script once \
in a terminal"
  fi
}

# need_packages NAME...: a second run finds everything there and takes no time.
need_packages() {
  local name missing=()
  for name in "$@"; do
    package_installed "$name" || missing+=("$name")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  command -v apt-get >/dev/null || die "this needs Debian's packages: ${missing[*]}"
  step "Installing ${#missing[@]} packages: ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q update
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends \
    -o Dpkg::Use-Pty=0 "${missing[@]}"
  for name in "${missing[@]}"; do
    package_installed "$name" || die "package $name could not be installed"
  done
}
