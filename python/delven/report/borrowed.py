"""The open scene, borrowed: what is made in it is gone afterwards, and what is set is as before."""

import contextlib
import io

from delven import arrays, cmds


@contextlib.contextmanager
def scene():
    """Lets code make nodes and change the selection and the view."""
    selected = cmds.ls(selection=True, long=True)
    camera = cmds.lookThru(query=True)
    undo = cmds.undoInfo(query=True, state=True)
    cmds.undoInfo(stateWithoutFlush=False)
    try:
        cmds.select(clear=True)
        yield
    finally:
        cmds.headlessIsolate(clear=True)
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
        # The report says in its own words what has no partner.
        with contextlib.redirect_stderr(io.StringIO()):
            made = cmds.dv_polyMapVertexOrder(shape, axis=axis)
    except RuntimeError:
        # The halves differ.
        return None
    return arrays.order_map(shape) if made == 1 else None
