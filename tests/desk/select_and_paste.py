"""A selection dragged, painted into, copied to other programs and back, and the picture cropped by the keyboard."""

import os
import subprocess
import sys

from desk import check, main, wait_for
from pictures import BLACK, WHITE, Picture

# Another program: takes the clipboard's picture, offers it itself from then on, and keeps it in a file.
PARTNER = """
import os, sys, gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk
clipboard = Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD)
taken = clipboard.wait_for_image()
clipboard.set_image(taken)
Gdk.Display.get_default().sync()
taken.savev(sys.argv[1] + ".part", "png", [], [])
os.rename(sys.argv[1] + ".part", sys.argv[1])
Gtk.main()
"""


def selection(desk):
    path, program, sheet = desk.open_picture("picture.bmp", Picture.telling_places(200, 150))
    picture = sheet.picture
    part = picture.cut(20, 20, 40, 30)

    program.press("Select Area Tool")
    desk.drag(sheet.place(20, 20), sheet.place(60, 50))
    program.press("Cursor")
    desk.drag(sheet.place(30, 30), sheet.place(110, 70))
    desk.wait_for_pixel(sheet.place(25, 25), WHITE)
    picture.lay(Picture.of(40, 30, lambda x, y: WHITE), 20, 20)

    program.press("Pen Tool")
    desk.drag(sheet.place(90, 70), sheet.place(120, 70))
    desk.wait_for_pixel(sheet.place(110, 70), BLACK)
    check(desk.screen().at(*sheet.place(95, 70)) == picture.at(95, 70), "the pen painted beside the selection")
    part.row(0, 20, 10, BLACK)
    picture.lay(part, 100, 60)

    program.key("ctrl+c")
    clipboard = ["xclip", "-selection", "clipboard", "-t"]
    wait_for("the picture on the clipboard", lambda: "image/bmp" in desk.ask(*clipboard, "TARGETS", "-o"))
    with open(desk.path("taken.bmp"), "wb") as file:
        subprocess.run([*clipboard, "image/bmp", "-o"], stdout=file, check=True)
    desk.expect_picture(desk.path("taken.bmp"), part)
    desk.spawn([sys.executable, "-c", PARTNER, desk.path("taken.png")])
    wait_for("the partner's copy", lambda: os.path.exists(desk.path("taken.png")))
    desk.expect_picture(desk.path("taken.png"), part)
    program.key("ctrl+v")
    desk.wait_for_pixel(sheet.place(10, 10), BLACK)
    picture.lay(part, 0, 0)

    # What is transparent comes to lie on white.
    subprocess.run(["convert", "-size", "30x20", "xc:none", desk.path("clear.png")], check=True)
    subprocess.run([*clipboard, "image/png", "-i", desk.path("clear.png")], stdout=subprocess.DEVNULL, check=True)
    program.key("ctrl+v")
    desk.wait_for_pixel(sheet.place(10, 10), WHITE)
    picture.lay(Picture.of(30, 20, lambda x, y: WHITE), 0, 0)

    program.press("Crop Tool")
    desk.drag(sheet.place(5, 5), sheet.place(150, 120))
    wait_for("the question", lambda: program.shows("Are you sure you wish to crop?"))
    program.key("alt+y")
    wait_for("the end of the question", lambda: not program.shows("Are you sure you wish to crop?"))
    program.save(path)
    desk.expect_picture(path, picture.cut(5, 5, 145, 115))


main("select_and_paste", selection)
