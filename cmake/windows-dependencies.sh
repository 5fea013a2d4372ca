#!/usr/bin/env bash
# Builds the libraries that the Windows programs are linked with, from the source packages of the
# distribution this runs on: the same versions and the same patches as on Linux. All are static, but
# for libheif and libde265, whose licence asks for libraries that a user can replace.
#
#   cmake/windows-dependencies.sh            build what is missing; print the folder of the libraries
#   cmake/windows-dependencies.sh --refresh  ask the mirrors first whether there are newer versions
#
# The libraries go to ${XDG_CACHE_HOME:-~/.cache}/veldara/windows-<hash of versions and recipe>, so that
# only the first build pays. The machine's own package configuration is read and never changed.
set -euo pipefail

target=x86_64-w64-mingw32
cache="${XDG_CACHE_HOME:-$HOME/.cache}/veldara"
recipe="$(readlink -f "${BASH_SOURCE[0]}")"
packages=(zlib libjpeg-turbo libpng1.6 tiff freetype lcms2 libwebp qpdf libde265 dav1d libheif googletest
  wxwidgets3.2)
jobs="$(nproc)"

say() { printf 'windows-dependencies: %s\n' "$*" >&2; }

# The recipe, the compiler and the distribution decide what is built; the versions come on top.
recipe_hash="$({
  cat "$recipe"
  "$target-g++-posix" -dumpfullversion
  . /etc/os-release
  echo "$ID $VERSION_ID"
} | sha256sum | cut -c1-16)"
current="$cache/windows-current-$recipe_hash"

if [[ "${1:-}" != --refresh && -f "$current/complete" ]]; then
  readlink -f "$current"
  exit 0
fi

mkdir -p "$cache"
exec 8>"$cache/windows.lock"
flock 8
if [[ "${1:-}" != --refresh && -f "$current/complete" ]]; then
  readlink -f "$current"
  exit 0
fi

# --- an isolated place to download source packages from -------------------------------------------

apt_root="$cache/apt"
apt_options=(
  -o Dir::Etc::sourcelist=/dev/null
  -o Dir::Etc::sourceparts="$apt_root/sources.list.d"
  -o Dir::State::Lists="$apt_root/lists"
  -o Dir::Cache="$apt_root/cache"
  -o APT::Sandbox::User=
  -o Acquire::Languages=none
  -o Acquire::Retries=3
)

# The distribution's own mirrors, asked for sources instead of programs.
write_source_lists() {
  rm -rf "$apt_root/sources.list.d"
  mkdir -p "$apt_root/sources.list.d" "$apt_root/lists/partial" "$apt_root/cache/archives/partial"
  local codename file
  codename="$(. /etc/os-release && echo "$VERSION_CODENAME")"
  for file in /etc/apt/sources.list.d/*.sources; do
    if [[ -f "$file" ]] && grep -qE "^Suites:.*[[:space:]]$codename([[:space:]]|-|$)" "$file"; then
      sed 's/^Types:.*/Types: deb-src/' "$file" >"$apt_root/sources.list.d/${file##*/}"
    fi
  done
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    if [[ -f "$file" ]]; then
      grep -hE "^deb .*[[:space:]]$codename(-[a-z]+)?[[:space:]]" "$file" | sed -E 's/^deb /deb-src /; s/ arch=[^] ]*//' \
        >>"$apt_root/sources.list.d/machine.list" || true
    fi
  done
}

say "reading the list of source packages"
write_source_lists
apt-get "${apt_options[@]}" -qq update >&2 || say "not every mirror answered; going on with those that did"

# Downloads the newest version of a source package that the mirrors really hold (an index can run
# ahead of its pool) and prints that version.
download() {
  local package="$1" version
  mkdir -p "$apt_root/downloads/$package"
  (
    cd "$apt_root/downloads/$package"
    while read -r version; do
      if apt-get "${apt_options[@]}" -qq --download-only --only-source source "$package=$version" \
        >"$apt_root/download.log" 2>&1; then
        printf '%s\n' "$version"
        exit 0
      fi
    done < <(apt-cache "${apt_options[@]}" showsrc --only-source "$package" |
      sed -n 's/^Version: //p' | sort -Vru)
    cat "$apt_root/download.log" >&2
    exit 1
  )
}

say "downloading the source packages"
versions=()
for package in "${packages[@]}"; do
  version="$(download "$package")" || {
    say "the machine's mirrors do not hold the source package $package"
    exit 1
  }
  versions+=("$package=$version")
done

prefix="$cache/windows-$(printf '%s\n' "$recipe_hash" "${versions[@]}" | sha256sum | cut -c1-16)"
if [[ -f "$prefix/complete" ]]; then
  ln -sfn "$prefix" "$current"
  readlink -f "$current"
  exit 0
fi

# --- build ----------------------------------------------------------------------------------------

