#!/usr/bin/env python3
"""Writes the example head and its shapes as OBJ files into examples/meshes.

    python3 examples/makeHead.py            write the meshes
    python3 examples/makeHead.py --check    compare the files with a fresh run and test the properties the examples rely on

Frame: y up, z forward, x = 0 is the symmetry plane, +x is the character's left; the head is 20 units high. The left half is
modelled and mirrored after rounding, so partners agree in every written digit. Vertices, faces and the first corner of each
face are then shuffled with a fixed seed: no index says anything about the side it is on. All files share one topology.
"""

import math
import random
import sys
from pathlib import Path

kMeshFolder = Path(__file__).resolve().parent / "meshes"
kDecimals = 5
kSeed = 20250

# Front profile height of each row from neck to crown, as seen on the plane; the last row is the pole.
kRowHeights = (-10.0, -9.1, -8.3, -7.6, -7.2, -7.0, -6.75, -6.25, -5.6, -5.05, -4.5, -3.9, -3.3, -2.75, -2.3, -1.9, -1.45, -0.9, -0.3,
               0.3, 1.0, 1.7, 2.4, 3.05, 3.6, 4.4, 5.3, 6.3, 7.3, 8.2, 9.0, 9.6, 10.0)

# Degrees around the head of each column, from the front of the plane to its back; dense on the face and at the ear.
kColumnAngles = (0.0, 3.7, 7.4, 11.4, 16.2, 21.5, 27.2, 33.0, 39.2, 46.5, 55.0, 64.5, 75.0, 86.0, 94.0, 102.0, 113.0, 126.0, 140.0,
                 153.0, 167.0, 180.0)

# Row, front z, side height, side half width, side z, back height, back z; rows between are interpolated.
kSections = (
    (0, 1.7, -10.0, 3.3, -1.7, -10.0, -5.2),
    (2, 1.8, -8.2, 3.2, -1.7, -8.1, -5.1),
    (3, 2.4, -7.2, 3.25, -1.6, -7.0, -5.1),
    (4, 3.7, -6.4, 3.5, -1.3, -6.3, -5.3),
    (5, 4.9, -5.8, 3.9, -1.0, -5.7, -5.6),
    (6, 5.8, -5.2, 4.3, -0.8, -5.1, -5.9),
    (7, 6.2, -4.6, 4.65, -0.6, -4.5, -6.2),
    (9, 6.1, -3.6, 5.05, -0.5, -3.3, -6.8),
    (11, 6.3, -2.6, 5.35, -0.5, -2.0, -7.3),
    (14, 6.35, -1.2, 5.7, -0.5, -0.3, -7.9),
    (18, 6.25, 0.3, 5.95, -0.6, 1.2, -8.3),
    (21, 6.2, 2.0, 6.05, -0.7, 2.8, -8.4),
    (24, 6.5, 3.7, 6.1, -0.8, 4.2, -8.2),
    (26, 6.3, 5.3, 6.0, -0.9, 5.5, -7.8),
    (28, 5.4, 7.2, 5.35, -0.9, 7.2, -6.7),
    (30, 3.2, 8.9, 3.75, -0.9, 8.9, -4.6),
    (31, 1.6, 9.55, 2.35, -0.9, 9.55, -3.1),
    (32, -0.8, 10.0, 0.0, -0.8, 10.0, -0.8),
)

# Grid blocks (first row, last row, first column, last column) that give way to concentric rings.
kMouthBlock = (9, 13, 0, 6)
kEyeBlock = (19, 23, 2, 8)
kEarBlock = (17, 22, 13, 15)

kEyeCentre = (2.36, 1.65, 3.75)
kEyeRadius = 1.45
kLidRadius = 1.66
kLidHalfWidth = 1.2
kMouthHeight = -3.85


