"""Runs the commands that documents show, compares their outputs, and follows links: documents.py PROGRAMS DOCUMENT...

A shown command is a line "    $ COMMAND"; the indented lines up to the next command or the end of the block are its
output, standard error included. PROGRAMS is the folder where the commands find this tree's programs. A link to a place in
this tree must lead to a file, and to a heading where it names one. A row of a table that ends with a number and a cell
"`CONSTANT` in `FILE`" must give the number that the file gives the constant.

A command without "$" is only allowed where it can't be run here: those of RUN_ELSEWHERE, with the reason. Forms of the
program's commands ("tvl paper find", in a block or within text) must name a command that there is, and options that it
has; forms of ./dev one that it lists.
"""
import functools
import itertools
import os
import re
import subprocess
import sys
from pathlib import Path

BLOCK_LINE = re.compile(r" {4}(.*)|$")
FENCED = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\]\((?![a-z]+:)([^)#\s]*)(?:#([^)\s]*))?\)")
SPAN = re.compile(r"`((?:tvl|\./dev) [^`]+)`")
WORD = re.compile(r"[a-z][a-z-]*$")
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*")
# Lines that begin as a command does.
COMMAND = re.compile(r"(\./dev|tvl|cmake|ctest|git|export|bash|sh|sudo|apt|apt-get|python3?|docker|wine|xvfb-run|dpkg|unzip)\b(?! \d)")
# What this test can't run, and why.
RUN_ELSEWHERE = {
    "./dev": "builds and runs this very test; .ci/run calls it. That it lists the command is checked",
    "bash .ci/run": "the same",
    "tvl": "the form of a command, which is held against the program's own help",
    "cmake": "builds the programs that this test runs",
    "ctest": "runs this test",
    "git switch": "would leave the branch that is being tested",
    "export PATH=": "what this test does for the commands itself",
}
LIMIT = re.compile(r"^\|.*\| *([\d,]+)(?: ([KMG])iB)? *\| *`(\w+)` in `([^`]+)` *\|$", re.MULTILINE)
SHIFTS = {"": 0, "K": 10, "M": 20, "G": 30}
HEADING = re.compile(r"^#+ +(.+?) *$", re.MULTILINE)


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


def unprompted(text):
    """(line number, line) of what looks like a command in a block and is not run."""
    blank = FENCED.sub(lambda fenced: "\n" * fenced.group().count("\n"), text)
    outputs = {number + i for number, _, lines in examples(text) for i in range(len(lines) + 1)}
    return [(number, line[4:]) for number, line in enumerate(blank.splitlines(), 1)
            if line.startswith("    ") and COMMAND.match(line[4:]) and number not in outputs]


def forms(text):
    """Forms of commands: within text, and in blocks without a prompt."""
    prose = "\n".join(line for line in FENCED.sub("", text).splitlines() if not line.startswith("    "))
    return SPAN.findall(prose) + [line for _, line in unprompted(text) if line.startswith(("tvl ", "./dev "))]


@functools.lru_cache(maxsize=None)
def help_of(programs, words):
    return output_of(" ".join(["tvl", *words, "--help"]), programs)


def unknown_form(programs, form):
    """Why a form names no command; empty when it does."""
    program, *rest = form.split()
    if program == "./dev":
        return "" if not WORD.match(rest[0]) or f"#   ./dev {rest[0]}" in Path("dev").read_text(encoding="utf-8") else \
            f"./dev lists no {rest[0]}"
    words = tuple(itertools.takewhile(WORD.match, rest))
    known = ()
    for word in words:
        # What stands behind the last command is an argument.
        if "Subcommands:" not in help_of(programs, known):
            break
        if not re.search(rf"^  {word}\b", help_of(programs, known), re.MULTILINE):
            return f"there is no command {word}"
        known += (word,)
    above = "".join(help_of(programs, known[:length]) for length in range(len(known) + 1))
    return "".join(f"there is no option {option}" for option in OPTION.findall(form) if option not in above)


def not_run(programs, document):
    """One text for each command of a document that is neither run nor allowed not to be."""
    text = Path(document).read_text(encoding="utf-8")
    found = [f"{document}:{number}: {line}\n  is not run: put a $ before it" for number, line in unprompted(text)
             if not line.startswith(tuple(RUN_ELSEWHERE))]
    return found + [f"{document}: {form}: {why}" for form in forms(text) if (why := unknown_form(programs, form))]


def anchors(text):
    """What links name the headings of a document by."""
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in HEADING.findall(FENCED.sub("", text))}


def dead_links(document):
    """One text for each link of a document that leads to no file, or to no heading of a document."""
    text = Path(document).read_text(encoding="utf-8")
    prose = "\n".join("" if line.startswith("    ") else line for line in FENCED.sub("", text).splitlines())
    dead = []
    for path, anchor in LINK.findall(prose):
        target = Path(document).parent / path if path else Path(document)
        if not target.exists() or anchor and anchor not in anchors(target.read_text(encoding="utf-8")):
            dead.append(f"{document}: a dead link to {path}{'#' + anchor if anchor else ''}")
    return dead


def value_of(name, source):
    """The number that a constant or a field has in a source of C++; None where it has none."""
    plain = re.sub(r"std::size_t\{(\d+)\}", r"\1", source)
    given = re.search(rf"\b{name} *= *([^;,}}]*)[;,}}]", plain)
    parts = given and re.fullmatch(r"(\d+)[uUlL]*(?: *(<<|\*) *(\d+)[uUlL]*)?", given.group(1).strip())
    if not parts:
        return None
    first, operator, second = int(parts.group(1)), parts.group(2), int(parts.group(3) or 0)
    return first << second if operator == "<<" else first * second if operator else first


def stale_limits(document, root="."):
    """One text for each row of a table, limit before constant, whose number is not the constant's in this tree."""
    stale = []
    for number, unit, name, path in LIMIT.findall(Path(document).read_text(encoding="utf-8")):
        source = Path(root) / path
        value = value_of(name, source.read_text(encoding="utf-8")) if source.exists() else None
        if value != int(number.replace(",", "")) << SHIFTS[unit]:
            stale.append(f"{document}: {name} of {path} is {value}, not {number}{unit and f' {unit}iB'}")
    return stale


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    dead = [text for document in sys.argv[2:] for text in [*dead_links(document), *stale_limits(document)]]
    print(*dead, sep="\n", end="\n" if dead else "")
    results = [offences(sys.argv[1], document) for document in sys.argv[2:]]
    for wrong, _ in results:
        print(*wrong, sep="\n", end="\n" if wrong else "")
    left = [text for document in sys.argv[2:] for text in not_run(sys.argv[1], document)]
    print(*left, sep="\n", end="\n" if left else "")
    failed, shown = sum(len(wrong) for wrong, _ in results), sum(count for _, count in results)
    print(f"{shown} commands of {len(results)} documents run, {failed} print something else, {len(left)} are not run; "
          f"{len(dead)} dead links and stale limits")
    return 1 if failed or left or dead or not shown else 0


if __name__ == "__main__":
    sys.exit(main())
