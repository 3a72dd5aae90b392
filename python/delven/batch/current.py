"""What a script asks and says about the scene that it runs on."""

import math
import os

LOG = "log.txt"

_scene = None
_folder = None
_values = {}


def begin(scene_path, folder):
    """Says, before a script runs, what its scene is and where its files wait until it has succeeded."""
    global _scene, _folder
    _scene, _folder = scene_path, folder
    _values.clear()


def values():
    """What the script has reported."""
    return _values


def _check():
    if _scene is None:
        raise RuntimeError(
            "No batch is running here. Run this script by: delvenpy -m delven.batch script.py scene.ma... --out FOLDER"
        )


def scene():
    """Path of the scene, which is open."""
    _check()
    return _scene


def output(name):
    """Path to write a file of this scene to. The folder it lies in exists.

    The file moves into the output folder under its name when the script has succeeded, and is dropped when not.
    A name may have folders. Raises ValueError for one that leads out of the scene's folder or names no file.
    """
    _check()
    text = os.fspath(name)
    parts = text.replace(os.altsep or os.sep, os.sep).split(os.sep)
    if os.path.splitdrive(text)[0] or "\0" in text or {"", ".", ".."} & set(parts):
        raise ValueError(f"'{text}' is no name of a file in the output folder. Give one without .. and without a root.")
    if text.casefold() == LOG:
        raise ValueError(f"{LOG} is what the scene's messages are kept in. Choose another name.")
    path = os.path.join(_folder, *parts)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    return path


def _plain(value, name):
    """A value of Python or numpy as JSON has it."""
    if value is None or isinstance(value, (bool, str)):
        return value
    if isinstance(value, int):
        return int(value)
    if isinstance(value, float):
        if not math.isfinite(value):
            raise ValueError(f"report: {name} has the number {value}, which JSON has no form for")
        return float(value)
    if isinstance(value, (list, tuple)):
        return [_plain(one, name) for one in value]
    if isinstance(value, dict) and all(isinstance(key, str) for key in value):
        return {key: _plain(one, name) for key, one in value.items()}
    if hasattr(value, "tolist"):
        return _plain(value.tolist(), name)
    raise TypeError(f"report: {name} has a {type(value).__name__}, which JSON has no form for")


def report(**named):
    """Adds values to the scene's row of the results. A later value of a name replaces an earlier one.

    Raises TypeError for what JSON has no form for, ValueError for numbers that are not finite.
    """
    _check()
    _values.update({name: _plain(value, name) for name, value in named.items()})
