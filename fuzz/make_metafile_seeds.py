#!/usr/bin/env python3
"""Makes the seeds of metafile_fuzz: small metafiles that together hold every kind of record that is played."""

import os
import struct
import sys


def longs(*values):
    return b"".join(struct.pack("<I", value & 0xFFFFFFFF) for value in values)


def words(*values):
    return b"".join(struct.pack("<H", value & 0xFFFF) for value in values)


def wmf(*records):
    body = b"".join(longs((7 + len(fields)) // 2) + words(kind) + fields + b"\0" * (len(fields) % 2)
                    for kind, fields in records)
    placeable = longs(0x9AC6CDD7) + words(0, 0, 0, 48, 48, 96, 0, 0, 0)
    return placeable + words(1, 9, 0x300, 0, 0, 4, 99, 0, 0) + body + words(3, 0, 0)


def emf(*records):
    body = b"".join(longs(kind, 8 + len(fields)) + fields for kind, fields in records)
    header = longs(1, 88, 0, 0, 47, 47, 0, 0, 1270, 1270) + b" EMF"
    return header + longs(0x10000, 0, 0, 8, 0, 0, 0, 9600, 9600, 2540, 2540) + body + longs(14, 20, 0, 20, 20)


ONE = 0x3F800000
DIB = longs(40, 2, 2, 32 << 16 | 1, 0, 0, 0, 0, 0, 0, 0xFF0000, 0xFF00, 0xFF, 0xFFFFFF)
INDEXED = longs(40, 8, 2, 1 << 16 | 1, 0, 0, 0, 0, 2, 0, 0xFF0000, 0xFF00, 0xAA, 0x55)
RUNS = longs(40, 4, 1, 8 << 16 | 1, 1, 4, 0, 0, 1, 0, 0xFF) + bytes([4, 0, 0, 1])
WMF_FONT = words(-12, 0, 300, 0, 700, 0x0101, 1, 0, 0) + b"Arial\0"
EMF_FONT = longs(1, -12, 5, 900, 0, 400, 0x01010100, 0) + "Symbol".encode("utf-16le").ljust(64, b"\0")
BOUNDS = longs(0, 0, 47, 47)
BRUSH, PEN = (39, longs(1, 2, 0xFF, 4)), (38, longs(2, 3, 4, 4, 0xFF00))
SELECT = [(37, longs(1)), (37, longs(2))]
REGION = longs(32, 1, 2, 32, 0, 0, 40, 40, 4, 4, 20, 20, 10, 10, 40, 30)


def blit(operation, more=b"", dib=DIB):
    at = 100 + len(more)
    return (BOUNDS + longs(3, 4, 20, -16, operation, 0, 0, ONE, 0, 0, ONE, 0, 0, 0, 0, at, 40, at + 40, len(dib) - 40)
            + more + dib)


def text(string, distances=()):
    place = longs(5, 6, len(string), 76, 6, 0, 0, 40, 40, 76 + 2 * len(string) if distances else 0)
    return BOUNDS + longs(1, ONE, ONE) + place + string.encode("utf-16le") + longs(*distances)


SEEDS = {
    "shapes.wmf": wmf((0x2FA, words(2, 3, 0, 0xFF, 0)), (0x2FC, words(2, 0xFF00, 0, 3)), (0x12D, words(0)),
                      (0x12D, words(1)), (0x106, words(2)), (0x104, words(7)), (0x41B, words(20, 30, 3, 4)),
                      (0x418, words(40, 40, 9, 9)), (0x61C, words(5, 6, 30, 40, 3, 3)), (0x214, words(1, 2)),
                      (0x213, words(40, 30)), (0x817, words(0, 0, 9, 30, 40, 40, 3, 3)),
                      (0x81A, words(0, 0, 9, 30, 40, 40, 3, 3)), (0x830, words(0, 0, 9, 30, 40, 40, 3, 3)),
                      (0x324, words(3, 0, 0, 40, 9, 9, 40)), (0x325, words(3, 0, 0, 40, 9, 9, 40)),
                      (0x538, words(2, 3, 3, 0, 0, 9, 9, 0, 9, 20, 20, 30, 30, 20, 30)),
                      (0x41F, words(0xFF, 0, 7, 7))),
    "state.wmf": wmf((0x1E, b""), (0x103, words(7)), (0x20B, words(-5, -5)), (0x20C, words(90, 80)),
                     (0x20D, words(1, 1)), (0x20E, words(60, 70)), (0x20F, words(1, 1)), (0x211, words(1, 1)),
                     (0x410, words(2, 3, 2, 3)), (0x412, words(2, 3, 2, 3)), (0x416, words(40, 40, 3, 3)),
                     (0x415, words(20, 20, 9, 9)), (0x220, words(1, 1)), (0x61D, words(0x21, 0xF0, 40, 40, 0, 0)),
                     (0x127, words(-1)), (0x6FF, words(0, 6, 0, 0, 0, 1, 2, 0, 0, 40, 40, 2, 3, 30, 4, 40, 2)),
                     (0x2FC, words(0, 0xFF, 0, 0)), (0x228, words(0, 1)), (0x429, words(0, 1, 2, 2)),
                     (0x12A, words(0)), (0x12B, words(0)), (0x12C, words(0)), (0x1F0, words(0)), (0x12C, words(0))),
    "text.wmf": wmf((0x2FB, WMF_FONT), (0x12D, words(0)), (0x12E, words(25)), (0x108, words(2)),
                    (0x20A, words(2, 9)), (0x209, words(0xFF, 0)), (0x201, words(0, 0xFF)), (0x102, words(2)),
                    (0x521, words(5) + b"A b\x80c\0" + words(20, 5)),
                    (0xA32, words(30, 5, 2, 6, 0, 0, 40, 40) + b"xy" + words(9, 9))),
    "bitmaps.wmf": wmf((0xF7, words(0x300, 2) + longs(0xFF, 0xFF00)), (0x234, words(0)),
                       (0x142, words(5, 0) + INDEXED), (0x1F9, words(0, 8, 1, 2, 0x0101) + bytes(22) + b"\xAA\0"),
                       (0x12D, words(1)), (0xF43, words(0x20, 0xCC, 0, 2, 2, 0, 0, 20, 20, 1, 1) + DIB),
                       (0x940, words(0x46, 0x66, 0, 0, 2, 2, 3, 3) + DIB),
                       (0xB41, words(0xC6, 0x88, 2, 2, 0, 0, -9, -9, 30, 30) + RUNS),
                       (0xD33, words(0, 2, 0, 0, 0, 2, 2, 9, 9) + DIB),
                       (0x922, words(0x20, 0xCC, 0, 0, 1, 8, 0, 0, 0, 8, 1, 2, 0x0101) + b"\xAA\0"),
                       (0x940, words(9, 0x5A, 0, 0, 0, 9, 9, 9, 9))),
    "shapes.emf": emf(BRUSH, PEN, *SELECT, (42, longs(3, 3, 40, 40)), (43, longs(3, 3, 40, 40)),
                      (44, longs(3, 3, 40, 40, 9, 9)), (45, longs(3, 3, 40, 40, 9, 9, 30, 3)),
                      (46, longs(3, 3, 40, 40, 9, 9, 30, 3)), (47, longs(3, 3, 40, 40, 9, 9, 30, 3)),
                      (27, longs(3, 3)), (55, longs(3, 3, 40, 40, 9, 9, 30, 3)), (54, longs(9, 40)), (57, longs(2)),
                      (41, longs(20, 20, 9, 0, 0x42B40000)), (2, BOUNDS + longs(4, 0, 0, 9, 40, 40, 9, 3, 3)),
                      (5, BOUNDS + longs(3, 9, 40, 40, 9, 3, 3)), (6, BOUNDS + longs(2, 9, 40, 40, 9)),
                      (7, BOUNDS + longs(1, 2, 2, 9, 40, 40, 9)), (8, BOUNDS + longs(1, 3, 3, 9, 40, 40, 9, 3, 3)),
                      (56, BOUNDS + longs(2, 9, 40, 40, 9) + bytes([6, 3])), (15, longs(9, 9, 0xFF)),
                      (86, BOUNDS + longs(3) + words(0, 0, 40, 9, 9, 40))),
    "paths.emf": emf(BRUSH, *SELECT, (95, longs(2, 0, 0, 0, 0, 0x12207, 3, 0, 0xFF, 0, 2, 9, 4)), (37, longs(2)),
                     (58, longs(4)), (59, b""), (27, longs(3, 3)), (54, longs(40, 9)), (54, longs(9, 40)), (61, b""),
                     (60, b""), (63, BOUNDS), (59, b""), (42, longs(3, 3, 40, 40)), (60, b""), (67, longs(1)),
                     (33, b""), (75, longs(64, 3) + REGION), (28, b""), (29, longs(9, 9, 20, 20)),
                     (30, longs(3, 3, 30, 30)), (26, longs(1, 1)), (71, BOUNDS + longs(64, 1) + REGION),
                     (72, BOUNDS + longs(64, 1, 2, 2) + REGION), (73, BOUNDS + longs(64) + REGION),
                     (74, BOUNDS + longs(64) + REGION), (34, longs(-1)), (20, longs(7)), (64, BOUNDS), (68, b"")),
    "state.emf": emf((17, longs(8)), (9, longs(100, 100)), (10, longs(-5, -5)), (11, longs(96, 96)),
                     (12, longs(2, 2)), (31, longs(2, 3, 2, 3)), (32, longs(2, 3, 2, 3)), (13, longs(1, 1)),
                     (35, longs(ONE, 0, 0, ONE, 0x41200000, 0)), (36, longs(0, ONE, 0xBF800000, 0, 0, 0, 2)),
                     (18, longs(2)), (19, longs(2)), (24, longs(0xFF)), (25, longs(0xFF00)), (22, longs(6)),
                     (82, EMF_FONT), (37, longs(1)), (84, text("abc", (9, 9, 9))), (120, longs(9, 2)),
                     (84, text("a \u05d0\u05d1")), (108, longs(9, 9, 2, 0x300, 1, ONE, ONE) + b"ab"),
                     (97, BOUNDS + longs(1, ONE, ONE, 1, 5, 6, 1, 80, 0, 0, 0, 0, 0, 0) + words(65, 0)),
                     (37, longs(0x80000004)), (43, longs(0, 0, 20, 20)), (40, longs(1))),
    "bitmaps.emf": emf((49, longs(1) + words(0x300, 2) + longs(0xFF, 0xFF00)), (48, longs(1)),
                       (94, longs(2, 0, 32, 40, 72, 16) + DIB), (93, longs(3, 0, 32, 48, 80, 8) + INDEXED),
                       (37, longs(2)), (21, longs(4)), (76, blit(0x660046)), (77, blit(0xCC0020, longs(2, 2))),
                       (78, blit(0xAACC0020, longs(0, 0, 0, 184, 40, 224, 16) + DIB)),
                       (114, blit(0x01800000, longs(2, 2))), (116, blit(0xFF, longs(2, 2))),
                       (79, BOUNDS + longs(9, 9, 40, 20, 3, 30, 0, 0, 2, 2, ONE, 0, 0, ONE, 0, 0, 0, 0, 112, 40, 152, 16)
                        + DIB),
                       (80, BOUNDS + longs(9, 9, 0, 0, 2, 2, 76, 40, 116, 16, 0, 0, 2) + DIB),
                       (81, BOUNDS + longs(9, 9, 0, 0, 2, 2, 80, 44, 124, 4, 0, 0xCC0020, 30, 30) + RUNS),
                       (118, BOUNDS + longs(3, 1, 2) + (longs(3, 3) + words(0xFF00, 0, 0, 0)
                                                        + longs(40, 9) + words(0, 0xFF00, 0, 0)
                                                        + longs(9, 40) + words(0, 0, 0xFF00, 0)) + longs(0, 1, 2)),
                       (118, BOUNDS + longs(2, 1, 1) + (longs(3, 3) + words(0xFF00, 0, 0, 0)
                                                        + longs(40, 9) + words(0, 0xFF00, 0, 0)) + longs(0, 1))),
}

if __name__ == "__main__":
    folder = sys.argv[1]
    os.makedirs(folder, exist_ok=True)
    for name, seed in SEEDS.items():
        with open(os.path.join(folder, name), "wb") as file:
            file.write(seed)
