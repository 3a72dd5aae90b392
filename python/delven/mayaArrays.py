"""What delven.arrays does inside Maya. The functions, their results and errors are those of the compiled module.

All changes go through `maya.cmds`, so that Maya can undo them. Only skin weights, which take long that way, are read
through `maya.api` where there is one.
"""

import contextlib

import numpy

from delven import cmds

try:
    from maya.api import OpenMaya, OpenMayaAnim
except ImportError:
    # The headless host has none.
    OpenMaya = OpenMayaAnim = None

# Commands speak in the unit of the scene.
_CENTIMETRES = {"mm": 0.1, "cm": 1.0, "m": 100.0, "km": 100000.0, "in": 2.54, "ft": 30.48, "yd": 91.44, "mi": 160934.4}

_REGIONS = 6


@contextlib.contextmanager
def _one_step():
    cmds.undoInfo(openChunk=True)
    try:
        yield
    finally:
        cmds.undoInfo(closeChunk=True)


def _node(name, kind=None):
    """Path of the one node of a type that a name means."""
    found = [] if "." in name else cmds.ls(name, long=True)
    if not found:
        raise ValueError(f"No object matches name: {name}")
    if len(found) > 1:
        raise ValueError(f"More than one object matches name: {name}")
    if kind and not cmds.objectType(found[0], isAType=kind):
        raise ValueError(f"{name} is no {kind}.")
    return found[0]


def _shape(name):
    """Path of the mesh that a name means: itself, or the only visible shape below it."""
    node = _node(name)
    shapes = [node]
    if cmds.objectType(node, isAType="transform"):
        shapes = cmds.listRelatives(node, shapes=True, noIntermediate=True, fullPath=True) or []
    if len(shapes) != 1 or not cmds.objectType(shapes[0], isAType="mesh"):
        raise ValueError(f"{cmds.ls(node)[0]} is no polygonal object.")
    return shapes[0]


def _deformed_mesh(command, deformer):
    """Path of the first mesh that a deformer deforms, and its number of vertices. Evaluates it.

    command  the one that the deformer's type has
    """
    shapes = cmds.ls(command(deformer, query=True, geometry=True) or [], type="mesh", long=True)
    if not shapes:
        raise RuntimeError(f"{deformer} deforms no mesh.")
    return shapes[0], cmds.polyEvaluate(shapes[0], vertex=True)


def _check_count(given, wanted, what):
    if given != wanted:
        raise ValueError(f"{what} has {wanted} entries, and {given} were given.")


def _check_writable(*plugs):
    for plug in plugs:
        if cmds.getAttr(plug, lock=True) or cmds.listConnections(plug, source=True, destination=False):
            raise RuntimeError(f"The attribute '{plug}' is locked or connected and cannot be modified.")


def _elements(plug, first, last):
    return f"{plug}[{first}]" if first == last else f"{plug}[{first}:{last}]"


def _stored(plug):
    """Indices and values of the elements that an array of numbers has. Asking Maya for others might make them."""
    indices = cmds.getAttr(plug, multiIndices=True) or []
    return numpy.array(indices, numpy.intp), numpy.ravel(cmds.getAttr(plug) if indices else [])


# Points


def _scene_points(shape, **space):
    """Points in the unit of the scene."""
    return numpy.array(cmds.xform(f"{shape}.vtx[*]", query=True, translation=True, **space)).reshape(-1, 3)


def _centimetres():
    return _CENTIMETRES[cmds.currentUnit(query=True, linear=True)]


def points(mesh, in_world):
    space = {"worldSpace": True} if in_world else {"objectSpace": True}
    return _scene_points(_shape(mesh), **space) * _centimetres()


def set_points(mesh, values):
    shape = _shape(mesh)
    count = cmds.polyEvaluate(shape, vertex=True)
    _check_count(len(values), count, mesh)
    # Offsets to what the history gives, whether there is one or not: points that a history gives cannot be set.
    _check_writable(f"{shape}.pnts")
    offsets = _elements(f"{shape}.pnts", 0, count - 1)
    # Meshes and offsets hold single precision: rounded first, most points come out exact.
    wanted = (values / _centimetres()).astype(numpy.float32)
    with _one_step():
        if cmds.getAttr(f"{shape}.pnts", multiIndices=True):
            cmds.setAttr(offsets, *[0.0] * (3 * count), type="float3")
        moved = wanted - _scene_points(shape, objectSpace=True)
        cmds.setAttr(offsets, *moved.ravel().tolist(), type="float3")


