"""Effects of the pack on the picture, each through its own window: on a selection, cancelled, and a turned document."""

import glob
import os

from desk import Program, Sheet, check, main, wait_for
from pictures import Picture


class Started:
    """The process that a program has started."""

    def __init__(self, program):
        self.pid = int(wait_for("the effect's process", lambda: self._children(program.process.pid))[0])
        self.returncode = None

    def _children(self, pid):
        return [child for path in glob.glob(f"/proc/{pid}/task/*/children") for child in open(path).read().split()]

    def poll(self):
        if not os.path.exists(f"/proc/{self.pid}"):
            self.returncode = 0
        return self.returncode


class EffectWindow(Program):
    """The window of an effect chosen from the menu."""

    def __init__(self, desk, program, effect):
        program.key("alt+t")
        program.press(effect)
        self.desk, self.process = desk, Started(program)
        self.root = wait_for(f"the window {effect}", self._registered)
        wait_for(f"{effect} in front", self.in_front)

    def leave(self, program, key):
        self.key(key)
        self.expect_end()
        wait_for("the main window in front", program.in_front)


def open_picture(desk):
    """By the File menu, since an effect isn't for a picture that came by the command line and is as it was."""
    path, picture, program = desk.path("picture.bmp"), Picture.telling_places(200, 150), desk.start()
    picture.write(path)
    program.key("ctrl+o")
    program.answer_file_window(path)
    return path, program, Sheet(desk, program, f"{path} - 100%", picture), picture


def selection(desk):
    path, program, sheet, picture = open_picture(desk)
    part = picture.cut(20, 20, 40, 30)
    program.press("Select Area Tool")
    desk.drag(sheet.place(20, 20), sheet.place(60, 50))

    window = EffectWindow(desk, program, "Sepia")
    window.leave(program, "Escape")
    check(desk.screen().at(*sheet.place(30, 30)) == picture.at(30, 30), "a cancelled effect changed the picture")

    window = EffectWindow(desk, program, "Posterize")
    window.key("Home")  # two levels: the slider has the keyboard
    window.leave(program, "Return")
    picture.lay(Picture.of(40, 30, lambda x, y: bytes(255 * (v > 127) for v in part.at(x, y))), 20, 20)
    desk.wait_for_pixel(sheet.place(30, 30), picture.at(30, 30))
    program.save(path)
    desk.expect_picture(path, picture)


def turned(desk):
    path, program, _, picture = open_picture(desk)
    window = EffectWindow(desk, program, "Rotate")
    window.key("Down")  # to the right
    window.leave(program, "Return")
    program.save(path)
    desk.expect_picture(path, Picture.of(150, 200, lambda x, y: picture.at(y, 149 - x)))


if __name__ == "__main__":
    main("effects", selection, turned)
