#!/bin/bash
# Runs a command of the project in a bare root of a Debian release, as on a fresh machine:
#   scripts/in-bare-debian.sh [--again] RELEASE COMMAND...
#   scripts/in-bare-debian.sh trixie scripts/demo.sh
# The root is a new one each time; with --again it is the last one of that release, with whatever
# was installed and built there. It stays in build/bare/RELEASE, the checkout in its /corvane.
#
# Taken along are the files that git knows or would add, as they are now. The command sees its own
# processes, mounts and network: a loopback and nothing else, so that the fixed port is free
# whatever else runs here. Only apt-get is let out into the network, by a wrapper in the root, and
# so the command installs for itself what it misses. All of that ends with the command.
# Needs root and debootstrap.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh

NEEDED_COMMANDS="debootstrap unshare nsenter ip git tar"

# The inner half: process 1 of the root's own world. Whatever it mounts goes with it.
if [ "${1:-}" = --inside ]; then
  root=$2
  shift 2
  ip link set lo up
  # A root that is no mount point lets nobody inside have mounts of his own.
  mount --bind "$root" "$root"
  mount -t proc proc "$root/proc"
  mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
  mount -t devpts -o newinstance,ptmxmode=0666,mode=0620,gid=5 devpts "$root/dev/pts"
  mount --bind "$root/dev/pts/ptmx" "$root/dev/ptmx"
  mount --bind "$root.packages" "$root/var/cache/apt/archives"
  touch "$root/run/network-outside"
  mount --bind "$BUILD/bare/network-outside" "$root/run/network-outside"
  code=0
  env -i HOME=/root TERM="${TERM:-dumb}" LANG=C.UTF-8 \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
    chroot "$root" sh -c 'cd /corvane && exec "$@"' sh "$@" || code=$?
  exit "$code"
fi

usage() { sed -n '2,14s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"; }

AGAIN=
case ${1:-} in
  -h | --help) usage && exit 0 ;;
  --again) AGAIN=yes && shift ;;
esac
[ $# -ge 2 ] || die "$(usage)"
RELEASE=$1
shift
[[ $RELEASE =~ ^[a-z]+$ ]] || die "'$RELEASE' is no name of a release; one is bookworm"
[ "$(id -u)" -eq 0 ] || die "this must be run as root: it makes a root of its own and mounts in it"
for command in $NEEDED_COMMANDS; do
  command -v "$command" >/dev/null || die "this needs the command $command"
done

BASE=$BUILD/bare/$RELEASE.base
BARE=$BUILD/bare/$RELEASE
mkdir -p "$BARE.packages/partial"

if [ ! -d "$BASE" ]; then
  step "Making a bare root of $RELEASE"
  rm -rf "$BASE.new"
  run_logged "debootstrap-$RELEASE" debootstrap --variant=minbase "$RELEASE" "$BASE.new" ||
    die "debootstrap failed"
  mv "$BASE.new" "$BASE"
fi
if [ -z "$AGAIN" ] || [ ! -d "$BARE" ]; then
  rm -rf "$BARE"
  cp -a --reflink=auto "$BASE" "$BARE"
  # Debian's installer writes this one, debootstrap does not.
  [ -s "$BARE/etc/hosts" ] || echo "127.0.0.1 localhost" >"$BARE/etc/hosts"
  cat >"$BARE/usr/local/bin/apt-get" <<'WRAPPER'
#!/bin/sh
exec nsenter --net=/run/network-outside /usr/bin/apt-get "$@"
WRAPPER
  chmod +x "$BARE/usr/local/bin/apt-get"
fi
cp -L /etc/resolv.conf "$BARE/etc/resolv.conf"

# Files that are gone from the checkout go from the copy too; what was built there stays. A file of
# other content than before is newer than whatever was built there, the others are as old as before.
mkdir -p "$BARE/corvane"
rm -rf "$BARE/corvane.new"
mkdir "$BARE/corvane.new"
git -c safe.directory="$ROOT" ls-files -z --cached --others --exclude-standard |
  xargs -0 sh -c 'for file; do [ ! -e "$file" ] || printf "%s\0" "$file"; done' sh |
  tar -c --null --no-recursion -T - | tar -x --touch -C "$BARE/corvane.new"
# shellcheck disable=SC2016
(cd "$BARE/corvane.new" && find . -type f -exec sh -c 'before=$1
  shift
  for file; do ! cmp -s "$file" "$before/$file" || touch -r "$before/$file" "$file"; done' \
  sh "$BARE/corvane" {} +)
find "$BARE/corvane" -mindepth 1 -maxdepth 1 ! -name build ! -name dist ! -name demo-output \
  -exec rm -rf {} +
cp -a "$BARE/corvane.new/." "$BARE/corvane"
rm -rf "$BARE/corvane.new"

# A bind mount keeps the way into this side's network open. The world of the command begins with
# the second unshare and ends with it, however that comes about.
step "In a bare $RELEASE: $*"
touch "$BUILD/bare/network-outside"
unshare --mount --propagation private -- bash -c '
  mount --bind /proc/self/ns/net "$1" && shift &&
    exec unshare --mount --net --pid --ipc --fork --kill-child -- "$@"' bash \
  "$BUILD/bare/network-outside" bash "$ROOT/scripts/in-bare-debian.sh" --inside "$BARE" "$@" <&0 &
WORLD=$!
at_exit "kill -KILL $WORLD 2>/dev/null; wait $WORLD 2>/dev/null"
code=0
wait "$WORLD" || code=$?
say ""
say "the root is left in ${BARE#"$ROOT"/}, the checkout in its /corvane"
exit "$code"
