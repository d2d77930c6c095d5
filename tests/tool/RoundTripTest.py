"""What commands print of a whole drawing as JSON can be written back to it: nothing differs, so nothing is changed, and the
drawing is not touched."""

import json
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from whole_drawings import TOOL, WholeDrawings

NOTHING_TO_DO = 3
FORMS = {
    "table": ("--all", "--columns", "all", "--json"),
    "list": ("--all", "--json", "--values"),
    "show": ("--all", "--json"),
}


class RoundTrip(unittest.TestCase):
    def setUp(self):
        self.drawings = WholeDrawings()
        self.addCleanup(self.drawings.close)
        folder = tempfile.TemporaryDirectory(prefix="velt-round-trip-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def test_what_is_printed_is_there_already(self):
        for drawing in self.drawings:
            copy = self.folder / drawing.name
            shutil.copy(drawing, copy)
            before = copy.read_bytes()
            for command, options in FORMS.items():
                with self.subTest(drawing=drawing.name, command=command):
                    values = self.folder / "values.json"
                    with values.open("wb") as out:
                        subprocess.run([TOOL, command, drawing, *options], stdout=out, check=True)
                    result = subprocess.run([TOOL, "set", copy, "--from", values, "--in-place", "--json", "--all"],
                                            capture_output=True, check=False)
                    self.assertEqual(result.returncode, NOTHING_TO_DO, result.stderr.decode()[:2000])
                    report = json.loads(result.stdout)
                    self.assertEqual(report["assignments"], [])
                    self.assertEqual(report["outcome"], "nothingToDo")
                    self.assertEqual(copy.read_bytes(), before)


if __name__ == "__main__":
    unittest.main()
