"""Measures benchmarks beside their peers and compares the ratios with limits.txt: ratios.py FOLDER [--record] [NAME]

FOLDER holds the programs bench_*. NAME, a part of a benchmark's name, picks some. The runs of a program are interleaved at
random, so that a busy machine burdens both sides alike, and the least processor time of each benchmark counts; a
benchmark that measures by itself ("/manual_time") counts with the time that it tells. What is above its limit is measured
up to twice more, and the least time of all runs counts.

How cost grows with size is the exponent of size that fits the times best: 1 for twice the time at twice the size. It is
told of benchmarks with four sizes or more, where the first argument is the size.

--record writes the table of docs/performance.md anew. Exits with 1 when a ratio is above its limit, 2 when a line has no
benchmark.
"""
import argparse
import json
import math
import platform
import re
import subprocess
import sys
from fractions import Fraction
from pathlib import Path
from typing import NamedTuple

REPETITIONS = 15
SECONDS = "0.04"
RETRIES = 2
LEAST_SIZES = 4
LIMITS = Path(__file__).with_name("limits.txt")
PAGE = Path(__file__).parents[1] / "docs/performance.md"
TABLE = re.compile(r"(?<=<!-- table -->\n).*?(?=<!-- end of table -->)", re.DOTALL)
ARGUMENT = re.compile(r"(?:\w+:)?(\d+)")


class Limit(NamedTuple):
    own: str
    peer: str
    text: str    # a number, a fraction, or "+N": N microseconds more than the peer
    mean: bool   # the geometric mean over the arguments counts, which are no sizes
    least: float   # the sizes that it holds for; others are measured and told
    most: float

    def holds(self, size):
        """Whether it holds for a size, 0 being none."""
        return size == 0 or self.least <= size <= self.most

    def sizes(self):
        """Which sizes it holds for; empty for all."""
        ends = (("from", self.least, self.least > 0), ("up to", self.most, self.most < math.inf))
        return " ".join(f"{word} {size:,.0f}" for word, size, is_end in ends if is_end)

    def ratio(self, times):
        """The most that the ratio may be; "+N" counts with the peer's least time."""
        if not self.text.startswith("+"):
            return float(Fraction(self.text))
        base = min((time for name, time in times.items() if name.split("/")[0] == self.peer), default=math.inf)
        return 1 + float(self.text) * 1e3 / base


class Pair(NamedTuple):
    name: str    # the benchmark with its arguments
    ratio: float
    size: int    # 0 without one


class Group(NamedTuple):
    """Pairs that differ in their size alone, or one pair."""
    name: str      # without the size
    sizes: tuple   # empty where there are too few to tell growth from
    pairs: list
    growth: tuple  # exponents of own and peer, or nothing


def limits(lines, wanted=""):
    """The Limit of each line whose benchmark's name has `wanted` in it."""
    rows = [line.split("#")[0].split() for line in lines]
    return [limit(*words) for words in rows if words and wanted in words[0]]


def limit(own, peer, text, *more):
    """The Limit of a line's words."""
    ends = dict(zip(more[::2], more[1::2])) if more != ("mean",) else {}
    if ends.keys() - {"from", "to"}:
        raise ValueError(f"{own}: what does {' '.join(more)} mean?")
    return Limit(own, peer, text, more == ("mean",), float(ends.get("from", 0)), float(ends.get("to", math.inf)))


def split_size(name):
    """(name without its first argument, that argument); the size is 0 where there is none."""
    own, *arguments = name.split("/")
    size = ARGUMENT.fullmatch(arguments[0]) if arguments else None
    return ("/".join([own, *arguments[1:]]), int(size.group(1))) if size else (name, 0)


def exponent(points):
    """The k of time = c * size ** k that fits (size, time) best: least squares of the logarithms."""
    logs = [(math.log(size), math.log(time)) for size, time in points]
    x_mean, y_mean = (sum(column) / len(logs) for column in zip(*logs))
    return sum((x - x_mean) * (y - y_mean) for x, y in logs) / sum((x - x_mean) ** 2 for x, _ in logs)


def groups(times, limit):
    """What was measured for a limit, by what it has in common."""
    own, peer, mean = limit.own, limit.peer, limit.mean
    found = {}
    for name, time in times.items():
        beside = times.get(peer + name[len(own):])
        if name.split("/")[0] == own and beside:
            common, size = split_size(name)
            found.setdefault(common, []).append((size, name, time, beside))
    if mean and found:
        rows = [row for common in found.values() for row in common]
        ratio = math.exp(sum(math.log(time / beside) for _, _, time, beside in rows) / len(rows))
        return [Group(own, (), [Pair(own, ratio, 0)], ())]
    return [group for common, rows in found.items() for group in sized(common, sorted(rows))]


def sized(common, rows):
    """One group of (size, name, time, peer's time), or each for itself where too few have a size."""
    grown = [row for row in rows if row[0] > 0]
    if len(grown) < LEAST_SIZES:
        return [Group(name, (), [Pair(name, time / beside, size)], ()) for size, name, time, beside in rows]
    growth = tuple(exponent([(row[0], row[side]) for row in grown]) for side in (2, 3))
    pairs = [Pair(name, time / beside, size) for size, name, time, beside in rows]
    return [Group(common, tuple(row[0] for row in rows), pairs, growth)]


