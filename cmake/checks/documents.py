"""Runs the commands that documents show, and compares their outputs: documents.py PROGRAMS DOCUMENT...

A shown command is a line "    $ COMMAND"; the indented lines up to the next command or the end of the block are its
output, standard error included. PROGRAMS is the folder where the commands find this tree's programs.
"""
import os
import re
import subprocess
import sys
from pathlib import Path

BLOCK_LINE = re.compile(r" {4}(.*)|$")


def examples(text):
    """(line number, command, [output lines]) of each shown command."""
    found, current = [], None
    for number, line in enumerate(text.splitlines(), 1):
        match = BLOCK_LINE.match(line)
        shown = match and (match.group(1) or "")
        if shown is None:
            current = None
        elif shown.startswith("$ "):
            current = (number, shown[2:], [])
            found.append(current)
        elif current:
            current[2].append(shown)
    return found


def output_of(command, programs):
    environment = {**os.environ, "PATH": os.pathsep.join([str(Path(programs).resolve()), os.environ["PATH"]])}
    return subprocess.run(["sh", "-c", command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, env=environment, check=False).stdout


def offences(programs, document):
    """One text for each command of a document whose output is another; and how many commands it shows."""
    shown = examples(Path(document).read_text(encoding="utf-8"))
    wrong = []
    for number, command, lines in shown:
        wanted, given = "\n".join(lines).rstrip(), output_of(command, programs).rstrip()
        if wanted != given:
            wrong.append(f"{document}:{number}: $ {command}\n  shows\n{wanted}\n  but it prints\n{given}")
    return wrong, len(shown)


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    results = [offences(sys.argv[1], document) for document in sys.argv[2:]]
    for wrong, _ in results:
        print(*wrong, sep="\n", end="\n" if wrong else "")
    failed, shown = sum(len(wrong) for wrong, _ in results), sum(count for _, count in results)
    print(f"{shown} commands of {len(results)} documents run, {failed} print something else")
    return 1 if failed or not shown else 0


if __name__ == "__main__":
    sys.exit(main())
