# The two finished programs.

# build_programs: release Corvane.exe and SdrStandin.exe in dist/.
build_programs() {
  step "Building Corvane.exe and SdrStandin.exe"
  configure_and_build mingw Corvane SdrStandin || die "the programs could not be built"
  mkdir -p "$ROOT/dist"
  install_program Corvane.exe
  install_program SdrStandin.exe
}

install_program() {
  local built
  built=$(find "$BUILD/mingw" -name "$1" -type f | head -n 1)
  [ -n "$built" ] || die "$1 was not built"
  cmp -s "$built" "$ROOT/dist/$1" || cp "$built" "$ROOT/dist/$1"
}

# package_version: the version that titles, resources and the package bear.
package_version() {
  local version
  version=$(sed -n 's/^#define CORVANE_VERSION "\(.*\)"$/\1/p' "$ROOT/src/panel/version.h")
  [ -n "$version" ] || die "no version in src/panel/version.h"
  printf '%s' "$version"
}
