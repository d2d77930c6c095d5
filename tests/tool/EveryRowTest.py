"""Every row that can be edited takes another value, or says why not: of whole drawings, of entities of every class. What
is saved is as good a drawing to an independent reader as it was before.

Run it by hand for the table of refusals: VELT_DRAWINGS=FOLDER VELT_BINARY_DIR=build/release python3 EveryRowTest.py 5
tries five entities of each class, and prints how many edits were refused, and why."""

import collections
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from whole_drawings import TOOL, WholeDrawings

try:
    import ezdxf
    import ezdxf.recover
except ImportError:
    ezdxf = None

ENTITIES_OF_A_CLASS = 1
# The kind of rows whose value is the index of a color.
COLOR = 540
# Where not any number or choice will do.
OTHERS = {"Radius ratio": "0.375", "Arrow block": "", "Arrowhead block": "", "Transparency": "40", "Arrow": "Dot",
          "Pattern name": "BRICK", "Contrast": "60", "End angle": "200", "End parameter": "200"}
# Of long lists, such as vertices, the first ones tell as much as all.
ROWS_OF_A_NAME = 2


def run(*arguments):
    return subprocess.run([TOOL, *map(str, arguments)], capture_output=True, check=False)


def answer(*arguments):
    result = run(*arguments, "--json")
    if result.returncode != 0:
        raise AssertionError(f"veltprops {' '.join(map(str, arguments))[:300]}: exit {result.returncode}\n"
                             f"{result.stderr.decode(errors='replace')[:2000]}")
    return json.loads(result.stdout)


def other_value(row):
    """Another value for the row, as people would write it."""
    value, text = row["value"], row["text"]
    if row["displayName"] in OTHERS:
        return OTHERS[row["displayName"]]
    if row["customType"] == COLOR:
        return "Blue" if text != "Blue" else "Red"
    if row["hasChoices"] and row["choiceNames"]:
        return next((name for name in row["choiceNames"] if name.lower() != text.lower()), None)
    if row["displayName"] == "Associative":  # can be given up, not got back
        return "No" if value else None
    if isinstance(value, bool):
        return "No" if value else "Yes"
    if isinstance(value, float):
        return repr(abs(value) * 1.25 + 0.5) if row["unit"] != "radians" else "33"
    if isinstance(value, int):
        return str(value + 1)
    if isinstance(value, str):
        return value + "x" if row["customType"] == 0 or value else "x"
    return "1"


def assignments_of(rows):
    """What to write, and why it will be refused, if that is told."""
    counts = collections.Counter(row["displayName"].lower() for row in rows)
    numbers = collections.Counter()
    # The layer last: others may be locked.
    for row in sorted(rows, key=lambda row: row["displayName"] == "Layer"):
        name = row["displayName"]
        numbers[name.lower()] += 1
        other = other_value(row) if row["isEditable"] and numbers[name.lower()] <= ROWS_OF_A_NAME else None
        if other is not None and "=" not in name:
            full = f"{name}#{numbers[name.lower()]}" if counts[name.lower()] > 1 else name
            yield f"{full}={other}", row.get("refused", {}).get("reason")


