#!/usr/bin/env python3
"""Shows that the checks find what they are for, on small trees with one fault each."""

import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import include_floors
import source_rules


class Tree(unittest.TestCase):
    def write(self, files):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        for path, text in files.items():
            path = os.path.join(folder.name, path)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
        return folder.name


class IncludeFloors(Tree):
    def found(self, files):
        return [(path, line) for path, line, _ in include_floors.violations(self.write(files))]

    def test_own_room_lower_floor_and_neighbour_are_fine(self):
        self.assertEqual(self.found({
            "surface/raster/Color.h": "#include <vector>\n",
            "surface/raster/Canvas.h": '#include "surface/raster/Color.h"\n',
            "surface/forms/Form.h": '#include <QWidget>\n#include "surface/raster/Canvas.h"\n',
            "tools/Pen.cpp": '#include "selection/Select.h"\n#include "tools/OptionBars.h"\n',
            "tools/OptionBars.h": "",
            "selection/Select.h": "",
        }), [])

    def test_going_up_is_told_with_its_line(self):
        self.assertEqual(self.found({
            "surface/raster/Color.h": '\n#include "ui/NumberBox.h"\n',
            "ui/NumberBox.h": "",
        }), [("surface/raster/Color.h", 2)])

    def test_a_folder_on_two_floors_goes_up_too(self):
        self.assertEqual(self.found({
            "tools/OptionBars.cpp": '#include "tools/Pen.h"\n',
            "tools/Pen.h": "",
        }), [("tools/OptionBars.cpp", 1)])

    def test_circle_of_neighbours(self):
        self.assertEqual(self.found({
            "tools/Pen.cpp": '#include "selection/Select.h"\n',
            "tools/Pen.h": "",
            "selection/Select.cpp": '#include "tools/Pen.h"\n',
            "selection/Select.h": "",
        }), [("selection/Select.cpp", 1), ("tools/Pen.cpp", 1)])

    def test_circle_of_headers_in_a_room(self):
        self.assertEqual(self.found({
            "ui/A.h": '#include "ui/B.h"\n',
            "ui/B.h": '#include "ui/C.h"\n',
            "ui/C.h": '#include "ui/A.h"\n',
            "ui/D.h": '#include "ui/A.h"\n',
        }), [("ui/A.h", 1), ("ui/B.h", 1), ("ui/C.h", 1)])

    def test_toolkit_above_its_rooms(self):
        for header in ("QWidget", "QtWidgets/QLabel", "QtCore", "qglobal.h"):
            self.assertEqual(self.found({"ui/A.cpp": f"#include <{header}>\n"}), [("ui/A.cpp", 1)])
            self.assertEqual(self.found({"components/A.cpp": f"#include <{header}>\n"}), [])

    def test_unknown_places(self):
        self.assertEqual(self.found({"attic/A.h": ""}), [("attic/A.h", 1)])
        self.assertEqual(self.found({"ui/A.h": "", "ui/A.cpp": '#include "A.h"\n'}), [("ui/A.cpp", 1)])


class SourceRules(Tree):
    def found(self, files):
        return [(path, line) for path, line, _ in source_rules.breaches(self.write(files))]

    def test_clean(self):
        self.assertEqual(self.found({
            "src/ui/A.h": "// Why.\n#pragma once\nextern int a;\n",
            "src/ui/A.cpp": '#include "ui/A.h"\n\n#include <vector>\n// extern\nchar const* b = "extern";\n',
        }), [])

    def test_each_breach(self):
        self.assertEqual(self.found({"src/ui/A.cpp": "extern int a;\n"}), [("src/ui/A.cpp", 1)])
        self.assertEqual(self.found({"src/ui/A.h": "int a;\n"}), [("src/ui/A.h", 1)])
        self.assertEqual(self.found({"tests/a.cpp": "\n// TO" + "DO later\n"}), [("tests/a.cpp", 2)])
        self.assertEqual(self.found({
            "src/ui/A.h": "#pragma once\n",
            "src/ui/A.cpp": '#include <vector>\n#include "ui/A.h"\n',
        }), [("src/ui/A.cpp", 1)])


if __name__ == "__main__":
    unittest.main()
