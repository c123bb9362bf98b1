"""The program is started with what is no picture, and left with changed documents."""

from desk import Sheet, check, main, wait_for
from pictures import BLACK, Picture

REFUSED, CHANGED = "The selected picture file is missing or invalid", "The image has been changed."


def half_a_picture(desk):
    path = desk.path("half.png")
    Picture.telling_places(200, 150).write(path)
    with open(path, "r+b") as file:
        file.truncate(len(file.read()) // 2)
    program = desk.start("half.png")
    program.answer(REFUSED, "OK")
    check(not program.shows(" - 100%"), "a document is open")
    program.key("ctrl+q")
    program.expect_end()


def changed_documents(desk):
    second, program, _ = desk.open_picture("second.bmp", Picture.telling_places(200, 150))
    program.key("ctrl+q")
    program.expect_end()

    first, program, sheet = desk.open_picture("first.bmp", Picture.telling_places(200, 150))
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    for entry in "File", "Recent Files", "second.bmp":
        program.press(entry)
    sheet = Sheet(desk, program, f"{second} - 100%", Picture.telling_places(200, 150))
    sheet.row(10, 60, 20, BLACK)

    program.key("ctrl+q")
    wait_for("the question", lambda: program.shows(CHANGED) and program.shows("Changed Image"))
    program.press("No")
    wait_for("the first document to close", lambda: not program.shows(first))
    program.answer(CHANGED, "Cancel")
    check(program.shows(second), "the second document stays")
    program.key("ctrl+q")
    program.answer(CHANGED, "Yes")
    program.expect_end()
    desk.expect_picture(first, Picture.telling_places(200, 150))
    desk.expect_picture(second, sheet.picture)


main("start_and_leave", half_a_picture, changed_documents)
