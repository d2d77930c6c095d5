"""`make docs` makes its pages without a warning, and a name of host/ without a comment is one."""

import importlib.machinery
import importlib.util
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import house


def make_pages(root, pages, settings=""):
    """What Doxygen complains about in a tree; empty when it made its pages."""
    result = subprocess.run(["doxygen", "-"], cwd=root, env=os.environ | {"VELT_DOCS": str(pages)}, check=False,
                            input=house.text_of(root / "docs" / "Doxyfile") + settings, capture_output=True, text=True)
    complaints = [line for line in (result.stdout + result.stderr).splitlines() if line.strip()]
    return complaints or ([f"it ends with {result.returncode}"] if result.returncode else [])


def comments_script():
    path = house.source_root() / "scripts" / "doxygen-comments"
    loader = importlib.machinery.SourceFileLoader("doxygen_comments", str(path))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    loader.exec_module(module)
    return module


@unittest.skipUnless(shutil.which("doxygen") and shutil.which("dot"), "Doxygen or Graphviz is not installed")
class ThePages(house.Check):
    def test_are_made_without_a_warning_and_with_their_pictures(self):
        root = house.source_root()
        with tempfile.TemporaryDirectory() as pages:
            self.assert_nothing(make_pages(root, pages))
            drawn = list(pathlib.Path(pages).glob("dot_inline_*.svg"))
            self.assertEqual(house.text_of(root / "docs" / "flow.md").count("\n```dot\n"), len(drawn))
            self.assertTrue(pathlib.Path(pages, "index.html").is_file())

    def test_are_refused_when_a_name_of_the_host_has_no_comment(self):
        with tempfile.TemporaryDirectory() as tree, tempfile.TemporaryDirectory() as pages:
            root = pathlib.Path(tree)
            for name in ("host", "docs", "scripts"):
                shutil.copytree(house.source_root() / name, root / name)
            header = root / "host" / "platform" / "Memory.h"
            alone = "INPUT = host/platform/Memory.h\nGENERATE_HTML = NO\nGENERATE_XML = YES\n"
            self.assert_nothing(make_pages(root, pages, alone))
            header.write_text(house.text_of(header) + "\nvoid nobodyTellsOfThis();\n", encoding="utf-8")
            complaints = make_pages(root, pages, alone)
            self.assertEqual(1, len(complaints), complaints)
            self.assertIn("nobodyTellsOfThis", complaints[0])


ENUMERATION = re.compile(r"^enum (\w+)[^{};]*\{(.*?)\}", re.MULTILINE | re.DOTALL)


def enumerators_without_a_comment(root):
    """Doxygen does not miss them: a comment above the first one goes for the whole run."""
    found = []
    for path in house.files_below(root, ("host",), (".h",)):
        for enumeration in ENUMERATION.finditer(house.text_of(root / path)):
            above = ""
            for line in map(str.strip, enumeration.group(2).splitlines()):
                code, comment, _ = line.partition("//")
                names = re.findall(r"(\w+)(?: *= *[^,]+)?(?:,|$)", code.strip())
                if names and (len(names) > 1 or not (comment or above.startswith("//"))):
                    found += [f"{path}: {enumeration.group(1)}::{name}" for name in names]
                above = line
    return found


class TheEnumerators(house.Check):
    def test_have_a_comment_each(self):
        self.assert_nothing(enumerators_without_a_comment(house.source_root()))

    def test_without_one_are_found(self):
        for body in ("  eOne = 1\n", "  eOne = 1,  // One.\n  eTwo\n", "  // Both.\n  eOne,\n  eTwo\n", " eOne, eTwo  // Both. \n"):
            with self.subTest(body=body), house.small_tree({"host/A.h": f"enum A : int {{\n{body}}};\n"}) as root:
                self.assertTrue(enumerators_without_a_comment(root))
        with house.small_tree({"host/A.h": "enum A : int {\n  // One.\n  eOne = 1,\n  eTwo  // Two.\n};\n"}) as root:
            self.assertFalse(enumerators_without_a_comment(root))


class TheComments(house.Check):
    def converted(self, text, stem="Thing"):
        return comments_script().converted("#pragma once\n\n// The file.\n\n" + text, stem)

    def test_belong_to_each_declaration_of_the_run_below_them(self):
        shown = self.converted("// Both.\nvoid f(int a,\n       int b);\nvoid g();\n\nvoid h();\n")
        self.assertEqual(2, shown.count("/// Both."))
        self.assertIn("/// Both.\nvoid g();\n\nvoid h();", shown)

    def test_on_a_line_belong_to_what_stands_before_them(self):
        self.assertIn("int a; ///< Of a.\n", self.converted("struct S {\n  int a;  // Of a.\n};\n"))

    def test_of_the_file_are_also_those_of_the_type_of_its_name(self):
        self.assertIn("/// The file.\nstruct Thing {", self.converted("struct Thing {\n};\n"))
        self.assertNotIn("/// The file.\nstruct Other {", self.converted("struct Other {\n};\n"))

    def test_with_an_empty_line_below_are_left_out(self):
        self.assertNotIn("Heading", self.converted("// Heading\n\nvoid f();\n"))

    def test_keep_their_columns(self):
        self.assertIn("/// \\verbatim\n///   a   first\n/// \\endverbatim\nvoid f();",
                      self.converted("// Has\n//   a   first\nvoid f();\n"))

    def test_do_not_reach_into_bodies(self):
        shown = self.converted("// Of f.\ninline int f() {\n  return 1;\n}\nint g();\n")
        self.assertIn("/// Of f.\ninline int f() {\n  return 1;\n}\n/// Of f.\nint g();", shown)


if __name__ == "__main__":
    unittest.main()
