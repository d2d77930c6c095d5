"""The tarball of the sources is the same for the same commit, and holds what a build needs."""

import os
import pathlib
import re
import shutil
import subprocess
import tarfile
import tempfile
import unittest

import house


def version():
    header = house.text_of(house.source_root() / "propdata" / "Version.h")
    return ".".join(re.findall(r"^#define VELT_PROPDATA_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)$", header, re.MULTILINE))


def is_checkout():
    return shutil.which("git") and subprocess.run(["git", "-C", house.source_root(), "rev-parse", "--git-dir"], check=False,
                                                  capture_output=True).returncode == 0


@unittest.skipUnless(is_checkout(), "not a git checkout")
class TheTarball(unittest.TestCase):
    def make(self, folder, **environment):
        subprocess.run([house.source_root() / "scripts" / "dist", folder], check=True, capture_output=True,
                       env=os.environ | environment)
        return pathlib.Path(folder, f"veltpropdata-{version()}.tar.gz")

    def test_has_the_same_bytes_each_time_and_everywhere(self):
        with tempfile.TemporaryDirectory() as one, tempfile.TemporaryDirectory() as other:
            first = self.make(one, TZ="UTC", LC_ALL="C").read_bytes()
            self.assertEqual(first, self.make(other, TZ="Asia/Tokyo", LC_ALL="C.UTF-8", USER="somebody").read_bytes())

    def test_holds_the_tree_below_one_folder(self):
        with tempfile.TemporaryDirectory() as folder, tarfile.open(self.make(folder)) as tarball:
            names = set(tarball.getnames())
            for file in ("CMakeLists.txt", "Makefile", "COPYING", "propdata/VeltPropData.h", "scripts/dist"):
                self.assertTrue(f"veltpropdata-{version()}/{file}" in names, file)
            self.assertEqual({f"veltpropdata-{version()}"}, {name.split("/")[0] for name in names})


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
class TheVersion(unittest.TestCase):
    def test_of_the_tool_is_that_of_the_public_header(self):
        told = subprocess.run([house.build_root() / "bin" / "veltprops", "--version"], check=True, capture_output=True,
                              text=True).stdout
        self.assertEqual(f"veltprops {version()}\n", told)


if __name__ == "__main__":
    unittest.main()
