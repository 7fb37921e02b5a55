"""What programs that are compiled against a release count on: abi.py [--record] VERSION RECORD COMPILER LIBRARY FOLDER...

Collects what LIBRARY exports, and of every class and enumeration that the headers below the FOLDERs declare the size, the
fields with their offsets, the slots of the virtual operations and the constants, as COMPILER lays them out. --record writes
that to the file RECORD with VERSION; without it the two are compared. What is recorded must be there unchanged; what is new
may be added. A change is allowed when VERSION promises none: another major number, or before 1.0 another minor one.
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

import exports

DIE = re.compile(r" <([0-9a-f]+)><([0-9a-f]+)>: Abbrev Number: \d+ \((\w+)\)")
ATTRIBUTE = re.compile(r"    <[0-9a-f]+>   (DW_AT_\w+)\s*: (.*)")
NAMELESS = "{anonymous}"


class Die:
    """One entry of the debugging information."""

    def __init__(self, tag, parent):
        self.tag, self.parent, self.children, self.attributes = tag, parent, [], {}

    def text(self, name):
        value = self.attributes.get(name)
        return value.rpartition("): ")[2].strip() if value and value.startswith("(") else value

    def number(self, name):
        """A constant, or the operand of a location expression; None when there is none."""
        value = self.attributes.get(name)
        if value is None:
            return None
        operand = re.search(r"\(DW_OP_\w+: (\d+)\)", value)
        return int(operand.group(1) if operand else value.split()[0], 0)

    def qualified(self):
        name = self.text("DW_AT_name") or NAMELESS
        scoped = self.parent and self.parent.tag in ("DW_TAG_namespace", "DW_TAG_class_type", "DW_TAG_structure_type")
        return f"{self.parent.qualified()}::{name}" if scoped else name


def objdump(library):
    return "x86_64-w64-mingw32-objdump" if Path(library).suffix in (".dll", ".obj") else "objdump"


def debug_entries(path):
    """{offset: entry} of an object file."""
    entries, levels = {}, []
    current = None
    for line in exports.run(objdump(path), "--dwarf=info", str(path)).splitlines():
        die = DIE.match(line)
        if die:
            level = int(die.group(1), 16)
            parent = levels[level - 1] if 0 < level <= len(levels) else None
            current = entries[int(die.group(2), 16)] = Die(die.group(3), parent)
            levels[level:] = [current]
            if parent:
                parent.children.append(current)
            continue
        attribute = ATTRIBUTE.match(line)
        if attribute and current:
            current.attributes[attribute.group(1)] = attribute.group(2).strip()
    return entries


def source_files(path, folders):
    """Numbers of the source files that lie below the folders."""
    text = exports.run(objdump(path), "--dwarf=rawline", str(path))
    folders = [str(Path(folder).resolve()) for folder in folders]
    directories = {match.group(1): match.group(2) for match in re.finditer(r"^  (\d+)\t(/.*)$", text, re.MULTILINE)}
    files = re.finditer(r"^  (\d+)\t(\d+)\t\d+\t\d+\t(.*)$", text, re.MULTILINE)
    ours = lambda folder: any(folder == own or folder.startswith(own + "/") for own in folders)
    return {int(file.group(1)) for file in files if ours(str(Path(directories.get(file.group(2), "/")).resolve()))}


def type_name(entries, entry):
    """How a field's type reads."""
    reference = re.match(r"<0x([0-9a-f]+)>", entry.attributes.get("DW_AT_type", ""))
    target = entries.get(int(reference.group(1), 16)) if reference else None
    if target is None:
        return "void"
    inner = lambda: type_name(entries, target)
    forms = {
        "DW_TAG_pointer_type": lambda: inner() + "*",
        "DW_TAG_reference_type": lambda: inner() + "&",
        "DW_TAG_const_type": lambda: "const " + inner(),
        "DW_TAG_volatile_type": lambda: "volatile " + inner(),
        "DW_TAG_array_type": lambda: inner() + "".join(
            f"[{child.number('DW_AT_upper_bound') + 1}]" if "DW_AT_upper_bound" in child.attributes else "[]"
            for child in target.children),
        "DW_TAG_subroutine_type": lambda: "function",
    }
    return forms[target.tag]() if target.tag in forms else target.qualified()


def class_lines(entries, entry):
    yield f"size {entry.number('DW_AT_byte_size')}"
    for child in entry.children:
        offset = child.number("DW_AT_data_member_location")
        if child.tag == "DW_TAG_inheritance" and offset is not None:
            yield f"base {offset} {type_name(entries, child)}"
        elif child.tag == "DW_TAG_member" and offset is not None:
            yield f"field {offset} {child.text('DW_AT_name')} {type_name(entries, child)}"
        elif child.number("DW_AT_vtable_elem_location") is not None:
            yield f"slot {child.number('DW_AT_vtable_elem_location')} {child.text('DW_AT_linkage_name')}"


