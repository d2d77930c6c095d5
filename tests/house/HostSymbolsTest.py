"""docs/host-symbols.md tells of each symbol that the layer needs, where it is declared and which operations lead to it.

The page is made here, from the compiled layer: an operation leads to a symbol when a chain of direct calls in its object
files ends there. Calls through interfaces are not seen; they are methods, and the headers of host/ tell of them. Only a
build without optimisation shows all calls, so the page is made and checked from one alone. A mismatch leaves what came
out in the build folder; `make accept-golden` takes it over.
"""

import collections
import os
import pathlib
import re
import unittest

import house
import SymbolsTest

PAGE = "docs/host-symbols.md"
HEAD = """\
# What the layer calls

Every symbol that the layer leaves undefined and the program that loads it supplies, by the header that declares it, with
the exported operations that lead to a call of it. (Made from the compiled layer by a test; `make accept-golden` renews
it.) "All that ..." stands for what most operations do: whatever grows a list, for example.
"""
# Many operations lead to these; a list of them would say less.
COMMON = {
    "_tqFree": "all that take or change lists",
    "_tqMalloc": "all that take or change lists",
    "gpEmptyVectorData": "all that take or make lists",
    "TqErrorStatus::TqErrorStatus": "all that use memory, when there is none left",
    "veltGetCrashRecorder": "all that use memory, when there is none left",
    "typeinfo for _com_error": "all, to catch it",
}
SECTION = re.compile(r"^RELOCATION RECORDS FOR \[(?:\.text\.(?:\w+\.)?(_Z[^]]+)|[^]]*)\]:")
LABEL = re.compile(r"^[0-9a-f]+ <(.+)>:$")
RELOCATION = re.compile(r"R_X86_64_\w+\s+([^\s+-]+)")
LOCAL_CALL = re.compile(r"\b(?:call|jmp)\s+[0-9a-f]+ <([^+>]+)>")


def calls_in(listing, calls):
    """Adds {caller: names that it calls or refers to} of one disassembly with relocations."""
    caller = None
    for line in listing.splitlines():
        label = LABEL.match(line)
        if label:
            caller = label.group(1)
            continue
        for found in (RELOCATION.search(line), LOCAL_CALL.search(line)):
            if found and caller:
                calls[caller].add(found.group(1))
    return calls


def relocations_in(listing, calls):
    """The same, of the relocations of sections that hold one function each, and bear its name."""
    callers = ()
    for line in listing.splitlines():
        section = SECTION.match(line)
        if section:
            name = section.group(1) or ""
            # Both names of a constructor or destructor are at one place.
            callers = {re.sub(r"([CD])[12](?=E)", rf"\g<1>{kind}", name) for kind in "12"} if name else ()
            continue
        found = RELOCATION.search(line)
        for caller in callers if found else ():
            calls[caller].add(found.group(1))
    return calls


def reached(calls, start):
    found, waiting = set(), [start]
    while waiting:
        name = waiting.pop()
        if name not in found:
            found.add(name)
            waiting += calls.get(name, ())
    return found


def plain(symbol):
    """A demangled symbol without its arguments."""
    return symbol.split("(")[0] if not symbol.startswith("typeinfo") else symbol


def calls_of_layer(build):
    calls = collections.defaultdict(set)
    for path in sorted((build / "CMakeFiles" / "velt_propdata_objects.dir").rglob("*.o")):
        # Inline functions have a section each, and call by relocations alone. Those that share a section call each other
        # without one, so that this section is disassembled, and no other: with all of them it takes seconds.
        calls_in(SymbolsTest.run("objdump", "-dr", "--no-show-raw-insn", "-j", ".text", str(path)), calls)
        relocations_in(SymbolsTest.run("objdump", "-r", str(path)), calls)
    return calls


def header_of(root, symbol):
    """The header of host/ that declares a symbol: the class and the member where it is one."""
    parts = plain(symbol).replace("typeinfo for ", "").split("::")
    pattern = re.compile(rf"\b(?:class|struct) {parts[0]}\b[^;]*?\{{" if len(parts) > 1 or symbol.startswith("typeinfo")
                         else rf"^[^/\n]*\b{parts[0]}\b *[(;]", re.MULTILINE)
    found = [path.as_posix() for path in house.files_below(root, ("host",), (".h",))
             if pattern.search(house.without_comments(house.text_of(root / path)))]
    return found[0] if found else None


