import pytest

from delven import cmds


@pytest.fixture(autouse=True)
def new_scene():
    """Each test begins with an empty scene, as a test of a rig does."""
    cmds.file(new=True, force=True)
    cmds.undoInfo(state=True)
    yield


@pytest.fixture
def box():
    return cmds.polyCube(name="box")[0]


@pytest.fixture
def shapes(box):
    """A box with a blend shape of two targets."""
    targets = [cmds.duplicate(box, name=name)[0] for name in ("up", "out")]
    cmds.move(0, 1, 0, "up.vtx[2]", relative=True)
    cmds.move(1, 0, 0, "out.vtx[3:5]", relative=True)
    return cmds.blendShape(targets, box, name="bs")[0]
