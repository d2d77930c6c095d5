"""Values of whole drawings agree with those of an independent reader, python3-ezdxf.

Compared is what both know: layer, color, line type and its scale, line weight, points, radii, angles, texts, styles,
scales, and lengths and areas where the other reader can compute them. Numbers agree within 1e-9 of their size.
"""

import json
import math
import pathlib
import subprocess
import sys
import tempfile
import unittest

from whole_drawings import TOOL, WholeDrawings

try:
    import ezdxf
    import ezdxf.recover
    from ezdxf.math import OCS, Vec3, ConstructionArc
except ImportError:
    ezdxf = None

# What a class has no row for, although the other reader tells it of all dimensions or block references.
MISSING = {(kind, label) for label, kinds in {
    "Precision": ["DimAngular", "Dim3PointAngular"], "Dim roundoff": ["DimAngular", "Dim3PointAngular"],
    "Alt scale factor": ["DimAngular", "Dim3PointAngular"], "Arrow size": ["DimOrdinate"],
    "Ext line extension": ["DimOrdinate", "DimRadial", "DimRadialLarge", "DimDiametric"],
    "Ext line offset": ["DimOrdinate", "DimRadial", "DimRadialLarge", "DimDiametric"],
    "Block": ["ExternalReference"]}.items() for kind in kinds}
COLORS = {0: "ByBlock", 1: "Red", 2: "Yellow", 3: "Green", 4: "Cyan", 5: "Blue", 6: "Magenta", 7: "White",
           256: "ByLayer"}


def degrees(angle):
    return math.radians(angle) % math.tau


class Expected(dict):
    """By label, as the palette shows them."""

    def point(self, label, point):
        for axis, value in zip("XYZ", Vec3(point)):
            self[f"{label} {axis}"] = value


def in_world(entity, point):
    return OCS(entity.dxf.get("extrusion", (0, 0, 1))).to_wcs(Vec3(point))


def general(entity, expected):
    dxf = entity.dxf
    if not dxf.is_supported("layer"):  # of a kind that it only carries along
        return
    expected["Layer"] = dxf.get("layer", "0").casefold()
    expected["Linetype scale"] = dxf.get("ltscale", 1.0)
    linetype = dxf.get("linetype", "ByLayer").casefold()
    expected["Linetype"] = linetype
    if not dxf.hasattr("true_color"):
        index = dxf.get("color", 256)
        expected["Color"] = COLORS.get(index, str(index))
    elif not dxf.hasattr("color_name"):
        expected["Color"] = ",".join(str(part) for part in entity.rgb)
    expected["Lineweight"] = dxf.get("lineweight", -1)


def line(entity, expected):
    expected.point("Start", entity.dxf.start)
    expected.point("End", entity.dxf.end)
    expected["Length"] = entity.dxf.start.distance(entity.dxf.end)
    expected["Thickness"] = entity.dxf.get("thickness", 0.0)


def point(entity, expected):
    expected.point("Position", entity.dxf.location)


def circle(entity, expected):
    expected.point("Center", in_world(entity, entity.dxf.center))
    expected["Radius"] = entity.dxf.radius
    expected["Area"] = math.pi * entity.dxf.radius ** 2
    expected["Circumference"] = math.tau * entity.dxf.radius


def arc(entity, expected):
    expected.point("Center", in_world(entity, entity.dxf.center))
    expected["Radius"] = entity.dxf.radius
    expected["Start angle"] = degrees(entity.dxf.start_angle)
    expected["End angle"] = degrees(entity.dxf.end_angle)
    expected.point("Start", entity.start_point)
    expected.point("End", entity.end_point)
    sweep = (entity.dxf.end_angle - entity.dxf.start_angle) % 360.0 or 360.0
    expected["Arc length"] = math.radians(sweep) * entity.dxf.radius


def ellipse(entity, expected):
    expected.point("Center", entity.dxf.center)
    major = Vec3(entity.dxf.major_axis)
    expected.point("Major axis", major)
    expected["Major radius"] = major.magnitude
    expected["Minor radius"] = major.magnitude * abs(entity.dxf.ratio)
    expected["Radius ratio"] = entity.dxf.ratio
    expected.point("Minor axis", entity.minor_axis)


