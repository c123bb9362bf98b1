"""The program is started while it runs already: one instance stays, and every picture opens once."""

import contextlib
import os
import signal
import sys

from desk import LEFT, Sheet, check, children, main, wait_for
from pictures import Picture

CHANGED = "The image has been changed."


def small(desk, name, seed=0):
    """A picture file of that name in the desk's folder."""
    Picture.telling_places(40 + seed, 30).write(desk.path(name))
    return desk.path(name)


def start_again(desk, *arguments, folder=None):
    return desk.spawn([sys.argv[1], *arguments], cwd=folder or desk.folder)


def expect_handed_over(desk, *arguments, **more):
    process = start_again(desk, *arguments, **more)
    wait_for("the second start to end", lambda: process.poll() is not None)
    check(process.returncode == 0, f"exit code {process.returncode}")


class Heir:
    """A process that a start left behind, as `subprocess` would tell of it."""

    def __init__(self, pid):
        self.pid, self.returncode = pid, None

    def poll(self):
        if self.returncode is None:
            pid, status = os.waitpid(self.pid, os.WNOHANG)
            self.returncode = os.waitstatus_to_exitcode(status) if pid else None
        return self.returncode


def instances():
    """The processes of the program, those that stand by too."""
    found = []
    for pid in children():
        with contextlib.suppress(OSError):
            if os.path.samefile(f"/proc/{pid}/exe", sys.argv[1]):
                found.append(pid)
    return found


def the_only_one():
    pids = instances()
    return Heir(pids[0]) if len(pids) == 1 else None


def open_pictures(program):
    """The names of the pictures' files, as often as they are open."""
    captions = (control.name() for control in program.controls(lambda control: control.role() == "frame"))
    return sorted(os.path.basename(caption.removesuffix(" - 100%")) for caption in captions if caption.endswith("%"))


def hands_over(desk):
    desk.spawn(["xmessage", "-geometry", "+20+40", "something else"])
    wait_for("another window", lambda: desk.ask("xdotool", "getactivewindow", "getwindowname") == "xmessage")
    program = desk.start(small(desk, "first.bmp"))
    os.mkdir(desk.path("other folder"))
    second = small(desk, "other folder/second.bmp")
    window = desk.ask("xdotool", "getactivewindow")
    desk.hand("windowminimize", window)
    wait_for("the window to be minimised", lambda: not program.in_front())
    expect_handed_over(desk, "second.bmp", folder=os.path.dirname(second))
    Sheet(desk, program, f"{second} - 100%", Picture.telling_places(40, 30))
    wait_for("the window in front", program.in_front)

    # Now the person has turned elsewhere since the window was last used.
    desk.hand("search", "--name", "xmessage", "mousemove", "--window", "%1", 40, 10, "click", LEFT)
    wait_for("another window in front", lambda: not program.in_front())
    expect_handed_over(desk)
    wait_for("the window in front", program.in_front)
    check(open_pictures(program) == ["first.bmp", "second.bmp"], "a start without a picture leaves all as it was")
    expect_handed_over(desk, "missing.bmp")
    program.answer("The selected picture file is missing or invalid", "OK")
    program.key("ctrl+q")
    program.expect_end()


def many_at_once(desk):
    """Also where the one before was killed and has left its socket."""
    names = [f"{i}.bmp" for i in range(10)]
    desk.start().process.kill()
    starts = [start_again(desk, small(desk, name, i)) for i, name in enumerate(names)]
    wait_for("all but one to end", lambda: sum(start.poll() is None for start in starts) <= 1)
    check(sorted(start.poll() or 0 for start in starts) == [0] * 10, "each ends as a success")
    left = next(start for start in starts if start.poll() is None)
    program = desk.adopt(left)
    wait_for("all pictures", lambda: len(open_pictures(program)) >= 10)
    check(open_pictures(program) == names, f"open are {open_pictures(program)}")
    program.key("ctrl+q")
    program.expect_end()


def the_first_is_stopped(desk):
    program = desk.start(small(desk, "first.bmp"))
    program.process.send_signal(signal.SIGSTOP)
    further = desk.start(small(desk, "further.bmp"))
    check(open_pictures(further) == ["further.bmp"], "it opens its picture itself")
    program.process.send_signal(signal.SIGCONT)
    expect_handed_over(desk, small(desk, "third.bmp"))
    wait_for("the third picture", lambda: open_pictures(program) == ["first.bmp", "third.bmp"])
    program.process.send_signal(signal.SIGSTOP)
    waiting = start_again(desk, small(desk, "fourth.bmp"))
    program.process.kill()
    check(open_pictures(desk.adopt(waiting)) == ["fourth.bmp"], "it takes the place of the first")


def the_first_is_busy(desk):
    path, program, sheet = desk.open_picture("first.bmp", Picture.telling_places(40, 30))
    program.key("ctrl+n")
    program.find("Width:", role="text")
    expect_handed_over(desk, small(desk, "second.bmp"))
    program.press("Cancel")
    wait_for("the picture", lambda: open_pictures(program) == ["first.bmp", "second.bmp"])
    program.key("ctrl+w")
    program.press("Pen Tool")
    sheet.row(4, 30, 10, (0, 0, 0))
    program.key("ctrl+q")
    wait_for("the question", lambda: program.shows(CHANGED))
    expect_handed_over(desk, small(desk, "third.bmp"))
    check(open_pictures(program) == ["first.bmp"], "a question is up")
    program.press("No")
    program.expect_end()
    heir = desk.adopt(wait_for("a start for the picture that waited", the_only_one))
    wait_for("that picture", lambda: open_pictures(heir) == ["third.bmp"])


def the_first_is_killed(desk):
    """With pictures that it has taken and not opened yet: one of their starts takes its place, with all of them."""
    program = desk.start(small(desk, "first.bmp"))
    program.key("ctrl+n")
    program.find("Width:", role="text")
    names = [f"{i}.bmp" for i in range(3)]
    for i, name in enumerate(names):
        expect_handed_over(desk, small(desk, name, i))
    program.process.kill()
    program.process.wait()
    heir = desk.adopt(wait_for("a single instance", the_only_one))
    check(open_pictures(heir) == names, f"open are {open_pictures(heir)}")
    heir.key("ctrl+q")
    heir.expect_end()
    check(not instances(), "nothing is left to open")


main("second_start", hands_over, many_at_once, the_first_is_stopped, the_first_is_busy,
     the_first_is_killed)
