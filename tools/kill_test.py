#!/usr/bin/env python3
"""End the built program at random moments, without a warning, while it is worked with, saves and makes films; then look at
what stands on the disk, and start it again.

    tools/kill_test.py                       200 times, build/release
    tools/kill_test.py --kills 20 --seed 7   fewer, and others

Nothing older than a minute may be lost: every value that was typed in earlier stands in the project or in the recovery
project. No broken file may stand under a real name: projects, pictures and videos are whole. The next start offers what
was kept and opens it, and the project opens as well. The exit status is 1 when any of that doesn't hold.
"""

import argparse
import collections
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import threading
import time

from hands import Broken, Hands, Stage, check_png, is_running, wait_for

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
EXAMPLE = "lj_melt_bin"
KEY = b"SEQ0TYPE0RadiusFactor="
OLD = 60.0  # seconds: what is older may not be lost
SLACK = 6.0  # until keys have come to the program, and its clock of half a second has struck
LONG = 0.06  # of all sessions go on for longer than that

FIELD = (1212, 230)  # in a window of 1320 x 900
VIEW = (502, 374)


def value_of(path):
    """The number that stands in a whole project; None where there is no file."""
    try:
        with open(path, "rb") as file:
            data = file.read()
    except FileNotFoundError:
        return None
    found = re.findall(re.escape(KEY) + rb"(\d+)\.0*\n", data)
    # The first and the last lines of any project.
    if not found or b"DataLoad" not in data[:100] or not re.search(rb"ImgSequenceVideoRate=[\d.]+\n(.+\n)*\Z", data):
        raise Broken(f"{path} is not a whole project ({len(data)} bytes)")
    return int(found[-1])


class Session(Hands):
    """One life of the program."""

    def __init__(self, stage, chance, first_value):
        super().__init__(stage)
        self.chance = chance
        self.project = stage.path("data", EXAMPLE + ".mrp")
        self.films = stage.path("films")
        self.value = first_value
        self.typed = []  # (when, value), as far as the keys were sent
        self.ended = None

    def recovery(self):
        folder = self.stage.path("bin")
        return sorted(os.path.join(folder, name) for name in os.listdir(folder)
                      if name.startswith("Morentis3Recovery-") and name.endswith(".mrp"))

    def begin(self):
        """Start, take what was kept, and open the project all the same."""
        kept = self.recovery()
        self.start(self.stage.path("bin/morentis"))
        if kept:
            self.answer(self.wait_window("Recovery"), 3 / 4)
            wait_for("what was kept", lambda: self.title().startswith("*") or self.find("Warning"))
            if self.find("Warning"):
                raise Broken("what was kept can't be opened")
        self.key("ctrl+o")
        window = self.wait_window("Select a project file")
        self.do("windowactivate", "--sync", window)
        self.type_path(self.project)

        def opened():
            if self.find("Warning"):
                raise Broken("the project can't be opened")
            question = self.find("Query")
            if question:
                self.answer(question, 1 / 6)
            return self.title() == "Morentis3 - " + self.project
        wait_for("the project", opened)
        self.fit()
        self.rest()  # what is clicked before the panels stand in their places goes beside them
        if self.recovery():
            raise Broken(f"left over after its project was opened: {self.recovery()}")

    def edit(self):
        self.value += 1
        self.click(*FIELD)
        self.key("ctrl+a")
        self.do("type", str(self.value))
        self.key("Return")
        self.typed.append((time.monotonic(), self.value))

    def save(self):
        self.do("windowactivate", self.main)
        self.key("ctrl+s")
        if self.chance.random() < 0.7:
            time.sleep(self.chance.uniform(0, 0.2))

    def film(self):
        self.key("F8")
        dialog = self.wait_window("Save Image Sequence")
        self.answer(dialog, 0.1)
        for _ in range(self.chance.randint(2, 12)):
            for window, _ in self.windows():
                if window not in (self.main, dialog):
                    self.answer(window, 0.25)
            time.sleep(0.1)

    def play(self):
        self.click(*VIEW)
        self.key("space")
        time.sleep(1)

    def ask(self):
        """A file dialog that stays open."""
        self.do("windowactivate", self.main)
        self.key("ctrl+o")
        self.wait_window("Select a project file")
        time.sleep(2 * OLD)

    def live(self, kind, seconds):
        """Work until the end comes."""
        def end():
            self.ended = time.monotonic()
            os.kill(self.program.pid, signal.SIGKILL)
        timer = threading.Timer(seconds, end)
        timer.start()
        try:
            self.edit()
            while is_running(self.program):
                acts = {"edit": (self.edit, self.edit, lambda: time.sleep(0.3)), "save": (self.edit, self.save),
                        "film": (self.edit, self.film), "play": (self.edit, self.play), "ask": (self.edit, self.ask),
                        }[kind]
                self.do("windowactivate", self.main)
                for act in acts:
                    if is_running(self.program):
                        act()
        except (Broken, subprocess.TimeoutExpired):
            if self.ended is None:  # not by us
                raise
        finally:
            timer.join()
        self.program.wait()
        if self.program.returncode != -signal.SIGKILL:
            raise Broken(f"the program ended by itself before: {self.program.returncode}")

    def judge(self):
        """What stands on the disk. (value kept, how many seconds of work were lost)"""
        kept = [value_of(path) for path in [self.project, *self.recovery()]]
        newest = max(value for value in kept if value is not None)
        if newest > self.value:
            raise Broken(f"nobody typed {newest}")
        lost = [when for when, value in self.typed if value > newest and when <= self.ended]
        age = self.ended - min(lost) if lost else 0.0
        if age > OLD + SLACK:
            raise Broken(f"the work of {age:.1f} s is lost: kept {kept}, typed {self.typed[-1][1]}")
        for name in os.listdir(self.films):
            path = os.path.join(self.films, name)
            if name.startswith(".") or ".part." in name:
                continue  # what was being written; the next one of that name takes it up
            if name.endswith(".png"):
                check_png(path)
            elif subprocess.run(["ffprobe", "-v", "error", path], capture_output=True, check=False).returncode != 0:
                raise Broken(f"{path} is not whole")
        if len([name for name in os.listdir(self.films) if ".part." in name]) > 2:
            raise Broken(f"videos that were begun pile up in {self.films}")
        return newest, age


