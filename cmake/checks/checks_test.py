"""Every check finds an offence that is planted for it, and lets pass what is allowed."""
import contextlib
import io
import json
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import abi
import coverage
import documents
import exports
import guides
import headers
import includes
import natvis
import links
import tally

sys.path.insert(0, str(Path(__file__).parents[2] / "benchmarks"))
import ratios   # noqa: E402

LIBRARY = "Engines/TvlUtl"


def planted(folder, files):
    for name, text in files.items():
        path = Path(folder) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
    return folder


class Includes(unittest.TestCase):
    TREE = {
        f"{LIBRARY}/frame/CMakeLists.txt": "tvl_library_folder(frame)",
        f"{LIBRARY}/frame/Frame.cpp": '#include "Frame.h"\n',
        f"{LIBRARY}/frame/Inner.h": "",
        f"{LIBRARY}/units/CMakeLists.txt": "tvl_library_folder(units USES frame SOURCES Units.cpp)",
        f"{LIBRARY}/units/Table.h": "",
        f"{LIBRARY}/units/Unit.cpp": "",
        f"{LIBRARY}/Units.cpp": '#include "Inner.h"\n#include "Table.h"\n',
        f"{LIBRARY}/lists/CMakeLists.txt": "tvl_library_folder(lists)",
        f"{LIBRARY}/include/Frame.h": "",
        f"{LIBRARY}/include/Unit.h": '#include "Frame.h"\n',
        f"{LIBRARY}/platform/windows/Types.h": "#ifdef _WIN32\n#include <guiddef.h>\n#endif\n",
        f"{LIBRARY}/platform/windows/Locale.h": "#include <optional>\n",
        "Siblings/Windows/win32/Locale.cpp": '#include "windows/Locale.h"\n#include <windows.h>\n',
        "Apps/tvl/Main.cpp": '#include "Unit.h"\n#include <CLI/CLI.hpp>\n',
        "tests/units/UnitTest.cpp": '#include "Table.h"\n#include <gtest/gtest.h>\n',
    }
    OFFENCES = [
        (f"{LIBRARY}/include/Wrong.h", '#include "Table.h"', "does not declare"),
        (f"{LIBRARY}/include/Frame.h", '#include "Unit.h"', "frame does not build on units"),
        (f"{LIBRARY}/include/Wrong.h", "#include <windows.h>", "other libraries"),
        (f"{LIBRARY}/lists/Wrong.cpp", '#include "Table.h"', "does not declare that it uses units"),
        (f"{LIBRARY}/lists/Wrong.cpp", '#include "Inner.h"', "does not declare that it uses frame"),
        (f"{LIBRARY}/lists/Wrong.cpp", '#include "../units/Table.h"', "does not declare"),
        (f"{LIBRARY}/lists/Wrong.cpp", '#include "Unit.h"', "lists does not build on units"),
        (f"{LIBRARY}/frame/Wrong.cpp", "# include <unistd.h>", "other libraries"),
        (f"{LIBRARY}/frame/Wrong.cpp", "#include <nlohmann/json.hpp>", "other libraries"),
        (f"{LIBRARY}/frame/Wrong.cpp", "#if defined(_WIN32) && 1", "told apart"),
        (f"{LIBRARY}/platform/windows/Wrong.h", '#include "Unit.h"', "stand on their own"),
        (f"{LIBRARY}/lists/CMakeLists.txt", "tvl_library_folder(lists USES units)", "does not stand below"),
        ("Siblings/TvlUtils/Wrong.cpp", '#include "Unit.h"', "never sees the library"),
        ("Siblings/TvlUtils/Wrong.cpp", "#ifdef __linux__", "told apart"),
        ("Apps/tvl/Wrong.cpp", '#include "Table.h"', "public headers alone"),
        ("Apps/tvl/Wrong.cpp", "#include <unistd.h>", "other libraries"),
    ]

    def test_allows_what_the_layers_allow(self):
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(list(includes.offences(planted(folder, self.TREE))), [])

    def test_finds_each_offence(self):
        for path, line, reason in self.OFFENCES:
            with self.subTest(path=path, line=line), tempfile.TemporaryDirectory() as folder:
                found = list(includes.offences(planted(folder, {**self.TREE, path: line + "\n"})))
                self.assertEqual(len(found), 1, found)
                self.assertTrue(found[0].startswith(path), found)
                self.assertIn(reason, found[0])


