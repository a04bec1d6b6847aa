"""A program on a display of its own, worked with mouse and keys as a user would; for the tools that run it for long
(soak.py, kill_test.py). Needs Debian's xvfb, openbox, xdotool and x11-utils."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import zlib

TOOLS = ("Xvfb", "openbox", "xdotool", "xprop")
SIZE = (1320, 900)  # of the window
WAIT = 90.0  # seconds until something that should happen counts as broken


class Broken(Exception):
    """The program did what it mustn't, or didn't do what it should."""


def wait_for(what, condition, seconds=WAIT):
    """Until `condition` gives something that is true; that is the result."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Broken(f"waited {seconds:.0f} s for {what}")
        time.sleep(0.05)


def read_processor_time(pid):
    """Seconds of processor time."""
    with open(f"/proc/{pid}/stat", encoding="ascii") as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def is_running(process):
    return process is not None and process.poll() is None


def check_png(path):
    with open(path, "rb") as file:
        data = file.read()
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise Broken(f"{path} is no PNG file")
    at, pixels = 8, b""
    while at + 12 <= len(data):
        length = int.from_bytes(data[at:at + 4], "big")
        kind, body = data[at + 4:at + 8], data[at + 8:at + 8 + length]
        if zlib.crc32(kind + body) != int.from_bytes(data[at + 8 + length:at + 12 + length], "big"):
            break
        pixels += body if kind == b"IDAT" else b""
        if kind == b"IEND":
            zlib.decompress(pixels)
            return
        at += 12 + length
    raise Broken(f"{path} is not a whole picture")


class Stage:
    """A folder, an X server and a window manager, all of them gone afterwards."""

    def __init__(self, name):
        missing = [tool for tool in TOOLS if not shutil.which(tool)]
        if missing:
            raise SystemExit(f"missing: {', '.join(missing)}: apt-get install xvfb openbox xdotool x11-utils")
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(130))
        self.folder = tempfile.mkdtemp(prefix=f"morentis-{name}-")
        self.processes = []
        for part in ("runtime", "config/gtk-3.0", "home"):
            os.makedirs(os.path.join(self.folder, part), mode=0o700)
        with open(self.path("config/gtk-3.0/settings.ini"), "w", encoding="utf-8") as file:
            file.write("[Settings]\ngtk-enable-animations=false\ngtk-cursor-blink=false\n")
        self.env = {key: value for key, value in os.environ.items()
                    if key not in ("WAYLAND_DISPLAY", "XAUTHORITY", "LC_ALL", "LANGUAGE")}
        self.env.update(HOME=self.path("home"), XDG_RUNTIME_DIR=self.path("runtime"),
                        XDG_CONFIG_HOME=self.path("config"), DBUS_SESSION_BUS_ADDRESS="disabled:",
                        NO_AT_BRIDGE="1", GSETTINGS_BACKEND="memory", GDK_BACKEND="x11",
                        LIBGL_ALWAYS_SOFTWARE="1", LANG="C.UTF-8")

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def __enter__(self):
        self.start_display()
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            if is_running(process):
                process.kill()
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def take_program(self, build):
        """A copy of the built programs and of what they read: they keep settings and recovery projects beside
        themselves, and may be built anew meanwhile."""
        bin_folder = self.path("bin")
        os.makedirs(bin_folder)
        for name in ("morentis", "morentis-film"):
            source = os.path.join(build, name)
            if not os.access(source, os.X_OK):
                raise SystemExit(f"{source} is not built")
            shutil.copy(source, bin_folder)
        root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
        for name in ("GL", "ICONS", "Resource", "Texture"):
            shutil.copytree(os.path.join(root, name), os.path.join(bin_folder, name))

    def run(self, words, log, own_group=False):
        """A child of ours, with its words in a file of the stage; with `own_group`, its children end with it."""
        with open(self.path(log), "ab") as file:
            process = subprocess.Popen(words, env=self.env, stdout=file, stderr=subprocess.STDOUT,
                                       stdin=subprocess.DEVNULL, cwd=self.folder, start_new_session=own_group)
        self.processes.append(process)
        return process

    def start_display(self):
        read, write = os.pipe()
        with open(self.path("Xvfb.log"), "wb") as log:
            self.processes.append(subprocess.Popen(
                ["Xvfb", "-displayfd", str(write), "-screen", "0", "1600x1200x24", "-dpi", "96", "-nolisten", "tcp",
                 "-noreset", "+extension", "GLX"], pass_fds=(write,), stdout=log, stderr=log))
        os.close(write)
        with os.fdopen(read) as pipe:
            self.env["DISPLAY"] = ":" + pipe.readline().strip()
        self.run(["openbox", "--sm-disable"], "openbox.log")
        wait_for("the window manager", lambda: "window id" in subprocess.run(
            ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.env, capture_output=True, text=True,
            check=False).stdout)

    def keep(self, folder):
        """A screenshot and all files, for whoever looks for what went wrong; `folder` may be None."""
        if not folder:
            return
        shutil.copytree(self.folder, folder, dirs_exist_ok=True, ignore_dangling_symlinks=True)
        subprocess.run(["import", "-window", "root", os.path.join(folder, "screen.png")], env=self.env, check=False)

    def forget(self, process):
        """One that has ended."""
        process.wait()
        self.processes.remove(process)


