"""Hatches that another program associated with their boundary follow it, and are as good to that program afterwards."""

import collections
import json
import math
import pathlib
import subprocess
import tempfile
import unittest

from whole_drawings import TOOL

try:
    import ezdxf
    import ezdxf.path
    import ezdxf.recover
except ImportError:
    ezdxf = None

SQUARE = [(0, 0), (40, 0), (40, 30), (0, 30)]


def hatched(modelspace, entity, make_path):
    hatch = modelspace.add_hatch(color=3)
    path = make_path(hatch.paths)
    hatch.associate(path, [entity])
    return hatch


def circle(modelspace):
    entity = modelspace.add_circle((5, 6, 0), 4)
    return entity, hatched(modelspace, entity, lambda paths: with_edge(paths, "add_arc", (5, 6), 4, 0, 360))


def circle_of_bulges(modelspace):
    entity = modelspace.add_circle((5, 6, 0), 4)
    return entity, hatched(modelspace, entity, lambda paths: paths.add_polyline_path([(1, 6, 1), (9, 6, 1)]))


def ellipse(modelspace):
    entity = modelspace.add_ellipse((5, 6, 0), (8, 6, 0), 0.5)
    return entity, hatched(modelspace, entity, lambda paths: with_edge(paths, "add_ellipse", (5, 6), (8, 6), 0.5))


def polyline(modelspace):
    entity = modelspace.add_lwpolyline(SQUARE, close=True)
    return entity, hatched(modelspace, entity, lambda paths: paths.add_polyline_path(SQUARE))


def rounded(modelspace):
    points = [(0, 0, 0.5), (40, 0, 0), (40, 30, -0.25), (0, 30, 0)]
    entity = modelspace.add_lwpolyline(points, format="xyb", close=True)
    return entity, hatched(modelspace, entity, lambda paths: paths.add_polyline_path(points))


def edges(modelspace):
    entity = modelspace.add_lwpolyline(SQUARE, close=True)

    def make(paths):
        path = paths.add_edge_path()
        for start, end in zip(SQUARE, SQUARE[1:] + SQUARE[:1]):
            path.add_line(end, start)
        return path

    return entity, hatched(modelspace, entity, make)


def heavy_polyline(modelspace):
    entity = modelspace.add_polyline2d(SQUARE, close=True)
    return entity, hatched(modelspace, entity, lambda paths: paths.add_polyline_path(SQUARE))


def with_edge(paths, method, *arguments):
    path = paths.add_edge_path()
    getattr(path, method)(*arguments)
    return path


# What is drawn, and what is written to it.
CASES = {
    circle: ["Radius=7", "Center X+=3", "Area=100"],
    circle_of_bulges: ["Diameter*=3", "Center Y=1"],
    ellipse: ["Major radius*=2", "Radius ratio=0.25", "Center X=40", "Area/=3"],
    polyline: ["Vertex[3].X=55", "Vertex[1].Y=-5"],
    rounded: ["Vertex[2].X+=10", "Vertex[4].Y=44.5"],
    edges: ["Vertex[1].X=-7", "Vertex[4].Y+=0.125"],
    heavy_polyline: ["Vertex[2].Y=-3"],
}


def area_of(hatch):
    """What the other program says that the hatch fills. It draws arcs by curves that are a little wider."""
    total = 0
    for path in ezdxf.path.from_hatch(hatch):
        points = list(path.flattening(0.0001, segments=64))
        total += abs(sum(a.x * b.y - b.x * a.y for a, b in zip(points, points[1:] + points[:1]))) / 2
    return total


def findings(drawing):
    _, auditor = ezdxf.recover.readfile(drawing)
    return collections.Counter(error.message.split("(")[0] for error in [*auditor.errors, *auditor.fixes])


def values_of(drawing, handle):
    shown = subprocess.run([TOOL, "show", drawing, "--handle", handle, "--json"], stdout=subprocess.PIPE, check=True)
    return {row["displayName"]: row["value"] for row in json.loads(shown.stdout)["rows"]}


@unittest.skipUnless(ezdxf, "python3-ezdxf is missing")
class FollowingHatches(unittest.TestCase):
    def test_are_what_their_boundary_is(self):
        with tempfile.TemporaryDirectory(prefix="velt-following-") as folder:
            for version in ("R2000", "R2018"):
                for make, assignments in CASES.items():
                    with self.subTest(version=version, make=make.__name__):
                        self.check(pathlib.Path(folder), version, make, assignments)

    def check(self, folder, version, make, assignments):
        document = ezdxf.new(version)
        entity, hatch = make(document.modelspace())
        drawing, saved = folder / "drawing.dxf", folder / "saved.dxf"
        document.saveas(drawing)
        before = area_of(hatch)
        run = subprocess.run([TOOL, "set", drawing, "--handle", entity.dxf.handle, *assignments, "-o", saved, "--force"],
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.assertEqual(run.returncode, 0, run.stdout.decode())
        after, _ = ezdxf.recover.readfile(saved)
        follower = after.entitydb[hatch.dxf.handle]
        area = values_of(saved, entity.dxf.handle)["Area"]
        self.assertNotAlmostEqual(before, area, places=1)
        self.assertTrue(math.isclose(area, values_of(saved, hatch.dxf.handle)["Area"], rel_tol=1e-12))
        self.assertTrue(math.isclose(area, area_of(follower), rel_tol=1e-3), (area, area_of(follower)))
        self.assertEqual(follower.dxf.associative, 1)
        self.assertEqual(list(follower.paths[0].source_boundary_objects), [entity.dxf.handle])
        self.assertEqual(findings(saved) - findings(drawing), collections.Counter())


if __name__ == "__main__":
    unittest.main()
