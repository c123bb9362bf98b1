"""An icon is picked out of a library, drawn on and saved."""

import os
import shutil

from desk import Sheet, main, wait_for
from pictures import BLACK, WHITE, Picture

LIBRARY = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../data/programs/icons.dll")
BLUE = (0, 0, 255)


def picked(desk):
    library, target, program = shutil.copy(LIBRARY, desk.folder), desk.path("icon.bmp"), desk.start()
    for name in "File", "Icon Extraction", "Open":
        program.press(name)
    program.answer_file_window(library)
    program.find("10")  # icons in all
    program.key("Right")  # the scroll bar has the keyboard
    program.find("2")
    program.press("Select")
    program.find("Untitled - 100%")
    program.press("Close")
    wait_for("the window to go", lambda: not program.shows("Total Icons in file:"))

    sheet = Sheet(desk, program, "Untitled - 100%", Picture.of(32, 32, lambda x, y: BLUE if x > y else WHITE))
    program.press("Pen Tool")
    sheet.row(4, 28, 20, BLACK)
    program.key("ctrl+d")
    program.answer_file_window(target)
    program.find(f"{target} - 100%")
    desk.expect_picture(target, sheet.picture)


main("icons", picked)
