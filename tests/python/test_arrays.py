"""Arrays of numpy: what they hold, what is refused, and that a setter is one step."""

import pytest

from delven import cmds

numpy = pytest.importorskip("numpy")
arrays = pytest.importorskip("delven.arrays")


@pytest.fixture
def skin(box):
    joints = [cmds.joint(name=name, position=(0, at, 0)) for at, name in enumerate(("j1", "j2", "j3"))]
    return cmds.skinCluster(joints, box, toSelectedBones=True, name="skin")[0]


def one_step(change):
    """What a change does is taken back by one undo, and done again by one redo."""
    before = cmds.headlessDump()
    change()
    after = cmds.headlessDump()
    assert after != before
    cmds.undo()
    assert cmds.headlessDump() == before
    cmds.redo()
    assert cmds.headlessDump() == after


def test_points(box):
    cmds.setAttr("box.translate", 1, 2, 3)
    here = arrays.points("box")
    assert here.shape == (8, 3) and here.dtype == numpy.float64
    assert here.tolist() == [cmds.pointPosition(f"box.vtx[{v}]", local=True) for v in range(8)]
    assert (arrays.points("boxShape", space="world") - here == [1, 2, 3]).all()
    moved = here * 2
    one_step(lambda: arrays.set_points("box", moved))
    assert (arrays.points("box") == moved).all()
    for other in (moved.astype(">f8"), moved[::-1][::-1], moved.tolist(), numpy.asfortranarray(moved)):
        arrays.set_points("box", other)
        assert (arrays.points("box") == moved).all()


def test_deltas(shapes):
    vertices, values = arrays.deltas("bs", "out")
    assert vertices.tolist() == [3, 4, 5] and vertices.dtype == numpy.int32
    assert values.tolist() == [[1, 0, 0]] * 3
    assert arrays.deltas("bs", 0)[0].tolist() == [2]
    cmds.delete("up", "out")
    one_step(lambda: arrays.set_deltas("bs", "out", [7, 0, 1], [[0, 0, 1], [0, 1, 0], [1, 0, 0.1]]))
    vertices, values = arrays.deltas("bs", "out")
    assert vertices.tolist() == [0, 1, 7] and values[1].tolist() == [1, 0, 0.1]
    assert cmds.getAttr("bs.it[0].itg[1].iti[6000].ict") == ["vtx[0:1]", "vtx[7]"]
    rest = arrays.points("boxShapeOrig")
    cmds.setAttr("bs.out", 1)
    moved = arrays.points("box") - rest
    assert moved[7].tolist() == [0, 0, 1] and moved[0].tolist() == [0, 1, 0]
    arrays.set_deltas("bs", "out", [], numpy.empty((0, 3)))
    assert arrays.deltas("bs", "out")[0].size == 0


def test_weights(shapes):
    assert arrays.target_weights("bs", "up").tolist() == [1] * 8
    painted = numpy.linspace(0, 1, 8, dtype=numpy.float32)
    one_step(lambda: arrays.set_target_weights("bs", "up", painted))
    assert (arrays.target_weights("bs", 0) == painted).all()
    assert arrays.target_weights("bs").tolist() == [1] * 8
    arrays.set_target_weights("bs", None, painted)
    assert cmds.getAttr("bs.it[0].baseWeights[3]") == pytest.approx(3 / 7)


def test_skin_weights(skin):
    weights, influences = arrays.skin_weights(skin)
    assert influences == ["j1", "j2", "j3"] and weights.shape == (8, 3)
    assert weights[0].tolist() == cmds.skinPercent(skin, "box.vtx[0]", query=True, value=True)
    wanted = numpy.zeros((8, 3))
    wanted[:, 1] = 1
    wanted[3] = [0.5, 0.25, 0.25]
    one_step(lambda: arrays.set_skin_weights(skin, wanted))
    assert (arrays.skin_weights(skin)[0] == wanted).all()


def test_maps_and_regions(shapes):
    from delven import tools

    partners = [1, 0, 3, 2, 5, 4, 7, -1]
    cmds.addAttr("boxShape", longName="dvVertexOrderMap", shortName="dvvom", dataType="Int32Array")
    cmds.setAttr("boxShape.dvvom", partners, type="Int32Array")
    assert arrays.order_map("box").tolist() == partners
    node = tools.region_node("bs", "box")
    assert arrays.regions(node).shape == (6, 8)
    assert not arrays.regions(node).any()
    with pytest.raises(ValueError, match="has no vertex order map"):
        arrays.order_map("up")


WRONG = [
    (lambda: arrays.points("ghost"), "No object matches name: ghost"),
    (lambda: arrays.points("persp"), "persp is no polygonal object."),
    (lambda: arrays.points("box", space="view"), "space is"),
    (lambda: arrays.set_points("box", numpy.zeros((7, 3))), "box has 8 entries, and 7 were given."),
    (lambda: arrays.set_points("box", numpy.zeros(24)), "An array of n x 3 numbers is needed"),
    (lambda: arrays.set_points("box", numpy.full((8, 3), numpy.nan)), "All numbers must be finite."),
    (lambda: arrays.set_points("box", [["a", "b", "c"]] * 8), "Numbers are needed"),
    (lambda: arrays.set_points("box", [None] * 8), "Numbers are needed"),
    (lambda: arrays.deltas("box", 0), "box is no blendShape."),
    (lambda: arrays.deltas("bs", "grin"), "bs has no target 'grin'."),
    (lambda: arrays.deltas("bs", 7), "bs has no target 7."),
    (lambda: arrays.set_deltas("bs", 0, [8], [[0, 0, 0]]), "The mesh has 8 vertices, not one numbered 8."),
    (lambda: arrays.set_deltas("bs", 0, [-1], [[0, 0, 0]]), "An index is no vertex."),
    (lambda: arrays.set_deltas("bs", 0, [1, 1], [[0, 0, 0]] * 2), "A vertex stands several times"),
    (lambda: arrays.set_deltas("bs", 0, [1, 2], [[0, 0, 0]]), "indices has 2 entries, and 1 were given."),
    (lambda: arrays.set_deltas("bs", 0, [1.5], [[0, 0, 0]]), "Indices are integers"),
    (lambda: arrays.set_target_weights("bs", 0, [1, 2]), "The mesh has 8 entries, and 2 were given."),
    (lambda: arrays.regions("bs"), "bs is no network."),
]


@pytest.mark.parametrize("call, text", WRONG)
def test_what_does_not_fit_is_refused_and_changes_nothing(shapes, call, text):
    cmds.delete("up", "out")
    cmds.polyCube(name="up")
    before = cmds.headlessDump()
    with pytest.raises(ValueError) as caught:
        call()
    assert str(caught.value).startswith(text)
    assert cmds.headlessDump() == before
