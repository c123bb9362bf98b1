"""A new image is made, drawn on and closed; files dropped by another program open, whatever bytes their names have."""

import os
import sys
import urllib.parse

from desk import LEFT, Sheet, check, main, wait_for
from pictures import BLACK, WHITE, Picture

REFUSED, CHANGED = "The selected picture file is missing or invalid", "The image has been changed."

# Another program: a window from which the addresses may be dragged. It tells in a file what becomes of them.
SOURCE = """
import sys, gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk
log = open(sys.argv[1], "w", buffering=1)
window = Gtk.Window(title="Source", default_width=100, default_height=100)
window.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY | Gdk.DragAction.MOVE)
window.drag_source_add_uri_targets()
def watch(context):
    if context.get_selected_action() == Gdk.DragAction.COPY:
        log.write("taken\\n")
    return context.get_selected_action() == 0
window.connect("drag-begin", lambda _, context: GLib.timeout_add(20, watch, context))
window.connect("drag-data-get", lambda _, context, data, *rest: data.set_uris(sys.argv[2:]))
window.connect("drag-data-delete", lambda *_: log.write("deleted\\n"))
window.connect("drag-end", lambda *_: log.write("end\\n"))
window.show_all()
window.move(0, 0)
Gtk.main()
"""


def drop(desk, place, paths):
    """Drags the files from another program's window to that place of the screen."""
    log = desk.path("source.log")
    addresses = ["file://" + urllib.parse.quote(os.fsencode(path)) for path in paths]
    desk.spawn([sys.executable, "-c", SOURCE, log, *addresses])
    wait_for("the other program", lambda: desk.ask("xdotool", "search", "--onlyvisible", "--name", "^Source$"))
    said = lambda: open(log, encoding="utf-8").read().split()
    desk.hand("mousemove", 50, 70, "mousedown", LEFT)
    for x, y in (60, 80), (90, 100), (place[0] - 5, place[1]), place:
        desk.hand("mousemove", x, y)
    wait_for("the window to take them", lambda: "taken" in said())
    desk.hand("mouseup", LEFT)
    wait_for("the end of the drag", lambda: "end" in said())
    check("deleted" not in said(), "the files were given away")


def new_image(desk):
    program = desk.start()
    program.key("ctrl+n")
    for entry, text in ("Name:", "drawing"), ("Width:", "120"), ("Height:", "80"):
        program.enter(entry, text)
    program.press("OK")
    sheet = Sheet(desk, program, "drawing - 100%", Picture.of(120, 80, lambda x, y: WHITE))
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    program.key("ctrl+w")
    program.answer(CHANGED, "Cancel")
    desk.wait_for_pixel(sheet.place(30, 20), BLACK)
    program.key("ctrl+w")
    program.answer(CHANGED, "Yes")
    os.mkdir(desk.path("kept"))
    path = desk.path("kept/mine.bmp")
    for typed in desk.path("kept/"), "mine":
        program.answer_file_window(typed)
    wait_for(path, lambda: os.path.exists(path))
    wait_for("the document to close", lambda: not program.shows("drawing - 100%"))
    desk.expect_picture(path, sheet.picture)

    program.key("ctrl+o")
    name = program.find("mine.bmp")
    desk.hand("mousemove", *name.settled().centre(), "click", "--repeat", 2, LEFT)
    sheet = Sheet(desk, program, f"{path} - 100%", sheet.picture)
    program.press("Pen Tool")
    sheet.row(10, 60, 40, BLACK)
    program.key("ctrl+w")
    program.answer(CHANGED, "No")
    wait_for("the document to close", lambda: not program.shows(path))

    program.key("ctrl+n")
    check(program.find("Height:", role="text").text() == "80", "the fields don't keep what was typed")
    program.key("Escape")
    wait_for("the dialog to go", lambda: not program.shows("New Image"))
    program.key("ctrl+q")
    program.expect_end()


def dropped_files(desk):
    _, program, sheet = desk.open_picture("first.bmp", Picture.telling_places(200, 150))
    odd, last = desk.path("100% odd\udcff.bmp"), desk.path("last.png")
    picture = Picture.telling_places(180, 120)
    picture.write(odd)
    picture.write(last)
    drop(desk, sheet.place(100, 75), [odd, desk.path("missing.png"), last])
    program.answer(REFUSED, "OK")
    shown = "100% odd\N{REPLACEMENT CHARACTER}.bmp"
    for name in "last.png", shown:
        program.find(f"{desk.path(name)} - 100%")
    for _ in range(2):
        program.key("ctrl+w")
    wait_for("two to close", lambda: not program.shows("last.png") and not program.shows(shown))

    for entry in "File", "Recent Files", shown:
        program.press(entry)
    sheet = Sheet(desk, program, f"{desk.path(shown)} - 100%", picture)
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    program.save(odd)
    desk.expect_picture(odd, sheet.picture)


main("new_and_drop", new_image, dropped_files)
