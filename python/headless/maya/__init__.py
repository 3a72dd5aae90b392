"""The part of Maya's package that the headless host covers. It is on the path of `delvenpy` only."""

import importlib
import importlib.machinery
import sys

IS_HEADLESS = True

_COVERED = ("cmds", "mel", "standalone", "utils")


class _Finder:
    """Makes `maya.cmds` and `delven.headless.cmds` one module, and says what is not covered."""

    def find_spec(self, name, path=None, target=None):
        if not name.startswith("maya.") or name.count(".") != 1:
            return None
        if name.split(".")[1] not in _COVERED:
            raise ImportError(
                f"The headless host does not cover {name}. It has {', '.join('maya.' + one for one in _COVERED)}.",
                name=name,
            )
        return importlib.machinery.ModuleSpec(name, self)

    def create_module(self, spec):
        return importlib.import_module("delven.headless." + spec.name.split(".")[1])

    def exec_module(self, module):
        pass


sys.meta_path.insert(0, _Finder())
