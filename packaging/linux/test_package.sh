#!/usr/bin/env bash
# Installs the package into a clean root of a Debian release, runs what was installed, removes it and
# checks what is left. Needs root's rights, debootstrap, and the machine's mirrors.
#
#   test_package.sh PACKAGE PHOTO CODENAME        CODENAME: bookworm (Debian 12), trixie (Debian 13)
set -euo pipefail

package="$(readlink -f "$1")" photo="$(readlink -f "$2")" codename="$3"
version="$(dpkg-deb --field "$package" Version)"
. /etc/os-release
base="${XDG_CACHE_HOME:-$HOME/.cache}/veldara/root-$codename.tar"
root="$(mktemp -d)"
trap 'umount "$root/proc" "$root/dev/pts" 2>/dev/null || true; rm -rf --one-file-system "$root"' EXIT

fail() {
  echo "test_package: $codename: $*" >&2
  exit 1
}
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive HOME=/root "$@"; }

mirror="$({ cat /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list 2>/dev/null || true; } |
  sed -nE 's#^(URIs:|deb) .*(https?://[^ ]+).*#\2#p' | sed -n 1p)"
if [[ ! -f "$base" ]]; then
  echo "test_package: building a clean root of $codename"
  mkdir -p "$(dirname "$base")"
  debootstrap --variant=minbase "$codename" "$root" "${mirror:-http://deb.debian.org/debian}" >"$base.log" || {
    tail "$base.log" >&2
    fail "the clean root could not be built"
  }
  tar -C "$root" -cf "$base.part" .
  mv "$base.part" "$base"
else
  tar -C "$root" -xf "$base"
fi
chmod 755 "$root" # mktemp's 700 would keep the root's own users out
mount -t proc proc "$root/proc"
mount -t devpts devpts "$root/dev/pts"
cp /etc/resolv.conf "$root/etc/resolv.conf"
# The machine's mirrors for this release, security updates included.
if [[ -f /etc/apt/sources.list.d/debian.sources ]]; then
  sed "s/\b$VERSION_CODENAME\b/$codename/g" /etc/apt/sources.list.d/debian.sources \
    >"$root/etc/apt/sources.list.d/debian.sources"
  : >"$root/etc/apt/sources.list"
fi

inside apt-get -qq update
cp "$package" "$root/tmp/veldara.deb"
inside find / -xdev \( -path /proc -o -path /tmp -o -path /var -o -path /sys \) -prune -o -print | sort >"$root/tmp/before"
echo "test_package: $codename: installing"
inside apt-get -qq install -y --no-install-recommends /tmp/veldara.deb >/dev/null
for file in bin/veldara bin/veldara-tiles share/applications/veldara.desktop share/man/man1/veldara-tiles.1.gz \
  share/icons/hicolor/scalable/apps/veldara.svg share/veldara/help/index.html share/doc/veldara/copyright \
  share/doc/veldara/changelog.gz; do
  [[ -f "$root/usr/$file" ]] || fail "/usr/$file was not installed"
done
inside ldd /usr/bin/veldara | grep 'not found' && fail "a library of the program is missing"
inside veldara-tiles --version | grep -qxF "veldara-tiles $version" || fail "veldara-tiles does not run"
cp "$photo" "$root/tmp/photo.jpg"
inside veldara-tiles --quiet --wide 3 --high 2 --out /tmp/tiles /tmp/photo.jpg
[[ "$(ls "$root/tmp/tiles" | wc -l)" -eq 6 ]] || fail "the installed program made $(ls "$root/tmp/tiles")"
# Without a display it reports an error and ends.
inside veldara >/dev/null 2>&1 && fail "the window came up without a display"

echo "test_package: $codename: removing"
inside apt-get -qq purge -y veldara >/dev/null
inside find /usr -iname '*veldara*' | grep . && fail "left behind"
echo "test_package: $codename: installed, ran, removed; nothing is left"
