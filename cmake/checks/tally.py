"""Counts the tests of builds: tally.py [--passed N] [--failed N] FOLDER...

Each FOLDER is a build whose tests ran: results/ctest.xml names the test programs, results/<name>.json holds what
GoogleTest says of one. A program without such a file (a replay of fuzz seeds, or one that crashed) counts as one test.
The last line is "N passed, N failed"; the exit code is 1 when anything failed or nothing ran.
"""
import argparse
import json
import sys
import xml.etree.ElementTree
from pathlib import Path


def tests_in(program):
    """(name, passed, skipped) of each test in a GoogleTest result."""
    for suite in program["testsuites"]:
        for test in suite["testsuite"]:
            name = f'{suite["name"]}.{test["name"]}'
            ran = test["status"] == "RUN" and test["result"] == "COMPLETED"
            yield name, ran and not test.get("failures"), not ran


def count_program(case, result_file):
    """(passed, failed) of one program as ctest saw it; names what did not pass."""
    succeeded = case.get("status") == "run"
    try:
        tests = list(tests_in(json.loads(result_file.read_text(encoding="utf-8"))))
    except FileNotFoundError:
        tests = [(case.get("name"), succeeded, False)]
    failed = [name for name, passed, skipped in tests if not passed and not skipped]
    if not succeeded and not failed:
        failed = [case.get("name") + ": the program ended with an error"]
    for name in failed:
        print("FAILED", name)
    for name, _, skipped in tests:
        if skipped:
            print("skipped", name)
    return sum(passed for _, passed, _ in tests), len(failed)


def count_build(folder):
    results = Path(folder) / "results"
    try:
        cases = xml.etree.ElementTree.parse(results / "ctest.xml").getroot().findall("testcase")
    except (FileNotFoundError, xml.etree.ElementTree.ParseError):
        cases = []
    if not cases:
        print(f"FAILED {folder}: no tests ran")
        return 0, 1
    counts = [count_program(case, results / f'{case.get("name")}.json') for case in cases]
    return sum(passed for passed, _ in counts), sum(failed for _, failed in counts)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--passed", type=int, default=0, help="passes of other kinds to add")
    parser.add_argument("--failed", type=int, default=0, help="failures of other kinds to add")
    parser.add_argument("folders", nargs="+", metavar="FOLDER")
    arguments = parser.parse_args()
    counts = [count_build(folder) for folder in arguments.folders]
    passed = arguments.passed + sum(count[0] for count in counts)
    failed = arguments.failed + sum(count[1] for count in counts)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
