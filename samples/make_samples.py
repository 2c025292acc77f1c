#!/usr/bin/env python3
"""Writes the samples that the application opens and the demo plays with.

    make_samples.py <output folder>

wing_skin.stl   upper skin of a tapered, swept and twisted wing between front and rear spar, with one
                elliptical access cut-out; binary, millimetres, open surface with two border loops
contours.xml    closed outlines of three plies for that skin, millimetres, hovering above it
layup.xml       a layup of eight plies within those outlines, lying on the skin, two materials and a rosette

The same bytes on every run and machine: coordinates are rounded to 1/1024 mm before they are stored.
"""
import math
import pathlib
import struct
import sys

# The wing, millimetres.
HALF_SPAN = 6000.0
ROOT_CHORD = 2400.0
TIP_CHORD = 1100.0
SWEEP = math.radians(18.0)  # of the quarter-chord line
DIHEDRAL = math.radians(4.0)
TWIST = math.radians(-3.5)  # washout at the tip
THICKNESS = 0.14  # relative
CAMBER, CAMBER_POSITION = 0.02, 0.4  # relative
FRONT_SPAR, REAR_SPAR = 0.12, 0.65  # relative chord positions: the skin lies between them

# The grid: cells along the chord and along the span, and the block of cells around the cut-out.
CHORD_CELLS, SPAN_CELLS = 28, 100
BLOCK = (10, 18, 30, 38)  # first and last grid line along the chord, then along the span
RINGS = 4
HOLE = 0.45  # semi-axes of the cut-out relative to the half block

PLY_HEIGHT = 20.0  # of the ply outlines over the skin, millimetres


def upper_side(x):
    """Height of the upper side over the chord line at the relative chord position x (4-digit section)."""
    half = 5 * THICKNESS * (0.2969 * math.sqrt(x) - 0.1260 * x - 0.3516 * x**2 + 0.2843 * x**3 - 0.1036 * x**4)
    m, p = CAMBER, CAMBER_POSITION
    if x < p:
        camber, slope = m / p**2 * (2 * p * x - x * x), 2 * m / p**2 * (p - x)
    else:
        camber, slope = m / (1 - p) ** 2 * (1 - 2 * p + 2 * p * x - x * x), 2 * m / (1 - p) ** 2 * (p - x)
    angle = math.atan(slope)
    return x - half * math.sin(angle), camber + half * math.cos(angle)


def wing_point(u, v):
    """Position at the chord parameter u and span parameter v, both 0 ... 1."""
    chord = ROOT_CHORD + (TIP_CHORD - ROOT_CHORD) * v
    x, z = upper_side(FRONT_SPAR + (REAR_SPAR - FRONT_SPAR) * u)
    x, z = (x - 0.25) * chord, z * chord
    twist = TWIST * v
    x, z = x * math.cos(twist) + z * math.sin(twist), z * math.cos(twist) - x * math.sin(twist)
    span = HALF_SPAN * v
    point = (x + span * math.tan(SWEEP), span, z + span * math.tan(DIHEDRAL))
    return tuple(round(c * 1024) / 1024 for c in point)


def block_ring():
    """Grid lines of the block's outline, counter-clockwise in (u, v), from its lower left corner."""
    i0, i1, j0, j1 = BLOCK
    ring = [(i, j0) for i in range(i0, i1)] + [(i1, j) for j in range(j0, j1)]
    return ring + [(i, j1) for i in range(i1, i0, -1)] + [(i0, j) for j in range(j1, j0, -1)]


def quads(a, b, c, d):
    return [(a, b, c), (a, c, d)]


def wing_skin():
    """Triangles as triples of points, normals upwards."""
    i0, i1, j0, j1 = BLOCK
    triangles = []
    for j in range(SPAN_CELLS):
        for i in range(CHORD_CELLS):
            if i0 <= i < i1 and j0 <= j < j1:
                continue
            corners = [(i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1)]
            triangles += quads(*[wing_point(k / CHORD_CELLS, m / SPAN_CELLS) for k, m in corners])

    center = ((i0 + i1) / 2, (j0 + j1) / 2)
    semi = ((i1 - i0) / 2 * HOLE, (j1 - j0) / 2 * HOLE)
    outer = block_ring()
    rings = []
    for r in range(RINGS + 1):
        t = r / RINGS
        ring = []
        for i, j in outer:
            angle = math.atan2((j - center[1]) / semi[1], (i - center[0]) / semi[0])
            inner = (center[0] + semi[0] * math.cos(angle), center[1] + semi[1] * math.sin(angle))
            u, v = (o + (k - o) * t for o, k in zip((i, j), inner))
            ring.append(wing_point(u / CHORD_CELLS, v / SPAN_CELLS))
        rings.append(ring)
    for outside, inside in zip(rings, rings[1:]):
        for k in range(len(outer)):
            n = (k + 1) % len(outer)
            triangles += quads(outside[k], outside[n], inside[n], inside[k])
    return triangles


