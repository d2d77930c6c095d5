"""Writing back what is shown changes nothing: of whole drawings, every editable row of entities of every class, each in the
text that a palette shows, is what the entity has already."""

import collections
import json
import subprocess
import unittest

from whole_drawings import TOOL, WholeDrawings

# Enough to meet every class and many rows, and few enough for a test that is run often.
ENTITIES_OF_A_CLASS = 3
ROWS = 250
NOTHING_TO_DO = 3


def answer(*arguments, codes=(0,)):
    result = subprocess.run([TOOL, *map(str, arguments)], capture_output=True, check=False)
    if result.returncode not in codes:
        raise AssertionError(f"veltprops {' '.join(map(str, arguments))[:300]}: exit {result.returncode}\n"
                             f"{result.stdout.decode(errors='replace')[:2000]}\n"
                             f"{result.stderr.decode(errors='replace')[:2000]}")
    return json.loads(result.stdout)


def assignments_of(rows):
    """NAME=VALUE of every editable row; rows of one name are numbered."""
    counts = collections.Counter(row["displayName"].lower() for row in rows)
    numbers = collections.Counter()
    for row in rows:
        name = row["displayName"]
        numbers[name.lower()] += 1
        if row["isEditable"] and "=" not in name:
            number = f"#{numbers[name.lower()]}" if counts[name.lower()] > 1 else ""
            yield f"{name}{number}={row['text']}"


class WritingBack(unittest.TestCase):
    def test_what_is_shown_changes_nothing(self):
        drawings = WholeDrawings()
        self.addCleanup(drawings.close)
        classes = set()
        for drawing in drawings:
            tried = collections.Counter()
            for entity in answer("list", drawing, "--json")["entities"]:
                tried[entity["class"]] += 1
                if tried[entity["class"]] > ENTITIES_OF_A_CLASS:
                    continue
                with self.subTest(drawing=drawing.name, handle=entity["handle"]):
                    rows = answer("show", drawing, "--handle", entity["handle"], "--json")["rows"]
                    assignments = list(assignments_of(rows))[:ROWS]
                    report = answer("set", drawing, "--handle", entity["handle"], "--dry-run", "--json", "--",
                                    *assignments, codes=(NOTHING_TO_DO,))
                    for assignment in report["assignments"]:
                        self.assertEqual(assignment["changed"] + assignment["refused"], [], assignment)
                    classes.add(entity["class"])
        self.assertGreater(len(classes), 40)

    def test_a_selection_as_a_whole_changes_nothing_either(self):
        drawings = WholeDrawings()
        self.addCleanup(drawings.close)
        for drawing in drawings:
            with self.subTest(drawing.name):
                rows = answer("show", drawing, "--all", "--json")["rows"]
                answer("set", drawing, "--all", "--dry-run", "--json", "--", *assignments_of(rows),
                       codes=(NOTHING_TO_DO,))


if __name__ == "__main__":
    unittest.main()
