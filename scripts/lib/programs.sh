# The finished programs.

# build_programs: release Corvane.exe, SdrStandin.exe and corvane-tools.exe in dist/.
build_programs() {
  step "Building Corvane.exe, SdrStandin.exe and corvane-tools.exe"
  configure_and_build mingw Corvane SdrStandin corvane-tools ||
    die "the programs could not be built"
  mkdir -p "$ROOT/dist"
  install_program mingw Corvane.exe
  install_program mingw SdrStandin.exe
  install_program mingw corvane-tools.exe
}

# build_native_tools: release corvane-tools for this system in dist/, one static file.
build_native_tools() {
  step "Building corvane-tools"
  configure_and_build tools corvane-tools || die "corvane-tools could not be built"
  mkdir -p "$ROOT/dist"
  install_program tools corvane-tools
}

# install_program PRESET FILE
install_program() {
  local built
  built=$(find "$BUILD/$1" -name "$2" -type f | head -n 1)
  [ -n "$built" ] || die "$2 was not built"
  cmp -s "$built" "$ROOT/dist/$2" || cp "$built" "$ROOT/dist/$2"
}

# package_version: the version that titles, resources and the package bear.
package_version() {
  local version
  version=$(sed -n 's/^#define CORVANE_VERSION "\(.*\)"$/\1/p' "$ROOT/src/panel/version.h")
  [ -n "$version" ] || die "no version in src/panel/version.h"
  printf '%s' "$version"
}
