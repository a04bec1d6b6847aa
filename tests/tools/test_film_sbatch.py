"""The array job of films: its parts make up the work area, each frame once."""
import os
import pathlib
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "packaging/slurm/film.sbatch"


class FilmSbatch(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.project = pathlib.Path(self.folder.name) / "run.mrp"
        self.addCleanup(self.folder.cleanup)

    def run_task(self, task, count, **environment):
        # The film maker's place is taken by a program that tells what it is asked for.
        env = {**os.environ, "MORENTIS_FILM": "echo", "SLURM_ARRAY_TASK_COUNT": str(count), **environment}
        if task is not None:
            env["SLURM_ARRAY_TASK_ID"] = str(task)
        return subprocess.run(["bash", SCRIPT, self.project, "--size", "64x48"], env=env, text=True,
                              capture_output=True, check=False)

    def ranges(self, count, **environment):
        found = []
        for task in range(1, count + 1):
            run = self.run_task(task, count, **environment)
            self.assertEqual(run.returncode, 0, run.stderr)
            words = run.stdout.splitlines()[-1].split()
            if "--frames" in words:
                self.assertEqual(words[-3:], ["--size", "64x48", str(self.project)])
                self.assertIn("--resume", words)
                found.append(tuple(int(n) for n in words[words.index("--frames") + 1].split("-")))
        return found

    def write(self, length, first, last, stepping):
        self.project.write_text(f"TimeMaxFrame=7\nTimeMaxFrame={length}\nTimeWorkAreaMin={first}\n"
                                f"TimeWorkAreaMax={last}\nTimeAnimStep={stepping}\n")

    def test_parts_make_up_the_work_area(self):
        for length, first, last, stepping in [(100, 0, 100, 1), (100, 10, 30, 1), (50, 0, 80, 1), (4, 0, 4, 1),
                                              (100, 7, 99, 3), (100, 0, 100, 10), (100, 1, 10, 3),
                                              (100, 5, 100, 7), (10, 4, 5, 3)]:
            self.write(length, first, last, stepping)
            for count in (1, 3, 8):
                ranges = self.ranges(count)
                with self.subTest(film=(length, first, last, stepping), count=count):
                    self.assertEqual(ranges[0][0], first)
                    self.assertEqual(ranges[-1][1], min(last, length))
                    for (_, end), (begin, _) in zip(ranges, ranges[1:]):
                        self.assertEqual(begin, end + 1)
                    for begin, end in ranges:
                        self.assertTrue(any(frame % stepping == 0 or frame == first for frame in
                                            range(begin, end + 1)), "a part without a frame would fail")

    def test_single_tasks_and_other_ranges(self):
        self.write(100, 0, 99, 1)
        self.assertIn("--frames 25-49", self.run_task(2, 1, PARTS="4").stdout)
        self.assertEqual(self.ranges(2, FIRST="20", LAST="29"), [(20, 24), (25, 29)])
        self.write(100, 0, 99, 10)
        self.assertEqual(self.ranges(2, FIRST="15", LAST="45"), [(20, 29), (30, 45)])
        self.assertEqual(self.run_task(1, 1, FIRST="15", LAST="19").returncode, 2)

    def test_a_start_that_ends_the_film_is_told_with_the_remedy(self):
        self.write(100, 7, 99, 3)
        self.assertEqual(self.run_task(1, 2).returncode, 0, "without steps between frames it goes on")
        with self.project.open("a") as file:
            file.write("TimeAnimInterp=4\n")
        for task in (1, 2):
            run = self.run_task(task, 2)
            self.assertEqual(run.returncode, 2)
            self.assertIn("begin at frame 9", run.stderr)
        self.write(100, 6, 99, 3)
        self.assertEqual(self.run_task(1, 2).returncode, 0)

    def test_renderers_get_the_processors_of_the_task(self):
        self.write(100, 0, 99, 1)
        env = {**os.environ, "MORENTIS_FILM": "echo", "SLURM_ARRAY_TASK_COUNT": "1", "SLURM_ARRAY_TASK_ID": "1",
               "SLURM_CPUS_PER_TASK": "4"}

        def words(*options):
            return subprocess.run(["bash", SCRIPT, self.project, *options], env=env, text=True, capture_output=True,
                                  check=True).stdout
        self.assertIn("--jobs 4 --pov-render out", words("--pov-render", "out"))
        self.assertNotIn("--jobs 4", words("--pov-render", "out", "--jobs", "2"))
        self.assertNotIn("--jobs", words("--size", "64x48"))
        with self.project.open("a") as file:
            file.write("PovRenderRegion=2\nPovRegionCustomMin=8\nPovRegionCustomMax=12\n")
        self.assertIn("--frames 8-12", words("--pov-export", "out"))
        self.assertIn("--frames 0-99", words("--output", "f%04d.png"))
        with self.project.open("a") as file:
            file.write("PovRenderRegion=1\n")
        self.assertIn("--frames 0-100", words("--pov-render", "out"))

    def test_wrong_uses_are_told(self):
        self.write(100, 0, 99, 1)
        self.assertEqual(self.run_task(None, 4).returncode, 2)
        self.assertEqual(self.run_task(5, 4).returncode, 2)
        self.project = self.project.with_name("none.mrp")
        self.assertEqual(self.run_task(1, 4).returncode, 2)


if __name__ == "__main__":
    unittest.main()
