#!/usr/bin/env python3
"""Holds the house's order of floors: who may include whom.

include_floors.py ROOT reads every source below ROOT/src and ROOT/effects and prints a line `file:line: why` for each
include that goes up, for each circle among rooms or among headers, and for each use of the toolkit's headers above the
floors that know it. Ends with 1 when it has printed any.
"""

import fnmatch
import os
import re
import sys

# Pattern of the files, room, floor. The first pattern that fits a file counts. A folder that spans floors is a room
# on each of them.
ROOMS = [
    ("surface/raster/*", "surface/raster", 1),
    ("effects/pixels/*", "effects/pixels", 1.2),
    ("effects/frame/*", "effects/frame", 2.5),
    ("effects/*", "effects", 1.5),
    ("surface/system/text/*", "surface/system/text", 2),
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
    ("imageops/Progress*", "imageops panels", 4),
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
TOOLKIT_ROOMS = {"effects/frame", "surface/system/text", "surface/forms", "surface/system", "components"}

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
    """The sets of nodes that reach each other, those of one node that names itself among them."""
    def reached_from(node):
        reached, pending = set(), [node]
        while pending:
            new = graph.get(pending.pop(), set()) - reached
            reached |= new
            pending += new
        return reached

    reach = {node: reached_from(node) for node in graph}
    return {frozenset(other for other in reach[node] if node in reach.get(other, ()))
            for node in graph if node in reach[node]}


def place_of(root, path):
    """Where a file lies that is included as `path`."""
    place = os.path.join(root, "" if path.startswith("effects/") else "src", path)
    return place if os.path.isfile(place) else place + ".in"


def sources_of(root):
    """As they are included: from src/, those of the effects from the root."""
    for start, below in ((os.path.join(root, "src"), "src"), (root, "effects")):
        for place, folders, names in os.walk(os.path.join(root, below)):
            folders.sort()
            for name in sorted(names):
                if name.endswith(SOURCE_ENDINGS):
                    yield os.path.relpath(os.path.join(place, name), start)


def includes_of(root, path):
    """(line, included path, whether it's written in quotes) of each."""
    with open(place_of(root, path), encoding="utf-8") as lines:
        for number, match in enumerate(map(INCLUDE.match, lines), 1):
            if match:
                yield number, match[1] or match[2], match[1] is not None


def violations(root):
    """(path, line, why) of each, in the order of the files."""
    found = []
    edges = []  # path, line, included path, room and floor of the path, of the included
    for path in sources_of(root):
        here = room_of(path)
        if here is None:
            found.append((path, 1, "stands in no room; add it to the table of rooms and floors"))
            continue
        room, floor = here
        for number, name, own in includes_of(root, path):
            there = room_of(os.path.normpath(name))
            if not own:
                if TOOLKIT_HEADER.match(name) and room not in TOOLKIT_ROOMS:
                    found.append((path, number, f"<{name}>: {room} doesn't know the toolkit"))
            elif not there or not os.path.isfile(place_of(root, name)):
                found.append((path, number, f'"{name}": no file of a room, as written from the source folder'))
            else:
                edges.append((path, number, os.path.normpath(name), here, there))
                if there[1] > floor:
                    why = f'"{name}": {room} (floor {floor}) reaches up to {there[0]} (floor {there[1]})'
                    found.append((path, number, why))

    def add_circles(kind, links):
        graph = {}
        for _, (start, end) in links:
            graph.setdefault(start, set()).add(end)
        for circle in circles(graph):
            for (path, number, name, _, _), ends in links:
                if circle.issuperset(ends):
                    names = ", ".join(sorted(circle))
                    found.append((path, number, f'"{name}": closes a circle among the {kind} {names}'))

    add_circles("rooms", [(edge, (edge[3][0], edge[4][0])) for edge in edges
                          if edge[3] != edge[4] and edge[3][1] == edge[4][1]])
    add_circles("headers", [(edge, (edge[0], edge[2])) for edge in edges if edge[0].endswith(".h")])
    return sorted(found)


def main():
    root = sys.argv[1]
    if next(sources_of(root), None) is None:
        print(f"{root}:1: holds no sources")
        return 1
    found = violations(root)
    for path, number, why in found:
        print(f"{place_of(root, path)}:{number}: {why}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
