"""tools/make_catalogues.py finds what catalogues lack and what doesn't fit, and mends what a tool can."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools" / "make_catalogues.py"
HEADER = 'msgid ""\nmsgstr ""\n"Language: de\\n"\n"Content-Type: text/plain; charset=UTF-8\\n"\n\n'


class MakeCatalogues(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for name in ("SRC", "po"):
            (self.root / name).mkdir()
        self.catalogue = self.root / "po" / "de.po"

    def run_tool(self, *arguments):
        done = subprocess.run([sys.executable, str(TOOL), *arguments, str(self.root)], capture_output=True, text=True)
        return done.returncode, done.stdout

    def check_pair(self, english, german):
        (self.root / "SRC" / "a.cpp").write_text(f'f(_("{english}"));\n')
        self.assertEqual(0, self.run_tool()[0])
        self.catalogue.write_text(HEADER + f'msgid "{english}"\nmsgstr "{german}"\n')
        return self.run_tool("--check")

    def testWhatFitsPasses(self):
        for english, german in (("Save", "Speichern"), ("%d of %s: 50%%", "%d von %s: 50%%"), ("Path:", "Pfad:"),
                                ("&Undo\\tCtrl-Z", "&Zurück\\tCtrl-Z"), ("More...", "Mehr...")):
            self.assertEqual((0, ""), self.check_pair(english, german))

    def testWhatDoesNotFitIsTold(self):
        for english, german, what in (("Save", "", "not translated"), ("%d of %s", "%s von %d", "other conversions"),
                                      ("&Undo", "Zurück", "other mnemonics"), ("Path:", "Pfad", "other end"),
                                      ("Undo\\tCtrl-Z", "Zurück\\tStrg-Z", "other keys"), ("a ", "b", "other last blanks")):
            code, told = self.check_pair(english, german)
            self.assertEqual(1, code, english)
            self.assertIn(what, told)

    def testNewAndOldTextsAreTold(self):
        self.assertEqual(0, self.check_pair("Save", "Speichern")[0])
        (self.root / "SRC" / "b.cpp").write_text('const char* k = wxTRANSLATE("Load");\n')
        code, told = self.run_tool("--check")
        self.assertEqual(1, code)
        self.assertIn("out of date", told)
        self.assertIn("not in it: 'Load'", told)
        self.assertEqual(0, self.run_tool()[0])
        self.assertIn("not translated: 'Load'", self.run_tool("--check")[1])
        (self.root / "SRC" / "b.cpp").unlink()
        self.assertEqual(0, self.run_tool()[0])
        self.assertEqual((0, ""), self.run_tool("--check"))
        self.assertNotIn("Load", self.catalogue.read_text())


if __name__ == "__main__":
    unittest.main()
