# Sourced by ./run, ./test and ./package: installs what is missing from the distribution's packages.

# Since Debian 13 the codecs of libheif are packages of their own.
heif_plugins=""
heif_encoders=""
if [[ "$(cut -d. -f1 /etc/debian_version 2>/dev/null)" -ge 13 ]] 2>/dev/null; then
  heif_plugins="libheif-plugin-libde265 libheif-plugin-dav1d"
  heif_encoders="libheif-plugin-x265"
fi

run_packages="cmake ninja-build g++ pkg-config ccache libjpeg-dev libtiff-dev zlib1g-dev libfreetype-dev
  libpng-dev libwebp-dev libheif-dev $heif_plugins liblcms2-dev libcli11-dev nlohmann-json3-dev libqpdf-dev
  libgnutls28-dev libwxgtk3.2-dev libgtk-3-dev librsvg2-common fonts-dejavu-core fp-utils"
quick_packages="$run_packages webp libheif-examples libavif-bin $heif_encoders git libgtest-dev libgmock-dev
  libxtst-dev python3 python3-pil xvfb xauth
  openbox weston xdotool imagemagick binutils file time locales strace clang-format
  qpdf poppler-utils mupdf-tools ghostscript libjpeg-turbo-progs
  dbus-daemon at-spi2-core python3-gi gir1.2-atspi-2.0
  cups-daemon cups-client cups-server-common cups-filters-core-drivers"
test_packages="$quick_packages clang libclang-rt-dev llvm g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
  wine wine64 nasm meson dpkg-dev nsis zip unzip"
package_packages="$run_packages g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 nasm meson dpkg-dev file nsis zip gzip"
package_test_packages="$test_packages debootstrap"
long_packages="$package_test_packages clang-tidy"

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