class HalfMesh:
    """The half with x >= 0. Vertices with x == 0 are shared with the mirrored half; all other shells lie fully in x > 0."""

    def __init__(self):
        self.points = []
        self.faces = []
        self.headCount = 0  # vertices before this number belong to the head shell
        self.lidAngles = {}  # vertex -> radians it turns about the eyeball's x axis until the eye is closed

    def add(self, point):
        self.points.append(point)
        return len(self.points) - 1

    def bridge(self, outer, inner, closed):
        """Joins two rings of equal length with quads; both run counter-clockwise as seen from outside."""
        for k in range(len(outer) if closed else len(outer) - 1):
            n = (k + 1) % len(outer)
            self.faces.append((outer[k], outer[n], inner[n], inner[k]))


def lerp(a, b, t):
    return a + (b - a) * t


def lerpPoint(a, b, t):
    return tuple(lerp(p, q, t) for p, q in zip(a, b))


def smoothStep(low, high, value):
    t = min(max((value - low) / (high - low), 0.0), 1.0)
    return t * t * (3.0 - 2.0 * t)


def bump(x, y, centre, radii):
    """1 at the centre, falling off like a Gaussian of the given radii."""
    return math.exp(-((x - centre[0]) / radii[0]) ** 2 - ((y - centre[1]) / radii[1]) ** 2)


def interpolate(keys, values, at):
    """Cubic through (key, value) pairs with non-uniform keys; slopes are those of the neighbouring chord."""
    i = 0
    while i < len(keys) - 2 and at >= keys[i + 1]:
        i += 1

    def slope(k):
        a, b = max(k - 1, 0), min(k + 1, len(keys) - 1)
        return (values[b] - values[a]) / (keys[b] - keys[a])

    span = keys[i + 1] - keys[i]
    t = (at - keys[i]) / span
    return ((1 + 2 * t) * (1 - t) ** 2 * values[i] + t * (1 - t) ** 2 * span * slope(i)
            + t * t * (3 - 2 * t) * values[i + 1] + t * t * (t - 1) * span * slope(i + 1))


def skull(row, column):
    """Point of the featureless head at a fractional row and column."""
    keys = [s[0] for s in kSections]
    frontZ, sideY, width, sideZ, backY, backZ = (interpolate(keys, [s[k] for s in kSections], row) for k in range(1, 7))
    frontY = interpolate(range(len(kRowHeights)), kRowHeights, row)
    angle = math.radians(interpolate(range(len(kColumnAngles)), kColumnAngles, column))
    c = math.cos(angle)

    def across(front, side, back):
        return side + (front - back) / 2 * c + ((front + back) / 2 - side) * c * c

    return (width * math.sin(angle), across(frontY, sideY, backY), across(frontZ, sideZ, backZ))


def features(x, y):
    """How far the face stands out of the skull towards +z at a frontal position."""
    bridge = interpolate((-3.0, -2.35, -2.05, -1.4, 0.0, 1.5, 2.8, 4.0), (0.0, 0.15, 0.9, 1.95, 1.35, 0.7, 0.3, 0.0), min(max(y, -3.0), 4.0))
    halfWidth = interpolate((-3.0, -1.6, 0.0, 1.5, 4.0), (0.95, 0.95, 0.75, 0.72, 1.3), min(max(y, -3.0), 4.0))
    nose = bridge * math.exp(-abs(x / halfWidth) ** 2.4)
    return (nose + 0.5 * bump(x, y, (1.0, -1.75), (0.38, 0.42))
            - 0.75 * bump(x, y, (2.3, 1.6), (1.5, 1.15))
            + 0.5 * bump(x, y, (2.3, 3.45), (1.9, 0.7))
            + 0.5 * bump(x, y, (3.6, -0.7), (1.5, 1.1))
            + 0.5 * bump(x, y, (0.0, -3.9), (2.1, 1.6))
            - 0.35 * bump(x, y, (0.0, -5.15), (1.4, 0.4))
            + 0.55 * bump(x, y, (0.0, -6.2), (1.3, 0.75))
            - 0.3 * bump(x, y, (3.4, -3.2), (1.2, 1.4)))


