"""What is installed is enough: a program outside the tree builds on it, links it and runs.

The build is installed into a temporary folder, and programs that know only that folder are compiled against it, through
the CMake package; through pkg-config PackagesTest builds them, against the packages.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import house
import MinimalHostTest

PROGRAM = """
#include "propdata/VeltPropData.h"

int main() {
  TqVector<VeltPropData*> selection;
  CStdStr<wchar_t> message;
  return selection.isEmpty() ? 0 : 1;
}
"""

LISTS = """
cmake_minimum_required(VERSION 3.25)
project(consumer CXX)
find_package(VeltPropData REQUIRED)
add_executable(consumer consumer.cpp)
target_link_libraries(consumer Velt::VeltPropData Velt::VeltEmbeddedHost)
add_executable(palette palette.cpp)
target_link_libraries(palette Velt::VeltPalette Velt::VeltEmbeddedHost)
add_executable(save save.cpp)
target_link_libraries(save Velt::VeltPalette Velt::VeltEmbeddedHost)
add_library(plugin MODULE Material.cpp)
target_link_libraries(plugin Velt::VeltEmbeddedHost)
"""


REFERENCE = re.compile(r"`([\w.-]+(?:/[\w.-]+)+/?|[\w.-]+\.md)`|\]\(([^)#:]+)\)")


def dead_references(prefix, tree):
    """What the installed guides name and is not installed. A paragraph that speaks of the tree, or of the sources, may name
    files that are there, and folders that a reader makes. (README and CHANGELOG are those of the tree as a whole.)"""
    documents = prefix / "share" / "doc" / "veltpropdata"
    found = []
    for page in [documents / "host" / "README.md", *sorted((documents / "docs").glob("*.md"))]:
        for paragraph in house.text_of(page).split("\n\n"):
            for match in REFERENCE.finditer(paragraph):
                name = (match.group(1) or match.group(2)).rstrip("/")
                is_installed = any((place / name).exists()
                                   for place in (page.parent, documents, prefix, prefix / "include" / "velt"))
                top = name.split("/")[0]
                is_a_file_of_ours = match.group(2) or "/" not in name or (tree / top).is_dir() and top != "build"
                is_there = (tree / name).exists() or not pathlib.Path(name).suffix
                of_the_tree = re.search(r"\b(tree|sources)\b", paragraph) and is_there
                if not is_installed and is_a_file_of_ours and not of_the_tree:
                    found.append(f"{page.relative_to(documents)}: {name}")
    return found


def run(*command, **settings):
    result = subprocess.run(list(map(str, command)), capture_output=True, text=True, check=False, **settings)
    if result.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}\n{result.stdout}{result.stderr}")
    return result.stdout


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "an instrumented library is not for installing")
@unittest.skipUnless((house.source_root() / "propdata" / "VeltPropData.h").is_file(), "no public header yet")
class AnInstallation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        cls.prefix = cls.root / "prefix"
        run("cmake", "--install", house.build_root(), "--prefix", cls.prefix)
        (cls.root / "consumer.cpp").write_text(PROGRAM, encoding="utf-8")
        # The palette of the examples is one that begins outside of the tree, too.
        for example in ("examples/palette.cpp", "examples/save.cpp", "plugins/material/Material.cpp"):
            shutil.copy(house.source_root() / example, cls.root)
        # The example of a host is taken from where a reader of the installed guide finds it.
        cls.host = cls.root / "my-host"
        shutil.copytree(cls.prefix / "share" / "doc" / "veltpropdata" / "examples" / "minimal-host", cls.host)
        cls.compiler = os.environ.get("VELT_CXX", "g++")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def library_folder(self):
        return next(self.prefix.rglob("libVeltPropData.so")).parent

    def test_serves_a_program_through_pkg_config(self):
        settings = os.environ | {"PKG_CONFIG_PATH": str(self.library_folder() / "pkgconfig")}
        flags = run("pkg-config", "--cflags", "--libs", "veltpropdata", "veltembeddedhost", env=settings).split()
        self.assertTrue(any(str(self.prefix) in flag for flag in flags), flags)
        run(self.compiler, "-std=c++20", self.root / "consumer.cpp", "-o", self.root / "consumer", *flags)
        run(self.root / "consumer", env=os.environ | {"LD_LIBRARY_PATH": str(self.library_folder())})

    def test_serves_a_program_through_the_cmake_package(self):
        (self.root / "CMakeLists.txt").write_text(LISTS, encoding="utf-8")
        run("cmake", "-S", self.root, "-B", self.root / "build", "-G", "Ninja",
            f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DCMAKE_CXX_COMPILER={self.compiler}")
        run("cmake", "--build", self.root / "build")
        run(self.root / "build" / "consumer")
        self.check_palette(self.root / "build" / "palette", os.environ)
        self.check_saving(self.root / "build" / "save", os.environ)
        self.check_plugin(next((self.root / "build").glob("*plugin.so")))

    def check_saving(self, program, settings):
        drawing, saved = self.root / "of-the-saving.dxf", self.root / "saved.dxf"
        tool = self.prefix / "bin" / "veltprops"
        run(tool, "sample", "--force", drawing)
        saved.unlink(missing_ok=True)
        run(program, drawing, "Blue", saved, env=settings)
        # What is on a locked layer keeps its color.
        self.assertRegex(run(tool, "show", saved, "--layer", "Walls"), r"(?m)^  Color +Blue")
        self.assertNotRegex(run(tool, "show", drawing, "--layer", "Walls"), r"(?m)^  Color +Blue")

    def check_plugin(self, plugin):
        drawing, tool = self.root / "of-the-plugin.dxf", self.prefix / "bin" / "veltprops"
        run(tool, "sample", "--force", drawing)
        self.assertRegex(run(tool, "show", drawing, "--layer", "Doors", "--plugin", plugin), r"Material +Concrete")

    def check_palette(self, program, settings):
        tool = self.prefix / "bin" / "veltprops"
        if not tool.is_file():
            self.skipTest("no tool yet")
        drawing = self.root / "of-the-palette.dxf"
        run(tool, "sample", "--force", drawing)
        self.assertRegex(run(program, drawing, env=settings), r"(?m)^  Layer: \*VARIES\*$")

    def check_host(self, program, settings):
        self.assertEqual(MinimalHostTest.SHOWN, run(program, env=settings))

    def test_serves_a_host_of_its_own_through_the_cmake_package(self):
        run("cmake", "-S", self.host, "-B", self.host / "build", "-G", "Ninja",
            f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DCMAKE_CXX_COMPILER={self.compiler}")
        run("cmake", "--build", self.host / "build")
        self.check_host(self.host / "build" / "minimal_host", os.environ)

    def test_serves_a_host_that_got_a_property_and_a_length_as_the_guide_says(self):
        documents = self.prefix / "share" / "doc" / "veltpropdata"
        guide = house.text_of(documents / "docs" / "host.md")
        row, value = re.search(r"```cpp\n(.*?)```", guide, re.DOTALL).group(1).strip().splitlines()
        include, declaration, answer = re.search(r'^```cpp\n(#include "UnitTypes.h"\n.*?)```', guide,
                                                 re.DOTALL | re.MULTILINE).group(1).splitlines()
        changed = shutil.copytree(self.host, self.root / "changed-host", ignore=shutil.ignore_patterns("build"))
        for file, place, added in (("Parts.h", "  std::size_t layer; ", "  double pressure = 10;\n"),
                                   ("Automation.cpp", "constexpr DISPID ", "constexpr DISPID pressureId = 5;\n"),
                                   ("Automation.cpp", "    {lengthId, ", row.strip() + "\n"),
                                   ("Automation.cpp", "  if (property.id == lengthId)", value + "\n"),
                                   ("Automation.cpp", '#include "Parts.h"', include + "\n"),
                                   ("Automation.cpp", "    function.elemdescFunc.tdesc.vt", declaration + "\n"),
                                   ("Automation.cpp", "  HRESULT GetRefTypeInfo(", answer + "\n"),
                                   ("Palette.cpp", "             << L'\\n';", 'std::wcout << L"    kind " << row.customType << L"\\n";\n')):
            text = house.text_of(changed / file)
            self.assertEqual(1, text.count("\n" + place), place)
            before, after = text.split("\n" + place)
            line, rest = after.split("\n", 1)
            line = "" if "GetRefTypeInfo" in place else place + line + "\n"  # a method that the guide writes anew
            (changed / file).write_text(f"{before}\n{line}{added}{rest}", encoding="utf-8")
        shutil.copy(documents / "examples" / "unit-types" / "UnitTypes.h", changed)
        settings = os.environ | {"PKG_CONFIG_PATH": str(self.library_folder() / "pkgconfig")}
        flags = run("pkg-config", "--cflags", "--libs", "veltpropdata", env=settings).split()
        self.assertNotIn("-lVeltEmbeddedHost", flags)
        run(self.compiler, "-std=c++20", "-fPIC", "-c", *changed.glob("*.cpp"), *flags, cwd=changed)
        parts = sorted(changed.glob("*.o"))
        run(self.compiler, *parts, "-o", changed / "changed", *flags)
        shown = run(changed / "changed", env=os.environ | {"LD_LIBRARY_PATH": str(self.library_folder())})
        self.assertIn("  Size: Pressure = 10.0\n", shown)
        self.assertIn("  Size: Nominal diameter = 50.0\n    kind 542\n", shown)
        run(self.compiler, "-shared", *(part for part in parts if part.stem != "Palette"), "-o", changed / "changed.so")
        report = json.loads(run(self.prefix / "bin" / "velt-host-check", "--json", "--host", changed / "changed.so", 1, 2, 3))
        self.assertEqual([], report["findings"])
        self.assertIn("type-name", report["tried"])

    def test_lists_the_symbols_that_a_host_supplies(self):
        listed = house.text_of(self.prefix / "share" / "doc" / "veltpropdata" / "needed-symbols.txt")
        self.assertEqual(house.text_of(house.source_root() / "tests" / "golden" / "needed_symbols.txt"), listed)

    def test_installs_public_headers_and_no_inner_ones(self):
        headers = self.prefix / "include" / "velt"
        inner = {folder: sorted(str(path.relative_to(headers / folder)) for path in (headers / folder).rglob("*.h"))
                 for folder in ("propdata", "palette", "embedded", "hostcheck")}
        self.assertEqual({"propdata": ["VeltPropData.h", "Version.h"],
                          "palette": ["Export.h", "Palette.h"],
                          "embedded": ["database/Changes.h", "database/Drawing.h", "database/Table.h", "platform/Watch.h",
                                       "sources/LoadedPlugins.h",
                                       "sources/Plugin.h", "sources/PluginProperty.h", "sources/PluginReports.h"],
                          "hostcheck": ["HostCheck.h", "HostModule.h"]}, inner)

    def test_refers_to_what_is_there(self):
        self.assertEqual([], dead_references(self.prefix, house.source_root()))

    def test_finds_what_is_not_there(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            documents = root / "share" / "doc" / "veltpropdata"
            (documents / "docs").mkdir(parents=True)
            (documents / "host").mkdir()
            for text, dead in (("see `bench/README.md`", 1), ("`bench/README.md` in the\nsources", 0), ("`quirks.md`", 0),
                               ("`nothing.md`", 1), ("[one](nothing.svg)", 1), ("`docs/nothing.txt` of the tree", 1),
                               ("`share/doc`, `a/b`", 0)):
                for name in ("docs/one.md", "docs/quirks.md", "host/README.md"):
                    (documents / name).write_text(text if name == "docs/one.md" else "", encoding="utf-8")
                with self.subTest(text):
                    self.assertEqual(dead, len(dead_references(root, house.source_root())))

    def test_installs_headers_that_need_no_others(self):
        headers = self.prefix / "include" / "velt"
        everything = "".join(f'#include "{path.relative_to(headers)}"\n' for path in sorted(headers.rglob("*.h")))
        (self.root / "everything.cpp").write_text(everything, encoding="utf-8")
        run(self.compiler, "-std=c++20", "-fsyntax-only", f"-I{headers}", self.root / "everything.cpp")

    def test_holds_sample_plugins(self):
        for name in ("material.so", "serial.so"):
            self.assertTrue((self.library_folder() / "velt" / "plugins" / name).is_file(), name)

    def test_checks_the_embedded_host_without_a_hint_where_its_libraries_are(self):
        clean = {name: value for name, value in os.environ.items() if name != "LD_LIBRARY_PATH"}
        drawing = self.root / "of-the-check.dxf"
        run(self.prefix / "bin" / "veltprops", "sample", "--force", drawing, env=clean)
        shown = run(self.prefix / "bin" / "velt-host-check", "--document", drawing,
                    "--host", self.library_folder() / "velt" / "hosts" / "embedded-host.so", env=clean)
        self.assertRegex(shown, r"(?m)^\d+ checks, 0 findings$")

    def test_holds_manual_pages_and_completions(self):
        share = self.prefix / "share"
        for name in ("veltprops.1", "veltprops-show.1", "veltprops-set.1"):
            self.assertTrue((share / "man" / "man1" / name).is_file(), name)
        for name in ("bash-completion/completions/veltprops", "zsh/site-functions/_veltprops",
                     "fish/vendor_completions.d/veltprops.fish"):
            self.assertTrue((share / name).is_file(), name)

    def test_holds_a_tool_that_finds_its_libraries(self):
        tool = self.prefix / "bin" / "veltprops"
        if not tool.is_file():
            self.skipTest("no tool yet")
        clean = {name: value for name, value in os.environ.items() if name != "LD_LIBRARY_PATH"}
        run(tool, "--help", env=clean)


if __name__ == "__main__":
    unittest.main()
