"""Tells which lines and branches of the sources ran: coverage.py BUILD LISTING [--report FOLDER]

BUILD is a build with TVL_COVERAGE whose programs ran. What they counted is merged over all of them: the library is in the
shared one and in the programs that link its objects. LISTING is the page that lists what does not run in the library, with
the reasons; it must be right. Prints a table with a row for each folder, and fails when the library is below its limits.
"""
import argparse
import bisect
import json
import re
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

LLVM = "16"   # clang's version: its tools read no other's counts
LIBRARY = "Engines/TvlUtl"
SOURCES = (LIBRARY, "Siblings", "Apps/tvl")
LIMITS = {"lines": 92.0, "branches": 80.0}
# A row of the page: file, function, and how many of its lines do not run: "1", or "0 to 1" where threads decide.
LISTED = re.compile(r"^\| `([^`]+)` \| `([^`]+)` \| (?:(\d+) to )?(\d+) \|", re.MULTILINE)


def merge_counts(build):
    counts = build / "counts"
    merged = counts / "merged.profdata"
    raw = sorted(counts.glob("*.profraw"))
    if not raw:
        raise SystemExit(f"{counts} holds no counts: no program ran")
    subprocess.run([f"llvm-profdata-{LLVM}", "merge", "-sparse", "-o", merged, *raw], check=True)
    return merged


def binaries(build):
    """Programs and libraries whose counts are asked for, the libraries first."""
    files = [path for path in (build / "bin").iterdir() if path.is_file() and not path.is_symlink()]
    elves = [path for path in files if path.open("rb").read(4) == b"\x7fELF"]
    return sorted(elves, key=lambda path: (".so" not in path.name, path.name))


def llvm_cov(command, build, profile, sources, *options):
    first, *others = binaries(build)
    objects = [argument for path in others for argument in ("-object", path)]
    return [f"llvm-cov-{LLVM}", command, first, *objects, "-instr-profile", profile, *options, "-sources", *sources]


def line_counts(segments):
    """How often each line with code ran, {line: count}; segments are llvm-cov's, in the order of the file.

    [line, column, count, has a count, begins a region, is a gap]: a segment reaches to the next one. A line counts as its
    busiest region does, the one that reaches into it included.
    """
    lines, around = {}, None
    by_line = defaultdict(list)
    for segment in segments:
        by_line[segment[0]].append(segment)
    last = segments[-1][0] if segments else 0
    for line in range(segments[0][0] if segments else 1, last + 1):
        here = by_line.get(line, [])
        starting = [segment for segment in here if segment[3] and segment[4] and not segment[5]]
        skipped = here and not here[0][3] and here[0][4]
        if not skipped and (starting or (around and around[3])):
            reaching = [around[2]] if around and around[3] else []
            lines[line] = max(reaching + [segment[2] for segment in starting])
        around = here[-1] if here else around
    return lines


def branch_counts(branches):
    """How often each outcome of each condition came up, {(line, column, true or false): count}.

    Templates have a branch for each of their instances: these are one branch in the source.
    """
    counts = defaultdict(int)
    for line, column, _, _, taken, not_taken, *_ in branches:
        counts[line, column, True] += taken
        counts[line, column, False] += not_taken
    return dict(counts)


class Source:
    """What ran of one file."""

    def __init__(self, segments, branches):
        self.lines = line_counts(segments)
        outcomes = branch_counts(branches)
        # A condition that ran and came out neither way is a constant of the compiler's: nobody can take its other side.
        self.branches = {
            (line, column, outcome): count
            for (line, column, outcome), count in outcomes.items()
            if not self.lines.get(line) or outcomes[line, column, True] or outcomes[line, column, False]
        }

    def missing_lines(self):
        return [line for line, count in self.lines.items() if count == 0]

    def missing_branches(self):
        return sorted(branch for branch, count in self.branches.items() if count == 0)


def read_sources(root, exported):
    """{path below root: Source} of what llvm-cov exported."""
    files = exported["data"][0]["files"]
    return {
        str(Path(file["filename"]).resolve().relative_to(root)): Source(file["segments"], file["branches"])
        for file in files
    }


def folder_of(path):
    parts = Path(path).parts
    return "/".join(parts[:-1][:3])


def totals(sources):
    lines = sum(len(source.lines) for source in sources)
    branches = sum(len(source.branches) for source in sources)
    return (lines - sum(len(source.missing_lines()) for source in sources), lines,
            branches - sum(len(source.missing_branches()) for source in sources), branches)


def percent(covered, whole):
    return 100.0 * covered / whole if whole else 100.0


def row(name, sources):
    ran, lines, taken, branches = totals(sources)
    return f"{name:<30} {ran:>6} of {lines:>6} {percent(ran, lines):6.2f} % {taken:>6} of {branches:>6} {percent(taken, branches):6.2f} %"


def table(sources):
    """Prints a row for each folder, with the sum of each part of the tree behind."""
    print(f'{"":<30} {"lines that ran":>25} {"branches taken":>25}')
    for top in SOURCES:
        chosen = {path: source for path, source in sources.items() if path.startswith(top + "/")}
        folders = defaultdict(list)
        for path, source in chosen.items():
            folders[folder_of(path)].append(source)
        for folder in sorted(folders):
            print(row("  " + folder, folders[folder]))
        print(row(top, chosen.values()))


