"""From meshes to blend shape and back: builds a blend shape on the example head, drives the kit's commands on it and
prints what it did.

    delvenpy examples/demo.py

In Maya: load the plug-in, open an empty scene, import this module and call `run`.
"""

import math
import pathlib

import delven
from delven import cmds, mel, tools

MESHES = pathlib.Path(__file__).resolve().parent / "meshes"

# The compare tool calls these procedures by name, so that they have to be in MEL.
COMPARE_PROCEDURES = r"""
global proc delvenSculpt_compareSculpt()
{
    print("  drag, from weight " + `getAttr "face.w[10000]"` + " at frame " + `currentTime -query` + "\n");
}
global proc delvenSculpt_resetCompare()
{
    print("  release, weight " + `getAttr "face.w[10000]"` + ", back at frame " + `currentTime -query` + "\n");
}
"""


def step(text):
    """Prints the heading of a step."""
    print(f"\n{text}")


def expect(condition, text):
    """Stops the demo with the text unless the condition holds."""
    if not condition:
        raise RuntimeError(text)


def import_mesh(name):
    """Imports examples/meshes/<name>.obj. Returns the transform, renamed to <name>."""
    nodes = cmds.file((MESHES / f"{name}.obj").as_posix(), i=True, type="OBJ", returnNewNodes=True)
    shape = cmds.ls(nodes, type="mesh", noIntermediate=True)[0]
    return cmds.rename(cmds.listRelatives(shape, parent=True, fullPath=True)[0], name)


def points(mesh):
    """The points of a mesh in its own space."""
    flat = cmds.xform(f"{mesh}.vtx[*]", query=True, objectSpace=True, translation=True)
    return list(zip(flat[0::3], flat[1::3], flat[2::3]))


def largest_distance(a, b):
    """Largest distance between points of the same number, in scene units."""
    expect(len(a) == len(b), f"There are {len(a)} points and {len(b)} points.")
    return max(map(math.dist, a, b))


def distance(mesh_a, mesh_b):
    """Largest distance between vertices of the same number, in scene units."""
    return largest_distance(points(mesh_a), points(mesh_b))


def compare(mesh_a, mesh_b, tolerance=1e-5):
    """Prints how far two meshes lie apart, and stops the demo when that is more than the tolerance."""
    apart = distance(mesh_a, mesh_b)
    print(f"  {mesh_a} and {mesh_b} differ by {apart:.10g} at most")
    expect(apart <= tolerance, f"{mesh_a} should have the shape of {mesh_b}.")


def set_weights(**weights):
    """Sets weights of the face by the names of their targets."""
    for target, weight in weights.items():
        cmds.setAttr(f"face.{target}", weight)


def extract(index, name=None, **how):
    """Makes a mesh of a target of the face, on the original shape of the head if no other is given."""
    how.setdefault("originalMesh", tools.original_shape("head"))
    mesh = cmds.dv_blendShapeExtractTarget("face", index=index, **how)
    return cmds.rename(mesh, name) if name else mesh


def targets():
    """The names of the targets of the face, by their indices."""
    indices = cmds.dv_getBlendShapeIndices("face")
    return {index: cmds.aliasAttr(f"face.weight[{index}]", query=True) for index in indices}


def paint(node, region, mesh, sign):
    """Paints a region: from 0 to 1 over a width of 2 around the middle of the head, on the side of the sign."""
    cmds.dv_editRegionMap(node, edit=True, index=region)
    for vertex, (x, _, _) in enumerate(points(mesh)):
        weight = min(max(0.75 + sign * x / 2, 0), 1)
        cmds.setAttr(f"face.inputTarget[0].baseWeights[{vertex}]", weight)
    cmds.dv_editRegionMap(node, addToMap=True, index=region)


def build():
    """Steps 1 and 2: the head with its targets."""
    step("1. Import the head and its shapes")
    for mesh in ("head", "smileLeft", "blinkHalf", "blink", "headScan"):
        import_mesh(mesh)
        print(f"  {mesh}: {cmds.polyEvaluate(mesh, vertex=True)} vertices")

    step("2. A blend shape with a smile, and a blink that goes through an in-between")
    cmds.blendShape("smileLeft", "head", name="face")
    cmds.blendShape("face", edit=True, target=("head", 1, "blink", 1.0))
    cmds.blendShape("face", edit=True, inBetween=True, target=("head", 1, "blinkHalf", 0.5))
    for index, name in targets().items():
        items = cmds.getAttr(f"face.inputTarget[0].inputTargetGroup[{index}].inputTargetItem", multiIndices=True)
        print(f"  target {index} {name}, items", *items)
    # The deltas are kept in the deformer from now on; the commands work on those.
    cmds.delete("smileLeft", "blink", "blinkHalf")


