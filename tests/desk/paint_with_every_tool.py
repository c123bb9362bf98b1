"""Every painting tool on a striped picture, at 100 % and at 300 %: what is saved is the kept picture, to the pixel.

With ZELVANE_DESK_KEEP set the kept picture is written anew; look at it before it's trusted.
"""

import os
import re
import shutil

from desk import LEFT, RIGHT, SCREEN, Sheet, check, main, wait_for
from pictures import Picture

KEPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "kept", "every_tool.png")
KEEP = "ZELVANE_DESK_KEEP" in os.environ  # asked early: a desk clears its environment

# A step is a colour with its numbers, an option with its number, the way of a stroke, keys, or a button's name.
SCRIPT = """
Foreground color 200 30 60 | Background color 20 160 90
Floodfill Tool | left 105,150 | right 115,80
Gradient Tool | left 206,80 220,100 230,80
Pen Tool | Brush: 3 | left 10,10 50,10 50,24 | right 90,20 62,20
Straight Line | left 10,36 30,70 60,52 | Brush: 12 | right 85,45
Airbrush Tool | Size: 12 | Pressure: 80 | left 140,20 | right 25,75
Rectangle Tool | Bordersize: 3 | Border and Fill | left 165,12 190,38 195,32 | right 155,60 130,45
Fill Only | Round corners? | left 165,45 197,65
Circle Tool | Bordersize: 4 | Border and Fill | left 128,75 160,105 | Fill Only | right 50,65 90,95
Brighten Tool | Size: 8 | Pressure: 100 | left 20,110 | Darken | right 50,112
Blur Tool | Size: 9 | left 80,112
Eraser Tool | Eraser width: 7 | left 10,133 60,133 | right 75,140
Eyedropper Tool | left 5,150 | right 15,150
Pen Tool | Brush: 5 | left 130,118 160,118 | right 130,126 160,126
Swap Colors | left 130,134 160,134 | right 130,142 160,142
Foreground color 113 96 161 | left 130,150 160,150
Eraser Tool | Clear | ctrl+z
"""


