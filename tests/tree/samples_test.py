#!/usr/bin/env python3
"""Tests of the sample generator: samples_test.py <folder of make_samples.py>."""
import collections
import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

GENERATOR = pathlib.Path(sys.argv.pop(1)) / "make_samples.py"


def generate():
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, GENERATOR, folder], check=True)
        return {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir()}


def height_over(triangle, x, y):
    """Height of the triangle at (x, y); None beside it."""
    (ax, ay, az), (bx, by, bz), (cx, cy, cz) = triangle[0:3], triangle[3:6], triangle[6:9]
    area = (bx - ax) * (cy - ay) - (by - ay) * (cx - ax)
    b = ((x - ax) * (cy - ay) - (y - ay) * (cx - ax)) / area
    c = ((bx - ax) * (y - ay) - (by - ay) * (x - ax)) / area
    if min(b, c, 1 - b - c) < 0:
        return None
    return az + b * (bz - az) + c * (cz - az)


class SamplesTest(unittest.TestCase):
    def test_same_bytes_on_every_run(self):
        self.assertEqual(generate(), generate())

    def test_wing_skin_is_an_oriented_sheet_with_one_hole(self):
        data = generate()["wing_skin.stl"]
        (count,) = struct.unpack_from("<I", data, 80)
        self.assertEqual(84 + 50 * count, len(data))
        sides = collections.Counter()
        for k in range(count):
            values = struct.unpack_from("<12f", data, 84 + 50 * k)
            self.assertGreater(values[2], 0, "the normal points upwards")
            corners = [values[3:6], values[6:9], values[9:12]]
            self.assertEqual(3, len(set(corners)))
            for side in range(3):
                sides[corners[side], corners[(side + 1) % 3]] += 1
        self.assertEqual({1}, set(sides.values()), "no two triangles run along a side in the same direction")

        following = {a: b for a, b in sides if (b, a) not in sides}
        self.assertEqual(2 * (28 + 100) + 32, len(following), "sides of the border")
        loops = 0
        while following:
            loops += 1
            point = next(iter(following))
            while point in following:
                point = following.pop(point)
        self.assertEqual(2, loops)

    def test_contours_are_closed_named_and_hover_above_the_skin(self):
        samples = generate()
        root = xml.etree.ElementTree.fromstring(samples["contours.xml"])
        self.assertEqual("mm", next(root.iter("Length")).text)
        plies = list(root.iter("Ply"))
        self.assertEqual(["Ply.1", "Ply.2", "Ply.3"], [ply.get("NAME") for ply in plies])

        data = samples["wing_skin.stl"]
        (count,) = struct.unpack_from("<I", data, 80)
        skin = [struct.unpack_from("<9f", data, 84 + 50 * k + 12) for k in range(count)]
        for ply in plies:
            contours = ply.findall("OuterContour")
            self.assertEqual(1, len(contours))
            points = [
                tuple(float(part.split("=")[1]) for part in element.text.split()) for element in contours[0].findall("Pt")
            ]
            self.assertGreater(len(points), 20)
            self.assertEqual(points[0], points[-1])
            self.assertEqual(len(points) - 1, len(set(points)), "no other point is repeated")
            for x, y, z in points[::4]:
                heights = [height for t in skin if (height := height_over(t, x, y)) is not None]
                if ply.get("NAME") != "Ply.3":  # around the cut-out
                    self.assertTrue(heights)
                for height in heights:
                    self.assertAlmostEqual(20, z - height, delta=3)

    def test_the_layup_is_a_symmetric_stack_on_the_skin(self):
        samples = generate()
        root = xml.etree.ElementTree.fromstring(samples["layup.xml"])
        self.assertEqual("1", root.get("version"))
        plies = [(ply.get("material"), ply.get("angle"), ply.get("boundaries")) for ply in root.iter("ply")]
        self.assertEqual(8, len(plies))
        self.assertEqual(plies, plies[::-1])
        known = {element.get("id") for element in root.iter() if element.get("id")}
        for material, _, boundaries in plies:
            self.assertLessEqual({material, "r1", *boundaries.split()}, known)

        contours = xml.etree.ElementTree.fromstring(samples["contours.xml"])
        outlines = [len(ply.findall("OuterContour/Pt")) for ply in contours.iter("Ply")]
        lines = [element.text.strip().splitlines() for element in root.iter("points")]
        self.assertEqual(outlines, [len(points) for points in lines])


if __name__ == "__main__":
    unittest.main()
