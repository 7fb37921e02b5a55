#!/usr/bin/env bash
# Tries the program on real photos: the test data of three Debian source packages, which are fetched into build/corpora.
# Usage: run.sh [PROGRAM]
# PROGRAM is tvl, by default that of the build with sanitizers. Needs exiftool (libimage-exiftool-perl) and python3.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
program=${1:-build/linux-sanitize/bin/tvl}
[ -x "$program" ] || { echo "$program is not there: build it, or name another"; exit 1; }
cmake/debian-sources.sh build/corpora exiv2 libexif libimage-exiftool-perl
UBSAN_OPTIONS=print_stacktrace=1 python3 tests/corpora/exif.py "$program" build/corpora
