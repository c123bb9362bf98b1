"""A striped picture is painted on with every painting tool, at 100 % and at 300 %, and compared to the pixel; how the
tool buttons look and which options they bring; what an option's box makes of wrong input.

What comes out is expected twice: computed here pixel by pixel wherever a rule says what a tool paints, and kept as a
picture, which also holds the round shapes. With ZELVANE_DESK_KEEP set the kept picture is written anew; look at it
before it's trusted.
"""

import os
import re

from desk import LEFT, RIGHT, SCREEN, check, main, wait_for
from pictures import WHITE, Picture
from sheets import Sheet, open_picture, save

KEPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "kept", "every_tool.png")
KEEP = "ZELVANE_DESK_KEEP" in os.environ  # asked early: a desk clears its environment
DARK, LIGHT, FLAT = (64, 96, 160), (192, 176, 128), (90, 140, 110)
FRONT, BACK = (200, 30, 60), (20, 160, 90)
FLAT_FROM = 120  # the first column right of the stripes
GRADIENT = 206, 230  # press and release of the gradient
# Boxes round what only the kept picture knows whole: left, top, right, bottom, edges included.
ROUND_SHAPES = (165, 45, 197, 65), (124, 71, 164, 109), (50, 65, 90, 95)


def striped():
    """Stripes of ten columns, and a flat area right of them."""
    return Picture.of(240, 160, lambda x, y: FLAT if x >= FLAT_FROM else DARK if x // 10 % 2 else LIGHT)


# What the tools paint, from their rules.

def put(picture, x, y, colour):
    if 0 <= x < picture.width and 0 <= y < picture.height:
        picture.row(x, x, y, colour)


def pen(picture, start, end, width, colour):
    """Every pixel within half the width of the way from start to end. Doubled, so that half pixels are whole: a pen of
    even width has its middle half a pixel up and left."""
    shift = 1 - width % 2
    (x1, y1), (x2, y2) = ((2 * x - shift, 2 * y - shift) for x, y in (start, end))
    across, down = x2 - x1, y2 - y1
    length2 = across ** 2 + down ** 2
    for y in range(picture.height):
        for x in range(picture.width):
            u, v = 2 * x - x1, 2 * y - y1
            along = u * across + v * down
            if along <= 0:
                hit = u ** 2 + v ** 2 <= width ** 2
            elif along >= length2:
                hit = (2 * x - x2) ** 2 + (2 * y - y2) ** 2 <= width ** 2
            else:
                hit = (u * down - v * across) ** 2 <= width ** 2 * length2
            if hit:
                put(picture, x, y, colour)


def box(picture, corner, opposite, width, border, fill):
    (left, top), (right, bottom) = corner, opposite
    for y in range(top, bottom + 1):
        picture.row(left, right, y, fill)
    corners = (left, top), (right, top), (right, bottom), (left, bottom), (left, top)
    for start, end in zip(corners, corners[1:]):
        pen(picture, start, end, width, border)


def rings_of(size):
    """Radii from the inside out."""
    steps = round(size / 2)
    return [round(size / steps * i) for i in range(1, steps + 1)]


def soft_dab(picture, centre, size, goal, start, length):
    """The innermost ring leaves start + 1 steps of `length` to the goal, each further one a step more."""
    radii = rings_of(size)
    for dy in range(-size, size + 1):
        for dx in range(-size, size + 1):
            ring = next((i for i, radius in enumerate(radii, 1) if dx * dx + dy * dy <= radius * radius), None)
            if ring:
                x, y = centre[0] + dx, centre[1] + dy
                old = picture.at(x, y)
                put(picture, x, y, tuple(min(max(round(to - (start + ring) * (to - was) / length), 0), 255)
                                         for to, was in zip(goal, old)))


def airbrush(picture, centre, size, pressure, goal):
    steps = round(size / 2)
    soft_dab(picture, centre, size, goal, round((10 - pressure / 10) * steps), round((11 - pressure / 10) * steps))


def brighten(picture, centre, size, pressure, goal):
    steps = round(size / 2)
    soft_dab(picture, centre, size, goal, round((100 - pressure) * steps), round((101 - pressure) * steps))


def blur(picture, centre, size):
    """Ring by ring, column by column from the left and downwards: a pixel with its left, upper and upper left
    neighbour, all four become their mean."""
    inner = -1
    for radius in rings_of(size):
        for dx in range(-radius, radius + 1):
            for dy in range(-radius, radius + 1):
                if not inner < dx * dx + dy * dy <= radius * radius:
                    continue
                x, y = centre[0] + dx, centre[1] + dy
                block = (x, y), (x, y - 1), (x - 1, y - 1), (x - 1, y)
                mean = tuple(round(sum(picture.at(*place)[i] for place in block) / 4) for i in range(3))
                for place in block:
                    put(picture, *place, mean)
        inner = radius * radius


def gradient(picture, start, end, first, last):
    """Upright lines three pixels wide, from left to right in half pixels, on one another. `start` may lie between two
    columns."""
    length = round(end - start)
    before = None
    for half in range(int(2 * (end - start)) + 1):
        column, position = round(start + half / 2), round(half / 2)
        if column == before:
            continue
        before = column
        colour = tuple(round(a - position * (a - b) / length) for a, b in zip(first, last))
        for y in range(picture.height):
            picture.row(column - 1, column + 1, y, colour)


# What a person does.

def colour_place(program, name):
    """A spot of a current colour's label that nothing lies over."""
    x, y, width, height = program.find(name).settled().rect()
    return x + width - 4, y + height - 4


def type_colour(desk, program, name, colour):
    """Edits the foreground or background colour by its numbers."""
    wait_for(f'"{name}" in front', program.in_front)
    desk.click(*colour_place(program, name))
    program.enter("Red")
    for box_name, value, leave in zip(("Red", "Green", "Blue"), colour, ("Tab", "Tab", "Return")):
        # The key takes the keyboard from box to box, and what a box holds is then selected.
        entry = program.entry(box_name)
        wait_for(f'the keyboard in "{box_name}"', entry.has_keyboard)
        program.key(*str(value))
        entry.wait_for_text(str(value))
        program.key(leave)
    desk.wait_for_pixel(colour_place(program, name), colour)


def type_option(program, name, number, shown):
    """Types a number into an option's box and leaves it."""
    entry = program.enter(name, *str(number))
    entry.wait_for_text(str(number))
    program.key("Tab")
    entry.wait_for_text(shown)


def read_out(program):
    """The read-out of the pointer's place."""
    return wait_for("the read-out of the pointer", lambda: program.controls(
        lambda control: re.fullmatch(r"-?\d+, -?\d+", control.name())))[0]


class Hand:
    """Paints on a sheet with the pointer, and notes in `computed` what comes of it."""

    def __init__(self, desk, program, sheet):
        self.desk, self.program, self.sheet = desk, program, sheet
        self.computed = sheet.picture
        self.coords = read_out(program)

    def take(self, tool):
        self.program.press(tool)

    def move_to(self, place):
        """Until the program tells that the pointer is there, so that it has seen each step."""
        self.desk.hand("mousemove", *self.sheet.place(*place))
        wanted = "%d, %d" % place
        wait_for(f"the pointer at {wanted}", lambda: self.coords.renewed().name() == wanted)

    def stroke(self, *places, button=LEFT, shows):
        """Presses at the first place, moves over the others and releases at the last; then waits until `shows`, a
        place and a colour."""
        wait_for("the program in front", self.program.in_front)
        self.move_to(places[0])
        self.desk.hand("mousedown", button)
        for place in places[1:]:
            self.move_to(place)
        self.desk.hand("mouseup", button)
        place, colour = shows
        self.desk.wait_for_pixel(self.sheet.place(*place), colour)

    def computed_stroke(self, *places, button=LEFT, shows):
        """The same where `computed` already has what comes: waits for its colour at `shows`."""
        self.stroke(*places, button=button, shows=(shows, self.computed.at(*shows)))


def fill_and_shade(desk, program, hand, start):
    """Whole areas first, of which each is bounded by another colour."""
    picture = hand.computed
    hand.take("Floodfill Tool")
    for y in range(picture.height):
        picture.row(100, 109, y, FRONT)
        picture.row(110, 119, y, BACK)
    hand.computed_stroke((105, 150), shows=(105, 20))
    hand.computed_stroke((115, 80), button=RIGHT, shows=(115, 20))
    hand.take("Gradient Tool")
    gradient(picture, start, GRADIENT[1], FRONT, BACK)
    check(picture.at(205, 0) == FRONT and picture.at(231, 159) == BACK, "the gradient has both colours whole")
    # From the middle on a way down is no part of it: only the release counts.
    hand.computed_stroke((GRADIENT[0], 80), (220, 100), (GRADIENT[1], 80), shows=(206, 10))


def draw_with_the_pen(desk, program, hand):
    picture = hand.computed
    hand.take("Pen Tool")
    type_option(program, "Brush:", 3, "3 pixel(s)")
    pen(picture, (10, 10), (50, 10), 3, FRONT)
    pen(picture, (50, 10), (50, 24), 3, FRONT)
    hand.computed_stroke((10, 10), (50, 10), (50, 24), shows=(50, 24))
    pen(picture, (90, 20), (62, 20), 3, BACK)
    hand.computed_stroke((90, 20), (62, 20), button=RIGHT, shows=(62, 20))
    program.press("Straight Line")
    # The way that the pointer takes meanwhile leaves nothing.
    pen(picture, (10, 36), (60, 52), 3, FRONT)
    hand.computed_stroke((10, 36), (30, 70), (60, 52), shows=(60, 52))

    drag_slider(desk, program, "Brush:", 10)
    # Of 104 pixels for 99 widths the handle now has 12: it stood at 2 for a width of 3.
    program.entry("Brush:").wait_for_text("12 pixel(s)")
    pen(picture, (85, 45), (85, 45), 12, BACK)
    hand.computed_stroke((85, 45), button=RIGHT, shows=(85, 45))


def drag_slider(desk, program, name, pixels):
    """Opens the slider of an option, drags its handle to the right and closes it."""
    program.press(f"Slider for {name}")
    handle = program.find("Slider").settled()
    x, y, _, _ = handle.rect()
    middle = handle.centre()
    desk.hand("mousemove", *middle, "mousedown", LEFT, "mousemove", middle[0] + pixels, middle[1])
    wait_for("the slider's handle to follow", lambda: handle.renewed().rect()[:2] == (x + pixels, y))
    desk.hand("mouseup", LEFT)
    program.press(f"Slider for {name}")
    wait_for("the slider to close", lambda: not handle.renewed().seen())


def spray(desk, program, hand):
    picture = hand.computed
    hand.take("Airbrush Tool")
    type_option(program, "Size:", 12, "12 pixel(s)")
    type_option(program, "Pressure:", 80, "80 %")
    airbrush(picture, (140, 20), 12, 80, FRONT)
    # 6 rings; a way of 18 steps, of which the innermost ring leaves 13.
    check(picture.at(140, 20) == tuple(round(to - 13 * (to - was) / 18) for to, was in zip(FRONT, FLAT)),
          "the middle of the dab is as reckoned by hand")
    hand.computed_stroke((140, 20), shows=(140, 20))
    airbrush(picture, (25, 75), 12, 80, BACK)
    hand.computed_stroke((25, 75), button=RIGHT, shows=(25, 75))


def draw_boxes(desk, program, hand):
    picture = hand.computed
    hand.take("Rectangle Tool")
    type_option(program, "Bordersize:", 3, "3 pixel(s)")
    program.press("Border and Fill")
    box(picture, (165, 12), (195, 32), 3, FRONT, BACK)
    hand.computed_stroke((165, 12), (190, 38), (195, 32), shows=(195, 32))
    box(picture, (130, 45), (155, 60), 3, BACK, FRONT)
    hand.computed_stroke((155, 60), (130, 45), button=RIGHT, shows=(140, 50))
    program.press("Fill Only")
    program.press("Round corners?")
    hand.stroke((165, 45), (197, 65), shows=((180, 55), FRONT))


def draw_ellipses(desk, program, hand):
    hand.take("Circle Tool")
    type_option(program, "Bordersize:", 4, "4 pixel(s)")
    program.press("Border and Fill")
    hand.stroke((128, 75), (160, 105), shows=((128, 90), FRONT))
    program.press("Fill Only")
    hand.stroke((50, 65), (90, 95), button=RIGHT, shows=((70, 80), BACK))


def lighten_and_blur(desk, program, hand):
    picture = hand.computed
    hand.take("Brighten Tool")
    type_option(program, "Size:", 8, "8 pixel(s)")
    type_option(program, "Pressure:", 100, "100 %")
    brighten(picture, (20, 110), 8, 100, WHITE)
    check(picture.at(20, 110) == tuple(round(255 - (255 - was) / 4) for was in LIGHT), "a quarter is left to white")
    hand.computed_stroke((20, 110), shows=(20, 110))
    program.press("Darken")
    brighten(picture, (50, 112), 8, 100, (0, 0, 0))
    hand.computed_stroke((50, 112), button=RIGHT, shows=(50, 112))
    hand.take("Blur Tool")
    type_option(program, "Size:", 9, "9 pixel(s)")
    blur(picture, (80, 112), 9)
    check(picture.at(80, 112) not in (DARK, LIGHT), "the blur shows where two stripes meet")
    hand.computed_stroke((80, 112), shows=(80, 112))


def erase(desk, program, hand):
    picture = hand.computed
    hand.take("Eraser Tool")
    type_option(program, "Eraser width:", 7, "7 pixel(s)")
    pen(picture, (10, 133), (60, 133), 7, WHITE)
    for y in range(130, 137):
        check(picture.at(35, y) == WHITE, "the eraser is seven rows high")
    hand.computed_stroke((10, 133), (60, 133), shows=(60, 133))
    pen(picture, (75, 140), (75, 140), 7, WHITE)
    hand.computed_stroke((75, 140), button=RIGHT, shows=(75, 140))


def take_colours(desk, program, hand):
    """Colours from the picture, exchanged, and from a bar; the pen draws with each."""
    picture = hand.computed
    hand.take("Eyedropper Tool")
    hand.stroke((5, 150), shows=((5, 150), LIGHT))
    desk.wait_for_pixel(colour_place(program, "Foreground color"), LIGHT)
    hand.stroke((15, 150), button=RIGHT, shows=((15, 150), DARK))
    desk.wait_for_pixel(colour_place(program, "Background color"), DARK)
    hand.take("Pen Tool")
    type_option(program, "Brush:", 5, "5 pixel(s)")

    def line(y, colour, button=LEFT):
        pen(picture, (130, y), (160, y), 5, colour)
        hand.computed_stroke((130, y), (160, y), button=button, shows=(160, y))

    line(118, LIGHT)
    line(126, DARK, RIGHT)
    program.press("Swap Colors")
    desk.wait_for_pixel(colour_place(program, "Foreground color"), DARK)
    desk.wait_for_pixel(colour_place(program, "Background color"), LIGHT)
    line(134, DARK)
    line(142, LIGHT, RIGHT)
    x, y, _, height = program.find("Red bar").settled().rect()
    wait_for("the bar in front", program.in_front)
    desk.click(x + 40, y + height // 2)
    # The marker's edge goes to the pointer, its middle tells the colour: in 256ths of the bar's 101 pixels.
    red = round((40 + 9 / 2) * 256 / 101)
    program.entry("Red").wait_for_text(str(red))
    # While a bar is held all three numbers are told by the markers, which show 255ths and are read in 256ths.
    line(150, (red, *(round(channel * 256 / 255) for channel in DARK[1:])))


def clear_and_undo(desk, program, hand):
    hand.take("Eraser Tool")
    middle = hand.sheet.place(105, 10)
    before = hand.computed.at(105, 10)
    desk.wait_for_pixel(middle, before)
    program.press("Clear")
    desk.wait_for_pixel(middle, WHITE)
    program.key("ctrl+z")
    desk.wait_for_pixel(middle, before)


def expect_painted(desk, path, computed, start):
    """The saved file holds what is computed, but for the round shapes, and what is kept."""
    saved = desk.read_picture(path)
    outside = saved.copy()
    for left, top, right, bottom in ROUND_SHAPES:
        for y in range(top, bottom + 1):
            for x in range(left, right + 1):
                put(outside, x, y, computed.at(x, y))
    place = outside.first_difference(computed)
    if place is not None:
        desk.expect_picture(path, computed)
    for place, colour in (
            ((165, 45), FLAT), ((196, 64), FLAT), ((165, 55), FRONT), ((196, 55), FRONT), ((181, 45), FRONT),
            ((181, 64), FRONT),  # a box with round corners has no corners, but all four sides
            ((128, 75), FLAT), ((144, 75), FRONT), ((128, 90), FRONT), ((159, 90), FRONT), ((144, 90), BACK),
            ((50, 65), DARK), ((70, 65), BACK), ((50, 80), BACK), ((89, 80), BACK), ((70, 94), BACK)):
        check(saved.at(*place) == colour, f"pixel {place} is {saved.at(*place)}, not {colour}")

    if KEEP and start == GRADIENT[0]:
        saved.write(KEPT)
    kept = desk.read_picture(KEPT)
    # The kept gradient began in the middle of a pixel.
    gradient_only = kept.copy()
    gradient(gradient_only, start, GRADIENT[1], FRONT, BACK)
    desk.expect_picture(path, gradient_only)


def paint_all(desk, program, sheet, path, start):
    hand = Hand(desk, program, sheet)
    type_colour(desk, program, "Foreground color", FRONT)
    type_colour(desk, program, "Background color", BACK)
    fill_and_shade(desk, program, hand, start)
    for part in (draw_with_the_pen, spray, draw_boxes, draw_ellipses, lighten_and_blur, erase, take_colours,
                 clear_and_undo):
        part(desk, program, hand)
    save(program, path)
    expect_painted(desk, path, hand.computed, start)


def at_100(desk):
    path, program, sheet = open_picture(desk, "striped.bmp", striped())
    paint_all(desk, program, sheet, path, GRADIENT[0])


def at_300(desk):
    path, program, sheet = open_picture(desk, "striped.bmp", striped())
    program.press("Magnifying Tool")
    for percent in (200, 300):
        desk.click(*sheet.place(20, 20))
        program.find(f"{path} - {percent}%")
    make_room(desk, program, f"{path} - 300%")
    sheet = Sheet(desk, program, f"{path} - 300%", sheet.picture, 3)
    sheet.wait_until_shown()
    # A press in the middle of a zoomed pixel is a half of one of its three parts left of the pixel's middle.
    paint_all(desk, program, sheet, path, GRADIENT[0] - 1 / 6)


def make_room(desk, program, caption):
    """Makes the main window fill the screen by its title, and the document as large as its picture by its corner."""
    frame = program.find(" Zelvane")
    x, y, width, _ = frame.rect()
    desk.hand("mousemove", x + width // 2, y - 8, "click", "--repeat", 2, "--delay", 50, LEFT)
    wait_for("the main window to fill the screen", lambda: frame.renewed().rect()[2] == SCREEN[0])
    wait_for("the main window in front", program.in_front)
    document = program.find(caption)
    x, y, width, height = document.rect()
    corner = x + width - 2, y + height - 2
    desk.drag(corner, (corner[0] + 560, corner[1] + 360))
    wait_for("the document to grow", lambda: document.renewed().rect()[2:] == (width + 560, height + 360))


# How the buttons look, and what they bring.

BARS = {
    "Cursor": set(),
    "Pen Tool": {"Brush:", "Slider for Brush:", "Style:", "Freehand", "Straight Line"},
    "Gradient Tool": {"Angle:", "N/A"},
    "Airbrush Tool": {"Size:", "Slider for Size:", "Pressure:", "Slider for Pressure:"},
    "Rectangle Tool": {"Bordersize:", "Slider for Bordersize:", "Border Only", "Border and Fill", "Fill Only",
                       "Round corners?"},
    "Circle Tool": {"Bordersize:", "Slider for Bordersize:", "Border Only", "Border and Fill", "Fill Only"},
    "Brighten Tool": {"Size:", "Slider for Size:", "Pressure:", "Slider for Pressure:", "Brighten", "Darken"},
    "Blur Tool": {"Size:", "Slider for Size:"},
    "Eraser Tool": {"Eraser width:", "Slider for Eraser width:", "Clear"},
    "Eyedropper Tool": {"Color under the pointer", "R:", "G:", "B:"} | set(map(str, LIGHT)),
    "Floodfill Tool": set(),
}


def look(desk, control):
    """How a button's edges stand against its face: "raised", "sunken", or "flat" without any."""
    x, y, width, height = control.rect()
    screen = desk.screen()

    def light(dx, dy):
        return sum(screen.at(x + dx, y + dy))

    face = light(2, 2)
    left, top = light(0, height // 2), light(width // 2, 0)
    right, bottom = light(width - 1, height // 2), light(width // 2, height - 1)
    if left == top == right == bottom == face:
        return "flat"
    if left == top > face > right == bottom:
        return "raised"
    if left == top < right == bottom:
        return "sunken"
    return f"face {face}, left {left}, top {top}, right {right}, bottom {bottom}"


def expect_look(desk, control, wanted):
    seen = []

    def looks_so():
        seen[:] = [look(desk, control)]
        return seen == [wanted]

    try:
        wait_for(f'"{control.name()}" to look {wanted}', looks_so)
    finally:
        if seen != [wanted]:
            print(f'"{control.name()}" looks: {seen}')


def shown_options(program, top_bar):
    """The names that are seen in the bar above the documents, but for the read-outs."""
    x, y, width, height = top_bar.rect()
    return {control.name() for control in program.controls(lambda control: control.name(), top_bar)
            if x <= control.centre()[0] < x + width and y <= control.centre()[1] < y + height
            and not re.fullmatch(r"-?\d+(, -?| x )\d+", control.name())}


def looks_of_buttons(desk):
    _, program, sheet = open_picture(desk, "striped.bmp", striped())
    away = sheet.place(60, 60)
    top_bar = read_out(program).parent().parent()
    button = program.find("Pen Tool")
    expect_look(desk, button, "flat")
    expect_look(desk, program.find("Cursor"), "sunken")
    for _ in range(2):
        desk.hand("mousemove", *button.centre())
        expect_look(desk, button, "raised")
        desk.hand("mousemove", *away)
        expect_look(desk, button, "flat")

    before = program.find("Cursor")
    for tool, options in BARS.items():
        if tool == "Cursor":
            continue
        button = program.find(tool)
        desk.hand("mousemove", *button.centre())
        expect_look(desk, button, "raised")
        desk.hand("click", LEFT)
        expect_look(desk, button, "sunken")
        expect_look(desk, before, "flat")
        desk.hand("mousemove", *away)
        wait_for(f"the options of the {tool}, {sorted(options)}",
                 lambda: shown_options(program, top_bar) == options)
        expect_look(desk, button, "sunken")
        before = button


def styles_look_pressed(desk):
    _, program, sheet = open_picture(desk, "striped.bmp", striped())
    away = sheet.place(60, 60)
    for tool, names in (("Pen Tool", ("Freehand", "Straight Line")), ("Brighten Tool", ("Brighten", "Darken")),
                        ("Rectangle Tool", ("Border Only", "Border and Fill", "Fill Only"))):
        program.press(tool)
        styles = [program.find(name).settled() for name in names]
        desk.hand("mousemove", *away)
        expect_look(desk, styles[0], "sunken")
        for chosen in styles[1:]:
            desk.hand("mousemove", *chosen.centre())
            expect_look(desk, chosen, "raised")
            desk.hand("click", LEFT, "mousemove", *away)
            for style in styles:
                expect_look(desk, style, "sunken" if style is chosen else "flat")


# Wrong input.

def wrong_numbers(desk):
    path, program, sheet = open_picture(desk, "striped.bmp", striped())
    program.press("Pen Tool")
    brush = program.entry("Brush:")
    brush.wait_for_text("1 pixel(s)")
    # What is typed last is taken, so the entry has seen all before it when that shows.
    for keys, typed, shown in (
            (("a", "b", "c", "3", "7"), "37", "37 pixel(s)"),
            (("minus", "8"), "8", "8 pixel(s)"),
            (("5", "minus", "6"), "56", "56 pixel(s)"),
            (("1", "period", "2", "period", "3"), "123", "100 pixel(s)"),
            (("9", "9", "9", "9", "9", "9"), "999999", "100 pixel(s)"),
            (("BackSpace",), "", "1 pixel(s)"),
            (("4", "0", "BackSpace", "parenright", "space", "2"), "42", "42 pixel(s)"),
            (("Delete",), "", "1 pixel(s)"),
            (("0",), "0", "1 pixel(s)")):
        program.enter("Brush:", *keys)
        brush.wait_for_text(typed)
        program.key("Tab")
        brush.wait_for_text(shown)
        wait_for("the keyboard to leave the box", lambda: not brush.has_keyboard())


def pasted_text(desk):
    """A long text, copied from the entry of the window that asks for a file, and a number from another box."""
    path, program, sheet = open_picture(desk, "striped.bmp", striped())
    program.press("Pen Tool")
    long_text = "what a pen is as wide as isn't told by words, but by 1 or 7" + 5 * " and words"
    program.key("ctrl+o")
    entry = program.enter("File name:", "ctrl+a")
    desk.hand("type", "--delay", 1, long_text)
    entry.wait_for_text(long_text)
    program.key("ctrl+a", "ctrl+c", "Escape")
    wait_for("the question for a file to go", lambda: not program.shows("File name:"))
    brush = program.enter("Brush:", "ctrl+v")
    brush.wait_for_text("17 pixel(s)")
    program.key("Tab")
    brush.wait_for_text("17 pixel(s)")

    hand = Hand(desk, program, sheet)
    pen(hand.computed, (60, 60), (60, 60), 17, (0, 0, 0))
    hand.computed_stroke((60, 60), shows=(60, 60))

    type_colour(desk, program, "Foreground color", FRONT)
    program.enter("Red", "ctrl+c")
    brush = program.enter("Brush:", "ctrl+v")
    # The limit counts from when the box is left.
    brush.wait_for_text("200 pixel(s)")
    program.key("Tab")
    brush.wait_for_text("100 pixel(s)")
    pen(hand.computed, (150, 90), (150, 90), 100, FRONT)
    hand.computed_stroke((150, 90), shows=(150, 90))
    save(program, path)
    desk.expect_picture(path, hand.computed)


main("paint_with_every_tool", at_100, at_300, looks_of_buttons, styles_look_pressed, wrong_numbers, pasted_text)
