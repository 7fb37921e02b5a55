#!/usr/bin/env bash
# Cross-builds the libraries that Debian does not package for mingw-w64, from Debian's own sources.
# Usage: windows-deps.sh FOLDER
# FOLDER becomes a prefix that cmake/mingw64.cmake looks into. What is there already is left alone.
set -euo pipefail
prefix=$(mkdir -p "$1" && cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
work="$prefix/build"
mkdir -p "$prefix/include" "$prefix/share/cmake"

# Header-only packages: links of their own, never /usr/include itself, which holds linux's headers.
for name in nlohmann CLI; do
    ln -sfn "/usr/include/$name" "$prefix/include/$name"
done
# A copy: the package file finds its headers from where it lies.
cp -r --no-clobber /usr/share/cmake/nlohmann_json "$prefix/share/cmake/"

# cross_build NAME SOURCE [CMake options]: builds and installs once.
cross_build() {
    local name=$1 source=$2
    shift 2
    [ -e "$work/$name.done" ] && return
    echo "cross-building $name"
    TVL_WINDOWS_DEPS="$prefix" cmake -S "$source" -B "$work/$name" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/mingw64.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" "$@" > "$work/$name.log" 2>&1 \
        && cmake --build "$work/$name" -j2 --target install >> "$work/$name.log" 2>&1 \
        || { tail -n 30 "$work/$name.log"; echo "$name could not be cross-built; the log is $work/$name.log"; exit 1; }
    touch "$work/$name.done"
}

mkdir -p "$work"
"$here/debian-sources.sh" "$work/sources" pugixml libzip
cross_build pugixml "$work"/sources/pugixml/pugixml-* -DBUILD_SHARED_LIBS=OFF
# Deflate alone, and no encryption: containers need nothing else. zlib is Debian's own for mingw.
cross_build libzip "$work"/sources/libzip/libzip-* -DBUILD_SHARED_LIBS=OFF -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF \
    -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF -DENABLE_OPENSSL=OFF -DENABLE_MBEDTLS=OFF -DENABLE_GNUTLS=OFF \
    -DENABLE_WINDOWS_CRYPTO=OFF -DENABLE_COMMONCRYPTO=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF
cross_build googletest /usr/src/googletest -DBUILD_SHARED_LIBS=OFF
