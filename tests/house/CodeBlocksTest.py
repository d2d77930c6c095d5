"""What the guides show as code compiles, and every other block of theirs is of a kind that is known.

Console sessions (blocks with lines that begin with `$`) are run by ConsoleBlocksTest. A block of C++ has a frame here, the
text around it, and is compiled in it; blocks that another test takes out of the page and uses have none.
"""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import house

BLOCK = re.compile(r"^( *)```([^\n]*)\n(.*?)^ *```", re.MULTILINE | re.DOTALL)

# Page, how the block begins, and the text around it: BLOCK is where it stands. Frames of one page are compiled together.
FRAMES = (
    ("docs/host.md", "const std::vector<VkDbObjectId> ids{", """
        #include <iostream>
        #include <vector>
        #include "palette/Palette.h"
        namespace palette_over_the_palette_library { void run() { BLOCK } }"""),
    ("docs/host.md", "const platform::Watch watch(", """
        #include "embedded/platform/Watch.h"
        #include "palette/Palette.h"
        namespace progress {
        using namespace velt;
        struct Window { void show(std::size_t valuesRead); bool isCancelPressed(); };
        void run(Window& window, palette::Selection& selection) { BLOCK } }"""),
    ("docs/host.md", "// FOLDER/host/database/VkCmColor.h", """BLOCK
        static_assert(sizeof(VkCmColor) > 0);"""),
    ("tests/support/README.md", "TEST(Harvest, ", """
        #include <gtest/gtest.h>
        #include "tests/support/ToyHost.h"
        #include "tests/support/ToyObject.h"
        #include "tests/support/ToySelection.h"
        using namespace velt::toys;
        BLOCK"""),
    ("tests/support/README.md", 'host.on("GetPredefinedStrings(4)")', """
        #include "tests/support/ToyHost.h"
        namespace faults { void run(velt::toys::ToyHost& host) { BLOCK } }"""),
)

# Page, how the block begins, and who looks at it.
ELSEWHERE = (
    ("docs/host.md", "{pressureId, ", "InstalledPackageTest builds the host with it"),
    ("docs/host.md", '#include "UnitTypes.h"', "InstalledPackageTest builds the host with it, too"),
    ("docs/recording.md", '{"layer":', "RecordReplayTest compares it with a recording"),
    ("docs/drawing.md", "scripts/compare-pictures", "needs a renderer that not every machine has"),
    ("docs/plugins.md", "gdb --args", "needs a debugger, and somebody who looks"),
    ("README.md", "make run", "ConsoleBlocksTest looks for the targets"),
    ("README.md", "build/<preset>/bin/", "ReadmeTest looks for the files"),
    ("README.md", "host/ ", "ReadmeTest compares the folders"),
    ("README.md", "host ", "ReadmeTest compares the arrows"),
)


def blocks(page_text):
    """[(line, language, body)] of the blocks that are no console sessions."""
    found = []
    for match in BLOCK.finditer(page_text):
        body = re.sub(rf"^{match.group(1)}", "", match.group(3), flags=re.MULTILINE)
        if not re.search(r"^\$ ", body, re.MULTILINE):
            found.append((page_text.count("\n", 0, match.start()) + 1, match.group(2), body))
    return found


def pages(root):
    named = [root / name for name in ("README.md", "host/README.md", "bench/README.md", "tests/support/README.md")]
    return {str(path.relative_to(root)): house.text_of(path) for path in [*named, *sorted((root / "docs").glob("*.md"))]}


def unknown(texts):
    """The blocks that nobody looks at, and what is said here of blocks that are not there."""
    known = [entry[:2] for entry in FRAMES + ELSEWHERE]
    used, found = set(), []
    for page, text in texts.items():
        for line, language, body in blocks(text):
            if language == "dot":  # drawn when Doxygen makes its pages
                continue
            fitting = [entry for entry in known if entry[0] == page and body.startswith(entry[1])]
            used.update(fitting)
            if not fitting:
                found.append(f"{page}:{line}: nobody looks at this block")
    return found + [f"{page}: has no block that begins with {begins}" for page, begins in known if (page, begins) not in used]


def complaints(texts, compiler, root):
    """What the compiler says of the blocks in their frames."""
    units = {}
    for page, begins, frame in FRAMES:
        body = next((body for _, _, body in blocks(texts[page]) if body.startswith(begins)), "")
        # A header that has to come first, and may not meet the host's own of that name, is a unit of its own.
        unit = page if frame.lstrip().startswith("#include") else begins
        units.setdefault(unit, []).append(frame.replace("BLOCK", "\n" + body))
    with tempfile.TemporaryDirectory() as folder:
        files = []
        for number, parts in enumerate(units.values()):
            files.append(pathlib.Path(folder, f"{number}.cpp"))
            files[-1].write_text("\n".join(parts), encoding="utf-8")
        told = subprocess.run([compiler, "-std=c++20", "-fsyntax-only", f"-I{root}", f"-I{root / 'examples' / 'own-headers'}",
                               *files], capture_output=True, text=True, check=False)
        return told.stderr if told.returncode else ""


class TheBlocks(house.Check):
    def test_are_all_known(self):
        self.assert_nothing(unknown(pages(house.source_root())))

    def test_of_code_compile(self):
        self.assertEqual("", complaints(pages(house.source_root()), os.environ.get("VELT_CXX", "c++"), house.source_root()))


class TheCheck(house.Check):
    def test_finds_a_block_that_nobody_looks_at_and_one_that_is_gone(self):
        texts = pages(house.source_root())
        texts["docs/flow.md"] += "\n```cpp\nint x;\n```\n"
        self.assertEqual(1, len(unknown(texts)))
        texts["docs/plugins.md"] = texts["docs/plugins.md"].replace("gdb --args", "lldb --")
        self.assertEqual(3, len(unknown(texts)))

    def test_finds_code_that_does_not_compile(self):
        texts = pages(house.source_root())
        self.assertIn("valuesRead", texts["docs/host.md"])
        texts["docs/host.md"] = texts["docs/host.md"].replace("progress.valuesRead", "progress.valuesSeen")
        self.assertIn("valuesSeen", complaints({**texts, "tests/support/README.md": ""}, os.environ.get("VELT_CXX", "c++"),
                                               house.source_root()))


if __name__ == "__main__":
    unittest.main()
