"""Who may include whom. The arrows point one way, so that the layer can be shipped without anything of the rest."""

import re
import unittest

import house

# The houses, and of those that have an order inside, the rooms. An entry names what a place may include beside itself;
# a name stands for all rooms of its house, and a file may be named too. The longest name that a path begins with is its
# place.
LAYER = {"host", "holders", "text", "errors", "container", "propdata"}
BELOW_AUTOMATION = {"host", "holders", "dxf", "embedded/platform", "embedded/com", "embedded/database"}
SHAPES = BELOW_AUTOMATION | {"embedded/automation/geometry", "embedded/automation/boundaries"}
MODEL = SHAPES | {"embedded/automation/model"}
# What several classes share; these rooms stand side by side.
MATTERS = MODEL | {"embedded/automation/objects"}
# The rooms of the palette library see its public header, which sees none of them.
IN_PALETTE = LAYER | {"palette/Palette.h", "palette/support"}
SHIPPED = LAYER | {"palette", "dxf", "samples", "embedded", "hostcheck"}
# What drawings look like follows from their records, and from the shapes that the automation object model knows.
IN_VIEW = SHAPES

MAY_INCLUDE = {
    "host": set(),
    "holders": {"host"},
    "text": {"host"},
    "errors": {"host", "text"},
    "container": {"host", "text", "errors"},
    "propdata": LAYER,
    "palette/Export.h": set(),
    "palette/Palette.h": LAYER | {"palette/Export.h"},
    "palette/support": LAYER | {"palette/Palette.h"},
    "palette/text": IN_PALETTE,
    "palette/values": IN_PALETTE | {"palette/text"},
    "palette/rows": IN_PALETTE | {"palette/text", "palette/values"},
    "palette/selection": IN_PALETTE | {"palette/text", "palette/values", "palette/rows"},
    "palette/writing": IN_PALETTE | {"palette/text", "palette/values", "palette/rows", "palette/selection"},
    "palette/explanation": IN_PALETTE | {"palette/text", "palette/values", "palette/rows", "palette/selection"},
    # Loaded into any host, as the layer is; the program and the embedded host as its prey come from outside.
    "hostcheck": {"host", "holders"},
    "hostcheck/program": {"hostcheck/CheckList.h", "hostcheck/HostCheck.h", "hostcheck/HostModule.h"},
    "hostcheck/modules": {"hostcheck/HostModule.h", "host", "dxf", "embedded"},
    # Stands between the layer and any host; a replay is a host made of a recording, over the embedded one's COM runtime,
    # whose functions it finds by their names.
    "recorder": LAYER,
    "recorder/library": LAYER | {"recorder"},
    "recorder/replay": LAYER | {"recorder"},
    "hostcheck/CheckList.h": set(),
    "hostcheck/HostCheck.h": set(),
    "hostcheck/HostModule.h": set(),
    "dxf": set(),
    "samples": {"dxf"},
    "samples/builder": {"dxf"},
    "samples/gallery": {"dxf", "samples/builder"},
    "embedded/platform": {"host"},
    "embedded/com": {"host", "holders", "embedded/platform"},
    "embedded/database": {"host", "holders", "dxf", "embedded/platform", "embedded/com"},
    "embedded/automation/geometry": BELOW_AUTOMATION,
    "embedded/automation/boundaries": BELOW_AUTOMATION | {"embedded/automation/geometry"},
    "embedded/automation/model": MODEL,
    "embedded/automation/objects": MODEL,
    "embedded/automation/areas": MATTERS,
    "embedded/automation/dimensions": MATTERS,
    "embedded/automation/entities": MATTERS,
    "embedded/automation/hatches": MATTERS,
    "embedded/automation/images": MATTERS,
    "embedded/automation/leaders": MATTERS,
    "embedded/automation/lines": MATTERS,
    "embedded/automation/polylines": MATTERS,
    "embedded/automation/solids": MATTERS,
    "embedded/automation/texts": MATTERS,
    "embedded/automation/classes": BELOW_AUTOMATION | {"embedded/automation"},
    "embedded/sources": BELOW_AUTOMATION | {"embedded/automation"},
    "plugins": {"host", "embedded/sources"},
    "view": IN_VIEW,
    "tool": SHIPPED | {"view"},
    "desktop": SHIPPED | {"view", "tool"},
    "desktop/session": SHIPPED | {"view", "tool"},
    "tests": SHIPPED | {"view", "tool", "desktop", "bench"},
    "bench": SHIPPED | {"view"},
    "bench/desktop": SHIPPED | {"view", "tool", "desktop", "bench"},
    "fuzz": SHIPPED | {"view", "tool", "desktop", "bench", "tests"},
    "examples": SHIPPED,
    # A host of its own shows that the layer needs nothing of the embedded one.
    "examples/minimal-host": LAYER,
}
FOLDERS = sorted({place.split("/")[0] for place in MAY_INCLUDE})


