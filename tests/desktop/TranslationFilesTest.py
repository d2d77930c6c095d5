"""The translations of the palette in a window have every text, and each is finished."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

ROOT = pathlib.Path(os.environ.get("VELT_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))
FOLDER = ROOT / "desktop" / "translations"
LUPDATE = shutil.which("lupdate-qt6") or shutil.which("/usr/lib/qt6/bin/lupdate")


def messages(file):
    for context in xml.etree.ElementTree.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            yield context.findtext("name"), message


def unfinished(file):
    found = []
    for _, message in messages(file):
        translation = message.find("translation")
        forms = [form.text for form in translation.iter("numerusform")] or [translation.text]
        if translation.get("type") or not all(forms):
            found.append(message.findtext("source"))
    return found


def texts(file):
    return sorted((context, message.findtext("source")) for context, message in messages(file))


class TheTranslations(unittest.TestCase):
    def test_are_finished(self):
        files = sorted(FOLDER.glob("*.ts"))
        self.assertEqual(["veltpalette_de.ts", "veltpalette_en.ts"], [file.name for file in files])
        for file in files:
            self.assertEqual([], unfinished(file), file.name)

    def test_keep_the_places_of_values_and_the_keys_of_menus(self):
        for _, message in messages(FOLDER / "veltpalette_de.ts"):
            source = message.findtext("source")
            translation = message.find("translation")
            for text in [form.text for form in translation.iter("numerusform")] or [translation.text]:
                for place in ("%1", "%2", "&", "[*]", "..."):
                    self.assertEqual(place in source, place in text, f"{source}: {text}")

    @unittest.skipUnless(LUPDATE, "lupdate is not installed (scripts/install-dependencies desktop)")
    def test_have_every_text_of_the_window(self):
        with tempfile.TemporaryDirectory() as folder:
            for file in FOLDER.glob("*.ts"):
                shutil.copy(file, folder)
            subprocess.run([ROOT / "scripts" / "translations", folder], check=True, capture_output=True)
            for file in FOLDER.glob("*.ts"):
                self.assertEqual(texts(pathlib.Path(folder) / file.name), texts(file),
                                 f"{file.name} is not what scripts/translations makes of the sources")

    def test_would_be_found_unfinished(self):
        with tempfile.TemporaryDirectory() as folder:
            broken = pathlib.Path(folder) / "veltpalette_de.ts"
            broken.write_text((FOLDER / broken.name).read_text(encoding="utf-8").replace(
                "<translation>Zeichnung</translation>", '<translation type="unfinished"></translation>'), encoding="utf-8")
            self.assertEqual(["Drawing"], unfinished(broken))


if __name__ == "__main__":
    unittest.main()
