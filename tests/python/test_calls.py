"""How arguments of Python reach the host, what comes back, and what is raised."""

import enum
import json
import os
import subprocess
import sys
import threading

import pytest

from delven import cmds, mel, utils


class Side(enum.IntEnum):
    LEFT = 1


# --- Results

RESULTS = [
    ("cmds.objExists('box')", True),
    ("cmds.objExists('ghost')", False),
    ("cmds.ls('ghost')", []),
    ("cmds.ls('ghost', uuid=True)", []),
    ("cmds.ls('box')", ["box"]),
    ("cmds.listRelatives('box', noIntermediate=True)", ["boxShape"]),
    ("cmds.listRelatives('boxShape', children=True)", None),
    ("cmds.listConnections('persp')", None),
    ("cmds.connectionInfo('box.tx', destinationFromSource=True)", []),
    ("cmds.connectionInfo('box.tx', isSource=True)", False),
    ("cmds.isConnected('box.tx', 'box.ty')", False),
    ("cmds.select('box')", None),
    ("cmds.getAttr('box.tx')", 0.0),
    ("cmds.getAttr('box.visibility')", True),
    ("cmds.getAttr('box.rotateOrder')", 0),
    ("cmds.getAttr('box.translate')", [(0.0, 0.0, 0.0)]),
    ("cmds.rotate('45deg', 0, '1rad', 'box')", None),
    ("cmds.currentTime('2sec')", 48.0),
    ("cmds.getAttr('time1.outTime', time='1sec')", 24.0),
    ("cmds.getAttr('box.tx', lock=True)", False),
    ("cmds.getAttr('box.tx', settable=True)", True),
    ("cmds.getAttr('box.matrix')", [float(at % 5 == 0) for at in range(16)]),
    ("cmds.getAttr('box.tx', type=True)", "doubleLinear"),
    ("cmds.getAttr('bs.weight')", [(0.0, 0.0)]),
    ("cmds.getAttr('bs.weight[0:1]')", [0.0, 0.0]),
    ("cmds.getAttr('bs.weight', multiIndices=True)", [0, 1]),
    ("cmds.polyEvaluate('box', vertex=True)", 8),
    ("cmds.polyEvaluate('box', vertex=True, face=True)", {"vertex": 8, "face": 6}),
    ("sorted(cmds.polyEvaluate('box'))[:3]", ["edge", "edgeComponent", "face"]),
    ("cmds.polyEvaluate('box', boundingBox=True)", ((-0.5, 0.5), (-0.5, 0.5), (-0.5, 0.5))),
    ("cmds.polyEvaluate('box', area=True)", 6.0),
    ("cmds.polyEvaluate('box', area=True, worldArea=True)", {"area": 6.0, "worldArea": 6.0}),
    ("cmds.polyEvaluate('box.f[2]', faceArea=True)", [1.0]),
    ("cmds.attributeQuery('tx', node='box', exists=True)", True),
    ("cmds.undoInfo(query=True, state=True)", True),
    ("cmds.undoInfo(query=True, redoName=True)", ""),
    ("cmds.undoInfo(query=True, infinity=True)", True),
    ("cmds.undoInfo(query=True, length=True)", 0),
    ("cmds.sets('initialShadingGroup', isIntersecting='initialShadingGroup')", True),
    ("cmds.sets('initialShadingGroup', subtract='initialShadingGroup')", None),
    ("cmds.optionVar(exists='ghost')", False),
    ("cmds.pluginInfo('DELVENTools', query=True, loaded=True)", True),
    ("cmds.file(query=True, modified=True)", True),
    ("cmds.about(batch=True)", True),
    ("cmds.namespace(exists='ghost')", False),
    ("cmds.rename('box', 'crate')", "crate"),
    ("cmds.nodeType('box')", "transform"),
    ("cmds.nodeType('box', apiType=True)", "kTransform"),
    ("cmds.nodeType('lambert', isTypeName=True, derived=True)", ["lambert"]),
    ("cmds.blendShape('bs', query=True, target=True)", ["up", "out"]),
]


