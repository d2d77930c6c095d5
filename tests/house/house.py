"""What the house checks share: where the tree stands, how its files are found, and small trees for the self-tests.

A house check is a function that takes the root of a tree and returns one line per violation. Each check file runs
its function on the real tree, and on small trees that violate the rule, so that a check that finds nothing is known
to be able to find something.
"""

import contextlib
import os
import pathlib
import re
import tempfile
import unittest

LAYER = ("text", "errors", "container", "propdata")
CODE_FOLDERS = ("host", "holders", *LAYER, "palette", "hostcheck", "recorder", "dxf", "samples", "embedded", "view", "tool", "desktop", "plugins", "tests", "bench", "fuzz",
                "examples")
SOURCE_SUFFIXES = (".h", ".cpp")


def source_root():
    default = pathlib.Path(__file__).resolve().parents[2]
    return pathlib.Path(os.environ.get("VELT_SOURCE_DIR", default))


def build_root():
    """The build folder that is being tested, or None when a check is started by hand."""
    folder = os.environ.get("VELT_BINARY_DIR")
    return pathlib.Path(folder) if folder else None


def is_instrumented():
    return os.environ.get("VELT_INSTRUMENTED", "OFF") == "ON"


def files_below(root, folders, suffixes=SOURCE_SUFFIXES):
    """Paths relative to the root, sorted, of the files with these suffixes below these folders."""
    found = []
    for folder in folders:
        for path in (root / folder).rglob("*"):
            if path.suffix in suffixes and path.is_file():
                found.append(path.relative_to(root))
    return sorted(found)


def text_of(path):
    return path.read_text(encoding="utf-8", errors="replace")


def without_comments(text):
    """The code with comments and string contents blanked, lines kept."""
    token = re.compile(
        r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'', re.DOTALL)
    def blank(match):
        piece = match.group(0)
        if piece.startswith(("//", "/*")):
            return "\n" * piece.count("\n")
        return piece[0] + piece[-1]
    return token.sub(blank, text)


@contextlib.contextmanager
def small_tree(files):
    """A temporary tree that holds the given files: {relative path: content}."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, content in files.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(content, encoding="utf-8")
        yield root


class Check(unittest.TestCase):
    def assert_nothing(self, violations):
        if violations:
            self.fail("\n".join([f"{len(violations)} violations", *violations]))
