"""velt-host-check, as the engineer who carries the layer into a program calls it: with hosts that are shared objects."""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house  # noqa: E402
import minimal_host  # noqa: E402


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "the runtime of a sanitizer must be loaded first")
class TheProgram(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.build = house.build_root()
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        cls.embedded = cls.build / "hosts" / "embedded-host.so"
        cls.drawing = cls.root / "plan.dxf"
        subprocess.run([cls.build / "bin" / "veltprops", "sample", cls.drawing], check=True, stdout=subprocess.DEVNULL)
        cls.minimal = cls.host("minimal")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def host(cls, name, was="", becomes=""):
        """The minimal host as a shared object, or one of which a text was changed."""
        return minimal_host.built(cls.root / f"{name}.so", [(was, becomes)] if was else [], without=("Palette.cpp",),
                                  options=("-shared",))

    def run_check(self, *arguments):
        return subprocess.run([self.build / "bin" / "velt-host-check", *map(str, arguments)], capture_output=True, text=True,
                              check=False, cwd=self.root)

    def test_finds_nothing_in_the_minimal_host(self):
        result = self.run_check("--host", self.minimal, 1, 2, 3)
        self.assertEqual((0, ""), (result.returncode, result.stderr), result.stdout)
        self.assertRegex(result.stdout, r"(?m)^\d+ checks, 0 findings$")
        self.assertIn("6 checks not tried, because the host makes no arrays, and so it has no property sources: array-bounds, ", result.stdout)

    def test_finds_nothing_in_the_embedded_host(self):
        result = self.run_check("--host", self.embedded, "--document", self.drawing)
        self.assertEqual((0, ""), (result.returncode, result.stderr), result.stdout)
        self.assertRegex(result.stdout, r"(?m)^\d+ checks, 0 findings$")

    def test_names_the_one_thing_that_a_host_does_wrong(self):
        for name, was, becomes, check in (
                ("hiding", "return give(show, 1);", "return give(show, -1);", "flag-shown"),
                ("silent", '{1011, L"The part has no IOPMPropertyExtension."},', "", "message-texts"),
                ("growing", "{1, 0, 0, 8, nullptr}", "{1, 0, 0, 16, nullptr}", "empty-block"),
                ("nameless", "Kind::pipe ? CLSID_Pipe : CLSID_Valve;", "Kind::pipe ? CLSID_Pipe : CLSID_Pipe;", "object-binds"),
                ("layerless", "return VkDbObjectId().setFromOldId(static_cast<long>(firstLayerId + imp_->part->layer));",
                 "return VkDbObjectId::kNull;", "layer-opens")):
            with self.subTest(host=name):
                result = self.run_check("--json", "--host", self.host(name, was, becomes), 1, 2, 3)
                self.assertEqual(1, result.returncode, result.stderr)
                self.assertEqual({check}, {finding["check"] for finding in json.loads(result.stdout)["findings"]})

    def test_tells_what_was_expected_and_who_suffers(self):
        broken = self.host("counting", "*block = static_cast<UINT>(bytes);", "*block = static_cast<UINT>(bytes / 4);")
        result = self.run_check("--host", broken, 1)
        self.assertEqual(1, result.returncode)
        self.assertIn("string-length\n  expected  32 bits before the characters hold the length in bytes, 24\n"
                      "  came      6\n  suffers   texts of all rows", result.stdout)

    def test_prints_one_json_object(self):
        shown = json.loads(self.run_check("--json", "--host", self.minimal, 1).stdout)
        self.assertEqual({"findings", "further", "tried", "notTried"}, set(shown))
        self.assertEqual([], shown["findings"])

    def test_tells_what_it_tries_before_it_does(self):
        result = self.run_check("--verbose", "--host", self.minimal, 1)
        self.assertRegex(result.stderr, r"(?m)^string-length$")
        self.assertRegex(result.stderr, r"(?m)^ShowProperty: entity 1, property Diameter$")

    def test_tells_where_a_host_crashes(self):
        for name, was, becomes, where in (
                ("crashing", "return give(show, 1);", "*static_cast<volatile BOOL*>(nullptr) = 1;\nreturn give(show, 1);",
                 "ShowProperty: entity 1, property Length"),
                ("freeing", "if (string != nullptr) std::free(", "std::free(", "string-null")):
            with self.subTest(host=name):
                result = self.run_check("--host", self.host(name, was, becomes), 1)
                self.assertEqual(1, result.returncode)
                self.assertIn(f"velt-host-check: the host crashed in {where}\n", result.stderr)

    def test_lists_its_checks(self):
        result = self.run_check("--list")
        self.assertEqual((0, ""), (result.returncode, result.stderr))
        self.assertIn("flag-shown\n  suffers  the row, which is hidden by any other byte than 1\n", result.stdout)

    def test_tells_why_it_cannot_check(self):
        nowhere = self.run_check("--host", "nowhere.so", 1)
        self.assertEqual(1, nowhere.returncode)
        self.assertIn("nowhere.so: cannot open shared object file", nowhere.stderr)
        lacking = self.run_check("--host", self.build / "lib" / "libVeltDxf.so", 1)
        self.assertEqual(1, lacking.returncode)
        self.assertRegex(lacking.stderr, r"undefined symbol: \w+.*; the host does not define it, or keeps it hidden")
        without = self.run_check("--host", self.minimal, "--document", self.drawing)
        self.assertEqual(1, without.returncode)
        self.assertIn("it opens no document; give the ids of entities", without.stderr)
        damaged = self.run_check("--host", self.embedded, "--document", self.root / "nowhere.dxf")
        self.assertEqual(1, damaged.returncode)
        self.assertIn("nowhere.dxf", damaged.stderr)

    def test_ends_with_2_when_it_is_used_wrongly(self):
        for arguments in ((), ("--host", self.minimal), ("--host",), ("--unknown",)):
            with self.subTest(arguments=arguments):
                self.assertEqual(2, self.run_check(*arguments).returncode)
        for arguments in (("--help",), ("--version",)):
            self.assertEqual(0, self.run_check(*arguments).returncode)


if __name__ == "__main__":
    unittest.main()
