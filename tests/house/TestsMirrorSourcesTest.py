"""Every source file has a test file at the same place below tests/, and every test file is built."""

import fnmatch
import json
import pathlib
import re
import unittest

import house

TESTED_FOLDERS = ("holders", *house.LAYER, "palette", "hostcheck", "recorder", "dxf", "samples", "embedded", "view", "tool",
                  "desktop")

# Sources whose test stands elsewhere: pattern, the test file that covers them, and why.
COVERED_ELSEWHERE = [
    ("tool/Main.cpp", None,
     "holds main() and nothing else, so no test can link it; the tests of the tool run the program"),
    ("desktop/Main.cpp", None,
     "holds main() and what it alone needs"),
    ("desktop/EntityModel.cpp", "tests/desktop/MainWindowTest.cpp",
     "a list is tested in the window that shows it"),
    ("desktop/drawing/*.cpp", "tests/desktop/MainWindowTest.cpp",
     "a pane is tested by what a user does in the window"),
    ("desktop/palette/*.cpp", "tests/desktop/MainWindowTest.cpp",
     "a pane is tested by what a user does in the window"),
    ("hostcheck/program/Main.cpp", None,
     "holds main() and what it alone needs; a test runs the program"),
    ("hostcheck/modules/*.cpp", None,
     "each is a host to be loaded by the program, and is when a test runs that"),
    ("recorder/*.cpp", None,
     "takes the place of a host's functions, as a test program's toys do; a test records and replays whole programs"),
    ("embedded/automation/classes/*.cpp", "tests/embedded/automation/classes/ClassesTest.cpp",
     "each is one table, and one test compares the tables with their golden listings"),
    ("view/entities/*.cpp", "tests/view/EntitiesTest.cpp",
     "each draws a few kinds of entities, and one test looks at how each kind comes out"),
    ("samples/gallery/*.cpp", "tests/samples/GalleryTest.cpp",
     "each draws some exhibits, and one test looks at the gallery as a whole"),
]

TEST_MACRO = re.compile(r"^\s*(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P|RC_GTEST_PROP\w*)\s*\(", re.MULTILINE)


def covering_test(source):
    """The test files that may cover a source; empty when none is asked for."""
    own = f"tests/{source.with_suffix('')}Test.cpp"
    for pattern, test, _ in COVERED_ELSEWHERE:
        if fnmatch.fnmatch(str(source), pattern):
            return [own, test] if test else []
    return [own]


def violations(root):
    found = []
    for source in house.files_below(root, TESTED_FOLDERS, (".cpp",)):
        candidates = covering_test(source)
        if candidates and not any((root / test).is_file() for test in candidates):
            found.append(f"{source}: no {' nor '.join(candidates)}")
    for test in house.files_below(root, ("tests",), (".cpp",)):
        named = test.name.endswith("Test.cpp")
        if not named and TEST_MACRO.search(house.text_of(root / test)):
            found.append(f"{test}: holds tests, but only files named ...Test.cpp are built as tests")
        if named and (len(test.parts) < 3 or test.parts[1] == "support"):
            found.append(f"{test}: stands where no test executable picks it up")
        if named and not TEST_MACRO.search(house.text_of(root / test)):
            found.append(f"{test}: holds no test")
    return found


def files_of_unit(unit):
    """What a unit of the build compiles: itself, or the files that the build made it include."""
    if "/Unity/" not in unit:
        return [unit]
    return re.findall(r'#include "([^"]+)"', house.text_of(pathlib.Path(unit)))


def not_built(root, compile_commands):
    built = {file for entry in compile_commands for file in files_of_unit(entry["file"])}
    return [f"{test}: is not compiled into any target"
            for test in house.files_below(root, ("tests",), (".cpp",))
            if test.name.endswith("Test.cpp") and str(root / test) not in built]


class TheTree(house.Check):
    def test_has_a_test_file_for_every_source_file(self):
        found = violations(house.source_root())
        self.assert_nothing(found)

    @unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
    def test_builds_every_test_file(self):
        commands = json.loads(house.text_of(house.build_root() / "compile_commands.json"))
        found = not_built(house.source_root(), commands)
        self.assert_nothing(found)


class TheCheck(house.Check):
    TEST = "TEST(A, Works) {}\n"

    def check(self, *paths, **contents):
        with house.small_tree({path: self.TEST for path in paths} | contents) as root:
            return violations(root)

    def test_is_content_with_a_mirrored_tree(self):
        self.assertFalse(self.check("propdata/merge/A.cpp", "tests/propdata/merge/ATest.cpp", "tool/Main.cpp"))

    def test_finds_a_source_without_a_test(self):
        for folder in set(TESTED_FOLDERS) - {"recorder"}:
            with self.subTest(folder=folder):
                self.assertTrue(self.check(f"{folder}/sub/A.cpp"))

    def test_finds_a_test_in_the_wrong_place(self):
        self.assertTrue(self.check("propdata/merge/A.cpp", "tests/propdata/ATest.cpp"))

    def test_lets_the_tables_of_classes_share_a_test_which_must_exist(self):
        table = "embedded/automation/classes/Line.cpp"
        self.assertTrue(self.check(table))
        self.assertFalse(self.check(table, "tests/embedded/automation/classes/ClassesTest.cpp"))

    def test_finds_tests_that_no_target_picks_up(self):
        self.assertTrue(self.check("tests/ATest.cpp"))
        self.assertTrue(self.check("tests/support/ATest.cpp"))
        self.assertTrue(self.check("tests/text/AChecks.cpp"))

    def test_finds_a_test_file_without_a_test(self):
        self.assertTrue(self.check(**{"tests/text/ATest.cpp": "// later\n"}))

    def test_finds_a_test_file_that_is_not_compiled(self):
        with house.small_tree({"tests/text/ATest.cpp": self.TEST, "tests/text/BTest.cpp": self.TEST}) as root:
            commands = [{"file": str(root / "tests/text/ATest.cpp")}]
            self.assertEqual(["tests/text/BTest.cpp: is not compiled into any target"], not_built(root, commands))

    def test_looks_into_the_pieces_in_which_several_test_files_are_compiled(self):
        with house.small_tree({"tests/text/ATest.cpp": self.TEST, "tests/text/BTest.cpp": self.TEST}) as root:
            piece = root / "build/Unity/unity_0_cxx.cxx"
            piece.parent.mkdir(parents=True)
            piece.write_text(f'#include "{root}/tests/text/BTest.cpp"\n', encoding="utf-8")
            commands = [{"file": str(piece)}]
            self.assertEqual(["tests/text/ATest.cpp: is not compiled into any target"], not_built(root, commands))


if __name__ == "__main__":
    unittest.main()
