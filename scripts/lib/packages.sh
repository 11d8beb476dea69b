# What each job needs of a bare Debian 12 or 13, installed when it is not there yet. Every name
# stands in both releases or is provided there by a package of another name.

# Cross-building the Windows programs; the stand-in and the tests use nothing else.
BUILD_PACKAGES="ca-certificates cmake ninja-build g++-mingw-w64-x86-64-posix googletest
  libjs-dygraphs"
# The companion for the command line on this system.
TOOLS_PACKAGES="g++ libc6-dev libjs-dygraphs"
# Running Windows programs: wine's screen driver loads the X libraries only at run time.
RUN_PACKAGES="wine wine64 xvfb xauth x11-utils pulseaudio pulseaudio-utils fonts-wine
  libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1 libxxf86vm1"
# The manual as HTML and PDF, and the zip.
PACKAGE_PACKAGES="git python3 python3-markdown-it weasyprint fonts-liberation"
# Reports in a browser without a window.
BROWSER_PACKAGES="chromium chromium-driver python3-selenium poppler-utils"
BENCH_PACKAGES="cmake ninja-build $TOOLS_PACKAGES googletest libbenchmark-dev"
FUZZ_PACKAGES="cmake ninja-build $TOOLS_PACKAGES googletest make python3 clang libclang-rt-dev"
TEST_PACKAGES="$BENCH_PACKAGES $FUZZ_PACKAGES clang-format git"

# missing_packages NAME...: those that are neither installed nor provided by one that is, a line
# each. What is there for another architecture only is missing.
missing_packages() {
  local name architecture
  local -A there=()
  architecture=$(dpkg --print-architecture)
  while read -r name; do there[$name]=yes; done < <(
    dpkg-query -W -f '${db:Status-Status} ${Architecture} ${Package}, ${Provides}\n' |
      sed -n "s/^installed \(all\|$architecture\) //p" | sed 's/([^)]*)//g' | tr -s ', ' '\n')
  for name in "$@"; do
    [ -n "${there[$name]:-}" ] || echo "$name"
  done
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
  local missing=()
  command -v apt-get >/dev/null || die "this needs Debian's packages: $*"
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  step "Installing ${#missing[@]} packages: ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q update
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends \
    -o Dpkg::Use-Pty=0 "${missing[@]}"
  mapfile -t missing < <(missing_packages "${missing[@]}")
  [ ${#missing[@]} -eq 0 ] || die "these packages could not be installed: ${missing[*]}"
}