def dressed(point):
    x, y, z = point
    return (x, y, z + features(x, y) * smoothStep(0.5, 3.5, z))


def faceDepth(x, y):
    """z of the face at a frontal position: Newton's method on the skull's row and column, then the features."""
    row, column, step = 20.0, 5.0, 1e-4
    for _ in range(40):
        p, pr, pc = skull(row, column), skull(row + step, column), skull(row, column + step)
        a, b = (pr[0] - p[0]) / step, (pc[0] - p[0]) / step
        c, d = (pr[1] - p[1]) / step, (pc[1] - p[1]) / step
        ex, ey, det = x - p[0], y - p[1], a * d - b * c
        row = min(max(row + (ex * d - b * ey) / det, 3.0), 30.0)
        column = min(max(column + (a * ey - c * ex) / det, 0.0), 13.0)
    return dressed(skull(row, column))[2]


def insideBlock(block, row, column):
    return block[0] < row < block[1] and block[2] < column < block[3]


def buildGrid(half):
    """Rows of quads from the neck to a fan at the crown, with the blocks left out. Returns vertex numbers by row and column."""
    rows, columns = len(kRowHeights) - 1, len(kColumnAngles)
    grid = {}
    for row in range(rows):
        for column in range(columns):
            inMouth = kMouthBlock[0] < row < kMouthBlock[1] and column < kMouthBlock[3]
            if inMouth or insideBlock(kEyeBlock, row, column) or insideBlock(kEarBlock, row, column):
                continue
            x, y, z = dressed(skull(row, column))
            grid[row, column] = half.add((0.0 if column in (0, columns - 1) else x, y, z))
    pole = half.add((0.0,) + skull(rows, 0)[1:])
    for row in range(rows):
        for column in range(columns - 1):
            if any(b[0] <= row < b[1] and b[2] <= column < b[3] for b in (kMouthBlock, kEyeBlock, kEarBlock)):
                continue
            if row == rows - 1:
                half.faces.append((grid[row, column], grid[row, column + 1], pole))
            else:
                half.faces.append((grid[row, column], grid[row, column + 1], grid[row + 1, column + 1], grid[row + 1, column]))
    return grid


def blockRim(block):
    """Grid positions on the rim of a block, counter-clockwise from its lower first corner."""
    low, high, left, right = block
    return ([(low, c) for c in range(left, right)] + [(r, right) for r in range(low, high)]
            + [(high, c) for c in range(right, left, -1)] + [(r, left) for r in range(high, low, -1)])


def capBlock(half, block, ring, openSide):
    """Closes the innermost ring of a block with the quads that the block had; openSide: the first column lies on the plane."""
    low, high, left, right = block
    # The ring of a block on the plane ends at its upper first corner, before the rim's last side.
    ids = dict(zip(blockRim(block), ring))
    for c in range(left if openSide else left + 1, right):
        bottom, top = half.points[ids[low, c]], half.points[ids[high, c]]
        for r in range(low + 1, high):
            ids[r, c] = half.add(lerpPoint(bottom, top, (r - low) / (high - low)))
    for r in range(low, high):
        for c in range(left, right):
            half.faces.append((ids[r, c], ids[r, c + 1], ids[r + 1, c + 1], ids[r + 1, c]))


def lidRing(outer, share):
    """One ring of the eyelids; share is 0 on the rim of the socket and 1 on the lid edge."""
    cx, cy, cz = kEyeCentre
    count = len(outer)
    ring = []
    for k, rim in enumerate(outer):
        a = 2.0 * math.pi * k / count
        height = 0.5 if k < count // 2 else 0.78
        edge = (cx - kLidHalfWidth * math.cos(a), cy - height * math.sin(a) - 0.09 * math.cos(a))
        x, y = lerp(rim[0], edge[0], share), lerp(rim[1], edge[1], share)
        ball = cz + math.sqrt(max(kLidRadius ** 2 - (x - cx) ** 2 - (y - cy) ** 2, 0.0))
        crease = 0.16 * bump(share, 0.0, (0.45, 0.0), (0.16, 1.0)) * max(-math.sin(a), 0.0)
        ring.append((x, y, lerp(rim[2], ball, smoothStep(0.0, 0.85, share)) - crease))
    return ring


