"""Calls made from the syntax of the commands: random ones, and each flag of the kit's commands in both languages."""

import os
import pathlib
import subprocess

import pytest

from delven import _delven, cmds, mel

KIT = [name for name in _delven.names() if name.startswith("dv_")]
# Of these docs/commands.md says that undo restores nothing, or a part.
FOR_GOOD = {"dv_blendShapeImportData", "dv_editTweakNode", "dv_getComponentList", "dv_polyMapVertexOrder",
            "dv_reorderRotation", "dv_blendShapeEditWeights", "dv_blendShapeSetInbetweenPosition",
            "dv_blendShapeSplitTarget", "dv_polySymmetry"}
VALUES = {"string": "boxShape", "int": 1, "unsigned int": 1, "bool": True, "float": 0.5}


def test_random_calls():
    count = os.environ.get("DELVEN_RANDOM_CALLS", "40")
    script = pathlib.Path(__file__).with_name("randomCalls.py")
    done = subprocess.run([os.environ["DELVENPY"], script, "1", count], capture_output=True, text=True, timeout=3000)
    assert done.returncode == 0, done.stdout + done.stderr[-2000:]


def outcome(call):
    """What a call gives: its result, or that it failed, and the scene afterwards."""
    try:
        result = call()
    except (RuntimeError, TypeError, ValueError):
        result = "failed"
    # MEL has no booleans and no None.
    return [] if result is None else result, cmds.headlessDump()


def literal(value):
    return '"' + value + '"' if isinstance(value, str) else str(value)


def flags_of_the_kit():
    assert len(KIT) == 19
    for name in KIT:
        for short, long, kinds, _ in _delven.syntax(name)["flags"]:
            yield name, short, long, kinds


@pytest.mark.parametrize("name, short, long, kinds", flags_of_the_kit(), ids=lambda part: str(part))
def test_both_languages_do_the_same(tmp_path, monkeypatch, name, short, long, kinds):
    monkeypatch.chdir(tmp_path)
    results = []
    values = [VALUES[kind] for kind in kinds]
    words = " ".join(literal(value) for value in values).replace("True", "1")

    def by_mel():
        return mel.eval(f'{name} -{long} {words} "bs"')

    def by_python():
        return getattr(cmds, name)("bs", **{short: values[0] if len(values) == 1 else tuple(values) or True})

    for call in (by_mel, by_python):
        cmds.file(new=True, force=True)
        mel.eval('polyCube -n "box"; duplicate -n "up" "box"; move -r 0 1 0 "up.vtx[2]"; blendShape -n "bs" "up" "box"')
        before = cmds.headlessDump()
        entries = cmds.undoInfo(query=True)
        results.append(outcome(call))
        for _ in range(cmds.undoInfo(query=True) - entries):
            cmds.undo()
        assert cmds.headlessDump() == before or name in FOR_GOOD
    assert results[0] == results[1]
