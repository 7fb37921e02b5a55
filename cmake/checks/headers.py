"""Checks that <windows.h> renames nothing in our headers: headers.py COMPILER FOLDER...

Its macros turn names such as DeleteFile into DeleteFileW or DeleteFileA. A header that declares such a name must put the
macro aside, or else an application asks for another function than the library has. The headers of the FOLDERs are
preprocessed by themselves, behind <windows.h> and behind <windows.h> for wide text; they must read the same each time.
"""
import re
import subprocess
import sys
from pathlib import Path

LINE_MARKER = re.compile(r'# (\d+) "([^"]*)"')


def preprocessed(compiler, folders, before):
    """What all headers of `folders` say behind the lines `before`: {(file, line number): text}."""
    headers = sorted(path.relative_to(folder).as_posix() for folder in map(Path, folders) for path in folder.rglob("*.h"))
    source = "\n".join([*before, *(f'#include "{header}"' for header in headers), ""])
    command = [compiler, "-std=c++20", "-E", "-x", "c++", "-", *(f"-I{folder}" for folder in folders)]
    output = subprocess.run(command, input=source, stdout=subprocess.PIPE, text=True, check=True).stdout
    file, number, lines = None, 0, {}
    for line in output.splitlines():
        marker = LINE_MARKER.match(line)
        if marker:
            number, name = int(marker.group(1)), marker.group(2)
            file = name if any(Path(folder) in Path(name).parents for folder in folders) else None
            continue
        # What a macro gives stands on an output line of its own, with the number of the line that used it.
        if file and line.strip() and not line.startswith("#pragma"):
            lines[file, number] = " ".join([*lines.get((file, number), "").split(), *line.split()])
        number += 1
    return lines


def offences(compiler, folders):
    alone = preprocessed(compiler, folders, [])
    if not alone:
        yield "there are no headers"
    for before in (["#include <windows.h>"], ["#define UNICODE", "#include <windows.h>"]):
        behind = preprocessed(compiler, folders, before)
        for file, number in sorted(alone.keys() | behind.keys()):
            mine, theirs = (lines.get((file, number), "") for lines in (alone, behind))
            if mine.split() != theirs.split():
                yield f"{file}:{number}: {mine}\n    becomes {theirs}"


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    found = list(dict.fromkeys(offences(sys.argv[1], sys.argv[2:])))
    print(*found, sep="\n", end="\n" if found else "")
    print(f"{len(found)} lines of headers change behind <windows.h>")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
