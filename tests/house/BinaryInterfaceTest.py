"""Programs that were built on the last version go on running with this one.

tests/golden/abi/ holds what they rely on, as libabigail writes it down: the exported functions of the layer and of the
palette library with their types, sizes, offsets and slots. A change leaves what came out in the build folder, and
`make accept-golden` takes it over when told to: what is added needs a new minor version, anything else a new soname.
What may change all the same stands in suppressions.ini, each entry with its reason.
"""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import house

LIBRARIES = ("VeltPropData", "VeltPalette")
WRITE = ("abidw", "--exported-interfaces-only", "--drop-undefined-syms", "--no-show-locs", "--no-comp-dir-path",
         "--no-corpus-path", "--no-elf-needed")
# Of abidiff's answer: bits.
FAILED = 1 | 2
CHANGED = 4 | 8


def write_interface(library, file):
    subprocess.run([*WRITE, "--out-file", file, library], check=True, capture_output=True, text=True)


def changes(before, after, suppressions=None):
    """What abidiff tells of the two; empty when nothing changed."""
    told = subprocess.run(["abidiff", *(["--suppressions", suppressions] if suppressions else []), before, after],
                          check=False, capture_output=True, text=True)
    if told.returncode & FAILED:
        raise AssertionError(told.stdout + told.stderr)
    return told.stdout if told.returncode & CHANGED else ""


def without_reason(text):
    """The entries of a list of suppressions that have no line `# reason: ...` of their own, directly above them."""
    above = re.split(r"(?m)^\[.*$", text)
    return [f"entry {number}" for number, before in enumerate(above[:-1], 1)
            if not re.search(r"(?m)^# reason: \S.*\n(#.*\n)*\Z", before)]


@unittest.skipUnless(shutil.which("abidw"), "libabigail is not installed (abigail-tools)")
class TheBinaryInterface(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)

    def interface_of(self, code):
        (self.folder / "small.cpp").write_text(code, encoding="utf-8")
        subprocess.run([os.environ.get("VELT_CXX", "c++"), "-g", "-shared", "-fPIC", "small.cpp", "-o", "small.so"],
                       cwd=self.folder, check=True)
        file = self.folder / f"{len(list(self.folder.iterdir()))}.abi"
        write_interface(self.folder / "small.so", file)
        return file

    def test_notices_a_member_that_moves(self):
        before = self.interface_of("struct R { int a; int b; }; int f(const R& r) { return r.b; }")
        same = self.interface_of("struct R { int a; int b; }; int f(const R& r) { return r.a; }")
        after = self.interface_of("struct R { long a; int b; }; int f(const R& r) { return r.b; }")
        self.assertEqual("", changes(before, same))
        self.assertIn("a", changes(before, after))

    def test_gives_a_reason_for_each_change_that_it_passes_over(self):
        self.assertEqual([], without_reason(house.text_of(house.source_root() / "tests/golden/abi/suppressions.ini")))

    def test_notices_a_change_that_is_passed_over_without_a_reason(self):
        head, entry = "# What this is.\n# There are none.\n", "[suppress_type]\n  name = R\n"
        reason = "# reason: nobody makes an R but the library\n"
        self.assertEqual([], without_reason(head))
        self.assertEqual([], without_reason(f"{head}\n{reason}{entry}\n{reason}{entry}"))
        for text in (head + entry, f"{head}\n{entry}", f"{head}\n# reason:\n{entry}", f"{head}\n{reason}{entry}{entry}",
                     f"{head}\n{reason}\n{entry}"):
            with self.subTest(text):
                self.assertEqual(1, len(without_reason(text)))

    def test_passes_over_what_an_entry_with_its_reason_says(self):
        before = self.interface_of("struct R { int a; int b; }; int f(const R& r) { return r.b; }")
        after = self.interface_of("struct R { long a; int b; }; int f(const R& r) { return r.b; }")
        entry = self.folder / "suppressions.ini"
        entry.write_text("# reason: nobody makes an R but the library\n[suppress_type]\n  name = R\n", encoding="utf-8")
        self.assertEqual("", changes(before, after, entry))

    @unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
    @unittest.skipIf(house.is_instrumented(), "a sanitizer's compiler writes other types")
    def test_is_that_of_the_last_version(self):
        for name in LIBRARIES:
            with self.subTest(name):
                library = house.build_root() / "lib" / f"lib{name}.so"
                accepted = house.source_root() / "tests/golden/abi" / f"lib{name}.abi"
                found = self.folder / accepted.name
                write_interface(library, found)
                if "<abi-instr" not in found.read_text(encoding="utf-8"):
                    self.skipTest("the library was built without its types (-g)")
                told = changes(accepted, found, accepted.parent / "suppressions.ini") if accepted.is_file() else "new"
                left = pathlib.Path(os.environ.get("VELT_GOLDEN_OUT", self.folder)) / "golden/abi" / accepted.name
                if told:
                    left.parent.mkdir(parents=True, exist_ok=True)
                    shutil.copy(found, left)
                else:
                    left.unlink(missing_ok=True)
                if told:
                    self.fail(told + "\nmake accept-golden takes it over")


if __name__ == "__main__":
    unittest.main()
