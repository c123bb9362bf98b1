"""Text that is typed on the picture is printed where it was seen, and can be undone."""

from desk import check, main, wait_for
from pictures import Picture

PLACE = 30, 40


def open_box(desk, program, sheet):
    """A press with the Text tool; the box that then has the keyboard."""
    program.press("Text Tool")
    desk.click(*sheet.place(*PLACE))
    box = program.find("Text", role="text")
    wait_for("the keyboard in the box", box.has_keyboard)
    return box


def type_into(desk, box, text):
    for i, line in enumerate(text.split("\n")):
        if i > 0:
            desk.hand("key", "Return")
        desk.hand("type", "--delay", 1, line)
    wait_for(f'the text "{text}"', lambda: box.text() == text)


def changed(before, after):
    return [(x, y) for y in range(before.height) for x in range(before.width) if before.at(x, y) != after.at(x, y)]


def word_applied_and_undone(desk):
    path, program, sheet = desk.open_picture("picture.bmp", Picture.telling_places(200, 150))
    box = open_box(desk, program, sheet)
    type_into(desk, box, "Two\nlines")
    left, top, width, height = box.settled().rect()
    x, y = sheet.place(*PLACE)
    # A smooth edge may touch the column before, and the box then shows it.
    check(left in (x - 1, x) and top == y, f"the box stands at {left}, {top}")
    program.press("Apply Text")
    wait_for("the box to go", lambda: not box.renewed().seen())
    program.save(path)
    printed = changed(sheet.picture, Picture.read(path))
    check(printed, "nothing was printed")
    check(all(-1 <= x - PLACE[0] < width and 0 <= y - PLACE[1] < height for x, y in printed),
          f"from {printed[0]} to {printed[-1]} isn't within the box of {width} x {height}")
    program.key("ctrl+z")
    program.save(path)
    desk.expect_picture(path, sheet.picture)


def keys_are_the_boxs_own(desk):
    path, program, sheet = desk.open_picture("picture.bmp", Picture.telling_places(200, 150))
    box = open_box(desk, program, sheet)
    type_into(desk, box, "word")
    program.key("ctrl+a", "ctrl+x")
    wait_for("an empty box", lambda: box.text() == "")
    program.key("ctrl+v", "ctrl+v", "ctrl+i", "Home", "Delete")
    wait_for("what was pasted", lambda: box.text() == "ordword")
    program.press("Cancel Text")
    wait_for("the box to go", lambda: not box.renewed().seen())
    program.save(path)
    desk.expect_picture(path, sheet.picture)


if __name__ == "__main__":
    main("type_text", word_applied_and_undone, keys_are_the_boxs_own)
