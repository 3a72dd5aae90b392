"""The open scene, borrowed: what is made in it is gone afterwards, and what is set is as before."""

import contextlib

from delven import arrays, cmds


@contextlib.contextmanager
def scene():
    """Lets code make nodes and change the selection, the view and the units. Lengths are centimetres meanwhile."""
    selected = cmds.ls(selection=True, long=True)
    camera = cmds.lookThru(query=True)
    units = {name: cmds.currentUnit(query=True, **{name: True}) for name in ("linear", "angle")}
    undo = cmds.undoInfo(query=True, state=True)
    cmds.undoInfo(stateWithoutFlush=False)
    try:
        cmds.currentUnit(linear="cm", angle="deg")
        cmds.select(clear=True)
        yield
    finally:
        cmds.headlessIsolate(clear=True)
        cmds.currentUnit(**units)
        cmds.lookThru(camera)
        cmds.select(selected)
        cmds.undoInfo(stateWithoutFlush=undo)


@contextlib.contextmanager
def copy(original):
    """A mesh like the original shape, without history, at the origin of the world. Gives its path."""
    transform = cmds.createNode("transform", name="delvenReport", skipSelect=True)
    try:
        shape = cmds.createNode("mesh", name="delvenReportShape", parent=transform, skipSelect=True)
        cmds.connectAttr(f"{original}.outMesh", f"{shape}.inMesh")
        # The mesh stays when it has been read once.
        cmds.polyEvaluate(shape, vertex=True)
        cmds.disconnectAttr(f"{original}.outMesh", f"{shape}.inMesh")
        yield shape
    finally:
        cmds.delete(transform)


def partners(shape, mesh, axis):
    """Mirror partner of each vertex by the order map of the deformed mesh, or a new one of its copy; None for none."""
    count = cmds.polyEvaluate(shape, vertex=True)
    try:
        found = arrays.order_map(mesh)
        if len(found) == count:
            return found
    except ValueError:
        # The mesh has no map.
        pass
    try:
        made = cmds.dv_polyMapVertexOrder(shape, axis=axis)
    except RuntimeError:
        # The halves differ.
        return None
    return arrays.order_map(shape) if made == 1 else None
