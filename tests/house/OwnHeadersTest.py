"""VELT_HOST_INCLUDE builds the layer against a host's own headers: shown by those of examples/own-headers."""

import pathlib
import subprocess
import tempfile
import unittest

import house

ADAPTER = "examples/own-headers/adapter"
# One that compares colors, and one that keeps lists in the host's heap.
UNITS = ("propdata/merge/ByLayerColors.cpp", "propdata/selection/PropertyListCache.cpp")


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class TheLayer(unittest.TestCase):
    def configure(self, folder, headers):
        return subprocess.run(["cmake", "-G", "Ninja", "-S", house.source_root(), "-B", folder, f"-DVELT_HOST_INCLUDE={headers}",
                               "-DVELT_TESTS=OFF", "-DVELT_BENCH=OFF", "-DVELT_PCH=OFF", "-DVELT_UNITY=OFF",
                               "-DCMAKE_BUILD_TYPE=Debug"],
                              capture_output=True, text=True, check=False)

    def test_calls_what_the_headers_of_a_host_declare(self):
        with tempfile.TemporaryDirectory() as folder:
            configured = self.configure(folder, house.source_root() / ADAPTER)
            self.assertEqual(0, configured.returncode, configured.stderr)
            units = [f"CMakeFiles/velt_propdata_objects.dir/{unit}.o" for unit in UNITS]
            built = subprocess.run(["ninja", "-C", folder, *units], capture_output=True, text=True, check=False)
            self.assertEqual(0, built.returncode, built.stdout)
            needed = subprocess.run(["nm", "--undefined-only", "--demangle", *(pathlib.Path(folder, unit) for unit in units)], capture_output=True,
                                    text=True, check=True).stdout
            for name in ("drawing::Color::isByLayer() const", "drawing::Color::operator=(drawing::Color const&)",
                         "drawing_free", "VkDbEntity::layerId() const"):
                self.assertIn(name, needed)
            for name in ("VkCmColor", "_tqFree", "_tqMalloc"):
                self.assertNotIn(f" {name}", needed)

    def test_is_not_built_against_a_folder_without_headers(self):
        with tempfile.TemporaryDirectory() as folder:
            configured = self.configure(folder, house.source_root() / "docs")
            self.assertNotEqual(0, configured.returncode)
            # CMake breaks a message into lines where the path in it happens to reach its margin.
            self.assertIn("has no folder host/ with headers in it", " ".join(configured.stderr.split()))


if __name__ == "__main__":
    unittest.main()
