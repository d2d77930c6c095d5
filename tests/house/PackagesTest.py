"""The Debian packages hold what they are for, and lintian finds nothing to complain of."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import house
import MinimalHostTest


@unittest.skipUnless(house.build_root(), "started by hand, without a build folder")
@unittest.skipIf(house.is_instrumented(), "an instrumented library is not for installing")
@unittest.skipUnless(shutil.which("dpkg-deb") and shutil.which("dpkg-shlibdeps"), "no Debian machine")
class ThePackages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        made = subprocess.run(["cpack", "-G", "DEB", "-B", cls.folder.name], cwd=house.build_root(), check=False, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if made.returncode != 0:
            raise AssertionError(made.stdout)
        cls.files = {path.name.split("_")[0]: path for path in pathlib.Path(cls.folder.name).glob("*.deb")}
        # Reads them while the other tests build on them.
        cls.told = pathlib.Path(cls.folder.name, "lintian.txt")
        with cls.told.open("w", encoding="utf-8") as told:
            cls.lintian = shutil.which("lintian") and subprocess.Popen(["lintian", *cls.files.values()], stdout=told,
                                                                       stderr=subprocess.DEVNULL)

    @classmethod
    def tearDownClass(cls):
        if cls.lintian:
            cls.lintian.wait()
        cls.folder.cleanup()

    def held(self, package):
        listed = subprocess.run(["dpkg-deb", "-c", self.files[package]], check=True, capture_output=True, text=True).stdout
        return [line.split(" ./", 1)[1].split(" -> ")[0] for line in listed.splitlines() if not line.endswith("/")]

    def has_window(self):
        return (house.build_root() / "bin" / "veltpalette").is_file()

    def test_are_one_for_each_use(self):
        window = {"veltpalette"} if self.has_window() else set()
        self.assertEqual({"libveltpropdata0", "libveltpropdata-dev", "veltprops"} | window, set(self.files))

    def test_have_the_window_in_one_of_its_own(self):
        if not self.has_window():
            self.skipTest("the window is not built")
        held = [name for name in self.held("veltpalette") if not name.startswith("usr/share/doc/")]
        self.assertEqual(["usr/bin/veltpalette", "usr/share/applications/veltpalette.desktop",
                          "usr/share/icons/hicolor/scalable/apps/veltpalette.svg", "usr/share/man/man1/veltpalette.1.gz"],
                         sorted(held))
        self.assertNotIn("qt6", subprocess.run(["dpkg-deb", "-f", self.files["veltprops"], "Depends"], check=True,
                                               capture_output=True, text=True).stdout)

    def test_part_the_layer_from_what_builds_on_it_and_from_the_tools(self):
        for name in self.held("libveltpropdata0"):
            self.assertRegex(name, r"^usr/lib/(.*/)?libVeltPropData\.so\.|^usr/share/(doc|lintian)/")
        for name in self.held("libveltpropdata-dev"):
            self.assertRegex(name, r"^usr/include/velt/|\.so$|/cmake/|/pkgconfig/|^usr/share/doc/libveltpropdata-dev/")
        tools = "\n".join(self.held("veltprops"))
        for part in (r"bin/veltprops$", r"velt/plugins/material\.so$", r"man1/veltprops-show\.1\.gz$", r"docs/plugins\.md$",
                     r"vendor-completions/_veltprops$", r"plugins/serial/Serial\.cpp$", r"velt/hosts/embedded-host\.so$"):
            self.assertTrue(re.search(part, tools, re.MULTILINE), part)

    def test_say_who_owns_them_and_what_changed(self):
        for package in self.files:
            names = self.held(package)
            self.assertIn(f"usr/share/doc/{package}/copyright", names)
            self.assertIn(f"usr/share/doc/{package}/changelog.gz", names)

    def test_find_the_layer_that_they_need(self):
        needs = subprocess.run(["dpkg-deb", "-f", self.files["veltprops"], "Depends"], check=True, capture_output=True,
                               text=True).stdout
        self.assertRegex(needs, r"libveltpropdata0 \(= ")

    def test_are_enough_to_build_on_and_to_check_a_host_with(self):
        root = pathlib.Path(self.folder.name) / "root"
        for package in self.files.values():
            subprocess.run(["dpkg-deb", "-x", package, root], check=True)
        libraries = next(root.rglob("libVeltPropData.so")).parent
        surroundings = {**os.environ, "LD_LIBRARY_PATH": str(libraries), "PKG_CONFIG_PATH": str(libraries / "pkgconfig")}

        def run(*command):
            done = subprocess.run(list(map(str, command)), cwd=root, env=surroundings, check=False, text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            self.assertEqual(0, done.returncode, done.stdout)
            return done.stdout

        def build(*arguments, packages):
            flags = run("pkg-config", "--cflags", "--libs", *packages).split()
            # In /usr the linker finds what a library needs of another; below a folder it has to be told.
            run(os.environ.get("VELT_CXX", "c++"), "-std=c++20", *arguments, *flags, f"-Wl,-rpath-link,{libraries}")

        check, examples = root / "usr/bin/velt-host-check", root / "usr/share/doc/veltpropdata/examples"
        run(root / "usr/bin/veltprops", "sample", "plan.dxf")
        with self.subTest("the embedded host"):
            self.assertIn(" 0 findings", run(check, "--host", libraries / "velt/hosts/embedded-host.so", "--document", "plan.dxf"))

        with self.subTest("palette.cpp"):
            build(examples / "palette.cpp", "-o", "palette", packages=["veltpalette", "veltembeddedhost"])
            self.assertRegex(run("./palette", "plan.dxf"), r"(?m)^  Layer: \*VARIES\*$")
        for name in ("save", "cancel"):
            with self.subTest(f"{name}.cpp"):
                build(examples / f"{name}.cpp", "-o", name, packages=["veltpalette", "veltembeddedhost"])
                run(f"./{name}", "plan.dxf", "Blue", f"{name}.dxf")
                self.assertRegex(run(root / "usr/bin/veltprops", "show", f"{name}.dxf", "--layer", "Walls"), r"(?m)^  Color +Blue")
        with self.subTest("plugins/material"):
            build(root / "usr/share/doc/veltpropdata/plugins/material/Material.cpp", "-fPIC", "-shared", "-o", "mine.so",
                  packages=["veltembeddedhost"])
            shown = run(root / "usr/bin/veltprops", "show", "plan.dxf", "--layer", "Doors", "--plugin", "./mine.so")
            self.assertRegex(shown, r"Material +Concrete")
        with self.subTest("minimal-host"):
            host = sorted((examples / "minimal-host").glob("*.cpp"))
            # Compiled once: with its palette it is a program, without it a host to be checked.
            build(*host, "-c", "-fPIC", packages=["veltpropdata"])
            objects = {f"{path.stem}.o" for path in host}
            build(*objects, "-o", "minimal_host", packages=["veltpropdata"])
            self.assertEqual(MinimalHostTest.SHOWN, run("./minimal_host"))
            run(os.environ.get("VELT_CXX", "c++"), *(objects - {"Palette.o"}), "-shared", "-o", "minimal-host.so")
            self.assertIn(" 0 findings", run(check, "--host", "minimal-host.so", 1, 2, 3))

    @unittest.skipUnless(shutil.which("lintian"), "lintian is not installed")
    def test_were_what_lintian_wants(self):  # by its name the last one
        self.lintian.wait()
        told = house.text_of(self.told)
        # Where a build for /usr/local has no folder of its own for each architecture.
        told = "".join(line for line in told.splitlines(True) if "pkg-config-unavailable-for-cross-compilation" not in line)
        self.assertEqual("", told)


if __name__ == "__main__":
    unittest.main()
