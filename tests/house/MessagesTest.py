"""Messages are read by people who know drawings and not this project: no message of the tool, the palette library or the
automation objects has a word of their insides."""

import re
import unittest

import house

ROOT = house.source_root()

FOLDERS = ("tool", "palette", "embedded/automation")
LITERAL = r'L?"(?:[^"\\\n]|\\.)*"'
# What begins a message: an exception that is told to people, a reason of a table, a sentence of an explanation.
BEGINNING = re.compile(r"\b(?:Refusal|Failure|UsageFailure|OtherForm|Error|BoundaryError|NotComputed)\s*[({]"
                       r"|\bReason \w+\s*=\s*{|\bsay\(|\badvise\(|\.said\.(?:push|emplace)_back\(|\bremark = ")
STATEMENT = re.compile(rf'(?:{LITERAL}|[^";])*')
INSIDES = re.compile(r"DISPID|VARIANT|HRESULT|BSTR|GUID|CLSID|IDispatch|\bVT_|\bE_[A-Z]|\bCOM\b|0x[0-9A-Fa-f]|:0\d*[xX]}"
                     r"|\b(?:interface|pointer|vtable|enum|cookie|dispatch|host|record|property source|"
                     r"subclass|group code|callback|exception|nullopt|lens)\b|(?<![Tt]here) is no (?!longer)")
# Words of messages that people may not know, by the page that explains each.
EXPLAINED = {
    "handle": ("README.md", "--handle 2F,30"),
    "plug-in": ("README.md", "plug-ins add rows of their own"),
    "extended data": ("README.md", "the extended data of applications"),
    "regular expression": ("README.md", "regular expression"),
    "--keep-going": ("README.md", "`--keep-going`"),
    "--overwrite-changes": ("README.md", "`--overwrite-changes`"),
    "--no-pager": ("README.md", "`--no-pager`"),
    "--force": ("tool/CommandLine.cpp", "--force"),
    "--in-place": ("README.md", "`--in-place`"),
    "--dry-run": ("README.md", "`--dry-run`"),
    "Associative": ("README.md", "associative hatch"),
}
OPTION = re.compile(r"--[a-z][a-z-]+")


def messages(root):
    """Where a message stands, and what it says."""
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".cpp", ".h"):
                continue
            text = path.read_text(encoding="utf-8")
            for beginning in BEGINNING.finditer(text):
                statement = STATEMENT.match(text, beginning.end()).group()
                for literals in re.finditer(rf"{LITERAL}(?:\s*{LITERAL})*", statement):
                    parts = re.findall(LITERAL, literals.group())
                    yield f"{path.relative_to(root)}", "".join(part[part.index('"') + 1:-1] for part in parts)


def violations(root):
    return [f"{where}: {said}" for where, said in messages(root) if INSIDES.search(said)]


class Messages(unittest.TestCase):
    maxDiff = None

    def test_are_found(self):
        self.assertGreater(len(set(messages(ROOT))), 250)

    def test_have_no_word_of_the_insides(self):
        self.assertEqual(violations(ROOT), [])

    def test_would_be_found_with_one(self):
        for said in ('throw Refusal(E_FAIL, L"The DISPID is wrong.");', 'throw Failure(fmt::format("{}: " "result {:08X}", x));',
                     'inline constexpr Reason r = {L"The value is no number."};'):
            with house.small_tree({"tool/A.cpp": said}) as root:
                self.assertEqual(len(violations(root)), 1, said)
        with house.small_tree({"tool/A.cpp": 'throw Failure("the drawing is damaged"); const char* name = "DISPID";'}) as root:
            self.assertEqual(violations(root), [])

    def test_name_options_that_there_are(self):
        known = "".join((ROOT / "tool" / name).read_text(encoding="utf-8") for name in
                        ("CommandLine.cpp", "SelectionOptions.cpp"))
        self.assertEqual([(where, said) for where, said in messages(ROOT) for option in OPTION.findall(said)
                          if f'"{option}"' not in known and f",{option}" not in known], [])

    def test_are_explained_where_people_may_not_know_a_word(self):
        for word, (page, explanation) in EXPLAINED.items():
            with self.subTest(word):
                self.assertTrue(any(word in said for _, said in messages(ROOT)), "no message says it any more")
                self.assertTrue(explanation in (ROOT / page).read_text(encoding="utf-8"), f"{page} does not say: {explanation}")


if __name__ == "__main__":
    unittest.main()
