"""A desk of its own for a test: a screen, a session bus and a window manager, the program on it, and a hand.

The hand moves the pointer and presses keys as a person would (xdotool); controls are found as an assistive tool finds
them (AT-SPI), by the name that a person reads. Nothing waits for a time: every wait is for a condition, and a wait in
vain fails the test after DEADLINE. What a test leaves behind when it fails is in the folder that its last line names.
"""

import contextlib
import ctypes
import glob
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import traceback

from pictures import Picture

DEADLINE = 90
SCREEN = (1280, 1024)
LEFT, MIDDLE, RIGHT = 1, 2, 3

LIBC = ctypes.CDLL(None, use_errno=True)
SET_PARENT_DEATH_SIGNAL, SET_CHILD_SUBREAPER = 1, 36  # of prctl


class Failure(Exception):
    pass


def wait_for(what, condition):
    """What `condition` returns as soon as that is true."""
    end = time.monotonic() + DEADLINE
    while not (value := condition()):
        check(time.monotonic() < end, f"waited in vain for {what}")
        time.sleep(0.02)
    return value


def check(holds, what):
    if not holds:
        raise Failure(what)


def _end_with_parent():
    LIBC.prctl(SET_PARENT_DEATH_SIGNAL, signal.SIGKILL, 0, 0, 0)


