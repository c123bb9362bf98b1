#!/usr/bin/python3
"""Measures the whole program beside the toolkit with nothing on it. Asserts nothing; prints a table of ratios.

whole_program.py [--build FOLDER] [--runs N] [PART...], PART of startup, again, picture, idle, memory (default: all)

- startup: from the start of the process to the painted window, against an empty window with a menu bar.
- again: from the start of a second process to its end, once the first has been told, against the same window.
- picture: the same to a painted picture of 4000 by 3000 pixels, against a window that only shows it.
- idle: the share of a core, and how often a second the program wakes, with a document open, the pointer at rest on it
  and nobody at the desk, over thirty seconds.
- memory: Pss with nothing open, with the picture open, and after a stroke of the pen.

Runs of the two programs alternate, so that what else the machine does meets both. FOLDER holds the build with the
benchmarks (build/test by default).
"""

import argparse
import os
import select
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
import zlib

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "tests", "desk"))

WIDTH, HEIGHT, MARK = 4000, 3000, 400
MARK_COLOUR = "ff00ff"
LONGEST = 60
REST_SECONDS, REST = 30, 400


# The pictures: a ramp with noise, and a square of the mark's colour at the top left, which every window shows first.

def rows():
    noise = os.urandom(1 << 16)
    mark = bytes.fromhex(MARK_COLOUR) * MARK
    ramp = bytearray(3 * WIDTH)
    for x in range(WIDTH):
        ramp[3 * x:3 * x + 3] = bytes((x * 224 // WIDTH, 112, 224 - x * 224 // WIDTH))
    plain = int.from_bytes(ramp, "little")
    grain = int.from_bytes(b"\x1f" * len(ramp), "little")
    for y in range(HEIGHT):
        start = (y * 7919) % (len(noise) - 1)
        wild = (noise[start:] + noise[:start])[:len(ramp)]
        row = (plain + (int.from_bytes(wild, "little") & grain)).to_bytes(len(ramp), "little")
        yield mark + row[len(mark):] if y < MARK else row


def write_pictures(folder):
    """name -> path of the picture as png, jpeg and bmp."""
    ppm = os.path.join(folder, "picture.ppm")
    with open(ppm, "wb") as file:
        file.write(b"P6\n%d %d\n255\n" % (WIDTH, HEIGHT))
        file.writelines(rows())
    paths = {}
    for name, options in (("png", []), ("jpg", ["-quality", "90"]), ("bmp", ["-type", "TrueColor"])):
        paths[name] = os.path.join(folder, "picture." + name)
        # Debian's own, whatever else stands in the path.
        subprocess.run(["/usr/bin/convert", ppm, *options, ("BMP3:" if name == "bmp" else "") + paths[name]],
                       check=True)
    os.remove(ppm)
    return paths


# Start-up: a bare screen, no window manager, no assistive tools.

class Screen:
    def __init__(self, folder):
        reader, writer = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=(writer,), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        if not select.select([reader], [], [], LONGEST)[0]:
            raise SystemExit("the screen didn't start")
        with os.fdopen(reader) as told:
            number = told.readline().strip()
        self.environment = {
            "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "DISPLAY": ":" + number, "QT_QPA_PLATFORM": "xcb",
            "HOME": folder, "XDG_CONFIG_HOME": os.path.join(folder, "config"),
            "XDG_RUNTIME_DIR": os.path.join(folder, "run"), "TMPDIR": os.path.join(folder, "tmp")}
        for place in ("config", "tmp", "run"):
            os.makedirs(os.path.join(folder, place), mode=0o700, exist_ok=True)
        without_splash(os.path.join(folder, "config"))

    def end(self):
        self.server.terminate()
        self.server.wait()

    def time_until(self, watch, command):
        """Seconds from the start of `command` to what `watch` waits for."""
        watcher = subprocess.Popen([*watch, str(LONGEST)], env=self.environment, stdout=subprocess.PIPE, text=True)
        began = time.monotonic()
        program = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        told = watcher.communicate()[0]
        program.kill()
        program.wait()
        if watcher.returncode != 0:
            raise SystemExit(f"{command[0]} painted nothing in {LONGEST} s")
        return float(told) - began


def without_splash(folder):
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "Korvath.ini"), "w", encoding="utf-8") as file:
        file.write("[Settings]\nShowSplashScreen=0\n")


