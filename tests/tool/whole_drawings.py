"""Whole drawings to try the tool on: the project's own, and those in the folder that VELT_DRAWINGS names, if it does.

What a test asserts of each drawing must hold for any that was ever saved. That anything was found at all can be asserted
of all of them together, because the gallery has an entity of every class."""

import os
import pathlib
import subprocess
import tempfile

TOOL = pathlib.Path(os.environ["VELT_BINARY_DIR"]) / "bin" / "veltprops"
OTHERS = os.environ.get("VELT_DRAWINGS")


class WholeDrawings:
    """The paths of the drawings; those of the project stand in a folder that goes with the object."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory(prefix="velt-drawings-")
        floor_plan = pathlib.Path(self.folder.name) / "floor-plan.dxf"
        gallery = pathlib.Path(self.folder.name) / "gallery.dxf"
        subprocess.run([TOOL, "sample", floor_plan], check=True, stdout=subprocess.DEVNULL)
        subprocess.run([TOOL, "sample", "--gallery", gallery], check=True, stdout=subprocess.DEVNULL)
        self.paths = [floor_plan, gallery]
        if OTHERS:
            others = sorted(pathlib.Path(OTHERS).glob("*.dxf"))
            if not others:
                raise AssertionError(f"VELT_DRAWINGS names a folder without drawings: {OTHERS}")
            self.paths += others

    def __iter__(self):
        return iter(self.paths)

    def close(self):
        self.folder.cleanup()
