"""Every seventh entity of whole drawings is changed and saved: nothing but what was changed differs, the values are read
back, and an independent reader finds no more to complain of than before."""

import collections
import functools
import json
import pathlib
import subprocess
import tempfile
import unittest

from whole_drawings import TOOL, WholeDrawings

try:
    import ezdxf
    import ezdxf.recover
except ImportError:
    ezdxf = None

# Group codes of what is written to all of them: layer, color in its three forms, line weight, line type.
GENERAL_CODES = {8, 62, 420, 430, 370, 6}
# What is never geometry: handles, names, owners, markers, extended data.
NEVER_GEOMETRY = {0, 1, 2, 3, 5, 6, 8, 62, 100, 102, 105, 330, 360, 370, 420, 430} | set(range(1000, 1072))


def veltprops(*arguments, may_refuse=False):
    result = subprocess.run([TOOL, *map(str, arguments)], capture_output=True, check=False)
    if result.returncode != 0 and not (may_refuse and result.returncode in (1, 3, 4) and result.stdout):
        raise AssertionError(f"veltprops {' '.join(map(str, arguments))[:300]}: exit {result.returncode}\n"
                             f"{result.stderr.decode(errors='replace')[:2000]}")
    return result.stdout


def answer(*arguments, **options):
    return json.loads(veltprops(*arguments, "--json", **options))


def rows_of(drawing, handles):
    return {row["displayName"]: row for row in answer("show", drawing, "--handle", ",".join(handles))["rows"]}


def records_of(drawing):
    """Lists of (code, value), a new one at each code 0."""
    lines = pathlib.Path(drawing).read_bytes().split(b"\n")
    records = []
    for code, value in zip(lines[0::2], lines[1::2]):
        pair = (int(code.strip() or -1), value.rstrip(b"\r"))
        if pair[0] == 0 or not records:
            records.append([])
        records[-1].append(pair)
        if pair == (0, b"EOF"):
            break
    return records


def handle_of(record):
    return next((value.strip().decode().upper() for code, value in record if code in (5, 105)), "")


def differences(before, after):
    """Handles of the entities that differ, each with the codes of the pairs that were added or went. Vertices belong to
    their polyline, attributes to their block reference."""
    old, new = records_of(before), records_of(after)
    assert len(old) == len(new), f"{len(old)} records became {len(new)}"
    found = collections.defaultdict(set)
    head = ""
    for one, other in zip(old, new):
        if one[0] not in ((0, b"VERTEX"), (0, b"ATTRIB"), (0, b"SEQEND")):
            head = handle_of(one)
        if one == other:
            continue
        gone = collections.Counter(one) - collections.Counter(other)
        come = collections.Counter(other) - collections.Counter(one)
        found[head] |= {code for code, _ in (gone + come)}
    return found


def findings(drawing):
    _, auditor = ezdxf.recover.readfile(drawing)
    return len(auditor.errors) + len(auditor.fixes)


# Of the drawings that stay as they are, which several tests ask for.
findings_before = functools.cache(findings)


