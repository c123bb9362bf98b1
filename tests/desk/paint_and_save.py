"""A picture is opened, painted on at two zooms, undone and saved."""

from desk import RIGHT, check, main, wait_for
from pictures import BLACK, WHITE
from sheets import open_places, save


def pen_at_100(desk):
    path, program, sheet = open_places(desk, "picture.bmp")
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    sheet.row(90, 30, 40, WHITE, RIGHT)
    save(program, path)
    desk.expect_picture(path, sheet.picture)


def pen_at_300_after_scrolling(desk):
    path, program, sheet = open_places(desk, "picture.bmp")
    whole = sheet.picture.copy()
    program.press("Magnifying Tool")
    for percent in (200, 300):
        # The middle of the picture stays in the middle of the view.
        desk.click(*sheet.place(*((100, 75) if percent == 200 else (200, 150))))
        program.find(f"{path} - {percent}%")
    bars = program.controls(lambda control: control.role() == "scroll bar" and control.within(f"{path} - 300%"))
    upright = [bar for bar in bars if bar.rect()[3] > bar.rect()[2] > 0]
    check(len(upright) == 1, f"of {[bar.rect() for bar in bars]} one is an upright scroll bar of some width")
    left, top, right, bottom = sheet.visible(whole)
    middle = (left + right) // 2, (top + bottom) // 2
    before = desk.screen().at(*middle)
    x, y, width, height = upright[0].rect()
    desk.click(x + width // 2, y + height * 4 // 5)
    wait_for("the picture to scroll", lambda: desk.screen().at(*middle) not in (before, WHITE))

    check(whole.place_of(desk.screen().at(*middle))[1] > whole.place_of(before)[1], "it scrolled upwards")
    program.press("Pen Tool")
    screen = desk.screen()
    # Each of the three columns and rows of screen pixels that show a column or row of the picture.
    for i in range(3):
        start = middle[0] + i, middle[1] + 4 * i
        end = start[0] + 50, start[1]
        (x1, y), (x2, _) = whole.place_of(screen.at(*start)), whole.place_of(screen.at(*end))
        desk.drag(start, end)
        desk.wait_for_pixel(start, BLACK)
        desk.wait_for_pixel(end, BLACK)
        sheet.picture.row(x1, x2, y, BLACK)
    save(program, path)
    desk.expect_picture(path, sheet.picture)


def undo_and_again(desk):
    path, program, sheet = open_places(desk, "picture.bmp")
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    once = sheet.picture.copy()
    sheet.row(10, 60, 30, BLACK)
    twice = sheet.picture.copy()
    program.key("ctrl+z")
    desk.wait_for_pixel(sheet.place(30, 30), once.at(30, 30))
    save(program, path)
    desk.expect_picture(path, once)
    program.key("ctrl+z")
    desk.wait_for_pixel(sheet.place(30, 30), BLACK)
    save(program, path)
    desk.expect_picture(path, twice)


main("paint_and_save", pen_at_100, pen_at_300_after_scrolling, undo_and_again)