def closingAngles(edgePoints):
    """Radians about the eyeball's x axis that bring each point of the open lid edge to the closed line, short of touching."""
    cx, cy, cz = kEyeCentre
    count = len(edgePoints)
    angles = []
    for k, (x, y, z) in enumerate(edgePoints):
        radius = math.hypot(y - cy, z - cz)
        across = math.sin(2.0 * math.pi * k / count)
        corner = 0.09 * (x - cx) / kLidHalfWidth
        line = cy + corner - 0.3 * across ** 2 + (0.04 if across < 0.0 else -0.04) * abs(across)
        angles.append(0.0 if k % (count // 2) == 0 else math.asin((line - cy) / radius) - math.atan2(y - cy, z - cz))
    return angles


def buildEyelids(half, grid):
    rim = blockRim(kEyeBlock)
    middle = rim.index(((kEyeBlock[0] + kEyeBlock[1]) // 2, kEyeBlock[2]))
    previous = [grid[p] for p in rim[middle:] + rim[:middle]]
    outer = [half.points[i] for i in previous]
    angles = closingAngles(lidRing(outer, 1.0))
    for share in (0.3, 0.58, 0.82, 1.0):
        ring = [half.add(p) for p in lidRing(outer, share)]
        half.bridge(previous, ring, True)
        half.lidAngles.update((i, angle * smoothStep(0.0, 1.0, share)) for i, angle in zip(ring, angles))
        previous = ring
    # The lids' thickness: the edge turned in towards the eyeball; it follows the edge.
    inner = [half.add(lerpPoint(half.points[i], kEyeCentre, 0.1)) for i in previous]
    half.bridge(previous, inner, True)
    half.lidAngles.update(zip(inner, angles))


def mouthRing(count, halfWidth, upper, lower, forward):
    """A ring of the lips: half width, heights above and below the mouth line, distance in front of the face."""
    ring = []
    for j in range(count):
        a = math.pi * j / (count - 1) - math.pi / 2
        # A cosine would crowd the vertices at the corner of the mouth.
        x, rise = halfWidth * (1.0 - abs(2.0 * j / (count - 1) - 1.0) ** 1.6), math.sin(a)
        bow = 0.13 * bump(x, 0.0, (0.0, 0.0), (0.3, 1.0)) * min(upper / 0.55, 1.0)
        line = kMouthHeight + 0.1 * (x / 1.8) ** 2
        y = line + ((upper * rise ** 0.95 - bow) if rise > 0 else -lower * (-rise) ** 0.95)
        fullness = forward * (1.0 - 0.75 * (x / 1.95) ** 2)
        ring.append((x, y, faceDepth(x, y) + fullness))
    return ring


def buildMouth(half, grid):
    """Skin, lips and the closed bag behind the slit, so that the plane's chain of edges runs through without a gap."""
    rim = blockRim(kMouthBlock)
    previous = [grid[p] for p in rim[:-(kMouthBlock[1] - kMouthBlock[0]) + 1]]
    outer = [half.points[i] for i in previous]
    count = len(previous)
    border = mouthRing(count, 1.85, 0.62, 0.72, 0.08)
    rings = [[lerpPoint(a, b, 0.55) for a, b in zip(outer, border)], border,
             mouthRing(count, 1.74, 0.34, 0.42, 0.36),
             mouthRing(count, 1.64, 0.12, 0.1, 0.16),
             mouthRing(count, 1.52, 0.16, 0.14, -0.35)]
    rings.append([(x * 0.97, kMouthHeight + (y - kMouthHeight) * 4.0, z - 0.9) for x, y, z in rings[-1]])
    for points in rings:
        ring = [half.add(p) for p in points]
        half.bridge(previous, ring, False)
        previous = ring
    capBlock(half, kMouthBlock, previous, True)


def buildEar(half, grid):
    """Rings that leave the side of the head, turn at the helix and come back to a shallow bowl."""
    previous = outer = [grid[p] for p in blockRim(kEarBlock)]
    count = len(previous)
    centre = tuple(sum(half.points[i][k] for i in previous) / count for k in range(3))
    # Outwards, height and depth radii, shift towards the back, share of the ellipse against the rim of the block.
    for out, tall, deep, back, share in ((0.35, 1.45, 0.72, 0.15, 0.65), (0.95, 1.95, 1.12, 0.65, 1.0), (1.05, 1.62, 0.82, 0.62, 1.0),
                                         (0.55, 1.15, 0.5, 0.35, 1.0)):
        ring = []
        for k in range(count):
            # The second vertex of the block's lower side is the lowest of the ear.
            a = 2.0 * math.pi * (k - 1) / count
            dy, dz = -math.cos(a), -math.sin(a)
            lobe = 1.0 - 0.3 * max(-dy, 0.0)
            flare = out * (0.45 + 0.55 * smoothStep(0.8, -0.6, dz))
            point = (centre[0] + flare, centre[1] + tall * dy, centre[2] + deep * lobe * dz - back - 0.22 * tall * dy)
            ring.append(half.add(lerpPoint(half.points[outer[k]], point, share)))
        half.bridge(previous, ring, True)
        previous = ring
    capBlock(half, kEarBlock, previous, False)


def buildEyeball(half, segments, rings):
    """A sphere with its poles on the line of sight."""
    cx, cy, cz = kEyeCentre
    front = half.add((cx, cy, cz + kEyeRadius))
    previous = None
    for r in range(1, rings):
        a = math.pi * r / rings
        ring = [half.add((cx + kEyeRadius * math.sin(a) * math.cos(2 * math.pi * (s + 0.5) / segments),
                          cy + kEyeRadius * math.sin(a) * math.sin(2 * math.pi * (s + 0.5) / segments),
                          cz + kEyeRadius * math.cos(a))) for s in range(segments)]
        if previous is None:
            half.faces.extend((front, ring[s], ring[(s + 1) % segments]) for s in range(segments))
        else:
            half.bridge(ring, previous, True)
        previous = ring
    back = half.add((cx, cy, cz - kEyeRadius))
    half.faces.extend((previous[(s + 1) % segments], previous[s], back) for s in range(segments))


def buildBrow(half, stations):
    """A tapering bar with a diamond-shaped section that floats in front of the brow ridge."""
    previous = None
    for s in range(stations):
        t = s / (stations - 1)
        x, y = lerp(1.0, 4.15, t), 3.25 + 0.75 * math.sin(math.pi * (0.12 + 0.68 * t))
        thick = 0.12 + 0.2 * math.sin(math.pi * (0.2 + 0.7 * t))
        z = faceDepth(x, y)
        ring = [half.add(p) for p in ((x, y - thick, z + 0.05), (x, y, z + 0.22 + 0.4 * thick), (x, y + thick, z + 0.05), (x, y, z - 0.12))]
        if previous is None:
            half.faces.append(tuple(ring))
        else:
            half.bridge(ring, previous, True)
        previous = ring
    half.faces.append(tuple(reversed(previous)))


def buildHalf():
    half = HalfMesh()
    grid = buildGrid(half)
    buildEyelids(half, grid)
    buildMouth(half, grid)
    buildEar(half, grid)
    half.headCount = len(half.points)
    buildEyeball(half, 14, 8)
    buildBrow(half, 8)
    half.points = [roundPoint(p) for p in half.points]
    return half


def roundPoint(point):
    # Adding zero turns a rounded -0.0 into 0.0, which would otherwise be written with its sign.
    return tuple(round(c, kDecimals) + 0.0 for c in point)


def blink(half, amount):
    """The lids at a share of their way: they turn about the eyeball, so half the way is not half of the closed shape."""
    points = list(half.points)
    _, cy, cz = kEyeCentre
    for i, angle in half.lidAngles.items():
        x, y, z = points[i]
        c, s = math.cos(angle * amount), math.sin(angle * amount)
        points[i] = roundPoint((x, cy + (y - cy) * c + (z - cz) * s, cz + (z - cz) * c - (y - cy) * s))
    return points


def smile(half):
    """The corner of the mouth goes up, out and back and the cheek swells; vertices on the plane stay."""
    points = list(half.points)
    for i in range(half.headCount):
        x, y, z = points[i]
        if z < 2.5:
            continue
        side = smoothStep(0.0, 2.0, x)
        pull = side * (1.0 - smoothStep(0.0, 2.6, math.hypot(x - 1.85, (y - kMouthHeight) * 1.1)))
        cheek = side * (1.0 - smoothStep(0.0, 1.9, math.hypot(x - 3.1, (y + 1.5) * 1.1)))
        points[i] = roundPoint((x + 0.5 * pull + 0.1 * cheek, y + 0.9 * pull + 0.2 * cheek, z - 0.3 * pull + 0.4 * cheek))
    return points


class Assembly:
    """The full mesh: the left half, the mirrored rest, and one fixed shuffle for all shapes."""

    def __init__(self, half):
        self.moved = [i for i, p in enumerate(half.points) if p[0] != 0.0]
        rng = random.Random(kSeed)
        mirrored = {i: len(half.points) + k for k, i in enumerate(self.moved)}
        faces = half.faces + [tuple(mirrored.get(i, i) for i in reversed(f)) for f in half.faces]
        self.order = list(range(len(half.points) + len(self.moved)))
        shuffle(self.order, rng)
        place = {old: new for new, old in enumerate(self.order)}
        shuffle(faces, rng)
        self.faces = []
        for face in faces:
            first = int(rng.random() * len(face))
            self.faces.append(tuple(place[i] for i in face[first:] + face[:first]))

    def points(self, left, right):
        """All points in file order, from half shapes for the two sides; the plane is taken from the left one."""
        both = left + [(-right[i][0],) + right[i][1:] for i in self.moved]
        return [both[i] for i in self.order]


def shuffle(items, rng):
    # Only random() itself is promised to give the same numbers in every version of Python.
    for i in range(len(items) - 1, 0, -1):
        k = int(rng.random() * (i + 1))
        items[i], items[k] = items[k], items[i]


def scan(points):
    """A capture of somebody: smooth lopsidedness plus fine noise on every vertex, also on the plane."""
    rng = random.Random(kSeed + 1)
    result = []
    for x, y, z in points:
        dx = 0.18 * math.sin(0.31 * y + 0.4) + 0.1 * math.sin(0.42 * x + 0.23 * z + 1.1)
        dy = 0.2 * math.sin(0.29 * x + 0.35) + 0.08 * math.sin(0.37 * z - 0.21 * y)
        dz = 0.22 * math.sin(0.26 * x + 0.19 * y + 0.8) - 0.1 * math.sin(0.33 * x)
        result.append(roundPoint(c + d + 0.016 * (rng.random() - 0.5) for c, d in zip((x, y, z), (dx, dy, dz))))
    return result


def makeShapes():
    """All shapes by file name, and the faces they share."""
    half = buildHalf()
    assembly = Assembly(half)
    neutral, closed, halfClosed, smiling = half.points, blink(half, 1.0), blink(half, 0.5), smile(half)
    head = assembly.points(neutral, neutral)
    return {
        "head.obj": head,
        "smileLeft.obj": assembly.points(smiling, neutral),
        "smileBoth.obj": assembly.points(smiling, smiling),
        "blinkHalf.obj": assembly.points(halfClosed, halfClosed),
        "blink.obj": assembly.points(closed, closed),
        "headScan.obj": scan(head),
    }, assembly.faces


def number(value):
    return f"{value:.{kDecimals}f}".rstrip("0").rstrip(".")


def objText(points, faces):
    lines = [f"v {number(x)} {number(y)} {number(z)}" for x, y, z in points]
    lines += ["f " + " ".join(str(i + 1) for i in face) for face in faces]
    return "\n".join(lines) + "\n"


def readObj(text):
    points, faces = [], []
    for line in text.splitlines():
        words = line.split()
        if words[0] == "v":
            points.append(tuple(words[1:]))
        else:
            faces.append(tuple(int(w) - 1 for w in words[1:]))
    return points, faces


def shells(count, faces):
    """Vertex lists of the connected parts, largest first."""
    parent = list(range(count))

    def root(i):
        while parent[i] != i:
            parent[i] = parent[parent[i]]
            i = parent[i]
        return i

    for face in faces:
        for i in face[1:]:
            parent[root(i)] = root(face[0])
    groups = {}
    for i in range(count):
        groups.setdefault(root(i), []).append(i)
    return sorted(groups.values(), key=len, reverse=True)


def mirrorPartners(points):
    """Partner of each vertex by the written digits, None where there is none."""
    index = {p: i for i, p in enumerate(points)}

    def flipped(word):
        return word if word == "0" else word[1:] if word[0] == "-" else "-" + word

    return [index.get((flipped(x), y, z)) for x, y, z in points]


def cornerNormals(points, face):
    for k in range(len(face)):
        a, b, c = (points[face[(k + n) % len(face)]] for n in (-1, 0, 1))
        u, v = [q - p for p, q in zip(a, b)], [q - p for p, q in zip(b, c)]
        yield (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])


def volume(points, faces):
    """Six times the signed volume between the faces and the origin of the first point; positive when they face outwards."""
    ox, oy, oz = points[faces[0][0]]
    total = 0.0
    for face in faces:
        corners = [(points[i][0] - ox, points[i][1] - oy, points[i][2] - oz) for i in face]
        for b, c in zip(corners[1:], corners[2:]):
            a = corners[0]
            total += a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) + a[2] * (b[0] * c[1] - b[1] * c[0])
    return total


def topologyFaults(points, faces, partners):
    """Faults of the neutral head's connectivity."""
    directed = [(face[k - 1], face[k]) for face in faces for k in range(len(face))]
    used = set(directed)
    if len(used) != len(directed):
        yield "an edge is used twice in one direction: not manifold, or the winding is not consistent"
    cycles = {frozenset(face) for face in faces}
    if any(frozenset(partners[i] for i in face) not in cycles for face in faces):
        yield "a face has no mirrored face"
    centre = {tuple(sorted(e)) for e in used if points[e[0]][0] == 0.0 and points[e[1]][0] == 0.0}
    if any((a, b) not in used or (b, a) not in used for a, b in centre):
        yield "an edge on the plane lacks a face on one side"
    degrees = [sum(i in e for e in centre) for i in range(len(points)) if points[i][0] == 0.0]
    if sorted(degrees) != [1, 1] + [2] * (len(degrees) - 2):
        yield "the plane's edges are not one open chain"
    if sum(len(face) == 3 for face in faces) > 0.06 * len(faces) or any(len(face) not in (3, 4) for face in faces):
        yield "the faces are not quads in the main"
    steps = [partners[i + 1] - partners[i] for i in range(len(partners) - 1)]
    if max(steps.count(s) for s in set(steps)) > 10:
        yield "the vertex order shows the mirroring"
    parts = shells(len(points), faces)
    sizes = [[len(p), sum(f[0] in set(p) for f in faces)] for p in parts]
    if len(parts) != 5 or sizes[1] != sizes[2] or sizes[3] != sizes[4] or sizes[2] == sizes[3]:
        yield f"the shells are not a head, two eyes and two brows: {sizes}"
    for part in parts:
        members = set(part)
        if volume(points, [f for f in faces if f[0] in members]) <= 0.0:
            yield "a shell faces inwards"
        if part is not parts[0] and min(points[i][0] for i in part) < 0.0 < max(points[i][0] for i in part):
            yield "an eye or a brow crosses the plane"


def geometryFaults(name, points, faces):
    """Faults that position-based tools would stumble over."""
    if name != "headScan.obj" and any(0.0 < abs(p[0]) < 0.05 for p in points):
        yield "a vertex is nearly on the plane"
    if min(math.dist(points[f[k - 1]], points[f[k]]) for f in faces for k in range(len(f))) < 0.045:
        yield "an edge is too short"
    if len(set(points)) != len(points):
        yield "two vertices coincide"
    bent = 0
    for face in faces:
        normals = list(cornerNormals(points, face))
        mean = [sum(n[k] for n in normals) for k in range(3)]
        bent += any(sum(p * q for p, q in zip(n, mean)) <= 0.0 for n in normals)
    # Lids that are shut pinch one quad in the outer corner of each eye.
    if bent > (2 if name == "blink.obj" else 0):
        yield f"{bent} faces are not convex"


def shapeFaults(shapes):
    """Faults in how the shapes differ from the neutral head and from each other."""
    head = shapes["head.obj"]
    moved = {name: [i for i, (p, q) in enumerate(zip(head, points)) if p != q] for name, points in shapes.items()}
    if any(head[i][0] <= 0.0 for i in moved["smileLeft.obj"]) or not 50 < len(moved["smileLeft.obj"]) < 400:
        yield f"smileLeft moves {len(moved['smileLeft.obj'])} vertices, or some that are not on the left"
    if len(moved["smileBoth.obj"]) != 2 * len(moved["smileLeft.obj"]):
        yield "smileBoth is not smileLeft on both sides"
    bow = max(math.dist(h, lerpPoint(p, q, 0.5)) for p, q, h in zip(head, shapes["blink.obj"], shapes["blinkHalf.obj"]))
    if moved["blink.obj"] != moved["blinkHalf.obj"] or bow < 0.05:
        yield f"blinkHalf stays within {bow:.3f} of half the way"
    if len(moved["headScan.obj"]) != len(head):
        yield "headScan leaves vertices where they were"


def check(texts):
    """All faults of the files on disk as lines of text; `texts` are the contents a fresh run gives."""
    stale = [name for name, text in texts.items()
             if not (kMeshFolder / name).is_file() or (kMeshFolder / name).read_bytes() != text.encode("ascii")]
    if stale:
        return [f"{name}: differs from what this script writes" for name in stale]
    faults, shapes = [], {}
    for name, text in texts.items():
        words, faces = readObj(text)
        shapes[name] = points = [tuple(map(float, p)) for p in words]
        partners = mirrorPartners(words)
        paired = sum(k is not None for k in partners)
        expected = {"headScan.obj": 0, "smileLeft.obj": None}.get(name, len(points))
        if expected is not None and paired != expected:
            faults.append(f"{name}: {paired} of {len(points)} vertices have an exact partner")
        elif name == "head.obj":
            faults += [f"{name}: {fault}" for fault in topologyFaults(points, faces, partners)]
        faults += [f"{name}: {fault}" for fault in geometryFaults(name, points, faces)]
    return faults + list(shapeFaults(shapes))


def main(arguments):
    if arguments not in ([], ["--check"]):
        print(__doc__, file=sys.stderr)
        return 2
    shapes, faces = makeShapes()
    texts = {name: objText(points, faces) for name, points in shapes.items()}
    if arguments:
        faults = check(texts)
        print("\n".join(faults) if faults else f"{len(texts)} meshes are as they should be")
        return 1 if faults else 0
    kMeshFolder.mkdir(exist_ok=True)
    for name, text in texts.items():
        (kMeshFolder / name).write_bytes(text.encode("ascii"))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
