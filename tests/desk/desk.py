"""A desk of its own for a test: a screen, a session bus and a window manager, the program on it, and a hand.

The hand moves the pointer and presses keys as a person would (xdotool); controls are found as an assistive tool finds
them (AT-SPI), by the name that a person reads. Nothing waits for a time: every wait is for a condition, and a wait in
vain fails the test after DEADLINE. What a test leaves behind when it fails is in the folder that it names.
"""

import contextlib
import ctypes
import glob
import multiprocessing
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

from pictures import Picture

DEADLINE = 90
SCREEN = (1280, 1024)
LEFT, RIGHT = 1, 3

LIBC = ctypes.CDLL(None, use_errno=True)
SET_PARENT_DEATH_SIGNAL, SET_CHILD_SUBREAPER = 1, 36  # of prctl


def wait_for(what, condition):
    """What `condition` returns as soon as that is true."""
    end = time.monotonic() + DEADLINE
    while not (value := condition()):
        check(time.monotonic() < end, f"waited in vain for {what}")
        time.sleep(0.02)
    return value


def check(holds, what):
    if not holds:
        raise AssertionError(what)


def _end_with_parent():
    LIBC.prctl(SET_PARENT_DEATH_SIGNAL, signal.SIGKILL, 0, 0, 0)


def _living_children():
    with contextlib.suppress(ChildProcessError):
        while os.waitpid(-1, os.WNOHANG)[0]:
            pass
    return children()


def children():
    """The numbers of the processes that came from this one, those whose end nobody has taken note of as well."""
    return [int(child) for path in glob.glob("/proc/self/task/*/children") for child in open(path).read().split()]