def open_stripes(desk):
    """The program with a picture: stripes of ten columns, and a flat area right of them."""
    return desk.open_picture("striped.bmp", Picture.of(240, 160, lambda x, y: (
        (90, 140, 110) if x >= 120 else (64, 96, 160) if x // 10 % 2 else (192, 176, 128))))


def type_colour(desk, program, name, colour):
    """Edits the foreground or background colour by its numbers."""
    wait_for(f'"{name}" in front', program.in_front)
    x, y, width, height = program.find(name).settled().rect()
    desk.click(x + width - 4, y + height - 4)  # where nothing lies over the label
    for box, number in zip(("Red", "Green", "Blue"), colour):
        program.enter(box, number)
    desk.wait_for_pixel((x + width - 4, y + height - 4), tuple(map(int, colour)))


def stroke(desk, program, sheet, button, places):
    """Presses at the first place, moves over the others and releases at the last; the program tells at each place
    that it has seen the pointer there."""
    wait_for("the program in front", program.in_front)
    for i, place in enumerate(places):
        desk.hand("mousemove", *sheet.place(*place))
        wait_for(f"the pointer at {place}", lambda: program.shows("%d, %d" % place))
        if i == 0:
            desk.hand("mousedown", button)
    desk.hand("mouseup", button)


def paint(desk, program, sheet, path):
    for step in re.split(r" \| |\n", SCRIPT.strip()):
        if words := re.fullmatch(r"(\w+ground color) (\d+) (\d+) (\d+)", step):
            type_colour(desk, program, words[1], words.groups()[1:])
        elif words := re.fullmatch(r"(.+:) (\d+)", step):
            program.enter(words[1], words[2])
        elif words := re.fullmatch(r"(left|right) (.+)", step):
            places = [tuple(map(int, place.split(","))) for place in words[2].split()]
            stroke(desk, program, sheet, LEFT if words[1] == "left" else RIGHT, places)
        elif "+" in step:
            program.key(step)
        else:
            program.press(step)
    program.save(path)
    if KEEP and sheet.zoom == 1:
        Picture.read(path).write(KEPT)
    desk.expect_picture(path, Picture.read(KEPT))


def at_100(desk):
    path, program, sheet = open_stripes(desk)
    paint(desk, program, sheet, path)


def at_300(desk):
    path, program, sheet = open_stripes(desk)
    fill_screen(desk, program)
    program.press("Magnifying Tool")
    for percent in 200, 300:
        desk.click(*sheet.place(20, 20))
        document = program.find(f"{path} - {percent}%")
    # The window grows with the zoom, as there is room.
    wait_for("the document to grow", lambda: document.renewed().rect()[2] > 3 * sheet.picture.width)
    paint(desk, program, Sheet(desk, program, f"{path} - 300%", sheet.picture, 3), path)


def fill_screen(desk, program):
    """Makes the main window fill the screen by its title."""
    frame = program.find(" Zelvane")
    x, y, width, _ = frame.rect()
    desk.hand("mousemove", x + width // 2, y - 8, "click", "--repeat", 2, "--delay", 50, LEFT)
    wait_for("the main window to fill the screen", lambda: frame.renewed().rect()[2] == SCREEN[0])
    wait_for("the main window in front", program.in_front)


def look(desk, control):
    """How a button's edges stand against its face: "raised", "sunken", or "flat" without any."""
    x, y, width, height = control.rect()
    screen = desk.screen()
    face, left, top, right, bottom = (sum(screen.at(x + dx, y + dy)) for dx, dy in (
        (2, 2), (0, height // 2), (width // 2, 0), (width - 1, height // 2), (width // 2, height - 1)))
    if left == top == right == bottom == face:
        return "flat"
    if left == top > face > right == bottom:
        return "raised"
    return "sunken" if left == top < right == bottom else "neither"


def buttons_follow_the_pointer(desk):
    _, program, sheet = open_stripes(desk)

    def expect_looks(**wanted):
        for name, how in wanted.items():
            control = program.find(name.replace("_", " "))
            wait_for(f'"{control.name()}" to look {how}', lambda: look(desk, control) == how)

    expect_looks(Cursor="sunken", Pen_Tool="flat")
    pen = program.find("Pen Tool").settled().centre()
    for _ in range(2):
        desk.hand("mousemove", *pen)
        expect_looks(Pen_Tool="raised")
        desk.hand("mousemove", *sheet.place(60, 60))
        expect_looks(Pen_Tool="flat")
    desk.click(*pen)
    desk.hand("mousemove", *sheet.place(60, 60))
    expect_looks(Pen_Tool="sunken", Cursor="flat", Freehand="sunken", Straight_Line="flat")
    program.press("Straight Line")
    expect_looks(Straight_Line="sunken", Freehand="flat")


def text_in_a_picked_font(desk):
    # A font that goes while the program runs stands first in the list.
    going = desk.path("going.ttf")
    shutil.copy("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", going)
    os.environ["FONTCONFIG_FILE"] = desk.path("fonts.conf")
    with open(desk.path("fonts.conf"), "w", encoding="utf-8") as settings:
        settings.write(f"""<fontconfig><dir>{desk.folder}</dir><dir>/usr/share/fonts/truetype/dejavu</dir>
            <cachedir>{desk.path("tmp")}</cachedir><match target="scan"><test name="file"><string>{going}</string></test>
            <edit name="family" mode="assign"><string>Agoing</string></edit></match></fontconfig>""")
    _, program, sheet = open_stripes(desk)

    def ink():
        screen = desk.screen()
        return sum(screen.at(*sheet.place(x, y)) != sheet.picture.at(x, y)
                   for x in range(125, 235) for y in range(15, 75))

    def drops_down(name):
        return bool(program.controls(lambda control: control.name() == name and "list" in control.role()))

    program.press("Text Tool")
    wait_for("the first font", lambda: program.shows(" Agoing"))
    os.remove(going)
    for pick in ("Agoing", "DejaVu Serif"):
        program.press("Fonts")
        program.find("Font", role="list")
        program.press(pick)
        wait_for(f"the font {pick}", lambda: program.shows(f" {pick}") and not drops_down("Font"))
    program.press("Font styles")
    program.find("Font style", role="list")
    program.key("b", "Return")
    wait_for("the style", lambda: program.shows(" Bold") and not drops_down("Font style"))
    desk.click(*sheet.place(130, 20))
    program.find("Text", role="text")
    program.key("W", "e", "l", "l")
    program.press("Apply Text")
    wait_for("the box to close", lambda: not program.controls(
        lambda control: control.name() == "Text" and "text" in control.role()))
    desk.hand("mousemove", *sheet.place(60, 120))
    check(ink() > 0, "nothing was printed")
    program.key("ctrl+z")
    wait_for("the text to be undone", lambda: ink() == 0)


main("paint_with_every_tool", at_100, at_300, buttons_follow_the_pointer, text_in_a_picked_font)