def compare_times(screen, watch, ours, bare, runs):
    mine, other = [], []
    for run in range(runs + 1):
        pair = ((mine, ours), (other, bare))
        for times, command in pair if run % 2 else reversed(pair):
            seconds = screen.time_until(watch, command)
            if run > 0:  # The first pair only warms the caches.
                times.append(1000 * seconds)
    return statistics.median(mine), statistics.median(other)


def time_again(screen, build, runs):
    """ms of a start while another instance runs and is free to hear of it, and to the bare window."""
    watcher = subprocess.Popen([build.watcher, "window", str(LONGEST)], env=screen.environment,
                               stdout=subprocess.DEVNULL)
    first = subprocess.Popen([build.ours], env=screen.environment)
    watcher.wait()
    try:
        times = []
        for run in range(runs + 1):
            time.sleep(0.2)  # The first is at rest again.
            began = time.monotonic()
            subprocess.run([build.ours], env=screen.environment, check=True)
            if run > 0:  # The first pair only warms the caches.
                times.append(1000 * (time.monotonic() - began))
        if first.poll() is not None:
            raise SystemExit("the first instance has ended")
    finally:
        first.kill()
        first.wait()
    bare = [screen.time_until([build.watcher, "window"], [build.window]) for _ in range(runs)]
    return statistics.median(times), 1000 * statistics.median(bare)


# Idle and memory: on the desk of the desk tests, since they need a hand.

def stat_ticks(pid):
    with open(f"/proc/{pid}/stat", encoding="utf-8", errors="replace") as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def pss(pid):
    with open(f"/proc/{pid}/smaps_rollup", encoding="utf-8") as file:
        for line in file:
            if line.startswith("Pss:"):
                return int(line.split()[1]) / 1024
    raise SystemExit("no Pss told")


def wait_for_colour(build, seconds=LONGEST):
    subprocess.run([build.watcher, "colour", MARK_COLOUR, str(seconds)], check=True, stdout=subprocess.DEVNULL)


def on_a_desk(binary, work):
    """What `work(desk, start)` returns, on a desk whose programs are of `binary`; in a process of its own, since the
    accessibility library knows one bus in its life."""
    from desk import Desk
    reader, writer = os.pipe()
    child = os.fork()
    if child == 0:
        os.close(reader)
        sys.argv = [sys.argv[0], binary]
        result = 1
        try:
            desk = Desk("whole_program")
            try:
                desk.set_up()
                without_splash(os.path.join(os.environ["HOME"], ".config"))
                with os.fdopen(writer, "w") as answer:
                    answer.write(" ".join(str(number) for number in work(desk)))
                result = 0
            finally:
                desk.clear()
        finally:
            sys.stdout.flush()
            sys.stderr.flush()
            if result == 1:
                import traceback
                traceback.print_exc()
            os._exit(result)
    os.close(writer)
    with os.fdopen(reader) as answer:
        told = answer.read()
    if os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) != 0:
        raise SystemExit(f"measuring {binary} failed")
    return [float(number) for number in told.split()]


def sleeps(pid):
    """How often each thread of a process has gone to sleep so far, which is how often it woke."""
    counts = {}
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/status", encoding="utf-8") as file:
            counts[thread] = sum(int(line.split()[1]) for line in file if line.startswith("voluntary_ctxt_switches"))
    return counts


def at_rest(build, path):
    """% of a core, and wake-ups a second."""
    def work(desk):
        program = desk.start(path)
        wait_for_colour(build)
        desk.hand("mousemove", str(REST), str(REST))
        settle(program.process.pid)
        pid = program.process.pid
        ticks, before, began = stat_ticks(pid), sleeps(pid), time.monotonic()
        time.sleep(REST_SECONDS)
        seconds = time.monotonic() - began
        share = (stat_ticks(pid) - ticks) / os.sysconf("SC_CLK_TCK") / seconds
        woken = sum(count - before.get(thread, 0) for thread, count in sleeps(pid).items())
        return [100 * share, woken / seconds]
    return work