def place_of(path):
    """The entry that rules a file: the longest of which the path begins with; None for a room that nobody listed."""
    fits = [place for place in MAY_INCLUDE if path == place or path.startswith(place + "/")]
    return max(fits, key=len, default=None)


def may_include(place, target):
    return any(target == allowed or target.startswith(allowed + "/") for allowed in {place} | MAY_INCLUDE[place])


# All that plug-ins may include of the host that they are loaded into.
PLUGIN_HEADERS = ("embedded/sources/Plugin.h", "embedded/sources/PluginProperty.h")

# First component of an include in angle brackets, and the folders that may use it.
THIRD_PARTY = {
    "CLI": {"tool", "desktop", "hostcheck", "recorder", "tests"},
    "nlohmann": {"tool", "hostcheck", "recorder", "tests", "bench"},
    "tao": {"tool"},
    "utf8proc.h": {"tool"},
    "fmt": {"palette", "tool", "desktop", "tests", "bench"},
    "gtest": {"tests", "fuzz"},
    "gmock": {"tests"},
    "rapidcheck": {"tests"},
    "rapidcheck.h": {"tests"},
    "benchmark": {"bench"},
    "mimalloc.h": {"embedded"},
    "boost": {"view", "embedded"},  # embedded on libc++ alone, for a function that this lacks
}

