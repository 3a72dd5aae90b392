"""Lists targets that move nothing, and targets of one side without a partner.

    delvenpy -m delven.batch examples/batch/checkTargets.py <scenes> --out <folder>
"""

from delven import batch, cmds, tools


def moves(blend_shape, index):
    """Whether a target has a vertex on any mesh, at any of its in-between weights."""
    for mesh in cmds.getAttr(f"{blend_shape}.inputTarget", multiIndices=True) or []:
        item = f"{blend_shape}.inputTarget[{mesh}].inputTargetGroup[{index}].inputTargetItem"
        for weight in cmds.getAttr(item, multiIndices=True) or []:
            if cmds.getAttr(f"{item}[{weight}].inputComponentsTarget"):
                return True
    return False


empty, alone = [], []
for blend_shape in cmds.ls(type="blendShape"):
    targets = cmds.blendShape(blend_shape, query=True, target=True) or []
    for target in targets:
        if not moves(blend_shape, tools.target_index(blend_shape, target)):
            empty.append(f"{blend_shape}.{target}")
        try:
            if tools.opposite_name(target) not in targets:
                alone.append(f"{blend_shape}.{target}")
        except ValueError:
            # The name says no side.
            pass

batch.report(empty=empty, alone=alone)
with open(batch.output("targets.txt"), "w", encoding="utf-8") as file:
    file.writelines(f"moves nothing: {name}\n" for name in empty)
    file.writelines(f"no partner: {name}\n" for name in alone)
