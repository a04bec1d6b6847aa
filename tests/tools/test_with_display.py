"""An X server whose number another one has taken is followed by a new one."""
import os
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parent.parent / "gui" / "with_display.sh"


class WithDisplay(unittest.TestCase):
    def run_with(self, failures):
        """Run `true` where the first `failures` servers end at once; its result, and how many began."""
        with tempfile.TemporaryDirectory() as folder:
            begun = pathlib.Path(folder, "begun")
            server = pathlib.Path(folder, "Xvfb")
            server.write_text(
                f"#!/bin/bash\necho >>{begun}\n"
                f"(($(wc -l <{begun}) <= {failures})) || exec /usr/bin/Xvfb \"$@\"\n"
                "echo 'Server is already active for display 7' >&2\nexit 1\n")
            server.chmod(0o755)
            path = f"{folder}:{os.environ['PATH']}"
            result = subprocess.run([SCRIPT, "/bin/true"], env={**os.environ, "PATH": path},
                                    stderr=subprocess.PIPE, text=True, timeout=60)
            return result, begun.stat().st_size

    def test_a_taken_number_is_no_failure(self):
        result, begun = self.run_with(2)
        self.assertEqual((result.returncode, begun), (0, 3), result.stderr)

    def test_a_server_that_never_starts_is_told(self):
        result, begun = self.run_with(99)
        self.assertEqual(result.returncode, 1)
        self.assertIn("Server is already active for display 7", result.stderr)
        self.assertIn("the X server did not start", result.stderr)
        self.assertLess(begun, 10)


if __name__ == "__main__":
    unittest.main()
