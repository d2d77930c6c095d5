"""For each check there is a test with a host that is broken in that one way, and in which no other check finds anything."""

import pathlib
import re
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house  # noqa: E402


def checks(root):
    return re.findall(r'Check\{"([a-z-]+)",', house.text_of(root / "hostcheck" / "CheckList.h"))


def found_alone(root):
    tests = (root / "tests" / "hostcheck").glob("*Test.cpp")
    return {name for path in tests for name in re.findall(r'Names\{"([a-z-]+)"\}', house.text_of(path))}


def used(root):
    sources = (root / "hostcheck").glob("*.cpp")
    return {name for path in sources for name in re.findall(r'"([a-z]+(?:-[a-z]+)*)"', house.text_of(path))}


class TheChecks(house.Check):
    def test_have_a_broken_host_each(self):
        root = house.source_root()
        self.assertGreater(len(checks(root)), 50)
        self.assert_nothing([f"{name}: no test finds it alone" for name in checks(root) if name not in found_alone(root)])

    def test_are_all_made(self):
        root = house.source_root()
        self.assert_nothing([f"{name}: nobody makes it" for name in checks(root) if name not in used(root)])

    def test_are_named_as_in_the_list(self):
        root = house.source_root()
        self.assert_nothing([f"{name}: is not in the list" for name in sorted(found_alone(root) - set(checks(root)))])


if __name__ == "__main__":
    unittest.main()