# The layer and the interfaces under it are ported to other hosts: they get the headers of standard C++ and no other.
STANDARD_ONLY = {"host", "holders", *house.LAYER}
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
    place = place_of(path.as_posix())
    if place is None:
        return "stands in a room that the list of arrows does not know"
    if quoted is not None:
        if folder == "examples" and len(path.parts) > 2 and "/" not in quoted and (root / path.parent / quoted).is_file():
            return None  # a folder of examples is copied as a whole, so its files name each other as they stand
        if quoted.split("/")[0] not in FOLDERS or ".." in quoted.split("/"):
            return f'"{quoted}" is not written from the root of the tree'
        target = place_of(quoted)
        if target is None or not may_include(place, target):
            return f'"{quoted}": {place}/ may not include {target or quoted}'
        if folder == "plugins" and target.startswith("embedded") and quoted not in PLUGIN_HEADERS:
            return f'"{quoted}": plug-ins may include no header of embedded/ but ' + " and ".join(PLUGIN_HEADERS)
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
    for path in house.files_below(root, FOLDERS):
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
    HEADERS = {place if place.endswith(".h") else f"{place}/A.h": "" for place in MAY_INCLUDE}

    def check(self, path, line):
        included = {header: "" for header in self.HEADERS if f'"{header}"' in line}
        with house.small_tree({**included, path: line + "\n"}) as root:
            return violations(root)

    def test_knows_every_arrow_between_folders(self):
        layer = "host holders text errors container"
        shipped = layer + " propdata palette dxf samples embedded"
        allowed = {
            "host": "host",
            "holders": "host holders",
            "text": "host text",
            "errors": "host text errors",
            "container": "host text errors container",
            "propdata": layer + " propdata",
            "palette": layer + " propdata palette",
            "dxf": "dxf",
            "samples": "dxf samples",
            "plugins": "host plugins",
            "view": "host holders dxf view",
            "tool": shipped + " view tool",
            "tests": shipped + " view tool bench tests",
            "bench": shipped + " view bench",
            "fuzz": shipped + " view tool bench tests fuzz",
            "examples": shipped + " examples",
        }
        one_room = {"palette": "palette/rows", "embedded": "embedded/automation/model"}
        for folder, targets in allowed.items():
            for target in (*allowed, "embedded"):
                with self.subTest(folder=folder, target=target):
                    found = self.check(f"{one_room.get(folder, folder)}/sub/B.cpp",
                                       f'#include "{one_room.get(target, target)}/A.h"')
                    self.assertEqual(target not in targets.split(), bool(found), found)

    def check_stack(self, house_name, stack):
        for above, room in enumerate(stack):
            for below, other in enumerate(stack):
                with self.subTest(room=room, other=other):
                    found = self.check(f"{house_name}/{room}/B.cpp", f'#include "{house_name}/{other}/A.h"')
                    self.assertEqual(below > above, bool(found), found)

    def test_knows_the_stack_inside_the_palette_library(self):
        self.check_stack("palette", ["support", "text", "values", "rows", "selection", "writing"])

    def test_lets_the_rooms_of_the_palette_library_see_its_public_header_which_sees_none_of_them(self):
        self.assertFalse(self.check("palette/rows/B.cpp", '#include "palette/Palette.h"'))
        self.assertTrue(self.check("palette/Palette.h", '#include "palette/rows/A.h"'))

    def test_knows_the_stack_inside_the_embedded_host(self):
        stack = ["platform", "com", "database", "automation/geometry", "automation/boundaries",
                 "automation/model", "automation/objects", "automation/hatches", "automation/classes", "sources"]
        self.check_stack("embedded", stack)

    def test_keeps_the_rooms_of_single_matters_apart(self):
        self.assertTrue(self.check("embedded/automation/hatches/B.cpp", '#include "embedded/automation/texts/A.h"'))

    def test_finds_a_file_in_a_room_that_nobody_listed(self):
        self.assertTrue(self.check("embedded/attic/B.cpp", "#include <vector>"))

    def test_lets_plugins_include_their_header_of_the_embedded_host_and_no_other(self):
        with house.small_tree({**self.HEADERS, "embedded/sources/Plugin.h": "",
                               "plugins/a/B.cpp": '#include "embedded/sources/Plugin.h"\n',
                               "plugins/a/C.cpp": '#include "embedded/com/A.h"\n'}) as root:
            found = violations(root)
        self.assertEqual(1, len(found), found)
        self.assertIn("plugins/a/C.cpp", found[0])

    def test_finds_what_is_not_written_from_the_root(self):
        self.assertTrue(self.check("propdata/B.cpp", '#include "A.h"'))
        self.assertTrue(self.check("propdata/B.cpp", '#include "propdata/../embedded/com/A.h"'))

    def test_lets_a_folder_of_examples_name_its_own_files_as_they_stand_and_nobody_else(self):
        for folder, found in (("examples/minimal-host", 0), ("examples", 1), ("tool", 1), ("host/com", 1)):
            with self.subTest(folder=folder):
                files = {f"{folder}/A.cpp": '#include "A.h"\n', f"{folder}/A.h": ""}
                with house.small_tree(files) as root:
                    self.assertEqual(found, len(violations(root)))
        self.assertTrue(self.check("examples/minimal-host/A.cpp", '#include "A.h"'))

    def test_keeps_the_minimal_host_away_from_the_embedded_one(self):
        for target in ("embedded/com", "dxf", "palette/Palette.h"):
            header = target if target.endswith(".h") else f"{target}/A.h"
            self.assertTrue(self.check("examples/minimal-host/A.cpp", f'#include "{header}"'))
        self.assertFalse(self.check("examples/minimal-host/A.cpp", '#include "propdata/A.h"'))

    def test_finds_a_header_that_does_not_exist(self):
        self.assertTrue(self.check("propdata/B.cpp", '#include "propdata/Missing.h"'))

    def test_finds_third_party_and_platform_headers_in_the_layer(self):
        for folder in STANDARD_ONLY:
            for header in ("fmt/format.h", "nlohmann/json.hpp", "unistd.h", "boost/any.hpp"):
                with self.subTest(folder=folder, header=header):
                    self.assertTrue(self.check(f"{folder}/B.h", f"#include <{header}>"))
            self.assertFalse(self.check(f"{folder}/B.h", "#include <vector>"))

    def test_finds_libraries_outside_the_folders_they_are_for(self):
        self.assertTrue(self.check("embedded/com/B.cpp", "#include <nlohmann/json.hpp>"))
        self.assertTrue(self.check("tool/B.cpp", "#include <gtest/gtest.h>"))
        self.assertFalse(self.check("tool/B.cpp", "#include <fmt/format.h>"))
        self.assertFalse(self.check("embedded/com/B.cpp", "#include <dlfcn.h>"))

    def test_finds_an_include_behind_a_macro_and_in_a_spaced_directive(self):
        self.assertTrue(self.check("text/B.h", "#include HEADER"))
        self.assertTrue(self.check("text/B.h", '  #  include "embedded/A.h"'))


if __name__ == "__main__":
    unittest.main()