work="$prefix/work"
logs="$prefix/logs"
mkdir -p "$work" "$logs" "$prefix"/{bin,include,lib,licences}
say "building ${versions[*]} into $prefix"

# The programs do not tell in whose home folder their libraries were built.
hardening="-O2 -g0 -fstack-protector-strong -ffunction-sections -fdata-sections -ffile-prefix-map=$work=."
cmake_common=(
  -G Ninja
  -DCMAKE_SYSTEM_NAME=Windows
  -DCMAKE_SYSTEM_PROCESSOR=x86_64
  -DCMAKE_C_COMPILER="$target-gcc-posix"
  -DCMAKE_CXX_COMPILER="$target-g++-posix"
  -DCMAKE_RC_COMPILER="$target-windres"
  -DCMAKE_FIND_ROOT_PATH="$prefix;/usr/$target"
  -DCMAKE_FIND_ROOT_PATH_MODE_PROGRAM=NEVER
  -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY
  -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY
  -DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=ONLY
  -DCMAKE_INSTALL_PREFIX="$prefix"
  -DCMAKE_BUILD_TYPE=None
  -DCMAKE_C_FLAGS="$hardening"
  -DCMAKE_CXX_FLAGS="$hardening"
  -DCMAKE_EXE_LINKER_FLAGS=-static
  -DBUILD_SHARED_LIBS=OFF
)
if command -v ccache >/dev/null; then
  cmake_common+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
# Found by the sub-builds that look for their libraries with pkg-config.
export PKG_CONFIG_LIBDIR="$prefix/lib/pkgconfig"

unpack() {
  local package="$1" version="$2"
  if [[ ! -f "$work/$package/.unpacked" ]]; then
    rm -rf "${work:?}/$package"
    # The file name of a version leaves its epoch out.
    dpkg-source --no-check -x "$apt_root/downloads/$package/${package}_${version#*:}.dsc" "$work/$package"
    touch "$work/$package/.unpacked"
  fi
  cp "$work/$package/debian/copyright" "$prefix/licences/$package.txt"
}

with_cmake() {
  local package="$1"
  shift
  cmake -S "$work/$package" -B "$work/$package-build" "${cmake_common[@]}" "$@"
  cmake --build "$work/$package-build" -j "$jobs"
  cmake --install "$work/$package-build"
}

# The package's source comes without its Windows makefile; the library is these files.
build_zlib() {
  local unit objects=()
  mkdir -p "$work/zlib-build"
  for unit in adler32 compress crc32 deflate infback inffast inflate inftrees trees uncompr zutil; do
    # shellcheck disable=SC2086  # the flags are words
    "$target-gcc-posix" $hardening -I "$work/zlib" -c "$work/zlib/$unit.c" -o "$work/zlib-build/$unit.o"
    objects+=("$work/zlib-build/$unit.o")
  done
  "$target-ar" rcs "$prefix/lib/libz.a" "${objects[@]}"
  cp "$work/zlib"/{zlib.h,zconf.h} "$prefix/include/"
}

build_libjpeg-turbo() {
  with_cmake libjpeg-turbo -DENABLE_SHARED=OFF -DENABLE_STATIC=ON -DWITH_SIMD=ON -DREQUIRE_SIMD=ON \
    -DWITH_TURBOJPEG=OFF -DWITH_JPEG8=OFF -DWITH_JPEG7=OFF
}

build_libpng1.6() {
  with_cmake libpng1.6 -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_TESTS=OFF
}

build_tiff() {
  with_cmake tiff -Djbig=OFF -Dlzma=OFF -Dzstd=OFF -Dwebp=OFF -Dlerc=OFF -Dlibdeflate=OFF -Dcxx=OFF \
    -Dzlib=ON -Djpeg=ON -Dpixarlog=OFF -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-docs=OFF \
    -Dtiff-contrib=OFF
  # It would build without a codec that it does not find.
  "$target-nm" "$prefix/lib/libtiff.a" >"$work/tiff-symbols"
  grep -q 'U jpeg_CreateDecompress' "$work/tiff-symbols"
  grep -q 'U inflateInit_' "$work/tiff-symbols"
}

