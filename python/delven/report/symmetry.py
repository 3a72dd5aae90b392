"""How far targets are symmetric, and where each vertex has its mirror image."""

import itertools

import numpy

SIDES = {"left": 1, "right": -1}
SYMMETRIC = 1e-3
# Share of all movement below which a side does not take part.
STILL = 0.01
# Both of the largest side of the mesh.
_NEAR = 1e-4
_MIDDLE = 1e-2


def _cells(points, size):
    return numpy.floor(points / size).astype(numpy.int64)


def _keys(cells):
    """A number for each cell. Those of a mesh differ; its mirror image may lie further away and meet them."""
    return cells @ numpy.array([1, 1 << 21, 1 << 42])


def _size(points):
    """The largest side of a mesh."""
    return max(numpy.ptp(points, axis=0).max(initial=0.0), 1e-9)


def without_strays(partners, points, axis):
    """Partners of an order map, without vertices that are their own partners far from the plane.

    A walk over both halves makes such of faces that only one half has.
    """
    off = numpy.abs(points[:, "xyz".index(axis)]) > _MIDDLE * _size(points)
    return numpy.where(off & (partners == numpy.arange(len(partners))), -1, partners)


def partners_by_position(points, axis):
    """The vertex nearest to the mirror image of each one; -1 where none is near."""
    partners = numpy.full(len(points), -1)
    if not len(points):
        return partners
    near = _NEAR * _size(points)
    mirrored = points * sign(axis)
    corner = points.min(axis=0)
    keys = _keys(_cells(points - corner, near))
    order = numpy.argsort(keys, kind="stable")
    keys = keys[order]
    cells = _cells(mirrored - corner, near)
    best = numpy.full(len(points), near)
    for step in itertools.product((-1, 0, 1), repeat=3):
        wanted = _keys(cells + numpy.array(step))
        at = numpy.minimum(numpy.searchsorted(keys, wanted), len(keys) - 1)
        distance = numpy.linalg.norm(points[order[at]] - mirrored, axis=1)
        closer = (keys[at] == wanted) & (distance < best)
        partners[closer], best[closer] = order[at][closer], distance[closer]
    return partners


def sign(axis):
    """What mirrors a vector across the plane of an axis."""
    return numpy.where(numpy.arange(3) == "xyz".index(axis), -1.0, 1.0)


def sides(points, partners, axis):
    """1 for the vertices of the left, positive side, -1 for the right one, 0 for those in the middle."""
    side = numpy.sign(points[:, "xyz".index(axis)])
    side[partners == numpy.arange(len(partners))] = 0
    return side


def residual(right, left, partners, axis):
    """Largest difference between the deltas of one side and the mirrored ones of the other, as a share of the largest.

    right, left  deltas of all vertices, (n, 3); the same twice for a target on its own
    Returns None if nothing moves, or no vertex has a partner. Vertices without partner do not count.
    """
    largest = max(numpy.linalg.norm(one, axis=1).max(initial=0.0) for one in (right, left))
    paired = numpy.flatnonzero(partners >= 0)
    if largest == 0 or not len(paired):
        return None
    difference = right[paired] - left[partners[paired]] * sign(axis)
    return float(numpy.linalg.norm(difference, axis=1).max() / largest)


def classify(deltas, partners, side, axis):
    """The symmetry of a target, as figures: its class, residual, shares of both sides, and what has no partner."""
    lengths = numpy.linalg.norm(deltas, axis=1)
    total = lengths.sum()
    share = {name: float(lengths[side == value].sum() / total) if total else 0.0 for name, value in SIDES.items()}
    rest = residual(deltas, deltas, partners, axis)
    if rest is None:
        kind = None
    elif rest < SYMMETRIC:
        kind = "both"
    elif share["right"] < STILL <= share["left"]:
        kind = "left"
    elif share["left"] < STILL <= share["right"]:
        kind = "right"
    else:
        kind = "asymmetric"
    unpaired = int(((partners < 0) & (lengths > 0)).sum())
    return {"class": kind, "residual": rest, **share, "unpaired": unpaired}

