"""Each kind of picture opens, is drawn on and saved as another kind, and shows the same when it's opened again."""

import os
import shutil
import subprocess
import sys

from desk import Sheet, main, wait_for
from pictures import BLACK, WHITE, Picture

COLOURS = WHITE, (255, 0, 0), (0, 128, 0), (0, 0, 255), (200, 200, 0)
METAFILES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../data/metafiles")

# How ImageMagick writes a file of each ending, and the ending that it's saved with.
KINDS = {
    "bmp": ("bmp:", "gif"), "dib": ("bmp:", "tif"), "rle": ("-type palette -compress RLE bmp3:", "bmp"),
    "xbm": ("-monochrome xbm:", "ico"), "gif": ("gif:", "jpg"), "jpg": ("-quality 90 jpg:", "tif"),
    "png": ("png:", "gif"), "mng": ("mng:", "bmp"), "tif": ("-compress lzw tiff:", "ico"), "pcx": ("pcx:", "gif"),
    "jfx": ("-monochrome -compress group4 tiff:", "bmp"), "xif": ("tiff:", "tif"), "ico": ("ico:", "gif"),
    "cur": ("cur:", "bmp"),
}


def draw_and_save(desk, program, caption, picture, target):
    sheet = Sheet(desk, program, caption, picture)
    sheet.row(4, 28, 20, BLACK)
    program.key("ctrl+d")
    program.answer_file_window(target)
    program.find(f"{target} - 100%")
    return sheet.picture


def every_kind(desk):
    program = desk.start()
    program.press("Pen Tool")
    drawn = Picture.of(32, 32, lambda x, y: COLOURS[(x // 4 + y // 4) % 5])
    for ending, (how, other) in KINDS.items():
        path, target = desk.path("from." + ending), desk.path(f"{ending}.{other}")
        subprocess.run(["convert", "-size", "32x32", "-depth", "8", "rgb:-", *(how + path).split()],
                       input=drawn.pixels, check=True)
        program.key("ctrl+o")
        program.answer_file_window(path)
        picture = draw_and_save(desk, program, f"{path} - 100%", Picture.read(path), target)
        if other in ("bmp", "tif", "gif"):
            desk.expect_picture(target, picture)
        program.key("ctrl+w")
        wait_for("the document to close", lambda: not program.shows(target))
        program.key("ctrl+o")
        program.answer_file_window(target)
        Sheet(desk, program, f"{target} - 100%", Picture.read(target) if other == "jpg" else picture)
        program.key("ctrl+w")
        wait_for("the document to close", lambda: not program.shows(target))


def metafiles(desk):
    program = desk.start()
    for name in os.listdir(METAFILES):
        if name.endswith("mf"):
            path, target = shutil.copy(os.path.join(METAFILES, name), desk.folder), desk.path(name + ".bmp")
            program.key("ctrl+o")
            program.answer_file_window(path)
            program.find(f"{path} - 100%")
            program.key("ctrl+d")
            program.answer_file_window(target)
            program.find(f"{target} - 100%")
            played = Picture.read(target)
            assert len(set(zip(*[iter(played.pixels)] * 3))) > 8, f"{name} shows next to nothing"


main("every_format", every_kind, metafiles)
