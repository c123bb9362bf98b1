#!/usr/bin/env python3
"""Makes icons.dll (64 bits) and icons.exe (32 bits), by Debian's packages binutils-mingw-w64-i686, -x86-64 and cpp,
and icons16.exe (16 bits), for which no package has a tool.

make_program_seeds.py FOLDER [NUMBER...] puts them into the folder, with all of the icons below or those of the numbers.
Each icon shows a triangle in one colour, pixel (x, y) where x > y; the rest is clear.
"""

import os
import struct
import subprocess
import sys
import tempfile
import zlib

RED, GREEN, BLUE, GREY = 0xFF0000, 0x00FF00, 0x0000FF, 0x405060


def rows(side, cell):
    """Rows from the bottom, of whole words; `cell(x, y)` is a text of bits."""
    for y in reversed(range(side)):
        bits = "".join(cell(x, y) for x in range(side))
        bits += "0" * (-len(bits) % 32)
        yield int(bits, 2).to_bytes(len(bits) // 8, "big")


def bitmap(side, depth, colour, alpha):
    """Up to 8 bits the colour is the second of two in the palette."""
    drawn = {24: colour.to_bytes(3, "little"), 32: colour.to_bytes(3, "little") + bytes([alpha])}.get(depth, b"\1")
    value = f"{int.from_bytes(drawn, 'big'):0{depth}b}"
    palette = struct.pack("<II", 0, colour) if depth <= 8 else b""
    header = struct.pack("<IiiHHIIiiII", 40, side, 2 * side, 1, depth, 0, 0, 0, 0, len(palette) // 4, 0)
    pixels = rows(side, lambda x, y: value if x > y else "0" * depth)
    return header + palette + b"".join(pixels) + b"".join(rows(side, lambda x, y: "01"[x <= y]))


def png(side, colour):
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))
    lines = b"".join(b"\0" + b"".join((colour.to_bytes(3, "big") + b"\xff") if x > y else bytes(4) for x in range(side))
                     for y in range(side))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b""))


def icon(*pictures):
    """An icon file of (side, depth, data)."""
    at = 6 + 16 * len(pictures)
    entries, images = b"", b""
    for side, depth, data in pictures:
        entries += struct.pack("<BBBBHHII", side, side, 0, 0, 1, depth, len(data), at + len(images))
        images += data
    return struct.pack("<HHH", 0, 1, len(pictures)) + entries + images


def masked(side, depth, colour, alpha=0):
    return side, depth, bitmap(side, depth, colour, alpha)


ICONS = [
    icon(masked(16, 4, RED), masked(32, 4, GREEN), masked(48, 1, BLUE)),
    icon(masked(32, 1, RED), masked(32, 8, GREEN), masked(32, 32, BLUE, 255), masked(32, 4, GREY)),
    icon(masked(24, 1, RED), masked(48, 1, GREEN)),
    *(icon(masked(8, depth, GREY)) for depth in (1, 4, 8, 24, 32)),
    icon(masked(8, 32, RED, 128)),
    icon((8, 32, png(8, GREY))),
]

def segmented(icons, shift=4, data_at=0x200):
    """A program of 16 bits that has nothing but icons, each piece at a multiple of 2^shift."""
    groups, images = [], []
    for file in icons:
        count, = struct.unpack_from("<H", file, 4)
        group = file[:6]
        for entry in range(6, 6 + 16 * count, 16):
            size, at = struct.unpack_from("<II", file, entry + 8)
            images.append(file[at:at + size])
            group += file[entry:entry + 12] + struct.pack("<H", len(images))
        groups.append(group)
    table, data = struct.pack("<H", shift), b""
    for kind, pieces in (14, groups), (3, images):
        table += struct.pack("<HHI", 0x8000 | kind, len(pieces), 0)
        for number, piece in enumerate(pieces, 1):
            place = (data_at + len(data)) >> shift
            data += piece + bytes(-len(piece) % (1 << shift))
            table += struct.pack("<HHHHI", place, -(-len(piece) >> shift), 0x1C10, 0x8000 | number, 0)
    table += bytes(2)
    header = b"NE" + bytes(34) + struct.pack("<HH", 64, 64 + len(table)) + bytes(24)
    return (b"MZ" + bytes(58) + struct.pack("<I", 64) + header + table).ljust(data_at, b"\0") + data


if __name__ == "__main__":
    target = os.path.abspath(sys.argv[1])
    chosen = [int(number) for number in sys.argv[2:]] or range(len(ICONS))
    with open(os.path.join(target, "icons16.exe"), "wb") as file:
        file.write(segmented([ICONS[number] for number in chosen]))
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        with open("icons.rc", "w", encoding="ascii") as script:
            for number in chosen:
                with open(f"{number}.ico", "wb") as file:
                    file.write(ICONS[number])
                script.write(f'{number or "NAMED"} ICON "{number}.ico"\n')
        for machine, name, how in ("x86_64", "icons.dll", ["-shared"]), ("i686", "icons.exe", []):
            tool = machine + "-w64-mingw32-"
            subprocess.run([tool + "windres", "--preprocessor=cpp", "icons.rc", "icons.o"], check=True)
            made = os.path.join(target, name)
            subprocess.run([tool + "ld", *how, "-s", "-e", "0", "--no-insert-timestamp", "-o", made, "icons.o"],
                           check=True)
            os.chmod(made, 0o644)
