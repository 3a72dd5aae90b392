"""Scripts for the blend-shape tool kit, in Maya and without it.

`from delven import cmds, mel, utils, standalone` gives Maya's own modules inside Maya, and those of the headless host
outside.
"""

import importlib
import importlib.util

_MODULES = ("cmds", "mel", "standalone", "utils")


def is_headless():
    """Whether this runs in the headless host, not in Maya."""
    found = importlib.util.find_spec("maya")
    if found is None:
        return True
    return getattr(importlib.import_module("maya"), "IS_HEADLESS", False)


def __getattr__(name):
    if name not in _MODULES:
        raise AttributeError(f"module 'delven' has no attribute '{name}'")
    package = "delven.headless" if is_headless() else "maya"
    module = importlib.import_module(f"{package}.{name}")
    globals()[name] = module
    return module


def __dir__():
    return sorted([*globals(), *_MODULES])
