"""Pictures of red, green and blue bytes: what a test hands to the program, and what it expects, computed here."""

import dataclasses
import subprocess

BLACK, WHITE = (0, 0, 0), (255, 255, 255)


@dataclasses.dataclass
class Picture:
    width: int
    height: int
    pixels: bytearray

    @classmethod
    def of(cls, width, height, colour_at):
        return cls(width, height, bytearray(
            byte for y in range(height) for x in range(width) for byte in colour_at(x, y)))

    @classmethod
    def telling_places(cls, width, height):
        """Every pixel another colour, none black or white: (x, y, 77)."""
        return cls.of(width, height, lambda x, y: (x, y, 77))

    @classmethod
    def read(cls, path):
        """The file as ImageMagick reads it."""
        size = subprocess.run(["identify", "-format", "%w %h", path], capture_output=True, check=True).stdout
        pixels = subprocess.run(["convert", path, "-depth", "8", "rgb:-"], capture_output=True, check=True).stdout
        return cls(*map(int, size.split()), bytearray(pixels))

    def write(self, path):
        """In the format of the path's ending."""
        subprocess.run(["convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "rgb:-", path],
                       input=self.pixels, check=True)

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.pixels[start:start + 3])

    def row(self, x1, x2, y, colour):
        """The pixels of a row from x1 to x2, both included, become `colour`."""
        start, end = 3 * (y * self.width + min(x1, x2)), 3 * (y * self.width + max(x1, x2) + 1)
        self.pixels[start:end] = bytes(colour) * ((end - start) // 3)

    def cut(self, left, top, width, height):
        """A copy of that part."""
        return Picture.of(width, height, lambda x, y: self.at(left + x, top + y))

    def lay(self, part, left, top):
        """`part` comes to lie on this picture."""
        for y in range(part.height):
            for x in range(part.width):
                self.row(left + x, left + x, top + y, part.at(x, y))
