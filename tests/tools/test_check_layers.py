"""Each rule of tools/check_layers.py finds its own violation and nothing else."""
import contextlib
import io
import pathlib
import sys
import tempfile
import unittest
from unittest import mock

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import check_layers  # noqa: E402

HEADER = "#pragma once\n"


class CheckLayers(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.put("SRC/COMMON/Globals.h", HEADER)
        self.put("SRC/PDATA/clsPDataBlock.h", HEADER + '#include "COMMON/Globals.h"\n')
        self.put("SRC/APP/clsMain.h", HEADER + '#include "PDATA/clsPDataBlock.h"\n')
        self.put("tools/layers.txt", "# nothing allowed\n")

    def put(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def check(self):
        told = io.StringIO()
        with mock.patch.object(sys, "argv", ["check_layers.py", str(self.root)]), contextlib.redirect_stdout(told):
            status = check_layers.main()
        return status, told.getvalue().splitlines()[:-1]

    def assertOneError(self, place, word):
        status, errors = self.check()
        self.assertEqual(1, status)
        self.assertEqual(1, len(errors), errors)
        self.assertTrue(errors[0].startswith(place + ": "), errors[0])
        self.assertIn(word, errors[0])

    def testTidyTreePasses(self):
        self.assertEqual((0, []), self.check())

    def testHeaderMayNotIncludeUpwardEvenWhenListed(self):
        self.put("SRC/GL/VIEW/clsView.h", HEADER + "\n" + '#include "APP/clsMain.h"\n')
        self.assertOneError("SRC/GL/VIEW/clsView.h:3", "forward")

    def testFoldersOfOneFloorDoNotMeet(self):
        self.put("SRC/TIME/clsTimeCtrl.h", HEADER)
        self.put("SRC/WIDGET/clsPanel.h", HEADER + '#include "TIME/clsTimeCtrl.h"\n')
        self.assertOneError("SRC/WIDGET/clsPanel.h:2", "not below")

    def testNestedFolderHasItsOwnFloor(self):
        self.put("SRC/FILTER/PANEL/clsPanel.h", HEADER)
        self.put("SRC/FILTER/clsFilter.h", HEADER + '#include "FILTER/PANEL/clsPanel.h"\n')
        self.assertOneError("SRC/FILTER/clsFilter.h:2", "forward")

    def testSourceMayIncludeUpwardOnlyWhenListed(self):
        self.put("SRC/GL/VIEW/clsView.cpp", '#include "APP/clsMain.h"\n')
        self.assertOneError("SRC/GL/VIEW/clsView.cpp:1", "layers.txt")
        self.put("tools/layers.txt", "GL/VIEW/clsView.cpp -> APP/clsMain.h : a view asks its hub\n")
        self.assertEqual((0, []), self.check())

    def testNothingLeadsOutOfTheFence(self):
        self.put("SRC/WIDGET/clsPanel.h", HEADER)
        self.put("SRC/PDATA/clsLoader.cpp", '#include "WIDGET/clsPanel.h"\n')
        self.assertOneError("SRC/PDATA/clsLoader.cpp:1", "fence")
        self.put("SRC/PDATA/clsLoader.cpp", '#include "APP/clsMain.h"\n')
        self.put("tools/layers.txt", "PDATA/clsLoader.cpp -> APP/clsMain.h : no reason is good enough\n")
        status, errors = self.check()
        self.assertEqual(["SRC/PDATA/clsLoader.cpp:1", "tools/layers.txt:1"],
                         [":".join(error.split(":")[:2]) for error in errors])

    def testFencedFoldersIncludeNoWindowAndNoOpenGL(self):
        for name in ("wx/wx.h", "wx/colour.h", "GL/gl.h", "epoxy/gl.h", "gtk/gtk.h", "X11/Xlib.h"):
            with self.subTest(name):
                self.put("SRC/COMMON/Thing.cpp", f"# include <{name}>\n")
                self.assertOneError("SRC/COMMON/Thing.cpp:1", name)
        self.put("SRC/COMMON/Thing.cpp", "#include <vector>\n#include <wx/string.h>\n#include <unistd.h>\n")
        self.put("SRC/COLORCURVE/EDITOR/clsEditor.cpp", "#include <wx/colour.h>\n")
        self.assertEqual((0, []), self.check())

    def testPrecompiledHeaderOfTheFenceIsLookedAt(self):
        self.put("cmake/pch_core.h", HEADER + "#include <vector>\n#include <wx/wx.h>\n")
        self.assertOneError("cmake/pch_core.h:3", "wx/wx.h")
        self.put("cmake/pch_core.h", HEADER + '#include "COMMON/Globals.h"\n')
        self.assertOneError("cmake/pch_core.h:2", "beforehand")

    def testFoldersAreBuiltOnTheirSideOfTheFence(self):
        self.put("SRC/PDATA/CMakeLists.txt", "morentis_library(pdata)\n")
        self.assertOneError("SRC/PDATA/CMakeLists.txt:1", "must use")
        self.put("SRC/PDATA/CMakeLists.txt", "morentis_core_library(pdata)\n")
        self.put("SRC/APP/CMakeLists.txt", "morentis_core_library(app)\n")
        self.assertOneError("SRC/APP/CMakeLists.txt:1", "fenced floors")

    def testDrawingShowsTheFloors(self):
        def draw(**changed):
            lines = []
            for number, folders in reversed(list(enumerate(check_layers.FLOORS, 1))):
                for folder in folders:
                    here = (self.root / "SRC" / folder).is_dir()
                    star = "*" if folder in check_layers.FENCED else ""
                    line = f" {number:2}  " + (f"{folder}{star}" if here else f"({folder}){star}") + "  words\n"
                    lines.append(changed.get(folder, line))
            self.put("docs/ARCHITECTURE.md", "# House\n\n```\n" + "".join(lines) + "```\n")

        draw()
        self.assertEqual((0, []), self.check())
        draw(APP=" 12  APP  words\n")
        self.assertOneError("docs/ARCHITECTURE.md:4", "floor 12")
        draw(APP=" 13  (APP)  words\n")
        self.assertOneError("docs/ARCHITECTURE.md:4", "brackets")
        draw(APP=" 13  APP*  words\n")
        self.assertOneError("docs/ARCHITECTURE.md:4", "star")
        draw(APP="")
        self.assertOneError("docs/ARCHITECTURE.md:3", "lacks APP")

    def testSanctionWithoutReasonIsRefused(self):
        self.put("tools/layers.txt", "PDATA/clsLoader.cpp -> APP/clsMain.h :\n")
        self.assertOneError("tools/layers.txt:1", "form")

    def testSanctionNobodyNeedsIsAnError(self):
        self.put("tools/layers.txt", "\nPDATA/clsLoader.cpp -> APP/clsMain.h : once needed\n")
        self.assertOneError("tools/layers.txt:2", "not needed")

    def testSanctionForDownwardIncludeIsAnError(self):
        self.put("SRC/APP/clsMain.cpp", '#include "PDATA/clsPDataBlock.h"\n')
        self.put("tools/layers.txt", "APP/clsMain.cpp -> PDATA/clsPDataBlock.h : below anyway\n")
        self.assertOneError("tools/layers.txt:1", "not needed")

    def testIncludeWithoutFolderIsFound(self):
        self.put("SRC/APP/clsMain.cpp", '#include "clsMain.h"\n')
        self.assertOneError("SRC/APP/clsMain.cpp:1", "not a file")

    def testHeaderWithoutGuardIsFound(self):
        self.put("SRC/TIME/clsTimeCtrl.h", "class TimeCtrl_cls;\n")
        self.assertOneError("SRC/TIME/clsTimeCtrl.h:1", "pragma once")

    def testFolderWithoutFloorIsFound(self):
        self.put("SRC/EXTRA/clsThing.h", HEADER)
        self.assertOneError("SRC/EXTRA/clsThing.h:1", "floor")

    def testForeignReferencesAreFound(self):
        for text in ("see Part" + " 3.4", "iss" + "ue 12", "as speci" + "fied", "the Speci" + "fication"):
            with self.subTest(text):
                self.put("docs/NOTES.md", "# Notes\n" + text + "\n")
                self.assertOneError("docs/NOTES.md:2", "reader")

    def testLikeWordsPass(self):
        self.put("docs/NOTES.md", "# Notes\nThe user specifies a part of 3.4 units; a specific issue.\n")
        self.assertEqual((0, []), self.check())

    def testBrokenInputsAreNotRead(self):
        self.put("tests/data/bad/words.txt", "iss" + "ue 12\n")
        self.assertEqual((0, []), self.check())


if __name__ == "__main__":
    unittest.main()