def page_of(root, build):
    needed = SymbolsTest.lines_of(root / "tests" / SymbolsTest.NEEDED)
    calls = calls_of_layer(build)
    exported = SymbolsTest.exported(build / "lib" / "libVeltPropData.so")
    leads = collections.defaultdict(set)
    names = sorted(set(calls) | set().union(*calls.values()))
    readable = dict(zip(names, SymbolsTest.run_with("\n".join(names), "c++filt").splitlines()))
    for operation in sorted(exported & set(calls)):
        for name in reached(calls, operation):
            leads[readable.get(name, name)].add(plain(readable[operation]))
    by_header = collections.defaultdict(list)
    for symbol in needed:
        by_header[header_of(root, symbol)].append(symbol)
    lines = [HEAD]
    for header in sorted(by_header, key=str):
        lines += [f"## {header}", "", "| symbol | operations that lead to it |", "|---|---|"]
        for symbol in by_header[header]:
            operations = COMMON.get(plain(symbol)) or ", ".join(f"`{name}`" for name in sorted(leads[symbol], key=str.lower))
            lines.append(f"| `{symbol}` | {operations} |")
        lines.append("")
    return "\n".join(lines).rstrip("\n") + "\n"


def is_unoptimised(build):
    return "CMAKE_BUILD_TYPE:STRING=Debug" in house.text_of(build / "CMakeCache.txt")


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "instrumentation adds calls of its own")
class ThePage(house.Check):
    def setUp(self):
        if not is_unoptimised(house.build_root()):
            self.skipTest("an optimised build does not show all calls")
        if "clang" in os.environ.get("VELT_CXX", ""):
            self.skipTest("the page is made from what g++ compiles")

    def test_is_what_the_compiled_layer_says(self):
        page = page_of(house.source_root(), house.build_root())
        out = pathlib.Path(os.environ.get("VELT_GOLDEN_OUT", house.build_root() / "golden")) / PAGE
        golden = house.source_root() / PAGE
        if golden.is_file() and house.text_of(golden) == page:
            out.unlink(missing_ok=True)
            return
        out.parent.mkdir(parents=True, exist_ok=True)
        out.write_text(page, encoding="utf-8")
        self.fail(f"{PAGE} is not what came out: look at it with make accept-golden")


class ThePageOfTheTree(house.Check):
    def test_places_every_needed_symbol_in_a_header(self):
        root = house.source_root()
        needed = SymbolsTest.lines_of(root / "tests" / SymbolsTest.NEEDED)
        self.assert_nothing([symbol for symbol in needed if header_of(root, symbol) is None])

    def test_lists_every_needed_symbol_with_an_operation(self):
        rows = dict(re.findall(r"^\| `(.*)` \| (.*) \|$", house.text_of(house.source_root() / PAGE), re.MULTILINE))
        needed = SymbolsTest.lines_of(house.source_root() / "tests" / SymbolsTest.NEEDED)
        self.assertEqual(sorted(needed), sorted(rows))
        self.assert_nothing([symbol for symbol, operations in rows.items() if not operations.strip()])


class TheCheck(house.Check):
    def test_follows_chains_of_calls(self):
        listing = "0 <f>:\n  call 9 <g>\n0 <g>:\n  R_X86_64_PLT32\th-0x4\n0 <k>:\n"
        calls = calls_in(listing, collections.defaultdict(set))
        self.assertEqual({"f", "g", "h"}, reached(calls, "f"))
        self.assertEqual({"k"}, reached(calls, "k"))

    def test_follows_calls_of_functions_in_sections_of_their_own(self):
        listing = ("RELOCATION RECORDS FOR [.text._ZN1AC2Ev]:\nOFFSET TYPE VALUE\n04 R_X86_64_PLT32 g-0x4\n\n"
                   "RELOCATION RECORDS FOR [.rodata]:\n04 R_X86_64_64 h\n")
        calls = relocations_in(listing, collections.defaultdict(set))
        self.assertEqual({"_ZN1AC1Ev": {"g"}, "_ZN1AC2Ev": {"g"}}, calls)

    def test_ends_where_calls_go_in_circles(self):
        self.assertEqual({"f", "g"}, reached({"f": {"g"}, "g": {"f"}}, "f"))


if __name__ == "__main__":
    unittest.main()
