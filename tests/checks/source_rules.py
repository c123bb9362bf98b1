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
    found = []
    for folder in FOLDERS:
        for place, folders, names in os.walk(os.path.join(root, folder)):
            folders.sort()
            for name in sorted(names):
                if not name.endswith((".h", ".cpp")):
                    continue
                path = os.path.relpath(os.path.join(place, name), root)
                with open(os.path.join(root, path), encoding="utf-8") as file:
                    text = file.read()
                found += breaches_of(root, path, text)
    return found


def breaches_of(root, path, text):
    found = []
    lines = text.split("\n")
    for number, line in enumerate(lines, 1):
        if UNFINISHED.search(line):
            found.append((path, number, "unfinished work; finish it or file it"))
    if path.endswith(".h"):
        first = next((line for line in code_of(text).split("\n") if line.strip()), "")
        if first.strip() != "#pragma once":
            found.append((path, 1, "a header begins with #pragma once"))
        return found
    if not path.startswith("src" + os.sep):
        return found
    for number, line in enumerate(code_of(text).split("\n"), 1):
        if EXTERN.search(line):
            found.append((path, number, "extern in a source file; declare the global in the header of its folder"))
    own = os.path.relpath(path[: -len(".cpp")] + ".h", "src")
    if os.path.isfile(os.path.join(root, "src", own)):
        for number, line in enumerate(lines, 1):
            match = INCLUDE.match(line)
            if match:
                if match.group(1) != own:
                    found.append((path, number, f'the first include is the own header, "{own}"'))
                break
        else:
            found.append((path, 1, f'doesn\'t include its own header, "{own}"'))
    return found


def main():
    found = breaches(sys.argv[1])
    for path, number, why in found:
        print(f"{path}:{number}: {why}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
