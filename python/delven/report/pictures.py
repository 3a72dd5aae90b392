"""Pictures of targets on a copy of their mesh: the shape itself, and how far each vertex moves, as colours."""

import contextlib
import os

import numpy

from delven import arrays, cmds

# Rotation of the camera in degrees. Side and left are what Maya's camera side shows.
VIEWS = {
    "front": (0, 0, 0),
    "back": (0, 180, 0),
    "side": (0, 90, 0),
    "left": (0, 90, 0),
    "right": (0, -90, 0),
    "top": (-90, 0, 0),
    "bottom": (90, 0, 0),
    "quarter": (-15, 40, 0),
}

STILL = (0.3, 0.3, 0.3)
# From little movement to the largest one; lightness grows all the way, so that it can be told without seeing hue.
RAMP = ((0.23, 0.32, 0.66), (0.13, 0.57, 0.55), (0.37, 0.79, 0.38), (0.99, 0.91, 0.15))
_STEPS = 32
# What of a mesh a picture shows at least, and how much more than what moves.
_LEAST = 0.15
_MARGIN = 1.5


def _components(mesh, vertices):
    """Names of ascending vertices, a run in each."""
    starts = numpy.flatnonzero(numpy.diff(vertices, prepend=-2) != 1)
    ends = numpy.append(starts[1:], len(vertices)) - 1
    return [f"{mesh}.vtx[{vertices[first]}:{vertices[last]}]" for first, last in zip(starts, ends)]


def _paint(mesh, lengths):
    """Colours the vertices by how far they move."""
    cmds.polyColorPerVertex(mesh, colorRGB=STILL, colorDisplayOption=True)
    largest = lengths.max(initial=0.0)
    if largest == 0:
        return
    level = numpy.ceil(lengths / largest * _STEPS).astype(int)
    shades = numpy.linspace(0, len(RAMP) - 1, _STEPS)
    for step, shade in enumerate(shades, 1):
        names = _components(mesh, numpy.flatnonzero(level == step))
        if names:
            color = [float(numpy.interp(shade, range(len(RAMP)), channel)) for channel in zip(*RAMP)]
            cmds.polyColorPerVertex(names, colorRGB=color)


def _axis(rotation):
    """What a camera looks away from, in the world."""
    x, y = numpy.radians(rotation[:2])
    return numpy.array([numpy.cos(x) * numpy.sin(y), -numpy.sin(x), numpy.cos(x) * numpy.cos(y)])


class NoPictures(RuntimeError):
    """This host was built without what draws pictures."""


class Studio:
    """A mesh, and a camera for each view of it."""

    def __init__(self, mesh, shape, size, folder, cameras):
        self._mesh, self._size, self._folder, self._cameras = mesh, size, folder, cameras
        self._points = shape.points
        # The copy stands at the origin, so its points are moved to where the deformed mesh has them.
        self._world = numpy.array(cmds.getAttr(f"{shape.mesh}.worldMatrix[0]")).reshape(4, 4)

    def _placed(self, points):
        return points @ self._world[:3, :3] + self._world[3, :3]

    def frame(self, moving):
        """Aims at the vertices that any target moves; at the whole mesh if none is moved."""
        places = self._placed(self._points)
        if not len(places):
            return
        low, high = places.min(axis=0), places.max(axis=0)
        whole = max(numpy.linalg.norm(high - low) / 2, 1e-3)
        centre, radius = (low + high) / 2, whole
        if moving.any():
            low, high = places[moving].min(axis=0), places[moving].max(axis=0)
            centre = (low + high) / 2
            radius = min(whole, max(_MARGIN * numpy.linalg.norm(high - low) / 2, _LEAST * whole))
        for view, camera in self._cameras.items():
            place = centre + 4 * whole * _axis(VIEWS[view])
            cmds.camera(camera, edit=True, position=place.tolist(), orthographicWidth=2 * radius)
            cmds.camera(camera, edit=True, nearClipPlane=whole / 100, farClipPlane=8 * whole)

    def _playblast(self, path):
        try:
            cmds.playblast(
                format="image",
                compression="png",
                frame=cmds.currentTime(query=True),
                completeFilename=path,
                forceOverwrite=True,
                widthHeight=(self._size, self._size),
                percent=100,
            )
        except RuntimeError as error:
            if "not covered" in str(error):
                raise NoPictures(str(error)) from None
            raise

    def _shoot(self, stem, suffix=""):
        names = {}
        for view, camera in self._cameras.items():
            names[view] = f"{stem}-{view}{suffix}.png"
            cmds.lookThru(camera)
            self._playblast(os.path.join(self._folder, names[view]))
        return names

    def shape(self, stem, deltas):
        """Pictures of the mesh with deltas. Returns the file of each view."""
        arrays.set_points(self._mesh, self._placed(self._points + deltas))
        return self._shoot(stem)

    def heat(self, stem, deltas):
        """Pictures of where deltas move the mesh, on the mesh without them."""
        arrays.set_points(self._mesh, self._placed(self._points))
        _paint(self._mesh, numpy.linalg.norm(deltas, axis=1))
        try:
            return self._shoot(stem, "-heat")
        finally:
            cmds.polyColorPerVertex(self._mesh, colorDisplayOption=False)


@contextlib.contextmanager
def studio(mesh, shape, views, size, faces, folder):
    """A studio for the copy of a shape's mesh, whose cameras are gone afterwards. Nothing else is drawn.

    faces  pairs of a first and a last face that are drawn; None for all
    """
    cameras = {}
    try:
        for view in views:
            made = cmds.camera(orthographic=True, rotation=VIEWS[view], name="delvenReport")
            cameras[view] = cmds.ls(made[0], long=True)[0]
        cmds.headlessIsolate([f"{mesh}.f[{first}:{last}]" for first, last in faces] if faces else f"{mesh}.f[*]")
        yield Studio(mesh, shape, size, folder, cameras)
    finally:
        if cameras:
            cmds.delete(list(cameras.values()))