def function_name(demangled):
    """A function as the sources name it, without arguments; a lambda has the name of the function that it stands in."""
    name = re.sub(r"^\S+\.(?:cpp|h):(?!:)", "", demangled)   # the file of what others can't call
    name = re.sub(r"\[abi:\w+\]|::'lambda\d*'", "", name)
    name = name.replace("(anonymous namespace)::", "").replace("operator()", "operator[call]")
    while (shorter := re.sub(r"(?<!operator)(?<!operator<)<[^<>]*>", "", name)) != name:
        name = shorter
    name = name.split("(")[0]
    if "operator" not in name:
        name = name.split(" ")[-1]
    return name.replace("operator[call]", "operator()")


def read_functions(root, tracefile):
    """{path below root: [(first line, name)]} in the order of the file, from llvm-cov's tracefile."""
    functions, path = defaultdict(set), None
    for line in tracefile.splitlines():
        kind, _, rest = line.partition(":")
        if kind == "SF":
            path = str(Path(rest).resolve().relative_to(root))
        elif kind == "FN":
            first, name = rest.split(",", 1)
            functions[path].add((int(first), function_name(name)))
    return {path: sorted(names) for path, names in functions.items()}


def function_at(functions, line):
    place = bisect.bisect_right(functions, (line, "\U0010ffff")) - 1
    return functions[place][1] if place >= 0 else "(none)"


def missing_by_function(sources, functions):
    """{(file in the library, function): lines that do not run}."""
    missing = defaultdict(int)
    for path, source in sources.items():
        if not path.startswith(LIBRARY + "/"):
            continue
        names = functions.get(path, [])
        short = path.removeprefix(LIBRARY + "/")
        for line in source.missing_lines():
            missing[short, function_at(names, line)] += 1
    return dict(missing)


def missing_places(sources):
    """Each line of the library that does not run, and each condition that always comes out the same way."""
    for path, source in sorted(sources.items()):
        if not path.startswith(LIBRARY + "/"):
            continue
        text = Path(path).read_text(encoding="utf-8").splitlines()
        places = [(line, 0, "never runs") for line in source.missing_lines()]
        places += [(line, column, f"never {str(outcome).lower()}") for line, column, outcome in source.missing_branches()]
        for line, column, what in sorted(places):
            shown = text[line - 1]
            yield f"{path}:{line}:{column}: {what}: {shown[column - 1:] if column else shown.strip()}"


def wrong_rows(listing, missing):
    """Messages, one for each place where the page and what was measured differ."""
    listed = {(file, name): (int(least or most), int(most)) for file, name, least, most in LISTED.findall(listing)}
    for place in sorted(listed.keys() | missing.keys()):
        (least, most), now = listed.get(place, (0, 0)), missing.get(place, 0)
        if not least <= now <= most:
            file, name = place
            yield f"{file}: {name}: {now} lines do not run, {most} are listed"


def report(sources, missing, listing):
    """Prints what was measured; the messages of what is wrong."""
    table(sources)
    ran, lines, taken, branches = totals([source for path, source in sources.items() if path.startswith(LIBRARY + "/")])
    measured = {"lines": percent(ran, lines), "branches": percent(taken, branches)}
    for kind, limit in LIMITS.items():
        if measured[kind] < limit:
            yield f"{measured[kind]:.2f} % of the library's {kind}: at least {limit:.0f} % are wanted"
    yield from wrong_rows(listing, missing)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path, metavar="BUILD")
    parser.add_argument("listing", type=Path, metavar="LISTING")
    parser.add_argument("--report", type=Path, metavar="FOLDER", help="where to write pages that show each line")
    arguments = parser.parse_args()
    root = Path.cwd()
    profile = merge_counts(arguments.build)

    def export(*options):
        command = llvm_cov("export", arguments.build, profile, SOURCES, *options)
        # Binaries differ in the copies that they have of inline functions, and each has a main: it warns of these.
        return subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE).stdout

    sources = read_sources(root, json.loads(export("-skip-functions", "-skip-expansions")))
    trace = subprocess.run([f"llvm-cxxfilt-{LLVM}"], input=export("-format=lcov"), check=True, stdout=subprocess.PIPE).stdout
    missing = missing_by_function(sources, read_functions(root, trace.decode()))
    failures = list(report(sources, missing, arguments.listing.read_text(encoding="utf-8")))
    if arguments.report:
        arguments.report.mkdir(parents=True, exist_ok=True)
        places = "\n".join(missing_places(sources))
        (arguments.report / "missing.txt").write_text(places + "\n", encoding="utf-8")
        subprocess.run(llvm_cov("show", arguments.build, profile, SOURCES, "-format=html", "-show-branches=count",
                                "-show-instantiations=false", "-output-dir", arguments.report), check=True, stderr=subprocess.PIPE)
        print(f"each line: {arguments.report}/index.html; what does not run: {arguments.report}/missing.txt")
    print("\n".join(failures) or "the library is above its limits, and what does not run is listed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
