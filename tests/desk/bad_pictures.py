"""The program is started with what is no picture: it says so, and lives on without a document."""

import os

from desk import check, main
from pictures import Picture

MESSAGE = "The selected picture file is missing or invalid"


def refused(desk, name):
    program = desk.start(name)
    program.wait_for_text(MESSAGE)
    check(program.controls(lambda control: control.name() == "Zelvane"), "the message bears another title")
    program.answer(MESSAGE, "OK")
    documents = [control.name() for control in program.controls(lambda control: control.name().endswith(" - 100%"))]
    check(not documents, f"open are {documents}")
    program.key("ctrl+q")
    check(program.wait_for_end() == 0, f"exit code {program.process.returncode}")


def missing(desk):
    refused(desk, desk.path("nothing.png"))


def folder(desk):
    os.mkdir(desk.path("folder.png"))
    refused(desk, desk.path("folder.png"))


def empty(desk):
    with open(desk.path("empty.png"), "wb"):
        pass
    refused(desk, desk.path("empty.png"))


def text(desk):
    with open(desk.path("text.png"), "w", encoding="utf-8") as file:
        file.write("A letter, not a picture.\n" * 40)
    refused(desk, desk.path("text.png"))


def half(desk):
    body = Picture.telling_places(200, 150).png()
    with open(desk.path("half.png"), "wb") as file:
        file.write(body[:len(body) // 2])
    refused(desk, desk.path("half.png"))


main("bad_pictures", missing, folder, empty, text, half)
