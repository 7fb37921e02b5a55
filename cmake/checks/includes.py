"""Lists includes and platform tests that stand where they must not: includes.py [TREE]

Who may include whom:
  Engines/TvlUtl/include    public headers, platform/
  Engines/TvlUtl/platform   platform/
  Engines/TvlUtl/<folder>   public headers, platform/, itself, and the folders that its CMakeLists.txt lists as USES
  Siblings                  Siblings, platform/; never the library
  Apps, examples            public headers, platform/, their own folder; Apps/Gallery the system's windows too
  tests, benchmarks, fuzz   everything, to look inside where a test must
A folder USES, and a public header or a folder asks of other public headers, only what LAYERS allows. A public header
belongs to the folder that has its source file. Other libraries and the system are for Siblings; what Apps may use
stands in APP_LIBRARIES.
"""
import re
import sys
from pathlib import Path

# What each folder of the library may build on.
LAYERS = {
    "frame": set(),
    "lists": {"frame"},
    "units": {"frame"},
    "paper": {"frame", "units"},
    "environment": {"frame"},
    "language": {"frame", "environment"},
    "workspace": {"frame", "environment", "language"},
    "tracking": {"frame", "environment"},
    "progress": {"frame"},
    "exif": {"frame"},
    "duplication": {"frame"},
}
LIBRARY = "Engines/TvlUtl"
APP_LIBRARIES = re.compile(r"CLI/|nlohmann/")
# A program of one target alone, whose subject is that target's controls.
WINDOWS_PROGRAM = "Apps/Gallery/"
WINDOWS_HEADERS = {"windows.h", "commctrl.h"}
# A header of the language's standard library has no folder and no ".h"; these come with the compiler beside them.
STANDARD = re.compile(r"[a-z_0-9]+$")
C_HEADERS = re.compile(r"(assert|ctype|errno|float|limits|math|stdarg|stddef|stdint|stdio|stdlib|string|time|wchar)\.h$")
PLATFORM_TEST = re.compile(r"^\s*#\s*(?:el)?if(?:n?def)?\b.*\b(_WIN32|_WIN64|WIN32|__linux__|__unix__|__MINGW32__|_MSC_VER)\b")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
# Files that may ask for the platform, and files that may include a header of the system for it.
PLATFORM_TESTS_ALLOWED = re.compile(
    rf"(Siblings/Windows/.*|{LIBRARY}/platform/windows/Types\.h|{LIBRARY}/include/TvlUtlApi\.h|(tests|benchmarks|fuzz)/.*)$")
SYSTEM_ALLOWED = {f"{LIBRARY}/platform/windows/Types.h": {"guiddef.h"}}