@pytest.mark.parametrize("call, expected", RESULTS, ids=[call for call, _ in RESULTS])
def test_results_have_the_types_of_python(shapes, call, expected):
    result = eval(call)
    assert result == expected
    # Equal is not enough: True == 1, and JSON tells them apart.
    assert json.dumps(result) == json.dumps(expected)


def test_numbers_keep_all_their_bits(box):
    for value in (0.1 + 0.2, 1e-300, -0.0, 123456789.12345679):
        cmds.setAttr("box.translateX", value)
        assert cmds.getAttr("box.tx").hex() == value.hex()


def test_point_arrays_are_tuples(shapes):
    item = "bs.it[0].itg[0].iti[6000]"
    points = [(0.5, 1.5, 2.5, 1.0), (0.1, 0.2, 0.3, 1.0)]
    cmds.setAttr(item + ".ipt", 2, *points, type="pointArray")
    cmds.setAttr(item + ".ict", 2, "vtx[1]", "vtx[3]", type="componentList")
    assert cmds.getAttr(item + ".ipt") == points
    assert cmds.getAttr(item + ".ict") == ["vtx[1]", "vtx[3]"]


def test_arrays_are_lists_without_their_length(box):
    for kind, values in (("Int32Array", [3, -1, 2]), ("doubleArray", [0.1, 1e-300]), ("doubleArray", [])):
        cmds.addAttr(box, longName="array", dataType=kind)
        cmds.setAttr("box.array", values, type=kind)
        assert cmds.getAttr("box.array") == (values or None)
        cmds.deleteAttr("box.array")


# --- Arguments


def test_texts_are_never_flags(box):
    cmds.addAttr(box, longName="notes", dataType="string")
    for text in ("-draft", "-type", "-q", "--", "- x", 'a "b" \\', "ü\n\t", ""):
        cmds.setAttr("box.notes", text, type="string")
        assert cmds.getAttr("box.notes") == text
    assert cmds.optionVar(stringValue=("-key", "-value")) is None
    assert cmds.optionVar(query="-key") == "-value"


def test_lists_are_flattened_and_numbers_taken_as_they_are(box):
    numpy = pytest.importorskip("numpy")
    cmds.setAttr("box.t", (1, [2, 3]))
    assert cmds.getAttr("box.t") == [(1.0, 2.0, 3.0)]
    cmds.setAttr("box.t", numpy.float32(0.5), numpy.int64(2), numpy.float64(3))
    assert cmds.getAttr("box.t") == [(0.5, 2.0, 3.0)]
    cmds.polyCube(name="fine", subdivisionsX=numpy.int32(3), constructionHistory=numpy.bool_(False))
    assert cmds.polyEvaluate("fine", face=True) == 14
    cmds.polyCube(name="one", subdivisionsX=Side.LEFT)
    assert cmds.polyEvaluate("one", face=True) == 6
    cmds.select(["box", ("fine", ["one"])])
    assert cmds.ls(selection=True) == ["box", "fine", "one"]


def test_switches_and_modes(capsys):
    assert cmds.polyCube(constructionHistory=False, name="a") == ["a"]
    assert cmds.ls(selection=False, type="mesh") == ["aShape"]
    cmds.select("a")
    assert cmds.ls(sl=True) == cmds.ls(sl=1) == ["a"]
    assert cmds.blendShape("a", name="bs", query=False) == ["bs"]
    # This command has flags of its own that are called like the modes.
    with pytest.raises(RuntimeError, match="^Maya command error$"):
        cmds.dv_displayMessage(e="text")
    assert capsys.readouterr().err == "# Error: text #\n"


