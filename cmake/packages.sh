# Sourced by ./run, ./test and ./package: installs what is missing from the distribution's packages.

run_packages="cmake ninja-build g++ pkg-config ccache libjpeg-dev libtiff-dev zlib1g-dev libfreetype-dev
  liblcms2-dev libcli11-dev libwxgtk3.2-dev librsvg2-common fonts-dejavu-core fp-utils"
quick_packages="$run_packages git libgtest-dev libgmock-dev libxtst-dev python3 python3-pil xvfb xauth
  openbox xdotool imagemagick binutils file time locales strace"
test_packages="$quick_packages clang libclang-rt-14-dev llvm g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
  wine wine64 nasm dpkg-dev libjpeg-turbo-progs nsis zip unzip"
package_packages="$run_packages g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 nasm dpkg-dev nsis zip gzip"
package_test_packages="$test_packages debootstrap"

# need_packages NAME...: says what it installs, and asks for rights only when something is missing.
need_packages() {
  local missing=() name
  for name in "$@"; do
    dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
  done
  if [[ ${#missing[@]} -eq 0 ]]; then
    return
  fi
  echo "Installing from the distribution: ${missing[*]}"
  local root=()
  [[ $(id -u) -eq 0 ]] || root=(sudo)
  "${root[@]}" apt-get update -q >/dev/null
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends "${missing[@]}" >/dev/null
}
