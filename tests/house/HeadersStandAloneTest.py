"""Whoever includes one public header gets all that it needs.

The build compiles one unit per header, holding nothing but its include; this checks that no header is without one.
"""

import os
import subprocess
import unittest

import house


HOST_CHECK = ("HostCheck.h", "HostModule.h")


def public_headers(root):
    headers = house.files_below(root, ("host", "holders"), (".h",))
    headers += [path for path in house.files_below(root, ("propdata",), (".h",)) if path.name == "VeltPropData.h"]
    headers += [path for path in house.files_below(root, ("palette",), (".h",)) if len(path.parts) == 2]
    headers += [path for path in house.files_below(root, ("hostcheck",), (".h",)) if path.name in HOST_CHECK]
    headers += [path for path in house.files_below(root, ("embedded",), (".h",)) if path.name in ("Plugin.h", "PluginProperty.h")]
    return headers


def without_unit(root, build):
    """The headers that no compiled unit stands for: the object is looked for, not the unit, since a unit proves
    nothing until it was compiled."""
    objects = build / "CMakeFiles" / "velt_header_checks.dir" / "generated" / "headers"
    return [str(path) for path in public_headers(root) if not (objects / f"{path}.cpp.o").is_file()]


def compiles(root, header):
    compiler = os.environ.get("VELT_CXX", "g++")
    return subprocess.run([compiler, "-std=c++20", "-fsyntax-only", f"-I{root}", "-x", "c++", "-"],
                          input=f'#include "{header}"\n', text=True, capture_output=True, check=False).returncode == 0


class TheTree(house.Check):
    @unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
    def test_compiles_every_public_header_on_its_own(self):
        found = without_unit(house.source_root(), house.build_root())
        self.assert_nothing(found)


class TheCheck(house.Check):
    def test_finds_a_header_without_a_compiled_unit(self):
        objects = "CMakeFiles/velt_header_checks.dir/generated/headers"
        with house.small_tree({"host/com/A.h": "", "host/B.h": "", "holders/C.h": "", "propdata/VeltPropData.h": "",
                               "palette/D.h": "", "palette/rows/Inner.h": "", "embedded/sources/Plugin.h": ""}) as root, \
             house.small_tree({f"{objects}/host/com/A.h.cpp.o": ""}) as build:
            self.assertEqual(["holders/C.h", "host/B.h", "propdata/VeltPropData.h", "palette/D.h",
                              "embedded/sources/Plugin.h"], without_unit(root, build))

    def test_rests_on_a_compiler_that_refuses_a_header_that_leans_on_others(self):
        with house.small_tree({"host/Leaning.h": "std::string f();\n", "host/Own.h": "#include <string>\nstd::string f();\n"}) as root:
            self.assertFalse(compiles(root, "host/Leaning.h"))
            self.assertTrue(compiles(root, "host/Own.h"))


if __name__ == "__main__":
    unittest.main()
