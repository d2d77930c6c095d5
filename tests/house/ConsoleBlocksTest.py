"""What the README and the pages of docs/ show in a console is what a reader gets who types it.

A page's console blocks are one session in a fresh folder, run in order. The folder looks like the tree after a build
and an installation: plug-ins stand in build/, the tools are on the path, pkg-config knows the libraries. A shown line
`...` stands for any lines; everything else must come out as it stands. Nothing is made here: of a command that begins
with `make`, the target must exist in the Makefile.
"""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import house

BLOCK = re.compile(r"^```[^\n]*\n(.*?)^```", re.MULTILINE | re.DOTALL)
COMMAND = re.compile(r"^\$ (.*)$")
MADE = re.compile(r"(?:^\$ ?|`|^)make ([a-z][a-z-]*)", re.MULTILINE)


def pages(root):
    return [page for page in [root / "README.md", *sorted((root / "docs").glob("*.md"))] if page.is_file()]


def steps_of(page_text):
    """[(line number, command, lines shown after it)] of all console blocks of a page."""
    steps = []
    for block in BLOCK.finditer(page_text):
        first = page_text.count("\n", 0, block.start(1)) + 1
        command = None
        for offset, line in enumerate(block.group(1).splitlines()):
            match = COMMAND.match(line)
            if match:
                command = (first + offset, match.group(1), [])
                steps.append(command)
            elif command:
                command[2].append(line)
    for _, _, shown in steps:
        while shown and not shown[-1]:  # an empty line before the next command, or at the end
            shown.pop()
    return steps


def matches(shown, printed):
    """Whether the printed lines are the shown ones, each `...` standing for any number of lines."""
    if not shown:
        return not printed
    if shown[0] == "...":
        return any(matches(shown[1:], printed[skipped:]) for skipped in range(len(printed) + 1))
    return bool(printed) and shown[0] == printed[0].rstrip() and matches(shown[1:], printed[1:])


def session(page_text, folder, environment):
    """The violations of one page's commands, which are run in the folder."""
    found = []
    for line, command, shown in steps_of(page_text):
        if command.split()[0] == "make":
            continue
        result = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, text=True, check=False,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        printed = result.stdout.splitlines()
        while printed and not printed[-1]:
            printed.pop()
        if result.returncode != 0:
            found.append(f"{line}: $ {command}\nends with {result.returncode}, and prints\n{result.stdout}")
        elif not matches(shown, printed):
            found.append(f"{line}: $ {command}\nprints\n{result.stdout}")
    return found


def targets(makefile):
    return set(re.findall(r"^([a-z][a-z-]*):", makefile, re.MULTILINE))


def unknown_targets(page_text, makefile):
    return sorted({target for target in MADE.findall(page_text) if target not in targets(makefile)})


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "an instrumented library is not for installing")
class ThePages(house.Check):
    def test_show_what_their_commands_print(self):
        source, build = house.source_root(), house.build_root()
        with tempfile.TemporaryDirectory() as prefix:
            subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
            packages = next(pathlib.Path(prefix).rglob("veltpropdata.pc")).parent
            environment = os.environ | {"PATH": f"{prefix}/bin:{os.environ['PATH']}", "PKG_CONFIG_PATH": str(packages),
                                        "LC_ALL": "C.UTF-8"}
            for page in pages(source):
                with self.subTest(page=page.name), tempfile.TemporaryDirectory() as folder:
                    pathlib.Path(folder, "build").mkdir()
                    for preset in ("dev", "release"):
                        pathlib.Path(folder, "build", preset).symlink_to(build)
                    for name in ("plugins", "examples"):
                        pathlib.Path(folder, name).symlink_to(source / name)
                    self.assert_nothing([f"{page.name}:{trouble}"
                                         for trouble in session(house.text_of(page), folder, environment)])


class TheTree(house.Check):
    def test_has_every_target_that_a_page_tells_to_make(self):
        makefile = house.text_of(house.source_root() / "Makefile")
        self.assert_nothing([f"{page.name}: make {target}" for page in pages(house.source_root())
                             for target in unknown_targets(house.text_of(page), makefile)])


class TheCheck(house.Check):
    def run_page(self, page_text):
        with tempfile.TemporaryDirectory() as folder:
            return session(page_text, folder, dict(os.environ))

    def test_runs_the_blocks_of_a_page_in_one_folder(self):
        self.assertFalse(self.run_page("```\n$ echo one > a\n```\ntext\n```\n$ cat a\none\n\n$ ls\na\n```\n"))

    def test_finds_another_output_and_a_missing_one_and_one_that_is_not_shown(self):
        for block in ("$ echo one\ntwo", "$ true\none", "$ echo one", "$ echo one; echo two\none"):
            with self.subTest(block=block):
                self.assertEqual(1, len(self.run_page(f"```\n{block}\n```\n")))

    def test_finds_a_command_that_fails(self):
        self.assertTrue(self.run_page("```\n$ false\n```\n"))

    def test_takes_dots_for_any_lines_but_not_for_those_that_are_shown(self):
        printed = "$ seq 4"
        for shown, agrees in (("...", True), ("1\n...", True), ("...\n4", True), ("1\n...\n3\n4", True),
                              ("1\n2\n3\n4\n...", True), ("...\n3", False), ("2\n...", False), ("1\n...\n5", False)):
            with self.subTest(shown=shown):
                self.assertEqual(agrees, not self.run_page(f"```\n{printed}\n{shown}\n```\n"))

    def test_leaves_other_blocks_alone(self):
        self.assertFalse(self.run_page("```\nfalse\n```\n```cpp\nint x;\n```\n"))

    def test_does_not_run_make(self):
        self.assertFalse(self.run_page("```\n$ make no-such-target\n```\n"))

    def test_finds_a_target_that_does_not_exist(self):
        for page in ("```\n$ make nothing\n```", "```\nmake nothing   does it\n```", "or `make nothing`"):
            with self.subTest(page=page):
                self.assertEqual(["nothing"], unknown_targets(page + "\nand `make test`, which we make here", "test:\n\ttrue\n"))


if __name__ == "__main__":
    unittest.main()
