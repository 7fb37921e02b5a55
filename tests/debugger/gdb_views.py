"""What gdb shows of the objects of a program with the views of the library: gdb_views.py GDB PROGRAM VIEWS"""
import subprocess
import sys

# What is asked, and the whole answer.
ASKED = [
    ("print list", [
        '$1 = WGList of 2 slots, header of 4 bytes = {[0] = free,',
        '[1] = 17 bytes: 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66 ...}',
    ]),
    ("tvl-list handle", ["LIST of 1 elements in 23 bytes", "[0] 3 bytes: 78 79 7a"]),
    ("print paper", ['$2 = "Plakat ä" 210 x 297.0005 mm, custom 150']),
    ("print paper.DisplayName", ['$3 = "Plakat ä"']),
    ("print *counted", ['$4 = "Export" 20/100 > 3/8, cancelled']),
]


def answers(gdb, program, views):
    """What gdb says to each question; its own words about threads and breakpoints go before the first mark."""
    commands = ["set pagination off", "set width 0", "set debuginfod enabled off", f"source {views}", "break Look", "run", "up"]
    for question, _ in ASKED:
        commands += ["echo ==\\n", question]
    commands += ["echo ==\\n", "kill"]
    run = subprocess.run([gdb, "--batch", "-nx", *(word for command in commands for word in ("-ex", command)), program],
                         stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    before, *said = run.stdout.split("==\n")
    return before, said[:-1]


def words(text):
    """Line ends and indents are gdb's."""
    return " ".join(text.split())


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    before, said = answers(*sys.argv[1:])
    if len(said) != len(ASKED):
        sys.exit(f"gdb did not come to the end:\n{before}")
    wrong = [f"{question}\n  shows\n{given}  but should show\n{chr(10).join(wanted)}"
             for (question, wanted), given in zip(ASKED, said) if words(given) != words(" ".join(wanted))]
    print(*wrong, sep="\n", end="\n" if wrong else "")
    print(f"{len(said)} views in gdb, {len(wrong)} show something else")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
