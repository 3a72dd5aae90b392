"""The kit's workflows for Python, in Maya and in the headless host.

Each function calls the procedure of the kit's scripts that is named like it (`split_left_right` calls
`delvenSplitLeftRight`), with its undo step and its checks. Where that shows an error and answers 0, -1 or "", the
function raises RuntimeError with the text.
"""

import math

from delven import mel

# MEL's strings have these escapes only.
_ESCAPES = str.maketrans({"\\": "\\\\", '"': '\\"', "\n": "\\n", "\t": "\\t", "\r": "\\r"})


def _literal(value):
    """A value as a literal of MEL."""
    if isinstance(value, str):
        if "\0" in value:
            raise ValueError("embedded null character")
        return '"' + value.translate(_ESCAPES) + '"'
    number = float(value)
    if not math.isfinite(number):
        raise ValueError(f"{value} is not a finite number")
    return repr(number)


def _call(procedure, *arguments, failure):
    """Calls a procedure; raises if its answer is the one of a failure."""
    text = f"{procedure}({', '.join(_literal(argument) for argument in arguments)})"
    declared = "global string $delvenError;"
    mel.eval(f'{declared} $delvenError = "";')
    result = mel.eval(text)
    if result not in (failure, None):
        return result
    error = mel.eval(f"{declared} string $text = $delvenError;")
    raise RuntimeError(error or f"{procedure} found nothing, or failed: the messages before this say why.")


def original_shape(mesh):
    """Full path of the original shape of a deformed mesh, which its deformers start from."""
    return _call("delvenOriginalShape", mesh, failure="")


def target_index(blend_shape, target):
    """Index of a target by its name, by "w[3]" or "weight[3]", or by its number as text."""
    return _call("delvenTargetIndex", blend_shape, target, failure=-1)


def opposite_name(name):
    """A name with its side exchanged. Raises ValueError for a name without a side, or with several."""
    result = mel.eval(f"delvenOppositeName({_literal(name)})")
    if not result:
        raise ValueError(f"The name {name} does not say one side.")
    return result


def split_left_right(blend_shape, target, blend=0.0):
    """Makes a left and a right half of a target. Returns their names."""
    return tuple(_call("delvenSplitLeftRight", blend_shape, target, blend, failure=[]))


def mirror_to_opposite(blend_shape, target):
    """Mirrors a target into its partner by name, made when missing. Returns the partner's index."""
    return _call("delvenMirrorToOpposite", blend_shape, target, failure=-1)


def extract(blend_shape, target):
    """Makes a mesh of a target. Returns its name."""
    return _call("delvenExtract", blend_shape, target, failure="")


def apply(mesh, blend_shape, target):
    """Makes a target show the shape of a mesh."""
    _call("delvenApply", mesh, blend_shape, target, failure=0)


def corrective(sculpt, posed, blend_shape, name):
    """Adds a target that turns the posed mesh into a sculpt of it. Returns its index."""
    return _call("delvenCorrective", sculpt, posed, blend_shape, name, failure=-1)


def region_node(blend_shape, mesh):
    """The region data node of a blend shape and its mesh, made when missing."""
    return _call("delvenRegionNode", blend_shape, mesh, failure="")


def compare_start(blend_shape, mesh, speed=1.0, start=0.0, end=0.0):
    """Begins to compare a deformed mesh with another one by dragging in the view."""
    _call("delvenCompareStart", blend_shape, mesh, speed, start, end, failure=0)


def compare_stop():
    """Ends a comparison."""
    _call("delvenCompareStop", failure=0)
