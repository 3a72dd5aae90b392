"""Whole arrays of a scene as numpy arrays: points, deltas, weights, order maps and regions.

Every function makes one copy. A setter checks shapes, numbers and ranges before it changes anything, raises ValueError
if something does not fit, and is one step of the undo queue. Targets are given by their index or their name.

Inside Maya the functions use its commands, and a setter raises RuntimeError for a locked or connected attribute.
"""

import operator

import numpy

import delven

if delven.is_headless():
    from delven import _delven as _backend
else:
    from delven import mayaArrays as _backend


def _checked(values, dtype, dimensions, columns=None):
    """An array of a type, in C order, of finite numbers."""
    given = numpy.asarray(values)
    if given.dtype.kind not in "biuf":
        raise ValueError(f"Numbers are needed, not {given.dtype}.")
    if given.ndim != dimensions or (columns is not None and given.shape[-1] != columns):
        wanted = "n" if dimensions == 1 else f"n x {columns or 'm'}"
        raise ValueError(f"An array of {wanted} numbers is needed, not one of shape {given.shape}.")
    if given.dtype.kind == "f" and not numpy.isfinite(given).all():
        raise ValueError("All numbers must be finite.")
    return numpy.ascontiguousarray(given, dtype=dtype)


def _target(given):
    """A name, or an index as Python's integer."""
    return given if isinstance(given, str) else operator.index(given)


def points(mesh, space="object"):
    """Points of a mesh, (n, 3) doubles in centimetres, in "object" or "world" space."""
    if space not in ("object", "world"):
        raise ValueError(f'space is "object" or "world", not {space!r}.')
    return _backend.points(mesh, space == "world")


def set_points(mesh, values):
    """Moves all points of a mesh, in object space."""
    _backend.set_points(mesh, _checked(values, numpy.float64, 2, 3))


def deltas(blend_shape, target, item=6000):
    """Vertices that an item of a target moves, (k) integers, and by how much, (k, 3) doubles."""
    return _backend.deltas(blend_shape, _target(target), operator.index(item))


def set_deltas(blend_shape, target, indices, values, item=6000):
    """Replaces the deltas of an item. Each vertex may stand once. They are stored by ascending vertex."""
    vertices = numpy.asarray(indices)
    if vertices.dtype.kind not in "iu" and vertices.size:
        raise ValueError(f"Indices are integers, not {vertices.dtype}.")
    if vertices.size and (vertices.min() < 0 or vertices.max() >= 2**31):
        raise ValueError("An index is no vertex.")
    vertices = _checked(vertices.astype(numpy.int64), numpy.int32, 1)
    moved = _checked(values, numpy.float64, 2, 3)
    order = numpy.argsort(vertices)
    if not numpy.diff(vertices[order]).all():
        raise ValueError("A vertex stands several times among the indices.")
    if len(moved) == len(vertices):
        # Maya may sort a component list, and the points would then belong to other vertices.
        vertices, moved = vertices[order], moved[order]
    _backend.set_deltas(blend_shape, _target(target), vertices, moved, operator.index(item))


def target_weights(blend_shape, target=None):
    """Painted weights of a target, (n) floats; the base weights for None."""
    return _backend.target_weights(blend_shape, None if target is None else _target(target))


def set_target_weights(blend_shape, target, values):
    """Replaces them."""
    weights = _checked(values, numpy.float32, 1)
    _backend.set_target_weights(blend_shape, None if target is None else _target(target), weights)


def skin_weights(skin):
    """Weights of a skin cluster, (n, m) doubles, and the names of the m influences."""
    return _backend.skin_weights(skin)


def set_skin_weights(skin, values):
    """Replaces them, one column for each influence. They are stored as given: nothing is normalized."""
    _backend.set_skin_weights(skin, _checked(values, numpy.float64, 2))


def order_map(mesh):
    """Mirror partner of each vertex, (n) integers; -1 for none."""
    return _backend.order_map(mesh)


def regions(node):
    """Weights of the six regions of a region node, (6, n) doubles."""
    return _backend.regions(node)
