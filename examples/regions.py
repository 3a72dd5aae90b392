"""Regions of a face: makes a region data node for the example head, paints two regions that overlap, assigns the rest
to a third, and takes the map through a file and back.

    delvenpy examples/regions.py <file to write>

In Maya: load the plug-in, open an empty scene, import this module and call `run`.

A file whose name ends in "json" gets the JSON layout, any other the plain one. The script stops with an error where
something is not as it should be.
"""

import argparse
import math
import pathlib

from delven import cmds

HEAD = pathlib.Path(__file__).resolve().parent / "meshes" / "head.obj"
REGIONS = range(6)


def expect(condition, text):
    """Stops the script with the text unless the condition holds."""
    if not condition:
        raise RuntimeError(text)


def weights(node, region, kept="regionWeights"):
    """Weights of a region, one per vertex; those of the stored map with kept="regionWeightsBuffer"."""
    return cmds.getAttr(f"{node}.{kept}{region}")


def make_node(blend_shape, mesh, names):
    """Makes the node that keeps the region map of a blend shape. The names are one word each, up to six."""
    node = cmds.createNode("network", name=f"{blend_shape}Regions")
    cmds.addAttr(node, longName="DELVENRegion", attributeType="message")
    cmds.connectAttr(f"{blend_shape}.message", f"{node}.DELVENRegion")
    cmds.addAttr(node, longName="regionLock", attributeType="long", multi=True)
    cmds.addAttr(node, longName="regions", dataType="string")
    cmds.setAttr(f"{node}.regions", ",".join(names), type="string")
    for region in REGIONS:
        cmds.addAttr(node, longName=f"regionWeights{region}", dataType="doubleArray")
        cmds.addAttr(node, longName=f"regionWeightsBuffer{region}", dataType="doubleArray")
    # Clearing gives a region a weight for each vertex.
    for region in REGIONS:
        cleared = cmds.dv_editRegionMap(node, clear=True, index=region, mesh=mesh)
        expect(cleared == 1, "The regions could not be made.")
    return node


def paint(node, region, mesh, center, radius):
    """Paints a region: 1 up to a distance from a point, then less and less, 0 at twice that distance."""
    # The region is painted in the base weights of the blend shape.
    cmds.dv_editRegionMap(node, edit=True, index=region)
    blend_shape = cmds.listConnections(f"{node}.DELVENRegion")[0]
    flat = cmds.xform(f"{mesh}.vtx[*]", query=True, objectSpace=True, translation=True)
    for vertex, point in enumerate(zip(flat[0::3], flat[1::3], flat[2::3])):
        distance = math.dist(point, center) / radius
        if distance < 2:
            cmds.setAttr(f"{blend_shape}.inputTarget[0].baseWeights[{vertex}]", min(1.0, 2.0 - distance))
    added = cmds.dv_editRegionMap(node, addToMap=True, index=region)
    expect(added == 1, "The painted weights should be in the map now.")


def count(node, region):
    """Number of vertices that a region has a part in."""
    return sum(weight > 0 for weight in weights(node, region))


def sums(node):
    """The sum of the weights of each vertex."""
    return [sum(parts) for parts in zip(*(weights(node, region) for region in REGIONS))]


def expect_stored(node, what):
    """Stops the script unless the map has the weights of its buffer, to the digits that a file keeps."""
    for region in REGIONS:
        now, stored = weights(node, region), weights(node, region, "regionWeightsBuffer")
        expect(len(now) == len(stored), f"{what} has another number of vertices.")
        for vertex, (a, b) in enumerate(zip(now, stored)):
            expect(abs(a - b) <= 1e-6, f"{what} differs in region {region} at vertex {vertex}.")


def import_head():
    """Imports the example head and gives it a blend shape. Returns its mesh."""
    nodes = cmds.file(HEAD.as_posix(), i=True, type="OBJ", returnNewNodes=True)
    shape = cmds.ls(nodes, type="mesh")[0]
    head = cmds.rename(cmds.listRelatives(shape, parent=True)[0], "head")
    cmds.blendShape(head, name="face")
    return cmds.listRelatives(head, shapes=True, noIntermediate=True)[0]


def run(file):
    """Makes, paints, exports and imports the regions."""
    mesh = import_head()
    node = make_node("face", mesh, ["left", "right", "rest"])
    paint(node, 0, mesh, (3, 0, 4), 3)
    paint(node, 1, mesh, (-3, 0, 4), 3)
    left, right = count(node, 0), count(node, 1)
    print(f"Painted: {left} vertices on the left, {right} on the right")
    expect(left >= 100 and left == right, "Both sides of the head should have as many vertices.")
    expect(max(sums(node)) <= 1.00003, "Where two regions overlap, they should share the vertex.")

    # What no one has painted goes to the third region; the others stay as they are.
    cmds.dv_editRegionMap(node, append=True, index=2, mesh=mesh)
    expect(all(abs(total - 1) <= 0.00003 for total in sums(node)), "Each vertex should be assigned now.")
    shown = cmds.dv_editRegionMap(node, color=1, mesh=mesh)
    expect(shown == 1, "The map should show without partial weights.")
    print(f"Assigned to the rest: {count(node, 2)} vertices")

    cmds.dv_editRegionMap(node, restore=0)
    exported = cmds.dv_editRegionMap(node, export=True, fileName=file)
    expect(exported == 1, "The map could not be exported.")
    for region in REGIONS:
        cmds.dv_editRegionMap(node, clear=True, index=region, mesh=mesh)
    cmds.setAttr(f"{node}.regions", "", type="string")
    # "import" is a word of Python's own, so that the flag needs its short name.
    imported = cmds.dv_editRegionMap(node, im=True, fileName=file, mesh=mesh)
    expect(imported == 1, "The map could not be imported.")
    expect_stored(node, "The imported map")
    names = cmds.getAttr(f"{node}.regions")
    expect(names == "left,right,rest", "The names of the regions should come back, too.")
    print("Exported, cleared and imported: the map is what it was")

    cmds.dv_editRegionMap(node, clear=True, index=0, mesh=mesh)
    cmds.dv_editRegionMap(node, restore=1)
    expect(count(node, 0) == left, "The stored map should be there again.")
    print("Restored the stored map")


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Regions of a face, through a file and back.")
    parser.add_argument("file", help="the file to write")
    run(parser.parse_args().file)
