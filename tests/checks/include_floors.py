#!/usr/bin/env python3
"""Holds the house's order of floors: who may include whom.

include_floors.py SRC reads every source below SRC and prints a line `file:line: why` for each include that goes up,
for each circle among rooms or among headers, and for each use of the toolkit's headers above the floors that know it.
Ends with 1 when it has printed any.
"""

import fnmatch
import os
import re
import sys

# Pattern of the files, room, floor. The first pattern that fits a file counts. A folder that spans floors is a room
# on each of them.
ROOMS = [
    ("surface/raster/*", "surface/raster", 1),
    ("surface/forms/*", "surface/forms", 2),
    ("surface/system/*", "surface/system", 2),
    ("surface/codecs/*", "surface/codecs", 2),
    ("components/*", "components", 3),
    ("ui/*", "ui", 3),
    ("shell/state/*", "shell/state", 4),
    ("document/layers/ImageDocument.*", "document/layers", 4),
    ("colour/*Panel.*", "colour panels", 4),
    ("tools/NumericOptions.*", "tools panels", 4),
    ("tools/OptionBars*", "tools panels", 4),
    ("tools/ToolButtons.*", "tools panels", 4),
    ("tools/ButtonGroup.*", "tools panels", 4),
    ("imageops/effects/*", "imageops/effects", 7),
    ("selection/clipboard/*", "selection/clipboard", 7),
    ("files/icons/*", "files/icons", 7),
    ("files/*", "files", 4),
    ("document/layers/*", "document/layers routines", 5),
    ("colour/*", "colour", 5),
    ("imageops/*", "imageops", 5),
    ("selection/*", "selection", 5),
    ("tools/*", "tools", 5),
    ("document/window/*", "document/window", 6),
    ("shell/Main.*", "shell/Main", 9),
    ("shell/EntryPoint.*", "shell/Main", 9),
    ("shell/*", "shell", 8),
]

# Rooms that may include the toolkit's headers.
TOOLKIT_ROOMS = {"surface/forms", "surface/system", "components"}

SOURCE_ENDINGS = (".h", ".cpp")
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')
TOOLKIT_HEADER = re.compile(r"^(Qt?[A-Z]\w*(/.*)?|q\w+\.h|private/q.*|qpa/.*)$")


def room_of(path):
    """(room, floor) of a path relative to the source folder; None outside every room."""
    for pattern, room, floor in ROOMS:
        if fnmatch.fnmatchcase(path, pattern):
            return room, floor
    return None


def circles(graph):
    """The sets of nodes that reach each other, of two nodes or more, and nodes that name themselves."""
    index, low, stack, found = {}, {}, [], []

    def visit(start):
        work = [(start, iter(sorted(graph.get(start, ()))))]
        index[start] = low[start] = len(index)
        stack.append(start)
        while work:
            node, others = work[-1]
            for other in others:
                if other not in index:
                    index[other] = low[other] = len(index)
                    stack.append(other)
                    work.append((other, iter(sorted(graph.get(other, ())))))
                    break
                if other in stack:
                    low[node] = min(low[node], index[other])
            else:
                work.pop()
                if work:
                    low[work[-1][0]] = min(low[work[-1][0]], low[node])
                if low[node] == index[node]:
                    members = set(stack[stack.index(node):])
                    del stack[stack.index(node):]
                    if len(members) > 1 or node in graph.get(node, ()):
                        found.append(members)

    for node in sorted(graph):
        if node not in index:
            visit(node)
    return found


def sources_of(folder):
    for place, folders, names in os.walk(folder):
        folders.sort()
        for name in sorted(names):
            if name.endswith(SOURCE_ENDINGS):
                yield os.path.relpath(os.path.join(place, name), folder)


def violations(folder):
    """(path, line, why) of each, in the order of the files."""
    found = []
    edges = []  # path, line, included path, room of path, room of the included
    for path in sources_of(folder):
        here = room_of(path)
        if here is None:
            found.append((path, 1, "stands in no room; add it to the table of rooms and floors"))
            continue
        room, floor = here
        with open(os.path.join(folder, path), encoding="utf-8") as lines:
            for number, line in enumerate(lines, 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                own, outside = match.groups()
                if outside is not None:
                    if TOOLKIT_HEADER.match(outside) and room not in TOOLKIT_ROOMS:
                        found.append((path, number, f"<{outside}>: {room} doesn't know the toolkit"))
                    continue
                if not os.path.isfile(os.path.join(folder, own)):
                    found.append((path, number, f'"{own}": no such file; includes are written from the source folder'))
                    continue
                there = room_of(os.path.normpath(own))
                if there is None:
                    found.append((path, number, f'"{own}": stands in no room'))
                    continue
                edges.append((path, number, os.path.normpath(own), here, there))
                if there[1] > floor:
                    why = f'"{own}": {room} (floor {floor}) reaches up to {there[0]} (floor {there[1]})'
                    found.append((path, number, why))

    rooms, headers = {}, {}
    for path, _, own, here, there in edges:
        if here != there and here[1] == there[1]:
            rooms.setdefault(here[0], set()).add(there[0])
        if path.endswith(".h"):
            headers.setdefault(path, set()).add(own)
    for circle in circles(rooms):
        for path, number, own, here, there in edges:
            if here != there and here[1] == there[1] and {here[0], there[0]} <= circle:
                names = ", ".join(sorted(circle))
                found.append((path, number, f'"{own}": closes a circle among the rooms {names}'))
    for circle in circles(headers):
        for path, number, own, _, _ in edges:
            if path.endswith(".h") and {path, own} <= circle:
                names = ", ".join(sorted(circle))
                found.append((path, number, f'"{own}": closes a circle among the headers {names}'))
    return sorted(found)


def main():
    folder = sys.argv[1]
    if next(sources_of(folder), None) is None:
        print(f"{folder}:1: holds no sources")
        return 1
    found = violations(folder)
    for path, number, why in found:
        print(f"{os.path.join(folder, path)}:{number}: {why}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
