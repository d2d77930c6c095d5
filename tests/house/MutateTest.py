"""scripts/mutate changes code and nothing else, and picks the same places for the same seed."""

import importlib.machinery
import importlib.util
import pathlib
import subprocess
import sys
import unittest

import house

SCRIPT = house.source_root() / "scripts" / "mutate"

sys.dont_write_bytecode = True
_loader = importlib.machinery.SourceFileLoader("mutate", str(SCRIPT))
mutate = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutate", _loader))
sys.modules["mutate"] = mutate
_loader.exec_module(mutate)

CODE = '''#include "a<b.h"  // 1 + 1
// if (a == b) true
constexpr const char* text = "a == b && 7";
[[nodiscard]] bool isNear(int a, int b) {
  if (a == b && !isFar(a)) return true;
  remember(a);
  total += a * 2;
  /* x == 3 */ std::vector<int> list;
  for (int i = 0; i < b; ++i) list.push_back(i);
  return a - b < 12;
}
'''


def changes(code):
    return {(place.line, place.after) for place in mutate.places_in("a.cpp", code)}


class Mutate(unittest.TestCase):
    def test_changes_operators_literals_and_statements(self):
        found = changes(CODE)
        for expected in ((5, "if (a != b && !isFar(a)) return true;"), (5, "if (a == b || !isFar(a)) return true;"),
                         (5, "if (a == b && isFar(a)) return true;"), (5, "if (a == b && !isFar(a)) return false;"),
                         (6, ";"), (7, ";"), (7, "total -= a * 2;"), (7, "total += a / 2;"), (7, "total += a * (2 + 1);"),
                         (9, "for (int i = 1; i < b; ++i) list.push_back(i);"),
                         (9, "for (int i = 0; i <= b; ++i) list.push_back(i);"),
                         (9, "for (int i = 0; i < b; --i) list.push_back(i);"), (10, "return a + b < 12;"),
                         (10, "return a - b >= 12;"), (10, "return a - b < (12 + 1);")):
            self.assertIn(expected, found)

    def test_leaves_comments_texts_and_directives_alone(self):
        self.assertEqual({line for line, _ in changes(CODE)} & {1, 2, 3, 4}, set())
        self.assertFalse([after for line, after in changes(CODE) if line == 8])

    def test_the_seed_picks_the_places(self):
        with house.small_tree({"text/A.cpp": CODE, "text/B.h": CODE, "text/notes.md": CODE}) as root:
            def picked(seed):
                places, _ = mutate.sample_of(root, ["text"], 5, seed)
                return [str(place) for place in places]
            self.assertEqual(picked(1), picked(1))
            self.assertNotEqual(picked(1), picked(2))
            _, count = mutate.sample_of(root, ["text"], 1000, 1)
            self.assertEqual(len(picked(1)), 5)
            self.assertEqual(count, len(mutate.sample_of(root, ["text"], 1000, 1)[0]))

    def test_folders_are_drawn_from_together_and_no_file_twice(self):
        with house.small_tree({"text/A.cpp": CODE, "errors/B.cpp": CODE}) as root:
            one = mutate.sample_of(root, ["text"], 1000, 1)[1]
            places, count = mutate.sample_of(root, ["text", "errors", "text/A.cpp"], 1000, 1)
            self.assertEqual({str(place.path) for place in places}, {"text/A.cpp", "errors/B.cpp"})
            self.assertEqual((count, len(places)), (2 * one, 2 * one))

    def test_the_tests_that_take_long_run_after_the_others(self):
        report = {"testsuites": [{"name": "A", "testsuite": [{"name": "Quick", "time": "0.1s"},
                                                             {"name": "Slow", "time": "5s"}]},
                                 {"name": "B", "testsuite": [{"name": "Slower", "time": "6s"},
                                                             {"name": "Quick", "time": "0.2s"}]}]}
        self.assertEqual(mutate.slowest(report), ["B.Slower", "A.Slow"])
        self.assertEqual(mutate.slowest({"testsuites": []}), [])

    def test_every_folder_of_code_has_places(self):
        for folder in ("text", "errors", "container", "propdata", "palette", "dxf", "embedded", "tool"):
            self.assertTrue(mutate.sample_of(house.source_root(), [folder], 1, 1)[0], folder)

    def test_survivors_are_found_again_where_the_code_is_still_what_it_was(self):
        with house.small_tree({"text/A.cpp": "// moved down\n" + CODE}) as root:
            def mutant(file, after, outcome):
                return {"file": file, "line": 7, "before": "total += a * 2;", "after": after, "outcome": outcome}
            report = {"mutants": [mutant("text/A.cpp", "total -= a * 2;", "survives"),
                                  mutant("text/A.cpp", "total += a / 2;", "is noticed"),
                                  mutant("text/A.cpp", "gone();", "survives"),
                                  mutant("text/Gone.cpp", ";", "survives")]}
            self.assertEqual([(place.line, place.after) for place in mutate.survivors_of(root, report)],
                             [(8, "total -= a * 2;")])

    def test_wrong_usage_is_told(self):
        for arguments, words in ((["no/such/folder"], "no such folder"), ([], "name folders"),
                                 (["text", "--again", "a.json"], "name folders")):
            run = subprocess.run([sys.executable, SCRIPT, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                 text=True)
            self.assertEqual(run.returncode, 2)
            self.assertIn(words, run.stderr)


if __name__ == "__main__":
    unittest.main()
