"""What blend shapes store, as it stands there: also what does not fit the mesh."""

import dataclasses
import re

import numpy

from delven import arrays, cmds, tools
from delven.report import NothingToReport, WrongUse

FULL = 6000
_COMPONENT = re.compile(r"\[(?:(\d+)(?::(\d+))?|\*)\]$")


@dataclasses.dataclass
class Item:
    """A target at its full weight, or one of its in-betweens."""

    target: int
    alias: str  # None if it has none
    item: int  # 6000 at full weight
    live: str  # the mesh that gives the deltas, or None
    runs: numpy.ndarray  # (k, 2), first and last vertex of each entry of the component list
    points: int  # entries of the point list
    vertices: numpy.ndarray  # (m), those that have a point
    deltas: numpy.ndarray  # (m, 3), in centimetres
    painted: numpy.ndarray  # vertices with a painted weight
    weights: numpy.ndarray  # their weights

    @property
    def name(self):
        return self.alias or f"weight[{self.target}]"

    @property
    def weight(self):
        return (self.item - 5000) / 1000


@dataclasses.dataclass
class Shape:
    """A mesh and the targets that a blend shape has for it."""

    blend_shape: str
    mesh: str
    original: str  # path of the shape that the deformers start from
    points: numpy.ndarray  # (n, 3), of the original shape
    items: list

    def painted_weights(self, item):
        """Weight of each vertex."""
        weights = numpy.ones(len(self.points))
        fits = (item.painted < len(weights)) & numpy.isfinite(item.weights)
        weights[item.painted[fits]] = item.weights[fits]
        return weights


def _runs(components, count):
    """First and last vertex of the entries of a component list."""
    runs = []
    for text in components:
        first, last = _COMPONENT.search(text).groups()
        runs.append((0, count - 1) if first is None else (int(first), int(last or first)))
    return numpy.array(runs, numpy.int64).reshape(-1, 2)


def _expanded(runs, most):
    """The first vertices of runs. A broken list may name more than there is room for."""
    ends = numpy.cumsum(runs[:, 1] - runs[:, 0] + 1)
    needed = runs[: numpy.searchsorted(ends, most) + 1]
    pieces = [numpy.arange(first, min(last, first + most - 1) + 1) for first, last in needed]
    return numpy.concatenate([numpy.empty(0, numpy.int64), *pieces])[:most]


def _multi(plug):
    return cmds.getAttr(plug, multiIndices=True) or []


def _item(group, target, alias, index, painted, weights, count):
    plug = f"{group}.inputTargetItem[{index}]"
    live = cmds.listConnections(f"{plug}.inputGeomTarget", source=True, destination=False, shapes=True)
    runs = _runs(cmds.getAttr(f"{plug}.inputComponentsTarget") or [], count)
    points = numpy.array(cmds.getAttr(f"{plug}.inputPointsTarget") or numpy.empty((0, 4)), numpy.float64)
    vertices = _expanded(runs, len(points))
    live = live[0] if live else None
    return Item(
        target, alias, index, live, runs, len(points), vertices, points[: len(vertices), :3], painted, weights
    )


def _items(blend_shape, geometry, count):
    pairs = cmds.aliasAttr(blend_shape, query=True) or []
    aliases = dict(zip(pairs[1::2], pairs[::2]))
    groups = f"{blend_shape}.inputTarget[{geometry}].inputTargetGroup"
    for target in sorted({*_multi(groups), *_multi(f"{blend_shape}.weight")}):
        group = f"{groups}[{target}]"
        painted = numpy.array(_multi(f"{group}.targetWeights"), numpy.int64)
        weights = numpy.ravel(cmds.getAttr(f"{group}.targetWeights")) if len(painted) else numpy.empty(0)
        # A weight without anything behind it is a target too.
        for index in _multi(f"{group}.inputTargetItem") or [FULL]:
            yield _item(group, target, aliases.get(f"weight[{target}]"), index, painted, weights, count)


def _geometries(blend_shape):
    """Index and mesh of all that a blend shape deforms."""
    outputs = [
        index
        for index in _multi(f"{blend_shape}.outputGeometry")
        if cmds.listConnections(f"{blend_shape}.outputGeometry[{index}]", source=False, destination=True)
    ]
    meshes = cmds.ls(cmds.blendShape(blend_shape, query=True, geometry=True) or [], type="mesh")
    return list(zip(outputs, meshes))


def _shape(blend_shape, geometry, mesh):
    """Raises RuntimeError if the host cannot tell what the mesh is."""
    original = tools.original_shape(mesh)
    points = arrays.points(original)
    # Targets with a connected mesh have their deltas when the deformed mesh has been evaluated.
    cmds.polyEvaluate(mesh, vertex=True)
    return Shape(blend_shape, mesh, original, points, list(_items(blend_shape, geometry, len(points))))


def _shapes(pairs):
    """Shapes, and what has to be left out: one mesh that the host cannot evaluate does not hide the others."""
    shapes, skipped = [], []
    for blend_shape, geometry, mesh in pairs:
        try:
            shapes.append(_shape(blend_shape, geometry, mesh))
        except RuntimeError as error:
            text = f"{mesh} cannot be evaluated here, or has no original shape, which its deformers start from: {error}"
            skipped.append({"blendShape": blend_shape, "mesh": mesh, "text": text})
    if not shapes:
        raise WrongUse(skipped[0]["text"])
    return shapes, skipped


def _one(name, **kind):
    """Path of the node of a name that somebody gave."""
    found = cmds.ls(name, long=True, **kind)
    if len(found) == 1:
        return found[0]
    what = kind.get("type", "mesh")
    if found:
        raise WrongUse(f"{name} is the name of several nodes: {', '.join(found)}. Give the path of one.")
    there = ", ".join(cmds.ls(**kind)) or "none"
    other = f" {name} is something else." if cmds.objExists(name) else ""
    raise WrongUse(f"There is no {what} {name} in the scene.{other} It has: {there}.")


def _mesh_path(name):
    return _one(name, type="mesh", dagObjects=True, noIntermediate=True)


def find(blend_shapes, meshes):
    """All blend shapes of the scene and their meshes, or those that are named, and what is left out of them.

    Raises WrongUse.
    """
    nodes = [_one(name, type="blendShape") for name in blend_shapes or ()] or cmds.ls(type="blendShape")
    if not nodes:
        raise NothingToReport("The scene has no blend shape. Make one, or give another scene.")
    wanted = {_mesh_path(name) for name in meshes or ()}
    found = [(node, *pair) for node in nodes for pair in _geometries(node)]
    if not found:
        raise NothingToReport(f"No mesh is deformed by {', '.join(nodes)}. Connect one, or give another blend shape.")
    pairs = [one for one in found if not wanted or cmds.ls(one[2], long=True)[0] in wanted]
    missing = wanted - {cmds.ls(mesh, long=True)[0] for _, _, mesh in pairs}
    if missing:
        deformed = ", ".join(dict.fromkeys(mesh for _, _, mesh in found))
        raise WrongUse(f"{', '.join(sorted(missing))} is not deformed by {', '.join(nodes)}, but {deformed} is.")
    return _shapes(pairs)
