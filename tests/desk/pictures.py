"""Pictures of red, green and blue bytes: what a test hands to the program, and what it expects, computed here."""

import subprocess

BLACK, WHITE = (0, 0, 0), (255, 255, 255)


class Picture:
    def __init__(self, width, height, pixels):
        self.width, self.height, self.pixels = width, height, bytearray(pixels)

    @classmethod
    def of(cls, width, height, colour_at):
        return cls(width, height, (byte for y in range(height) for x in range(width) for byte in colour_at(x, y)))

    @classmethod
    def telling_places(cls, width, height):
        """Every pixel another colour, none black or white: (x, y, 77)."""
        return cls.of(width, height, lambda x, y: (x, y, 77))

    @classmethod
    def read(cls, path):
        """The file as ImageMagick reads it."""
        size = subprocess.run(["identify", "-format", "%w %h", path], capture_output=True, check=True).stdout
        pixels = subprocess.run(["/usr/bin/convert", path, "-depth", "8", "rgb:-"], capture_output=True, check=True)
        return cls(*map(int, size.split()), pixels.stdout)

    def write(self, path):
        """In the format of the path's ending."""
        subprocess.run(["/usr/bin/convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "rgb:-", path],
                       input=self.pixels, check=True)

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.pixels[start:start + 3])

    def row(self, x1, x2, y, colour):
        """The pixels of a row from x1 to x2, both included, become `colour`."""
        start, end = 3 * (y * self.width + min(x1, x2)), 3 * (y * self.width + max(x1, x2) + 1)
        self.pixels[start:end] = bytes(colour) * ((end - start) // 3)

    def first_difference(self, other):
        """(x, y) of the first pixel, row by row, that differs; None if none does. The sizes are alike."""
        places = ((x, y) for y in range(self.height) for x in range(self.width))
        return next((place for place in places if self.at(*place) != other.at(*place)), None)