class Exports(unittest.TestCase):
    SOURCE = """
        #include <map>
        #include <typeinfo>
        #include <vector>
        #define API __attribute__((visibility("default")))
        extern "C" API int PlainName() { return 1; }
        namespace Space { API int Call(int) { return 1; } API int Call(char) { return 1; } int Hidden() { return 1; } }
        struct API Widget { virtual ~Widget(); Widget& operator()(); static int count; };
        Widget::~Widget() = default;
        Widget& Widget::operator()() { return *this; }
        int Widget::count = 0;
        API const void* Type() { struct Inner { virtual ~Inner() {} }; return &typeid(int(Inner)); }
        template <class T> struct API Holder { static T* Get(); };
        template <class T> T* Holder<T>::Get() { static std::map<int, std::vector<T>> held; return &held[0].emplace_back(); }
        template struct Holder<int>;
    """
    LIST = ["PlainName", "function Type", "function Space::Call", "class Widget   # a comment", "class Holder"]

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        folder = Path(planted(cls.folder.name, {"library.cpp": cls.SOURCE}))
        cls.libraries = [folder / "library.so", folder / "library.dll"]
        for compiler, output in (("g++", "library.so"), ("x86_64-w64-mingw32-g++-posix", "library.dll")):
            source = cls.SOURCE.replace('visibility("default")', "dllexport") if output.endswith("dll") else cls.SOURCE
            planted(folder, {"library.cpp": source})
            subprocess.run([compiler, "-shared", "-fPIC", "-fvisibility=hidden", "-fvisibility-inlines-hidden", "-O0", "-o",
                            folder / output, folder / "library.cpp"], check=True)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def offences(self, lines):
        path = Path(self.folder.name) / "exports.txt"
        path.write_text("\n".join(lines), encoding="utf-8")
        families = exports.listed(path)
        return [[text.split(".", 1)[1].split(" ", 1)[1] for text in exports.offences(families, library)]
                for library in self.libraries]

    def test_a_full_list_fits_both_binaries(self):
        self.assertEqual(self.offences(self.LIST), [[], []])

    def test_names_what_is_not_listed(self):
        for line, named in zip(self.LIST, ["PlainName", "Type", "function Space::Call", "class Widget", "Holder"]):
            with self.subTest(line=line):
                for found in self.offences([other for other in self.LIST if other != line]):
                    self.assertEqual(len(found), 1, found)
                    self.assertIn("exports what is not listed: ", found[0])
                    self.assertIn(named, found[0])

    def test_names_what_is_not_exported(self):
        for line in ("Missing", "function Space::Hidden", "function Space", "class Wid"):
            with self.subTest(line=line):
                self.assertEqual(self.offences(self.LIST + [line]), [[f"does not export {line}"]] * 2)


class Links(unittest.TestCase):
    def test_finds_links_without_a_target(self):
        files = {
            "a.html": '<a href="b.html#x">1</a><a href="https://x.org/gone">2</a><a class="el" href="#here" id="here">3</a>'
                      '<a href="a&amp;b.html">4</a><a href="gone.html">5</a><a href="b.html#gone">6</a><a href="#gone">7</a>',
            "b.html": '<h2 id="x">B</h2>',
            "a&b.html": "",
        }
        with tempfile.TemporaryDirectory() as folder:
            dead = list(links.dead_links(planted(folder, files)))
        self.assertEqual([text.rpartition(" ")[2] for text in dead], ["#gone", "b.html#gone", "gone.html"])


class Headers(unittest.TestCase):
    COMPILER = "x86_64-w64-mingw32-g++-posix"
    ASIDE = '#pragma push_macro("DeleteFile")\n#undef DeleteFile\nint DeleteFile();\n#pragma pop_macro("DeleteFile")\n'

    def offences(self, text):
        with tempfile.TemporaryDirectory() as folder:
            return list(headers.offences(self.COMPILER, [planted(folder, {"sub/Planted.h": "#pragma once\n" + text})]))

    def test_finds_names_that_the_system_renames(self):
        found = self.offences("struct File { void DeleteFile(); };\n")
        self.assertEqual(["DeleteFileA" in found[0], "DeleteFileW" in found[1], len(found)], [True, True, 2])

    def test_allows_names_that_are_put_aside(self):
        self.assertEqual(self.offences(self.ASIDE), [])