# Targets


def _target_group(blend_shape, target):
    """Plug of a target given by its index or its name."""
    index = target
    if isinstance(target, str):
        aliases = cmds.aliasAttr(blend_shape, query=True) or []
        plug = dict(zip(aliases[::2], aliases[1::2])).get(target, "")
        index = int(plug[len("weight[") : -1]) if plug.startswith("weight[") else None
    if index not in (cmds.getAttr(f"{blend_shape}.weight", multiIndices=True) or []):
        raise ValueError(f"{blend_shape} has no target {target!r}.")
    return f"{blend_shape}.inputTarget[0].inputTargetGroup[{index}]"


def _vertices(components, count):
    """Vertices of the texts of a component list, in its order."""
    runs = [numpy.empty(0, numpy.int32)]
    for text in components:
        first, _, last = text[text.index("[") + 1 : -1].partition(":")
        first, last = (0, count - 1) if first == "*" else (int(first), int(last or first))
        runs.append(numpy.arange(first, last + 1, dtype=numpy.int32))
    return numpy.concatenate(runs)


def deltas(blend_shape, target, item):
    node = _node(blend_shape, "blendShape")
    items = f"{_target_group(node, target)}.inputTargetItem"
    # A connected target has its deltas once it is evaluated.
    _, vertex_count = _deformed_mesh(cmds.blendShape, node)
    if item not in (cmds.getAttr(items, multiIndices=True) or []):
        return numpy.empty(0, numpy.int32), numpy.empty((0, 3))
    vertices = _vertices(cmds.getAttr(f"{items}[{item}].inputComponentsTarget") or [], vertex_count)
    stored = numpy.array(cmds.getAttr(f"{items}[{item}].inputPointsTarget") or numpy.empty((0, 4)))
    count = min(len(vertices), len(stored))
    return vertices[:count], stored[:count, :3].copy()


def set_deltas(blend_shape, target, vertices, values, item):
    node = _node(blend_shape, "blendShape")
    plug = f"{_target_group(node, target)}.inputTargetItem[{item}]"
    if cmds.listConnections(f"{plug}.inputGeomTarget", source=True, destination=False):
        raise RuntimeError(
            "The target has a connected mesh, which gives it its deltas. Delete or disconnect the mesh first."
        )
    _check_count(len(values), len(vertices), "indices")
    _, count = _deformed_mesh(cmds.blendShape, node)
    if len(vertices) and vertices[-1] >= count:
        raise ValueError(f"The mesh has {count} vertices, not one numbered {vertices[-1]}.")
    _check_writable(f"{plug}.inputPointsTarget", f"{plug}.inputComponentsTarget")
    moved = numpy.column_stack([values, numpy.ones(len(values))]).tolist()
    starts = numpy.flatnonzero(numpy.diff(vertices, prepend=-2) != 1)
    runs = zip(vertices[starts], vertices[numpy.append(starts[1:], len(vertices)) - 1]) if len(vertices) else ()
    components = [_elements("vtx", first, last) for first, last in runs]
    with _one_step():
        cmds.setAttr(f"{plug}.inputPointsTarget", len(moved), *moved, type="pointArray")
        cmds.setAttr(f"{plug}.inputComponentsTarget", len(components), *components, type="componentList")


def _weights_plug(node, target):
    if target is None:
        return f"{node}.inputTarget[0].baseWeights"
    return f"{_target_group(node, target)}.targetWeights"


def target_weights(blend_shape, target):
    node = _node(blend_shape, "blendShape")
    indices, values = _stored(_weights_plug(node, target))
    _, count = _deformed_mesh(cmds.blendShape, node)
    weights = numpy.ones(count, numpy.float32)
    inside = indices < count
    weights[indices[inside]] = values[inside]
    return weights


def set_target_weights(blend_shape, target, values):
    node = _node(blend_shape, "blendShape")
    plug = _weights_plug(node, target)
    _, count = _deformed_mesh(cmds.blendShape, node)
    _check_count(len(values), count, "The mesh")
    _check_writable(plug)
    cmds.setAttr(_elements(plug, 0, count - 1), *values.tolist())


