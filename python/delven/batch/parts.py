"""Folders in which the files of a scene wait until its script has succeeded.

Each is locked by the process that made it. The system opens the lock when that process ends, however it does, so one
without a lock is left over.
"""

import contextlib
import os
import platform
import shutil
import tempfile

try:
    import fcntl
except ImportError:
    fcntl = None

# Some disks know only the locks of each machine, so each looks after its own.
_PREFIX = f".part-{platform.node()}-"
_LOCK = "lock"


def lock(file):
    """Locks an open file. Returns whether nobody else has. True also where there are no locks."""
    if fcntl is None:
        return True
    try:
        fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        return False
    except OSError:
        # Some network disks have none.
        return True
    return True


@contextlib.contextmanager
def part(out):
    """A new folder in `out`, gone afterwards. It holds an empty folder `files`."""
    path = tempfile.mkdtemp(prefix=_PREFIX, dir=out)
    try:
        os.mkdir(os.path.join(path, "files"))
        # The name comes last: a folder whose lock has its name was locked once.
        new = os.path.join(path, "newLock")
        with open(new, "w") as file:
            lock(file)
            os.rename(new, os.path.join(path, _LOCK))
            yield path
    finally:
        shutil.rmtree(path, ignore_errors=True)


def sweep(out):
    """Removes what processes of this machine left that were killed."""
    if fcntl is None:
        return
    for name in os.listdir(out):
        if not name.startswith(_PREFIX):
            continue
        path = os.path.join(out, name)
        with contextlib.suppress(OSError), open(os.path.join(path, _LOCK), "r+") as file:
            # Without locks on this disk nobody knows who is alive.
            fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
            shutil.rmtree(path, ignore_errors=True)


def publish(waiting, folder):
    """Moves all files of one folder into another one, each at once. Returns their names there."""
    names = []
    for place, _, files in os.walk(waiting):
        inner = os.path.relpath(place, waiting)
        for name in files:
            names.append(os.path.normpath(os.path.join(inner, name)))
    for name in sorted(names):
        final = os.path.join(folder, name)
        os.makedirs(os.path.dirname(final), exist_ok=True)
        os.replace(os.path.join(waiting, name), final)
    return sorted(names)
