"""The program is started with what is no picture, left with changed documents, and keeps a swatch."""

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


def a_swatch_for_the_next_start(desk):
    picture, colour = Picture.telling_places(200, 150), (200, 30, 0)
    path, program, _ = desk.open_picture("swatch.bmp", picture)
    program.enter("Red", "200")
    program.enter("Green", "30")
    x, y, width, height = program.find("Add New Swatch").settled().rect()
    desk.click(x + width // 2, y + height - 8)  # below the swatches that come with the program
    program.enter("Enter the name for the new swatch:", "Blood orange")
    program.press("OK")
    program.find("Blood orange")
    wait_for("the main window in front", program.in_front)
    program.key("ctrl+q")
    program.expect_end()

    program = desk.start(path)
    sheet = Sheet(desk, program, f"{path} - 100%", picture)
    program.press("Blood orange")
    program.press("Pen Tool")
    sheet.row(10, 60, 20, colour)
    program.save(path)
    desk.expect_picture(path, sheet.picture)


main("start_and_leave", half_a_picture, changed_documents, a_swatch_for_the_next_start)