def test_flags_that_may_stand_several_times(shapes):
    cmds.blendShape("bs", edit=True, weight=[(0, 0.5), (1, 1)])
    assert cmds.getAttr("bs.w") == [(0.5, 1.0)]
    cmds.blendShape("bs", edit=True, weight=(0, 0.25))
    assert cmds.getAttr("bs.w[0]") == 0.25
    assert cmds.ls(type=["mesh", "blendShape"], head=1)
    joints = [cmds.joint(name=name, position=(0, at, 0)) for at, name in enumerate(("j1", "j2"))]
    skin = cmds.skinCluster(joints, "box", toSelectedBones=True, name="skin")[0]
    cmds.skinPercent(skin, "box.vtx[0]", transformValue=[("j1", 0.25), ("j2", 0.75)])
    assert cmds.skinPercent(skin, "box.vtx[0]", query=True, value=True) == [0.25, 0.75]
    assert cmds.skinPercent(skin, "box.vtx[0]", query=True, transform="j2") == 0.75
    other = cmds.skinCluster(joints, cmds.duplicate("box")[0], toSelectedBones=True)[0]
    assert cmds.copySkinWeights(ss=skin, ds=other, noMirror=True, influenceAssociation=["name", "closestJoint"]) is None
    assert cmds.skinPercent(other, "box1.vtx[0]", query=True, value=True) == [0.25, 0.75]
    cmds.skinPercent(skin, "box.vtx[0]", transformMoveWeights=["j1", "j2"])
    assert cmds.skinPercent(skin, "box.vtx[0]", query=True, ignoreBelow=0.5, value=True) == [1.0]
    cmds.joint("j1", edit=True, orientJoint="xyz", secondaryAxisOrient="zup", children=True, zeroScaleOrient=True)
    assert cmds.joint("j1", query=True, degreeOfFreedom=True) == "xyz"
    assert cmds.joint("j1", query=True, limitSwitchX=True) is False


def test_empty_lists(box):
    cmds.select(box)
    assert cmds.ls([]) == []
    assert len(cmds.ls(*[])) > 5
    with pytest.raises(TypeError):
        cmds.listConnections([])
    assert cmds.ls(selection=True) == ["box"]
    cmds.select([])
    assert cmds.ls(selection=True) == []


# --- Errors

WRONG = [
    ("cmds.ls(xyz=1)", TypeError, "Invalid flag 'xyz'"),
    ("cmds.ls(modified=True)", TypeError, "Flag 'modified' is not covered by this host."),
    ("cmds.polyCube(subdivisionsX='a')", TypeError, "Invalid arguments for flag 'subdivisionsX'.  Expected int, got str"),
    ("cmds.polyCube(sx=(1, 2))", TypeError, "Invalid arguments for flag 'sx'.  Expected int, got ( int, int )"),
    ("cmds.polyCube(sx=1.5)", TypeError, "Invalid arguments for flag 'sx'.  Expected int, got float"),
    ("cmds.blendShape('box', edit=True, target=('box', 0.5, 'box', 1))", TypeError,
     "Invalid arguments for flag 'target'.  Expected ( string, int, string, float ), got ( str, float, str, int )"),
    ("cmds.xform(t=True)", TypeError,
     "Invalid arguments for flag 't'.  Expected ( distance, distance, distance ), got bool"),
    ("cmds.xform(ro=('45deg', '1in', 0))", TypeError,
     "Invalid arguments for flag 'ro'.  Expected ( angle, angle, angle ), got ( str, str, int )"),
    ("cmds.playbackOptions(min='soon')", TypeError, "Invalid arguments for flag 'min'.  Expected time, got str"),
    ("cmds.optionVar(intValue=('a', 3.9))", TypeError,
     "Invalid arguments for flag 'intValue'.  Expected ( string, int ), got ( str, float )"),
    ("cmds.polyCube(name=5)", TypeError, "Invalid arguments for flag 'name'.  Expected string, got int"),
    ("cmds.polyCube(name=None)", TypeError, "Invalid arguments for flag 'name'.  Expected string, got NoneType"),
    ("cmds.ls(selection='yes')", TypeError, "Invalid arguments for flag 'selection'.  Expected bool, got str"),
    ("cmds.polyCube(sx=1 << 31)", OverflowError, "Python int too large to convert to a 32-bit int"),
    ("cmds.setAttr('box.tx', 10 ** 30)", OverflowError, "Python int too large to convert to a 32-bit int"),
    ("cmds.select(None)", TypeError, "Object None is invalid"),
    ("cmds.select(x for x in 'a')", TypeError, None),
    ("cmds.select('ghost')", ValueError, "No object matches name: ghost"),
    ("cmds.getAttr('ghost.tx')", ValueError, "No object matches name: ghost.tx"),
    ("cmds.setAttr('ghost.tx', 1)", RuntimeError, "setAttr: No object matches name: ghost.tx"),
    ("cmds.delete('twin')", ValueError, "More than one object matches name: twin"),
    ("cmds.ghost()", AttributeError, "module 'maya.cmds' has no attribute 'ghost'"),
    ("cmds.select('a\\0b')", ValueError, "embedded null character"),
    ("cmds.select('\\ud800')", ValueError, None),
    ("cmds.error('my text')", RuntimeError, "my text"),
    ("mel.eval('ghost')", RuntimeError, 'Error occurred during execution of MEL script\nline 1.1: Cannot find procedure "ghost".'),
    ("cmds.dv_blendShapeExtractTarget()", RuntimeError, "Maya command error"),
    ("cmds.dv_meshEvaluate(ghost=1)", TypeError, "Invalid flag 'ghost'"),
]


