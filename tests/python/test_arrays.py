"""Arrays of numpy: what they hold, what is refused, and that a setter is one step.

Each test runs with the compiled module and with what does the same by commands inside Maya.
"""

import os
import pathlib
import subprocess
import sys

import pytest

from delven import _delven, cmds

numpy = pytest.importorskip("numpy")
arrays = pytest.importorskip("delven.arrays")
mayaArrays = pytest.importorskip("delven.mayaArrays")

BACKENDS = {"compiled": _delven, "commands": mayaArrays}


@pytest.fixture(params=BACKENDS, autouse=True)
def backend(request, monkeypatch):
    monkeypatch.setattr(arrays, "_backend", BACKENDS[request.param])
    return request.param


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


def test_points_of_a_deformed_mesh_are_exact(shapes):
    cmds.setAttr("bs.up", 0.3)
    for seed in (1, 2):
        wanted = numpy.random.default_rng(seed).uniform(-100, 100, (8, 3))
        one_step(lambda: arrays.set_points("box", wanted))
        assert (arrays.points("box") == wanted.astype(numpy.float32)).all()
    cmds.setAttr("bs.up", 1.3)
    assert arrays.points("box")[2, 1] == pytest.approx(wanted[2, 1] + 1)


def test_columns_are_influences_that_are_left(skin):
    cmds.skinCluster(skin, edit=True, removeInfluence="j2")
    cmds.skinPercent(skin, "box.vtx[4]", transformValue=[("j1", 0), ("j3", 1)])
    cmds.setAttr("skin.weightList[20].weights[0]", 1)
    weights, influences = arrays.skin_weights(skin)
    assert influences == ["j1", "j3"] and weights[4].tolist() == [0, 1]
    before = cmds.headlessDump()
    arrays.set_skin_weights(skin, weights)
    cmds.undo()
    assert cmds.headlessDump() == before
    wanted = numpy.random.default_rng(1).uniform(0, 1, (8, 2))
    one_step(lambda: arrays.set_skin_weights(skin, wanted))
    assert (arrays.skin_weights(skin)[0] == wanted).all()
    assert cmds.skinPercent(skin, "box.vtx[4]", query=True, value=True) == wanted[4].tolist()
    cmds.delete("j1", "j3")
    assert arrays.skin_weights(skin)[0].shape == (8, 0)


def test_both_read_the_same_bits(shapes):
    cmds.xform("box", translation=(1, 2, 3), rotation=(10, 20, 30), scale=(1, 2, 0.1))
    cmds.setAttr("bs.up", 0.3)
    for vertex, weight in ((1, 0.25), (2, 0.1), (6, 0), (99, 0.5)):
        cmds.setAttr(f"bs.it[0].itg[0].tw[{vertex}]", weight)
    cmds.createNode("network", name="regions")
    for region in range(6):
        cmds.addAttr("regions", longName=f"regionWeights{region}", dataType="doubleArray")
    cmds.setAttr("regions.regionWeights2", [0.1, 0.2], type="doubleArray")
    cmds.setAttr("regions.regionWeights4", [0.3] * 8, type="doubleArray")
    cmds.setAttr("bs.it[0].itg[0].iti[6000].ict", 1, "vtx[*]", type="componentList")
    reads = (
        ("points", "box", True),
        ("points", "boxShapeOrig", False),
        ("target_weights", "bs", "up"),
        ("target_weights", "bs", None),
        ("deltas", "bs", "up", 6000),
        ("deltas", "bs", 1, 5500),
        ("regions", "regions"),
    )
    for name, *arguments in reads:
        results = [getattr(module, name)(*arguments) for module in BACKENDS.values()]
        for one, other in zip(*(each if isinstance(each, tuple) else (each,) for each in results)):
            assert one.dtype == other.dtype and one.shape == other.shape and one.tobytes() == other.tobytes(), name


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
    (lambda: arrays.set_deltas("bs", 0, [2, 1, 9], [[0, 0, 0]] * 3), "The mesh has 8 vertices, not one numbered 9."),
    (lambda: arrays.points("box.vtx[0]"), "No object matches name: box.vtx[0]"),
    (lambda: arrays.points(""), "No object matches name: "),
    (lambda: arrays.points("b*"), "More than one object matches name: b*"),
    (lambda: arrays.points("bs"), "bs is no polygonal object."),
    (lambda: arrays.deltas("bs", "envelope"), "bs has no target 'envelope'."),
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


def test_skin_weights_of_another_size_are_refused(skin):
    for shape, text in (((7, 3), "The mesh has 8 entries, and 7"), ((8, 2), "The list of influences has 3")):
        with pytest.raises(ValueError, match=text):
            arrays.set_skin_weights(skin, numpy.zeros(shape))


def test_a_connected_target_keeps_the_deltas_of_its_mesh(shapes):
    before = cmds.headlessDump()
    with pytest.raises(RuntimeError, match="The target has a connected mesh"):
        arrays.set_deltas("bs", "up", [0], [[1, 0, 0]])
    assert cmds.headlessDump() == before
    for call in (lambda: arrays.deltas("bs", 1.5), lambda: arrays.deltas("bs", None)):
        with pytest.raises(TypeError):
            call()


def test_what_is_locked_stays(shapes):
    cmds.delete("up")
    for plug in ("boxShape.pnts", "bs.it[0].itg[0].iti[6000].ict", "bs.it[0].baseWeights"):
        cmds.setAttr(plug, lock=True)
    before = cmds.headlessDump()
    for setter, arguments in (
        (arrays.set_points, ("box", numpy.zeros((8, 3)))),
        (arrays.set_deltas, ("bs", "up", [1], [[0, 0, 1]])),
        (arrays.set_target_weights, ("bs", None, numpy.zeros(8))),
    ):
        with pytest.raises(RuntimeError, match="^The attribute .* is locked or connected and cannot be modified."):
            setter(*arguments)
        assert cmds.headlessDump() == before


def test_one_undo_takes_back_skin_weights_up_to_a_lock(skin, monkeypatch):
    monkeypatch.setattr(arrays, "_backend", mayaArrays)
    cmds.setAttr("skin.weightList[5].weights[1]", lock=True)
    before = cmds.headlessDump()
    with pytest.raises(RuntimeError, match=r"weightList\[5\]"):
        arrays.set_skin_weights(skin, numpy.full((8, 3), 0.25))
    assert cmds.headlessDump() != before
    cmds.undo()
    assert cmds.headlessDump() == before


def test_locked_skin_weights_stay(skin):
    cmds.setAttr("skin.weightList", lock=True)
    before = cmds.headlessDump()
    with pytest.raises(RuntimeError, match="'skin.weightList' is locked"):
        arrays.set_skin_weights(skin, numpy.zeros((8, 3)))
    assert cmds.headlessDump() == before


def test_a_real_maya_needs_no_compiled_module(tmp_path):
    (tmp_path / "maya").mkdir()
    (tmp_path / "maya/__init__.py").touch()
    (tmp_path / "maya/cmds.py").touch()
    path = os.pathsep.join((str(tmp_path), str(pathlib.Path(arrays.__file__).parents[1])))
    text = "import sys; from delven import arrays; print(arrays._backend.__name__, 'delven._delven' in sys.modules)"
    environment = dict(os.environ, PYTHONPATH=path)
    printed = subprocess.check_output([sys.executable, "-c", text], env=environment, text=True)
    assert printed.split() == ["delven.mayaArrays", "False"]