class Documents(unittest.TestCase):
    def test_finds_outputs_that_differ(self):
        text = "Text.\n\n    $ printf 'a\\n\\nb\\n'\n    a\n\n    b\n    $ echo wrong >&2\n    right\n\nMore.\n\n    ./not run\n"
        with tempfile.TemporaryDirectory() as folder:
            wrong, shown = documents.offences(folder, Path(planted(folder, {"page.md": text})) / "page.md")
        self.assertEqual((len(wrong), shown), (1, 2))
        self.assertIn("page.md:7: $ echo wrong", wrong[0])

    def test_finds_commands_that_are_not_run(self):
        help_text = "Usage: tvl\n\nSubcommands:\n  paper   finds papers\n  --json\n"
        page = ("Run `tvl paper --json` or `tvl papers`, `tvl paper --yaml`, `./dev test` or `./dev tset`.\n\n"
                "    ./dev test -R units\n    cmake --build build\n    apt-get install all\n    tvl plugin\n    $ tvl 1\n    export it\n")
        with tempfile.TemporaryDirectory() as folder:
            program = Path(planted(folder, {"tvl": f"#!/bin/sh\necho '{help_text}'\n", "page.md": page})) / "tvl"
            program.chmod(0o755)
            left = documents.not_run(folder, Path(folder) / "page.md")
        self.assertEqual([text.split("page.md:")[1].split("\n")[0] for text in left], [
            "5: apt-get install all", " tvl papers: there is no command papers", " tvl paper --yaml: there is no option --yaml",
            " ./dev tset: ./dev lists no tset", " tvl plugin: there is no command plugin"])

    def test_finds_dead_links(self):
        files = {
            "page.md": "[a](other.md) [b](other.md#two-words) [c](https://x.org/gone) [d](sub) [e](#here)\n## Here\n"
                       "[f](gone.md) [g](other.md#gone) [h](#gone)\n\n    [i](code.md)\n```cpp\n[](code)\n```\n",
            "other.md": "# Two `words`\n",
            "sub/file": "",
        }
        with tempfile.TemporaryDirectory() as folder:
            dead = documents.dead_links(Path(planted(folder, files)) / "page.md")
        self.assertEqual([text.rpartition(" ")[2] for text in dead], ["gone.md", "other.md#gone", "#gone"])

    def test_finds_limits_that_went_stale(self):
        row = "| some text | {} | `{}` in `a/b.h` |\n"
        right = [("4,096", "kA"), ("64 MiB", "kB"), ("256 MiB", "kC"), ("64 KiB", "bytes"), ("16", "depth"), ("16 MiB", "kD")]
        wrong = [("4096 KiB", "kA"), ("63 MiB", "kB"), ("1", "kGone"), ("7", "kSum"), ("16", "kDepth")]
        files = {
            "page.md": "".join(row.format(*cells) for cells in right + wrong) + "| x | 1 | `kA` in `gone.h` |\n",
            "a/b.h": "constexpr int kA = 4096;\nlong long kB = 64LL << 20;\nint kC = std::size_t{256} << 20;\n"
                     "Limits kL{.bytes = 65536, .depth = 16};\nunsigned kD = 16u << 20;   // bytes\nint kSum = 3 + 4;\n",
        }
        with tempfile.TemporaryDirectory() as folder:
            stale = documents.stale_limits(Path(planted(folder, files)) / "page.md", folder)
        self.assertEqual([text.split()[1] for text in stale], ["kA", "kB", "kGone", "kSum", "kDepth", "kA"])


