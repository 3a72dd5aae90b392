#!/usr/bin/env python3
"""Runs examples/batch/mirrorTargets.mel and checks the report, the exported files and the saved scenes.

    checkBatchExample.py <delvenbatch> <folder of the example> <folder to work in>

The scenes of the example run as in a fresh clone. Then a folder with faulty scenes beside a good one, with names that need
escaping, and the folder of the scenes as its own output, which is refused.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

PROGRAM, EXAMPLE, WORK = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
# Written for the scenes by hand: what has to be made, from what, in which deformer of which mesh.
MADE = {"mask.ma": {("shapes", "smile_L", "smile_R"), ("shapes", "L_blink", "R_blink")},
        "cloth and box.ma": {("clothShapes", "leftFold", "rightFold")}}
MESHES = {"shapes": "mask", "clothShapes": "cloth", "boxShapes": "box"}
# The cloth's vertex 9 is lifted; its partner has no mirror image either.
ASYMMETRIC = {"shapes": 0, "clothShapes": 2, "boxShapes": 0}
RIGHT_NAMES = {"L_x": "R_x", "x_L": "x_R", "x_l_y": "x_r_y", "l_x": "r_x", "x_left": "x_right", "Left_x": "Right_x",
               "LEFT_x": "RIGHT_x", "xLeft": "xRight", "leftX": "rightX", "xLeftY": "xRightY", "xLeft2": "xRight2",
               "cleft": "", "leftover": "", "xLeftover": "", "lip": "", "Lip_up": "", "x_lower": "", "x_R": "", "xL": ""}


def expect(condition, text):
    if not condition:
        sys.exit(f"checkBatchExample: {text}")


def run(*words):
    return subprocess.run([PROGRAM, *map(str, words)], capture_output=True, text=True, encoding="utf-8", timeout=300,
                          check=False)


def mel(text):
    return '"' + str(text).replace("\\", "\\\\").replace('"', '\\"') + '"'


def batch(output, scenes=None):
    setting = f"string $delvenBatchOutput = {mel(output)};"
    if scenes is not None:
        setting += f" string $delvenBatchScenes = {mel(scenes)};"
    return run("-command", setting, "-script", EXAMPLE / "mirrorTargets.mel")


def report_of(output):
    """The JSON, whose numbers must be those of the table."""
    report = json.loads((output / "report.json").read_text(encoding="utf-8"))
    rows = [re.split(r"  +", line.strip()) for line in (output / "report.txt").read_text(encoding="utf-8").split("\n\n")[0]
            .splitlines()]
    numbers = [[scene["file"].replace("\ufffd", "?"), *(str(n) for n in (len(scene["blendShapes"]), scene["targets"], scene["made"],
                                                  scene["exported"], scene["asymmetricVertices"])), scene["result"]]
               for scene in report["scenes"]]
    expect(rows[1:] == numbers, f"the table says {rows[1:]}, the JSON {numbers}")
    return report


def aliases(scene):
    """Target names by deformer, as the text of a scene has them."""
    blocks = re.findall(r'createNode blendShape -n "(\w+)";(.*?)(?=createNode|connectAttr)', scene.read_text(), re.S)
    return {name: re.findall(r'"(\w+)","weight\[\d+\]"', block) for name, block in blocks}


def points(scene, mesh, settings):
    """Where the vertices of a mesh are, with these weights on."""
    script = "".join(f"setAttr {plug} {value};" for plug, value in settings.items())
    script += f'print(`xform -q -os -t "{mesh}.vtx[*]"`);'
    result = run("-noAutoloadPlugins", "-file", scene, "-command", script)
    expect(result.returncode == 0, f"{scene} cannot be read: {result.stderr}")
    numbers = [float(line) for line in result.stdout.split()]
    return [tuple(numbers[i:i + 3]) for i in range(0, len(numbers), 3)]


def expect_mirrored(saved, deformer, left, right):
    mesh = MESHES[deformer]
    rest = points(saved, mesh, {})
    at = {point: vertex for vertex, point in enumerate(rest)}
    for weight in (1, 0.5):
        shapes = [points(saved, mesh, {f"{deformer}.{name}": weight}) for name in (left, right)]
        expect(shapes[0] != rest, f"{left} moves nothing")
        for vertex, (x, y, z) in enumerate(rest):
            moved = [abs(a - b) > 1e-6 for a, b in zip(shapes[0][vertex], rest[vertex])]
            partner = at.get((-x, y, z))
            expect(partner is not None or not any(moved), f"a vertex without partner moves in {left}")
            if partner is None:
                continue
            image = (-shapes[0][vertex][0],) + shapes[0][vertex][1:]
            expect(all(abs(a - b) < 1e-6 for a, b in zip(image, shapes[1][partner])),
                   f"{right} at {weight} is no mirror image of {left}: vertex {partner} of {saved.name}")


def check_scene(source, saved, scene):
    names = aliases(source)
    made = {(shape["name"], new["from"], new["name"]) for shape in scene["blendShapes"] for new in shape["made"]}
    expect(made == MADE[source.name], f"{source.name}: made {made}")
    expect(scene["targets"] == sum(map(len, names.values())), f"{source.name}: {scene['targets']} targets")
    expect([shape["name"] for shape in scene["blendShapes"]] == sorted(names), f"{source.name}: other blend shapes")
    after = aliases(saved)
    for shape in scene["blendShapes"]:
        name = shape["name"]
        wanted = names[name] + [new for deformer, _, new in MADE[source.name] if deformer == name]
        expect(sorted(after[name]) == sorted(wanted), f"{name} has the targets {after[name]}")
        expect(shape["asymmetricVertices"] == ASYMMETRIC[name], f"{name}: {shape['asymmetricVertices']} asymmetric")
        exported = json.loads(pathlib.Path(shape["exported"]).read_text(encoding="utf-8"))
        expect(sorted(target["name"] for target in exported.values()) == sorted(wanted), f"{name}: not all are exported")
        for target in names[name]:
            plug = {f"{name}.{target}": 1}
            expect(points(source, MESHES[name], plug) == points(saved, MESHES[name], plug), f"{target} was changed")
    for deformer, left, right in MADE[source.name]:
        expect_mirrored(saved, deformer, left, right)


def check_example():
    output = WORK / "out put"
    sources = sorted((EXAMPLE / "scenes").glob("*.ma"))
    before = [source.read_bytes() for source in sources]
    result = batch(output)
    expect(result.returncode == 0, result.stdout + result.stderr)
    report = report_of(output)
    scenes = {scene["file"]: scene for scene in report["scenes"]}
    expect(set(scenes) == set(MADE) and report["failed"] == 0, f"the report is on {set(scenes)}")
    for source in sources:
        expect(scenes[source.name]["result"] == "done", f"{source.name}: {scenes[source.name]}")
        check_scene(source, output / source.name, scenes[source.name])
    expect([source.read_bytes() for source in sources] == before, "a source was changed")


def check_names():
    ask = "".join(f'print("{name}=" + delvenBatchRightName("{name}") + "\\n");' for name in RIGHT_NAMES)
    result = run("-command", f"string $delvenBatchOutput = {mel(WORK / 'names')};", "-script", EXAMPLE / "mirrorTargets.mel",
                 "-command", ask)
    answers = dict(line.split("=") for line in result.stdout.splitlines() if "=" in line)
    expect(answers == RIGHT_NAMES, f"right names: {answers}")


def check_faults():
    folder, output = WORK / "faults", WORK / "faulty"
    folder.mkdir()
    mask = (EXAMPLE / "scenes" / "mask.ma").read_text()
    cut = "cut.ma" if os.name == "nt" else 'cut "here"\\now\x01.ma'
    (folder / cut).write_text(mask[:mask.index('"polyPlane1"') + 5])
    (folder / "good.ma").write_text(mask)
    (folder / "zDriven.ma").write_text(mask.replace("connectAttr", 'createNode secretDriver -n "driver";\nconnectAttr '
                                                    '"driver.out" "shapes.w[0]";\nconnectAttr', 1))
    result = batch(output, folder)
    expect(result.returncode == 1 and "2 of 3 scenes had errors" in result.stderr, f"ended with {result.returncode}")
    report = report_of(output)
    scenes = report["scenes"]
    expect(report["failed"] == 2, f"{report['failed']} failed")
    expect([scene["result"] for scene in scenes] == ["failed", "done", "errors"], f"{scenes}")
    expect(scenes[0]["file"] == cut.replace("\x01", "\ufffd"), f"the report names {scenes[0]['file']}")
    expect(scenes[0]["saved"] is None and not (output / cut).exists(), "a scene that cannot be opened was saved")
    expect(any("no quotation mark at its end" in text for text in scenes[0]["messages"]), f"{scenes[0]['messages']}")
    expect(scenes[1]["made"] == 2 and scenes[1]["messages"] == [], f"after a failure: {scenes[1]}")
    expect(any("depends on driver (secretDriver)" in text for text in scenes[2]["messages"]), f"{scenes[2]['messages']}")
    expect(scenes[2]["made"] == 0 and scenes[2]["exported"] == 0 and (output / "zDriven.ma").exists(), f"{scenes[2]}")


def check_own_folder():
    folder = WORK / "faults"
    before = {file.name: file.read_bytes() for file in folder.iterdir()}
    result = batch(WORK / "out put" / ".." / "faults", folder)
    expect(result.returncode == 1 and "must go to another folder" in result.stderr, "the sources may be replaced")
    expect({file.name: file.read_bytes() for file in folder.iterdir()} == before, "the folder of the scenes was changed")


shutil.rmtree(WORK, ignore_errors=True)
WORK.mkdir(parents=True)
check_example()
check_names()
check_faults()
check_own_folder()
