"""tools/make_layers_table.py writes the table between its markers and notices when it is out of date."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools" / "make_layers_table.py"
sys.path.insert(0, str(TOOL.parent))
import make_layers_table as tool  # noqa: E402


class MakeLayersTable(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for name in ("docs", "tools"):
            (self.root / name).mkdir()
        self.document = self.root / "docs" / "ARCHITECTURE.md"
        self.layers = self.root / "tools" / "layers.txt"
        self.document.write_text("before\n" + tool.BEGIN + "stale\n" + tool.END + "after\n")

    def run_tool(self, *arguments):
        return subprocess.run([sys.executable, str(TOOL), *arguments, str(self.root)], capture_output=True).returncode

    def testTableFollowsTheList(self):
        self.layers.write_text("# words\nA/a.cpp -> B/b.h : because: of c\n\nA/d.cpp -> B/b.h : e\n")
        self.assertEqual(1, self.run_tool("--check"))
        self.assertIn("stale", self.document.read_text())
        self.assertEqual(0, self.run_tool())
        self.assertEqual(0, self.run_tool("--check"))
        text = self.document.read_text()
        self.assertTrue(text.startswith("before\n") and text.endswith("after\n"))
        self.assertIn("| `A/a.cpp` | `B/b.h` | because: of c |\n| `A/d.cpp` | `B/b.h` | e |\n" + tool.END, text)

    def testEmptyListIsASentence(self):
        self.layers.write_text("# A/a.cpp -> B/b.h : an example\n")
        self.assertEqual(0, self.run_tool())
        self.assertIn(tool.BEGIN + "No source includes upward.\n" + tool.END, self.document.read_text())
        self.assertEqual(0, self.run_tool("--check"))

    def testDocumentWithoutMarkersIsLeftAlone(self):
        self.layers.write_text("")
        self.document.write_text("nothing here\n")
        self.assertEqual(1, self.run_tool())
        self.assertEqual("nothing here\n", self.document.read_text())


if __name__ == "__main__":
    unittest.main()
