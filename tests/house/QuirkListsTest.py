"""A deliberate oddity is written down three times: at its line, in docs/quirks.md, and as a test. The lists agree."""

import re
import unittest

import house

QUIRK_FOLDERS = ("host", "holders", *house.LAYER, "palette", "dxf", "samples", "embedded", "tool", "plugins")

COMMENT = re.compile(r"\bQUIRK\(([^)\n]*)\)(:?)")
HEADING = re.compile(r"^##[ \t]+(.*?)[ \t]*$", re.MULTILINE)
TEST = re.compile(
    r"\b(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P|RC_GTEST_PROP|RC_GTEST_FIXTURE_PROP)"
    r"\s*\(\s*\w+\s*,\s*Quirk_(\w+)")
NAME = re.compile(r"\w+")


def named_in_sources(root):
    """{name: a place that names it}, and the comments that are not written as agreed."""
    names, malformed = {}, []
    for path in house.files_below(root, QUIRK_FOLDERS):
        for match in COMMENT.finditer(house.text_of(root / path)):
            name, colon = match.groups()
            if NAME.fullmatch(name) and colon:
                names.setdefault(name, str(path))
            else:
                malformed.append(f"{path}: '{match.group(0)}' is not of the form QUIRK(name): ...")
    return names, malformed


def named_in_docs(root):
    page = root / "docs" / "quirks.md"
    return HEADING.findall(house.text_of(page)) if page.is_file() else []


def named_in_tests(root):
    names = {}
    for path in house.files_below(root, ("tests",), (".cpp",)):
        for name in TEST.findall(house.without_comments(house.text_of(root / path))):
            names.setdefault(name, str(path))
    return names


def violations(root):
    sources, found = named_in_sources(root)
    docs = named_in_docs(root)
    tests = named_in_tests(root)
    found += [f"docs/quirks.md: '{name}' stands twice" for name in sorted(set(docs)) if docs.count(name) > 1]
    for name in sorted(set(sources) | set(docs) | set(tests)):
        missing = [where for where, names in
                   (("no comment QUIRK(name): in the sources", sources),
                    ("no heading '## name' in docs/quirks.md", docs),
                    ("no test Quirk_name", tests)) if name not in names]
        if missing:
            known = sources.get(name) or tests.get(name) or "docs/quirks.md"
            found.append(f"{name} ({known}): {'; '.join(missing)}")
    return found


class TheTree(house.Check):
    def test_agrees_on_its_quirks(self):
        found = violations(house.source_root())
        self.assert_nothing(found)


class TheCheck(house.Check):
    COMPLETE = {
        "propdata/A.cpp": "// QUIRK(oddOne): the count is one too high; palettes rely on it.\n",
        "docs/quirks.md": "# Quirks\n\n## oddOne\n\nThe count is one too high.\n",
        "tests/propdata/ATest.cpp": "TEST_F(A,\n       Quirk_oddOne) {}\n",
    }

    def check(self, **changes):
        with house.small_tree(self.COMPLETE | changes) as root:
            return violations(root)

    def test_is_content_when_the_three_agree(self):
        self.assertFalse(self.check())

    def test_finds_each_of_the_three_missing(self):
        for path in self.COMPLETE:
            with self.subTest(missing=path):
                found = self.check(**{path: "\n"})
                self.assertEqual(1, len(found), found)

    def test_finds_a_new_quirk_in_each_of_the_three(self):
        self.assertTrue(self.check(**{"text/B.h": "// QUIRK(other): happens.\n"}))
        self.assertTrue(self.check(**{"tests/text/BTest.cpp": "TEST(B, Quirk_other) {}\n"}))
        self.assertTrue(self.check(**{"docs/quirks.md": "## oddOne\n\n## other\n"}))

    def test_finds_a_test_that_is_commented_out(self):
        self.assertTrue(self.check(**{"tests/propdata/ATest.cpp": "// TEST(A, Quirk_oddOne) {}\n"}))

    def test_finds_a_comment_that_is_not_written_as_agreed(self):
        self.assertTrue(self.check(**{"text/B.h": "// QUIRK(two words): happens.\n"}))
        self.assertTrue(self.check(**{"text/B.h": "// QUIRK(oddOne) happens.\n"}))

    def test_finds_a_heading_that_stands_twice(self):
        self.assertTrue(self.check(**{"docs/quirks.md": "## oddOne\n\n## oddOne\n"}))


if __name__ == "__main__":
    unittest.main()
