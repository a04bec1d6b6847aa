#!/usr/bin/env python3
"""Work the built program for hours: play, seek, edit, undo and redo, save, film and reload, while its data change on
disk. Each round ends with the same project in the same state, and there memory, open handles and threads are counted.

    tools/soak.py                       8 hours, of build/release
    tools/soak.py --hours 0.5 --seed 7  half an hour of other acts

A line a round goes to the output, the verdict at the end; the exit status is 1 when something is broken:
- the program ended, hung, wrote a picture or project that isn't whole, or didn't quit;
- memory (resident, median of a tenth of the time) stands more than 5 % above what it was after the first tenth;
- a handle or thread more than after the first tenth is held (medians as well).
"""

import argparse
import os
import random
import shutil
import statistics
import subprocess
import sys
import time

from hands import Broken, Hands, Stage, check_png, is_running, read_processor_time, wait_for

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
EXAMPLES = (("lj_melt_bin", "lj_melt_bin"), ("lj_melt_bin", "melt_shadows"), ("deposit_text", "deposit_mesh"),
            ("galaxy_small_bin", "galaxy_film"), ("lj_melt_text", "melt_cut"), ("lj_unsorted_text", "lj_unsorted_text"),
            ("public_pyscal_ni500", "nickel_bonds"))
GROWTH = 1.05  # of memory, that counts as flat
LONG_PICTURE = 600.0  # seconds that views full of huge spheres with shadows may take without a graphics card
GIVEN_BACK = 4.0  # seconds after the last picture, by which the program has given memory back
LEAST_ROUNDS = 20  # tenths of fewer say nothing

# Places in a window of 1320 x 900, from its left and upper edge.
VIEW = (502, 374)
RULER = (250, 1285, 682)  # left, right, height
STOP = (108, 833)
REPEAT = (16, 861)
FIELDS = {"interval": ((411, 861), (1, 2, 5, 10)), "prefetch": ((559, 861), (1, 3, 8)),
          "point size": ((1212, 178), (3, 8, 14)), "radius factor": ((1212, 230), (0.5, 1, 2)),
          "alpha factor": ((1212, 283), (0.3, 0.7, 1)), "downsize": ((1212, 372), (1, 2, 3))}
PAGES = ((1120, 342), (1199, 342), (1271, 342), (1049, 342), (1125, 524), (1191, 524), (1053, 524))
KEY_BUTTONS = ((791, 861), (825, 861), (858, 861))
DIALOGS = ("ctrl+l", "ctrl+j", "ctrl+u", "ctrl+k", "ctrl+b", "ctrl+m", "ctrl+t", "ctrl+r", "ctrl+alt+o", "ctrl+alt+p")
STEPS = ("b", "n", "apostrophe", "minus", "0", "1", "3", "7", "5", "alt+1", "alt+2", "alt+3", "alt+4", "alt+5", "Home")
# Down in the menu of filters, then right and down in the submenu.
FILTERS = ((0, 0), (0, 1), (1, 0), (1, 3), (2, 0), (2, 1))


def read_process(pid):
    """Memory in KiB (resident, its own share), handles, threads, processor seconds."""
    facts = {}
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
        for line in file:
            words = line.split()
            if words[0] in ("Rss:", "Pss:"):
                facts[words[0]] = int(words[1])
    return (facts["Rss:"], facts["Pss:"], len(os.listdir(f"/proc/{pid}/fd")), len(os.listdir(f"/proc/{pid}/task")),
            read_processor_time(pid))


