"""Pictures of red, green and blue bytes, and the files that the desk tests hand to the program.

What a test expects is computed here, apart from the program and from any library of pictures.
"""

import struct
import zlib

BLACK, WHITE = (0, 0, 0), (255, 255, 255)
PLACE_BLUE = 77


class Picture:
    def __init__(self, width, height, pixels=None):
        self.width, self.height = width, height
        self.pixels = bytearray(pixels) if pixels is not None else bytearray(3 * width * height)
        if len(self.pixels) != 3 * width * height:
            raise ValueError(f"{len(self.pixels)} bytes are no picture of {width} by {height}")

    @classmethod
    def of(cls, width, height, colour_at):
        """Each pixel as colour_at(x, y) says."""
        pixels = bytearray()
        for y in range(height):
            for x in range(width):
                pixels += bytes(colour_at(x, y))
        return cls(width, height, pixels)

    @classmethod
    def telling_places(cls, width, height):
        """Every pixel another colour, from which `place_of` tells where it stands; none is black or white."""
        return cls.of(width, height, lambda x, y: (x, y, PLACE_BLUE))

    def place_of(self, colour):
        """(x, y) of the pixel of such a picture that has this colour; None if none has."""
        x, y, blue = colour
        return (x, y) if blue == PLACE_BLUE and x < self.width and y < self.height else None

    def copy(self):
        return Picture(self.width, self.height, self.pixels)

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.pixels[start:start + 3])

    def row(self, x1, x2, y, colour):
        """The pixels of a row from x1 to x2, both included, become `colour`."""
        for x in range(min(x1, x2), max(x1, x2) + 1):
            start = 3 * (y * self.width + x)
            self.pixels[start:start + 3] = bytes(colour)

    def first_difference(self, other):
        """(x, y) of the first pixel, row by row, that differs; None if none does. The sizes are alike."""
        for i in range(0, len(self.pixels), 3):
            if self.pixels[i:i + 3] != other.pixels[i:i + 3]:
                return i // 3 % self.width, i // 3 // self.width
        return None

    def ppm(self):
        return b"P6\n%d %d\n255\n" % (self.width, self.height) + bytes(self.pixels)

    def bmp(self):
        """24 bits a pixel, uncompressed, bottom row first."""
        padding = bytes(-3 * self.width % 4)
        rows = bytearray()
        for y in reversed(range(self.height)):
            row = self.pixels[3 * y * self.width:3 * (y + 1) * self.width]
            row[0::3], row[2::3] = row[2::3], row[0::3]
            rows += row + padding
        header = struct.pack("<2sIHHI", b"BM", 54 + len(rows), 0, 0, 54)
        return header + struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 24, 0, len(rows), 2835, 2835, 0,
                                    0) + bytes(rows)

    def png(self):
        def chunk(name, body):
            return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))

        rows = b"".join(b"\0" + bytes(self.pixels[3 * y * self.width:3 * (y + 1) * self.width])
                        for y in range(self.height))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) +
                chunk(b"IEND", b""))

    def write(self, path):
        """As the path's ending says: .bmp, .png or .ppm."""
        body = {"bmp": self.bmp, "png": self.png, "ppm": self.ppm}[str(path).rsplit(".", 1)[1]]()
        with open(path, "wb") as file:
            file.write(body)
