"""The completion works in the shells that are installed here, as somebody uses it who types a line and presses Tab."""

import os
import pathlib
import pty
import select
import shlex
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house

SCRIPTS = house.source_root() / "tool" / "completion"
QUOTED = shlex.quote(str(SCRIPTS))

# What is typed, with a tab where the shell is to complete; a word that the finished line prints, and one that it must not.
TYPED = (
    ("veltprops li\t plan.dxf --type Cir\t", "Circle", "Line"),
    ("veltprops list pl\t --laye\t Doo\t", "INSERT", "CIRCLE"),
    ("veltprops list plan.dxf --layer Axes,Doo\t", "INSERT", "Walls"),
    ("veltprops table plan.dxf --layer=Doo\t --columns NUM\t", "D1", "Walls"),
    # A name with a blank, and a value after the "=".
    ("veltprops set plan.dxf --layer Doors --dry-run Scale\\ X=\t2", "Scale X=2", "no such"),
    ("veltprops set plan.dxf --layer Doors --dry-run Layer=Wal\t", "Layer=Walls", "no such"),
    ("veltprops explain plan.dxf --layer Doors NUM\t", "NUMBER of 6", "no such"),
)


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class TheCompletion(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.environment = os.environ | {"PATH": f"{house.build_root() / 'bin'}:{os.environ['PATH']}", "TERM": "dumb",
                                         "HOME": self.folder.name, "LC_ALL": "C.UTF-8", "PAGER": "cat"}
        subprocess.run(["veltprops", "sample", "plan.dxf"], cwd=self.folder.name, env=self.environment, check=True,
                       capture_output=True)

    def shell(self, name):
        if not shutil.which(name):
            self.skipTest(f"{name} is not installed")
        return name

    def typed(self, command, setup, keys):
        """What stands on the terminal after the line."""
        ours, its = pty.openpty()
        shell = subprocess.Popen(command, cwd=self.folder.name, env=self.environment, stdin=its, stdout=its, stderr=its,
                                 start_new_session=True)
        os.close(its)

        def until(end, since=b""):
            seen, last = since, time.monotonic() + 20
            while end not in seen and time.monotonic() < last:
                if select.select([ours], [], [], 0.2)[0]:
                    seen += os.read(ours, 4096)
            return seen

        try:
            # The two halves of what marks the end are never typed next to each other.
            os.write(ours, setup.encode() + b"\necho rea''dy\n")
            until(b"ready\r\n")
            os.write(ours, keys.encode() + b"\necho do''ne\n")
            return until(b"done\r\n").decode()
        finally:
            shell.kill()
            shell.wait()
            os.close(ours)

    def check(self, command, setup):
        for keys, expected, unwanted in TYPED:
            with self.subTest(keys=keys):
                shown = self.typed(command, setup, keys)
                self.assertIn(expected, shown)
                self.assertNotIn(unwanted, shown.split("\n", 1)[1])
                self.assertNotIn("rror", shown)

    def test_works_in_bash(self):
        self.check([self.shell("bash"), "--norc", "-i"], f"PS1='> '; . {QUOTED}/veltprops.bash")

    def test_works_in_zsh(self):
        self.check([self.shell("zsh"), "-f", "-i"],
                   f"PS1='> '; fpath=({QUOTED} $fpath); autoload -U compinit; compinit -u -D")

    def test_works_in_fish(self):
        script = f"source {QUOTED}/veltprops.fish; complete -C "
        for line, expected in (("veltprops li", "list"), ("veltprops list pl", "plan.dxf"),
                               ("veltprops list plan.dxf --layer Doo", "Doors"),
                               ("veltprops list plan.dxf --layer Axes,Doo", "Axes,Doors"),
                               ("veltprops table plan.dxf --layer=Doo", "--layer=Doors"),
                               ("veltprops set plan.dxf --layer Doors Layer=Wal", "Layer=Walls"),
                               ("veltprops explain plan.dxf --layer Doors NUM", "NUMBER")):
            with self.subTest(line=line):
                found = subprocess.run([self.shell("fish"), "--no-config", "-c", f"{script}'{line}'"], text=True,
                                       cwd=self.folder.name, env=self.environment, check=True, capture_output=True).stdout
                self.assertEqual([expected], [candidate.split("\t")[0] for candidate in found.splitlines()])


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class TheManualPages(unittest.TestCase):
    def test_are_read_without_a_warning(self):
        readers = [command for command in (["mandoc", "-Tlint", "-Wwarning"], ["groff", "-ww", "-man", "-z", "-Tutf8"])
                   if shutil.which(command[0])]
        if not readers:
            self.skipTest("neither mandoc nor groff is installed")
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([house.build_root() / "bin" / "veltprops", "man-pages", folder], check=True)
            pages = sorted(pathlib.Path(folder).glob("*.1"))
            self.assertIn("veltprops-show.1", [page.name for page in pages])
            for page in pages:
                for reader in readers:
                    with self.subTest(page=page.name, reader=reader[0]):
                        told = subprocess.run([*reader, page], text=True, check=False, stdout=subprocess.PIPE,
                                              stderr=subprocess.STDOUT).stdout
                        self.assertEqual("", told)


if __name__ == "__main__":
    unittest.main()
