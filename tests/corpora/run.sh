#!/usr/bin/env bash
# Tries the program on real photos, and containers on archives that have broken other readers: the test data of Debian
# source packages, which are fetched into build/corpora.
# Usage: run.sh [PROGRAM]
# PROGRAM is tvl, by default that of the build with sanitizers; fuzz_Container lies beside it.
# Needs exiftool (libimage-exiftool-perl) and python3.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
program=${1:-build/linux-sanitize/bin/tvl}
[ -x "$program" ] || { echo "$program is not there: build it, or name another"; exit 1; }
cmake/debian-sources.sh build/corpora exiv2 libexif libimage-exiftool-perl libzip
UBSAN_OPTIONS=print_stacktrace=1 python3 tests/corpora/exif.py "$program" build/corpora
"$(dirname "$program")/fuzz_Container" build/corpora/libzip/libzip-*/regress
