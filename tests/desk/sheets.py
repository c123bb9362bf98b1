"""A document on the desk: where its pixels are on the screen."""

import os

from desk import LEFT, Failure, wait_for
from pictures import Picture


class Sheet:
    """The document whose caption is `caption`, showing `picture`; each pixel takes `zoom` by `zoom` of the screen's."""

    def __init__(self, desk, program, caption, picture, zoom=1):
        self.desk, self.program, self.picture, self.zoom = desk, program, picture, zoom
        program.find(caption)
        self.canvas = wait_for(f'the picture of "{caption}"', lambda: self._canvas(caption))

    def _canvas(self, caption):
        for control in self.program.controls(lambda control: control.name() == "Picture"):
            if control.within(caption):
                return control
        return None

    def place(self, x, y):
        """Where the screen shows the middle of pixel (x, y), beside the frame of one pixel."""
        left, top, _, _ = self.canvas.rect()
        return left + 1 + x * self.zoom + self.zoom // 2, top + 1 + y * self.zoom + self.zoom // 2

    def wait_until_shown(self):
        """Until the screen shows the picture's first pixels; a plain window in front of them doesn't."""
        wait_for("the picture on the screen", lambda: self._shows_first_pixels())

    def _shows_first_pixels(self):
        screen = self.desk.screen()
        return all(screen.at(*self.place(i, i)) == self.picture.at(i, i) for i in range(16))

    def row(self, x1, x2, y, colour, button=LEFT):
        """Draws along a row with the tool that is set, waits for the screen to show `colour` there, and notes what
        the picture then is."""
        self.desk.drag(self.place(x1, y), self.place(x2, y), button)
        self.picture.row(x1, x2, y, colour)
        self.desk.wait_for_pixel(self.place(x1, y), colour)
        self.desk.wait_for_pixel(self.place(x2, y), colour)

    def visible(self, whole):
        """(left, top, right, bottom), edges included, of the screen's part in which the pixels of `whole` show; it's
        a picture of `telling_places`."""
        screen = self.desk.screen()
        left, top, width, height = self.canvas.rect()
        xs, ys = set(), set()
        for y in range(max(top, 0), min(top + height, screen.height)):
            for x in range(max(left, 0), min(left + width, screen.width)):
                if whole.place_of(screen.at(x, y)):
                    xs.add(x)
                    ys.add(y)
        if not xs:
            raise Failure("the screen shows nothing of the picture")
        return min(xs), min(ys), max(xs), max(ys)


def open_picture(desk, name, picture):
    """A picture file of that name in the desk's folder, the program started with it, and its sheet."""
    path = desk.path(name)
    picture.write(path)
    program = desk.start(path)
    sheet = Sheet(desk, program, f"{path} - 100%", picture)
    sheet.wait_until_shown()
    return path, program, sheet


def open_places(desk, name, width=200, height=150):
    """The same with a picture that tells places."""
    return open_picture(desk, name, Picture.telling_places(width, height))


def stamp(path):
    facts = os.stat(path)
    return facts.st_ino, facts.st_mtime_ns


def save(program, path):
    """Ctrl+S, until another file stands at `path`."""
    before = stamp(path)
    program.key("ctrl+s")
    wait_for("the saved file", lambda: stamp(path) != before)
