"""Target extraction on a character of production size (19,158 vertices): builds a blend shape from a base mesh and two
sculpted targets, extracts both again and compares them point by point, then undoes and redoes an extraction.

    delvenpy examples/extractMakeHuman.py <folder>

In Maya: load the plug-in, open an empty scene, import this module and call `run`.

The folder holds base.obj, eye-left-closure.obj and mouth-corner-puller.obj. These files are not in the repository;
tests/README.md says where they come from.
"""

import argparse

from delven import cmds


def import_mesh(path, name):
    """Imports a mesh under a name."""
    nodes = cmds.file(path, i=True, type="OBJ", returnNewNodes=True)
    shape = cmds.ls(nodes, type="mesh")[0]
    cmds.rename(cmds.listRelatives(shape, parent=True, fullPath=True)[0], name)


def points(mesh):
    """The points of a mesh in its own space."""
    flat = cmds.xform(f"{mesh}.vtx[*]", query=True, objectSpace=True, translation=True)
    return list(zip(flat[0::3], flat[1::3], flat[2::3]))


def differing(mesh_a, mesh_b, tolerance=1e-5):
    """Number of vertices whose position differs by more than the tolerance on any axis."""
    a, b = points(mesh_a), points(mesh_b)
    if len(a) != len(b):
        raise RuntimeError("The meshes have different vertex counts.")
    return sum(any(abs(x - y) > tolerance for x, y in zip(p, q)) for p, q in zip(a, b))


def expect_shape(mesh, expected):
    """Stops the script unless a mesh has the shape of another one."""
    count = differing(mesh, expected)
    if count > 0:
        raise RuntimeError(f"{mesh} differs from {expected} at {count} vertices.")


def check(index, expected):
    """Extracts a target, compares it with the mesh that it came from, undoes and redoes that."""
    extracted = cmds.dv_blendShapeExtractTarget("face", index=index, originalMesh="baseShapeOrig")
    expect_shape(extracted, expected)
    print(f"{expected}: extracted point by point, {differing(extracted, 'base')} vertices away from base")
    cmds.undo()
    if cmds.objExists(extracted):
        raise RuntimeError(f"{extracted} should be gone after undo.")
    cmds.redo()
    expect_shape(extracted, expected)
    print("  gone after undo, the same after redo")
    # The next extraction asks for the same name.
    cmds.rename(extracted, f"{expected}Extracted")


def run(folder):
    """Extracts both targets of a blend shape made from the meshes of the folder."""
    import_mesh(f"{folder}/base.obj", "base")
    import_mesh(f"{folder}/eye-left-closure.obj", "eyeClosed")
    import_mesh(f"{folder}/mouth-corner-puller.obj", "cornerPulled")
    cmds.blendShape("eyeClosed", "cornerPulled", "base", name="face")
    check(0, "eyeClosed")
    check(1, "cornerPulled")


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Target extraction on a character of production size.")
    parser.add_argument("folder", help="the folder of the meshes")
    run(parser.parse_args().folder)
