#!/usr/bin/env python3
"""Makes files that are small for what they ask of a reader: deep, long, or referring to one place again and again.

Usage: large_files.py FOLDER

The folder gets one folder for each kind: exif, info, papers, settings, texts and units.
"""
import struct
import sys
from pathlib import Path

MEGABYTE = 1 << 20
PAPERS = '<PageSizes preset_version="2"><sizes>{}</sizes></PageSizes>'


def shared_value():
    """A TIFF directory of as many entries as it can have, all of them with the same 64 KiB: 4 GiB of values."""
    entries = 65535
    header = 8
    place = header + 2 + 12 * entries + 4
    entry = struct.pack('<HHII', 37510, 7, 65536, place)
    return struct.pack('<2sHIH', b'II', 42, header, entries) + entry * entries + bytes(4) + b'A' * 65536


def units(line, size):
    """A file of custom units that has `size` bytes of one line again and again."""
    start = b'TvlCustomUnits 1\n'
    return start + (line * (size // len(line)))[:size - len(start)]


TEXTS = {
    'sum': '1+' * (MEGABYTE // 2) + '1',
    'digits': '7' * MEGABYTE,
    'blanks': ' ' * MEGABYTE + '1',
    'open': '(' * MEGABYTE,
    'nested': '(' * (MEGABYTE // 2) + '1' + ')' * (MEGABYTE // 2),
    'powers': '2^' * (MEGABYTE // 2) + '2',
    'sines': 'sin ' * (MEGABYTE // 4) + '1',
    'minus': '-' * MEGABYTE,
    'fractions': '1 ' * (MEGABYTE // 2),
    'quotients': '1/' * (MEGABYTE // 2) + '1',
    'points': '.' * MEGABYTE,
    'brackets': '(1+2)*[3]/{4}^' * (MEGABYTE // 14) + '1',
    'unknown': 'x' * MEGABYTE,
}

FILES = {
    'exif/shared_value.bin': shared_value,
    'info/deep.json': lambda: b'[' * 5000000,
    'papers/deep.xml': lambda: (b'<PageSizes>' + b'<a>' * 1000000 + b'</a>' * 1000000 + b'</PageSizes>'),
    'papers/sizes.xml': lambda: PAPERS.format('<size/>' * 500000).encode(),
    'papers/most_sizes.xml': lambda: PAPERS.format('<size/>' * 131000).encode(),
    'settings/line.ini': lambda: b'[s]\r\nx=' + b'v' * (64 * MEGABYTE),
    'settings/sections.ini': lambda: ''.join(f'[s{i}]\r\nx=1\r\n' for i in range(200000)).encode(),
    'units/line_ends.txt': lambda: units(b'\n', 16 * MEGABYTE),
    'units/most_line_ends.txt': lambda: units(b'\n', MEGABYTE),
    'units/records.txt': lambda: units(b'a,b,c,d,2,43\n', MEGABYTE),
    'units/most_records.txt': lambda: units(b'a,b,c,d,2,43\n', 1023 * 13 + 17),
    'units/line.txt': lambda: units(b'a,b,c,d,2,43\n', 17 + 13 * 64) + b'x' * (MEGABYTE - 1000),
    'settings/most_sections.ini': lambda: ''.join(f'[s{i}]\r\nx=1\r\n' for i in range(32700)).encode(),
}


def main():
    folder = Path(sys.argv[1])
    files = {name: make() for name, make in FILES.items()}
    files.update({f'texts/{name}.txt': text.encode() for name, text in TEXTS.items()})
    for name, content in files.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


if __name__ == '__main__':
    main()
