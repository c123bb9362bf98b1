"""The program is left with changed documents, which asks for each."""

from desk import check, main, wait_for
from pictures import BLACK, Picture
from sheets import Sheet, open_places

QUESTION = "The image has been changed."


def two_changed(desk):
    """Two pictures opened from files, both changed; their paths, in the order of opening, and the program."""
    second, program, _ = open_places(desk, "second.png")
    program.key("ctrl+q")
    check(program.wait_for_end() == 0, f"exit code {program.process.returncode}")

    first, program, sheet = open_places(desk, "first.png")
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    for entry in ("File", "Recent Files", "second.png"):
        program.press(entry)
    sheet = Sheet(desk, program, f"{second} - 100%", Picture.telling_places(200, 150))
    sheet.wait_until_shown()
    sheet.row(10, 60, 20, BLACK)
    return first, second, program


def leave(program):
    program.key("ctrl+q")
    program.wait_for_text(QUESTION)
    check(program.shows("Changed Image"), "the question bears another title")


def open_captions(program):
    return sorted({control.name() for control in program.controls(lambda control: control.name().endswith(" - 100%"))})


def cancel_at_the_second(desk):
    first, second, program = two_changed(desk)
    leave(program)
    program.press("No")
    wait_for("the first document to close", lambda: not program.shows(first))
    program.answer(QUESTION, "Cancel")
    check(open_captions(program) == [f"{second} - 100%"], f"open are {open_captions(program)}")
    leave(program)
    program.press("No")
    check(program.wait_for_end() == 0, f"exit code {program.process.returncode}")


def no_to_both(desk):
    first, second, program = two_changed(desk)
    leave(program)
    program.press("No")
    wait_for("the first document to close", lambda: not program.shows(first))
    program.press("No")
    check(program.wait_for_end() == 0, f"exit code {program.process.returncode}")
    for path in first, second:
        desk.expect_picture(path, Picture.telling_places(200, 150))


def yes_saves(desk):
    path, program, sheet = open_places(desk, "picture.bmp")
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    leave(program)
    program.press("Yes")
    check(program.wait_for_end() == 0, f"exit code {program.process.returncode}")
    desk.expect_picture(path, sheet.picture)


main("exit_sweep", cancel_at_the_second, no_to_both, yes_saves)
