"""Scripts for the blend-shape tool kit, in Maya and without it.

`from delven import cmds, mel, utils, standalone` gives Maya's own modules inside Maya, and those of the headless host
outside.
"""

import importlib

_MODULES = ("cmds", "mel", "standalone", "utils")


def is_headless():
    """Whether this runs in the headless host, not in Maya."""
    try:
        maya = importlib.import_module("maya")
    except ModuleNotFoundError as error:
        if error.name != "maya":
            raise
        return True
    return getattr(maya, "IS_HEADLESS", False)


def __getattr__(name):
    if name not in _MODULES:
        raise AttributeError(f"module 'delven' has no attribute '{name}'")
    package = "delven.headless" if is_headless() else "maya"
    module = importlib.import_module(f"{package}.{name}")
    globals()[name] = module
    return module


def __dir__():
    return sorted([*globals(), *_MODULES])
