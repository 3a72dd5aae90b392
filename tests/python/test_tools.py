"""The workflows of the kit: what they return, what they raise, and that each is one step."""

import pytest

from delven import cmds, tools


@pytest.fixture
def face():
    """A strip across the middle with a shape of one side, drawn on the left one."""
    cmds.polyPlane(name="face", width=4, height=1, subdivisionsX=4, subdivisionsY=1, constructionHistory=False)
    cmds.duplicate("face", name="smile_L")
    cmds.move(0, 1, 0, "smile_L.vtx[4]", relative=True)
    cmds.duplicate("face", name="blink")
    cmds.move(0, 0.5, 0, "blink.vtx[0:4]", relative=True)
    cmds.blendShape(["smile_L", "blink"], "face", name="bs")
    cmds.delete("smile_L", "blink")
    return "face"


def heights(vertices):
    return [round(cmds.pointPosition(f"face.vtx[{vertex}]", local=True)[1], 6) for vertex in vertices]


def test_workflows(face):
    assert tools.original_shape(face) == "|face|faceShapeOrig"
    assert tools.target_index("bs", "blink") == tools.target_index("bs", "w[1]") == 1
    assert tools.opposite_name("browUp_L") == "browUp_R"
    assert tools.mirror_to_opposite("bs", "smile_L") == 2
    cmds.setAttr("bs.smile_R", 1)
    assert heights(range(5)) == [1, 0, 0, 0, 0]
    cmds.setAttr("bs.smile_R", 0)
    left, right = tools.split_left_right("bs", "blink")
    assert (left, right) == ("blink_L", "blink_R")
    cmds.setAttr("bs." + left, 1)
    assert heights(range(5)) == [0, 0, 0.25, 0.5, 0.5]
    cmds.setAttr("bs." + right, 1)
    assert heights(range(5)) == [0.5] * 5
    mesh = tools.extract("bs", "smile_L")
    cmds.move(0, 1, 0, mesh + ".vtx[3]", relative=True)
    tools.apply(mesh, "bs", "smile_L")
    cmds.setAttr("bs.blink_L", 0)
    cmds.setAttr("bs.blink_R", 0)
    cmds.setAttr("bs.smile_L", 1)
    assert heights(range(5)) == [0, 0, 0, 1, 1]
    sculpt = cmds.duplicate(face, name="sculpt")[0]
    cmds.move(0, 2, 0, "sculpt.vtx[9]", relative=True)
    index = tools.corrective(sculpt, face, "bs", "fix")
    cmds.setAttr(f"bs.w[{index}]", 1)
    assert heights([3, 4, 9]) == [1, 1, 2]
    assert cmds.nodeType(tools.region_node("bs", face)) == "network"


WRONG = [
    (lambda: tools.extract("bs", "grin"), RuntimeError, 'bs has no target "grin". Its targets are smile_L, blink.'),
    (lambda: tools.apply("ghost", "bs", "blink"), RuntimeError, 'There is no node "ghost". Give the name of a mesh.'),
    (lambda: tools.mirror_to_opposite("bs", "blink"), RuntimeError, "The name blink does not say one side."),
    (lambda: tools.split_left_right("face", "blink"), RuntimeError, "face is a transform."),
    (lambda: tools.target_index("bs", "grin"), RuntimeError, "delvenTargetIndex found nothing"),
    (lambda: tools.original_shape("ghost"), RuntimeError, 'There is no node "ghost".'),
    (lambda: tools.compare_stop(), RuntimeError, "No comparison is running."),
    (lambda: tools.split_left_right("bs", "blink", float("nan")), ValueError, "nan is not a finite number"),
    (lambda: tools.extract('bs"; polyCube; //', "blink"), RuntimeError, "There is no node "),
    (lambda: tools.opposite_name("brow"), ValueError, "The name brow does not say one side."),
]


@pytest.mark.parametrize("call, kind, text", WRONG)
def test_failures_are_raised_and_change_nothing(face, call, kind, text):
    before = cmds.headlessDump()
    with pytest.raises(kind) as caught:
        call()
    assert str(caught.value).startswith(text)
    assert cmds.headlessDump() == before


def test_each_is_one_step(face):
    before = cmds.headlessDump()
    tools.split_left_right("bs", "blink", 1.5)
    cmds.undo()
    assert cmds.headlessDump() == before
