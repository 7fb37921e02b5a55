"""Holds guide pages against their examples: guides.py PROGRAMS [RUNNER...]

Each examples/FAMILY.cpp has a page docs/guide/FAMILY.md and the other way round. The page's first block between ``` marks is
the file, word for word; the first indented block behind it is what the program prints. PROGRAMS is the folder with the
programs example_FAMILY; RUNNER is a command that runs them on a system that is not theirs. Every program gets a user's
folder of its own, empty at the start.
"""
import difflib
import os
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

FENCED = re.compile(r"^```cpp\n(.*?)^```$", re.MULTILINE | re.DOTALL)
INDENTED = re.compile(r"^ {4}.*\n(?:^ {4}.*\n|^\n+(?= {4}))*", re.MULTILINE)


def shown(page):
    """What a page shows: the example's source and its output."""
    source = FENCED.search(page)
    output = source and INDENTED.search(page, source.end())
    return (source.group(1) if source else "",
            "".join(line[4:] or "\n" for line in output.group().splitlines(True)) if output else "")


def difference(what, wanted, given):
    lines = list(difflib.unified_diff(given.splitlines(), wanted.splitlines(), f"the page's {what}", what, lineterm=""))
    return "\n".join(lines)


def output_of(program, runner):
    program = program if program.exists() else program.with_suffix(".exe")
    with tempfile.TemporaryDirectory() as folder:
        environment = {**os.environ, "TVL_USER_DIR": folder, "TVL_REGISTRY": str(Path(folder) / "registry.db")}
        # A file, because a pipe stays open as long as services live that a runner has started along the way.
        with open(Path(folder) / "output", "w+b") as output:
            run = subprocess.run([*runner, str(program)], stdin=subprocess.DEVNULL, stdout=output,
                                 stderr=subprocess.DEVNULL if runner else subprocess.STDOUT, env=environment, check=False)
            output.seek(0)
            text = output.read().decode("utf-8").replace("\r\n", "\n")
    return text if run.returncode == 0 else f"{text}ends with {run.returncode}\n"


def offences(example, page, programs, runner):
    """What differs between an example, its page and its program; either file may be missing."""
    missing = [f"{path} is missing" for path in (example, page) if not path.exists()]
    if missing:
        return missing
    source, output = shown(page.read_text(encoding="utf-8"))
    pairs = [("example", example.read_text(encoding="utf-8"), source),
             ("output", output_of(programs / f"example_{example.stem}", runner), output)]
    return [f"{page}:\n{difference(what, wanted, given)}" for what, wanted, given in pairs if wanted != given]


def pairs(root):
    """(example, page) of every family that has one of them."""
    families = {path.stem for path in [*(root / "examples").glob("*.cpp"), *(root / "docs/guide").glob("*.md")]}
    return [(root / f"examples/{name}.cpp", root / f"docs/guide/{name}.md") for name in sorted(families - {"README"})]


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    programs, runner = Path(sys.argv[1]).resolve(), sys.argv[2:]
    found = pairs(Path("."))
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda pair: offences(*pair, programs, runner), found))
    wrong = [text for texts in results for text in texts]
    print(*wrong, sep="\n", end="\n" if wrong else "")
    print(f"{len(found)} guide pages held against their examples, {len(wrong)} offences")
    return 1 if wrong or not found else 0


if __name__ == "__main__":
    sys.exit(main())
