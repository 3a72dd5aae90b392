"""Symmetry on a character of production size (19,158 vertices): pairs its vertices by topology, mirrors the closure of
the left eye to the right by position and by that map, and compares the two.

    delvenpy examples/mirrorMakeHuman.py <folder>

In Maya: load the plug-in, open an empty scene, import this module and call `run`.

The folder holds base.obj and eye-left-closure.obj. These files are not in the repository; tests/README.md says where
they come from.
"""

import argparse
import math

from delven import cmds

ORIGINAL = "baseShapeOrig"


def import_mesh(path, name):
    """Imports a mesh under a name."""
    nodes = cmds.file(path, i=True, type="OBJ", returnNewNodes=True)
    shape = cmds.ls(nodes, type="mesh")[0]
    cmds.rename(cmds.listRelatives(shape, parent=True, fullPath=True)[0], name)


def coordinates(mesh):
    """The points of a mesh in its own space, three numbers each."""
    return cmds.xform(f"{mesh}.vtx[*]", query=True, objectSpace=True, translation=True)


def mapped():
    """Number of entries of the vertex order map that are set."""
    return cmds.polyEvaluate(ORIGINAL, vertex=True) - cmds.dv_polyMapVertexOrder(ORIGINAL, check=True)


def check_map():
    """Stops the script where a partner's partner is another vertex, or does not lie opposite."""
    partners = cmds.getAttr(f"{ORIGINAL}.dvVertexOrderMap")
    flat = coordinates(ORIGINAL)
    points = list(zip(flat[0::3], flat[1::3], flat[2::3]))
    for vertex, partner in enumerate(partners):
        if partner == -1:
            continue
        if partners[partner] != vertex:
            raise RuntimeError(f"The partner of vertex {partner} should be {vertex}.")
        x, y, z = points[vertex]
        if math.dist((-x, y, z), points[partner]) > 1e-4:
            raise RuntimeError(f"Vertices {vertex} and {partner} do not lie opposite.")


def mirror(index, name, **how):
    """Mirrors the closure of the left eye into a new target of the face."""
    cmds.dv_blendShapeMirrorTarget(
        "face", type=1, originalMesh=ORIGINAL, mesh="base", targetIndex=index, targetName=name, **how
    )


def run(folder):
    """Maps the base mesh of the folder, and mirrors its target in two ways."""
    import_mesh(f"{folder}/base.obj", "base")
    import_mesh(f"{folder}/eye-left-closure.obj", "eyeLeft")
    cmds.blendShape("eyeLeft", "base", name="face")
    cmds.delete("eyeLeft")

    print(f"Symmetry by position: {cmds.dv_polySymmetry(ORIGINAL)}")
    cmds.dv_polyMapVertexOrder(ORIGINAL, verbose=1)
    check_map()
    print(f"Mapped by topology: {mapped()} vertices")
    # Groups of small equal shells are left; here positions can tell them apart.
    cmds.dv_polySymmetry(ORIGINAL, addToMap=True)
    check_map()
    print(f"Mapped with the help of positions: {mapped()} vertices")

    mirror(1, "byPosition")
    mirror(2, "byOrder", orderBased=ORIGINAL)
    # One takes back what the other does.
    cmds.setAttr("face.supportNegativeWeights", 1)
    cmds.setAttr("face.byPosition", 1)
    cmds.setAttr("face.byOrder", -1)
    moved = sum(abs(a - b) > 1e-5 for a, b in zip(coordinates("base"), coordinates(ORIGINAL)))
    print(f"Coordinates in which the two mirrored targets differ: {moved}")
    if moved > 0:
        raise RuntimeError("Both ways of mirroring should give the same target.")


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Symmetry on a character of production size.")
    parser.add_argument("folder", help="the folder of the meshes")
    run(parser.parse_args().folder)
