"""libVeltRecorder.so and velt-replay: whole programs are recorded, and replayed without their hosts and drawings."""

import json
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house  # noqa: E402
import minimal_host  # noqa: E402


def texts_in(value):
    """All texts of a recorded line."""
    if isinstance(value, dict):
        if set(value) == {"text"} and isinstance(value["text"], str):
            return [value["text"]]
        value = list(value.values())
    return [text for inside in value for text in texts_in(inside)] if isinstance(value, list) else []


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "the runtime of a sanitizer must be loaded first")
class RecordAndReplay(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.build = house.build_root()
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        # The loader takes a blank in the path for the end of a name, and a checkout may stand anywhere.
        cls.recorder = cls.root / "recorder.so"
        cls.recorder.symlink_to(cls.build / "lib" / "libVeltRecorder.so")
        cls.plan = cls.sample("plan.dxf")
        cls.minimal = cls.minimal_host("minimal")
        cls.recording = cls.root / "minimal.jsonl"
        cls.record(cls.recording, cls.minimal)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def sample(cls, name, *options):
        subprocess.run([cls.build / "bin" / "veltprops", "sample", *options, cls.root / name], check=True,
                       stdout=subprocess.DEVNULL)
        return cls.root / name

    @classmethod
    def minimal_host(cls, name, *changes):
        """The minimal host, in which texts may be changed: a host that is the program itself."""
        library = cls.build / "lib"
        return minimal_host.built(cls.root / name, changes, options=(f"-L{library}", f"-Wl,-rpath,{library}", "-lVeltPropData"))

    @classmethod
    def record(cls, recording, *command, check=True):
        environment = {**os.environ, "LD_PRELOAD": str(cls.recorder),
                       "VELT_RECORDING": str(recording)}
        return subprocess.run(command, capture_output=True, text=True, check=check, env=environment, cwd=cls.root)

    def replay(self, *arguments):
        return subprocess.run([self.build / "bin" / "velt-replay", *arguments], capture_output=True, text=True, check=False,
                              cwd=self.root, errors="replace")

    def assert_as_recorded(self, recording):
        result = self.replay(recording)
        self.assertEqual((0, ""), (result.returncode, result.stderr), result.stdout)
        self.assertRegex(result.stdout, r"\A\d+ operations, \d+ calls: all as recorded\n\Z")

    def write(self, name, *lines):
        (self.root / name).write_text("\n".join(lines) + "\n", encoding="utf-8")
        return name

    def lines(self, recording=None):
        return (recording or self.recording).read_text(encoding="utf-8").splitlines()

    # --- what is recorded replays -------------------------------------------------------------------------------------

    def test_a_query_a_write_and_a_refresh_of_the_sample_drawings(self):
        program = self.build / "bin" / "recorded_palette"
        for drawing in (self.plan, self.sample("gallery.dxf", "--gallery")):
            with self.subTest(drawing=drawing.name):
                alone = subprocess.run([program, drawing], capture_output=True, text=True, check=True)
                recording = self.root / f"{drawing.stem}.jsonl"
                recorded = self.record(recording, program, drawing)
                self.assertEqual(alone.stdout, recorded.stdout, "the recorder changes what a program gets")
                self.assertEqual({"InitializePropData", "GetPropertiesInfo", "SortByWeight", "IsDifferentByLayerColors",
                                  "SetPropertiesValue", "GetPropInfoValue", "UnInitializePropData"},
                                 set(re.findall(r'^\{"begin":"(\w+)"', recording.read_text(encoding="utf-8"), re.MULTILINE)))
                self.assert_as_recorded(recording)

    def test_rows_of_a_plug_in(self):
        recording = self.root / "plugin.jsonl"
        listed = subprocess.run([self.build / "bin" / "veltprops", "list", self.plan, "--type", "Circle"], check=True,
                                capture_output=True, text=True)
        circle = listed.stdout.splitlines()[1].split()[0]
        shown = self.record(recording, self.build / "bin" / "veltprops", "show", self.plan, "--handle", circle, "--plugin",
                            self.build / "plugins" / "material.so")
        self.assertIn("Material", shown.stdout)
        self.assertIn('"call":"IDynamicProperty', recording.read_text(encoding="utf-8"))
        self.assert_as_recorded(recording)

    def test_begins_with_the_line_that_the_guide_shows(self):
        guide = (house.source_root() / "docs" / "recording.md").read_text(encoding="utf-8")
        self.assertIn(f"```json\n{self.lines()[0]}\n```", guide)

    def test_a_host_that_is_the_program_itself(self):
        self.assertIn('"call":"IDispatch::Invoke"', self.recording.read_text(encoding="utf-8"))
        self.assert_as_recorded(self.recording)

    def test_a_host_that_fails(self):
        for name, changes, message in (
                ("refusing", [("return give(show, 1);", "*show = 1; return E_FAIL;")], None),
                ("nameless", [("return property != nullptr ? give(ids, property->id) : DISP_E_UNKNOWNNAME;",
                               "return property != nullptr && property->id != 1 ? give(ids, property->id) : DISP_E_UNKNOWNNAME;")],
                 "does not know its own property"),
                ("throwing", [("return give(show, 1);", 'throw _com_error(E_FAIL, L"Thrown by the host");')],
                 "Thrown by the host")):
            with self.subTest(host=name):
                program = self.minimal_host(name, *changes)
                recording = self.root / f"{name}.jsonl"
                self.record(recording, program, check=False)
                if message:
                    end = next(json.loads(line) for line in self.lines(recording)
                               if line.startswith('{"end":"GetPropertiesInfo"'))
                    self.assertFalse(end["result"])
                    self.assertIn(message, end["out"]["errorText"]["text"])
                self.assert_as_recorded(recording)

    # --- where the layer departs --------------------------------------------------------------------------------------

    def test_tells_the_first_call_that_was_another_one(self):
        lines = self.lines()
        at = next(i for i, line in enumerate(lines) if '"IOPMPropertyExtension::ShowProperty"' in line)
        lines[at] = lines[at].replace('"dispId":', '"dispId":9')
        result = self.replay(self.write("departing.jsonl", *lines))
        self.assertEqual(1, result.returncode)
        self.assertRegex(result.stdout, rf'(?s)\Aline {at + 1}, in GetPropertiesInfo:\n  recorded  .*"dispId":9\d.*'
                                        r'\n  now       \{"call":"IOPMPropertyExtension::ShowProperty".*1 departure\n\Z')

    def test_tells_what_came_out_otherwise_and_goes_on(self):
        lines = self.lines()
        at = next(i for i, line in enumerate(lines) if line.startswith('{"end":"SetPropertiesValue"'))
        lines[at] = lines[at].replace('"lockedCount":1', '"lockedCount":2')
        name = self.write("otherwise.jsonl", *lines)
        result = self.replay(name)
        self.assertEqual(1, result.returncode)
        self.assertIn(f"line {at + 1}, in SetPropertiesValue:\n  recorded  /out/lockedCount = 2\n"
                      "  now       /out/lockedCount = 1\n6 operations, ", result.stdout)
        shown = json.loads(self.replay("--json", name).stdout)
        self.assertEqual(6, shown["operations"])
        self.assertEqual([at + 1], [one["line"] for one in shown["departures"]])

    def test_tells_that_an_answer_leads_elsewhere(self):
        lines = self.lines()
        at = next(i for i, line in enumerate(lines) if '"IOPMPropertyExtension::ShowProperty"' in line)
        lines[at] = lines[at].replace('"show":1', '"show":0')
        result = self.replay(self.write("hidden.jsonl", *lines))
        self.assertEqual(1, result.returncode)
        self.assertIn("departure", result.stdout)

    # --- recordings that are none ---------------------------------------------------------------------------------------

    def test_says_what_is_wrong_with_a_recording(self):
        lines = self.lines()
        middle = next(i for i, line in enumerate(lines) if '"IDispatch::Invoke"' in line)
        for name, content, message in (
                ("empty", [""], "line 1: it is not JSON"),
                ("text", ["Hello"], "line 1: it is not JSON"),
                ("object", ["{}"], 'it is not a recording: the first line has no "veltRecording"'),
                ("later", ['{"veltRecording":2}'], "it has the format 2; this program reads 1"),
                ("list", [lines[0], "[]"], "line 2: it is not an object"),
                ("unknown", [lines[0], '{"begin":"Nothing","in":{}}'], "line 2: no operation is named Nothing"),
                ("answer", [lines[0], lines[2]], "line 2: an operation should begin here"),
                ("inputs", [lines[0], '{"begin":"GetPropertiesInfo","in":{"selection":7}}'], "line 2: "),
                ("short", lines[:middle], f"line {middle}: the recording ends here, inside of GetPropertiesInfo, before the answer to "
                 '{"call":"IDispatch::Invoke"'),
                ("type", [*lines[:middle], re.sub(r'"vt":\d+', '"vt":[]', lines[middle])], f"line {middle + 1}: ")):
            with self.subTest(recording=name):
                result = self.replay(self.write(f"{name}.jsonl", *content))
                self.assertEqual(2, result.returncode, result.stdout)
                self.assertIn(f"velt-replay: {name}.jsonl: {message}", result.stderr)
        (self.root / "cut.jsonl").write_text("\n".join([*lines[:middle], lines[middle][:20]]), encoding="utf-8")
        cut = self.replay("cut.jsonl")
        self.assertEqual(2, cut.returncode)
        self.assertIn(f"line {middle + 1}: the recording is cut off in the middle of a line", cut.stderr)
        self.assertIn("it cannot be opened", self.replay("nowhere.jsonl").stderr)

    def test_survives_what_somebody_made_up(self):
        lines = self.lines()
        chance = random.Random(1)
        for _ in range(25):
            changed = list(lines)
            at = chance.randrange(1, len(lines))
            values = list(re.finditer(r'(?<=[:\[,])(-?\d+|true|"[^"]*")(?=[,}\]])', changed[at]))
            value = chance.choice(values) if values else None
            instead = chance.choice(["0", "-1", "4294967295", "null", '"x"', "{}", "8", "9", "8204", "16392", "65535"])
            if value:
                changed[at] = changed[at][:value.start()] + instead + changed[at][value.end():]
            else:
                del changed[at]
            result = self.replay(self.write("made-up.jsonl", *changed))
            with self.subTest(line=at + 1, instead=instead):
                self.assertIn(result.returncode, (0, 1, 2))
                self.assertNotIn("crashed", result.stderr)

    # --- texts ------------------------------------------------------------------------------------------------------------

    def test_replaces_texts_by_others_of_the_same_length(self):
        replaced = self.root / "replaced.jsonl"
        recording = self.root / "texts.jsonl"
        self.record(recording, self.build / "bin" / "veltprops", "show", self.plan, "--layer", "Walls,Doors,Hatching")
        result = self.replay(recording, "--replace-texts", replaced)
        self.assertEqual((0, "", ""), (result.returncode, result.stdout, result.stderr))
        self.assert_as_recorded(replaced)
        before = [texts_in(json.loads(line)) for line in self.lines(recording)]
        after = [texts_in(json.loads(line)) for line in self.lines(replaced)]
        self.assertEqual([[len(text) for text in line] for line in before], [[len(text) for text in line] for line in after])
        said = {text for line in before for text in line}
        self.assertIn("Walls", said)
        says = {text for line in after for text in line}
        self.assertNotIn("Walls", says)
        self.assertLess(len(said & says), len(said) / 3)
        again = self.replay(recording, "--replace-texts", replaced)
        self.assertEqual(2, again.returncode)
        self.assertIn("there is such a file already", again.stderr)

    # --- recording ----------------------------------------------------------------------------------------------------------

    def test_never_writes_over_a_file(self):
        before = self.recording.read_bytes()
        again = self.record(self.recording, self.minimal)
        self.assertIn("libVeltRecorder.so: nothing is recorded: ", again.stderr)
        self.assertIn("Written to 2 parts", again.stdout)
        self.assertEqual(before, self.recording.read_bytes())

    def test_records_nothing_unless_it_is_told_where(self):
        environment = {**os.environ, "LD_PRELOAD": str(self.recorder)}
        environment.pop("VELT_RECORDING", None)
        shown = subprocess.run([self.minimal], capture_output=True, text=True, check=True, env=environment)
        self.assertEqual(("", True), (shown.stderr, "Written to 2 parts" in shown.stdout))

    def test_harms_no_program_without_a_layer(self):
        listed = self.record(self.root / "nothing.jsonl", "ls", self.root)
        self.assertEqual("", listed.stderr)
        self.assertFalse((self.root / "nothing.jsonl").exists())

    def test_ends_with_2_when_it_is_used_wrongly(self):
        for arguments in ((), ("--unknown",), ("one", "two")):
            with self.subTest(arguments=arguments):
                self.assertEqual(2, self.replay(*arguments).returncode)
        for arguments in (("--help",), ("--version",)):
            self.assertEqual(0, self.replay(*arguments).returncode)


if __name__ == "__main__":
    unittest.main()
