"""The shaders in GL are what their tool writes: an edit of one alone would be lost with the next run."""
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tools"))

import make_shaders  # noqa: E402


class Shaders(unittest.TestCase):
    def test_files_are_what_the_tool_writes(self):
        for name, (title, body) in make_shaders.FILES.items():
            with self.subTest(name):
                written = (ROOT / "GL" / name).read_text(encoding="utf-8")
                self.assertEqual(written, make_shaders.HEAD.format(title=title) + body)

    def test_every_line_but_the_version_may_follow_the_defines(self):
        for name, (title, body) in make_shaders.FILES.items():
            with self.subTest(name):
                self.assertEqual((make_shaders.HEAD + body).count("#version"), 1)
                self.assertTrue(make_shaders.HEAD.startswith("#version 120\n"), title)


if __name__ == "__main__":
    unittest.main()