def extract_targets():
    """Steps 3 to 7: meshes from targets."""
    step("3. Extract the smile as a mesh, and compare it with the mesh that it came from")
    smile = extract(0, "smileExtracted")
    compare(smile, import_mesh("smileLeft"))

    step("4. Extract the in-between of the blink")
    half = extract(1, targetItem=5500)
    compare(half, import_mesh("blinkHalf"))

    step("5. The same smile on a scan: any mesh of the same topology can be the original")
    scan_smile = extract(0, "smileOnScan", originalMesh="headScanShape")
    print(
        f"  {scan_smile} differs from headScan by {distance(scan_smile, 'headScan'):.10g}, "
        f"the smile moves the head by {distance('smileLeft', 'head'):.10g}"
    )

    step("6. Turn the smile on: the deformed head takes the extracted shape")
    set_weights(smileLeft=1)
    compare("head", smile)
    set_weights(smileLeft=0)

    step("7. Extract once more, undo that, and redo it")
    mesh = extract(1)
    cmds.undo()
    expect(not cmds.objExists(mesh), f"{mesh} should be gone after undo.")
    print(f"  after undo {mesh} is gone")
    cmds.redo()
    expect(cmds.objExists(mesh), f"{mesh} should be there again after redo.")
    print("  after redo it is there again")
    # The next extraction asks for the same name.
    cmds.delete(mesh)


def mirror_and_split():
    """Steps 8 to 12: partners of vertices, and what can be done with them."""
    step("8. Pair the vertices of the head with their mirror partners, by topology alone")
    cmds.dv_polyMapVertexOrder("head", axis="x", verbose=1)
    unmapped = cmds.dv_polyMapVertexOrder("head", check=True)
    print(f"  {unmapped} vertices have no partner")
    expect(unmapped == 0, "Every vertex of the head has a partner.")

    step("9. Mirror the smile into a new target; both sides at once are the smile that was sculpted on both")
    original = tools.original_shape("head")
    cmds.dv_blendShapeMirrorTarget(
        "face", type=1, originalMesh=original, mesh="head", targetIndex=2, targetName="smileRight"
    )
    import_mesh("smileBoth")
    set_weights(smileLeft=1, smileRight=1)
    compare("head", "smileBoth")
    right = extract(2, "smileRightExtracted")
    set_weights(smileLeft=0, smileRight=0)

    step("10. Split the smile of both sides into one side, then into the other")
    cmds.blendShape("face", edit=True, target=("head", 3, "smileBoth", 1.0))
    set_weights(smileBoth=1)
    cmds.dv_blendShapeSplitTarget("face", index=3, invert=1, originalMesh=original)
    compare("head", "smileLeft")
    cmds.dv_blendShapeSplitTarget("face", index=3, invert=-1, originalMesh=original)
    compare("head", right)
    set_weights(smileBoth=0)

    step("11. Check the head and the scan for symmetry; the map of the head makes the scan symmetric")
    expect(cmds.dv_polySymmetry("head", axis="x"), "The head is symmetric.")
    expect(not cmds.dv_polySymmetry("headScan", axis="x"), "The scan is not symmetric.")
    cmds.dv_polySymmetry("headScan", axis="x", applyOrderMap="head")
    expect(cmds.dv_polySymmetry("headScan", axis="x"), "The scan should be symmetric now.")
    cmds.select(clear=True)

    step("12. The weights of the split smile: inverted, mirrored, trimmed, and frozen into its deltas")
    set_weights(smileBoth=1)
    cmds.dv_blendShapeEditWeights("face", invert=True, index=3, originalMesh=original)
    compare("head", "smileLeft")
    cmds.dv_blendShapeEditWeights("face", mirror=True, index=3, originalMesh=original)
    compare("head", "smileBoth")
    cmds.dv_blendShapeSplitTarget("face", index=3, invert=1, originalMesh=original)
    cmds.dv_blendShapeEditWeights("face", trim=True, index=3, originalMesh=original)
    cmds.dv_blendShapeEditWeights("face", freeze=True, index=3)
    stored = cmds.dv_blendShapeEditWeights("face", getIndices=True, index=3) or []
    print(f"  {len(stored)} weights are stored after that")
    compare("head", "smileLeft")
    set_weights(smileBoth=0)