def lwpolyline(entity, expected):
    expected["Closed"] = entity.closed
    expected["Elevation"] = entity.dxf.get("elevation", 0.0)
    points = list(entity.get_points("xyb"))
    ends = points[1:] + (points[:1] if entity.closed else [])
    length = 0.0
    for (x1, y1, bulge), (x2, y2, _) in zip(points, ends):
        chord = math.hypot(x2 - x1, y2 - y1)
        if chord == 0.0:
            continue
        if bulge == 0.0:
            length += chord
        else:
            angle = 4.0 * math.atan(abs(bulge))
            length += angle * chord / 2.0 / math.sin(angle / 2.0)
    if points:
        expected["Length"] = length


def text(entity, expected):
    dxf = entity.dxf
    expected["Height"] = dxf.height
    expected["Rotation"] = degrees(dxf.get("rotation", 0.0))
    expected["Width factor"] = dxf.get("width", 1.0)
    expected["Style"] = dxf.get("style", "Standard").casefold()
    expected.point("Position", in_world(entity, dxf.insert))
    if "%%" not in dxf.text and "\\" not in dxf.text and "^" not in dxf.text:
        expected["Contents"] = dxf.text


def mtext(entity, expected):
    dxf = entity.dxf
    expected["Text height"] = dxf.char_height
    expected["Defined width"] = dxf.get("width", 0.0)
    expected["Style"] = dxf.get("style", "Standard").casefold()
    expected["Line space factor"] = dxf.get("line_spacing_factor", 1.0)
    expected.point("Position", dxf.insert)


def insert(entity, expected):
    dxf = entity.dxf
    expected.point("Position", in_world(entity, dxf.insert))
    expected["Scale X"] = dxf.get("xscale", 1.0)
    expected["Scale Y"] = dxf.get("yscale", 1.0)
    expected["Scale Z"] = dxf.get("zscale", 1.0)
    expected["Rotation"] = degrees(dxf.get("rotation", 0.0))
    expected["Block"] = dxf.name.casefold()


def face(entity, expected):
    for number in range(4):
        expected.point(f"Corner {number + 1}", entity.dxf.get(f"vtx{number}"))


def solid(entity, expected):
    for number in range(4):
        expected.point(f"Corner {number + 1}", in_world(entity, entity.dxf.get(f"vtx{number}")))


def ray(entity, expected):
    expected.point("Base point", entity.dxf.start)
    expected.point("Direction vector", Vec3(entity.dxf.unit_vector).normalize())


def spline(entity, expected):
    expected["Degree"] = entity.dxf.degree
    expected["Number of control points"] = entity.control_point_count()
    expected["Number of fit points"] = entity.fit_point_count()
    expected["Closed"] = entity.closed


def viewport(entity, expected):
    expected.point("Center", entity.dxf.center)
    expected["Height"] = entity.dxf.height
    expected["Width"] = entity.dxf.width


def image(entity, expected):
    expected.point("Position", entity.dxf.insert)


def dimension(entity, expected):
    style = entity.override()
    for label, variable in (("Arrow size", "dimasz"), ("Text height", "dimtxt"), ("Dim scale overall", "dimscale"),
                            ("Ext line offset", "dimexo"), ("Ext line extension", "dimexe"),
                            ("Dim line color", "dimclrd"), ("Text color", "dimclrt"), ("Precision", "dimdec"),
                            ("Dim roundoff", "dimrnd"), ("Tolerance limit upper", "dimtp"),
                            ("Tolerance limit lower", "dimtm"), ("Alt scale factor", "dimaltf")):
        if style.get(variable) is not None:
            expected[label] = style.get(variable)
    expected["Text override"] = entity.dxf.get("text", "")
    expected.point("Text position", in_world(entity, entity.dxf.get("text_midpoint", (0, 0, 0))))


def multileader(entity, expected):
    expected["Overall scale"] = entity.context.scale
    expected["Arrowhead size"] = entity.context.arrow_head_size
    expected["Leader count"] = len(entity.context.leaders)
    expected["Landing distance"] = entity.dxf.dogleg_length
    if entity.context.mtext:
        expected["Contents"] = entity.context.mtext.default_content
        expected.point("Text position", entity.context.mtext.insert)


def tolerance(entity, expected):
    expected["Contents"] = entity.dxf.content
    expected.point("Position", entity.dxf.insert)


def mline(entity, expected):
    expected["Scale"] = entity.dxf.scale_factor
    expected.point("Vertex", entity.vertices[0].location)


