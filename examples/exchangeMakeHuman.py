"""Target data through files on a character of production size (19,158 vertices): imports twenty sculpted targets onto
the base mesh, exports them, imports that file into a second blend shape, and compares both point by point.

    delvenpy examples/exchangeMakeHuman.py <folder> <file to write>

In Maya: load the plug-in, open an empty scene, import this module and call `run`.

The folder holds base.obj and face-targets.json. These files are not in the repository; tests/README.md says where they
come from.
"""

import argparse

from delven import cmds


def import_base(folder, name, blend_shape):
    """Imports the base mesh under a name and gives it a blend shape without targets."""
    nodes = cmds.file(f"{folder}/base.obj", i=True, type="OBJ", returnNewNodes=True)
    shape = cmds.ls(nodes, type="mesh")[0]
    cmds.rename(cmds.listRelatives(shape, parent=True)[0], name)
    cmds.blendShape(name, name=blend_shape)


def import_targets(blend_shape, file, failure):
    """Imports all targets of a file into a blend shape."""
    if cmds.dv_blendShapeImportData(blend_shape, delta=True, fileName=file) != 1:
        raise RuntimeError(failure)


def alias(blend_shape, index):
    """The name of a target."""
    return cmds.aliasAttr(f"{blend_shape}.w[{index}]", query=True)


def export_targets(blend_shape, file):
    """Exports all targets of a blend shape, each under its alias."""
    indices = cmds.dv_getBlendShapeIndices(blend_shape)
    names = [alias(blend_shape, index) for index in indices]
    if cmds.dv_blendShapeExportData(blend_shape, delta=True, fileName=file, index=indices, channelName=names) != 1:
        raise RuntimeError("The targets could not be exported.")


def expect_same(mesh_a, mesh_b, what):
    """Stops the script unless two meshes have the same points, to the digits that a file keeps."""
    a, b = (cmds.xform(f"{mesh}.vtx[*]", query=True, objectSpace=True, translation=True) for mesh in (mesh_a, mesh_b))
    for i, (x, y) in enumerate(zip(a, b)):
        if abs(x - y) > 1e-6 * max(1.0, abs(x)):
            raise RuntimeError(f"{what} differs at vertex {i // 3}.")


def run(folder, file):
    """Takes the targets of the folder through the file, and compares both."""
    targets = f"{folder}/face-targets.json"
    import_base(folder, "base", "face")
    import_base(folder, "copy", "faceAgain")

    items = cmds.dv_blendShapeImportData(listDeltas=True, fileName=targets)
    print(f"{len(items)} targets in the file, the first as {items[0]}")
    import_targets("face", targets, "The targets could not be imported.")
    export_targets("face", file)
    import_targets("faceAgain", file, "The exported targets could not be imported.")

    indices = cmds.dv_getBlendShapeIndices("faceAgain")
    if len(indices) != len(items):
        raise RuntimeError("Some targets did not come back.")
    for index in indices:
        name = alias("faceAgain", index)
        weights = [f"face.{name}", f"faceAgain.{name}"]
        for weight in weights:
            cmds.setAttr(weight, 1)
        expect_same("copy", "base", name)
        for weight in weights:
            cmds.setAttr(weight, 0)
    print(f"{len(indices)} targets exported, imported again, and equal point by point")

    # The same file, one target of it, under an index of its own.
    cmds.dv_blendShapeImportData("faceAgain", delta=True, remap=True, sourceIndex=3, destinationIndex=40, fileName=file)
    print(f"target 3 once more as {alias('faceAgain', 40)} at index 40")


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Target data through files, on a character of production size.")
    parser.add_argument("folder", help="the folder of the data")
    parser.add_argument("file", help="the file to write")
    arguments = parser.parse_args()
    run(arguments.folder, arguments.file)
