"""The README's list of folders, its arrows and its list of what a build leaves are those of the tree."""

import re
import unittest

import house
import IncludeArrowsTest


def block_after(page, line):
    """The first fenced block after a line, before the next heading."""
    lines = page.splitlines(keepends=True)
    starts = [number for number, text in enumerate(lines) if text.rstrip() == line]
    block, inside = "", False
    for text in lines[starts[0] + 1:] if starts else []:
        if text.startswith("```") and inside:
            return block
        if text.startswith("```"):
            inside = True
        elif inside:
            block += text
        elif text.startswith("#"):
            return ""
    return block


def listed_folders(tree):
    """The folders of a drawn tree: a line `name/   what it is` stands below the last line that is indented less."""
    found, above = [], []
    for match in re.finditer(r"^( *)([\w-]+)/ ", tree, re.MULTILINE):
        indent, name = len(match.group(1)), match.group(2)
        above = [(outer, path) for outer, path in above if outer < indent]
        path = f"{above[-1][1]}/{name}" if above else name
        above.append((indent, path))
        found.append(path)
    return found


def subfolders(root, parent):
    return {path.relative_to(root).as_posix() for path in (root / parent).iterdir()
            if path.is_dir() and not path.name.startswith((".", "__")) and path.name != "build" and any(path.iterdir())}


def untrue_folders(root, tree):
    """What is listed and not there; and of the root and each folder that lists some, what is there and not listed."""
    listed = set(listed_folders(tree))
    parents = {""} | {path.rpartition("/")[0] for path in listed}
    there = set().union(*(subfolders(root, parent) for parent in parents if (root / parent).is_dir()))
    return [f"{path}/ is listed, but not there" for path in sorted(listed - there)] + \
           [f"{path}/ is there, but not listed" for path in sorted(there - listed)]


def drawn_arrows(drawing):
    """{place: all that the drawing lets it include}: an arrow points from what is included to who includes it."""
    arrows = {}
    for line in drawing.splitlines():
        for chain in re.split(r"\s{2,}", line.strip()):
            stations = [[place.strip() for place in station.split(",")] for station in chain.split("←")]
            for below, above in zip(stations, stations[1:]):
                for place in above:
                    arrows.setdefault(place, set()).update(below)

    def reached(place):
        found, waiting = set(), [place]
        while waiting:
            for target in arrows.get(waiting.pop(), set()) - found:
                found.add(target)
                waiting.append(target)
        return found

    return {place: reached(place) for place in arrows}


def cut(place, depth):
    return "/".join(place.split("/")[:depth])


def allowed(rules, depth, below=""):
    """The rules, rooms taken together down to this depth: {place: what it may include beside itself}."""
    table = {}
    for place, targets in rules.items():
        if place.startswith(below):
            table.setdefault(cut(place, depth), set()).update(cut(target, depth) for target in targets if target.startswith(below))
    return {place: targets - {place} for place, targets in table.items()}


def untrue_arrows(drawing, rules):
    drawn = drawn_arrows(drawing)
    found = []
    for depth, below in ((1, ""), (2, "embedded/")):
        for place, targets in allowed(rules, depth, below).items():
            shown = {cut(target, depth) for target in drawn.get(place, set()) if target.startswith(below)} - {place}
            found += [f"{place}: may include {target}, which is not drawn" for target in sorted(targets - shown)]
            found += [f"{place}: may not include {target}" for target in sorted(shown - targets)]
    return found


def missing_products(build, listing):
    """What a build folder should hold by the listing; only libraries, programs and plug-ins are always there."""
    products = re.findall(r"^build/<preset>/((?:bin|lib|plugins)/\S*)", listing, re.MULTILINE)
    return [product for product in products if not (build / product).exists()]


class TheReadme(house.Check):
    @classmethod
    def setUpClass(cls):
        cls.readme = house.text_of(house.source_root() / "README.md")

    def test_lists_the_folders_of_the_tree(self):
        self.assert_nothing(untrue_folders(house.source_root(), block_after(self.readme, "## Folders")))

    def test_draws_the_arrows_that_are_checked(self):
        root = house.source_root()
        rules = {place: {target for target in targets if (root / target).exists()}
                 for place, targets in IncludeArrowsTest.MAY_INCLUDE.items() if (root / place).exists()}
        self.assert_nothing(untrue_arrows(block_after(self.readme, "Who may include whom:"), rules))

    @unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
    def test_lists_what_a_build_leaves(self):
        listing = block_after(self.readme, "## Where things come out")
        self.assertIn("libVeltPropData.so", listing)
        self.assert_nothing(missing_products(house.build_root(), listing))


class TheCheck(house.Check):
    RULES = {"a": set(), "b": {"a"}, "c": {"a", "b"}, "embedded/x": {"a"}, "embedded/y": {"a", "embedded/x"}}
    DRAWING = "a ← b ← c\na ← embedded    embedded/x ← embedded/y\n"

    def test_is_content_with_a_true_drawing(self):
        self.assertFalse(untrue_arrows(self.DRAWING, self.RULES))

    def test_finds_arrows_that_are_missing_or_too_many(self):
        for drawing in (self.DRAWING.replace(" ← c", ""), self.DRAWING.replace("    embedded/x ← embedded/y", ""),
                        self.DRAWING + "c ← embedded\n", self.DRAWING + "embedded/y ← embedded/x\n"):
            with self.subTest(drawing=drawing):
                self.assertTrue(untrue_arrows(drawing, self.RULES))

    def test_finds_folders_that_are_missing_or_not_listed(self):
        with house.small_tree({"a/A.h": "", "b/x/B.h": "", "b/y/B.h": "", ".git/config": "", "build/b": ""}) as root:
            self.assertFalse(untrue_folders(root, "a/   one\n     more of it\nb/  two\n"))
            self.assertFalse(untrue_folders(root, "a/   one\nb/  two\n  x/   three\n  y/   four\n"))
            self.assertEqual(["b/y/ is there, but not listed"], untrue_folders(root, "a/ one\nb/ two\n  x/ three\n"))
            self.assertEqual(["c/ is listed, but not there"], untrue_folders(root, "a/ one\nb/ two\nc/ three\n"))
            self.assertEqual(["b/ is there, but not listed"], untrue_folders(root, "a/ one\n"))

    def test_reads_the_block_under_its_own_heading(self):
        readme = "## One\n\ntext\n\n```\na/ x\n```\n\n## Two\n\nno block\n\n## Three\n```\nb/ y\n```\n"
        self.assertEqual("a/ x\n", block_after(readme, "## One"))
        self.assertEqual("", block_after(readme, "## Two"))
        self.assertEqual("b/ y\n", block_after(readme, "## Three"))

    def test_finds_a_product_that_was_not_built(self):
        with house.small_tree({"lib/libA.so": ""}) as build:
            listing = "build/<preset>/lib/libA.so\nbuild/<preset>/bin/b\nbuild/<preset>/golden/   differs\n"
            self.assertEqual(["bin/b"], missing_products(build, listing))


if __name__ == "__main__":
    unittest.main()
