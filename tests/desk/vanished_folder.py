"""A document is saved whose folder has gone meanwhile."""

import os

from desk import check, main, wait_for
from pictures import BLACK
from sheets import open_places

QUESTION = "The image has been changed."


def told_and_nothing_lost(desk):
    os.mkdir(desk.path("there"))
    path, program, sheet = open_places(desk, os.path.join("there", "picture.bmp"))
    with open(path, "rb") as file:
        before = file.read()
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    os.rename(desk.path("there"), desk.path("elsewhere"))

    program.key("ctrl+s")
    message = wait_for("a message that names the file", lambda: [
        control for control in program.controls(lambda control: path in control.name())
        if not control.name().startswith(f"{path} - ")])[0].name()
    program.answer(message, "OK")
    check(not os.path.exists(desk.path("there")), "the folder was made anew")
    with open(desk.path("elsewhere", "picture.bmp"), "rb") as file:
        check(file.read() == before, "the old file was touched")

    # It still counts as changed.
    program.key("ctrl+w")
    program.wait_for_text(QUESTION)
    program.answer(QUESTION, "Cancel")

    # With its folder back, it can be saved.
    os.rename(desk.path("elsewhere"), desk.path("there"))
    stamp = os.stat(path).st_ino, os.stat(path).st_mtime_ns
    program.key("ctrl+s")
    wait_for("the saved file", lambda: (os.stat(path).st_ino, os.stat(path).st_mtime_ns) != stamp)
    desk.expect_picture(path, sheet.picture)


main("vanished_folder", told_and_nothing_lost)
