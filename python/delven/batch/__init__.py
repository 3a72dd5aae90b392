"""Runs a script over many scenes, each in a process of its own.

    delvenpy -m delven.batch script.py scene.ma... --out FOLDER

The script finds its scene open. It asks for `scene()`, writes its files to `output(name)`, and hands values to the
table of results by `report(...)`. Programs call `run`.
"""

from delven.batch.current import output, report, scene

__all__ = ["WrongUse", "output", "report", "run", "scene"]


class WrongUse(ValueError):
    """The call is wrong, so nothing was run. The text says what to change."""


def run(script, scenes, out, **options):
    """Runs a script over scenes. Returns one row a scene, in the order of the scenes.

    scenes     paths of files and of folders, which stand for all .ma below them
    out        folder for the results, made when missing
    jobs       processes at a time; all cores by default
    time       seconds that a scene may take
    memory     megabytes of address space that a scene may take
    again      also runs scenes that succeeded before with the same text of the script
    shard      (i, n): only the i-th of n parts of the scenes, counted from 1
    scheduler  address of a Dask cluster that runs the scenes

    What a scene does wrong is in its row, whose keys docs/python.md lists. Raises WrongUse, and OSError if the results
    cannot be written. KeyboardInterrupt ends the processes, keeps the rows that are done, and is passed on.
    """
    # A scene's process imports this package too, and needs nothing of what runs it.
    from delven.batch import runner

    return runner.run(script, scenes, out, **options)
