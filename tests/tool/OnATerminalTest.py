"""What the tool writes on a terminal fits it and has colors; anywhere else it is plain text."""

import fcntl
import os
import pathlib
import pty
import re
import select
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house

STYLE = re.compile(r"\033\[\d+m")


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class TheText(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.tool = house.build_root() / "bin" / "veltprops"
        subprocess.run([self.tool, "sample", "plan.dxf"], cwd=self.folder.name, check=True, capture_output=True)

    def on_terminal(self, *arguments, columns=40, **environment):
        ours, its = pty.openpty()
        fcntl.ioctl(its, termios.TIOCSWINSZ, struct.pack("HHHH", 50, columns, 0, 0))
        clean = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
        with subprocess.Popen([self.tool, *arguments], cwd=self.folder.name, stdout=its, stderr=subprocess.DEVNULL,
                              env=clean | {"TERM": "xterm", "PAGER": "cat"} | environment) as running:
            text = b""
            # Our copy of its end stays open: where the last one closes, what was not yet read can be lost.
            while True:
                ended = running.poll() is not None
                if select.select([ours], [], [], 0.5)[0]:
                    text += os.read(ours, 4096)
                elif ended:
                    break
            os.close(its)
            os.close(ours)
            self.assertEqual(0, running.returncode)
        return text.decode()

    def test_fits_the_terminal(self):
        for command in (["list", "plan.dxf"], ["table", "plan.dxf", "--layer", "Doors"], ["info", "plan.dxf"]):
            with self.subTest(command=command[0]):
                lines = STYLE.sub("", self.on_terminal(*command)).splitlines()
                # A sentence may go on in the next line.
                lines = [line for line in lines if "--in-blocks" not in line]
                self.assertLessEqual(max(map(len, lines)), 40)
                self.assertIn("\u2026", "".join(lines))

    def test_is_as_wide_as_it_needs_when_asked(self):
        self.assertNotIn("\u2026", self.on_terminal("table", "plan.dxf", "--layer", "Doors", "--wide"))

    def test_has_colors_unless_they_are_not_wanted(self):
        show = ["show", "plan.dxf", "--layer", "Doors"]
        self.assertIn("\033[1mGeneral\033[0m", self.on_terminal(*show))
        self.assertNotIn("\033[", self.on_terminal(*show, NO_COLOR="1"))
        self.assertNotIn("\033[", self.on_terminal(*show, TERM="dumb"))

    def test_goes_through_the_pager_when_it_is_longer_than_the_terminal(self):
        marks = "sed 's/^/paged: /'"
        self.assertIn("paged: ", self.on_terminal("list", "plan.dxf", PAGER=marks))
        self.assertNotIn("paged", self.on_terminal("list", "plan.dxf", "--no-pager", PAGER=marks))
        self.assertNotIn("paged", self.on_terminal("list", "plan.dxf", "--layer", "Doors", PAGER=marks))

    def test_keeps_its_colors_in_the_pager(self):
        self.assertIn("FRX:\033[1mHandle", self.on_terminal("list", "plan.dxf", PAGER="sed \"s/^/$LESS:/\""))

    def test_is_plain_in_a_pipe(self):
        shown = subprocess.run([self.tool, "table", "plan.dxf", "--layer", "Doors"], cwd=self.folder.name, check=True,
                               capture_output=True, text=True, env=os.environ | {"TERM": "xterm"}).stdout
        self.assertNotIn("\033[", shown)
        self.assertNotIn("\u2026", shown)


if __name__ == "__main__":
    unittest.main()