def settle(pid):
    """Waits until a second goes by that takes under a tenth of a core."""
    for _ in range(30):
        before = stat_ticks(pid)
        time.sleep(1)
        if stat_ticks(pid) - before < os.sysconf("SC_CLK_TCK") / 10:
            return


def memory_of_ours(build, path):
    def work(desk):
        program = desk.start()
        settle(program.process.pid)
        empty = pss(program.process.pid)
        program.key("ctrl+q")
        program.expect_end()
        program = desk.start(path)
        wait_for_colour(build)
        settle(program.process.pid)
        opened = pss(program.process.pid)
        program.press("Pen Tool")
        x, y, width, height = program.find("Picture").rect()
        start, end = (max(x, 0) + 20, max(y, 0) + 20), (max(x, 0) + 120, max(y, 0) + 20)
        desk.drag(start, end)
        desk.wait_for_pixel(start, (0, 0, 0))
        desk.wait_for_pixel(end, (0, 0, 0))
        settle(program.process.pid)
        return [empty, opened, pss(program.process.pid)]
    return work


def memory_of_bare(build, arguments):
    def work(desk):
        program = desk.start(*arguments)
        if arguments:
            wait_for_colour(build)
        settle(program.process.pid)
        return [pss(program.process.pid)]
    return work


class Build:
    def __init__(self, folder):
        self.ours = os.path.join(folder, "src", "zelvane")
        self.window = os.path.join(folder, "bench", "bare", "bare_window")
        self.picture = os.path.join(folder, "bench", "bare", "bare_picture")
        self.watcher = os.path.join(folder, "bench", "bare", "wait_painted")
        for path in vars(self).copy().values():
            if not os.access(path, os.X_OK):
                raise SystemExit(f"{path} isn't there; build the preset 'test' first")


def report(what, unit, ours, bare):
    ratio = f"{ours / bare:8.2f}" if bare else "       -"
    print(f"{what:<34}{ours:>10.1f} {unit:<3}{bare:>10.1f} {unit:<3}{ratio}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", default=os.path.join(ROOT, "build", "test"))
    parser.add_argument("--runs", type=int, default=9)
    parser.add_argument("parts", nargs="*", metavar="PART", default=[])
    options = parser.parse_args()
    known = ["startup", "again", "picture", "idle", "memory"]
    parts = options.parts or known
    for part in parts:
        if part not in known:
            parser.error(f"no part is called {part}")
    build = Build(os.path.abspath(options.build))

    folder = tempfile.mkdtemp(prefix="zelvane-bench-")
    try:
        pictures = write_pictures(folder) if not set(parts) <= {"startup", "again"} else {}
        print(f"{'':<34}{'Zelvane':>14}{'bare toolkit':>14}   ratio")
        screen = Screen(folder)
        try:
            if "startup" in parts:
                report("start to painted window", "ms",
                       *compare_times(screen, [build.watcher, "window"], [build.ours], [build.window], options.runs))
            if "again" in parts:
                report("second start to its end", "ms", *time_again(screen, build, options.runs))
            if "picture" in parts:
                for name, path in pictures.items():
                    report(f"start to painted {name}, 4000 x 3000", "ms",
                           *compare_times(screen, [build.watcher, "colour", MARK_COLOUR], [build.ours, path],
                                          [build.picture, path], options.runs))
        finally:
            screen.end()
        if "idle" in parts:
            ours = on_a_desk(build.ours, at_rest(build, pictures["png"]))
            bare = on_a_desk(build.picture, at_rest(build, pictures["png"]))
            for row, unit, mine, other in zip(("of a core", "wake-ups"), ("%", "/s"), ours, bare):
                report(f"idle with a document, {row}", unit, mine, other)
        if "memory" in parts:
            empty, opened, painted = on_a_desk(build.ours, memory_of_ours(build, pictures["png"]))
            bare_empty = on_a_desk(build.window, memory_of_bare(build, []))[0]
            bare_opened = on_a_desk(build.picture, memory_of_bare(build, [pictures["png"]]))[0]
            report("memory, nothing open", "MB", empty, bare_empty)
            report("memory, png open", "MB", opened, bare_opened)
            report("memory, after a stroke", "MB", painted, bare_opened)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