class Tree:
    def __init__(self, root):
        self.root = Path(root)
        self.files = sorted(
            path.relative_to(self.root).as_posix()
            for top in ("Engines", "Siblings", "Apps", "examples", "tests", "benchmarks", "fuzz")
            for path in (self.root / top).rglob("*") if path.suffix in (".h", ".cpp", ".in"))
        self.folders = [name for name in LAYERS if (self.root / LIBRARY / name).is_dir()]
        self.uses, self.standing = {}, {}
        for name in self.folders:
            self.read_declaration(name)
        self.owners = {Path(path).stem: self.zone(path) for path in self.files
                       if path.endswith(".cpp") and self.zone(path) in LAYERS}

    def read_declaration(self, name):
        """What tvl_library_folder(name USES ... SOURCES ...) says of a folder."""
        text = (self.root / LIBRARY / name / "CMakeLists.txt").read_text(encoding="utf-8")
        words = re.search(r"tvl_library_folder\(([^)]*)\)", text).group(1).split()
        lists = {"USES": [], "SOURCES": []}
        current = None
        for word in words[1:]:
            if word in lists:
                current = lists[word]
            elif current is not None:
                current.append(word)
        self.uses[name] = set(lists["USES"])
        self.standing.update({source: name for source in lists["SOURCES"]})

    def zone(self, path):
        """The library folder, "include", "platform" or the top folder that a file belongs to."""
        if not path.startswith(LIBRARY + "/"):
            return path.split("/")[0]
        rest = path[len(LIBRARY) + 1:]
        return rest.split("/")[0] if "/" in rest else self.standing.get(rest, "include")

    def resolve(self, path, name):
        """The file of this tree that an include in `path` finds, or None when it is none of ours."""
        places = [Path(path).parent.as_posix(), f"{LIBRARY}/include", f"{LIBRARY}/platform", "Siblings", "tests/support"]
        places += [f"{LIBRARY}/{folder}" for folder in self.folders]
        if path.startswith("Apps/"):
            places.append("/".join(path.split("/")[:2]))   # the program's folder
        for place in places:
            for candidate in (f"{place}/{name}", f"{place}/{name}.in"):
                if (self.root / candidate).is_file():
                    return (self.root / candidate).resolve().relative_to(self.root.resolve()).as_posix()
        return None

    def layer(self, path):
        """The library folder whose rules a file follows: its own, or that of a public header's source file."""
        zone = self.zone(path)
        return self.owners.get(Path(path).name.split(".")[0]) if zone == "include" else zone if zone in LAYERS else None


def own_offence(tree, path, target):
    """Why `path` must not include `target`, a file of this tree; None when it may."""
    source, wanted = tree.zone(path), tree.zone(target)
    if source in ("tests", "benchmarks", "fuzz") or source == wanted and source != "include" or wanted == "platform":
        return None
    if source == "Siblings":
        return "the siblings' side never sees the library"
    if source in ("Apps", "examples"):
        return None if wanted == "include" else "programs see public headers alone"
    if source == "platform":
        return "the interfaces of siblings and ports stand on their own"
    if wanted in LAYERS and wanted not in tree.uses.get(source, ()):
        return f"{source} does not declare that it uses {wanted}"
    if wanted not in LAYERS and wanted != "include":
        return f"{source} does not see {wanted}"
    above, below = tree.layer(path), tree.layer(target)
    if above and below and above != below and below not in LAYERS[above]:
        return f"{above} does not build on {below}"
    return None


def foreign_offence(tree, path, name):
    """Why `path` must not include a header from outside; None when it may."""
    zone = tree.zone(path)
    if zone in ("Siblings", "tests", "benchmarks", "fuzz") or STANDARD.match(name) or C_HEADERS.match(name):
        return None
    if path.startswith(WINDOWS_PROGRAM) and name in WINDOWS_HEADERS:
        return None
    if zone in ("Apps", "examples") and APP_LIBRARIES.match(name) or name in SYSTEM_ALLOWED.get(path, ()):
        return None
    return "other libraries and the system are for Siblings"


def offences(root):
    tree = Tree(root)
    for name in tree.folders:
        for used in sorted(tree.uses[name] - LAYERS[name]):
            yield f"{LIBRARY}/{name}/CMakeLists.txt: {name} uses {used}: it does not stand below"
    for path in tree.files:
        for number, line in enumerate((tree.root / path).read_text(encoding="utf-8").splitlines(), 1):
            where = f"{path}:{number}: {line.strip()}"
            if PLATFORM_TEST.match(line) and not PLATFORM_TESTS_ALLOWED.match(path):
                yield f"{where}: platforms are told apart in Siblings/Windows"
            include = INCLUDE.match(line)
            if include:
                quoted = include.group(1) == '"'
                target = tree.resolve(path, include.group(2)) if quoted else None
                why = own_offence(tree, path, target) if target else foreign_offence(tree, path, include.group(2))
                if why:
                    yield f"{where}: {why}"


def main():
    found = list(offences(sys.argv[1] if len(sys.argv) > 1 else "."))
    print(*found, sep="\n", end="\n" if found else "")
    print(f"{len(found)} forbidden includes and platform tests")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