class Guides(unittest.TestCase):
    PAGE = "# Sums\n\n    not this\n\n```cpp\nint main()\n{\n}\n```\n\nIt prints:\n\n    1\n\n    2\n\nText.\n"

    def offences(self, page, source="int main()\n{\n}\n", output="1\n\n2\n"):
        with tempfile.TemporaryDirectory() as folder:
            planted(folder, {"examples/sums.cpp": source, "docs/guide/README.md": "", "example_sums": output})
            if page:
                planted(folder, {"docs/guide/sums.md": page})
            return [text for pair in guides.pairs(Path(folder)) for text in guides.offences(*pair, Path(folder), ["cat"])]

    def test_lets_a_page_pass_that_shows_its_example(self):
        self.assertEqual(self.offences(self.PAGE), [])

    def test_finds_pages_that_went_stale(self):
        self.assertIn("sums.md is missing", self.offences(None)[0])
        self.assertIn("+int main(int)", self.offences(self.PAGE, source="int main(int)\n{\n}\n")[0])
        self.assertIn("+3", self.offences(self.PAGE, output="1\n\n3\n")[0])


class Abi(unittest.TestCase):
    HEADER = """
        #include <string>
        namespace Space { struct Pair { int first; const char* names[2]; }; enum Kind { kOne = 1, kTwo }; }
        class Base { public: virtual ~Base() = default; virtual int Call(int) = 0; virtual void Other() = 0; Space::Pair pair; };
    """
    CHANGES = [
        ("int first;", "long long first;", "class Space::Pair: now field 0 first long long int"),
        ("int first; ", "", "class Space::Pair: no longer field 0 first int"),
        ("virtual int Call(int) = 0; virtual void Other() = 0;", "virtual void Other() = 0; virtual int Call(int) = 0;",
         "class Base: no longer slot 2 Base::Call(int)"),
        ("kTwo", "kTwo = 3", "enum Space::Kind: no longer constant kTwo 2"),
        ("class Base", "class Bass", "class Base is gone"),
    ]
    COMPILERS = ["g++", "x86_64-w64-mingw32-g++-posix"]

    def test_tells_each_change(self):
        for compiler in self.COMPILERS:
            recorded = abi.read(abi.written("0.1.0", self.layouts_of(compiler, self.HEADER)))[1]
            self.assertEqual(len(recorded), 3, recorded)
            for before, after, told in self.CHANGES:
                with self.subTest(compiler=compiler, after=after):
                    text = self.HEADER.replace(before, after).replace("~Base", "~" + ("Bass" if "Bass" in after else "Base"))
                    self.assertIn(told, list(abi.changes(recorded, self.layouts_of(compiler, text))))

    def layouts_of(self, compiler, text):
        with tempfile.TemporaryDirectory() as folder:
            return abi.layouts(compiler, [planted(folder, {"Planted.h": "#pragma once\n" + text})])

    def test_allows_what_is_added(self):
        recorded = self.layouts_of("g++", self.HEADER)
        found = self.layouts_of("g++", self.HEADER.replace("kTwo", "kTwo, kThree") + "struct More { int it; };")
        self.assertEqual(list(abi.changes(recorded, found)), [])

    def test_versions_promise_interfaces(self):
        for older, newer, same in [("0.1.0", "0.1.7", True), ("0.1.0", "0.2.0", False), ("1.2.0", "1.9.0", True),
                                   ("1.2.0", "2.0.0", False)]:
            self.assertEqual(abi.interfaces(older) == abi.interfaces(newer), same, (older, newer))


class Natvis(unittest.TestCase):
    HEADER = """
        struct Pair { int first = 1; int Call() { int inner; return first; } };   // gone
        template <class C> class Text { public: operator bool() const; C* operator[](int) { return m_text; } C* m_text; };
    """
    VIEW = '<DisplayString Condition="first == 1">{first} of {((Text*)this)->m_text}</DisplayString>'

    def offences(self, view, name="Pair"):
        text = ('<AutoVisualizer xmlns="http://schemas.microsoft.com/vstudio/debugger/natvis/2010">'
                f'<Type Name="Space::{name}">{view}</Type><Type Name="Text&lt;*&gt;"/></AutoVisualizer>')
        with tempfile.TemporaryDirectory() as folder:
            planted(folder, {"include/Planted.h": self.HEADER, "views.natvis": text})
            return list(natvis.offences(Path(folder) / "views.natvis", folder))

    def test_lets_fields_pass(self):
        self.assertEqual(self.offences(self.VIEW), [])

    def test_finds_names_that_are_not_fields(self):
        for before, after, told in [("{first}", "{inner}", "Pair has no inner"), ("{first}", "{gone}", "Pair has no gone"),
                                    ('"first', '"Call', "Pair has no Call"), ("->m_text", "->text", "Pair has no text")]:
            with self.subTest(after=after):
                found = self.offences(self.VIEW.replace(before, after))
                self.assertEqual(len(found), 1, found)
                self.assertIn(told, found[0])
        self.assertIn("there is no class Pear", self.offences(self.VIEW, "Pear")[0])

    def test_refuses_what_is_not_xml(self):
        with self.assertRaises(natvis.tree.ParseError):
            self.offences("<DisplayString>")