class Desk:
    def __init__(self, name):
        self.folder = tempfile.mkdtemp(prefix="zelvane-desk-")
        self.failures = os.path.join(os.environ.get("ZELVANE_DESK_FAILURES", os.path.abspath("failures")), name)
        self.programs = []
        self.atspi = None

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    # Start and end.

    def __enter__(self):
        try:
            self._set_up()
        except BaseException:
            self._clear()
            raise
        return self

    def __exit__(self, *_):
        self._clear()

    def _set_up(self):
        # Whatever the desk's processes leave behind becomes a child of this one, so that all of it can be ended.
        LIBC.prctl(SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        for folder in ("home/.config", "home/.local/share", "home/.cache", "tmp", "log", "run"):
            os.makedirs(self.path(folder), 0o700)
        kept = {name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}
        os.environ.clear()
        os.environ.update(kept, **{
            "PATH": "/usr/bin:/bin",
            "LC_ALL": "C.UTF-8",
            "HOME": self.path("home"),
            "XDG_CONFIG_HOME": self.path("home/.config"),
            "XDG_DATA_HOME": self.path("home/.local/share"),
            "XDG_CACHE_HOME": self.path("home/.cache"),
            "XDG_RUNTIME_DIR": self.path("run"),
            "TMPDIR": self.path("tmp"),
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_QPA_PLATFORM": "xcb",
            "GTK_A11Y": "none",
            "NO_AT_BRIDGE": "1",
        })
        os.environ["DISPLAY"] = ":" + self._start_server(
            "Xvfb", "-displayfd", "{}", "-screen", "0", "%dx%dx24" % SCREEN, "-nolisten", "tcp", "-noreset")
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_server(
            "dbus-daemon", "--session", "--nofork", "--nosyslog", "--print-address={}")
        self._spawn(["openbox", "--sm-disable"])
        wait_for("the window manager", lambda: "window id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

        # Only now: the library finds its bus through the environment.
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        check(Atspi.init() in (0, 1), "the accessibility bus can't be reached")
        self.atspi = Atspi

    def _spawn(self, command, **more):
        with open(self.path("log", os.path.basename(command[0])), "ab") as log:
            return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                    preexec_fn=_end_with_parent, **more)

    def _start_server(self, *command):
        """Starts a server that writes a line to the file number in place of "{}" once it serves; returns that line."""
        reader, writer = os.pipe()
        self._spawn([word.format(writer) for word in command], pass_fds=(writer,))
        os.close(writer)
        with open(reader, encoding="utf-8") as told:
            line = told.readline().strip()
        check(line, f"{command[0]} didn't start")
        return line

    def _clear(self):
        """Ends every process that came from this one; those that an ended one leaves become children of this one."""
        for how in signal.SIGTERM, signal.SIGKILL:
            end = time.monotonic() + 5
            while (children := self._living_children()) and time.monotonic() < end:
                for child in children:
                    os.kill(child, how)
                time.sleep(0.02)
        shutil.rmtree(self.folder, ignore_errors=True)

    @staticmethod
    def _living_children():
        with contextlib.suppress(ChildProcessError):
            while os.waitpid(-1, os.WNOHANG)[0]:
                pass
        return [int(child) for path in glob.glob("/proc/self/task/*/children") for child in open(path).read().split()]

    def ask(self, *command):
        """What a command prints; empty if it fails."""
        done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        return done.stdout.strip() if done.returncode == 0 else ""

    def start(self, *arguments):
        """The program, started in the desk's folder, once its main window can be used."""
        self.programs.append(Program(self, arguments))
        return self.programs[-1]

    # The hand.

    def hand(self, *words):
        subprocess.run(["xdotool", *map(str, words)], stdin=subprocess.DEVNULL, check=True)

    def click(self, x, y, button=LEFT):
        self.hand("mousemove", x, y, "click", button)

    def drag(self, start, end, button=LEFT):
        self.hand("mousemove", *start, "mousedown", button, "mousemove", *end, "mouseup", button)

    # The eye.

    def screen(self):
        """What the screen shows now."""
        grabbed = subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"],
                                 stdin=subprocess.DEVNULL, capture_output=True, check=True).stdout
        return Picture(*SCREEN, grabbed)

    def wait_for_pixel(self, place, colour):
        wait_for(f"{colour} at {place} of the screen", lambda: self.screen().at(*place) == colour)

    def expect_picture(self, path, expected):
        """The file at `path`, read by ImageMagick, shows `expected` to the pixel."""
        got = Picture.read(path)
        sizes = (got.width, got.height), (expected.width, expected.height)
        check(sizes[0] == sizes[1], f"{path} measures {sizes[0]}, not {sizes[1]}")
        place = got.first_difference(expected)
        if place is None:
            return
        os.makedirs(self.failures, exist_ok=True)
        files = [os.path.join(self.failures, name) for name in ("got.png", "expected.png", "difference.png")]
        got.write(files[0])
        expected.write(files[1])
        self.ask("compare", *files)
        raise Failure(f"{path} differs first at {place}: got {got.at(*place)}, expected {expected.at(*place)}")

    def keep_evidence(self):
        """Leaves a picture of the screen and what the processes wrote in the folder for failures."""
        os.makedirs(self.failures, exist_ok=True)
        self.ask("import", "-silent", "-window", "root", os.path.join(self.failures, "screen.png"))
        with open(os.path.join(self.failures, "controls.txt"), "w", encoding="utf-8") as file:
            file.writelines(program.outline() for program in self.programs)
        shutil.copytree(self.path("log"), os.path.join(self.failures, "log"), dirs_exist_ok=True)