def edit_targets(folder):
    """Steps 13 to 16: targets through a file, from a sculpt, and changed in place."""
    step("13. Export two targets, and import one of them under another index")
    file = f"{folder}delvenDemoTargets.json"
    names = ["smileLeft", "smileRight"]
    cmds.dv_blendShapeExportData("face", delta=True, fileName=file, index=[0, 2], channelName=names)
    items = cmds.dv_blendShapeImportData(listDeltas=True, fileName=file)
    print("  in the file:", *items)
    cmds.dv_blendShapeImportData("face", delta=True, remap=True, sourceIndex=0, destinationIndex=10, fileName=file)
    print(f"  target 10 is {cmds.aliasAttr('face.weight[10]', query=True)}")
    cmds.setAttr("face.weight[10]", 1)
    compare("head", "smileLeft", 1e-4)
    cmds.setAttr("face.weight[10]", 0)

    step("14. Replace the smile from a sculpt")
    sculpt = extract(0, "smileSculpt")
    cmds.move(0, 0.2, 0, f"{sculpt}.vtx[0]", relative=True)
    shape = cmds.listRelatives(sculpt, shapes=True, noIntermediate=True, fullPath=True)[0]
    cmds.dv_blendShapeReplaceTarget("face", index=0, mesh=shape, originalMesh=tools.original_shape("head"))
    set_weights(smileLeft=1)
    compare("head", sculpt)

    step("15. Remove the deltas of the vertex that was sculpted")
    components = "face.inputTarget[0].inputTargetGroup[0].inputTargetItem[6000].inputComponentsTarget"
    moved = cmds.dv_getComponentList(attribute=components)
    cmds.select("head.vtx[0]")
    cmds.dv_blendShapeRemoveDeltas("face", index=0)
    kept = cmds.dv_getComponentList(attribute=components)
    print(f"  {len(moved)} deltas before, {len(kept)} after")
    expect(len(kept) == len(moved) - 1, "One vertex should have lost its delta.")
    set_weights(smileLeft=0)
    cmds.select(clear=True)

    step("16. Move the in-between of the blink from 0.5 to 0.3")
    cmds.dv_blendShapeSetInbetweenPosition("face", index=1, sourcePosition=5500, targetPosition=5300)
    set_weights(blink=0.3)
    compare("head", "blinkHalf")
    set_weights(blink=0)


def sculpt_poses():
    """Steps 17 and 18: a corrective shape, and an edit that is baked."""
    step("17. Bend an arm, sculpt its pose, and extract a corrective shape that acts before the bend")
    cmds.polyCube(name="arm", height=6, subdivisionsHeight=12)
    cmds.select(clear=True)
    cmds.joint(position=(0, -3, 0), name="shoulder")
    cmds.joint(position=(0, 0, 0), name="elbow")
    cmds.skinCluster("shoulder", "elbow", "arm", maximumInfluences=2, name="armSkin")
    cmds.setAttr("elbow.rotateZ", 70)
    cmds.duplicate("arm", name="armSculpt")
    cmds.move(0.2, 0.1, -0.05, "armSculpt.vtx[8:19]", relative=True)
    corrective = cmds.dv_sculptExtractDeltaMesh(
        cmds.dv_meshEvaluate("armSculpt"),
        mesh=cmds.dv_meshEvaluate("arm"),
        originalMesh=cmds.dv_meshEvaluate("arm", intermediate=True),
    )
    cmds.blendShape(corrective, "arm", frontOfChain=True, name="armFix")
    cmds.setAttr("armFix.weight[0]", 1)
    compare("arm", "armSculpt", 1e-4)

    step("18. Move a vertex of the deformed head, then bake that edit into the original shape")
    tweak = cmds.deformableShape("head", createTweakNode=True)[0]
    cmds.move(0, 0, 0.1, "head.vtx[0]", relative=True)
    posed = cmds.duplicate("head", name="headEdited")[0]
    cmds.dv_editTweakNode(tweak, bake=1, originalMesh=tools.original_shape("head"))
    compare("head", posed)
    edits = cmds.getAttr(f"{tweak}.vlist[0].vertex", multiIndices=True)
    expect(not edits, "The tweak node should hold no edit any more.")
    cmds.dv_displayMessage(info="The edit is in the original shape now.")