class Tally(unittest.TestCase):
    PASS, FAIL = {}, {"failures": [{"failure": "1 != 2"}]}

    def counts(self, status, tests):
        """Counts of a build with one program that ended with `status`; `tests` is None when it left no result."""
        with tempfile.TemporaryDirectory() as folder:
            files = {"results/ctest.xml": f'<testsuite><testcase name="units" status="{status}"/></testsuite>'}
            if tests is not None:
                rows = [{"name": f"Test{i}", "status": "RUN", "result": "COMPLETED", **test} for i, test in enumerate(tests)]
                files["results/units.json"] = json.dumps({"testsuites": [{"name": "Units", "testsuite": rows}]})
            with contextlib.redirect_stdout(io.StringIO()):
                return tally.count_build(planted(folder, files))

    def test_counts_tests_and_programs(self):
        cases = [
            ("run", [self.PASS, self.PASS], (2, 0)),
            ("fail", [self.PASS, self.FAIL], (1, 1)),
            ("fail", [self.PASS], (1, 1)),   # every test passed, then the sanitizer spoke
            ("run", [self.PASS, {"result": "SKIPPED"}], (1, 0)),
            ("run", None, (1, 0)),
            ("fail", None, (0, 1)),
        ]
        for status, tests, wanted in cases:
            with self.subTest(status=status, tests=tests):
                self.assertEqual(self.counts(status, tests), wanted)

    def test_a_build_without_results_fails(self):
        with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stdout(io.StringIO()):
            self.assertEqual(tally.count_build(folder), (0, 1))