def shape(entity, expected):
    expected["Name"] = entity.dxf.name
    expected["Size"] = entity.dxf.size
    expected.point("Position", in_world(entity, entity.dxf.insert))


def polyline(entity, expected):
    expected["Closed"] = entity.is_closed
    if entity.is_polygon_mesh:
        expected["M vertex count"], expected["N vertex count"] = entity.dxf.m_count, entity.dxf.n_count
        expected["M closed"], expected["N closed"] = entity.is_m_closed, entity.is_n_closed
        del expected["Closed"]
    elif entity.is_poly_face_mesh:
        vertices = [vertex for vertex in entity.vertices if vertex.is_poly_face_mesh_vertex]
        expected["Number of vertices"] = len(vertices)
        expected["Number of faces"] = len([vertex for vertex in entity.vertices if vertex.is_face_record])
        del expected["Closed"]
    elif entity.is_2d_polyline:
        expected["Elevation"] = Vec3(entity.dxf.get("elevation", (0, 0, 0))).z
        # Where segments have widths of their own, the other reader tells the one of those that have none.
        has_own = any(vertex.dxf.hasattr("start_width") or vertex.dxf.hasattr("end_width") for vertex in entity.vertices)
        width = entity.dxf.get("default_start_width", 0.0)
        if not has_own and width == entity.dxf.get("default_end_width", 0.0):
            expected["Global width"] = width
        expected["Thickness"] = entity.dxf.get("thickness", 0.0)
    if entity.vertices and not entity.dxf.flags & 6:
        first = entity.vertices[0].dxf.location
        expected["Vertex X"], expected["Vertex Y"] = first.x, first.y
        if not entity.is_2d_polyline:
            expected["Vertex Z"] = first.z


def mesh(entity, expected):
    expected["Smoothness"] = entity.dxf.subdivision_levels
    expected["Number of vertices"] = len(entity.vertices)
    expected["Number of faces"] = len(entity.faces)
    expected.point("Vertex", entity.vertices[0])


def underlay(entity, expected):
    dxf = entity.dxf
    expected.point("Position", dxf.insert)
    expected["Scale X"], expected["Scale Y"] = dxf.get("scale_x", 1.0), dxf.get("scale_y", 1.0)
    expected["Rotation"] = degrees(dxf.get("rotation", 0.0))
    expected["Contrast"], expected["Fade"] = dxf.get("contrast", 100), dxf.get("fade", 0)
    expected["Show underlay"], expected["Monochrome"] = bool(entity.on), bool(entity.monochrome)
    if entity.boundary_path:  # without one the other reader takes the flag for none
        expected["Show clipped"] = bool(entity.clipping)


def hatch(entity, expected):
    if entity.dxf.solid_fill:
        return
    expected["Angle"] = degrees(entity.dxf.get("pattern_angle", 0.0))
    if entity.dxf.pattern_type != 0:
        expected["Scale"] = entity.dxf.get("pattern_scale", 1.0)
        expected["Pattern name"] = entity.dxf.pattern_name
    else:
        expected["Double"] = bool(entity.dxf.get("pattern_double", 0))
    expected["Associative"] = bool(entity.dxf.get("associative", 0))


def leader(entity, expected):
    expected["Hook line"] = bool(entity.dxf.get("has_hookline", 0))
    expected["Dim style"] = entity.dxf.get("dimstyle", "Standard")
    if entity.vertices:
        expected.point("Vertex", entity.vertices[0])


READERS = {"POLYLINE": polyline, "MESH": mesh, "PDFUNDERLAY": underlay, "HATCH": hatch, "LEADER": leader,
           "DIMENSION": dimension, "ARC_DIMENSION": dimension, "LARGE_RADIAL_DIMENSION": dimension,
           "MULTILEADER": multileader, "TOLERANCE": tolerance, "MLINE": mline, "SHAPE": shape,
           "LINE": line, "POINT": point, "CIRCLE": circle, "ARC": arc, "ELLIPSE": ellipse, "LWPOLYLINE": lwpolyline,
           "TEXT": text, "MTEXT": mtext, "INSERT": insert, "3DFACE": face, "SOLID": solid, "TRACE": solid, "RAY": ray,
           "XLINE": ray, "SPLINE": spline, "VIEWPORT": viewport, "IMAGE": image}


