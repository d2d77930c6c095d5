"""The tables of docs/host.md are those of the code: messages, predefined categories, kinds of properties, files."""

import re
import unittest

import house

PAGE = "docs/host.md"


def rows_below(page, heading):
    """The rows of the first table below a heading, each a list of its cells; without the head of the table."""
    below = re.split(rf"^## {re.escape(heading)}$", page, maxsplit=1, flags=re.MULTILINE)
    if len(below) < 2:
        return []
    section = re.split(r"^## ", below[1], maxsplit=1, flags=re.MULTILINE)[0]
    lines = re.findall(r"^\| (.*) \|$", section, re.MULTILINE)
    return [[cell.strip() for cell in line.split(" | ")] for line in lines[1:]]


def code(root, path):
    return house.text_of(root / path)


def differences(page, actual, what):
    """Two {key: value}: what stands in the page, and what is true."""
    return [f"{what} {key}: the page says {page.get(key)!r}, the code {actual.get(key)!r}"
            for key in sorted(page.keys() | actual.keys()) if page.get(key) != actual.get(key)]


def untrue_messages(root, page):
    shown = {row[0]: row[-1] for row in rows_below(page, "Messages")}
    texts = dict(re.findall(r'\{(\d{4}), L"([^\n]*)"\},$', code(root, "embedded/platform/Messages.h"), re.MULTILINE))
    texts = {number: text.replace('\\"', '"') for number, text in texts.items()}
    used = set(re.findall(r"^inline constexpr int \w+ = (\d+);", code(root, "errors/LoadErrString.h"), re.MULTILINE))
    return differences(shown, texts, "message") + \
        [f"message {number}: is of the page or of the layer, not of both" for number in sorted(used ^ shown.keys())]


def untrue_categories(root, page):
    header = code(root, "embedded/platform/Categories.h")
    numbers = dict(re.findall(r"^  (\w+) = (-\d+),", header, re.MULTILINE))
    names = re.findall(r'\{Category::(\w+), +L"([^"]*)"\}', header)
    actual = {numbers[category]: (str(1000 - int(numbers[category])), name) for category, name in names}
    shown = {row[0]: (row[1], row[2]) for row in rows_below(page, "Predefined categories")}
    return differences(shown, actual, "category")


def untrue_kinds(root, page):
    rows = rows_below(page, "Kinds of properties")
    declared = re.findall(r"^    (\w+) += (\d+), ", code(root, "propdata/VeltPropData.h"), re.MULTILINE)
    found = differences({row[0]: row[1].strip("`") for row in rows}, {number: name for name, number in declared}, "kind")

    type_names = re.findall(r'\{L"(VELT_\w+)", +PropertyKind::(\w+)\}', code(root, "propdata/typeinfo/CustomTypeNames.cpp"))
    shown = {name: row[1].strip("`") for row in rows for name in re.findall(r"`(VELT_\w+)`", row[2])}
    found += differences(shown, dict(type_names), "type name")

    typing = code(root, "propdata/typing/PropertyKinds.cpp")
    special = set(re.findall(r'L"(\w+)"', typing))
    settled = {name for row in rows if row[2].find(" of a") > 0 for name in re.findall(r"`(\w+)`", row[2].split(";")[0])}
    found += [f"property name {name}: is of the page or of the code, not of both" for name in sorted(special ^ settled)]
    return found


def untrue_files(root, page):
    files = {path.name for path in (root / "examples" / "minimal-host").iterdir() if not path.name.startswith(".")}
    shown = {row[0].strip("`") for row in rows_below(page, "The first merged list")}
    groups = {f"host/{path.name}" for path in (root / "host").iterdir() if path.is_dir()}
    shown_groups = {row[0].strip("`") for row in rows_below(page, "What each group means")}
    return [f"{name}: is of the page or of the tree, not of both"
            for name in sorted((files - {"CMakeLists.txt"} ^ shown) | (groups ^ shown_groups))]


class TheGuide(house.Check):
    @classmethod
    def setUpClass(cls):
        cls.root = house.source_root()
        cls.page = house.text_of(cls.root / PAGE)

    def test_lists_the_messages_with_their_texts(self):
        self.assert_nothing(untrue_messages(self.root, self.page))

    def test_lists_the_predefined_categories(self):
        self.assert_nothing(untrue_categories(self.root, self.page))

    def test_lists_the_kinds_of_properties_and_what_settles_them(self):
        self.assert_nothing(untrue_kinds(self.root, self.page))

    def test_lists_the_files_of_the_minimal_host_and_the_groups_of_what_a_host_supplies(self):
        self.assert_nothing(untrue_files(self.root, self.page))


class TheCheck(house.Check):
    def test_finds_each_untruth(self):
        root, page = house.source_root(), house.text_of(house.source_root() / PAGE)
        for check, was, becomes in (
                (untrue_messages, "COM could not be initialized.", "COM could not be started."),
                (untrue_messages, "| 1018 |", "| 1017 |"),
                (untrue_categories, "| -13 | 1013 | Geometry |", "| -13 | 1014 | Geometry |"),
                (untrue_categories, "| -32 | 1032 | Custom |\n", ""),
                (untrue_kinds, "| 505 | `colorObject`", "| 506 | `colorObject`"),
                (untrue_kinds, "`VELT_LTYPE`", "`VELT_LINESTYLE`"),
                (untrue_kinds, "`IslandStyle` of a hatch", "`Islands` of a hatch"),
                (untrue_files, "| `Com.cpp` |", "| `Strings.cpp` |"),
                (untrue_files, "| `host/database` |", "| `host/drawings` |")):
            with self.subTest(becomes=becomes):
                self.assertIn(was, page)
                self.assertTrue(check(root, page.replace(was, becomes)))


if __name__ == "__main__":
    unittest.main()
