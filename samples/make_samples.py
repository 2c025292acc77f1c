#!/usr/bin/env python3
"""Writes the samples that the application opens and the demo plays with.

    make_samples.py <output folder>

wing_skin.stl   upper skin of a tapered, swept and twisted wing between front and rear spar, with one
                elliptical access cut-out; binary, millimetres, open surface with two border loops
contours.xml    closed outlines of three plies for that skin, millimetres, hovering above it
layup.xml       a layup of eight plies within those outlines, lying on the skin, two materials and a rosette
ribs.dxf        sheet-metal parts in millimetres: two ribs from one block, one of them mirrored, a bracket of lines
                and arcs, an elliptic doubler; holes, marks, texts and one entity that translations leave out
patches.svg     fabric patches in millimetres: curved outlines, rounded rectangles, holes and a transformed group

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


def dxf(*pairs):
    """Group codes and values, one after the other, as lines."""
    return "".join(f"{item}\n" for item in pairs)


def dxf_polyline(layer, *vertices):
    """Closed; vertices are (x, y) or (x, y, bulge)."""
    text = dxf(0, "LWPOLYLINE", 8, layer, 90, len(vertices), 70, 1)
    for x, y, *bulge in vertices:
        text += dxf(10, x, 20, y, 42, bulge[0] if bulge else 0)
    return text


def dxf_circle(layer, x, y, radius):
    return dxf(0, "CIRCLE", 8, layer, 10, x, 20, y, 40, radius)


def dxf_line(layer, x1, y1, x2, y2):
    return dxf(0, "LINE", 8, layer, 10, x1, 20, y1, 11, x2, 21, y2)


def dxf_arc(layer, x, y, radius, start, end):
    return dxf(0, "ARC", 8, layer, 10, x, 20, y, 40, radius, 50, start, 51, end)


def write_drawing(path):
    rib = dxf_polyline("0", (0, 0), (420, 0, 0.2), (420, 90), (300, 120, 0.12), (120, 120), (0, 80))
    rib += dxf_circle("0", 110, 58, 32) + dxf_circle("0", 220, 60, 28) + dxf_circle("0", 325, 56, 24)
    rib += dxf(0, "TEXT", 8, "etching data", 10, 30, 20, 15, 40, 12, 1, "RIB 4")
    bracket = dxf_line("cut", 520, 0, 640, 0) + dxf_arc("cut", 640, 20, 20, 270, 0) + dxf_line("cut", 660, 20, 660, 60)
    bracket += dxf_arc("cut", 600, 60, 60, 0, 90) + dxf_line("cut", 600, 120, 520, 120) + dxf_line("cut", 520, 120, 520, 0)
    bracket += dxf_polyline("cut", (545, 30), (585, 30, 1), (585, 50), (545, 50, 1))
    bracket += dxf_line("grain", 540, 80, 580, 80) + dxf(0, "POINT", 8, "cut", 10, 590, 20, 60)
    doubler = dxf(0, "ELLIPSE", 8, "cut", 10, 600, 20, 220, 11, 80, 21, 0, 40, 0.5, 41, 0, 42, 2 * math.pi)
    doubler += dxf_circle("cut", 600, 220, 15)
    text = dxf(0, "SECTION", 2, "HEADER", 9, "$ACADVER", 1, "AC1015", 9, "$INSUNITS", 70, 4, 0, "ENDSEC")
    text += dxf(0, "SECTION", 2, "TABLES", 0, "TABLE", 2, "LAYER", 70, 2)
    text += dxf(0, "LAYER", 2, "cut", 70, 0, 62, 5, 0, "LAYER", 2, "grain", 70, 0, 62, 3, 0, "ENDTAB", 0, "ENDSEC")
    text += dxf(0, "SECTION", 2, "BLOCKS", 0, "BLOCK", 8, "0", 2, "RIB", 70, 0, 10, 0, 20, 0)
    text += rib + dxf(0, "ENDBLK", 8, "0", 0, "ENDSEC", 0, "SECTION", 2, "ENTITIES")
    text += dxf(0, "INSERT", 2, "RIB", 8, "cut", 10, 0, 20, 0)
    text += dxf(0, "INSERT", 2, "RIB", 8, "cut", 10, 440, 20, 160, 41, -1)
    text += bracket + doubler + dxf(0, "ENDSEC", 0, "EOF")
    path.write_bytes(text.encode())


def write_patches(path):
    path.write_bytes(b"""<?xml version="1.0" encoding="UTF-8"?>
<svg xmlns="http://www.w3.org/2000/svg" width="400mm" height="300mm" viewBox="0 0 400 300">
 <g id="patches" fill="none" stroke="#2060a0">
  <path d="M20 60 C20 20 80 10 110 40 S170 80 180 40 L180 120 Q100 150 20 120 Z M60 70 a15 15 0 1 0 30 0 a15 15 0 1 0 -30 0 Z"/>
  <rect x="210" y="20" width="160" height="90" rx="18"/>
  <circle cx="290" cy="65" r="22"/>
  <g transform="translate(110 220) rotate(-15)">
   <ellipse rx="80" ry="45"/>
   <polygon points="-20,-10 20,-10 0,20"/>
  </g>
  <path d="M240 160 h120 a20 20 0 0 1 20 20 v60 a20 20 0 0 1 -20 20 h-120 z"/>
 </g>
 <g id="grain" stroke="#c03030"><line x1="255" y1="210" x2="355" y2="210"/></g>
</svg>
""")


def main():
    output = pathlib.Path(sys.argv[1])
    output.mkdir(parents=True, exist_ok=True)
    write_stl(output / "wing_skin.stl", "Zorvane sample: upper wing skin, millimetres", wing_skin())
    write_contours(output / "contours.xml")
    write_layup(output / "layup.xml")
    write_drawing(output / "ribs.dxf")
    write_patches(output / "patches.svg")


if __name__ == "__main__":
    main()
