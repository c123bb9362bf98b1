#!/usr/bin/env python3
"""Holds the rules that a look at the text can hold.

source_rules.py ROOT reads the C++ sources of the tree and prints a line `file:line: why` for each breach:
- no `extern` in a source file of src/: a global has its address in one header;
- a header begins with `#pragma once`;
- a source file with a header of its name includes it first, so that the header compiles alone;
- no mark of unfinished work in a comment.
Ends with 1 when it has printed any.
"""

import os
import re
import sys

FOLDERS = ("src", "tests", "bench", "fuzz", "effects")
UNFINISHED = re.compile(r"\b(" + "|".join(("TO" + "DO", "FIX" + "ME", "X" * 3)) + r")\b")
EXTERN = re.compile(r"\bextern\b(?!\s*\")")
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]')
# Comments, strings, raw strings, character literals.
NO_CODE = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"([^()\\ ]{0,16})\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)


def code_of(text):
    """The text with comments and literals blanked, lines kept."""
    return NO_CODE.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def breaches(root):
    """(path, line, why) of each, in the order of the folders."""
    for folder in FOLDERS:
        for place, folders, names in os.walk(os.path.join(root, folder)):
            folders.sort()
            for name in sorted(names):
                if name.endswith((".h", ".cpp")):
                    path = os.path.relpath(os.path.join(place, name), root)
                    with open(os.path.join(root, path), encoding="utf-8") as file:
                        text = file.read()
                    for line, why in breaches_of(root, path, text):
                        yield path, line, why


def breaches_of(root, path, text):
    lines, code = text.split("\n"), code_of(text).split("\n")
    for number, line in enumerate(lines, 1):
        if UNFINISHED.search(line):
            yield number, "unfinished work; finish it or file it"
    if path.endswith(".h"):
        if next((line.strip() for line in code if line.strip()), "") != "#pragma once":
            yield 1, "a header begins with #pragma once"
    elif path.startswith("src" + os.sep):
        for number, line in enumerate(code, 1):
            if EXTERN.search(line):
                yield number, "extern in a source file; declare the global in the header of its folder"
        own = os.path.relpath(path[: -len(".cpp")] + ".h", "src")
        includes = ((number, match[1]) for number, match in enumerate(map(INCLUDE.match, lines), 1) if match)
        number, first = next(includes, (1, ""))
        if os.path.isfile(os.path.join(root, "src", own)) and first != own:
            yield number, f'the first include is the own header, "{own}"'


def main():
    found = list(breaches(sys.argv[1]))
    for path, number, why in found:
        print(f"{path}:{number}: {why}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
