"""The palette in ten lines: it is ten lines, and it works on a drawing."""

import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house

BEGIN = "  // The ten lines.\n"
END = "  // That is all.\n"
PROGRESS = re.compile(r"^\d+ of \d+ bytes, \d+ values read, \d+ written$")


def lines_of_the_library(code):
    return code.split(BEGIN, 1)[1].split(END, 1)[0].splitlines()

# A shell starts what runs in the background with it ignored, and programs would inherit it.
signal.signal(signal.SIGINT, signal.default_int_handler)


class TheExample(unittest.TestCase):
    def test_uses_the_library_in_ten_lines_and_nowhere_else(self):
        code = house.text_of(house.source_root() / "examples" / "palette.cpp")
        self.assertEqual(10, len(lines_of_the_library(code)))
        rest = code.replace("\n".join(lines_of_the_library(code)), "")
        for word in ("Selection", "Row", "Report", "PROPINFO", "VARIANT"):
            self.assertNotIn(word, rest)

    @unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
    def test_shows_and_writes_the_sample_drawing(self):
        programs = house.build_root() / "bin"
        with tempfile.TemporaryDirectory() as folder:
            plan = pathlib.Path(folder) / "plan.dxf"
            subprocess.run([programs / "veltprops", "sample", plan], check=True, capture_output=True)
            shown = subprocess.run([programs / "example_palette", plan], check=True, capture_output=True, text=True)
        self.assertRegex(shown.stdout, r"(?m)^General$")
        self.assertRegex(shown.stdout, r"(?m)^  Layer: \*VARIES\*$")
        self.assertRegex(shown.stdout, r"(?m)^  Handle = \*VARIES\*$")
        self.assertRegex(shown.stdout.splitlines()[-1], r"^\d+ changed, ")

    @unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
    def test_tells_what_went_wrong(self):
        failed = subprocess.run([house.build_root() / "bin" / "example_palette", "no.dxf"], capture_output=True,
                                text=True, check=False)
        self.assertEqual(1, failed.returncode)
        self.assertIn("no.dxf", failed.stderr)


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class TheExampleOfCancelling(unittest.TestCase):
    def run_on(self, lines, interrupt):
        program = house.build_root() / "bin" / "example_cancel"
        with tempfile.TemporaryDirectory() as folder:
            drawing, saved = pathlib.Path(folder) / "lines.dxf", pathlib.Path(folder) / "saved.dxf"
            entities = "".join(f"  0\nLINE\n  5\n{0x100 + i:X}\n  8\n0\n 10\n{i}\n 20\n0\n" for i in range(lines))
            drawing.write_text(f"  0\nSECTION\n  2\nENTITIES\n{entities}  0\nENDSEC\n  0\nEOF\n")
            running = subprocess.Popen([program, drawing, "Red", saved], stderr=subprocess.PIPE, text=True)
            if interrupt:
                self.assertRegex(running.stderr.readline(), PROGRESS)
                running.send_signal(signal.SIGINT)
            _, told = running.communicate()
            return running.returncode, told, saved.read_text() if saved.exists() else None

    def test_writes_and_saves(self):
        code, told, saved = self.run_on(lines=3, interrupt=False)
        self.assertEqual(0, code)
        # How far it is, is told before and after that, as often as it takes long.
        self.assertEqual(["3 changed"], [line for line in told.splitlines() if line and not PROGRESS.match(line)])
        self.assertEqual(3, saved.count("\n 62\n1\n"))

    def test_saves_nothing_once_it_is_interrupted(self):
        code, told, saved = self.run_on(lines=5000, interrupt=True)
        self.assertEqual(130, code)
        self.assertIn("cancelled", told)
        self.assertIsNone(saved)


if __name__ == "__main__":
    unittest.main()