class Desk:
    def __init__(self, name):
        self.folder = tempfile.mkdtemp(prefix="zelvane-desk-")
        self.failures = os.path.join(os.environ.get("ZELVANE_DESK_FAILURES", os.path.abspath("failures")), name)
        self.programs = []

    def path(self, name):
        return os.path.join(self.folder, name)

    def evidence(self, name):
        os.makedirs(self.failures, exist_ok=True)
        return os.path.join(self.failures, name)

    # Start and end.

    def set_up(self):
        # Whatever the desk's processes leave behind becomes a child of this one, so that all of it can be ended.
        LIBC.prctl(SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        for folder in "home", "tmp", "log", "run":
            os.mkdir(self.path(folder), 0o700)
        self.show_splash(False)
        kept = {name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}
        os.environ.clear()
        os.environ.update(kept, PATH="/usr/bin:/bin", LC_ALL="C.UTF-8", HOME=self.path("home"),
                          TMPDIR=self.path("tmp"), XDG_RUNTIME_DIR=self.path("run"), NO_AT_BRIDGE="1",
                          QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
        os.environ["DISPLAY"] = ":" + self._start_server(
            "Xvfb", "-displayfd", "{}", "-screen", "0", "%dx%dx24" % SCREEN, "-nolisten", "tcp", "-noreset")
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_server(
            "dbus-daemon", "--session", "--nofork", "--nosyslog", "--print-address={}")
        self.spawn(["openbox", "--sm-disable"])
        wait_for("the window manager", lambda: "window id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        check(Atspi.init() in (0, 1), "the accessibility bus can't be reached")

    def show_splash(self, shown):
        """Whether the next start shows the splash."""
        settings = self.path("home/.config")
        os.makedirs(settings, exist_ok=True)
        with open(os.path.join(settings, "Korvath.ini"), "w", encoding="utf-8") as file:
            file.write(f"[Settings]\nShowSplashScreen={int(shown)}\n")

    def spawn(self, command, **more):
        with open(self.path("log/" + os.path.basename(command[0])), "ab") as log:
            return subprocess.Popen(command, stdout=log, stderr=log, preexec_fn=_end_with_parent, **more)

    def _start_server(self, *command):
        """Starts a server that writes a line to the file number in place of "{}" once it serves; returns that line."""
        reader, writer = os.pipe()
        self.spawn([word.format(writer) for word in command], pass_fds=(writer,))
        os.close(writer)
        with open(reader, encoding="utf-8") as told:
            line = told.readline().strip()
        check(line, f"{command[0]} didn't start")
        return line

    def keep_evidence(self):
        """Leaves a picture of the screen, the controls and what the processes wrote in the folder for failures."""
        print(f"evidence in {self.failures}")
        self.ask("import", "-silent", "-window", "root", self.evidence("screen.png"))
        shutil.copytree(self.path("log"), self.evidence("log"), dirs_exist_ok=True)
        with open(self.evidence("controls.txt"), "w", encoding="utf-8") as file:
            file.writelines(program.outline() for program in self.programs)

    def clear(self):
        """Ends every process that came from this one; those that an ended one leaves become children of this one."""
        for how in signal.SIGTERM, signal.SIGKILL:
            end = time.monotonic() + 5
            while (children := _living_children()) and time.monotonic() < end:
                for child in children:
                    os.kill(child, how)
                time.sleep(0.02)
        shutil.rmtree(self.folder, ignore_errors=True)

    def ask(self, *command):
        """What a command prints; empty if it fails."""
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        return done.stdout.strip() if done.returncode == 0 else ""

    def start(self, *arguments):
        """The program, started in the desk's folder, once its main window can be used."""
        return self.adopt(self.spawn([sys.argv[1], *arguments], cwd=self.folder))

    def adopt(self, process):
        """The program that a process has been started for, once its main window can be used."""
        self.programs.append(Program(self, process))
        return self.programs[-1]

    def open_picture(self, name, picture):
        """A picture file of that name in the desk's folder, the program started with it, and its sheet."""
        path = self.path(name)
        picture.write(path)
        program = self.start(path)
        return path, program, Sheet(self, program, f"{path} - 100%", picture)

    def shows(self, name):
        """Whether any program shows a control of that name."""
        return any(control.name() == name for _, control in Control(Atspi.get_desktop(0)).renewed().tree())

    # The hand.

    def hand(self, *words):
        subprocess.run(["xdotool", *map(str, words)], check=True)

    def click(self, x, y):
        self.hand("mousemove", x, y, "click", LEFT)

    def drag(self, start, end):
        self.hand("mousemove", *start, "mousedown", LEFT, "mousemove", *end, "mouseup", LEFT)

    # The eye.

    def screen(self):
        """What the screen shows now."""
        return Picture(*SCREEN, subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"],
                                               capture_output=True, check=True).stdout)

    def wait_for_pixel(self, place, colour):
        wait_for(f"{colour} at {place} of the screen", lambda: self.screen().at(*place) == colour)

    def expect_picture(self, path, expected):
        """The file at `path`, read by ImageMagick, shows `expected` to the pixel."""
        got = Picture.read(path)
        if got != expected:
            got.write(self.evidence("got.png"))
            expected.write(self.evidence("expected.png"))
            self.ask("compare", *map(self.evidence, ("got.png", "expected.png", "difference.png")))
        check(got == expected, f"{path} ({got.width} x {got.height}) isn't as expected: see difference.png")


class Program:
    def __init__(self, desk, process):
        self.desk = desk
        self.process = process
        self.root = wait_for("the program's main window", self._registered)
        wait_for("the main window in front", self.in_front)

    def _registered(self):
        self.expect_running()
        programs = Control(Atspi.get_desktop(0)).renewed().children()
        return next((root for root in programs if _asked(root.node.get_process_id) == self.process.pid), None)

    def in_front(self):
        """A window of the program has the keyboard, and stands where the program believes it stands."""
        self.expect_running()
        window = self.desk.ask("xdotool", "getactivewindow")
        if not window or self.desk.ask("xdotool", "getwindowpid", window) != str(self.process.pid):
            return False
        facts = self.desk.ask("xwininfo", "-id", window)
        there = tuple(int(line.split(":")[1]) for line in facts.splitlines()
                      if line.strip().startswith(("Absolute upper-left", "Width", "Height")))
        # A window that is going may still have the keyboard; it isn't seen any more.
        return any(control.rect() == there and control.seen() for control in self.root.renewed().children())

    def expect_running(self):
        check(self.process.poll() is None, f"the program has ended (exit code {self.process.returncode})")

    def expect_end(self):
        """It ends by itself, as a success."""
        wait_for("the end of the program", lambda: self.process.poll() is not None)
        check(self.process.returncode == 0, f"exit code {self.process.returncode}")

    # Controls.

    def controls(self, fits, within=None):
        """The controls now seen for which `fits(control)` holds, from the front of the tree to its end."""
        self.expect_running()
        start = (within or self.root).renewed()
        return [control for _, control in start.tree() if fits(control) and control.seen()]

    def find(self, name, within=lambda: None, role=""):
        """The first control of that name and role that is seen, once there is one, in the one that `within` finds."""
        return wait_for(f'{role or "a control"} named "{name}"', lambda: self.controls(
            lambda control: control.name() == name and role in control.role(), within()))[0]

    def shows(self, text):
        """Whether a control whose name holds `text` is seen now."""
        return bool(self.controls(lambda control: text in control.name()))

    def press(self, name):
        """Clicks the control of that name, once it stands still."""
        control = self.find(name)
        wait_for(f'"{name}" in front', self.in_front)
        self.desk.click(*control.settled().centre())

    def enter(self, name, text):
        """Types in place of what the entry of that name holds (its caption may have the same name) and leaves it."""
        entry = self.find(name, role="text")
        wait_for(f'"{name}" in front', self.in_front)
        self.desk.click(*entry.settled().centre())
        wait_for(f'the keyboard in "{name}"', entry.has_keyboard)
        self.desk.hand("key", "ctrl+a", "type", "--delay", 1, text)
        wait_for(f'the text "{text}" in "{name}"', lambda: entry.text() == text)
        self.key("Tab")
        wait_for(f'"{name}" to be left', lambda: not entry.has_keyboard())

    def key(self, *keys):
        """Presses keys in the window that has the keyboard, once that is the program's."""
        wait_for(f"a window for {' '.join(keys)}", self.in_front)
        self.desk.hand("key", *keys)

    def answer(self, text, button):
        """Waits for the message that holds `text`, presses its button and waits for it to go."""
        wait_for(f'the message "{text}"', lambda: self.shows(text))
        self.press(button)
        wait_for(f'the message "{text}" to go', lambda: self.process.poll() is not None or not self.shows(text))

    def save(self, path):
        """Ctrl+S, until another file stands at `path`."""
        before = os.stat(path)
        self.key("ctrl+s")
        wait_for("the saved file", lambda: os.path.exists(path) and not os.path.samestat(os.stat(path), before))

    def answer_file_window(self, text):
        """Types a name or a path in the file window that is up, and confirms it."""
        entry = self.find("File name:", role="text")
        wait_for("the file window in front", self.in_front)
        self.desk.click(*entry.settled().centre())
        wait_for("the keyboard in the name box", entry.has_keyboard)
        self.desk.hand("key", "ctrl+a", "type", "--delay", 1, text)
        wait_for(f'the name "{text}"', lambda: entry.text() == text)
        self.key("Return")

    def outline(self):
        """The tree of controls, a line each."""
        tree = self.root.renewed().tree() if self.process.poll() is None else ()
        return "".join(f"{'  ' * depth}{control.role()} '{control.name()}' {control.rect()} seen: {control.seen()}\n"
                       for depth, control in tree)


class Control:
    def __init__(self, node):
        self.node = node

    def name(self):
        return _asked(self.node.get_name) or ""

    def role(self):
        return _asked(self.node.get_role_name) or ""

    def text(self):
        """What an entry holds now."""
        return _asked(Atspi.Text.get_text, self.node, 0, -1)

    def seen(self):
        return self._is(Atspi.StateType.SHOWING)

    def has_keyboard(self):
        return self.renewed()._is(Atspi.StateType.FOCUSED)

    def _is(self, state):
        states = _asked(self.node.get_state_set)
        return bool(states) and states.contains(state)

    def children(self):
        nodes = (_asked(self.node.get_child_at_index, i) for i in range(_asked(self.node.get_child_count) or 0))
        return [Control(node) for node in nodes if node]

    def tree(self, depth=0):
        """Itself and what it holds, each after its depth."""
        yield depth, self
        for child in self.children():
            yield from child.tree(depth + 1)

    def renewed(self):
        """Itself, with what is known of it asked anew."""
        self.node.clear_cache()
        return self

    def rect(self):
        """(x, y, width, height) on the screen."""
        extents = _asked(self.node.get_extents, Atspi.CoordType.SCREEN)
        return (extents.x, extents.y, extents.width, extents.height) if extents else (0, 0, 0, 0)

    def centre(self):
        x, y, width, height = self.rect()
        return x + width // 2, y + height // 2

    def settled(self):
        """Itself, once it has a size and stands still."""
        def stands_still():
            before = self.rect()
            return min(before[2:]) > 0 and self.renewed().rect() == before

        wait_for(f'a place of "{self.name()}"', stands_still)
        return self


def _asked(question, *arguments):
    """The answer, or None where the control has gone meanwhile."""
    with contextlib.suppress(GLib.Error):
        return question(*arguments)


class Sheet:
    """The document whose caption is `caption`, showing `picture`; each pixel takes `zoom` by `zoom` of the screen's."""

    def __init__(self, desk, program, caption, picture, zoom=1):
        self.desk, self.picture, self.zoom = desk, picture, zoom
        self.canvas = program.find("Picture", lambda: program.find(caption)).settled()
        for i in range(16):
            desk.wait_for_pixel(self.place(i, i), picture.at(i, i))

    def place(self, x, y):
        """Where the screen shows the middle of pixel (x, y), beside the frame of one pixel."""
        left, top, _, _ = self.canvas.rect()
        return left + 1 + x * self.zoom + self.zoom // 2, top + 1 + y * self.zoom + self.zoom // 2

    def row(self, x1, x2, y, colour):
        """Draws along a row with the tool that is set, waits for the screen to show `colour` at both ends, and notes
        what the picture then is."""
        self.desk.drag(self.place(x1, y), self.place(x2, y))
        self.picture.row(x1, x2, y, colour)
        for x in x1, x2:
            self.desk.wait_for_pixel(self.place(x, y), colour)


def _run(label, case):
    _end_with_parent()
    desk = Desk(label)
    try:
        desk.set_up()
        case(desk)
        print(f"{label}: fine")
    except BaseException:
        desk.keep_evidence()
        raise
    finally:
        desk.clear()


def main(name, *cases):
    """Runs each case, a function of a desk, on a desk of its own; ends the process with 1 when one has failed."""
    failed = False
    for case in cases:
        # A process each, since the accessibility library knows one bus in its life.
        child = multiprocessing.get_context("fork").Process(target=_run, args=(f"{name}.{case.__name__}", case))
        child.start()
        child.join()
        failed |= child.exitcode != 0
    sys.exit(failed)
