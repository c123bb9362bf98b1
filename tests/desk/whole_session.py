"""A person's whole session: painted, a colour kept as a swatch, copied, changed by an effect, lettered, enlarged, saved as
every kind, joined by a second start and left with a question. Each file holds what the screen showed, and the next start
what was kept."""

import os
import sys

from desk import Sheet, check, main, wait_for
from effects import EffectWindow, open_picture
from pictures import BLACK, WHITE, Picture
from type_text import changed, open_box, type_into

SWATCH = "From the sheet"
KINDS = {"bmp": "BMP3", "tif": "TIFF", "gif": "GIF", "jpg": "JPEG", "ico": "ICO"}


def paint(desk, program, sheet):
    """Leaves the colour that it returns as the foreground one."""
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    program.press("Straight Line")
    sheet.row(10, 60, 24, BLACK)
    program.press("Eraser Tool")
    program.enter("Eraser width:", "1")
    sheet.row(70, 90, 20, WHITE)
    program.press("Floodfill Tool")
    sheet.row(100, 100, 20, BLACK)
    program.press("Eyedropper Tool")
    desk.click(*sheet.place(150, 100))
    name_swatch(desk, program)
    program.press("Restore Colors")
    program.press(SWATCH)
    program.press("Pen Tool")
    colour = sheet.picture.at(150, 100)
    sheet.row(10, 60, 28, colour)
    return colour


def name_swatch(desk, program):
    """Adds the foreground colour by a click on the space behind the other swatches."""
    left, top, width, height = program.find("Add New Swatch").settled().rect()
    desk.click(left + width - 4, top + height - 4)
    program.enter("Enter the name for the new swatch:", SWATCH)
    program.press("OK")
    wait_for("the swatch window to go", lambda: not program.shows("Enter the name for"))


def copy_and_posterize(desk, program, sheet):
    part = sheet.picture.cut(20, 40, 40, 30)
    program.press("Select Area Tool")
    desk.drag(sheet.place(20, 40), sheet.place(60, 70))
    program.key("ctrl+c", "ctrl+v")
    desk.wait_for_pixel(sheet.place(5, 5), part.at(5, 5))
    window = EffectWindow(desk, program, "Posterize")
    window.key("Home")
    window.leave(program, "Return")
    sheet.picture.lay(Picture.of(40, 30, lambda x, y: bytes(255 * (v > 127) for v in part.at(x, y))), 0, 0)
    desk.wait_for_pixel(sheet.place(5, 5), sheet.picture.at(5, 5))


def letter(desk, program, sheet, path):
    box = open_box(desk, program, sheet)
    type_into(desk, box, "Zelvane")
    program.press("Apply Text")
    wait_for("the box to go", lambda: not box.renewed().seen())
    program.save(path)
    lettered = Picture.read(path)
    check(changed(sheet.picture, lettered), "nothing was printed")
    sheet.picture = lettered


def enlarge(program, picture):
    program.press("Image")
    program.press("Image Size")
    program.enter("Width:", "400")
    program.enter("Height:", "300")
    program.press("OK")
    wait_for("the size window to go", lambda: not program.shows(" Image Size"))
    return Picture.of(400, 300, lambda x, y: picture.at(x // 2, y // 2))


def save_as_every_kind(desk, program, picture):
    for ending, kind in KINDS.items():
        target = desk.path("saved." + ending)
        program.key("ctrl+d")
        program.answer_file_window(target)
        program.find(f"{target} - 100%")
        check(desk.ask("identify", "-format", "%m", target) == kind, f"{target} is of another kind")
        if kind in ("BMP3", "TIFF"):
            desk.expect_picture(target, picture)


def a_whole_session(desk):
    path, program, sheet, _ = open_picture(desk)
    colour = paint(desk, program, sheet)
    copy_and_posterize(desk, program, sheet)
    letter(desk, program, sheet, path)
    save_as_every_kind(desk, program, enlarge(program, sheet.picture))

    other = desk.path("other.bmp")
    Picture.telling_places(60, 50).write(other)
    second = desk.spawn([sys.argv[1], os.path.basename(other)], cwd=desk.folder)
    wait_for("the second start to end", lambda: second.poll() is not None)
    sheet = Sheet(desk, program, f"{other} - 100%", Picture.telling_places(60, 50))
    program.press("Pen Tool")
    sheet.row(4, 28, 20, colour)
    program.key("ctrl+q")
    program.answer("The image has been changed.", "Yes")
    program.expect_end()
    desk.expect_picture(other, sheet.picture)
    desk.wait_for_pixel(desk.start().find(SWATCH).settled().centre(), colour)


if __name__ == "__main__":
    main("whole_session", a_whole_session)
