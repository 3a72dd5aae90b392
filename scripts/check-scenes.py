#!/usr/bin/env python3
"""Opens, saves, opens again and compares every scene (.ma) of a folder, and prints a table.

    scripts/check-scenes.py <delvenbatch> [folder]     default: scenes/ in DELVEN_DATA_FOLDER

Each scene is copied first. It is saved once without an edit, and once after a node was renamed and named back and
another was made and deleted, so that every statement was compared with the scene: both files must have the same bytes.
A third file is saved after an edit: a new node, and a new value of one transform. A reader of this script's own, which
only cuts statements, then compares its nodes, statements and connections with those of the scene.

Ends with 1 if a scene fails.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

TOUCH = "createNode network -n delvenTouched; delete delvenTouched; string $dump = `headlessDump`;"
EDIT = "createNode network -n delvenAdded; addAttr -ln note -dt \"string\" delvenAdded; " \
       "setAttr -type \"string\" delvenAdded.note \"a;b\";"


def statements(text):
    """The statements of a scene, without blanks and comments between them. Knows strings and nothing else."""
    found = []
    at = 0
    while True:
        blank = re.compile(rb"(?:\s+|//[^\n]*)*").match(text, at)
        at = blank.end()
        if at >= len(text):
            return found
        end = at
        while text[end:end + 1] != b";":
            if text[end:end + 1] == b'"':
                end += 1
                while text[end:end + 1] != b'"':
                    end += 2 if text[end:end + 1] == b"\\" else 1
            end += 1
        found.append(text[at:end + 1])
        at = end + 1


def graph(text):
    """Nodes with their statements as sets, and connections in order."""
    nodes = {}
    connections = []
    current = None
    for statement in statements(text):
        keyword = statement.split(None, 1)[0]
        if keyword in (b"createNode", b"select"):
            current = nodes.setdefault(statement, set())
        elif keyword in (b"setAttr", b"addAttr", b"rename"):
            current.add(statement)
        elif keyword == b"connectAttr":
            connections.append(statement)
    return nodes, connections


def run(program, scene, script):
    result = subprocess.run([program, "-noAutoloadPlugins", "-file", str(scene), "-command", script],
                            capture_output=True, timeout=600, check=False)
    output = (result.stdout + result.stderr).decode("utf-8", "replace")
    if result.returncode != 0:
        raise RuntimeError(output.strip().splitlines()[-1] if output.strip() else f"status {result.returncode}")
    return output


def numbers_of_nodes(program, scene):
    output = run(program, scene, 'print("nodes " + size(`ls`) + "\\n")')
    count = int(re.search(r"^nodes (\d+)$", output, re.M).group(1))
    kept = re.search(r"Kept, but not evaluated: (.*)\.", output)
    return count, sum(int(part.split()[0]) for part in kept.group(1).split(", ")) if kept else 0


def check(program, original, copy):
    """Returns the number of nodes, of kept nodes, and seconds of opening and saving; raises what fails."""
    text = original.read_bytes()
    shutil.copyfile(original, copy)
    started = time.monotonic()
    run(program, copy, "file -save")
    seconds = time.monotonic() - started
    if copy.read_bytes() != text:
        raise RuntimeError("the bytes differ after saving")
    run(program, copy, TOUCH + " file -save")
    if copy.read_bytes() != text:
        raise RuntimeError("the bytes differ after everything was read")
    run(program, copy, EDIT + " file -save")
    before, after = graph(text), graph(copy.read_bytes())
    added = {b'createNode network -n "delvenAdded";'}
    if set(after[0]) - set(before[0]) != added or set(before[0]) - set(after[0]):
        raise RuntimeError("other nodes after an edit")
    changed = [node for node, own in before[0].items() if after[0][node] != own]
    if changed or before[1] != after[1]:
        raise RuntimeError(f"an edit changed other statements: {changed[:1]}")
    if b'"a;b"' not in b"".join(after[0][added.pop()]):
        raise RuntimeError("the edit was not saved")
    return (*numbers_of_nodes(program, copy), seconds)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    program = sys.argv[1]
    folder = pathlib.Path(sys.argv[2] if len(sys.argv) == 3 else os.environ.get("DELVEN_DATA_FOLDER", ""))
    if len(sys.argv) == 2:
        folder = folder / "scenes"
        if not os.environ.get("DELVEN_DATA_FOLDER") or not folder.is_dir():
            sys.exit("check-scenes: DELVEN_DATA_FOLDER names no folder with scenes in it")
    scenes = sorted(folder.rglob("*.ma"))
    if not scenes:
        sys.exit(f"check-scenes: there is no scene in {folder}")
    failed = 0
    print(f"{'scene':44} {'MB':>7} {'nodes':>6} {'kept':>5} {'seconds':>7}  result")
    with tempfile.TemporaryDirectory() as scratch:
        for scene in scenes:
            name = str(scene.relative_to(folder))
            size = scene.stat().st_size / 1e6
            try:
                count, kept, seconds = check(program, scene, pathlib.Path(scratch) / scene.name)
                print(f"{name:44} {size:7.2f} {count:6} {kept:5} {seconds:7.2f}  same")
            except (RuntimeError, subprocess.TimeoutExpired) as failure:
                failed += 1
                print(f"{name:44} {size:7.2f} {'':6} {'':5} {'':7}  {failure}")
    print(f"{len(scenes)} scenes, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
