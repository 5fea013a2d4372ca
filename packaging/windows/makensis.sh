#!/usr/bin/env bash
# Prints the path of a makensis whose installers are not open to CVE-2025-43715 (a race in the
# temporary folder that gives a user the rights of an installer run as SYSTEM): NSIS 3.11 or later, or
# a package whose changelog names the fix. Says on standard error which one it is.
#
# The one that is installed is taken where it has the fix. Otherwise Debian 13's is unpacked, with the
# libraries that it needs, into ${XDG_CACHE_HOME:-~/.cache}/veldara; nothing is installed, and the
# machine's own package configuration is read and never changed.
#
#   makensis.sh               the path of a good one
#   makensis.sh --check PATH  status 0 when that one has the fix
set -euo pipefail

cve=CVE-2025-43715
fixed_in=3.11
release=trixie
cache="${XDG_CACHE_HOME:-$HOME/.cache}/veldara"

say() { printf 'makensis: %s\n' "$*" >&2; }

version_of() { # PATH: as dpkg compares it, 3.08-3+deb12u1
  "$1" -VERSION 2>/dev/null | sed 's/^v//'
}
changelog_names_fix() { # CHANGELOG
  [[ -f "$1" ]] && zcat -f "$1" | grep -q "$cve"
}
has_fix() { # PATH CHANGELOG
  local version
  version="$(version_of "$1")" || return 1
  [[ -n "$version" ]] || return 1
  dpkg --compare-versions "$version" ge "$fixed_in" || changelog_names_fix "$2"
}

installed_changelog=/usr/share/doc/nsis/changelog.Debian.gz
if [[ "${1:-}" == --check ]]; then
  has_fix "$2" "${3:-$installed_changelog}" && exit 0
  say "$2 is NSIS $(version_of "$2"), without the fix for $cve: refused"
  exit 1
fi

installed="$(command -v makensis || true)"
if [[ -n "$installed" ]] && has_fix "$installed" "$installed_changelog"; then
  say "NSIS $(version_of "$installed"), the installed one"
  printf '%s\n' "$installed"
  exit 0
fi

unpacked="$cache/nsis-$release"
exec 8>"$(mkdir -p "$cache" && printf '%s' "$cache/nsis.lock")"
flock 8
if [[ ! -x "$unpacked/makensis" ]]; then
  # An apt of its own: the machine's Debian mirror, asked for the other release.
  apt_root="$(mktemp -d "$cache/nsis-apt.XXXXXX")"
  trap 'rm -rf "$apt_root"' EXIT
  mkdir -p "$apt_root"/{sources.list.d,lists/partial,cache/archives/partial,debs}
  mirror="$(cat /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null |
    grep -oE 'https?://[^ ]+/debian/?([[:space:]]|$)' | head -n 1 | tr -d '[:space:]' || true)"
  cat >"$apt_root/sources.list.d/$release.sources" <<END
Types: deb
URIs: ${mirror:-http://deb.debian.org/debian}
Suites: $release
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
END
  apt_options=(
    -o Dir::Etc::sourcelist=/dev/null
    -o Dir::Etc::sourceparts="$apt_root/sources.list.d"
    -o Dir::State::Lists="$apt_root/lists"
    -o Dir::Cache="$apt_root/cache"
    -o APT::Sandbox::User=
    -o Acquire::Languages=none
    -o Acquire::Retries=3
  )
  say "taking NSIS from Debian's $release"
  apt-get "${apt_options[@]}" -qq update >&2
  (cd "$apt_root/debs" && apt-get "${apt_options[@]}" -qq download \
    nsis/$release nsis-common/$release libc6/$release libstdc++6/$release libgcc-s1/$release zlib1g/$release >&2)
  rm -rf "$unpacked" "$unpacked.part"
  for deb in "$apt_root"/debs/*.deb; do
    dpkg-deb -x "$deb" "$unpacked.part"
  done
  # The program with the loader and the libraries of its own release.
  cat >"$unpacked.part/makensis" <<'END'
#!/usr/bin/env bash
here="$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"
export NSISDIR="$here/usr/share/nsis"
libraries="$here/usr/lib/x86_64-linux-gnu"
exec "$libraries/ld-linux-x86-64.so.2" --library-path "$libraries" "$here/usr/bin/makensis" "$@"
END
  chmod +x "$unpacked.part/makensis"
  mv "$unpacked.part" "$unpacked"
fi
if ! has_fix "$unpacked/makensis" "$unpacked/usr/share/doc/nsis/changelog.Debian.gz"; then
  say "NSIS $(version_of "$unpacked/makensis" || echo '(which does not run)') of Debian's $release is refused: no fix for $cve"
  exit 1
fi
say "NSIS $(version_of "$unpacked/makensis"), Debian's $release"
printf '%s\n' "$unpacked/makensis"
