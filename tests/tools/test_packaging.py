"""What desktops, shells and package tools read of the program: each file passes the tool that it is for."""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as xml

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
MAKE_METAINFO = ROOT / "tools/make_metainfo.py"


def run(*words, **options):
    done = subprocess.run([str(word) for word in words], text=True, capture_output=True, check=False, **options)
    return done.returncode, done.stdout + done.stderr


class Packaging(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def metainfo(self, *options):
        path = self.folder / "org.morentis.Morentis.metainfo.xml"
        path.write_text(subprocess.run([MAKE_METAINFO, *options], text=True, capture_output=True, check=True).stdout)
        return path

    def test_metainfo_passes_with_screenshots_and_without(self):
        for options in ((), ("--media", "https://example.org/pictures/")):
            path = self.metainfo(*options)
            status, words = run("appstreamcli", "validate", "--no-net", path)
            self.assertEqual(status, 0, words)
            sources = [image.text for image in xml.parse(path).iter("image")]
            self.assertEqual(len(sources), 3 if options else 0)
            for source in sources:
                self.assertRegex(source, r"^https://example\.org/pictures/store_\w+\.png$")

    def test_releases_are_the_dated_headings_of_the_changelog(self):
        headings = re.findall(r"^## (.*)$", (ROOT / "CHANGELOG.md").read_text(encoding="utf-8"), re.MULTILINE)
        releases = [(entry.get("version"), entry.get("date")) for entry in xml.parse(self.metainfo()).iter("release")]
        self.assertEqual([f"{version} ({date})" for version, date in releases],
                         [heading for heading in headings if not heading.endswith("(unreleased)")])

    def test_desktop_entry_opens_projects(self):
        entry = PACKAGING / "morentis.desktop"
        self.assertEqual(run("desktop-file-validate", entry), (0, ""))
        self.assertIn("\nExec=morentis %F\n", entry.read_text())
        # A desktop that is told of the type finds it by the name, and without the name by the content.
        packages = self.folder / "mime/packages"
        packages.mkdir(parents=True)
        shutil.copy(PACKAGING / "morentis-mime.xml", packages / "morentis.xml")
        self.assertEqual(run("update-mime-database", self.folder / "mime")[0], 0)
        project = next(ROOT.glob("examples/*/*.mrp"))
        shutil.copy(project, self.folder / "a.mrp")
        shutil.copy(project, self.folder / "nameless")
        (self.folder / "b.txt").write_text("no project\n")
        environment = {**os.environ, "XDG_DATA_HOME": str(self.folder)}
        for name, project_type in (("a.mrp", True), ("nameless", True), ("b.txt", False)):
            _, words = run("gio", "info", "-a", "standard::content-type", self.folder / name, env=environment)
            self.assertEqual("application/x-morentis-project" in words, project_type, words)

    def test_man_pages_make_no_complaint(self):
        pages = sorted(PACKAGING.glob("*.1.in"))
        self.assertTrue(pages)
        for page in pages:
            text = page.read_text().replace("@PROJECT_VERSION@", "1.2.3")
            target = self.folder / page.stem
            target.write_text(text)
            environment = {**os.environ, "LC_ALL": "C.UTF-8", "MANROFFSEQ": "", "MANWIDTH": "80"}
            done = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", target], env=environment,
                                  text=True, capture_output=True, check=False)
            self.assertEqual((done.returncode, done.stderr), (0, ""), page)
            self.assertIn("SYNOPSIS", done.stdout)

    def test_completion_offers_every_option(self):
        # The program's place is taken by a text of the form that its help has.
        program = self.folder / "morentis-film"
        program.write_text("#!/bin/sh\nprintf '  --size WxH   size\\n  --stereo OUTPUT  eyes\\n  --help, --version\\n'\n")
        program.chmod(0o755)
        for typed, wanted in (("--s", ["--size", "--stereo"]), ("--stereo side", ["side-by-side", "side-by-side-full"]),
                              ("--draw ", ["auto", "cpu", "gl"])):
            script = (f"source /usr/share/bash-completion/bash_completion; source {PACKAGING}/completions/morentis-film\n"
                      f"COMP_LINE='morentis-film {typed}'; COMP_POINT=${{#COMP_LINE}}; COMP_TYPE=9\n"
                      f"COMP_WORDS=({program} {typed}); [[ $COMP_LINE == *' ' ]] && COMP_WORDS+=('')\n"
                      "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                      f"_morentis_film {program} \"${{COMP_WORDS[COMP_CWORD]}}\" \"${{COMP_WORDS[COMP_CWORD-1]}}\"\n"
                      "printf '%s\\n' \"${COMPREPLY[@]}\" | sort\n")
            status, words = run("bash", "-c", script)
            self.assertEqual((status, words.split()), (0, wanted))

    def test_every_option_of_the_film_command_is_in_its_man_page(self):
        text = (ROOT / "SRC/APP/FilmArgs.cpp").read_text()
        options = set(re.findall(r'\{"(--[a-z-]+)"', text)) or set(re.findall(r'^ *"  (--[a-z-]+)', text, re.MULTILINE))
        self.assertGreater(len(options), 15)
        page = (PACKAGING / "morentis-film.1.in").read_text().replace("\\", "")
        self.assertEqual([option for option in sorted(options) if option not in page], [])

    def test_version_stands_in_one_place(self):
        version = re.search(r"^project\(morentis VERSION (\S+) ", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)[1]
        self.assertIn(f"\nversion: {version}\n", (ROOT / "CITATION.cff").read_text())
        newest = re.search(r"^## (\S+)", (ROOT / "CHANGELOG.md").read_text(encoding="utf-8"), re.MULTILINE)[1]
        self.assertEqual(newest, version)

    def test_icons_have_their_sizes(self):
        for picture in PACKAGING.glob("icons/morentis-*.png"):
            size = int(picture.stem.split("-")[1])
            self.assertEqual(picture.read_bytes()[16:24], size.to_bytes(4, "big") * 2, picture)


if __name__ == "__main__":
    unittest.main()