class Hands:
    """Mouse and keys, and a look at the windows' names."""

    def __init__(self, stage):
        self.stage = stage
        self.program = None
        self.main = None

    def do(self, *words):
        """An xdotool command; what it prints. A window that goes meanwhile is no mistake."""
        result = subprocess.run(["xdotool", *map(str, words)], env=self.stage.env, capture_output=True, text=True,
                                timeout=WAIT, check=False)
        return result.stdout

    def windows(self):
        """(number, name) of the program's windows in sight."""
        found = []
        if not is_running(self.program):
            return found
        for number in self.do("search", "--onlyvisible", "--pid", self.program.pid, "--name", ".").split():
            name = self.do("getwindowname", number).strip()
            if name and name != "morentis":
                found.append((number, name))
        return found

    def find(self, *parts):
        """The newest window with one of these in its name."""
        found = [number for number, name in self.windows() if any(part in name for part in parts)]
        return found[-1] if found else None

    def start(self, *words):
        """The program, until its window is there and has its size."""
        self.program = self.stage.run([*words], "program.log")
        self.main = self.wait_window("Morentis 3", "Morentis3")
        self.do("windowsize", self.main, *SIZE, "windowmove", self.main, 60, 60)
        self.do("windowactivate", "--sync", self.main)

    def wait_window(self, *parts, seconds=WAIT):
        def look():
            if not is_running(self.program):
                raise Broken(f"the program ended by itself: {self.program.returncode}")
            return self.find(*parts)
        return wait_for(f'a window "{parts[0]}"', look, seconds)

    def title(self):
        return self.do("getwindowname", self.main).strip()

    def fit(self):
        """The window has the size that all places are told for, which it may have left while it was placed first."""
        wait_for("the window's size", lambda: self.size(self.main) == SIZE or self.do("windowsize", self.main, *SIZE))

    def rest(self):
        """Until the program has nothing to do."""
        def quiet():
            if not is_running(self.program):
                raise Broken(f"the program ended by itself: {self.program.returncode}")
            before = read_processor_time(self.program.pid)
            time.sleep(0.5)
            return read_processor_time(self.program.pid) - before < 0.1
        wait_for("the program to rest", quiet)

    def key(self, *keys):
        self.do("key", "--clearmodifiers", "--delay", 20, *keys)

    def click(self, x, y, button=1, window=None):
        self.do("mousemove", "--window", window or self.main, x, y, "click", button)

    def drag(self, start, end, button=1):
        steps = []
        for i in range(1, 5):
            steps += ["mousemove", "--window", self.main, start[0] + (end[0] - start[0]) * i // 4,
                      start[1] + (end[1] - start[1]) * i // 4, "sleep", "0.03"]
        self.do("mousemove", "--window", self.main, *start, "mousedown", button, *steps, "mouseup", button)

    def size(self, window):
        facts = dict(line.split("=") for line in self.do("getwindowgeometry", "--shell", window).split())
        return int(facts.get("WIDTH", 0)), int(facts.get("HEIGHT", 0))

    def answer(self, window, share):
        """Press the button of a question that lies at this share of its width."""
        width, height = self.size(window)
        if width:
            self.click(int(width * share), height - 14, window=window)
            time.sleep(0.1)

    def type_path(self, path):
        """Into the file dialog that is in sight."""
        self.key("ctrl+a")
        self.do("type", "--delay", 4, path)
        time.sleep(0.2)
        self.key("Return")

    def quit(self):
        """As a user does; the program's exit status."""
        self.do("windowactivate", "--sync", self.main)
        self.key("q")
        end = time.monotonic() + WAIT
        while is_running(self.program) and time.monotonic() < end:
            question = self.find("Query")
            if question:  # about steps that no project holds, the left of three buttons; else the right of two
                self.answer(question, 1 / 6 if self.title().startswith("*") else 3 / 4)
            time.sleep(0.2)
        if is_running(self.program):
            self.program.send_signal(signal.SIGABRT)
            raise Broken("the program doesn't quit")
        return self.program.returncode
