"""Who may include whom. The arrows point one way, so that the layer can be shipped without anything of the rest."""

import re
import unittest

import house

BELOW_PROPDATA = {"host", "text", "errors", "container", "propdata"}
EVERYTHING_SHIPPED = BELOW_PROPDATA | {"embedded"}

MAY_INCLUDE = {
    "host": {"host"},
    "text": {"host", "text"},
    "errors": {"host", "text", "errors"},
    "container": {"host", "text", "errors", "container"},
    "propdata": BELOW_PROPDATA,
    "embedded": {"host", "embedded"},
    "plugins": {"host", "embedded", "plugins"},
    "tool": EVERYTHING_SHIPPED | {"tool"},
    "tests": EVERYTHING_SHIPPED | {"tool", "tests"},
    "bench": EVERYTHING_SHIPPED | {"bench"},
    "fuzz": EVERYTHING_SHIPPED | {"fuzz"},
    "examples": EVERYTHING_SHIPPED | {"examples"},
}

# All that plug-ins may include of the host that they are loaded into.
PLUGIN_HEADER = "embedded/sources/Plugin.h"

# First component of an include in angle brackets, and the folders that may use it.
THIRD_PARTY = {
    "CLI": {"tool", "tests"},
    "nlohmann": {"tool", "tests", "bench"},
    "fmt": {"tool", "tests", "bench"},
    "gtest": {"tests"},
    "gmock": {"tests"},
    "rapidcheck": {"tests"},
    "rapidcheck.h": {"tests"},
    "benchmark": {"bench"},
}

# The layer and the interfaces under it are ported to other hosts: they get the headers of standard C++ and no other.
STANDARD_ONLY = {"host", *house.LAYER}
STANDARD_HEADERS = set("""
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
    clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
    semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view
    strstream syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility
    valarray variant vector version
""".split())

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?:"([^"]*)"|<([^>]*)>|(\S+))', re.MULTILINE)


def violation_of(root, path, quoted, angled, other):
    folder = path.parts[0]
    if quoted is not None:
        target = quoted.split("/")[0]
        if target not in MAY_INCLUDE or ".." in quoted.split("/"):
            return f'"{quoted}" is not written from the root of the tree'
        if target not in MAY_INCLUDE[folder]:
            return f'"{quoted}": {folder}/ may not include {target}/'
        if folder == "plugins" and target == "embedded" and quoted != PLUGIN_HEADER:
            return f'"{quoted}": plug-ins may include no header of embedded/ but {PLUGIN_HEADER}'
        if not (root / quoted).is_file():
            return f'"{quoted}" does not exist'
        return None
    if angled is not None:
        if folder in STANDARD_ONLY:
            return None if angled in STANDARD_HEADERS else f"<{angled}> is no header of standard C++"
        users = THIRD_PARTY.get(angled.split("/")[0])
        if users is not None and folder not in users:
            return f"<{angled}>: {folder}/ may not use this library"
        return None
    return f"{other}: an include that hides its target behind a macro cannot be checked"


def violations(root):
    found = []
    for path in house.files_below(root, MAY_INCLUDE):
        for match in INCLUDE.finditer(house.text_of(root / path)):
            trouble = violation_of(root, path, *match.groups())
            if trouble:
                line = match.string.count("\n", 0, match.start(0)) + 1
                found.append(f"{path}:{line}: {trouble}")
    return found


class TheTree(house.Check):
    def test_keeps_the_arrows(self):
        found = violations(house.source_root())
        self.assert_nothing(found)


class TheCheck(house.Check):
    HEADERS = {f"{folder}/A.h": "" for folder in MAY_INCLUDE}

    def check(self, path, line):
        with house.small_tree({**self.HEADERS, path: line + "\n"}) as root:
            return violations(root)

    def test_knows_every_arrow(self):
        allowed = {
            "host": "host",
            "text": "host text",
            "errors": "host text errors",
            "container": "host text errors container",
            "propdata": "host text errors container propdata",
            "embedded": "host embedded",
            "plugins": "host plugins",
            "tool": "host text errors container propdata embedded tool",
            "tests": "host text errors container propdata embedded tool tests",
            "bench": "host text errors container propdata embedded bench",
            "fuzz": "host text errors container propdata embedded fuzz",
            "examples": "host text errors container propdata embedded examples",
        }
        for folder, targets in allowed.items():
            for target in allowed:
                with self.subTest(folder=folder, target=target):
                    found = self.check(f"{folder}/sub/B.cpp", f'#include "{target}/A.h"')
                    self.assertEqual(target not in targets.split(), bool(found), found)

    def test_lets_plugins_include_their_header_of_the_embedded_host_and_no_other(self):
        with house.small_tree({**self.HEADERS, "embedded/sources/Plugin.h": "",
                               "plugins/a/B.cpp": '#include "embedded/sources/Plugin.h"\n',
                               "plugins/a/C.cpp": '#include "embedded/A.h"\n'}) as root:
            found = violations(root)
        self.assertEqual(1, len(found), found)
        self.assertIn("plugins/a/C.cpp", found[0])

    def test_finds_what_is_not_written_from_the_root(self):
        self.assertTrue(self.check("propdata/B.cpp", '#include "A.h"'))
        self.assertTrue(self.check("propdata/B.cpp", '#include "propdata/../embedded/A.h"'))

    def test_finds_a_header_that_does_not_exist(self):
        self.assertTrue(self.check("propdata/B.cpp", '#include "propdata/Missing.h"'))

    def test_finds_third_party_and_platform_headers_in_the_layer(self):
        for folder in STANDARD_ONLY:
            for header in ("fmt/format.h", "nlohmann/json.hpp", "unistd.h", "boost/any.hpp"):
                with self.subTest(folder=folder, header=header):
                    self.assertTrue(self.check(f"{folder}/B.h", f"#include <{header}>"))
            self.assertFalse(self.check(f"{folder}/B.h", "#include <vector>"))

    def test_finds_libraries_outside_the_folders_they_are_for(self):
        self.assertTrue(self.check("embedded/B.cpp", "#include <nlohmann/json.hpp>"))
        self.assertTrue(self.check("tool/B.cpp", "#include <gtest/gtest.h>"))
        self.assertFalse(self.check("tool/B.cpp", "#include <fmt/format.h>"))
        self.assertFalse(self.check("embedded/B.cpp", "#include <dlfcn.h>"))

    def test_finds_an_include_behind_a_macro_and_in_a_spaced_directive(self):
        self.assertTrue(self.check("text/B.h", "#include HEADER"))
        self.assertTrue(self.check("text/B.h", '  #  include "embedded/A.h"'))


if __name__ == "__main__":
    unittest.main()
