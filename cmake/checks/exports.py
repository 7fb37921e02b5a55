"""Compares what binaries export with a list: exports.py LIST LIBRARY...

A line of LIST is
  NAME            an extern "C" function
  function NAME   a C++ function with all its overloads; qualified, without arguments
  class NAME      a C++ class (or a template with all its instances) with members, virtual table and type information
LIBRARY is an ELF shared library or a Windows DLL. Each must export every line and nothing else. An ELF library also
carries weak copies of inline code of others; they are no offer of this library and are passed over: what belongs to the
standard library (std, __gnu_cxx), and what the library libTvlSiblings.so that lies beside it defines as well. So is type
information that is not listed: compilers let it out of their own accord, and a class that is offered shows by its members.
"""
import re
import subprocess
import sys
from pathlib import Path

# What a demangled name says before the entity that it belongs to.
ABOUT = re.compile(r"^(vtable|VTT|typeinfo|typeinfo name|guard variable|TLS init function|TLS wrapper function) for "
                   r"|^(non-virtual thunk|virtual thunk|covariant return thunk) to |^construction vtable for .*-in-")
STANDARD = re.compile(r"(std|__gnu_cxx)\b")
# The address sanitizer's own marks.
SANITIZER = re.compile(r"__odr_asan")
TYPE_INFORMATION = ("_ZTI", "_ZTS")


def run(*command, text=None):
    return subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout


def elf_symbols(library):
    """{symbol: whether it is weak} of an ELF library's exports. The names of versions (A) are none."""
    lines = (line.split() for line in run("nm", "-D", "--defined-only", str(library)).splitlines())
    return {words[-1].split("@")[0]: words[-2] in "WVuwv" for words in lines if words[-2] != "A"}


def dll_symbols(library):
    """{symbol: False} of a DLL's exports."""
    headers = run("x86_64-w64-mingw32-objdump", "-p", str(library))
    table = headers.partition("[Ordinal/Name Pointer] Table")[2].partition("\n\n")[0]
    return {line.split()[-1]: False for line in table.splitlines() if "[" in line}


def qualified(demangled):
    """The qualified name in a demangled one, without return type, arguments and template arguments."""
    name, depth = "", 0
    text = ABOUT.sub("", demangled).replace("(anonymous namespace)", "{anonymous}")
    for at, character in enumerate(text):
        if depth == 0 and re.match(r"operator\W", text[at:]) and not re.search(r"\w$", name):
            return name + "operator"
        if character == "(" and depth == 0:
            break
        if character in "<([":
            depth += 1
        elif character in ">)]":
            depth -= 1
        elif depth == 0:
            # A space ends a return type.
            name = "" if character == " " else name + character
    return name


def listed(path):
    """The lines of the list as (kind, name)."""
    families = []
    for line in Path(path).read_text(encoding="utf-8").splitlines():
        words = line.split("#")[0].split()
        if words:
            families.append((words[0], words[1]) if len(words) > 1 else ("name", words[0]))
    return families


def fits(family, symbol, name):
    kind, wanted = family
    if kind == "name":
        return symbol == wanted
    return symbol.startswith("_Z") and (name == wanted or kind == "class" and name.startswith(wanted + "::"))


def suggestions(exports):
    """The lines that would list these exports."""
    scopes = {symbol: name.rpartition("::") for symbol, name in exports.items()}
    # A class shows itself by what only a class has.
    classes = {scope for scope, _, last in scopes.values() if scope.rpartition("::")[2] == last.lstrip("~")}
    classes |= {name for symbol, name in exports.items() if symbol.startswith("_ZTV")}
    for symbol, name in exports.items():
        scope = scopes[symbol][0]
        if not symbol.startswith("_Z"):
            yield symbol
        elif name in classes or scope in classes:
            yield f"class {name if name in classes else scope}"
        else:
            yield f"function {name}"


def symbols_of(library):
    """{symbol: whether it is weak} of a library's exports."""
    return dll_symbols(library) if Path(library).suffix == ".dll" else elf_symbols(library)


def offered(library):
    """{symbol: qualified name} of what a library offers itself."""
    library = Path(library)
    symbols = symbols_of(library)
    siblings = library.with_name("libTvlSiblings.so")
    others = elf_symbols(siblings) if library.suffix == ".so" and siblings.exists() else {}
    names = dict(zip(symbols, map(qualified, run("c++filt", text="\n".join(symbols)).splitlines())))
    return {symbol: names[symbol] for symbol, weak in symbols.items()
            if not SANITIZER.match(symbol) and not (weak and (STANDARD.match(names[symbol]) or symbol in others))}


def offences(families, library):
    exports = offered(library)
    for family in families:
        if not any(fits(family, symbol, name) for symbol, name in exports.items()):
            yield f"{library} does not export {' '.join(family).removeprefix('name ')}"
    unlisted = {symbol: name for symbol, name in exports.items()
                if not symbol.startswith(TYPE_INFORMATION) and not any(fits(family, symbol, name) for family in families)}
    for line in sorted(set(suggestions(unlisted))):
        yield f"{library} exports what is not listed: {line}"


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    families = listed(sys.argv[1])
    found = [offence for library in sys.argv[2:] for offence in offences(families, library)]
    print(*found, sep="\n", end="\n" if found else "")
    print(f"{len(families)} lines of {sys.argv[1]} compared with {len(sys.argv) - 2} libraries: {len(found)} differences")
    return 1 if found or not families else 0


if __name__ == "__main__":
    sys.exit(main())
