"""All commands of the host as functions, like Maya's module of this name.

A function is made when it is first asked for. Plug-ins add and remove commands at any time.
"""

from delven import _delven
from delven.headless import utils

_version = None
_made = set()


def __getattr__(name):
    # Functions that were made before another plug-in came or went may be gone.
    global _version
    if _version != _delven.version():
        for old in _made:
            globals().pop(old, None)
        _made.clear()
        _version = _delven.version()
    command = _delven.command(name)
    if command is None:
        raise AttributeError(f"module 'maya.cmds' has no attribute '{name}'")
    if name not in ("loadPlugin", "unloadPlugin"):
        _made.add(name)
        globals()[name] = command
        return command
    return _forgetting(command)


def _forgetting(command):
    def call(*arguments, **flags):
        try:
            return command(*arguments, **flags)
        finally:
            for old in _made:
                globals().pop(old, None)
            _made.clear()

    call.__name__ = command.__name__
    return call


def __dir__():
    return sorted({*_delven.names(), "error", "evalDeferred", "warning"})


def warning(text):
    """Shows a warning."""
    _delven.warn(str(text))


def error(text):
    """Raises RuntimeError with a text."""
    raise RuntimeError(str(text))


def evalDeferred(*work, lowestPriority=False, lp=False, **_):
    """Runs Python text or calls a function once the outermost command has ended."""
    for entry in work:
        utils.defer(entry, (), {}, lowestPriority or lp)
