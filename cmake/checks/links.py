"""Checks that the links of HTML pages lead somewhere: links.py FOLDER

Links out of the folder are not followed.
"""
import re
import sys
from html import unescape
from pathlib import Path
from urllib.parse import unquote

LINK = re.compile(r'<a [^>]*?href="([^"]*)"')
ANCHOR = re.compile(r'\b(?:id|name)="([^"]+)"')
OUTSIDE = re.compile(r"[a-z]+:")


def dead_links(folder):
    """Messages, one for each link without a target."""
    texts = {page.name: page.read_text() for page in sorted(Path(folder).glob("*.html"))}
    anchors = {name: set(ANCHOR.findall(text)) for name, text in texts.items()}
    for name, text in texts.items():
        for link in sorted({unescape(link) for link in LINK.findall(text)}):
            if OUTSIDE.match(link):
                continue
            target, _, anchor = unquote(link).partition("#")
            target = target or name
            if not (Path(folder) / target).exists() or (anchor and anchor not in anchors.get(target, ())):
                yield f"{name}: no target for {link}"


def main(folder):
    failures = list(dead_links(folder))
    print("\n".join(failures) or "every link has its target")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