@pytest.mark.parametrize("call, kind, text", WRONG, ids=[call for call, _, _ in WRONG])
def test_errors_have_their_kinds_and_texts_and_change_nothing(box, call, kind, text):
    for group in ("g1", "g2"):
        cmds.group(empty=True, name=group)
        cmds.group(empty=True, name="twin", parent=group)
    before = cmds.headlessDump()
    with pytest.raises(kind) as caught:
        eval(call)
    assert type(caught.value) is kind or kind is ValueError
    assert text is None or str(caught.value) == text
    assert cmds.headlessDump() == before


def test_a_list_that_contains_itself_has_an_end():
    endless = []
    endless.append(endless)
    with pytest.raises(ValueError, match="nested too deeply"):
        cmds.select(endless)


def test_locked_and_connected_plugs(box):
    cmds.setAttr("box.tx", lock=True)
    with pytest.raises(RuntimeError) as caught:
        cmds.setAttr("box.tx", 1)
    assert str(caught.value) == "setAttr: The attribute 'box.translateX' is locked or connected and cannot be modified."


# --- Languages, time and place


def test_scripts_of_both_languages_see_one_scene(box, capsys):
    assert mel.eval("ls -type mesh") == ["boxShape"]
    assert mel.eval("string $none[]; $none") == []
    assert mel.eval("proc float half(float $x) { return $x / 2; } half(1)") == 0.5
    assert mel.eval("warning \"careful\"; print \"printed\\n\"; ") is None
    shown = capsys.readouterr()
    assert shown.out == "printed\n"
    assert shown.err == "# Warning: careful #\n"
    cmds.warning("mine")
    assert capsys.readouterr().err == "# Warning: mine #\n"


def test_commands_come_and_go_with_their_plugin():
    old = cmds.dv_meshEvaluate
    path = cmds.pluginInfo("DELVENTools", query=True, path=True)
    cmds.unloadPlugin("DELVENTools")
    try:
        assert "dv_meshEvaluate" not in dir(cmds)
        with pytest.raises(AttributeError):
            cmds.dv_meshEvaluate
        with pytest.raises(RuntimeError, match="Cannot find procedure"):
            old()
    finally:
        cmds.loadPlugin(path)
    assert "dv_meshEvaluate" in dir(cmds)
    assert "Description" in cmds.dv_meshEvaluate(help=True)


def test_deferred_work_runs_after_the_outermost_command(capsys):
    seen = []
    utils.executeDeferred(seen.append, 1)
    cmds.evalDeferred("import builtins; builtins.seen_later = 1")
    cmds.evalDeferred(lambda: cmds.polyCube(name="late") and seen.append(2), lowestPriority=True)
    utils.executeDeferred(lambda: 1 / 0)
    assert seen == []
    cmds.ls()
    assert seen == [1, 2]
    assert cmds.objExists("late")
    assert "ZeroDivisionError" in capsys.readouterr().err
    with pytest.raises(TypeError):
        utils.executeDeferred(3)