build_freetype() {
  local source="$work/freetype"
  # The package keeps the library in a tarball of its own in some releases.
  if [[ ! -f "$source/CMakeLists.txt" ]]; then
    source="$(dirname "$(ls "$source"/*/CMakeLists.txt | head -n 1)")"
  fi
  cmake -S "$source" -B "$work/freetype-build" "${cmake_common[@]}" -DFT_DISABLE_HARFBUZZ=ON \
    -DFT_DISABLE_BROTLI=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON -DFT_REQUIRE_ZLIB=ON
  cmake --build "$work/freetype-build" -j "$jobs"
  cmake --install "$work/freetype-build"
}

build_lcms2() {
  mkdir -p "$work/lcms2-build"
  (
    cd "$work/lcms2-build"
    CC="$target-gcc-posix" CFLAGS="$hardening" "$work/lcms2/configure" --quiet --host="$target" \
      --prefix="$prefix" --disable-shared --enable-static --without-jpeg --without-tiff --without-zlib
    make -C src -j "$jobs" install
    make -C include install
    make install-pkgconfigDATA
  )
}

build_libwebp() {
  with_cmake libwebp -DWEBP_BUILD_ANIM_UTILS=OFF -DWEBP_BUILD_CWEBP=OFF -DWEBP_BUILD_DWEBP=OFF \
    -DWEBP_BUILD_GIF2WEBP=OFF -DWEBP_BUILD_IMG2WEBP=OFF -DWEBP_BUILD_VWEBP=OFF -DWEBP_BUILD_WEBPINFO=OFF \
    -DWEBP_BUILD_WEBPMUX=OFF -DWEBP_BUILD_EXTRAS=OFF
}

# The header is for the one file that uses a fixed-width type without asking for it.
build_qpdf() {
  cmake -S "$work/qpdf" -B "$work/qpdf-build" "${cmake_common[@]}" -DCMAKE_CXX_FLAGS="$hardening -include cstdint" \
    -DBUILD_STATIC_LIBS=ON -DUSE_IMPLICIT_CRYPTO=OFF -DREQUIRE_CRYPTO_NATIVE=ON -DREQUIRE_CRYPTO_OPENSSL=OFF \
    -DREQUIRE_CRYPTO_GNUTLS=OFF -DBUILD_DOC=OFF -DINSTALL_MANUAL=OFF -DINSTALL_EXAMPLES=OFF
  cmake --build "$work/qpdf-build" -j "$jobs" --target libqpdf
  for component in lib dev; do
    cmake --install "$work/qpdf-build" --component "$component"
  done
  test -f "$prefix/lib/libqpdf.a"
}

# A DLL that brings the compiler's own libraries with it, and does not export them.
dll_flags="-static -Wl,--dynamicbase,--high-entropy-va,--nxcompat,--no-insert-timestamp,--gc-sections"
dll_flags+=" -Wl,--exclude-libs,ALL"
shared_library=(-DBUILD_SHARED_LIBS=ON "-DCMAKE_SHARED_LINKER_FLAGS=$dll_flags -fstack-protector-strong")

build_libde265() {
  with_cmake libde265 "${shared_library[@]}" -DENABLE_SDL=OFF -DENABLE_DECODER=OFF -DENABLE_ENCODER=OFF
}

build_dav1d() {
  local word flags=""
  for word in $hardening; do
    flags+="${flags:+, }'$word'"
  done
  cat >"$work/dav1d-cross.ini" <<EOF_CROSS
[binaries]
c = '$target-gcc-posix'
cpp = '$target-g++-posix'
ar = '$target-ar'
strip = '$target-strip'
windres = '$target-windres'
nasm = 'nasm'
[built-in options]
c_args = [$flags]
c_link_args = ['-static']
[host_machine]
system = 'windows'
cpu_family = 'x86_64'
cpu = 'x86_64'
endian = 'little'
EOF_CROSS
  meson setup "$work/dav1d-build" "$work/dav1d" --cross-file "$work/dav1d-cross.ini" --prefix "$prefix" --libdir lib \
    --buildtype plain --default-library static -Denable_tools=false -Denable_tests=false
  ninja -C "$work/dav1d-build" -j "$jobs" install
}

# Only what decodes: H.265 by libde265, AV1 by dav1d.
build_libheif() {
  with_cmake libheif "${shared_library[@]}" -DWITH_LIBDE265=ON -DWITH_LIBDE265_PLUGIN=OFF -DWITH_DAV1D=ON \
    -DWITH_DAV1D_PLUGIN=OFF -DWITH_X265=OFF -DWITH_AOM=OFF -DWITH_AOM_DECODER=OFF -DWITH_AOM_ENCODER=OFF \
    -DWITH_RAV1E=OFF -DWITH_SvtEnc=OFF -DWITH_KVAZAAR=OFF -DWITH_OpenH264_DECODER=OFF -DWITH_X264=OFF \
    -DWITH_FFMPEG_DECODER=OFF -DWITH_JPEG_DECODER=OFF -DWITH_JPEG_ENCODER=OFF -DWITH_OpenJPEG_DECODER=OFF \
    -DWITH_OpenJPEG_ENCODER=OFF -DWITH_UNCOMPRESSED_CODEC=OFF -DWITH_LIBSHARPYUV=OFF -DWITH_HEADER_COMPRESSION=OFF \
    -DWITH_EXAMPLES=OFF -DWITH_GDK_PIXBUF=OFF -DENABLE_PLUGIN_LOADING=OFF -DBUILD_TESTING=OFF
  # It would build without a codec that it does not find.
  "$target-nm" "$prefix/bin/libheif.dll" >"$work/libheif-symbols"
  grep -q 'dav1d_open' "$work/libheif-symbols"
  grep -q 'de265_new_decoder' "$work/libheif-symbols"
  "$target-strip" "$prefix"/bin/libheif.dll "$prefix"/bin/libde265.dll
}

build_googletest() {
  with_cmake googletest -DBUILD_GMOCK=ON -DINSTALL_GTEST=ON
}

# Only what the windows of the program use; the action simulator stays on for the tests that click.
build_wxwidgets3.2() {
  # Its precompiled headers save more than a compiler cache would.
  with_cmake wxwidgets3.2 -DCMAKE_C_COMPILER_LAUNCHER= -DCMAKE_CXX_COMPILER_LAUNCHER= \
    -DwxBUILD_SHARED=OFF -DwxBUILD_MONOLITHIC=OFF -DwxBUILD_USE_STATIC_RUNTIME=ON -DwxBUILD_TESTS=OFF \
    -DwxBUILD_SAMPLES=OFF -DwxBUILD_DEMOS=OFF -DwxBUILD_PRECOMP=ON -DwxBUILD_OPTIMISE=OFF \
    -DwxBUILD_CXX_STANDARD=17 \
    -DwxUSE_ZLIB=sys -DwxUSE_LIBPNG=sys -DwxUSE_LIBJPEG=OFF -DwxUSE_LIBTIFF=OFF -DwxUSE_EXPAT=OFF \
    -DwxUSE_REGEX=OFF -DwxUSE_NANOSVG=builtin -DwxUSE_LIBLZMA=OFF -DwxUSE_LIBSDL=OFF -DwxUSE_LIBMSPACK=OFF \
    -DwxUSE_STC=OFF -DwxUSE_MEDIACTRL=OFF -DwxUSE_WEBVIEW=OFF -DwxUSE_AUI=OFF -DwxUSE_RIBBON=OFF \
    -DwxUSE_RICHTEXT=OFF -DwxUSE_PROPGRID=OFF -DwxUSE_OPENGL=OFF -DwxUSE_XRC=OFF -DwxUSE_XML=OFF \
    -DwxUSE_HTML=OFF -DwxUSE_MS_HTML_HELP=OFF -DwxUSE_WXHTML_HELP=OFF -DwxUSE_HELP=OFF \
    -DwxUSE_SOCKETS=OFF -DwxUSE_PROTOCOL=OFF -DwxUSE_URL=OFF -DwxUSE_WEBREQUEST=OFF \
    -DwxUSE_FS_INET=OFF -DwxUSE_IPC=OFF \
    -DwxUSE_DEBUGREPORT=OFF -DwxUSE_DBGHELP=OFF -DwxUSE_GRID=OFF -DwxUSE_DATAVIEWCTRL=OFF -DwxUSE_FSVOLUME=OFF \
    -DwxUSE_ACTIVEX=OFF -DwxUSE_JOYSTICK=OFF -DwxUSE_SOUND=OFF -DwxUSE_TREELISTCTRL=OFF \
    -DwxUSE_UIACTIONSIMULATOR=ON -DwxUSE_ACCESSIBILITY=ON
}

for entry in "${versions[@]}"; do
  package="${entry%%=*}"
  if [[ ! -f "$prefix/.built-$package" ]]; then
    say "building $package ${entry#*=} (log: $logs/$package.log)"
    started=$SECONDS
    # Not "if ! { ...; }": inside a condition bash would not stop at the first failure.
    set +e
    (
      set -e
      unpack "$package" "${entry#*=}"
      "build_$package"
    ) >"$logs/$package.log" 2>&1
    status=$?
    set -e
    if ((status != 0)); then
      tail -n 40 "$logs/$package.log" >&2
      say "$package did not build"
      exit 1
    fi
    say "$package took $((SECONDS - started)) s"
    touch "$prefix/.built-$package"
  fi
done

# What the compiler adds by itself, and what is the same on every system: headers and a font.
cp -r /usr/include/CLI /usr/include/nlohmann "$prefix/include/"
for entry in cli11:libcli11-dev nlohmann-json:nlohmann-json3-dev font-dejavu:fonts-dejavu-core \
  gcc-runtime:gcc-mingw-w64-x86-64-posix-runtime mingw-w64:mingw-w64-common; do
  cp -L "/usr/share/doc/${entry#*:}/copyright" "$prefix/licences/${entry%%:*}.txt"
done

printf '%s\n' "${versions[@]}" >"$prefix/versions"
touch "$prefix/complete"
ln -sfn "$prefix" "$current"
rm -rf "$work" "$apt_root/cache" "$apt_root/downloads"
readlink -f "$current"
