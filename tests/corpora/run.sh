#!/usr/bin/env bash
# Tries the program on real photos, and every reader on files that have broken other readers: the test data of Debian
# source packages, which are fetched into build/corpora, files that are made there, and those of further folders.
# Usage: run.sh [PROGRAM [FOLDER...]]
# PROGRAM is tvl, by default that of the build with sanitizers; the fuzz targets lie beside it. A FOLDER has one folder for
# each kind of file: container, exif, guidmap, info, papers, settings, texts or units; each line of its "expressions.txt" is a
# text, too.
# Needs exiftool (libimage-exiftool-perl) and python3.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
program=${1:-build/linux-sanitize/bin/tvl}
[ $# -eq 0 ] || shift
[ -x "$program" ] || { echo "$program is not there: build it, or name another"; exit 1; }
readonly made=build/corpora/made packages=build/corpora
# Files in memory: a disk would be the clock of readers that write one for each input.
[ ! -d /dev/shm ] || export TMPDIR=/dev/shm
export UBSAN_OPTIONS=print_stacktrace=1
failed=0

# read_all NAME PATH...: a fuzz target reads files, those of folders and of all below them. Of the folders that were given some
# have no files of this kind; those of build/corpora must be there.
read_all() {
    local name=$1 path paths=()
    shift
    for path in "$@"; do
        if [ -e "$path" ]; then
            paths+=("$path")
        elif [[ $path == "$packages"/* ]]; then
            echo "$name: $path is not there"
            failed=1
        fi
    done
    [ ${#paths[@]} -gt 0 ] || return 0
    printf '%-18s' "$name"
    "$(dirname "$program")/fuzz_$name" --hostile "${paths[@]}" 2> build/corpora/log && return
    failed=1
    tr '\r' '\n' < build/corpora/log | tail -n 30
}

# A folder that has nothing for any reader would pass without a look.
for folder in "$@"; do
    for path in "$folder"/*; do
        case ${path##*/} in
        container | exif | guidmap | info | papers | settings | texts | units) continue 2 ;;
        esac
    done
    echo "$folder has no folder of a kind of file that is known"
    exit 1
done
# Texts may come as the lines of one file, which are read one by one.
readonly lines=build/corpora/lines
rm -rf "$lines"
for folder in "$@"; do
    [ -f "$folder/expressions.txt" ] || continue
    mkdir -p "$lines"
    split --lines=1 --suffix-length=6 "$folder/expressions.txt" "$lines/${folder//\//_}-"
done

cmake/debian-sources.sh "$packages" exiv2 libexif libimage-exiftool-perl libzip pugixml
python3 tests/corpora/large_files.py "$made"
for name in ExifParse ExifPatch; do
    read_all "$name" "$packages"/exiv2/exiv2-*/test/data "$packages"/libexif/libexif-*/test/testdata "${@/%//exif}" "$made/exif"
done
read_all Container "$packages"/libzip/libzip-*/regress "${@/%//container}"
for name in Papers ExportSettings; do
    read_all "$name" "$packages"/pugixml/pugixml-*/tests/data "${@/%//papers}" "$made/papers"
done
for name in ProfileFile WorkspaceSettings; do
    read_all "$name" "${@/%//settings}" "$made/settings"
done
for name in LanguageInfo EventText; do
    read_all "$name" "${@/%//info}" "$made/info"
done
read_all GuidMap "${@/%//guidmap}"
read_all CustomUnits "${@/%//units}" "$made/units"
texts=("${@/%//texts}" "$made/texts")
[ ! -d "$lines" ] || texts+=("$lines")
for name in Expression FieldText SmartValue PageRange; do
    read_all "$name" "${texts[@]}"
done
# 256 MB, of which the sanitizers take a part.
ASAN_OPTIONS=hard_rss_limit_mb=256:quarantine_size_mb=16 python3 tests/corpora/exif.py "$program" "$packages" || failed=1
exit "$failed"
