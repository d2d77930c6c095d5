"""What the layer gives and what it takes, as the dynamic linker sees it.

tests/golden/exported_symbols.txt lists every symbol that libVeltPropData.so exports: its contract with palettes.
tests/golden/needed_symbols.txt lists every symbol that it expects from the host that loads it: whoever ports the layer
to another host reads this list. Both are demangled and sorted. A mismatch leaves what came out in the build folder;
`make accept-golden` shows the difference and takes it over when told to.
"""

import os
import pathlib
import re
import shutil
import subprocess
import unittest

import house

EXPORTED = "golden/exported_symbols.txt"
NEEDED = "golden/needed_symbols.txt"
MARKER = "VELT_PROPDATA_EXPORT"

# Libraries that every process here has anyway. What they define is nothing that a host would have to supply.
STANDARD_LIBRARIES = re.compile(r"^(libc|libm|libstdc\+\+|libgcc_s|ld-linux.*|libpthread)\.so")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def run_with(text, *command):
    return subprocess.run(command, input=text, check=True, capture_output=True, text=True).stdout


def symbols(library, *which):
    """{mangled name: kind letter} of the dynamic symbols of a library."""
    found = {}
    for line in run("nm", "-D", "--without-symbol-versions", *which, str(library)).splitlines():
        fields = line.split()
        found[fields[-1]] = fields[-2]
    return found


def demangled(names):
    names = sorted(names)
    if not names:
        return []
    # Constructors have several mangled names and one demangled.
    return sorted(set(run_with("\n".join(names) + "\n", "c++filt").splitlines()))


def exported(layer):
    # Kind A: the name of the version itself.
    return {name for name, kind in symbols(layer, "--defined-only").items() if kind != "A"}


def undefined(layer):
    # Weak undefined symbols are the tool chain's own hooks; nobody has to supply them.
    return {name for name, kind in symbols(layer, "--undefined-only").items() if kind == "U"}


def standard_symbols(layer):
    names = set()
    for line in run("ldd", str(layer)).splitlines():
        path = re.search(r"(/\S+)", line)
        if path and STANDARD_LIBRARIES.match(os.path.basename(path.group(1))):
            names |= set(symbols(os.path.realpath(path.group(1)), "--defined-only"))
    return names


def foreign_libraries(layer):
    """Libraries that the layer asks for although it may depend on the standard library only."""
    needed = re.findall(r"\(NEEDED\).*\[(.*)\]", run("readelf", "-d", str(layer)))
    return [name for name in needed if not STANDARD_LIBRARIES.match(name)]


def needs(layer, host):
    """What the layer takes from the host, and what it takes from nobody known."""
    open_names = undefined(layer) - standard_symbols(layer)
    offered = set(symbols(host, "--defined-only"))
    return open_names & offered, open_names - offered


def lines_of(path):
    return house.text_of(path).split("\n")[:-1] if path.is_file() else []


def compare(golden, actual, what):
    return ([f"not in the golden list, but {what}: {name}" for name in sorted(set(actual) - set(golden))]
            + [f"in the golden list, but not {what}: {name}" for name in sorted(set(golden) - set(actual))])


def compare_with_golden(name, actual, what):
    """The differences; leaves what came out where scripts/accept-golden looks for it."""
    golden = lines_of(house.source_root() / "tests" / name)
    found = compare(golden, actual, what)
    if not found and golden != actual:
        found = ["the golden list is not sorted, or names something twice"]
    out = pathlib.Path(os.environ.get("VELT_GOLDEN_OUT", house.source_root() / "build" / "golden")) / name
    if found:
        out.parent.mkdir(parents=True, exist_ok=True)
        out.write_text("".join(f"{line}\n" for line in actual), encoding="utf-8")
    else:
        out.unlink(missing_ok=True)
    return found


def marked_names(root, folders, marker=MARKER):
    """{name: header} of what the headers below these folders mark as exported."""
    names = {}
    for path in house.files_below(root, folders, (".h",)):
        code = house.without_comments(house.text_of(root / path))
        code = re.sub(r"^[ \t]*#.*(?:\\\n.*)*$", "", code, flags=re.MULTILINE)
        for match in re.finditer(rf"\b{marker}\b([^;{{]*)", code):
            declaration = re.sub(r"\[\[.*?\]\]|\bextern\b", " ", match.group(1))
            declaration = re.sub(r"\balignas\s*\([^)]*\)", " ", declaration)
            record = re.match(r"\s*(\w+)\s*(?:final)?\s*(?::.*)?$", declaration, re.DOTALL)
            before = code[:match.start()].rstrip()
            if record and re.search(r"\b(class|struct)$", before):
                names[record.group(1)] = path
                continue
            operator = re.search(r"\boperator\s*[^\s\w(]+|\boperator\s*\(\s*\)", declaration)
            head = re.split(r"[(=\[]", declaration, maxsplit=1)[0]
            words = re.findall(r"~?\w+", head)
            if operator:
                names[re.sub(r"\s", "", operator.group(0)).replace("()", "[]")] = path
            elif words:
                names[words[-1]] = path
    return names