# Skins


def _influences(skin):
    """Indices of the influences in ascending order, and their names."""
    pairs = cmds.listConnections(f"{skin}.matrix", connections=True, source=True, destination=False) or []
    found = sorted((int(plug[plug.rindex("[") + 1 : -1]), name) for plug, name in zip(pairs[::2], pairs[1::2]))
    return [index for index, _ in found], [name for _, name in found]


def _api_weights(skin, mesh, count):
    """All weights, and the index of each column."""
    objects = OpenMaya.MSelectionList().add(skin).add(mesh)
    function = OpenMayaAnim.MFnSkinCluster(objects.getDependNode(0))
    component = OpenMaya.MFnSingleIndexedComponent()
    vertices = component.create(OpenMaya.MFn.kMeshVertComponent)
    component.addElements(range(count))
    weights, width = function.getWeights(objects.getDagPath(1), vertices)
    columns = [function.indexForInfluenceObject(path) for path in function.influenceObjects()]
    return numpy.array(weights).reshape(count, width), columns


def _command_weights(skin, indices, count):
    """The same by a call for each vertex."""
    # Rows may have elements of influences that are gone. Those behind the last one go to a spare column.
    spare = max(indices, default=-1) + 1
    weights = numpy.zeros((count, spare + 1))
    for vertex in cmds.getAttr(f"{skin}.weightList", multiIndices=True) or []:
        if vertex < count:
            at, values = _stored(f"{skin}.weightList[{vertex}].weights")
            weights[vertex, numpy.minimum(at, spare)] = values
    return weights.take(indices, axis=1)


def _weights(skin, indices):
    """Weights of a skin cluster, one column for each index of an influence."""
    mesh, count = _deformed_mesh(cmds.skinCluster, skin)
    if OpenMaya and indices:
        weights, columns = _api_weights(skin, mesh, count)
        if sorted(columns) == indices:
            return weights.take(numpy.argsort(columns), axis=1)
    return _command_weights(skin, indices, count)


def skin_weights(skin):
    node = _node(skin, "skinCluster")
    indices, names = _influences(node)
    return _weights(node, indices), names


def set_skin_weights(skin, values):
    node = _node(skin, "skinCluster")
    indices, _ = _influences(node)
    now = _weights(node, indices)
    _check_count(len(values), len(now), "The mesh")
    _check_count(values.shape[1], len(indices), "The list of influences")
    _check_writable(f"{node}.weightList")
    # Only what changes is written, so that no element is made for a weight of 0. The first one always is: without it
    # there might be no step, and undo would take back the one before.
    changed = values != now
    changed[:1, :1] = True
    rows, columns = numpy.nonzero(changed)
    at = numpy.array(indices, numpy.intp)[columns]
    firsts = numpy.flatnonzero((numpy.diff(rows, prepend=-1) != 0) | (numpy.diff(at, prepend=-2) != 1))
    ends = numpy.append(firsts[1:], len(rows))
    wanted = values[changed].tolist()
    with _one_step():
        for first, end in zip(firsts.tolist(), ends.tolist()):
            plug = _elements(f"{node}.weightList[{rows[first]}].weights", at[first], at[end - 1])
            cmds.setAttr(plug, *wanted[first:end])


# The kit's data


def order_map(mesh):
    shape = _shape(mesh)
    has_map = cmds.attributeQuery("dvVertexOrderMap", node=shape, exists=True)
    partners = cmds.getAttr(f"{shape}.dvVertexOrderMap") if has_map else None
    if partners is None:
        raise ValueError(f"{cmds.ls(shape)[0]} has no vertex order map. Make one with dv_polyMapVertexOrder.")
    return numpy.array(partners, numpy.int32)


def regions(node):
    path = _node(node, "network")
    names = [f"regionWeights{region}" for region in range(_REGIONS)]
    if not all(cmds.attributeQuery(name, node=path, exists=True) for name in names):
        raise ValueError(f"{node} is no region node.")
    rows = [cmds.getAttr(f"{path}.{name}") or [] for name in names]
    result = numpy.zeros((_REGIONS, max(map(len, rows))))
    for weights, row in zip(result, rows):
        weights[: len(row)] = row
    return result
