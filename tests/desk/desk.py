"""A desk of its own for a test: a screen, a session bus and a window manager, the program on it, and a hand.

The hand moves the pointer and presses keys as a person would (xdotool); controls are found as an assistive tool finds
them (AT-SPI), by the name that a person reads. Nothing waits for a time: every wait is for a condition, and a wait in
vain fails the test after DEADLINE. What a test leaves behind when it fails is in the folder that its last line names.
"""

import ctypes
import os
import select
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


def _end_with_parent():
    LIBC.prctl(SET_PARENT_DEATH_SIGNAL, signal.SIGKILL, 0, 0, 0)


def wait_for(what, condition):
    """What `condition` returns as soon as that is true."""
    end = time.monotonic() + DEADLINE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure(f"waited in vain for {what}")
        time.sleep(0.02)


def check(holds, what):
    if not holds:
        raise Failure(what)


class Desk:
    def __init__(self, name):
        self.name = name
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
        keep = {name: os.environ[name] for name in ("LSAN_OPTIONS", "ASAN_OPTIONS", "UBSAN_OPTIONS")
                if name in os.environ}
        os.environ.clear()
        os.environ.update(keep)
        os.environ.update({
            "PATH": "/usr/bin:/bin",
            "LC_ALL": "C.UTF-8",
            "HOME": self.path("home"),
            "XDG_CONFIG_HOME": self.path("home", ".config"),
            "XDG_DATA_HOME": self.path("home", ".local", "share"),
            "XDG_CACHE_HOME": self.path("home", ".cache"),
            "XDG_RUNTIME_DIR": self.path("run"),
            "TMPDIR": self.path("tmp"),
            "QT_ACCESSIBILITY": "1",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_QPA_PLATFORM": "xcb",
            "GTK_A11Y": "none",
            "NO_AT_BRIDGE": "1",
        })
        for folder in ("home/.config", "home/.local/share", "home/.cache", "tmp", "log"):
            os.makedirs(self.path(folder))
        os.mkdir(self.path("run"), 0o700)

        os.environ["DISPLAY"] = ":" + self._start_telling(
            "the screen", lambda fd: ["Xvfb", "-displayfd", str(fd), "-screen", "0", "%dx%dx24" % SCREEN,
                                      "-nolisten", "tcp", "-noreset"])
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_telling(
            "the session bus", lambda fd: ["dbus-daemon", "--session", "--nofork", "--nosyslog",
                                           f"--print-address={fd}"])
        self._spawn(["openbox", "--sm-disable"])
        wait_for("the window manager", lambda: "window id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

        # Only now: the library finds its bus through the environment.
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        check(Atspi.init() in (0, 1), "the accessibility bus can't be reached")
        self.atspi = Atspi

    def _spawn(self, command, **more):
        log = open(self.path("log", os.path.basename(command[0])), "ab")
        with log:
            return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                    preexec_fn=_end_with_parent, **more)

    def _start_telling(self, what, command):
        """Starts a server that writes a line to a file number once it serves; returns that line."""
        reader, writer = os.pipe()
        server = self._spawn(command(writer), pass_fds=(writer,))
        os.close(writer)
        told = b""

        def listened():
            nonlocal told
            if select.select([reader], [], [], 0)[0]:
                more = os.read(reader, 4096)
                check(more, f"{what} didn't start (exit code {server.poll()})")
                told += more
            return told.endswith(b"\n")

        try:
            wait_for(what, listened)
        finally:
            os.close(reader)
        return told.decode().strip()

    def _clear(self):
        """Ends every process that came from this one, the program's first."""
        for how in (signal.SIGTERM, signal.SIGKILL):
            end = time.monotonic() + 5
            for pid in self._offspring():
                try:
                    os.kill(pid, how)
                except ProcessLookupError:
                    pass
            while self._offspring() and time.monotonic() < end:
                time.sleep(0.01)
        shutil.rmtree(self.folder, ignore_errors=True)

    @staticmethod
    def _offspring():
        """The living processes below this one; the dead are taken off the list."""
        while True:
            try:
                if os.waitpid(-1, os.WNOHANG)[0] == 0:
                    break
            except ChildProcessError:
                break
        parents = {}
        for name in os.listdir("/proc"):
            if name.isdigit():
                try:
                    with open(f"/proc/{name}/stat", encoding="utf-8", errors="replace") as file:
                        state, parent = file.read().rsplit(")", 1)[1].split()[:2]
                    if state != "Z":
                        parents[int(name)] = int(parent)
                except OSError:
                    pass
        below = [os.getpid()]
        for pid in below:
            below += [child for child, parent in parents.items() if parent == pid]
        return below[1:]

    def ask(self, *command):
        """What a command prints; empty if it fails."""
        done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        return done.stdout if done.returncode == 0 else ""

    # The program.

    def start(self, *arguments):
        """The program, started in the desk's folder, once its main window can be used."""
        program = Program(self, arguments)
        self.programs.append(program)
        return program

    # The hand.

    def hand(self, *words):
        done = subprocess.run(["xdotool", *map(str, words)], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              check=False)
        check(done.returncode == 0, f"xdotool {' '.join(map(str, words))}: {done.stderr.strip()}")

    def click(self, x, y, button=LEFT):
        self.hand("mousemove", x, y, "click", button)

    def drag(self, start, end, button=LEFT):
        self.hand("mousemove", *start, "mousedown", button, "mousemove", *end, "mouseup", button)

    def key(self, *keys):
        self.hand("key", *keys)

    # The eye.

    def screen(self):
        """What the screen shows now."""
        grabbed = subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"],
                                 stdin=subprocess.DEVNULL, capture_output=True, check=True).stdout
        return Picture(*SCREEN, grabbed)

    def wait_for_pixel(self, place, colour):
        wait_for("%s at %s of the screen" % (colour, place), lambda: self.screen().at(*place) == colour)

    def read_picture(self, path):
        """The file at `path` as ImageMagick reads it."""
        size = self.ask("identify", "-format", "%w %h", path).split()
        check(len(size) == 2, f"{path} is no picture")
        pixels = subprocess.run(["/usr/bin/convert", path, "-depth", "8", "rgb:-"], stdin=subprocess.DEVNULL,
                                capture_output=True, check=True).stdout
        return Picture(int(size[0]), int(size[1]), pixels)

    def expect_picture(self, path, expected):
        """The file at `path`, read by ImageMagick, shows `expected` to the pixel."""
        wanted = self.path("expected.ppm")
        expected.write(wanted)
        size = self.ask("identify", "-format", "%w %h", path)
        check(size == f"{expected.width} {expected.height}",
              f"{path} measures {size or 'nothing'}, not {expected.width} {expected.height}")
        compared = subprocess.run(["compare", "-metric", "AE", path, wanted, self.path("difference.png")],
                                  stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        if compared.returncode == 0:
            return
        os.makedirs(self.failures, exist_ok=True)
        for source, name in ((path, "got.png"), (wanted, "expected.png"), (self.path("difference.png"), None)):
            if os.path.exists(source):
                self.ask("/usr/bin/convert", source, os.path.join(self.failures, name or "difference.png"))
        got = self.read_picture(path)
        place = got.first_difference(expected)
        if place is None:
            raise Failure(f"{path} differs: {compared.stderr.strip()}")
        raise Failure(f"{path}: {compared.stderr.strip()} pixels differ, first at {place}: "
                      f"got {got.at(*place)}, expected {expected.at(*place)}")

    def keep_evidence(self):
        """Leaves a picture of the screen and what the processes wrote in the folder for failures."""
        os.makedirs(self.failures, exist_ok=True)
        if "DISPLAY" in os.environ:
            self.ask("import", "-silent", "-window", "root", os.path.join(self.failures, "screen.png"))
        for program in self.programs:
            with open(os.path.join(self.failures, "controls.txt"), "a", encoding="utf-8") as file:
                file.write(program.outline())
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
        for node in _children(desktop):
            if _asked(node.get_process_id) == self.process.pid:
                return node
        return None

    def in_front(self):
        """A window of the program has the keyboard, and stands where the program believes it stands."""
        self.expect_running()
        window = self.desk.ask("xdotool", "getactivewindow").strip()
        if not window or self.desk.ask("xdotool", "getwindowpid", window).strip() != str(self.process.pid):
            return False
        facts = self.desk.ask("xwininfo", "-id", window)
        self.node.clear_cache()
        numbers = [line.split(":")[1].strip() for line in facts.splitlines()
                   if line.strip().startswith(("Absolute upper-left", "Width", "Height"))]
        if len(numbers) != 4:
            return False
        there = tuple(map(int, numbers))
        # A window that is going may still have the keyboard; it isn't seen any more.
        return any(control.rect() == there and control.seen()
                   for control in (Control(self, node) for node in _children(self.node)))

    def expect_running(self):
        check(self.process.poll() is None, f"the program has ended (exit code {self.process.poll()})")

    def wait_for_end(self):
        """Its exit code."""
        wait_for("the end of the program", lambda: self.process.poll() is not None)
        return self.process.returncode

    # Controls.

    def controls(self, fits, within=None):
        """The controls now seen for which `fits(control)` holds, from the front of the tree to its end."""
        self.expect_running()
        start = within.node if within else self.node
        start.clear_cache()
        found = []

        def visit(node):
            control = Control(self, node)
            if fits(control) and control.seen():
                found.append(control)
            for child in _children(node):
                visit(child)

        visit(start)
        return found

    def find(self, name, within=None):
        """The first control of that name that is seen, once there is one."""
        return wait_for(f'a control named "{name}"',
                        lambda: self.controls(lambda control: control.name() == name, within))[0]

    def entry(self, name):
        """The entry of that name that is seen, once there is one; its caption may have the same name."""
        return wait_for(f'an entry named "{name}"', lambda: self.controls(
            lambda control: control.name() == name and control.role() == "text"))[0]

    def enter(self, name, *keys):
        """Clicks into an entry, once it stands still, and presses keys there once it has the keyboard; returns
        it."""
        entry = self.entry(name)
        wait_for(f'"{name}" in front', self.in_front)
        self.desk.click(*entry.settled().centre())
        wait_for(f'the keyboard in "{name}"', entry.has_keyboard)
        if keys:
            self.desk.key(*keys)
        return entry

    def shows(self, text):
        """Whether a control whose name holds `text` is seen now."""
        return bool(self.controls(lambda control: text in control.name()))

    def wait_for_text(self, text):
        wait_for(f'the text "{text}"', lambda: self.shows(text))

    def press(self, name, within=None):
        """Clicks the control of that name, once it stands still."""
        control = self.find(name, within)
        wait_for(f'"{name}" in front', self.in_front)
        self.desk.click(*control.settled().centre())

    def key(self, *keys):
        """Presses keys in the window that has the keyboard, once that is the program's."""
        wait_for(f"a window for {' '.join(keys)}", self.in_front)
        self.desk.key(*keys)

    def answer(self, text, button):
        """Waits for the message that holds `text`, presses its button and waits for it to go."""
        self.wait_for_text(text)
        self.press(button)
        wait_for(f'the message "{text}" to go', lambda: self.process.poll() is not None or not self.shows(text))

    def outline(self):
        """The tree of controls, a line each."""
        lines = []

        def visit(node, depth):
            control = Control(self, node)
            lines.append("%s%s '%s' %s%s\n" % ("  " * depth, _asked(node.get_role_name), control.name(),
                                               control.rect(), "" if control.seen() else " unseen"))
            for child in _children(node):
                visit(child, depth + 1)

        if self.process.poll() is None:
            self.node.clear_cache()
            visit(self.node, 0)
        return "".join(lines)


class Control:
    def __init__(self, program, node):
        self.program, self.node = program, node

    def name(self):
        return _asked(self.node.get_name) or ""

    def role(self):
        return _asked(self.node.get_role_name) or ""

    def seen(self):
        states = _asked(self.node.get_state_set)
        return bool(states) and states.contains(self.program.desk.atspi.StateType.SHOWING)

    def renewed(self):
        """Itself, with what is known of it asked anew."""
        self.node.clear_cache()
        return self

    def has_keyboard(self):
        states = _asked(self.renewed().node.get_state_set)
        return bool(states) and states.contains(self.program.desk.atspi.StateType.FOCUSED)

    def text(self):
        """What an entry holds now."""
        return _asked(self.program.desk.atspi.Text.get_text, self.node, 0, -1)

    def wait_for_text(self, text):
        wait_for(f'the text "{text}" in "{self.name()}"', lambda: self.text() == text)

    def parent(self):
        node = _asked(self.node.get_parent)
        return Control(self.program, node) if node else None

    def rect(self):
        """(x, y, width, height) on the screen."""
        extents = _asked(self.node.get_extents, self.program.desk.atspi.CoordType.SCREEN)
        return (extents.x, extents.y, extents.width, extents.height) if extents else (0, 0, 0, 0)

    def centre(self):
        x, y, width, height = self.rect()
        return x + width // 2, y + height // 2

    def settled(self):
        """Itself, once it has a size."""
        wait_for(f'a size of "{self.name()}"', lambda: min(self.rect()[2:]) > 0)
        return self

    def within(self, name):
        """Whether a control further out bears that name."""
        node = _asked(self.node.get_parent)
        while node:
            if _asked(node.get_name) == name:
                return True
            node = _asked(node.get_parent)
        return False


def _asked(question, *arguments):
    """The answer, or None where the control has gone meanwhile."""
    from gi.repository import GLib
    try:
        return question(*arguments)
    except GLib.Error:
        return None


def _children(node):
    count = _asked(node.get_child_count) or 0
    children = [_asked(node.get_child_at_index, i) for i in range(count)]
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
