"""A report about blend shapes: figures, findings and pictures of each target, as a page that needs nothing else.

    delvenpy -m delven.report --out FOLDER face.ma

Programs call `run` in an open scene. It works in the headless host, as its pictures do.
"""

__all__ = ["NothingToReport", "WrongUse", "run"]


class WrongUse(ValueError):
    """The call does not fit the scene, so nothing was written. The text says what to change."""


class NothingToReport(WrongUse):
    """The scene has no blend shape that deforms a mesh."""


def run(out, blend_shapes=None, meshes=None, axis="x", views=("front", "side"), size=256, faces=None):
    """Writes the report about the open scene. Returns what report.json holds.

    out           folder for index.html, report.json and the pictures, made when missing
    blend_shapes  names; all of the scene by default
    meshes        names of deformed meshes; all that these blend shapes deform by default
    axis          "x", "y" or "z", the symmetry axis in object space; left is its positive side
    views         names of delven.report.pictures.VIEWS
    size          side of a picture in pixels
    faces         pairs of a first and a last face: pictures show only these; all by default

    The scene stays as it is, except that it counts as modified and that no faces are isolated any more. Raises
    WrongUse, and OSError if the files cannot be written.
    """
    from delven.report import writing

    return writing.run(out, blend_shapes, meshes, axis, views, size, faces)
