"""Arrays of numpy against a copy of the same bytes, and the price of a call.

Run by `make bench` with the host's Python. Each row is the best of several calls; the floor is measured in between, so
that both see the same machine.
"""

import subprocess
import sys
import time

import numpy

from delven import arrays, cmds


def best(work, times=7):
    """Shortest time of several calls, in seconds."""
    shortest = float("inf")
    for _ in range(times):
        begun = time.perf_counter()
        work()
        shortest = min(shortest, time.perf_counter() - begun)
    return shortest


def row(name, work, floor, limit):
    measured, least = best(work), best(floor)
    print(f"{name:<44}{measured * 1e3:10.3f} ms{least * 1e3:10.3f} ms{measured / least:8.2f}{limit:>8}")


def scene(columns, rows):
    """A plane with one target of all its vertices, and a skin with four joints."""
    cmds.file(new=True, force=True)
    cmds.undoInfo(state=False)
    cmds.polyPlane(name="mesh", subdivisionsX=columns, subdivisionsY=rows, constructionHistory=False)
    cmds.duplicate("mesh", name="target")
    cmds.blendShape("target", "mesh", name="bs")
    cmds.delete("target")
    count = len(arrays.points("mesh"))
    arrays.set_deltas("bs", 0, numpy.arange(count), numpy.ones((count, 3)))
    arrays.set_target_weights("bs", 0, numpy.full(count, 0.5))
    return count


def compare(count):
    points = arrays.points("mesh").astype(numpy.float32)
    deltas = numpy.ones((count, 4))
    weights = numpy.full(count, 0.5)  # the host stores doubles
    indices = numpy.arange(count, dtype=numpy.int32)

    def copied_deltas():
        return deltas[:, :3].copy(), indices.copy()

    row(f"points, {count}", lambda: arrays.points("mesh"), lambda: points.astype(numpy.float64), "1.3")
    row(f"deltas, {count}", lambda: arrays.deltas("bs", 0), copied_deltas, "1.3")
    row(f"weights, {count}", lambda: arrays.target_weights("bs", 0), lambda: weights.astype(numpy.float32), "1.3")


def price_of_a_call(calls=100000):
    begun = time.perf_counter()
    for _ in range(calls):
        cmds.objExists("mesh")
    each = (time.perf_counter() - begun) / calls
    print(f"{'cmds.objExists':<44}{each * 1e6:10.2f} us{'':>21}{'3 us':>8}")
    text = f"import sys; sys.path[:] = {sys.path!r}; import time; begun = time.perf_counter(); "
    text += "from delven import cmds; cmds.ls(); print(time.perf_counter() - begun)"
    start = min(float(subprocess.check_output([sys.executable, "-c", text])) for _ in range(3))
    print(f"{'import and start of the host':<44}{start * 1e3:10.1f} ms{'':>21}{'150 ms':>8}")


if __name__ == "__main__":
    print(f"{'':<44}{'':>13}{'floor':>13}{'ratio':>8}{'limit':>8}")
    for columns, rows in ((102, 185), (1000, 999)):
        compare(scene(columns, rows))
    price_of_a_call()
