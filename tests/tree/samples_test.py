#!/usr/bin/env python3
"""Tests of the sample generator: samples_test.py <folder of make_samples.py>."""
import collections
import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest

GENERATOR = pathlib.Path(sys.argv.pop(1)) / "make_samples.py"


def generate():
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, GENERATOR, folder], check=True)
        return {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir()}


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


if __name__ == "__main__":
    unittest.main()
