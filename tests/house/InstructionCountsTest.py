"""A small load, query and write take no more instructions than they are known to need.

Times vary with the machine and with what else runs on it; instructions hardly do. So this finds what makes the layer, the
host or the reading of drawings slower before anybody can measure it. The counts are those of the debug build, since that
is the one that the tests have: they tell of more work, not of how fast it is.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import house

# In thousands, for 50 lines, with g++ 12. Lower them when something has become faster.
KNOWN = {"measuredLoad": 6902, "measuredQuery": 17179, "measuredWrite": 4535}
# Other versions of the compiler and of its library make other code of the same source.
MARGIN = 1.2


def program():
    return house.build_root() and house.build_root() / "bin" / "velt_bench_instructions"


def is_comparable():
    """The counts hold for a debug build with g++ and without instrumentation."""
    if not program() or not program().exists():
        return False
    cache = (house.build_root() / "CMakeCache.txt").read_text()
    settings = dict(re.findall(r"^(\w+):\w+=(.*)$", cache, re.MULTILINE))
    return (settings.get("CMAKE_BUILD_TYPE") == "Debug" and "g++" in settings.get("CMAKE_CXX_COMPILER", "")
            and "clang" not in settings.get("CMAKE_CXX_COMPILER", "")
            and not settings.get("VELT_SANITIZE") and settings.get("VELT_COVERAGE", "OFF") != "ON")


@unittest.skipUnless(shutil.which("valgrind"), "valgrind is not there")
@unittest.skipUnless(is_comparable(), "no debug build with g++ that has the benchmarks")
class TheCounts(unittest.TestCase):
    def test_are_no_higher_than_known(self):
        with tempfile.TemporaryDirectory() as folder:
            counts = str(pathlib.Path(folder) / "counts")
            subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={counts}", program()], check=True,
                           capture_output=True)
            listing = subprocess.run(["callgrind_annotate", "--inclusive=yes", "--threshold=100", counts], check=True,
                                     capture_output=True, text=True).stdout
        for name, known in KNOWN.items():
            with self.subTest(name=name):
                found = re.search(rf"^\s*([\d,]+).*:{name}\b", listing, re.MULTILINE)
                self.assertIsNotNone(found)
                thousands = int(found[1].replace(",", "")) // 1000
                self.assertLess(thousands, known * MARGIN)
                # A pin far above the count would let half of what was gained go unseen.
                self.assertGreater(thousands * MARGIN, known)


if __name__ == "__main__":
    unittest.main()
