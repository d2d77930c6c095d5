"""The minimal host is small, needs nothing of the embedded host, and supplies everything that the layer asks for."""

import subprocess
import unittest

import house
import SymbolsTest

FOLDER = "examples/minimal-host"
AT_MOST = 600
SHOWN = """\
3 parts of several classes
  Part: Name = *VARIES*
  Size: Nominal diameter = 50.0
  Part: Material = Steel
Written to 2 parts, 1 on a locked layer
  Size: Nominal diameter = 65.0
"""


def lines_to_read(root):
    """Lines that are not empty, of all that a reader copies."""
    files = [path for path in (root / FOLDER).rglob("*") if path.is_file() and not path.name.startswith(".")]
    return sum(1 for path in files for line in house.text_of(path).splitlines() if line.strip())


class TheMinimalHost(house.Check):
    def test_is_read_in_one_sitting(self):
        lines = lines_to_read(house.source_root())
        self.assertGreater(lines, 100)
        self.assertLessEqual(lines, AT_MOST)


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "instrumentation adds symbols of its own")
class TheProgram(house.Check):
    @classmethod
    def setUpClass(cls):
        cls.program = house.build_root() / "bin" / "example_minimal_host"

    def test_shows_what_three_parts_have_in_common_and_writes_to_those_that_are_not_locked(self):
        result = subprocess.run([self.program], capture_output=True, text=True, check=False)
        self.assertEqual((0, SHOWN, ""), (result.returncode, result.stdout, result.stderr))

    def test_loads_the_layer_and_no_other_library_of_the_project(self):
        others = [name for name in SymbolsTest.foreign_libraries(self.program) if not name.startswith("libVeltPropData.")]
        self.assert_nothing(others)

    def test_supplies_every_symbol_of_the_list_by_itself(self):
        layer, _ = SymbolsTest.libraries()
        needed = SymbolsTest.undefined(layer) - SymbolsTest.standard_symbols(layer)
        self.assert_nothing(sorted(SymbolsTest.demangled(needed - set(SymbolsTest.symbols(self.program, "--defined-only")))))


if __name__ == "__main__":
    unittest.main()