def paint_regions(folder):
    """Step 19: a region map."""
    step("19. Paint the sides of the head as regions that overlap; the map keeps their sum at 1, also in a file")
    head = cmds.dv_meshEvaluate("head")
    node = tools.region_node("face", head)
    paint(node, 0, head, 1)
    paint(node, 1, head, -1)
    cmds.dv_editRegionMap(node, append=True, index=0, mesh=head)
    # The colours show it; the result is 0 where a vertex has less.
    expect(cmds.dv_editRegionMap(node, color=1, mesh=head), "Each vertex should be assigned.")
    file = f"{folder}delvenDemoRegions.json"
    cmds.dv_editRegionMap(node, export=True, fileName=file)
    before = cmds.getAttr(f"{node}.regionWeights1")[0]
    cmds.dv_editRegionMap(node, clear=True, index=1, mesh=head)
    # "import" is a word of Python's own, so that the flag needs its short name.
    cmds.dv_editRegionMap(node, im=True, fileName=file, mesh=head)
    after = cmds.getAttr(f"{node}.regionWeights1")[0]
    print(f"  vertex 0 belongs to the second region by {before:.10g}, from the file by {after:.10g}")
    expect(abs(before - after) <= 1e-5, "The map should come back from its file.")
    cmds.dv_blendShapeEditWeights("face", delete=True, index=-1)


def drag_to_compare():
    """Step 20: the compare tool."""
    step("20. Drag with the compare tool: half a smile of both sides, scrubbing the time")
    # The kit prepares these; target 10000 is what its tools compare with.
    cmds.blendShape("face", edit=True, target=("head", 10000, "smileBoth", 1.0))
    cmds.optionVar(stringValue=("DELVENSculptCompareToolList", "1,11,1,1,face"))
    mel.eval(COMPARE_PROCEDURES)
    cmds.DELVENCompareDraggerToolContext("delvenDemoCompareTool")
    cmds.setToolTo("delvenDemoCompareTool")
    # In Maya, drag with the left mouse button instead: 50 pixels to the right. "f" is "from", a word of Python's own.
    if delven.is_headless():
        cmds.headlessDrag(f=(100, 100), to=(150, 100), steps=5)
    print(f"  the head is {distance('head', 'smileBoth'):.10g} away from the whole smile")
    cmds.setToolTo("selectSuperContext")
    cmds.setAttr("face.w[10000]", 0)
    cmds.optionVar(remove="DELVENSculptCompareToolList")


def save_and_open(folder):
    """Step 21: the scene as a file."""
    step("21. Save the scene, open it again, and find the same targets and shapes")
    set_weights(smileLeft=1, blink=0.3, smileRight=0.5)
    saved_targets, head, arm = targets(), points("head"), points("arm")
    order_map = f"{cmds.dv_meshEvaluate('head')}.dvVertexOrderMap"
    partners = cmds.getAttr(order_map)
    cmds.file(rename=f"{folder}delvenDemo.ma")
    scene = cmds.file(save=True, type="mayaAscii")
    cmds.file(new=True, force=True)
    expect(not cmds.objExists("face"), "A new scene should be empty.")
    cmds.file(scene, open=True, force=True)
    found = targets()
    print(f"  {len(found)} targets:", ", ".join(f"{index} {name}" for index, name in found.items()))
    expect(found == saved_targets, "The targets should be those that were saved.")
    head_moved, arm_moved = largest_distance(head, points("head")), largest_distance(arm, points("arm"))
    print(f"  the head moved by {head_moved:.10g} at most, the arm by {arm_moved:.10g}")
    expect(max(head_moved, arm_moved) <= 1e-5, "The shapes should be those that were saved.")
    expect(cmds.getAttr(order_map) == partners, "The vertex order map should be the one that was saved.")
    # The kit's commands work on the opened scene as before.
    set_weights(blink=0, smileLeft=0, smileRight=1)
    compare("head", extract(2))


def run():
    """All steps. Files are written to the folder for temporary files."""
    folder = cmds.internalVar(userTmpDir=True)
    build()
    extract_targets()
    mirror_and_split()
    edit_targets(folder)
    sculpt_poses()
    paint_regions(folder)
    drag_to_compare()
    save_and_open(folder)
    print("\nDone.")


if __name__ == "__main__":
    run()
