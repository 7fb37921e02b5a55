#!/usr/bin/env python3
"""Compares what `tvl exif` reads of real image files with what exiftool reads.

Usage: exif.py PROGRAM FOLDER

Of every JPEG, TIFF, PNG and WebP file below FOLDER: each tag of the first and the Exif directory that exiftool reads must be
there with the same id, type, count and first value, in the same order, but for those that the library drops by design.
Of every other file, too: the program must end by itself within a second.
"""
import json
import os
import re
import struct
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor

# Test data of the packages; the rest of their sources has no photos.
DATA_FOLDERS = r'/(test/data|testdata|t/images)\b'
MOST_SECONDS = 1.0
MAKER_NOTE = 37500
LARGEST_VALUE = 65536

# exiftool's names of the value types, with number and size of an item. The library drops those of size 0.
TYPES = {
    'int8u': (1, 1), 'string': (2, 1), 'int16u': (3, 2), 'int32u': (4, 4), 'rational64u': (5, 8), 'undef': (7, 1),
    'int32s': (9, 4), 'rational64s': (10, 8),
    'int8s': (6, 0), 'int16s': (8, 0), 'float': (11, 0), 'double': (12, 0), 'ifd': (13, 0), 'unicode': (14, 0),
    'complex': (15, 0), 'int64u': (16, 0), 'int64s': (17, 0), 'ifd64': (18, 0), 'utf8': (129, 0),
}
FORMS = {1: 'B', 3: 'H', 4: 'I', 5: 'II', 9: 'i', 10: 'ii'}


def is_image(path):
    with open(path, 'rb') as file:
        start = file.read(12)
        # Some PNG files keep a block as packed text: not where the format has it, and nothing could be patched there.
        has_chunk = start[:8] == b'\x89PNG\r\n\x1a\n' and b'eXIf' in file.read()
    return (start[:3] == b'\xff\xd8\xff' or has_chunk or start[:4] in (b'II*\0', b'MM\0*')
            or (start[:4] == b'RIFF' and start[8:] == b'WEBP'))


