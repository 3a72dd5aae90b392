"""Work that waits until the host has nothing else to do."""

import sys

from delven import _delven


def _reporting(work):
    """Nobody waits for deferred work, so what it raises is shown."""

    def run():
        try:
            work()
        except Exception:
            # Slow to import, and seldom needed.
            import traceback

            traceback.print_exc()

    return run


def _main():
    """Names of the script that runs now."""
    return vars(sys.modules["__main__"])


def defer(work, arguments, keywords, low_priority=False):
    """Puts a function, or Python text, behind what waits already."""
    if callable(work):
        _delven.defer(_reporting(lambda: work(*arguments, **keywords)), low_priority)
    elif isinstance(work, str):
        _delven.defer(_reporting(lambda: exec(compile(work, "<deferred>", "exec"), _main())), low_priority)
    else:
        raise TypeError(f"Object {work} is invalid")


def executeDeferred(work, *arguments, **keywords):
    """Runs Python text or calls a function once the outermost command has ended."""
    defer(work, arguments, keywords)


def executeInMainThreadWithResult(work, *arguments, **keywords):
    """Calls a function, or evaluates Python text, and returns what it gives. Other threads have no host."""
    _delven.names()
    if callable(work):
        return work(*arguments, **keywords)
    return eval(work, _main())


def processIdleEvents():
    """Runs what waits."""
    _delven.idle()