class SavedDrawings(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.drawings = WholeDrawings()
        cls.addClassCleanup(cls.drawings.close)

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="velt-saved-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def every_drawing(self):
        for drawing in self.drawings:
            entities = answer("list", drawing)["entities"][::7]
            if entities:
                yield drawing, entities

    def changed_in(self, report):
        return [set(one["changed"]) for one in report["assignments"]]

    def test_general_properties(self):
        for drawing, entities in self.every_drawing():
            with self.subTest(drawing.name):
                handles = [entity["handle"] for entity in entities]
                rows = rows_of(drawing, handles)
                wanted = {"Color": "Red", "Lineweight": "0.35 mm", "Linetype": rows["Linetype"]["choiceNames"][-1],
                          "Layer": rows["Layer"]["choiceNames"][-1]}
                saved = self.folder / drawing.name

                report = answer("set", drawing, "--handle", ",".join(handles), "--keep-going", "-o", saved,
                                *(f"{name}={value}" for name, value in wanted.items()), may_refuse=True)

                changed = set().union(*self.changed_in(report))
                self.assertTrue(changed)
                found = differences(drawing, saved)
                self.assertEqual(sorted(set(found) ^ {handle.upper() for handle in changed})[:9], [])
                for handle, codes in found.items():
                    self.assertLessEqual(codes, GENERAL_CODES, handle)
                for assignment in report["assignments"]:
                    name = assignment["name"]
                    if assignment["changed"]:
                        row = rows_of(saved, assignment["changed"])[name]
                        self.assertFalse(row["isVaries"], name)
                        self.assertEqual(row["text"], wanted[name])
                    for refusal in assignment["refused"]:
                        self.assertEqual(name, "Lineweight", refusal)
                        self.assertTrue(refusal["reason"])

    def geometry_of(self, drawing, handle):
        """The first number of an entity's geometry that can be written, by the name that tells it from all others."""
        rows = [row for row in answer("show", drawing, "--handle", handle)["rows"]]
        names = collections.Counter(row["displayName"].lower() for row in rows)
        for row in rows:
            if (row["categoryName"] == "Geometry" and row["isEditable"] and isinstance(row["value"], float)
                    and row["unit"] != "radians" and names[row["displayName"].lower()] == 1):
                return row["displayName"], row["value"] + 1.5
        return None, None

    def test_a_value_of_the_geometry(self):
        for drawing, entities in self.every_drawing():
            with self.subTest(drawing.name):
                by_class = collections.defaultdict(list)
                for entity in entities:
                    by_class[entity["class"]].append(entity["handle"])
                for kind, handles in by_class.items():
                    name, value = self.geometry_of(drawing, handles[0])
                    if name is None:
                        continue
                    saved = self.folder / f"{kind}-{drawing.name}"

                    report = answer("set", drawing, "--handle", ",".join(handles), "--keep-going", "-o", saved,
                                    f"{name}={value!r}", may_refuse=True)

                    changed = self.changed_in(report)[0]
                    if not changed:
                        self.assertFalse(saved.exists())
                        continue
                    found = differences(drawing, saved)
                    self.assertEqual(sorted({handle.upper() for handle in changed} - set(found))[:9], [], f"{kind} {name}")
                    for handle, codes in found.items():
                        self.assertFalse(codes & NEVER_GEOMETRY, f"{kind} {handle} {name}: {codes}")
                    row = rows_of(saved, list(changed))[name]
                    self.assertFalse(row["isVaries"], f"{kind} {name}")
                    self.assertAlmostEqual(row["value"], value, places=9)

    # By class: what is written, with the variable of the style that it becomes.
    OVERRIDES = {
        "Leader": {"Arrow size": (3.25, "dimasz"), "Dim line color": (1, "dimclrd")},
        "Tolerance": {"Text height": (4.5, "dimtxt"), "Text color": (5, "dimclrt")},
        "Dimension": {"Text color": (6, "dimclrt"), "Dim line color": (4, "dimclrd"), "Ext line color": (3, "dimclre"),
                      "Tolerance limit upper": (0.375, "dimtp"), "Alt scale factor": (12.5, "dimaltf")},
    }

    def styled_entities(self, drawing):
        """Handles and what can be overridden there; of many entities of a kind about twenty."""
        by_type = collections.defaultdict(list)
        for entity in answer("list", drawing)["entities"]:
            kind = "Dimension" if entity["class"].startswith("Dim") else entity["class"]
            by_type[kind].append(entity["handle"])
        for kind, wanted in self.OVERRIDES.items():
            for handle in by_type[kind][:: len(by_type[kind]) // 20 + 1]:
                rows = rows_of(drawing, [handle])
                yield handle, {name: value for name, value in wanted.items() if name in rows and rows[name]["isEditable"]}

    def overrides_of(self, entity):
        if hasattr(entity, "get_acad_dstyle"):
            return entity.get_acad_dstyle(entity.get_dim_style())
        # The reader has no word for those of tolerances, but finds their list.
        names = {140: "dimtxt", 178: "dimclrt"}
        tags = entity.get_xdata_list("ACAD", "DSTYLE")[2:-1]
        return {names.get(name.value): value.value for name, value in zip(tags[0::2], tags[1::2])}

    def colors_of_texts(self, document, entity):
        if "DIMENSION" not in entity.dxftype() or entity.dxf.get("geometry") not in document.blocks:
            return set()
        return {text.dxf.color for text in document.blocks.get(entity.dxf.geometry) if text.dxftype() in ("TEXT", "MTEXT")}

    @unittest.skipUnless(ezdxf, "python3-ezdxf is not installed")
    def test_an_independent_reader_finds_the_overrides(self):
        overridden = collections.Counter()
        for drawing in self.drawings:
            with self.subTest(drawing.name):
                saved, written = drawing, {}
                for handle, wanted in self.styled_entities(drawing):
                    if not wanted:
                        continue
                    target = self.folder / f"{len(written) % 2}-{drawing.name}"
                    report = answer("set", saved, "--handle", handle, "--keep-going", "--force", "-o", target,
                                    *(f"{name}={value}" for name, (value, _) in wanted.items()), may_refuse=True)
                    if report["saved"]:
                        saved = target
                    written[handle] = [wanted[one["name"]] for one in report["assignments"] if one["changed"]]
                if not written:
                    continue
                document, _ = ezdxf.recover.readfile(saved)
                for handle, values in written.items():
                    entity = document.entitydb[handle]
                    overrides = self.overrides_of(entity)
                    for value, variable in values:
                        self.assertEqual(overrides.get(variable), value, f"{entity} {variable}")
                        overridden[variable] += 1
                        if variable == "dimclrt":
                            self.assertLessEqual(self.colors_of_texts(document, entity), {value}, entity)
                self.assertLessEqual(findings(saved), findings_before(drawing))
        self.assertEqual(set(overridden), {variable for wanted in self.OVERRIDES.values() for _, variable in wanted.values()})

    @unittest.skipUnless(ezdxf, "python3-ezdxf is not installed")
    def test_an_independent_reader_finds_no_more_than_before(self):
        for drawing, entities in self.every_drawing():
            with self.subTest(drawing.name):
                saved = self.folder / drawing.name
                handles = ",".join(entity["handle"] for entity in entities)
                rows = rows_of(drawing, handles.split(","))
                veltprops("set", drawing, "--handle", handles, "--keep-going", "-o", saved, "Color=12,34,56",
                          "Lineweight=0.35 mm", f"Layer={rows['Layer']['choiceNames'][-1]}",
                          f"Linetype={rows['Linetype']['choiceNames'][-1]}", may_refuse=True)
                self.assertLessEqual(findings(saved), findings_before(drawing))


if __name__ == "__main__":
    unittest.main()