def exiftool_tags(path):
    """The byte order, and the tags of the first IFD0 and then of its ExifIFD as (id, type name, count, size, first bytes).

    They are read from the dump of each entry that exiftool gives with -v3:
      | 0)  Make = Canon
      |     - Tag 0x010f (6 bytes, string[6]):
      |         0086: 43 61 6e 6f 6e 00                               [Canon.]
    """
    output = subprocess.run(['exiftool', '-v3', path], capture_output=True, text=True, errors='replace').stdout
    order, directories, dump = '<', {}, None
    tags = {'IFD0': [], 'ExifIFD': []}
    seen_first = False
    for line in output.splitlines():
        if match := re.match(r'  (?:\| )*ExifByteOrder = (II|MM)', line):
            if seen_first:
                break
            order = '<' if match[1] == 'II' else '>'
        elif match := re.match(r'  ((?:\| )*)\+ \[(\S+) directory with \d+ entries\]', line):
            seen_first |= match[2] == 'IFD0'
            directories[len(match[1]) // 2] = match[2]
            dump = None
        elif match := re.match(r'  ((?:\| )+)    - Tag 0x(\w{4}) \((\d+) bytes, (\w+)\[(\d+)\]', line):
            dump = None
            # The entries behind the pointer to the Exif directory are shown below that directory.
            directory = directories.get(len(match[1]) // 2 - 1)
            if directory in tags:
                dump = bytearray()
                tags[directory].append((int(match[2], 16), match[4], int(match[5]), int(match[3]), dump))
        elif dump is not None and (match := re.match(r'  (?:\| )+ {4,}\w+: ((?:\w\w ){1,16})', line)):
            dump += bytes.fromhex(match[1])
        elif not re.match(r'  (?:\| )+ ', line):
            dump = None
    return order, tags['IFD0'] + tags['ExifIFD']


def first_value(order, type_number, data):
    """The first item as `tvl exif --json` gives it; of text and undefined bytes as much as was dumped."""
    if type_number == 2:
        return data.split(b'\0')[0].decode('utf-8', 'replace')
    if type_number == 7:
        return data.hex()
    form = FORMS[type_number]
    items = struct.unpack_from(order + form, data)
    return list(items) if len(items) > 1 else items[0]


def same_value(ours, theirs, is_whole):
    if not isinstance(theirs, str):
        return ours[0] == theirs
    if not isinstance(ours, str):
        return False
    # Invalid UTF-8 is replaced by either side in its own way.
    ours, theirs = ours.replace('\ufffd', ''), theirs.replace('\ufffd', '')
    return ours == theirs if is_whole else ours.startswith(theirs)


def expected_tags(path):
    order, tags = exiftool_tags(path)
    for tag, type_name, count, size, data in tags:
        type_number, item_size = TYPES[type_name]
        if tag == MAKER_NOTE or item_size == 0 or count == 0 or item_size * count > LARGEST_VALUE:
            continue
        # Its bytes lie outside the file: there is nothing to dump.
        if not data:
            continue
        # The last byte of a text is replaced by its end mark.
        is_whole = len(data) >= size
        if type_number == 2 and is_whole:
            data = data[:-1]
        yield tag, type_number, count, first_value(order, type_number, bytes(data)), is_whole, order


def differences(path, ours):
    """What is missing or different, and how many tags were compared by byte order."""
    found, compared, at = [], {'<': 0, '>': 0}, 0
    for tag, type_number, count, value, is_whole, order in expected_tags(path):
        compared[order] += 1
        for i in range(at, len(ours)):
            entry = ours[i]
            if (entry['id'], entry['type'], entry['count']) == (tag, type_number, count) \
                    and same_value(entry['value'], value, is_whole):
                at = i + 1
                break
        else:
            found.append(f'tag {tag} type {type_number} count {count} value {str(value)[:40]!r}: '
                         + str([(e['type'], e['count'], str(e['value'])[:40]) for e in ours if e['id'] == tag]))
    return found, compared


def examine(program, path):
    """One file through the program: its seconds, a fault of the program, its tags."""
    start = time.monotonic()
    try:
        run = subprocess.run([program, 'exif', '--json', path], capture_output=True, timeout=60)
    except subprocess.TimeoutExpired:
        return 60.0, 'does not end', []
    seconds = time.monotonic() - start
    if run.returncode not in (0, 2):
        return seconds, f'ends with {run.returncode}: ' + run.stderr.decode('utf-8', 'replace')[-2000:], []
    return seconds, None, json.loads(run.stdout)[0]['tags']


def main():
    program, folder = sys.argv[1:]
    paths = sorted(os.path.join(parent, name) for parent, _, names in os.walk(folder) for name in names
                   if re.search(DATA_FOLDERS, parent))
    paths = [path for path in paths if os.path.isfile(path)]
    images = faults = different = with_tags = 0
    slowest, compared = (0.0, ''), {'<': 0, '>': 0}

    def work(path):
        seconds, fault, ours = examine(program, path)
        found = differences(path, ours) if is_image(path) else None
        return path, seconds, fault, found

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, seconds, fault, found in pool.map(work, paths):
            name = os.path.relpath(path, folder)
            slowest = max(slowest, (seconds, name))
            if seconds > MOST_SECONDS and not fault:
                fault = f'takes {seconds:.2f} s'
            if fault:
                faults += 1
                print(f'{name}: {fault}')
            if found is None:
                continue
            images += 1
            with_tags += any(found[1].values())
            for order, count in found[1].items():
                compared[order] += count
            different += len(found[0])
            for line in found[0]:
                print(f'{name}: {line}')
    print(f'{len(paths)} files tried, the slowest in {slowest[0]:.2f} s ({slowest[1]}), {faults} faults; '
          f'{images} images, {with_tags} with tags; {sum(compared.values())} tags compared '
          f'({compared["<"]} little-endian, {compared[">"]} big-endian), {different} differences')
    return 1 if faults or different or not with_tags else 0


if __name__ == '__main__':
    sys.exit(main())
