"""Measures benchmarks beside their peers and compares the ratios with limits.txt: ratios.py FOLDER [NAME]

FOLDER holds the programs bench_*. NAME, a part of a benchmark's name, picks some. The runs of a program are interleaved at
random, so that a busy machine burdens both sides alike, and the least processor time of each benchmark counts; a
benchmark that measures by itself ("/manual_time") counts with the time that it tells. Exits with
1 when a ratio is above its limit, 2 when a line has no benchmark.
"""
import json
import math
import subprocess
import sys
from fractions import Fraction
from pathlib import Path

REPETITIONS = 15
SECONDS = "0.05"


def limits(path, wanted):
    """(own, peer, limit, whether the mean counts) of each line; a limit that begins with "+" stays a text."""
    for line in path.read_text().splitlines():
        words = line.split("#")[0].split()
        if words and wanted in words[0]:
            limit = words[2] if words[2].startswith("+") else float(Fraction(words[2]))
            yield words[0], words[1], limit, words[3:] == ["mean"]


def listed(program):
    return subprocess.run([program, "--benchmark_list_tests"], capture_output=True, text=True, check=True).stdout.split()


def least_times(program, names):
    """{name: least processor time in nanoseconds} of some benchmarks of a program, arguments included."""
    expression = "^(" + "|".join(sorted(names)) + ")(/.*)?$"
    run = subprocess.run(
        [program, f"--benchmark_filter={expression}", f"--benchmark_repetitions={REPETITIONS}",
         f"--benchmark_min_time={SECONDS}", "--benchmark_enable_random_interleaving=true", "--benchmark_format=json"],
        capture_output=True, text=True, check=True)
    scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    times = {}
    for row in json.loads(run.stdout)["benchmarks"]:
        if row["run_type"] == "iteration":
            name = row["run_name"]
            time = row["real_time" if name.endswith("/manual_time") else "cpu_time"] * scale[row["time_unit"]]
            times[name] = min(time, times.get(name, math.inf))
    return times


def ratios(times, own, peer, mean):
    """(name, ratio) of each pair with the same arguments, or of all together."""
    pairs = [(name, time / times[peer + name[len(own):]]) for name, time in times.items()
             if name.split("/")[0] == own and peer + name[len(own):] in times]
    if mean and pairs:
        return [(own, math.exp(sum(math.log(ratio) for _, ratio in pairs) / len(pairs)))]
    return pairs


def ratio_of_more(times, peer, limit):
    """The ratio that "+N", N microseconds more than the peer, comes to."""
    base = min((time for name, time in times.items() if name.split("/")[0] == peer), default=math.inf)
    return 1 + float(limit) * 1e3 / base


def main():
    folder, wanted = Path(sys.argv[1]), (sys.argv[2:] or [""])[0]
    rows = list(limits(Path(__file__).with_name("limits.txt"), wanted))
    names = {name for row in rows for name in row[:2]}
    times = {}
    for program in sorted(folder.glob("bench_*")):
        own = names.intersection(name.split("/")[0] for name in listed(program))
        if own:
            times.update(least_times(program, own))
    status = 0
    print(f"{'benchmark':44} {'peer':28} {'ratio':>8} {'limit':>8}")
    for own, peer, limit, mean in rows:
        found = ratios(times, own, peer, mean)
        if isinstance(limit, str):
            limit = ratio_of_more(times, peer, limit)
        if not found:
            print(f"{own:44} {peer:28}  no such benchmarks")
            status = 2
        for name, ratio in found:
            above = ratio > limit
            status = max(status, int(above))
            print(f"{name:44} {peer:28} {ratio:8.4f} {limit:8.4f}{'  above its limit' if above else ''}")
    return status


if __name__ == "__main__":
    sys.exit(main())
