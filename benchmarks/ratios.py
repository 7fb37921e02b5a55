"""Measures benchmarks beside their peers and compares the ratios with limits.txt: ratios.py FOLDER [--record] [NAME]

FOLDER holds the programs bench_*. NAME, a part of a benchmark's name, picks some. The runs of a program are interleaved at
random, so that a busy machine burdens both sides alike, and the least processor time of each benchmark counts; a
benchmark that measures by itself ("/manual_time") counts with the time that it tells. What is above its limit is measured
up to twice more, and the least time of all runs counts.

How cost grows with size is the exponent of size that fits the times best: 1 for twice the time at twice the size. It is
told of benchmarks with four sizes or more, where the first argument is the size.

--record writes the table of docs/performance.md anew. Exits with 1 when a ratio is above its limit, 2 when a line has no
benchmark or a benchmark no line.
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
    text: str      # a number, a fraction, "+N": N microseconds more than the peer, or "-" for none
    least: float   # the sizes that it holds for
    most: float

    def told(self):
        """The limit and its sizes, if it does not hold for all."""
        ends = (("from", self.least, self.least > 0), ("up to", self.most, self.most < math.inf))
        return " ".join([self.text, *(f"{word} {size:,.0f}" for word, size, is_end in ends if is_end)])


class Row(NamedTuple):
    own: str
    peer: str
    mean: bool      # the geometric mean over the arguments counts, which are no sizes
    limits: tuple   # by size; every size has one

    def ratio(self, size, times):
        """The most that the ratio may be for a size, 0 being none; "+N" counts with the peer's least time."""
        text = next(limit.text for limit in self.limits if size <= limit.most)
        if text == "-":
            return math.inf
        if not text.startswith("+"):
            return float(Fraction(text))
        base = min((time for name, time in times.items() if name.split("/")[0] == self.peer), default=math.inf)
        return 1 + float(text) * 1e3 / base


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


def rows_of(lines, wanted=""):
    """The Row of each pair whose benchmark's name has `wanted` in it."""
    rows = {}
    for own, peer, text, *more in filter(None, (line.split("#")[0].split() for line in lines)):
        if wanted in own:
            rows.setdefault((own, peer), []).append((text, more))
    return [row(own, peer, limits) for (own, peer), limits in rows.items()]


def row(own, peer, limits):
    """The Row of one pair's limits: their texts and what stands behind those."""
    mean = [more for _, more in limits] == [["mean"]]
    found = [Limit(text, 0, math.inf) if mean else limit(own, text, more) for text, more in limits]
    found.sort(key=lambda limit: limit.least)
    bounds = [edge for limit in found for edge in (limit.least, limit.most + 1)]
    if bounds[0] != 0 or bounds[-1] != math.inf or bounds[1:-1:2] != bounds[2:-1:2]:
        raise ValueError(f"{own}: its limits leave a size out or hold for one twice")
    return Row(own, peer, mean, tuple(found))


def limit(own, text, more):
    """The Limit of "from N" and "to N" behind its text."""
    ends = dict(zip(more[::2], more[1::2]))
    if ends.keys() - {"from", "to"} or len(more) != 2 * len(ends):
        raise ValueError(f"{own}: what does {' '.join(more)} mean?")
    return Limit(text, float(ends.get("from", 0)), float(ends.get("to", math.inf)))


def unmeasured(names, rows):
    """The benchmarks of `names` that are in no row."""
    return sorted(set(names) - {name for row in rows for name in (row.own, row.peer)})


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


def groups(times, row):
    """What was measured for a row, by what it has in common."""
    own, peer, mean = row.own, row.peer, row.mean
    found = {}
    for name, time in times.items():
        beside = times.get(peer + name[len(own):])
        if name.split("/")[0] == own and beside:
            common, size = split_size(name)
            found.setdefault(common, []).append((size, name, time, beside))
    if mean and found:
        measured = [values for common in found.values() for values in common]
        ratio = math.exp(sum(math.log(time / beside) for _, _, time, beside in measured) / len(measured))
        return [Group(own, (), [Pair(own, ratio, 0)], ())]
    return [group for common, measured in found.items() for group in sized(common, sorted(measured))]


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
    """The rows with a ratio that is above its limit."""
    return [row for row in rows if any(is_above(pair, row, times) for group in groups(times, row) for pair in group.pairs)]


def is_above(pair, row, times):
    return pair.ratio > row.ratio(pair.size, times)


def programs_of(folder):
    """{program: names of its benchmarks, without arguments}"""
    return {program: {name.split("/")[0] for name in listed(program)} for program in sorted(folder.glob("bench_*"))}


def measure_all(programs, rows):
    """{name: least time} of all that the rows name."""
    times = {}
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
        found = groups(times, row)
        if not found:
            lines.append(f"{row.own:44} {row.peer:28}  no such benchmarks")
            status = 2
        for group in found:
            for pair in group.pairs:
                growth = group.growth if pair == group.pairs[-1] else ()
                told = "/".join(f"{value:.2f}" for value in growth) or "-"
                most = row.ratio(pair.size, times)
                lines.append(f"{pair.name:44} {row.peer:28} {pair.ratio:8.4f} {most:8.4f}  {told:>9}"
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
        most = ", ".join(limit.told() for limit in row.limits)
        if most.startswith("+"):
            most = f"{short(row.ratio(0, times))} ({most} µs)"
        for name, sizes, pairs, growth in groups(times, row):
            name = name.removesuffix("/manual_time")
            cells = [f"`{name}`", f"`{row.peer}`", ", ".join(f"{size:,}" for size in sizes) or "-",
                     ", ".join(short(pair.ratio) for pair in pairs), most,
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
    rows = rows_of(LIMITS.read_text(encoding="utf-8").splitlines(), arguments.name)
    programs = programs_of(arguments.folder)
    times = measure_all(programs, rows)
    lines, status = as_text(times, rows)
    if not arguments.name:
        idle = unmeasured(set().union(*programs.values()), rows)
        lines += [f"{name:44} is in no row" for name in idle]
        status = 2 if idle else status
    print(*lines, sep="\n")
    if arguments.record and status != 2:
        table = [f"On a processor of the name {machine()}:", "", *as_markdown(times, rows)]
        PAGE.write_text(record(PAGE.read_text(encoding="utf-8"), table), encoding="utf-8")
    return status


if __name__ == "__main__":
    sys.exit(main())
