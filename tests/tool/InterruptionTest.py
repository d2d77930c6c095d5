"""Ctrl-C ends the tool at once and cleanly, whatever it is doing."""

import contextlib
import fcntl
import os
import pathlib
import pty
import re
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house

LINES = 10_000
# Under a sanitizer, and beside other work, everything takes longer.
AT_ONCE = 1.0

# A shell starts what runs in the background with these ignored, and programs would inherit it.
for taken in (signal.SIGINT, signal.SIGHUP):
    signal.signal(taken, signal.SIG_DFL)


def drawing():
    lines = "".join(f"  0\nLINE\n  5\n{0x100 + i:X}\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n{i}\n 20\n0\n 11\n1\n 21\n1\n"
                    for i in range(LINES))
    return f"  0\nSECTION\n  2\nENTITIES\n{lines}  0\nENDSEC\n  0\nEOF\n"


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class AnInterruptedTool(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.file = pathlib.Path(cls.folder.name) / "large.dxf"
        cls.content = drawing()
        cls.file.write_text(cls.content)
        cls.tool = house.build_root() / "bin" / "veltprops"

    def start(self, *arguments, **options):
        running = subprocess.Popen([self.tool, *arguments], cwd=self.folder.name, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, **options)
        # Until it waits for signals they do what they do to any program.
        while not self.waits_for(signal.SIGTERM, running):
            self.assertIsNone(running.poll())
        return running

    @staticmethod
    def waits_for(wanted, running):
        status = pathlib.Path(f"/proc/{running.pid}/status").read_text()
        blocked = int(re.search(r"SigBlk:\s*(\w+)", status)[1], 16)
        return blocked & (1 << (wanted - 1)) != 0

    def interrupted(self, running, by=signal.SIGINT):
        sent = time.monotonic()
        running.send_signal(by)
        _, errors = running.communicate()
        self.assertLess(time.monotonic() - sent, AT_ONCE)
        self.assertEqual(b"", errors)
        return running.returncode

    def assert_nothing_written(self):
        self.assertEqual(["large.dxf"], sorted(os.listdir(self.folder.name)))
        self.assertEqual(self.content, self.file.read_text())

    def test_ends_with_the_exit_code_of_a_shell_while_it_loads_and_queries(self):
        for seconds in (0.0, 0.2, 0.5):
            with self.subTest(seconds=seconds):
                running = self.start("table", "large.dxf", "--all")
                time.sleep(seconds)
                self.assertEqual(130, self.interrupted(running))
        self.assert_nothing_written()

    def test_leaves_no_unfinished_file(self):
        # As soon as the new file is begun, and while it is written into.
        for size in (0, 100_000):
            running = self.start("set", "large.dxf", "Color=1", "--all", "--in-place")
            while running.poll() is None and self.size_of_unfinished() < size:
                pass
            if self.interrupted(running) == 130 and self.file.read_text() == self.content:
                self.assert_nothing_written()
            else:
                # It was quicker, and then all of it is there.
                self.assertEqual(["large.dxf"], sorted(os.listdir(self.folder.name)))
                self.assertEqual(LINES, self.file.read_text().count("\n 62\n"))
                self.file.write_text(self.content)

    # -1 when there is none.
    def size_of_unfinished(self):
        for path in pathlib.Path(self.folder.name).glob("*.unfinished"):
            with contextlib.suppress(FileNotFoundError):
                return path.stat().st_size
        return -1

    def test_ends_so_when_the_system_asks_it_to(self):
        for by in (signal.SIGTERM, signal.SIGHUP):
            running = self.start("table", "large.dxf", "--all")
            self.assertEqual(128 + by, self.interrupted(running, by))

    def test_goes_on_when_whoever_started_it_wants_the_signal_ignored(self):
        running = self.start("list", "large.dxf", "--all",
                             preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        running.send_signal(signal.SIGHUP)
        running.communicate()
        self.assertEqual(0, running.returncode)

    def test_leaves_a_pager_its_signals(self):
        ours, its = pty.openpty()
        fcntl.ioctl(its, termios.TIOCSWINSZ, struct.pack("HHHH", 5, 80, 0, 0))
        running = subprocess.Popen([self.tool, "list", "large.dxf", "--all"], cwd=self.folder.name, stdout=its,
                                   stderr=subprocess.DEVNULL,
                                   env=os.environ | {"TERM": "xterm", "PAGER": "grep SigBlk /proc/self/status"})
        running.communicate()
        self.assertRegex(os.read(ours, 4096).decode(), r"SigBlk:\s*0+\s")
        os.close(its)
        os.close(ours)


if __name__ == "__main__":
    unittest.main()
