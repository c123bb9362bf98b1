"""A document on the desk: where its pixels are on the screen."""

import os

from desk import LEFT, wait_for
from pictures import Picture


class Sheet:
    """The document whose caption is `caption`, showing `picture`; each pixel takes `zoom` by `zoom` of the screen's."""

    def __init__(self, desk, program, caption, picture, zoom=1):
        self.desk, self.program, self.picture, self.zoom = desk, program, picture, zoom
        self.canvas = program.find("Picture", lambda: program.find(caption)).settled()
        wait_for("the picture on the screen", lambda: self._shows(desk.screen()))

    def _shows(self, screen):
        return all(screen.at(*self.place(i, i)) == self.picture.at(i, i) for i in range(16))

    def place(self, x, y):
        """Where the screen shows the middle of pixel (x, y), beside the frame of one pixel."""
        left, top, _, _ = self.canvas.rect()
        return left + 1 + x * self.zoom + self.zoom // 2, top + 1 + y * self.zoom + self.zoom // 2

    def row(self, x1, x2, y, colour, button=LEFT):
        """Draws along a row with the tool that is set, waits for the screen to show `colour` at both ends, and notes
        what the picture then is."""
        self.desk.drag(self.place(x1, y), self.place(x2, y), button)
        self.picture.row(x1, x2, y, colour)
        for x in x1, x2:
            self.desk.wait_for_pixel(self.place(x, y), colour)


def open_picture(desk, name, picture):
    """A picture file of that name in the desk's folder, the program started with it, and its sheet."""
    path = desk.path(name)
    picture.write(path)
    program = desk.start(path)
    return path, program, Sheet(desk, program, f"{path} - 100%", picture)


def save(program, path):
    """Ctrl+S, until another file stands at `path`."""
    before = os.stat(path)
    program.key("ctrl+s")
    wait_for("the saved file", lambda: os.path.exists(path) and not os.path.samestat(os.stat(path), before))
