"""VELT_HOST_INCLUDE builds the layer against a host's own headers: shown by those of examples/own-headers.

A host over them is the minimal host with its own color and its own heap, under the names that they have there.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import house
import MinimalHostTest

ADAPTER = "examples/own-headers/adapter"
# What stands in the minimal host, and what a host with these headers has in its place.
SPELLINGS = (
    ("Database.cpp", "VkCmColor::VkCmColor() :", "drawing::Color::Color() :"),
    ("Database.cpp", "VkCmColor::~VkCmColor()", "drawing::Color::Color(const Color& other) = default;\ndrawing::Color::~Color()"),
    ("Database.cpp", "VkCmColor& VkCmColor::operator=(const VkCmColor& other)", "drawing::Color& drawing::Color::operator=(const Color& other)"),
    ("Database.cpp", "bool VkCmColor::operator!=(const VkCmColor& other)", "bool drawing::Color::operator!=(const Color& other)"),
    ("Database.cpp", "bool VkCmColor::isByLayer()", "bool drawing::Color::isByLayer()"),
    ("Database.cpp", "void VkCmColor::setColor(", "void drawing::Color::setColor("),
    ("Database.cpp", "void VkCmColor::setNames(", "void drawing::Color::setNames("),
    ("Platform.cpp", "void* _tqMalloc(", "void* drawing_allocate("),
    ("Platform.cpp", "void _tqFree(", "void drawing_free("),
)


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class TheLayer(unittest.TestCase):
    def configure(self, folder, headers):
        return subprocess.run(["cmake", "-G", "Ninja", "-S", house.source_root(), "-B", folder, f"-DVELT_HOST_INCLUDE={headers}",
                               "-DVELT_TESTS=OFF", "-DVELT_BENCH=OFF", "-DVELT_DESKTOP=OFF", "-DVELT_PCH=OFF", "-DVELT_UNITY=ON",
                               "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG="],
                              capture_output=True, text=True, check=False)

    def run_well(self, *command, **settings):
        done = subprocess.run(list(map(str, command)), text=True, check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              **settings)
        self.assertEqual(0, done.returncode, done.stdout)
        return done.stdout

    def test_calls_what_the_headers_of_a_host_declare_and_runs_in_that_host(self):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            configured = self.configure(folder, house.source_root() / ADAPTER)
            self.assertEqual(0, configured.returncode, configured.stderr)
            self.run_well("ninja", "-C", folder, "VeltPropData")
            library = folder / "lib" / "libVeltPropData.so"
            needed = self.run_well("nm", "--dynamic", "--undefined-only", "--demangle", library)
            for symbol in ("drawing::Color::isByLayer() const", "drawing::Color::operator=(drawing::Color const&)",
                           "drawing_free", "drawing_allocate", "VkDbEntity::layerId() const"):
                self.assertIn(symbol, needed)
            for symbol in ("VkCmColor", "_tqFree", "_tqMalloc"):
                self.assertNotIn(f" {symbol}", needed)

            host = shutil.copytree(house.source_root() / "examples" / "minimal-host", folder / "host")
            for file, was, becomes in SPELLINGS:
                text = house.text_of(host / file)
                self.assertEqual(1, text.count(was), was)
                (host / file).write_text(text.replace(was, becomes), encoding="utf-8")
            self.run_well(os.environ.get("VELT_CXX", "c++"), "-std=c++20", f"-I{house.source_root() / ADAPTER}",
                          f"-I{house.source_root()}", *host.glob("*.cpp"), f"-L{library.parent}", "-lVeltPropData", "-o", "host",
                          cwd=host)
            shown = self.run_well(host / "host", env=os.environ | {"LD_LIBRARY_PATH": str(library.parent)})
            self.assertEqual(MinimalHostTest.SHOWN, shown)

    def test_is_not_built_against_a_folder_without_headers(self):
        with tempfile.TemporaryDirectory() as folder:
            configured = self.configure(folder, house.source_root() / "docs")
            self.assertNotEqual(0, configured.returncode)
            # CMake breaks a message into lines where the path in it happens to reach its margin.
            self.assertIn("has no folder host/ with headers in it", " ".join(configured.stderr.split()))


if __name__ == "__main__":
    unittest.main()
