#!/usr/bin/env python3
"""Shows that the checks find what they are for, on small trees with one fault each."""

import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import include_floors
import source_rules


class Checks(unittest.TestCase):
    def expect(self, check, files, *places):
        """The check finds something at those lines, written path:line, of the files with these texts; no more."""
        with tempfile.TemporaryDirectory() as folder, self.subTest(files=files):
            for path, text in files.items():
                path = os.path.join(folder, path)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text)
            self.assertEqual([f"{path}:{line}" for path, line, _ in check(folder)], list(places))

    def test_include_floors(self):
        def expect(files, *places):
            self.expect(include_floors.violations, files, *places)

        # The own room, a lower floor and a neighbour are fine.
        expect({"surface/raster/Color.h": "#include <vector>\n",
                "surface/raster/Canvas.h": '#include "surface/raster/Color.h"\n',
                "surface/forms/Form.h": '#include <QWidget>\n#include "surface/raster/Canvas.h"\n',
                "tools/Pen.cpp": '#include "selection/Select.h"\n#include "tools/OptionBars.h"\n',
                "tools/OptionBars.h": "", "selection/Select.h": ""})
        # Going up, within a folder on two floors too.
        expect({"surface/raster/Color.h": '\n#include "ui/Box.h"\n', "ui/Box.h": ""}, "surface/raster/Color.h:2")
        expect({"tools/OptionBars.cpp": '#include "tools/Pen.h"\n', "tools/Pen.h": ""}, "tools/OptionBars.cpp:1")
        # Circles of neighbours, and of headers in a room; who only points into one is fine.
        expect({"tools/Pen.cpp": '#include "selection/Select.h"\n', "tools/Pen.h": "",
                "selection/Select.cpp": '#include "tools/Pen.h"\n', "selection/Select.h": ""},
               "selection/Select.cpp:1", "tools/Pen.cpp:1")
        expect({"ui/A.h": '#include "ui/B.h"\n', "ui/B.h": '#include "ui/C.h"\n', "ui/C.h": '#include "ui/A.h"\n',
                "ui/D.h": '#include "ui/A.h"\n'}, "ui/A.h:1", "ui/B.h:1", "ui/C.h:1")
        for header in ("QWidget", "QtWidgets/QLabel", "QtCore", "qglobal.h"):
            expect({"ui/A.cpp": f"#include <{header}>\n", "components/A.cpp": f"#include <{header}>\n"}, "ui/A.cpp:1")
        expect({"attic/A.h": ""}, "attic/A.h:1")
        expect({"ui/A.h": "", "ui/A.cpp": '#include "A.h"\n'}, "ui/A.cpp:1")

    def test_source_rules(self):
        def expect(files, *places):
            self.expect(source_rules.breaches, files, *places)

        expect({"src/ui/A.h": "// Why.\n#pragma once\nextern int a;\n",
                "src/ui/A.cpp": '#include "ui/A.h"\n\n#include <vector>\n// extern\nchar const* b = "extern";\n'})
        expect({"src/ui/A.cpp": "extern int a;\n"}, "src/ui/A.cpp:1")
        expect({"src/ui/A.h": "int a;\n"}, "src/ui/A.h:1")
        expect({"tests/a.cpp": "\n// TO" + "DO later\n"}, "tests/a.cpp:2")
        expect({"src/ui/A.h": "#pragma once\n", "src/ui/A.cpp": '#include <vector>\n#include "ui/A.h"\n'},
               "src/ui/A.cpp:1")


if __name__ == "__main__":
    unittest.main()
