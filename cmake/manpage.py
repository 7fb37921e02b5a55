"""Writes the man page of a program from what it says of itself: manpage.py PROGRAM PAGE

PROGRAM --help lists its commands; each is asked for its own --help, and so are commands of commands.
"""
import os
import re
import subprocess
import sys
from pathlib import Path

NAME = "tvl"
ENVIRONMENT = [
    ("TVL_SUITE_DIR", "The folder of texts, master files and stock workspaces, in place of the installed one."),
    ("TVL_USER_DIR", "A folder that stands for the user's own folders: nothing else of the user's is read or written."),
    ("TVL_REGISTRY", "The file of the registry, on linux."),
]
EXIT_STATUS = [("0", "Everything asked for was done."), ("2", "An input was refused; which, and where, stands in the error output."),
               ("other", "The arguments were wrong.")]


def said(program, *arguments):
    environment = {**os.environ, "LC_ALL": "C.UTF-8"}
    return subprocess.run([program, *arguments], capture_output=True, text=True, check=True, env=environment).stdout


def commands_in(text):
    """Names of the commands that a help text lists."""
    listed = re.search(r"^Subcommands:\n((?:[ \t]+.*\n?)+)", text, re.MULTILINE)
    # A description may go on in a further line, which is indented more than a name.
    return re.findall(r"^  (\w[\w-]*)", listed.group(1), re.MULTILINE) if listed else []


def helps(program, path=()):
    """(path of a command, its help text) of every command, the program itself first."""
    text = said(program, *path, "--help")
    yield path, text
    for name in commands_in(text):
        yield from helps(program, (*path, name))


def escaped(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq")
    return re.sub(r"^\.", "\\&.", text, flags=re.MULTILINE)


def described(rows):
    return "".join(f".TP\n.B {escaped(name)}\n{escaped(text)}\n" for name, text in rows)


def page(program):
    version = said(program, "--version").split()[-1]
    (_, own), *others = list(helps(program))
    summary = own.split("\n")[0].rstrip(".")
    body = [f'.TH {NAME.upper()} 1 "" "{NAME} {version}" "User Commands"',
            f".SH NAME\n{NAME} \\- {escaped(summary[0].lower() + summary[1:])}",
            f".SH SYNOPSIS\n.B {NAME}\n.I command\n.RI [ arguments ]",
            f".SH DESCRIPTION\n.nf\n{escaped(own.strip())}\n.fi", ".SH COMMANDS"]
    for path, text in others:
        body.append(f".SS {escaped(' '.join((NAME, *path)))}\n.nf\n{escaped(text.strip())}\n.fi")
    body.append(".SH ENVIRONMENT\n" + described(ENVIRONMENT).rstrip())
    body.append(".SH EXIT STATUS\n" + described(EXIT_STATUS).rstrip())
    return "\n".join(body) + "\n"


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Path(sys.argv[2]).write_text(page(str(Path(sys.argv[1]).resolve())), encoding="utf-8")


if __name__ == "__main__":
    main()
