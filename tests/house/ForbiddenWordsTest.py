"""The project speaks of itself alone: not of the papers it was planned on, nor of the machine it was written on.

The patterns are put together from pieces, so that this file does not find itself. The folder with the scripts of the
continuous integration is left out: it may know where the checkout stands.
"""

import re
import shutil
import subprocess
import unittest

import house

PAPER = "spec"
WORDS = re.compile("|".join([
    r"\b[Pp]ar" + r"ts? [1-7]\.[1-4]\b",
    PAPER + r"\.md",
    r"\b([Tt]he|this|per|see) [Ss]" + r"pec(ification)?\b",
    "DEVELOPERS" + r"\.md",
    r"\.\./" + "shared",
    r"/(" + "wo" + "rk|fa" + r"rm)/",
    r"\bC" + r"EO\b",
    r"\bissue" + r" [0-9]+\b",
]))
NAMES = re.compile(r"(^|/)(" + PAPER + "(s|ification)?(?![a-z])|par" + r"t[-_]?[1-7])", re.IGNORECASE)
LEFT_OUT = ".ci/"


def files_of(root):
    """What git knows of the tree, or all of it where there is no git; as strings relative to the root."""
    command = ["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    # No git on the machine, no repository, or one that git refuses to read: all the same here.
    listing = subprocess.run(command, capture_output=True, check=False).stdout if shutil.which("git") else b""
    names = [name for name in listing.decode("utf-8", "replace").split("\0") if name]
    if not names:
        names = [str(path.relative_to(root)) for path in root.rglob("*") if path.is_file()]
        names = [name for name in names if not name.startswith(("build/", ".git/"))]
    return sorted(name for name in set(names) if not name.startswith(LEFT_OUT) and (root / name).is_file())


def violations(root):
    found = []
    for name in files_of(root):
        if NAMES.search(name):
            found.append(f"{name}: the name of the file")
        content = (root / name).read_bytes()
        if b"\0" in content:
            continue
        for number, line in enumerate(content.decode("utf-8", "replace").split("\n"), 1):
            if WORDS.search(line):
                found.append(f"{name}:{number}: {line.strip()[:160]}")
    return found


class TheTree(house.Check):
    def test_speaks_of_itself_alone(self):
        found = violations(house.source_root())
        self.assert_nothing(found)


class TheCheck(house.Check):
    def check(self, path, content):
        with house.small_tree({path: content}) as root:
            return violations(root)

    def test_finds_each_of_the_words(self):
        for words in ("as in Par" + "t 3.1", "par" + "ts 1.2 and 2", PAPER + ".md", "per " + PAPER, "The " + PAPER,
                      "see S" + "pecification", "DEVELOPERS" + ".md", "../" + "shared/x", "/wo" + "rk/main",
                      "a C" + "EO", "closes issue" + " 12"):
            with self.subTest(words=words):
                self.assertTrue(self.check("docs/a.md", f"first line\n{words} here\n"))

    def test_finds_names_of_files(self):
        for name in ("docs/" + PAPER + "s.md", PAPER + ".txt", "a/" + PAPER + "ification-2.md", "tests/par" + "t_2.txt", "Par" + "t3.cpp"):
            with self.subTest(name=name):
                self.assertTrue(self.check(name, "\n"))

    def test_leaves_ordinary_words_alone(self):
        for words in ("a special part of the tree", "part 12.5 mm", "worked/", "this species", "an issue of taste"):
            with self.subTest(words=words):
                self.assertFalse(self.check("docs/a.md", words + "\n"))

    def test_leaves_ordinary_names_of_files_alone(self):
        for name in ("propdata/Special.cpp", "docs/parts.md"):
            with self.subTest(name=name):
                self.assertFalse(self.check(name, "\n"))

    def test_leaves_the_integration_scripts_alone(self):
        self.assertFalse(self.check(".ci/run", "cd ../" + "shared\n"))


if __name__ == "__main__":
    unittest.main()