class Ratios(unittest.TestCase):
    LINES = ["# words", "", "Sort  Sort_Bare 1/4   # why", "Parse Parse_Peer 2 mean", "Start Start_Bare +1000"]
    TIMES = {f"{name}/{extra}{size}/deep:{deep}": factor * size ** power
             for name, factor, power in (("Sort", 2, 2), ("Sort_Bare", 5, 1))
             for extra, size in (("", 10), ("", 100), ("", 1000), ("bytes:", 10000)) for deep in (0, 1)}
    TIMES |= {"Sorted/10": 1, "Parse/0": 8, "Parse_Peer/0": 2, "Parse/1": 1, "Parse_Peer/1": 1,
              "Start": 5e6, "Start_Bare": 2e6}

    def test_reads_limits(self):
        sort, parse, start = ratios.rows_of(self.LINES)
        self.assertEqual(sort[:3], ("Sort", "Sort_Bare", False))
        self.assertEqual([parse.mean, start.mean], [True, False])
        self.assertEqual([row.ratio(0, self.TIMES) for row in (sort, parse, start)], [0.25, 2, 1.5])
        self.assertEqual(ratios.rows_of(self.LINES, "art"), [start])

    def test_holds_each_limit_for_the_sizes_that_it_names(self):
        lines = ["Sort Sort_Bare 41 to 10", "Sort Sort_Bare 1/4 from 1000", "Sort Sort_Bare 410 from 11 to 999"]
        (sort,) = ratios.rows_of(lines)
        self.assertEqual([sort.ratio(size, {}) for size in (0, 1, 10, 11, 100, 999, 1000, 10 ** 9)],
                         [41, 41, 41, 410, 410, 410, 0.25, 0.25])
        self.assertEqual([limit.told() for limit in sort.limits], ["41 up to 10", "410 from 11 up to 999", "1/4 from 1,000"])
        lines, code = ratios.as_text(self.TIMES, [sort])
        self.assertEqual((code, sum("above its limit" in line for line in lines)), (1, 4))
        self.assertIn("| 41 up to 10, 410 from 11 up to 999, 1/4 from 1,000 |", ratios.as_markdown(self.TIMES, [sort])[2])

    def test_refuses_limits_that_leave_a_size_out_or_hold_for_one_twice(self):
        for words in (["to 10"], ["from 10"], ["to 10", "from 12"], ["to 10", "from 10"], ["", ""], ["mean", "to 10"],
                      ["about 100"], ["from"], ["to 10 to 20", "from 21"]):
            with self.subTest(words=words), self.assertRaisesRegex(ValueError, "^Sort: "):
                ratios.rows_of([f"Sort Sort_Bare 1 {more}" for more in words])

    def test_every_benchmark_is_in_a_row(self):
        root = Path(ratios.__file__).parent
        rows = ratios.rows_of(ratios.LIMITS.read_text(encoding="utf-8").splitlines())
        registered = re.compile(r'BENCHMARK\((\w+)\)|RegisterBenchmark\(\(?"(\w+)')
        names = {first or second for source in root.glob("*.cpp")
                 for first, second in registered.findall(source.read_text(encoding="utf-8"))}
        self.assertGreater(len(names), 50)
        self.assertEqual(ratios.unmeasured(names, rows), [])
        self.assertEqual(ratios.unmeasured(["Sort", "Alone", "Alone", "Sort_Bare"], ratios.rows_of(self.LINES)), ["Alone"])

    def test_fits_exponents(self):
        sizes = (3, 10, 700, 50_000)
        for power in (0, 0.5, 1, 2, -1):
            self.assertAlmostEqual(ratios.exponent([(size, 7 * size ** power) for size in sizes]), power)
        # Least squares: off by the same factor up and down at both ends, which leaves the slope between them.
        self.assertAlmostEqual(ratios.exponent([(1, 2), (10, 10), (100, 100), (1000, 2000)]), 1)

    def test_groups_what_differs_in_size_alone(self):
        sort, parse, start = ratios.rows_of(self.LINES)
        groups = ratios.groups(self.TIMES, sort)
        self.assertEqual([(group.name, group.sizes) for group in groups],
                         [(f"Sort/deep:{deep}", (10, 100, 1000, 10000)) for deep in (0, 1)])
        for group in groups:
            self.assertAlmostEqual(group.growth[0], 2)
            self.assertAlmostEqual(group.growth[1], 1)
            self.assertEqual([pair.ratio for pair in group.pairs], [4, 40, 400, 4000])
        self.assertEqual(ratios.groups(self.TIMES, parse), [("Parse", (), [("Parse", 2, 0)], ())])
        self.assertEqual(ratios.groups(self.TIMES, start), [("Start", (), [("Start", 2.5, 0)], ())])
        self.assertEqual(ratios.groups(self.TIMES, sort._replace(peer="Gone")), [])

    def test_tells_what_is_above_its_limit_and_what_is_not_there(self):
        rows = ratios.rows_of(self.LINES)
        self.assertEqual(ratios.above(self.TIMES, rows[1:]), [rows[2]])
        for limit, status in (("4001", 0), ("39", 1)):
            lines, code = ratios.as_text(self.TIMES, ratios.rows_of([f"Sort Sort_Bare {limit}"]))
            self.assertEqual((code, sum("above its limit" in line for line in lines)), (status, 6 * status))
            self.assertEqual(sum("2.00/1.00" in line for line in lines), 2)
        self.assertEqual(ratios.as_text(self.TIMES, [rows[0]._replace(own="Gone")])[1], 2)

    def test_records_the_table_and_nothing_else(self):
        page = "before\n<!-- table -->\nold\n<!-- end of table -->\nafter\n"
        rows = ratios.rows_of(self.LINES[:3])
        table = ratios.as_markdown(self.TIMES, rows)
        self.assertEqual(table[2], "| `Sort/deep:0` | `Sort_Bare` | 10, 100, 1,000, 10,000 | 4.000, 40.000, 400.000, "
                         "4000.000 | 1/4 | 2.00 | 1.00 |")
        changed = ratios.record(page, table)
        self.assertNotIn("old", changed)
        self.assertEqual(ratios.record(changed, ["old"]), page.replace("old", "\nold\n"))
        with self.assertRaises(ValueError):
            ratios.record("before", table)


