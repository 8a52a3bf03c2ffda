#!/usr/bin/env python3
"""Lists the published members of the manager and its companions, as docs/manager-interface.md.

usage: scripts/interface_doc.py [--check] [--compiler g++]

Without --check the page is written anew; with it the page is compared with what the headers say now, and the exit
code is 1 when they differ. The headers are preprocessed first, since most members are made from the type table.
"""

import argparse
import difflib
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "manager-interface.md"
CLASSES = [
    ("CObjectManager", "store/ObjectManager.h", "One open design."),
    ("CObDefManager", "store/ObDefManager.h", "The default attribute table of the process."),
    ("CPipeObject", "objects/PipeObject.h", "What every record of a design is."),
]
INTRO = """# The published interface

Every member that applications call, by class and in the order of the headers, which say what each does. This page is
made by `scripts/interface_doc.py`; a test compares it with the headers.
"""


def preprocessed(compiler, header):
    command = [compiler, "-std=c++20", "-E", "-P", "-C", "-I", str(ROOT / "src"), "-x", "c++", str(ROOT / "src" / header)]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def closing(text, start):
    """The index behind the brace that closes the one at `start`; comments are skipped."""
    depth = 0
    at = start
    while True:
        if text.startswith("//", at):
            at = text.index("\n", at)
        elif text.startswith("/*", at):
            at = text.index("*/", at) + 1
        elif text[at] == "{":
            depth += 1
        elif text[at] == "}":
            depth -= 1
            if depth == 0:
                return at + 1
        at += 1


def class_body(text, name):
    start = re.search(r"class\s+(?:__attribute__\s*\(\(.*?\)\)\s*)?" + name + r"\s*:[^;{]*\{", text)
    return text[start.end() : closing(text, start.end() - 1) - 1]


def pieces(body):
    """Yields headings, access words and declarations of a class body, in their order."""
    at = 0
    declaration = ""
    while at < len(body):
        if body.startswith("//", at):
            end = body.find("\n", at)
            end = len(body) if end < 0 else end
            heading = re.fullmatch(r"// ---- (.*?)(?: ----.*)?", body[at:end].strip())
            if heading and body[at:end].count("----") > 1:
                yield "heading", heading[1]
            at = end
        elif body.startswith("/*", at):
            at = body.index("*/", at) + 2
        elif body[at] == "{":
            at = closing(body, at)
            yield "declaration", declaration
            declaration = ""
        elif body[at] == ";":
            at += 1
            yield "declaration", declaration
            declaration = ""
        elif (access := re.compile(r"(public|protected|private)\s*:(?!:)").match(body, at)) and not declaration.strip():
            yield "access", access[1]
            at = access.end()
            declaration = ""
        else:
            declaration += body[at]
            at += 1


def signature(declaration, name):
    """The declaration as one line, or None when it is no member function to publish."""
    text = " ".join(declaration.split())
    text = re.sub(r"\)\s*:\s*m_\w+.*$", ")", text)  # initialisers of a constructor
    text = re.sub(r"\s*=\s*(default|0)$", "", text)
    if "(" not in text or "= delete" in text or "friend " in text or text.startswith("template"):
        return None
    if re.search(r"\b(operator|IMPLEMENT_\w+)\b", text) and "operator=" not in text:
        return None
    if re.search(r"\b(GetThisClass|GetRuntimeClass|CreateObject)\b", text) and name != "CObjectManager":
        return None
    return text


def member_lines(text, name):
    access = "private"
    lines = []
    record = None
    for kind, value in pieces(class_body(text, name)):
        if kind == "access":
            access = value
        elif kind == "heading":
            if access != "private":
                title = re.sub(r"\s*\((?:[\w/]+\.(?:cpp|h)|[\w/]+/|shapes:.*?)\)", "", value).split("; ")[0]
                lines += ["", "### " + title, ""]
            record = None
        elif access != "private" and (line := signature(value, name)):
            table = re.match(r"CObjectDataBase<(\w+)>&", line)
            if table and table[1] != record:
                record = table[1]
                lines += ["", f"`{record}`", ""]
            lines.append(f"- `{line}`" + (" (protected)" if access == "protected" else ""))
    return lines


def page(compiler):
    lines = [INTRO]
    for name, header, what in CLASSES:
        lines += [f"## {name}", "", f"{what} `#include \"{header}\"`", ""]
        lines += member_lines(preprocessed(compiler, header), name) + [""]
    return re.sub(r"\n{3,}", "\n\n", "\n".join(lines)).rstrip("\n") + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--check", action="store_true", help="compare instead of writing")
    parser.add_argument("--compiler", default="g++")
    arguments = parser.parse_args()
    fresh = page(arguments.compiler)
    if not arguments.check:
        PAGE.parent.mkdir(exist_ok=True)
        PAGE.write_text(fresh, encoding="utf-8")
        return 0
    known = PAGE.read_text(encoding="utf-8") if PAGE.exists() else ""
    if known == fresh:
        return 0
    sys.stdout.writelines(difflib.unified_diff(known.splitlines(True), fresh.splitlines(True), "committed", "headers"))
    print("\nThe published interface changed. If that is meant, run scripts/interface_doc.py and commit the page.")
    return 1


if __name__ == "__main__":
    sys.exit(main())