def normal(a, b, c):
    p = [b[k] - a[k] for k in range(3)]
    q = [c[k] - a[k] for k in range(3)]
    n = (p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0])
    length = math.hypot(*n)
    return tuple(c / length for c in n)


def write_stl(path, title, triangles):
    data = bytearray(title.encode().ljust(80, b" ") + struct.pack("<I", len(triangles)))
    for triangle in triangles:
        data += struct.pack("<12fH", *normal(*triangle), *(c for point in triangle for c in point), 0)
    path.write_bytes(data)


def ellipse(center, semi, count):
    """Points (u, v) of an ellipse of the parameter plane, counter-clockwise."""
    angles = [2 * math.pi * k / count for k in range(count)]
    return [(center[0] + semi[0] * math.cos(a), center[1] + semi[1] * math.sin(a)) for a in angles]


def ply_outlines():
    """Name and parameter outline of every ply, without the repeated first point."""
    count = 48
    low, high = 0.06, 0.94
    side = [low + (high - low) * k / count for k in range(count)]
    cover = [(low, t) for t in side] + [(t, high) for t in side]
    cover += [(high, low + high - t) for t in side] + [(low + high - t, low) for t in side]
    i0, i1, j0, j1 = BLOCK
    cut_out = ((i0 + i1) / 2 / CHORD_CELLS, (j0 + j1) / 2 / SPAN_CELLS)
    return [
        ("Ply.1", cover[::-1]),
        ("Ply.2", ellipse((0.5, 0.72), (0.35, 0.18), count)),
        ("Ply.3", ellipse(cut_out, (0.22, 0.07), count)),
    ]


def write_contours(path):
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        '<Laminate NAME="Upper skin">',
        " <Units><Length>mm</Length></Units>",
        ' <Sequence NAME="Sequence.1">',
    ]
    for name, outline in ply_outlines():
        lines += [f'  <Ply NAME="{name}">', "   <OuterContour>"]
        for u, v in outline + outline[:1]:
            x, y, z = wing_point(u, v)
            lines.append(f"    <Pt>X={x} Y={y} Z={z + PLY_HEIGHT}</Pt>")
        lines += ["   </OuterContour>", "  </Ply>"]
    lines += [" </Sequence>", "</Laminate>"]
    path.write_bytes(("\n".join(lines) + "\n").encode())


MATERIALS = [  # name, type, thickness mm, density t/mm3, E1, E2, G12 MPa, v12
    ("Tape 194", "CFRP", 0.184, 1.58e-09, 135000, 9000, 4800, 0.31),
    ("Fabric 280", "GFRP", 0.25, 1.9e-09, 24000, 23500, 4100, 0.12),
]
STACK = [  # material, degrees, outlines: the outer boundary and holes
    (1, 45, "c1 c3"),
    (0, 0, "c1"),
    (0, -45, "c1"),
    (0, 90, "c2"),
    (0, 90, "c2"),
    (0, -45, "c1"),
    (0, 0, "c1"),
    (1, 45, "c1 c3"),
]


def write_layup(path):
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        '<layups version="1" length="mm" angle="deg" stress="MPa" density="t/mm3" permeability="m2">',
        "  <materials>",
    ]
    for i, (name, kind, thickness, density, e1, e2, g12, v12) in enumerate(MATERIALS):
        lines.append(
            f'    <material id="m{i + 1}" name="{name}" type="{kind}" thickness="{thickness}" density="{density}"'
            f' E1="{e1}" E2="{e2}" G12="{g12}" v12="{v12}"/>'
        )
    lines += ["  </materials>", '  <layup name="Upper skin" rosette="r1">']
    origin, along = wing_point(0.5, 0.1), wing_point(0.5, 0.9)
    direction = " ".join(str(b - a) for a, b in zip(origin, along))
    lines.append(
        f'    <rosette id="r1" name="Span" origin="{" ".join(map(str, origin))}" x="{direction}" normal="0 0 1"/>'
    )
    for i, (name, outline) in enumerate(ply_outlines()):
        lines += [f'    <contour id="c{i + 1}" name="{name}">', "      <points>"]
        lines += ["        " + " ".join(map(str, wing_point(u, v))) for u, v in outline + outline[:1]]
        lines += ["      </points>", "    </contour>"]
    lines.append('    <sequence name="Sequence.1">')
    for i, (material, angle, outlines) in enumerate(STACK):
        lines.append(
            f'      <ply name="P{i + 1}" material="m{material + 1}" angle="{angle}" boundaries="{outlines}"/>'
        )
    lines += ["    </sequence>", "  </layup>", "</layups>"]
    path.write_bytes(("\n".join(lines) + "\n").encode())


def main():
    output = pathlib.Path(sys.argv[1])
    output.mkdir(parents=True, exist_ok=True)
    write_stl(output / "wing_skin.stl", "Zorvane sample: upper wing skin, millimetres", wing_skin())
    write_contours(output / "contours.xml")
    write_layup(output / "layup.xml")


if __name__ == "__main__":
    main()