def enumeration_lines(entry):
    yield f"size {entry.number('DW_AT_byte_size')}"
    for child in entry.children:
        yield f"constant {child.text('DW_AT_name')} {child.number('DW_AT_const_value')}"


def layouts(compiler, folders):
    """{name: lines} of the classes and enumerations that the headers declare."""
    windows = "mingw" in compiler
    with tempfile.TemporaryDirectory() as scratch:
        source, made = Path(scratch) / "all.cpp", Path(scratch) / ("all.obj" if windows else "all.o")
        headers = sorted(path.relative_to(folder).as_posix() for folder in folders for path in Path(folder).rglob("*.h"))
        source.write_text("".join(f'#include "{header}"\n' for header in headers), encoding="utf-8")
        subprocess.run([compiler, "-std=c++20", "-c", "-gdwarf-4", "-fno-eliminate-unused-debug-types",
                        "-femit-class-debug-always", *(f"-I{Path(folder).resolve()}" for folder in folders), str(source),
                        "-o", str(made)], check=True)
        entries, ours = debug_entries(made), source_files(made, folders)
    found = {}
    for entry in entries.values():
        if entry.number("DW_AT_decl_file") not in ours or "DW_AT_byte_size" not in entry.attributes:
            continue
        name = entry.qualified()
        if NAMELESS in name:
            continue
        if entry.tag in ("DW_TAG_class_type", "DW_TAG_structure_type"):
            found["class " + name] = list(class_lines(entries, entry))
        elif entry.tag == "DW_TAG_enumeration_type":
            found["enum " + name] = list(enumeration_lines(entry))
    mangled = sorted({line.split()[2] for lines in found.values() for line in lines if line.startswith("slot ")})
    readable = dict(zip(mangled, exports.run("c++filt", text="\n".join(mangled)).splitlines()))
    return {name: [re.sub(r"^(slot \d+ )(\S+)$", lambda slot: slot.group(1) + readable[slot.group(2)], line)
                   for line in lines] for name, lines in found.items()}


def collected(compiler, library, folders):
    # Weak copies of inline code come and go with what the compiler inlines; programs have their own.
    weak = exports.symbols_of(library)
    found = {f"export {symbol}": [] for symbol in exports.offered(library) if not weak[symbol]}
    found.update(layouts(compiler, folders))
    return found


def written(version, found):
    blocks = ["\n".join([name, *("    " + line for line in lines)]) for name, lines in sorted(found.items())]
    return f"version {version}\n" + "\n".join(blocks) + "\n"


def read(text):
    """(version, {name: lines}) of a record."""
    version, _, body = text.partition("\n")
    found, lines = {}, []
    for line in body.splitlines():
        if line.startswith("    "):
            lines.append(line.strip())
        elif line:
            lines = found[line] = []
    return version.removeprefix("version "), found


def interfaces(version):
    """The part of a version that promises the interfaces."""
    numbers = version.split(".")
    return numbers[:2] if numbers[0] == "0" else numbers[:1]


def changes(recorded, found):
    """What is recorded and is another today. Constants may be added to an enumeration, all else is as it was."""
    for name, lines in recorded.items():
        if name not in found:
            yield f"{name} is gone"
            continue
        for line in lines:
            if line not in found[name]:
                yield f"{name}: no longer {line}"
        if not name.startswith("enum "):
            for line in found[name]:
                if line not in lines:
                    yield f"{name}: now {line}"


def main():
    arguments = sys.argv[1:]
    recording = arguments[:1] == ["--record"]
    if len(arguments) < 5 + recording:
        sys.exit(__doc__)
    version, record, compiler, library, *folders = arguments[recording:]
    found = collected(compiler, library, folders)
    if recording:
        Path(record).write_text(written(version, found), encoding="utf-8")
        print(f"{record}: {len(found)} exports, classes and enumerations of version {version}")
        return 0
    old_version, recorded = read(Path(record).read_text(encoding="utf-8"))
    changed = list(changes(recorded, found))
    allowed = interfaces(version) != interfaces(old_version)
    print(*changed, sep="\n", end="\n" if changed else "")
    print(f"{record}: {len(recorded)} recorded with version {old_version}, {len(changed)} changes"
          f"{', which a new version may bring' if changed and allowed else ''}, {len(found.keys() - recorded.keys())} new")
    return 1 if not recorded or changed and not allowed else 0


if __name__ == "__main__":
    sys.exit(main())
