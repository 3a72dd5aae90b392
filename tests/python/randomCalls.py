"""Calls every command with random arguments, in a scratch folder.

    delvenpy randomCalls.py SEED COUNT [command]...

A call gives a result or raises one of four exceptions, and one that raises leaves the scene as it was. Prints each
finding with the call that shows it; the exit status is 1 if there is one.
"""

import os
import random
import sys
import tempfile

from delven import _delven, cmds, mel

# They end the program, or undo what the check compares with.
LEFT_OUT = {"quit", "headlessDump", "undo", "redo", "flushUndo", "undoInfo"}
# They run other commands or load and save whole scenes: what failed half-way inside them has happened.
# dv_getComponentList selects what it found, which is nothing, before it fails: scripts know it so.
RUNNING_OTHERS = {"source", "evalDeferred", "file", "unloadPlugin", "loadPlugin", "dv_getComponentList"}

NAMES = ["box", "boxShape", "bs", "skin", "j1", "persp", "time1", "ghost", "box.tx", "bs.w[0]", "box.vtx[0]", "box.f[*]",
         "box.vtx[0:99]", "bs.it[0].itg[0].iti[6000].ipt", "skin.wl[3].w[1]", "|box", "*", "", "-q", "a b", ":", "a:b",
         "box.", "..", "ü", "mesh", "transform", "x.obj", "x.ma", "double3", "string", "pointArray", "w", "[", "%s\"; \\"]
NUMBERS = [0, 1, 2, 3, 7, -1, 2**31 - 1, -(2**31), 0.5, -0.0, 1e300, float("nan"), float("inf"), True, False]
ODD = [None, object(), 2**40, [], [[]], {}, "\ud800", "a\0b", b"bytes", lambda: 1, (1, 2, 3), ["box", "j1"], iter([1])]


def scene():
    cmds.file(new=True, force=True)
    mel.eval('polyCube -n "box"; duplicate -n "up" "box"; blendShape -n "bs" "up" "box"; select -cl;'
             'joint -n "j1"; joint -n "j2" -p 0 1 0; duplicate -n "skinned" "up"; skinCluster -n "skin" "j1" "j2" "skinned"')


def value(chance, kind=None):
    if chance.random() < 0.05:
        return chance.choice(ODD)
    if kind == "string" or (kind is None and chance.random() < 0.7):
        return chance.choice(NAMES)
    return chance.choice(NUMBERS)


def flags(chance, syntax):
    given = {}
    for short, long, kinds, many in chance.sample(syntax["flags"], min(len(syntax["flags"]), chance.randrange(4))):
        name = long if long and chance.random() < 0.5 else short
        if not kinds or chance.random() < 0.1:
            given[name] = chance.random() < 0.9
        elif len(kinds) == 1:
            given[name] = value(chance, kinds[0])
        else:
            given[name] = tuple(value(chance, kind) for kind in kinds)
        if many and chance.random() < 0.3:
            given[name] = [given[name]] * 2
    for mode in ("query", "edit"):
        if syntax["has" + mode.capitalize()] and chance.random() < 0.2:
            given[mode] = True
    if chance.random() < 0.03:
        given["nonsense"] = 1
    return given


def check(chance, name, syntax):
    """What is wrong with one random call; None if nothing is."""
    arguments = [value(chance) for _ in range(chance.randrange(4))]
    keywords = flags(chance, syntax)
    before = cmds.headlessDump()
    try:
        getattr(cmds, name)(*arguments, **keywords)
        return None
    except (TypeError, ValueError, RuntimeError, OverflowError):
        if name in RUNNING_OTHERS or cmds.headlessDump() == before:
            return None
        problem = "raised and changed the scene"
    except Exception as error:
        problem = f"raised {type(error).__name__}: {error}"
    return f"{name}(*{arguments}, **{keywords}) {problem}"


def main(seed, count, names):
    found = 0
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        plugin = cmds.pluginInfo("DELVENTools", query=True, path=True)
        for name in names or sorted(set(_delven.names()) - LEFT_OUT):
            scene()
            syntax = _delven.syntax(name)
            chance = random.Random(f"{seed} {name}")
            for number in range(count):
                if number % 50 == 0:
                    scene()
                problem = check(chance, name, syntax)
                if problem:
                    print(problem)
                    found += 1
            if not cmds.pluginInfo("DELVENTools", query=True, loaded=True):
                cmds.loadPlugin(plugin)
        os.chdir("/")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(int(sys.argv[1]), int(sys.argv[2]), sys.argv[3:]))
