"""Figures and findings of targets, on plain arrays."""

import numpy

from delven.report import symmetry
from delven.report.words import counted

NOISE = 1e-8
LEVELS = {
    "beyond": "error",
    "notFinite": "error",
    "counts": "error",
    "doubled": "warning",
    "noAlias": "warning",
    "empty": "warning",
    "weightsBeyond": "warning",
    "missingPartner": "warning",
}


def finding(kind, text):
    return {"kind": kind, "level": LEVELS[kind], "text": text}


def _finite(values):
    """What a mesh, which has single precision, can hold."""
    with numpy.errstate(over="ignore"):
        return numpy.isfinite(values.astype(numpy.float32))


def dense(item, count):
    """Delta of each vertex, without what is broken."""
    fits = (item.vertices < count) & _finite(item.deltas).all(axis=1)
    result = numpy.zeros((count, 3))
    numpy.add.at(result, item.vertices[fits], item.deltas[fits])
    return result


def _stored(item, count):
    """What is stored, counted."""
    first, last = item.runs[:, 0], item.runs[:, 1]
    beyond = numpy.clip(last - numpy.maximum(first, count) + 1, 0, None).sum()
    finite = _finite(item.deltas).all(axis=1)
    lengths = numpy.linalg.norm(item.deltas[finite & (item.vertices < count)], axis=1)
    moved = lengths[lengths > NOISE]
    return {
        "stored": item.points,
        "components": int((last - first + 1).sum()),
        "moved": len(moved),
        "noise": int(((lengths > 0) & (lengths <= NOISE)).sum()),
        "largest": float(moved.max(initial=0.0)),
        "mean": float(moved.mean()) if len(moved) else 0.0,
        "beyond": int(beyond),
        "doubled": len(item.vertices) - len(numpy.unique(item.vertices)),
        "notFinite": int((~finite).sum() + (~_finite(item.weights)).sum()),
    }


def _painted(item, count):
    """The painted weights; None if none is painted."""
    if not len(item.painted):
        return None
    fits = (item.painted < count) & _finite(item.weights)
    inside = item.weights[fits]
    return {
        "painted": len(item.painted),
        "least": float(inside.min()) if len(inside) else None,
        "most": float(inside.max()) if len(inside) else None,
        "beyond": int((item.painted >= count).sum()),
    }


def _item_findings(stored, count):
    """What is wrong with the deltas."""
    if stored["beyond"]:
        text = f"{counted(stored['beyond'], 'delta')} for vertices that the mesh does not have: it has {count}."
        yield finding("beyond", f"{text} Remove them, or use the mesh that the target was made for.")
    if stored["notFinite"]:
        text = f"{counted(stored['notFinite'], 'value')} that no mesh can hold (NaN, infinite or too large)."
        yield finding("notFinite", f"{text} Make the target again.")
    if stored["components"] != stored["stored"]:
        text = f"{counted(stored['stored'], 'delta')}, but {counted(stored['components'], 'vertex', 'vertices')}."
        yield finding("counts", f"{text} Nobody knows which belong together: make the target again.")
    if stored["doubled"]:
        text = f"{counted(stored['doubled'], 'vertex is', 'vertices are')} listed more than once."
        yield finding("doubled", f"{text} Their deltas add up: make the target again.")
    if not any(stored[name] for name in ("moved", "beyond", "notFinite")) and stored["components"] == stored["stored"]:
        what = "moves nothing" if stored["stored"] else "stores no deltas"
        yield finding("empty", f"It {what}. Delete the target if nothing is to come.")


def _target_findings(item, weights):
    """What is wrong with a target as a whole, said at the first of its items."""
    if item.alias is None:
        text = f"The target {item.target} has no name, so that scripts and animators do not find it."
        yield finding("noAlias", f"{text} Name it by aliasAttr.")
    if weights and weights["beyond"]:
        text = f"{counted(weights['beyond'], 'painted weight')} for vertices that the mesh does not have."
        yield finding("weightsBeyond", f"{text} They do no harm, but show that the mesh was another one.")


def of_item(item, count, is_first):
    """Figures and findings of an item that need no other one."""
    stored, weights = _stored(item, count), _painted(item, count)
    findings = list(_item_findings(stored, count))
    if is_first:
        findings += _target_findings(item, weights)
    row = {"index": item.target, "alias": item.alias, "name": item.name, "item": item.item, "weight": item.weight}
    return {**row, "live": item.live, **stored, "weights": weights, "findings": findings}


def pair(shape, item, opposite, partners, axis):
    """What two targets that are partners by their names differ in, at the weight of an item.

    opposite  name of the partner
    Returns also whether there is such a target at all.
    """
    others = [one for one in shape.items if one.alias == opposite]
    other = next((one for one in others if one.item == item.item), None)
    rest = None
    if other is not None:
        count = len(shape.points)
        rest = symmetry.residual(dense(item, count), dense(other, count), partners, axis)
    return {"partner": opposite, "residual": rest}, bool(others)
