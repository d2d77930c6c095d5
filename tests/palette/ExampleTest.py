"""The palette in ten lines: it is ten lines, and it works on a drawing."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house

BEGIN = "  // The ten lines.\n"
END = "  // That is all.\n"


def lines_of_the_library(code):
    return code.split(BEGIN, 1)[1].split(END, 1)[0].splitlines()


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


if __name__ == "__main__":
    unittest.main()
