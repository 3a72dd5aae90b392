"""Makes a report: reads, measures, takes the pictures, and writes the files."""

import json
import os
import re

import numpy

from delven import cmds, tools
from delven.report import WrongUse, borrowed, figures, page, pictures, reading, symmetry

SMALLEST, LARGEST = 16, 2048
_PICTURE = re.compile(r"\d+-(base|w\d+-\d+)-[a-z]+(-heat)?\.png")


def check(axis, views, size):
    """Raises WrongUse for options that nothing can be made of."""
    if axis not in ("x", "y", "z"):
        raise WrongUse(f"The axis is x, y or z, not '{axis}'.")
    unknown = [view for view in views if view not in pictures.VIEWS]
    if unknown or not views:
        raise WrongUse(f"There is no view '{', '.join(unknown)}'. These can be had: {', '.join(pictures.VIEWS)}.")
    if not SMALLEST <= size <= LARGEST:
        raise WrongUse(f"The size is {size}. Pictures have {SMALLEST} to {LARGEST} pixels.")


def _partners(shape, copy, axis):
    """Mirror partners, and whether they come from topology or position: the one that pairs more."""
    near = symmetry.partners_by_position(shape.points, axis)
    walked = borrowed.partners(copy, shape.mesh, axis)
    if walked is not None:
        walked = symmetry.without_strays(walked, shape.points, axis)
    if walked is None or (walked >= 0).sum() < (near >= 0).sum():
        return near, "position"
    return walked, "topology"


def _opposite(item):
    """Name of the partner; None for a target of no side."""
    try:
        return tools.opposite_name(item.alias) if item.alias else None
    except ValueError:
        return None


def _measured(shape, partners, axis):
    """A row for each item, without pictures."""
    side = symmetry.sides(shape.points, partners, axis)
    seen = set()
    for item in shape.items:
        is_first = item.target not in seen
        seen.add(item.target)
        row = figures.of_item(item, len(shape.points), is_first)
        row["symmetry"] = symmetry.classify(figures.dense(item, len(shape.points)), partners, side, axis)
        opposite = _opposite(item)
        row["pair"] = None
        if opposite:
            row["pair"], exists = figures.pair(shape, item, opposite, partners, axis)
            if is_first and not exists:
                text = f"There is no target {opposite}. Mirror this one to make it, or correct its name."
                row["findings"].append(figures.finding("missingPartner", text))
        yield row


def _take_pictures(shape, rows, studio, number):
    """Adds pictures to the rows. Returns those of the mesh itself."""
    count = len(shape.points)
    moving = numpy.zeros(count, bool)
    for item in shape.items:
        moving |= figures.dense(item, count).any(axis=1)
    studio.frame(moving)
    base = studio.shape(f"{number}-base", numpy.zeros((count, 3)))
    for item, row in zip(shape.items, rows):
        stem = f"{number}-w{item.target}-{item.item}"
        deltas = figures.dense(item, count)
        seen = studio.shape(stem, deltas * shape.painted_weights(item)[:, None])
        heat = studio.heat(stem, deltas)
        row["pictures"] = {view: {"shape": seen[view], "heat": heat[view]} for view in seen}
    return base


def _check_faces(shape, faces):
    count = cmds.polyEvaluate(shape.original, face=True)
    for first, last in faces or ():
        if not 0 <= first <= last < count:
            text = f"There are no faces {first}:{last}: {shape.mesh} has {count}, the last is {count - 1}."
            raise WrongUse(f"{text} Give others, or name another mesh by --mesh.")


def _report_shape(shape, number, out, axis, views, size, faces):
    with borrowed.copy(shape.original) as copy:
        partners, way = _partners(shape, copy, axis)
        rows = list(_measured(shape, partners, axis))
        with pictures.studio(copy, shape, views, size, faces, out) as studio:
            try:
                base = _take_pictures(shape, rows, studio, number)
            except pictures.NoPictures:
                base = {}
                for row in rows:
                    row["pictures"] = {}
    unpaired = int((partners < 0).sum())
    head = {"blendShape": shape.blend_shape, "mesh": shape.mesh, "vertices": len(shape.points)}
    return {**head, "partnersBy": way, "unpaired": unpaired, "pictures": base, "targets": rows}


def _count(shapes, level):
    return sum(
        finding["level"] == level for shape in shapes for row in shape["targets"] for finding in row["findings"]
    )


def replace(path, text):
    """Writes a whole file at once: readers see the old one or the new one. Names of files may be no Unicode."""
    with open(path + ".new", "w", encoding="utf-8", errors="backslashreplace") as file:
        file.write(text)
    os.replace(path + ".new", path)


def sweep(folder):
    """Removes the pictures of an earlier report in this folder."""
    with open(os.path.join(folder, "report.json"), encoding="utf-8") as file:
        shapes = json.load(file)["shapes"]
    kept = {name for shape in shapes for name in shape["pictures"].values()}
    for shape in shapes:
        for row in shape["targets"]:
            kept.update(name for pair in row["pictures"].values() for name in pair.values())
    for name in os.listdir(folder):
        if _PICTURE.fullmatch(name) and name not in kept:
            os.remove(os.path.join(folder, name))


def run(out, blend_shapes, meshes, axis, views, size, faces=None, title="the open scene"):
    """See delven.report.run."""
    views = tuple(dict.fromkeys(views))
    check(axis, views, size)
    out = os.path.abspath(out)
    with borrowed.scene():
        found, skipped = reading.find(blend_shapes, meshes)
        for shape in found:
            _check_faces(shape, faces)
        os.makedirs(out, exist_ok=True)
        shapes = [_report_shape(shape, number, out, axis, views, size, faces) for number, shape in enumerate(found)]
    report = {"scene": title, "axis": axis, "views": list(views), "size": size}
    report.update(errors=_count(shapes, "error"), warnings=_count(shapes, "warning"), skipped=skipped, shapes=shapes)
    replace(os.path.join(out, "index.html"), page.render(report))
    replace(os.path.join(out, "report.json"), json.dumps(report, indent=1, ensure_ascii=False, allow_nan=False) + "\n")
    sweep(out)
    return report