def listed(program):
    return subprocess.run([program, "--benchmark_list_tests"], capture_output=True, text=True, check=True).stdout.split()


def measure(program, names, times):
    """Puts the least processor time in nanoseconds of some benchmarks of a program, arguments included, into `times`."""
    expression = "^(" + "|".join(sorted(names)) + ")(/.*)?$"
    run = subprocess.run(
        [program, f"--benchmark_filter={expression}", f"--benchmark_repetitions={REPETITIONS}",
         f"--benchmark_min_time={SECONDS}", "--benchmark_enable_random_interleaving=true", "--benchmark_format=json"],
        capture_output=True, text=True, check=True)
    scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    for row in json.loads(run.stdout)["benchmarks"]:
        if row["run_type"] == "iteration":
            name = row["run_name"]
            time = row["real_time" if name.endswith("/manual_time") else "cpu_time"] * scale[row["time_unit"]]
            times[name] = min(time, times.get(name, math.inf))


def above(times, rows):
    """The limits that a ratio is above."""
    return [row for row in rows for group in groups(times, row) for pair in group.pairs if is_above(pair, row, times)]


def is_above(pair, row, times):
    """Whether the ratio of a pair is above a limit that holds for its size."""
    return row.holds(pair.size) and pair.ratio > row.ratio(times)


def measure_all(folder, rows):
    """{name: least time} of all that the limits name."""
    times = {}
    programs = {program: {name.split("/")[0] for name in listed(program)} for program in sorted(folder.glob("bench_*"))}
    for _ in range(1 + RETRIES):
        left = above(times, rows) if times else rows
        names = {name for row in left for name in row[:2]}
        for program, benchmarks in programs.items():
            if own := names & benchmarks:
                measure(program, own, times)
    return times


def as_text(times, rows):
    """(lines, exit code): a line for each pair, growth behind the last of its group."""
    lines, status = [f"{'benchmark':44} {'peer':28} {'ratio':>8} {'limit':>8}  growth own/peer"], 0
    for row in rows:
        found, most = groups(times, row), row.ratio(times)
        if not found:
            lines.append(f"{row.own:44} {row.peer:28}  no such benchmarks")
            status = 2
        for group in found:
            for pair in group.pairs:
                growth = group.growth if pair == group.pairs[-1] else ()
                told = "/".join(f"{value:.2f}" for value in growth) or "-"
                held = f"{most:8.4f}" if row.holds(pair.size) else f"{'-':>8}"
                lines.append(f"{pair.name:44} {row.peer:28} {pair.ratio:8.4f} {held}  {told:>9}"
                             + ("  above its limit" if is_above(pair, row, times) else ""))
                status = max(status, int(is_above(pair, row, times)))
    return lines, status


def short(value):
    """Three digits, or four of what is above 1."""
    return f"{value:.3f}" if value >= 0.1 else f"{value:.3g}"


def as_markdown(times, rows):
    """The table's lines: one for each group, with the ratio at each of its sizes."""
    lines = ["| Benchmark | Peer | Sizes | Ratio | Limit | Growth | Peer's |", "|---|---|---|---|---|---|---|"]
    for row in rows:
        most = row.text if not row.text.startswith("+") else f"{short(row.ratio(times))} ({row.text} µs)"
        for name, sizes, pairs, growth in groups(times, row):
            name = name.removesuffix("/manual_time")
            cells = [f"`{name}`", f"`{row.peer}`", ", ".join(f"{size:,}" for size in sizes) or "-",
                     ", ".join(short(pair.ratio) for pair in pairs), f"{most} {row.sizes()}".strip(),
                     *([f"{value:.2f}" for value in growth] or ["-", "-"])]
            lines.append("| " + " | ".join(cells) + " |")
    return lines


def machine():
    """The processor's name."""
    told = Path("/proc/cpuinfo")
    names = re.findall(r"^model name\s*: (.*)$", told.read_text(encoding="utf-8"), re.MULTILINE) if told.exists() else []
    return names[0] if names else platform.machine()


def record(page, lines):
    """The page with the table in the place of what it had there."""
    changed, count = TABLE.subn(lambda _: "\n" + "\n".join(lines) + "\n\n", page)
    if count != 1:
        raise ValueError("the page has no place for the table")
    return changed


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", type=Path)
    parser.add_argument("name", nargs="?", default="")
    parser.add_argument("--record", action="store_true")
    arguments = parser.parse_args()
    if arguments.record and arguments.name:
        parser.error("the whole table is recorded, or nothing")
    rows = limits(LIMITS.read_text(encoding="utf-8").splitlines(), arguments.name)
    times = measure_all(arguments.folder, rows)
    lines, status = as_text(times, rows)
    print(*lines, sep="\n")
    if arguments.record and status != 2:
        table = [f"On a processor of the name {machine()}:", "", *as_markdown(times, rows)]
        PAGE.write_text(record(PAGE.read_text(encoding="utf-8"), table), encoding="utf-8")
    return status


if __name__ == "__main__":
    sys.exit(main())