def end_film_command(stage, chance, number):
    """The same for the command that makes films without a window."""
    folder = stage.path(f"command{number}")
    os.makedirs(folder)
    project = stage.path("data", EXAMPLE + ".mrp")
    process = stage.run([stage.path("bin/morentis-film"), "--quiet", "--frames", "0-3", "--size", "320x240",
                         "--output", os.path.join(folder, "f%04d.png"), project], "program.log", own_group=True)
    try:
        process.wait(chance.uniform(0.2, 3.0))
    except subprocess.TimeoutExpired:
        pass

    def is_gone():  # the process that makes the film as well as the one that watches it
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            return True
        process.poll()
        return False
    wait_for("the command's end", is_gone)
    stage.forget(process)
    names = [name for name in os.listdir(folder) if not name.startswith(".")]
    for name in names:
        check_png(os.path.join(folder, name))
    shutil.rmtree(folder)
    return len(names)


def prepare(stage, build):
    stage.take_program(build)
    shutil.copytree(os.path.join(ROOT, "examples", EXAMPLE), stage.path("data"))
    os.makedirs(stage.path("films"))
    with open(stage.path("data", EXAMPLE + ".mrp"), "ab") as file:
        file.write(KEY + b"1.000000\n" + f"ImgSequenceFile={stage.path('films')}/f%04d.png\nImgSequenceOutW=320\n"
                   "ImgSequenceOutH=240\nImgSequenceVideo=1\nTimeInterp=2\nTimeWorkAreaMax=2\n".encode())


def kill_often(stage, options):
    """How many kinds of ends there were, and the longest work that was lost."""
    chance = random.Random(options.seed)
    counts = collections.Counter()
    value, worst, pictures = 1, 0.0, 0
    for number in range(1, options.kills + 1):
        kind = chance.choice(("edit", "save", "save", "film", "film", "command"))
        if kind == "command":
            pictures += end_film_command(stage, chance, number)
            counts[kind] += 1
            continue
        seconds = chance.uniform(0.1, 6.0)
        if chance.random() < LONG:
            kind = chance.choice(("edit", "play", "ask", "film"))
            seconds = OLD + chance.uniform(8.0, 15.0)
        session = Session(stage, chance, value)
        session.begin()
        session.live(kind, seconds)
        stage.forget(session.program)
        kept, age = session.judge()
        value = session.value
        worst = max(worst, age)
        counts[kind + (" for over a minute" if seconds > OLD else "")] += 1
        print(f"{number:4} {kind:8} {seconds:5.1f} s: {session.value} typed, {kept} kept, {age:.1f} s lost", flush=True)
    session = Session(stage, chance, value)
    session.begin()
    if session.quit() != 0:
        raise Broken("the last one doesn't quit")
    return counts, worst


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--kills", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--build", default=os.path.join(ROOT, "build/release"), help="folder of the built programs")
    parser.add_argument("--keep", help="where a screenshot and all files go when something is broken")
    options = parser.parse_args()
    with Stage("kill") as stage:
        prepare(stage, options.build)
        try:
            counts, worst = kill_often(stage, options)
        except Broken as broken:
            stage.keep(options.keep)
            print(f"BROKEN: {broken}")
            return 1
    print("Ended " + ", ".join(f"{count} times in {kind}" for kind, count in sorted(counts.items())))
    print(f"The oldest work that was lost: {worst:.1f} s. Sound.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