class Program:
    def __init__(self, desk, arguments):
        self.desk = desk
        self.process = desk._spawn([sys.argv[1], *arguments], cwd=desk.folder)
        self.node = wait_for("the program's main window", self._registered)
        wait_for("the main window in front", self.in_front)

    def _registered(self):
        self.expect_running()
        desktop = self.desk.atspi.get_desktop(0)
        desktop.clear_cache()
        return next((node for node in _children(desktop) if _asked(node.get_process_id) == self.process.pid), None)

    def in_front(self):
        """A window of the program has the keyboard, and stands where the program believes it stands."""
        self.expect_running()
        window = self.desk.ask("xdotool", "getactivewindow")
        if not window or self.desk.ask("xdotool", "getwindowpid", window) != str(self.process.pid):
            return False
        facts = self.desk.ask("xwininfo", "-id", window)
        there = tuple(int(line.split(":")[1]) for line in facts.splitlines()
                      if line.strip().startswith(("Absolute upper-left", "Width", "Height")))
        self.node.clear_cache()
        # A window that is going may still have the keyboard; it isn't seen any more.
        return any(control.rect() == there and control.seen()
                   for control in (Control(self, node) for node in _children(self.node)))

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
        start = within.node if within else self.node
        start.clear_cache()
        return [control for control, _ in self._walk(start) if fits(control) and control.seen()]

    def _walk(self, node, depth=0):
        yield Control(self, node), depth
        for child in _children(node):
            yield from self._walk(child, depth + 1)

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
        """Types in place of what the entry of that name holds (its caption may have the same name); returns it."""
        entry = self.find(name, role="text")
        wait_for(f'"{name}" in front', self.in_front)
        self.desk.click(*entry.settled().centre())
        wait_for(f'the keyboard in "{name}"', entry.has_keyboard)
        self.desk.hand("key", "ctrl+a", "type", "--delay", 1, text)
        wait_for(f'the text "{text}" in "{name}"', lambda: entry.text() == text)
        return entry

    def key(self, *keys):
        """Presses keys in the window that has the keyboard, once that is the program's."""
        wait_for(f"a window for {' '.join(keys)}", self.in_front)
        self.desk.hand("key", *keys)

    def answer(self, text, button):
        """Waits for the message that holds `text`, presses its button and waits for it to go."""
        wait_for(f'the message "{text}"', lambda: self.shows(text))
        self.press(button)
        wait_for(f'the message "{text}" to go', lambda: self.process.poll() is not None or not self.shows(text))

    def outline(self):
        """The tree of controls, a line each."""
        if self.process.poll() is not None:
            return ""
        self.node.clear_cache()
        return "".join(f"{'  ' * depth}{control.role()} '{control.name()}' {control.rect()} seen: {control.seen()}\n"
                       for control, depth in self._walk(self.node))


class Control:
    def __init__(self, program, node):
        self.program, self.node = program, node

    def name(self):
        return _asked(self.node.get_name) or ""

    def role(self):
        return _asked(self.node.get_role_name) or ""

    def seen(self):
        return self._is(self.program.desk.atspi.StateType.SHOWING)

    def has_keyboard(self):
        return self.renewed()._is(self.program.desk.atspi.StateType.FOCUSED)

    def _is(self, state):
        states = _asked(self.node.get_state_set)
        return bool(states) and states.contains(state)

    def renewed(self):
        """Itself, with what is known of it asked anew."""
        self.node.clear_cache()
        return self

    def text(self):
        """What an entry holds now."""
        return _asked(self.program.desk.atspi.Text.get_text, self.node, 0, -1)

    def rect(self):
        """(x, y, width, height) on the screen."""
        extents = _asked(self.node.get_extents, self.program.desk.atspi.CoordType.SCREEN)
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
    from gi.repository import GLib
    try:
        return question(*arguments)
    except GLib.Error:
        return None


def _children(node):
    children = (_asked(node.get_child_at_index, i) for i in range(_asked(node.get_child_count) or 0))
    return [child for child in children if child]


def _run(label, case):
    """0 if the case holds on a fresh desk."""
    with Desk(label) as desk:
        try:
            case(desk)
            print(f"{label}: fine")
            return 0
        except (Failure, subprocess.SubprocessError, OSError) as failure:
            traceback.print_exc()
            desk.keep_evidence()
            print(f"{label}: {failure}\n  evidence in {desk.failures}")
            return 1


def main(name, *cases):
    """Runs each case, a function of a desk, on a desk of its own; ends the process with 1 when one has failed."""
    failed = 0
    for case in cases:
        sys.stdout.flush()
        # A process each, since the accessibility library knows one bus in its life.
        child = os.fork()
        if child == 0:
            _end_with_parent()
            result = 1
            try:
                result = _run(f"{name}.{case.__name__}", case)
            except BaseException:
                traceback.print_exc()
            sys.stdout.flush()
            sys.stderr.flush()
            os._exit(result)
        failed += os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) != 0
    sys.exit(1 if failed else 0)
