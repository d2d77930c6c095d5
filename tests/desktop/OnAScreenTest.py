"""The palette in a window, as `make palette` opens it, on a screen: an X server that keeps its screen in a file."""

import collections
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house

PROGRAM = (house.build_root() or pathlib.Path()) / "bin" / "veltpalette"
SERVER = shutil.which("Xvfb")
WIDTH, HEIGHT = 1280, 800
BACKGROUND = (0x21, 0x28, 0x30)
PATIENCE = 60


def pixels_of(dump):
    """Rows of (red, green, blue) of a window dump, as X servers write it: 25 numbers, colors, and the pixels."""
    header = struct.unpack(">25I", dump[:100])
    size, width, height, bits, line_length, color_count = (header[i] for i in (0, 4, 5, 11, 12, 19))
    if bits != 32 or header[7] != 0:
        raise ValueError(f"a dump of {bits} bits a pixel, byte order {header[7]}")
    start = size + 12 * color_count
    for y in range(height):
        line = dump[start + y * line_length:][:4 * width]
        yield [(line[i + 2], line[i + 1], line[i]) for i in range(0, len(line), 4)]


class Shares:
    """How much of an area has which color."""

    def __init__(self, rows):
        self.counts = collections.Counter(pixel for row in rows for pixel in row)
        self.total = max(sum(self.counts.values()), 1)

    def of(self, fits):
        return sum(count for pixel, count in self.counts.items() if fits(pixel)) / self.total


def is_drawing(area):
    """Mostly background, and several colors of lines, each clearly there."""
    colorful = [pixel for pixel, count in area.counts.items() if count > 100 and max(pixel) - min(pixel) > 120]
    return area.of(lambda pixel: pixel == BACKGROUND) > 0.5 and len(colorful) >= 3


def is_palette(area):
    """Mostly light ground, with dark letters."""
    return area.of(lambda pixel: min(pixel) > 200) > 0.7 and area.of(lambda pixel: max(pixel) < 100) > 0.005


class TheChecks(unittest.TestCase):
    def test_tell_a_drawing_from_an_empty_pane(self):
        empty = [[BACKGROUND] * 100] * 100
        self.assertFalse(is_drawing(Shares(empty)))
        self.assertTrue(is_drawing(Shares(empty + [[color] * 101 for color in ((255, 0, 0), (0, 255, 0), (0, 0, 255))])))

    def test_tell_a_palette_from_an_empty_pane(self):
        self.assertFalse(is_palette(Shares([[(255, 255, 255)] * 100] * 100)))
        self.assertTrue(is_palette(Shares([[(255, 255, 255)] * 99 + [(0, 0, 0)]] * 100)))


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipUnless(PROGRAM.is_file(), "veltpalette is not built: Qt 6 is missing (scripts/install-dependencies desktop)")
class TheProgram(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "run").mkdir(mode=0o700)
        self.environment = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        self.environment |= {"HOME": folder.name, "XDG_CONFIG_HOME": folder.name, "LANG": "C.UTF-8", "LC_ALL": "C.UTF-8",
                             "XDG_RUNTIME_DIR": str(self.folder / "run")}

    def stop(self, running):
        running.terminate()
        try:
            running.wait(10)
        except subprocess.TimeoutExpired:
            running.kill()
            running.wait()

    def start_server(self):
        ours, its = os.pipe()
        server = subprocess.Popen(
            [SERVER, "-displayfd", str(its), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-fbdir", self.folder, "-nolisten", "tcp"],
            pass_fds=[its], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(self.stop, server)
        os.close(its)
        with os.fdopen(ours) as answer:
            number = answer.readline().strip()
        self.assertTrue(number, "the X server did not start")
        return f":{number}"

    def areas(self):
        """Of the drawing, and of the palette beside it."""
        rows = list(pixels_of((self.folder / "Xvfb_screen0").read_bytes()))
        middle = range(HEIGHT // 10, HEIGHT // 2)
        return (Shares([rows[y][:WIDTH * 55 // 100] for y in middle]), Shares([rows[y][WIDTH * 70 // 100:] for y in middle]))

    @unittest.skipUnless(SERVER, "Xvfb is not installed (scripts/install-dependencies test)")
    @unittest.skipIf(house.is_instrumented(), "the libraries of the screen are not instrumented")
    def test_shows_the_sample_drawing_and_the_palette_of_its_walls(self):
        display = self.start_server()
        running = subprocess.Popen([PROGRAM, "--layer", "Walls"], env=self.environment | {"DISPLAY": display, "QT_QPA_PLATFORM": "xcb"},
                                   stderr=subprocess.PIPE)
        self.addCleanup(running.stderr.close)
        self.addCleanup(self.stop, running)
        before = time.monotonic()
        while True:
            self.assertIsNone(running.poll(), "the program has ended")
            drawing, palette = self.areas()
            if is_drawing(drawing) and is_palette(palette):
                break
            self.assertLess(time.monotonic() - before, PATIENCE,
                            f"most of the drawing: {drawing.counts.most_common(5)}, of the palette: {palette.counts.most_common(5)}")
            time.sleep(0.2)

    def test_is_what_make_palette_opens(self):
        if not shutil.which("make"):
            self.skipTest("make is not installed")
        commands = subprocess.run(["make", "--no-print-directory", "-n", "palette"], cwd=house.source_root(), check=True,
                                  capture_output=True, text=True).stdout
        self.assertIn("install-dependencies build desktop", commands)
        self.assertRegex(commands, r"build release veltpalette && build/release/bin/veltpalette\n")

    def run_without_a_screen(self, *arguments, **environment):
        return subprocess.run([PROGRAM, *arguments], env=self.environment | environment, capture_output=True, text=True, timeout=60)

    def test_tells_of_itself_without_a_screen(self):
        told = self.run_without_a_screen("--help")
        self.assertEqual((0, ""), (told.returncode, told.stderr))
        for option in ("DRAWING", "--layer", "--where", "--plugin"):
            self.assertIn(option, told.stdout)

    def test_ends_with_a_message_where_the_drawing_cannot_be_opened(self):
        told = self.run_without_a_screen("nowhere.dxf", QT_QPA_PLATFORM="offscreen")
        self.assertEqual(1, told.returncode)
        self.assertRegex(told.stderr, "^veltpalette: .*nowhere.dxf")
        told = self.run_without_a_screen("--layer", "Nowhere", QT_QPA_PLATFORM="offscreen")
        self.assertEqual(1, told.returncode)
        self.assertIn("Nowhere", told.stderr)


if __name__ == "__main__":
    unittest.main()