def some_of_each_class(entities, most):
    by_class = collections.defaultdict(list)
    for entity in entities:
        by_class[entity["class"]].append(entity)
    for of_class in by_class.values():
        yield from of_class[:: len(of_class) // most + 1]


class Outcome:
    def __init__(self):
        self.changed = collections.Counter()
        self.refused = collections.Counter()
        # Of these, those that "show" has told before anything was written.
        self.told = 0
        self.untold = []
        self.example = {}

    def add(self, entity, name, outcome, why=""):
        if outcome in ("locked", "unchanged"):
            return
        if outcome == "changed":
            self.changed[entity["class"]] += 1
        else:
            reason = re.sub(r'"[^"]*"|\d[\d.]*', "…", why)
            self.refused[entity["class"], name.split("#")[0], reason] += 1
            self.example.setdefault(reason, f'{entity["class"]} {entity["handle"]} {name}: {why}')

    def edit(self, drawing, entity):
        """Tries all rows of the entity, one after the other; what is taken stays in the drawing."""
        rows = answer("show", drawing, "--handle", entity["handle"], "--debug")["rows"]
        told = dict(assignments_of(rows))
        wanted = list(told)
        while wanted:
            result = run("set", drawing, "--handle", entity["handle"], "--keep-going", "--in-place", "--json", "--", *wanted)
            if result.stdout:
                return self.add_all(entity, json.loads(result.stdout)["assignments"], [told[one] for one in wanted])
            # A value that means nothing to its row, or a row that is gone after an earlier edit, ends the command.
            why = result.stderr.decode().strip().removeprefix("veltprops: ")
            named = [one for one in wanted if self.row_of(one) in why]
            if not named:
                raise AssertionError(f"{entity}: {why}")
            failed = max(named, key=lambda one: len(self.row_of(one)))
            self.add(entity, self.row_of(failed), "failed", why)
            wanted.remove(failed)

    @staticmethod
    def row_of(assignment):
        return assignment.split("=")[0].split("#")[0]

    def add_all(self, entity, assignments, told):
        for one, beforehand in zip(assignments, told):
            if one["refused"]:
                self.told += beforehand is not None
                if beforehand is None:
                    self.untold.append(f'{entity["class"]} {one["name"]}={one["value"]}: {one["refused"][0]["reason"]}')
            for outcome in ("changed", "refused", "locked", "skipped", "unchanged"):
                if one[outcome]:
                    why = one["refused"][0]["reason"] if outcome == "refused" else outcome
                    self.add(entity, one["name"], outcome, why)

    def share(self):
        refused = sum(self.refused.values())
        return refused / max(1, refused + sum(self.changed.values()))

    def table(self):
        by_reason = collections.Counter()
        rows = collections.defaultdict(set)
        for (kind, name, reason), count in self.refused.items():
            by_reason[reason] += count
            rows[reason].add(f"{kind}.{name}")
        lines = [f"{sum(self.changed.values())} changed, {sum(self.refused.values())} refused: {self.share():.1%}; "
                 f"{self.told} of these refusals told beforehand, {len(self.untold)} not"]
        for reason, count in by_reason.most_common():
            lines.append(f"{count:6} {reason}\n         {', '.join(sorted(rows[reason])[:9])}\n"
                         f"         such as {self.example[reason]}")
        return "\n".join(lines)


def findings(drawing):
    _, auditor = ezdxf.recover.readfile(drawing)
    return collections.Counter(error.message.split("(")[0] for error in [*auditor.errors, *auditor.fixes])


class EveryRow(unittest.TestCase):
    def test_takes_another_value_or_says_why_not(self):
        drawings = WholeDrawings()
        self.addCleanup(drawings.close)
        total = Outcome()
        with tempfile.TemporaryDirectory(prefix="velt-every-row-") as folder:
            for drawing in drawings:
                with self.subTest(drawing.name):
                    copy = pathlib.Path(folder) / drawing.name
                    shutil.copy(drawing, copy)
                    entities = answer("list", copy, "--all", "--in-blocks")["entities"]
                    for entity in some_of_each_class(entities, ENTITIES_OF_A_CLASS):
                        total.edit(copy, entity)
                    if ezdxf:
                        self.assertEqual(findings(copy) - findings(drawing), collections.Counter())
        print(total.table())
        self.assertEqual([what for what in total.refused if not what[2] or "nothing says why" in what[2]], [])
        self.assertLess(total.share(), 0.15)
        self.assertLess(len(total.untold), 0.03 * sum(total.changed.values()), "\n".join(total.untold))


if __name__ == "__main__":
    if len(sys.argv) > 1:
        ENTITIES_OF_A_CLASS = int(sys.argv.pop())
    unittest.main()
