"""What was painted while the view was scrolled is saved, and nothing is lost where the folder has gone."""

import os

from desk import check, main, wait_for
from pictures import BLACK, WHITE, Picture


def pen_at_300_after_scrolling(desk):
    path, program, sheet = desk.open_picture("picture.bmp", Picture.telling_places(200, 150))
    program.press("Magnifying Tool")
    # The middle of the picture stays in the middle of the view.
    for percent, middle in (200, (100, 75)), (300, (200, 150)):
        desk.click(*sheet.place(*middle))
        caption = f"{path} - {percent}%"
        program.find(caption)
    bars = program.controls(lambda control: control.role() == "scroll bar", program.find(caption))
    x, y, width, height = next(bar.settled().rect() for bar in bars if bar.rect()[3] > bar.rect()[2] > 0)
    middle = x - 60, y + height // 2
    before = desk.screen().at(*middle)
    desk.click(x + width // 2, y + height - 25)  # below the handle
    wait_for("the picture to scroll down", lambda: before[1] < desk.screen().at(*middle)[1] < WHITE[1])

    program.press("Pen Tool")
    screen = desk.screen()
    # Each of the three columns and rows of screen pixels that show a column or row of the picture.
    for i in range(3):
        start = middle[0] + i, middle[1] + 4 * i
        end = start[0] + 50, start[1]
        (x1, row, _), (x2, _, _) = screen.at(*start), screen.at(*end)
        desk.drag(start, end)
        desk.wait_for_pixel(start, BLACK)
        desk.wait_for_pixel(end, BLACK)
        sheet.picture.row(x1, x2, row, BLACK)
    program.save(path)
    desk.expect_picture(path, sheet.picture)


def folder_that_has_gone(desk):
    os.mkdir(desk.path("there"))
    path, program, sheet = desk.open_picture("there/picture.bmp", Picture.telling_places(200, 150))
    program.press("Pen Tool")
    sheet.row(10, 60, 20, BLACK)
    os.rename(desk.path("there"), desk.path("elsewhere"))
    program.key("ctrl+s")
    program.answer("The picture could not be saved", "OK")
    check(not os.path.exists(desk.path("there")), "the folder was made anew")
    program.key("ctrl+w")
    program.answer("The image has been changed.", "Cancel")
    os.rename(desk.path("elsewhere"), desk.path("there"))
    desk.expect_picture(path, Picture.telling_places(200, 150))
    program.save(path)
    desk.expect_picture(path, sheet.picture)


main("paint_and_save", pen_at_300_after_scrolling, folder_that_has_gone)