class Data:
    """Copies of the examples, of which files change, go and come as a simulation and its user would have it."""

    def __init__(self, stage, chance):
        self.folder = stage.path("data")
        self.films = stage.path("films")
        self.chance = chance
        os.makedirs(self.films)
        for example in {example for example, _ in EXAMPLES}:
            shutil.copytree(os.path.join(ROOT, "examples", example), os.path.join(self.folder, example))
        self.rest = os.path.join(self.folder, "rest", "lj_melt_bin.mrp")
        shutil.copytree(os.path.join(ROOT, "examples/lj_melt_bin"), os.path.dirname(self.rest))
        self.changed = []

    def project(self, example, name):
        """The project as it came, with a short film of small pictures."""
        path = os.path.join(self.folder, example, name + ".mrp")
        shutil.copyfile(os.path.join(ROOT, "examples", example, name + ".mrp"), path)
        with open(path, "a", encoding="utf-8") as file:
            file.write(f"ImgSequenceFile={self.films}/{name}%04d.png\nImgSequenceOutW=320\nImgSequenceOutH=240\n"
                       "TimeWorkAreaMin=0\nTimeWorkAreaMax=2\nTimeInterp=2\nFollowRun=10\n")
        return path

    def snapshots(self, example):
        folder = os.path.join(self.folder, example)
        return sorted(os.path.join(folder, name) for name in os.listdir(folder)
                      if name.endswith((".bin", ".txt", ".dump")) and name != "FACTS.txt")

    def change(self, example):
        files = self.snapshots(example)
        path = self.chance.choice(files)
        with open(path, "rb") as file:
            data = file.read()
        what = self.chance.randrange(5)
        self.changed.append(example)
        if what == 0:  # written anew, in place
            with open(path, "r+b") as file:
                file.write(data)
        elif what == 1:  # cut off in the middle
            with open(path, "wb") as file:
                file.write(data[:len(data) // 2])
        elif what == 2:  # some of it is rubbish
            with open(path, "r+b") as file:
                file.seek(len(data) // 3)
                file.write(bytes(self.chance.randrange(256) for _ in range(200)))
        elif what == 3:
            os.remove(path)
        else:  # whole again, under another name and renamed
            source = os.path.join(ROOT, "examples", example, os.path.basename(path))
            shutil.copyfile(source, path + "~")
            os.rename(path + "~", path)

    def mend(self):
        for example in set(self.changed):
            folder = os.path.join(ROOT, "examples", example)
            for name in os.listdir(folder):
                if not name.endswith(".mrp"):
                    shutil.copyfile(os.path.join(folder, name), os.path.join(self.folder, example, name))
        self.changed.clear()


class User(Hands):
    """What a user does in a round."""

    def __init__(self, stage, data, chance):
        super().__init__(stage)
        self.data, self.chance, self.acts = data, chance, 0

    def look_after(self):
        if not is_running(self.program):
            raise Broken(f"the program ended by itself: {self.program.returncode}")

    def tidy(self):
        """Only the main window is left."""
        for attempt in range(40):
            self.look_after()
            others = [window for window, _ in self.windows() if window != self.main]
            if not others:
                break
            self.do("windowactivate", others[-1])
            time.sleep(0.1)
            if attempt % 4 == 3:
                self.do("windowquit", others[-1])
            else:
                self.key("Escape")
            time.sleep(0.1)
        else:
            raise Broken(f"windows don't close: {self.windows()}")
        self.do("windowactivate", "--sync", self.main)

    def open(self, path):
        self.tidy()
        self.key("ctrl+o")
        window = self.wait_window("Select a project file", seconds=LONG_PICTURE)
        self.do("windowactivate", "--sync", window)
        self.type_path(path)

        def opened():
            self.look_after()
            question = self.find("Query")
            if question:
                self.answer(question, 1 / 6)
            late = self.find("Save Image Sequence")  # of a film that was begun before its dialog was closed
            if late:
                self.answer(late, 1 / 4)
            return self.title() == "Morentis3 - " + path and not self.find("Query", "Select a project file")
        wait_for(f"{path} to be opened", opened, LONG_PICTURE)
        self.acts += 1

    def seek(self):
        if self.chance.random() < 0.5:
            self.key(*self.chance.choices(("Left", "Right", "j", "k"), k=6))
        else:
            left, right, height = RULER
            places = [(self.chance.randint(left, right), height) for _ in range(2)]
            self.drag(*places)
            self.click(*self.chance.choice(places))

    def play(self):
        self.key("space")
        time.sleep(self.chance.uniform(0.5, 2.0))
        self.click(*STOP)

    def turn(self):
        end = (VIEW[0] + self.chance.randint(-200, 200), VIEW[1] + self.chance.randint(-150, 150))
        self.drag(VIEW, end, self.chance.choice((1, 1, 2)))
        self.click(*VIEW, self.chance.choice((4, 5)))

    def edit_field(self):
        place, values = self.chance.choice(list(FIELDS.values()))
        self.do("mousemove", "--window", self.main, *place, "click", "--repeat", 3, "--delay", 30, 1)
        self.do("type", str(self.chance.choice(values)))
        self.key("Return")
        self.click(*VIEW)

    def filter(self):
        menu, entry = self.chance.choice(FILTERS)
        self.key("alt+l", *["Down"] * (menu + 1), "Right", *["Down"] * entry, "Return")

    def visit_dialog(self):
        self.key(self.chance.choice(DIALOGS))
        time.sleep(0.3)
        self.tidy()

    def edit(self):
        act = self.chance.choice((self.turn, self.edit_field, self.edit_field, self.filter, self.visit_dialog,
                                  lambda: self.key(self.chance.choice(STEPS)),
                                  lambda: self.key(self.chance.choice(STEPS)),
                                  lambda: self.click(*self.chance.choice(PAGES)),
                                  lambda: self.click(*self.chance.choice(KEY_BUTTONS)),
                                  lambda: self.click(*REPEAT)))
        act()

    def history(self):
        self.key(*["ctrl+z"] * self.chance.randint(1, 8))
        self.key(*["ctrl+y"] * self.chance.randint(0, 6))

    def save(self, path):
        self.tidy()
        before = os.stat(path).st_mtime_ns
        self.key("ctrl+s")
        wait_for("the project to be saved", lambda: os.stat(path).st_mtime_ns != before or self.tidy())
        with open(path, "rb") as file:
            if b"\nTimeAnimStep=" not in file.read().replace(b"\0", b""):
                raise Broken(f"{path} isn't whole")

    def film(self):
        self.tidy()
        self.key("F8")
        dialog = self.wait_window("Save Image Sequence")
        self.answer(dialog, 0.1)
        end = time.monotonic() + self.chance.uniform(2, 12)  # some are left before they are whole
        while time.monotonic() < end:
            self.look_after()
            for window, _ in self.windows():
                if window not in (self.main, dialog):
                    self.answer(window, self.chance.choice((0.25, 0.25, 0.75)))
            time.sleep(0.3)
        if self.chance.random() < 0.3:
            self.answer(dialog, 0.1)  # "Abort Anim", or another film
        self.tidy()

    def check_films(self):
        names = os.listdir(self.data.films)
        for name in names:
            if name.startswith("."):
                raise Broken(f"{name} is left of a picture")
            check_png(os.path.join(self.data.films, name))
            os.remove(os.path.join(self.data.films, name))
        return len(names)

    def round(self):
        example, name = self.chance.choice(EXAMPLES)
        path = self.data.project(example, name)
        self.open(path)
        for _ in range(self.chance.randint(15, 30)):
            act = self.chance.choice((self.seek, self.play, self.edit, self.edit, self.edit, self.history,
                                      lambda: self.data.change(example),
                                      lambda: self.key(self.chance.choice(("F5", "ctrl+alt+F5")))))
            act()
            self.acts += 1
            self.tidy()
        self.click(*STOP)
        self.save(path)
        self.film()
        self.click(*STOP)
        self.open(self.data.rest)
        self.key("alt+1", "ctrl+alt+F5")
        self.rest()
        time.sleep(GIVEN_BACK)
        pictures = self.check_films()
        self.data.mend()
        return pictures


def tell(line):
    print(line, flush=True)


def median(samples, column):
    return statistics.median(sample[column] for sample in samples)


def judge(samples, seconds):
    """What is wrong with the numbers: (time, resident, share, handles, threads)."""
    if len(samples) < LEAST_ROUNDS:
        return [f"{len(samples)} rounds are too few to judge by"]
    tenths = [[sample for sample in samples if tenth <= 10 * sample[0] / seconds < tenth + 1] for tenth in range(10)]
    tenths = [tenth for tenth in tenths[1:] if tenth]
    wrong = []
    tell("tenths     resident KiB  share KiB  handles  threads (medians)")
    for tenth in tenths:
        tell(f"{len(tenth):3} rounds {median(tenth, 1):13.0f} {median(tenth, 2):10.0f} {median(tenth, 3):8.0f} "
             f"{median(tenth, 4):8.0f}")
    growth = max(median(tenth, 1) for tenth in tenths) / median(tenths[0], 1)
    tell(f"memory: {100 * (growth - 1):+.1f} % at most since the first tenth")
    if growth > GROWTH:
        wrong.append(f"memory grew by {100 * (growth - 1):.1f} %")
    for column, what in ((3, "handles"), (4, "threads")):
        more = median(tenths[-1], column) - median(tenths[0], column)
        if more > 0:
            wrong.append(f"{more:.0f} {what} are left over")
    return wrong


def soak(stage, options):
    chance = random.Random(options.seed)
    stage.take_program(options.build)
    data = Data(stage, chance)
    user = User(stage, data, chance)
    user.start(stage.path("bin/morentis"), data.rest)
    user.fit()
    tell(f"process {user.program.pid}, seed {options.seed}, {options.hours:g} hours, display {stage.env['DISPLAY']}")
    tell("   hours round    acts pictures  resident KiB  share KiB  handles  threads  processor s")
    samples, wrong, pictures = [], [], 0
    begin = time.monotonic()
    seconds = 3600 * options.hours
    try:
        while time.monotonic() - begin < seconds:
            pictures += user.round()
            now = time.monotonic() - begin
            facts = read_process(user.program.pid)
            samples.append((now, *facts))
            tell(f"{now / 3600:8.4f} {len(samples):5} {user.acts:7} {pictures:8} {facts[0]:13} {facts[1]:10} "
                 f"{facts[2]:8} {facts[3]:8} {facts[4]:12.1f}")
        status = user.quit()
        if status != 0:
            wrong.append(f"the program's exit status is {status}")
        left = [name for name in os.listdir(stage.path("bin")) if "Recovery" in name]
        if left:
            wrong.append(f"left over after the end: {left}")
    except (Broken, OSError, subprocess.TimeoutExpired) as error:
        wrong.append(str(error))
        stage.keep(options.keep)
        with open(stage.path("program.log"), encoding="utf-8", errors="replace") as file:
            tell("The program's last words:\n" + file.read()[-1000:].strip())
    return wrong + judge(samples, seconds)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--hours", type=float, default=8.0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--build", default=os.path.join(ROOT, "build/release"), help="folder of the built programs")
    parser.add_argument("--keep", help="where a screenshot and all files go when something is broken")
    options = parser.parse_args()
    with Stage("soak") as stage:
        wrong = soak(stage, options)
    for line in wrong:
        tell(f"BROKEN: {line}")
    tell("Broken." if wrong else "Sound.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
