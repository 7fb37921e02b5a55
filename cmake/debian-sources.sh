#!/usr/bin/env bash
# Fetches the sources of Debian packages and unpacks them.
# Usage: debian-sources.sh FOLDER PACKAGE...
# The machine's own package lists are not touched. What is there already is left alone.
set -euo pipefail
folder=$(mkdir -p "$1" && cd "$1" && pwd)
shift
lists="$folder/apt"

apt() {
    apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$lists" -o Dir::State::Lists="$lists/lists" \
        -o APT::Sandbox::User= "$@"
}

# The machine's sources, asked for source packages instead of binary ones.
source_lists() {
    mkdir -p "$lists/lists/partial"
    if [ -e /etc/apt/sources.list.d/debian.sources ]; then
        sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > "$lists/debian.sources"
    else
        sed -n 's/^deb\(-src\)\? /deb-src /p' /etc/apt/sources.list > "$lists/debian.list"
    fi
    apt update > "$folder/apt.log" 2>&1
}

for package in "$@"; do
    [ -e "$folder/$package.done" ] && continue
    [ -e "$lists" ] || source_lists
    echo "fetching the source package $package"
    rm -rf "${folder:?}/$package"
    mkdir "$folder/$package"
    (cd "$folder/$package" && apt source --download-only "$package" >> "$folder/apt.log" 2>&1 \
        && for archive in *.orig*.tar.*; do tar -xf "$archive"; done && rm -f ./*.tar.* ./*.dsc*) \
        || { tail -n 5 "$folder/apt.log"; echo "$package could not be fetched; the log is $folder/apt.log"; exit 1; }
    touch "$folder/$package.done"
done