def words_of(line):
    """The words that a listed symbol may be known by: its own name and the records that it is a member of."""
    name = line.replace("operator()", "operator[]").split("(", 1)[0]
    return set(re.findall(r"operator[^\s\w]+|~?\w+", name))


def marked_but_unlisted(root, folders, golden):
    listed = set().union(*map(words_of, golden))
    return [f"{path}: {name} is marked, but not in the golden list"
            for name, path in sorted(marked_names(root, folders).items()) if name not in listed]


def libraries():
    if not house.build_root():
        return None
    folder = house.build_root() / "lib"
    return folder / "libVeltPropData.so", folder / "libVeltEmbeddedHost.so"


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "instrumentation adds symbols of its own")
class TheLayer(house.Check):
    def test_exports_what_the_golden_list_says(self):
        layer, _ = libraries()
        found = compare_with_golden(EXPORTED, demangled(exported(layer)), "exported")
        self.assert_nothing(found)

    def test_needs_what_the_golden_list_says(self):
        layer, host = libraries()
        from_host, _ = needs(layer, host)
        found = compare_with_golden(NEEDED, demangled(from_host), "needed")
        self.assert_nothing(found)

    def test_needs_nothing_but_the_host_and_the_standard_library(self):
        layer, host = libraries()
        _, from_nobody = needs(layer, host)
        self.assert_nothing(demangled(from_nobody))
        self.assertFalse(foreign_libraries(layer))

    def test_names_itself(self):
        layer, _ = libraries()
        self.assertRegex(run("readelf", "-d", str(layer)), r"\(SONAME\).*\[libVeltPropData\.so\.\d+\]")


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "instrumentation adds symbols of its own")
class ThePaletteLibrary(house.Check):
    def library(self):
        return house.build_root() / "lib" / "libVeltPalette.so"

    def test_exports_what_its_headers_mark_and_nothing_else(self):
        marked = set(marked_names(house.source_root(), ("palette",), "VELT_PALETTE_EXPORT"))
        foreign = [name for name in demangled(exported(self.library())) if not words_of(name) & marked]
        self.assert_nothing(foreign)

    def test_asks_no_more_of_a_host_than_the_layer_does(self):
        layer, host = libraries()
        from_host, _ = needs(self.library(), host)
        of_the_layer = set(lines_of(house.source_root() / "tests" / NEEDED)) | set(demangled(exported(layer)))
        self.assert_nothing(sorted(set(demangled(from_host)) - of_the_layer))

    def test_leans_on_the_layer_and_on_the_library_for_its_texts_alone(self):
        others = [name for name in foreign_libraries(self.library()) if not name.startswith(("libVeltPropData.", "libfmt."))]
        self.assert_nothing(others)


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "instrumentation adds symbols of its own")
class TheCheckOfAHost(house.Check):
    def library(self):
        return house.build_root() / "lib" / "libVeltHostCheck.so"

    def test_has_one_entry(self):
        self.assertEqual(["veltCheckHost"], demangled(exported(self.library())))

    def test_asks_no_more_of_a_host_than_the_layer_does(self):
        _, host = libraries()
        from_host, from_nobody = needs(self.library(), host)
        of_the_layer = set(lines_of(house.source_root() / "tests" / NEEDED))
        self.assert_nothing(sorted(set(demangled(from_host)) - of_the_layer))
        self.assert_nothing(demangled(from_nobody))
        self.assertFalse(foreign_libraries(self.library()))


class TheHeaders(house.Check):
    def test_mark_only_what_is_listed_as_exported(self):
        root = house.source_root()
        found = marked_but_unlisted(root, house.LAYER, lines_of(root / "tests" / EXPORTED))
        self.assert_nothing(found)