def agree(ours, theirs, label):
    if isinstance(theirs, bool) or isinstance(ours, bool):
        return bool(ours) == bool(theirs)
    if isinstance(theirs, (int, float)) and isinstance(ours, (int, float)):
        if label.lower().endswith(("angle", "rotation")):
            away = abs(ours - theirs) % math.tau
            return min(away, math.tau - away) <= 1e-9
        return abs(ours - theirs) <= 1e-9 * max(1.0, abs(theirs))
    if isinstance(ours, str) and label in ("Layer", "Linetype", "Style", "Block"):
        return ours.casefold() == theirs
    return ours == theirs


@unittest.skipUnless(ezdxf, "python3-ezdxf is not installed")
class IndependentReader(unittest.TestCase):
    def test_values_agree(self):
        drawings = WholeDrawings()
        self.addCleanup(drawings.close)
        compared = 0
        missing = set()
        for drawing in drawings:
            with self.subTest(drawing.name):
                document, _ = ezdxf.recover.readfile(drawing)
                listed = json.loads(subprocess.run(
                    [TOOL, "list", drawing, "--in-blocks", "--json", "--values"], stdout=subprocess.PIPE,
                    check=True).stdout)
                different = []
                for entity in listed["entities"]:
                    theirs = document.entitydb.get(entity["handle"])
                    if theirs is None or theirs.dxftype() != entity["type"] or not theirs.dxf.is_supported("layer"):
                        continue  # not an entity that it understands
                    expected = Expected()
                    general(theirs, expected)
                    READERS.get(entity["type"], lambda *_: None)(theirs, expected)
                    values = {}
                    for value in entity["values"]:
                        values.setdefault(value["displayName"], value["value"])
                    for label, wanted in expected.items():
                        if label not in values:
                            missing.add((entity["class"], label))
                            continue
                        compared += 1
                        if not agree(values[label], wanted, label):
                            different.append(f"{entity['type']} {entity['handle']} {label}: "
                                             f"{values[label]!r}, the other reader has {wanted!r}")
                self.assertEqual(different[:20], [], f"{len(different)} differ")
        print(f"{compared} values compared")
        self.assertGreater(compared, 0)
        self.assertLessEqual(missing, MISSING)


# Texts that are hard to hold: other scripts, characters beyond the first 65,536, and what reads as a code.
TEXTS = ("T\u00fcr", "\u0416", "\u8868", "\U0001f600", "a\U00020000b", "\\U+00E9", "\\U+005CU+0041",
         "\\M+182A0", "back\\slash\\", "\\\u00e9", "%%c5", "\ufffd", "  blanks  ")


@unittest.skipUnless(ezdxf, "python3-ezdxf is not installed")
class TextsThatAreWritten(unittest.TestCase):
    """Either the other reader finds the same text, or it was refused and nothing was written."""

    def written(self, folder, version, encoding, text):
        """The text as both readers find it; None when it was refused."""
        document = ezdxf.new(version)
        document.encoding = encoding
        document.modelspace().add_text("old")
        document.modelspace().add_mtext("old")
        drawing, saved = folder / "drawing.dxf", folder / "saved.dxf"
        document.saveas(drawing)
        run = subprocess.run([TOOL, "set", drawing, "--all", f"Contents={text}", "-o", saved, "--force"],
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        if run.returncode != 0:
            return None
        read, _ = ezdxf.recover.readfile(saved)
        ours = json.loads(subprocess.run([TOOL, "show", saved, "--all", "--json"], stdout=subprocess.PIPE,
                                         check=True).stdout)
        return {entity.dxf.text if entity.dxftype() == "TEXT" else entity.text for entity in read.modelspace()} | {
            row["value"] for row in ours["rows"] if row["displayName"] == "Contents"}

    def test_come_back_or_are_refused(self):
        with tempfile.TemporaryDirectory() as folder:
            for version, encoding in (("R2000", "cp1252"), ("R2004", "cp932"), ("R2000", "gbk"), ("R2007", "utf8"),
                                      ("R2018", "utf8")):
                for text in TEXTS:
                    with self.subTest(version=version, encoding=encoding, text=text):
                        found = self.written(pathlib.Path(folder), version, encoding, text)
                        if encoding != "utf8" and any(ord(character) > 0xffff for character in text):
                            self.assertIsNone(found)
                        else:
                            self.assertEqual(found, {text})


if __name__ == "__main__":
    if not ezdxf:
        print("skipped: python3-ezdxf is missing")
        sys.exit(77)
    unittest.main()