class Coverage(unittest.TestCase):
    # 1 int Sign(int value)        called once, with 5
    # 2 {
    # 3     if (value < 0)
    # 4         return -1;
    # 5     return 1;
    # 6 }
    SEGMENTS = [
        [2, 1, 1, True, True, False], [3, 9, 1, True, True, False], [3, 18, 0, True, False, True],
        [4, 9, 0, True, True, False], [4, 18, 1, True, False, True], [5, 5, 1, True, True, False], [6, 2, 0, False, False, False],
    ]
    BRANCHES = [[3, 9, 3, 18, 0, 1, 0, 0, 4]]

    def test_lines_and_branches_that_did_not_run(self):
        source = coverage.Source(self.SEGMENTS, self.BRANCHES)
        self.assertEqual(source.lines, {2: 1, 3: 1, 4: 0, 5: 1, 6: 1})
        self.assertEqual(source.missing_lines(), [4])
        self.assertEqual(source.missing_branches(), [(3, 9, True)])

    def test_instances_of_a_template_are_one_branch(self):
        instances = [[3, 9, 3, 18, 0, 1, 0, 0, 4], [3, 9, 3, 18, 2, 0, 0, 0, 4]]
        self.assertEqual(coverage.Source(self.SEGMENTS, instances).missing_branches(), [])

    def test_a_constant_condition_is_no_branch(self):
        constant = [[3, 9, 3, 18, 0, 0, 0, 0, 4]]
        self.assertEqual(coverage.Source(self.SEGMENTS, constant).branches, {})
        unreached = [[4, 9, 4, 18, 0, 0, 0, 0, 4]]
        self.assertEqual(len(coverage.Source(self.SEGMENTS, unreached).missing_branches()), 2)

    def test_names_functions_as_the_sources_do(self):
        cases = [
            ("UNITConvertUnitToBase", "UNITConvertUnitToBase"),
            ("ListMan.cpp:(anonymous namespace)::Append(HMEM__*, void const*, unsigned int)", "Append"),
            ("WUnit::WUnit(int, double)::$_0::operator()(int) const", "WUnit::WUnit"),
            ("std::vector<int> Walk<A<B> >(std::vector<A<B> > const&)", "Walk"),
            ("Lists::operator<(Lists const&) const", "Lists::operator<"),
            ("Services::isDisabled::'lambda'()::operator()() const", "Services::isDisabled"),
            ("TvlUtl::MakeGuidMap[abi:cxx11](int)", "TvlUtl::MakeGuidMap"),
            ("Functor::operator()(int)", "Functor::operator()"),
        ]
        for demangled, wanted in cases:
            with self.subTest(demangled):
                self.assertEqual(coverage.function_name(demangled), wanted)

    def test_the_page_has_a_row_for_each_function_that_does_not_run_whole(self):
        page = "| `units/A.cpp` | `Sign` | 1 |\n"
        for missing, offences in [
            ({("units/A.cpp", "Sign"): 1}, 0),
            ({("units/A.cpp", "Sign"): 2}, 1),
            ({("units/A.cpp", "Sign"): 1, ("units/A.cpp", "Other"): 1}, 1),
            ({}, 1),
        ]:
            with self.subTest(missing=missing):
                self.assertEqual(len(list(coverage.wrong_rows(page, missing))), offences)

    def test_a_row_may_leave_open_what_threads_decide(self):
        page = "| `progress/A.cpp` | `Claim` | 0 to 2 |\n"
        for lines, offences in [(0, 0), (2, 0), (3, 1)]:
            with self.subTest(lines=lines):
                missing = {("progress/A.cpp", "Claim"): lines} if lines else {}
                self.assertEqual(len(list(coverage.wrong_rows(page, missing))), offences)

    def test_a_library_below_its_limits_fails(self):
        sources = {"Engines/TvlUtl/units/A.cpp": coverage.Source(self.SEGMENTS, self.BRANCHES)}
        with contextlib.redirect_stdout(io.StringIO()):
            self.assertEqual(len(list(coverage.report(sources, {}, ""))), 2)


if __name__ == "__main__":
    unittest.main()
