"""Holds a file of Visual Studio's views against the headers: natvis.py VIEWS FOLDER

The file must be XML, each class that it shows must be declared below FOLDER, and each name in its expressions must be a
field of that class, or of another one that the file shows where a cast or a member leads there.
"""
import re
import sys
import xml.etree.ElementTree as tree
from pathlib import Path

NAMESPACE = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
WORDS = {"unsigned", "char", "int", "void", "this", "nullptr", "sizeof"}
EXPRESSIONS = ("Size", "ValuePointer", "Item", "ExpandedItem", "StringView")


def bodies(folder):
    """{class: what stands between its braces, without comments and without the bodies of functions}"""
    found = {}
    for path in sorted(Path(folder).rglob("*.h")):
        text = re.sub(r"//.*", "", path.read_text(encoding="utf-8"))
        for head in re.finditer(r"\b(?:class|struct) (?:[A-Z_]+ )?(\w+)(?: final)?(?: : [^{;]*)?\s*\{", text):
            depth, at = 1, head.end()
            outer = []
            while depth and at < len(text):
                depth += {"{": 1, "}": -1}.get(text[at], 0)
                if depth == 1:
                    outer.append(text[at])
                at += 1
            found.setdefault(head.group(1), "".join(outer))
    return found


def fields(body):
    """Names that are declared as fields: what stands last before the end, a value or an array's size."""
    return set(re.findall(r"\b(\w+)\s*(?:=[^;}]*\}?|\}|\[[^;}]*)?;", body))


def expressions(view):
    """The expressions of one view."""
    for element in view.iter():
        kind, text = element.tag.removeprefix(NAMESPACE), element.text or ""
        if "Condition" in element.attrib:
            yield element.attrib["Condition"]
        if kind == "DisplayString":
            yield from re.findall(r"\{([^}]*)\}", text)
        elif kind in EXPRESSIONS:
            yield text


def offences(views, folder):
    """One text for each class or field that is not there."""
    declared = bodies(folder)
    shown = [view for view in tree.parse(views).getroot().iter(NAMESPACE + "Type")]
    names = {view: re.sub(r"<.*", "", view.attrib["Name"]).rpartition("::")[2] for view in shown}
    known = set(names.values())
    for view in shown:
        name = names[view]
        if name not in declared:
            yield f"{views}: there is no class {name}"
            continue
        own, others = fields(declared[name]), set().union(*(fields(declared[other]) for other in known & set(declared)))
        for expression in expressions(view):
            for arrow, word in re.findall(r"(->|\.)?\b([A-Za-z_]\w*)", expression):
                if word not in (others if arrow else own | known | WORDS):
                    yield f"{views}: {name} has no {word} ({expression})"
    if not shown:
        yield f"{views} shows no class"


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    found = list(offences(*sys.argv[1:]))
    print(*found, sep="\n", end="\n" if found else "")
    print(f"{sys.argv[1]}: {len(found)} names that are not there")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