def test_undo_takes_back_one_call(box):
    before = cmds.headlessDump()
    cmds.undoInfo(openChunk=True)
    cmds.move(1, 2, 3, box)
    cmds.rename(box, "other")
    cmds.undoInfo(closeChunk=True)
    cmds.undo()
    assert cmds.headlessDump() == before


def test_another_thread_gets_a_clear_error(box):
    errors = []

    def use():
        try:
            cmds.ls()
        except RuntimeError as error:
            errors.append(str(error))

    thread = threading.Thread(target=use)
    thread.start()
    thread.join()
    assert errors == ["Only the thread that started the host may use it. Let that thread call what you need."]


def run(*words, **options):
    return subprocess.run([os.environ["DELVENPY"], *words], capture_output=True, text=True, timeout=60, **options)


def test_programs(tmp_path):
    script = tmp_path / "a script.py"
    script.write_text("import sys\nimport maya.cmds as cmds\nprint(cmds.about(batch=True), sys.argv[1:], __name__)\n")
    done = run(str(script), "-x", "y")
    assert (done.returncode, done.stdout) == (0, "True ['-x', 'y'] __main__\n"), done.stderr
    done = run("-c", "from delven import cmds; cmds.quit(exitCode=3)")
    assert done.returncode == 3
    done = run("-m", "json.tool", "--help")
    assert done.returncode == 0
    done = run("-c", "import maya.OpenMaya")
    assert done.returncode == 1
    assert "ImportError: The headless host does not cover maya.OpenMaya." in done.stderr
    done = run("ghost.py")
    assert (done.returncode, done.stderr) == (1, "delvenpy: there is no file 'ghost.py'.\n")
    done = run("--nonsense")
    assert done.returncode == 1
    assert "unknown option" in done.stderr


def test_a_real_maya_is_never_shadowed(tmp_path):
    package = tmp_path / "maya"
    package.mkdir()
    (package / "__init__.py").write_text("")
    (package / "cmds.py").write_text("name = 'the real one'\n")
    environment = {**os.environ, "PYTHONPATH": str(tmp_path)}
    done = run("-c", "import maya.cmds; from delven import cmds; print(maya.cmds.name, cmds.name)", env=environment)
    assert done.stdout == "the real one the real one\n", done.stderr


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork here")
def test_forks():
    # Before the host starts, a fork is a process like any other. Afterwards it is refused.
    text = """
import os
def child(text):
    if os.fork() == 0:
        try:
            exec(text)
        except RuntimeError as error:
            print(str(error)[:25], flush=True)
        os._exit(0)
    os.wait()
child("from delven import cmds; print(len(cmds.polyCube()), flush=True)")
from delven import cmds
cmds.ls()
child("cmds.ls()")
"""
    assert run("-c", text).stdout == "2\nThis process is a fork of\n"


def test_an_interrupt_ends_a_script():
    text = "\n".join([
        "import os",
        "from delven import mel",
        "os.system(f'(sleep 0.3; kill -INT {os.getpid()}) &')",
        "try:",
        "    mel.eval('while (true) {}')",
        "except KeyboardInterrupt:",
        "    print('interrupted', mel.eval('1 + 1'))",
        # Python's own handling of interrupts is back, also after scripts inside of scripts.
        "from delven import cmds, utils",
        "utils.executeDeferred(lambda: mel.eval('print nested'))",
        "mel.eval('print outer')",
        "import signal, time",
        "os.system(f'(sleep 0.2; kill -INT {os.getpid()}) &')",
        "try:",
        "    time.sleep(20)",
        "except KeyboardInterrupt:",
        "    print(' again')",
    ])
    assert run("-c", text).stdout == "interrupted 2\nouternested again\n"


def test_a_second_interpreter_is_refused():
    interpreters = pytest.importorskip("_xxsubinterpreters")
    del interpreters
    text = "\n".join([
        "import sys, _xxsubinterpreters as inner",
        "one = inner.create()",
        "path = repr(sys.path)",
        "inner.run_string(one, f'''import sys",
        "sys.path[:] = {path}",
        "try:",
        "    from delven import cmds; cmds.ls()",
        "except ImportError as error:",
        "    print(error)''')",
    ])
    assert "second interpreter" in run("-c", text).stdout