class TheComparison(house.Check):
    def test_finds_what_is_on_one_side_only(self):
        self.assertEqual(1, len(compare(["a()"], ["a()", "b()"], "exported")))
        self.assertEqual(1, len(compare(["a()", "b()"], ["a()"], "exported")))
        self.assertFalse(compare(["a()"], ["a()"], "exported"))

    HEADER = f"""
        #define {MARKER} nothing
        // {MARKER} void inAComment();
        {MARKER} bool listed(int (*callback)(int), const char* text = "{MARKER} void inAString();");
        {MARKER} std::pair<int, int>
        unlisted(int);
        {MARKER} extern const Row table[];
        extern {MARKER} const GUID CLSID_A;
        class {MARKER} Record final : public Base {{ public: void f(); }};
        {MARKER} bool operator==(const Record&, const Record&);
        {MARKER} void take(struct unlisted&);
    """

    def test_reads_marked_names_from_headers(self):
        with house.small_tree({"propdata/VeltPropData.h": self.HEADER}) as root:
            names = marked_names(root, house.LAYER)
        self.assertEqual({"listed", "unlisted", "table", "CLSID_A", "Record", "operator==", "take"}, set(names))

    def test_finds_a_marked_function_that_is_not_listed(self):
        golden = ["CLSID_A", "Record::f()", "listed(int (*)(int), char const*)",
                  "operator==(Record const&, Record const&)", "table", "take(unlisted&)"]
        with house.small_tree({"propdata/VeltPropData.h": self.HEADER}) as root:
            found = marked_but_unlisted(root, house.LAYER, golden)
        self.assertEqual(1, len(found), found)
        self.assertIn("unlisted", found[0])


class ALayerOfOurOwn(house.Check):
    """The same functions on two small libraries, built with the version script of the real one."""

    FILES = {
        "Layer.cpp": """
            #include <algorithm>
            #include <map>
            #include <memory>
            #include <string>
            #include <vector>
            #define EXPORT __attribute__((visibility("default")))
            void fromTheHost();
            void fromNobody();
            struct Row { int key; std::string text; };
            EXPORT extern const int exportedDatum;
            const int exportedDatum = 7;
            void hiddenFunction(std::vector<Row>& rows) { rows.push_back(Row{1, "a"}); }
            EXPORT int exportedFunction(std::vector<int>& numbers, std::map<std::string, int>& names) {
              std::vector<Row> rows;
              hiddenFunction(rows);
              numbers.resize(numbers.size() + 40);
              std::stable_sort(numbers.begin(), numbers.end());
              std::shared_ptr<int> shared = std::make_shared<int>(3);
              static const std::vector<int> once{1, 2, 3};
              fromTheHost();
              return names["x"] + *shared + once[0];
            }
            EXPORT void alsoExported() { fromNobody(); }
        """,
        "Host.cpp": "void fromTheHost() {}\nvoid notAskedFor() {}\n",
    }

    @classmethod
    def setUpClass(cls):
        cls.tree = house.small_tree(cls.FILES)
        cls.root = cls.tree.__enter__()
        compiler = os.environ.get("VELT_CXX", "g++")
        script = house.source_root() / "cmake" / "VeltPropData.map"
        for optimised in ("-O0", "-O2"):
            run(compiler, "-std=c++20", optimised, "-fPIC", "-shared", "-fvisibility=hidden",
                "-fvisibility-inlines-hidden", f"-Wl,--version-script={script}", "-o",
                str(cls.root / f"layer{optimised}.so"), str(cls.root / "Layer.cpp"))
        run(compiler, "-fPIC", "-shared", "-o", str(cls.root / "host.so"), str(cls.root / "Host.cpp"))

    @classmethod
    def tearDownClass(cls):
        cls.tree.__exit__(None, None, None)

    def test_exports_what_is_marked_and_no_instantiation_of_the_standard_library(self):
        for optimised in ("-O0", "-O2"):
            with self.subTest(optimised=optimised):
                names = demangled(exported(self.root / f"layer{optimised}.so"))
                self.assertEqual(["alsoExported()", "exportedDatum"], [n for n in names if "exportedFunction" not in n])
                self.assertEqual(3, len(names), names)

    def test_tells_what_comes_from_the_host_from_what_comes_from_nobody(self):
        from_host, from_nobody = needs(self.root / "layer-O0.so", self.root / "host.so")
        self.assertEqual(["fromTheHost()"], demangled(from_host))
        self.assertEqual(["fromNobody()"], demangled(from_nobody))

    def test_finds_a_library_that_is_not_a_standard_one(self):
        shutil.copy(self.root / "host.so", self.root / "libforeign.so")
        compiler = os.environ.get("VELT_CXX", "g++")
        run(compiler, "-fPIC", "-shared", "-Wl,--no-as-needed", "-o", str(self.root / "leaning.so"),
            str(self.root / "Host.cpp"), f"-L{self.root}", "-lforeign")
        self.assertEqual(["libforeign.so"], foreign_libraries(self.root / "leaning.so"))
        self.assertFalse(foreign_libraries(self.root / "layer-O0.so"))


if __name__ == "__main__":
    unittest.main()
