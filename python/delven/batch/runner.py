"""Runs tasks on this machine or on a cluster, and keeps their rows."""

import concurrent.futures
import contextlib
import importlib.util
import os
import sys
import uuid

from delven.batch import WrongUse, parts
from delven.batch import scenes as scene_list
from delven.batch.results import Results, file_name
from delven.batch.task import row_of, run_task, script_hash, stop


def _cores():
    if hasattr(os, "sched_getaffinity"):
        return len(os.sched_getaffinity(0))
    return os.cpu_count() or 1


def _read_script(script):
    """The hash of a script that can be compiled."""
    try:
        with open(script, "rb") as file:
            data = file.read()
        compile(importlib.util.decode_source(data), script, "exec")
    except OSError as error:
        raise WrongUse(f"The script cannot be read: {error}") from None
    except (SyntaxError, ValueError) as error:
        raise WrongUse(f"The script is no Python: {error}") from None
    return script_hash(data)


def _locally(tasks, jobs):
    """Rows of tasks as they end."""
    pool = concurrent.futures.ThreadPoolExecutor(jobs)
    try:
        for future in concurrent.futures.as_completed([pool.submit(run_task, task) for task in tasks]):
            yield future.result()
    finally:
        stop(tasks[0]["run"])
        pool.shutdown(cancel_futures=True)


def _connect(address):
    try:
        import distributed
    except ImportError:
        raise WrongUse("A scheduler needs the package distributed, which Debian has as python3-distributed.") from None
    try:
        return distributed, distributed.Client(address, timeout=10, set_as_default=False)
    except (OSError, ValueError) as error:
        raise WrongUse(f"No Dask scheduler answers at {address}: {error}") from None


def _row(future, task, address):
    """The row of a task that a cluster has ended."""
    if future.status == "finished":
        return future.result()
    if future.cancelled():
        raise OSError(f"The Dask scheduler at {address} is gone. What is done is kept: run again to go on.")
    error = future.exception()
    text = f"The cluster gave it up: {type(error).__name__}: {error}"
    if isinstance(error, ModuleNotFoundError):
        text += ". Start the workers of the cluster by delvenpy, as docs/python.md shows."
    # A worker that a scene brings down takes the next ones with it, until the scheduler stops that.
    return row_of(task, status="crash" if type(error).__name__ == "KilledWorker" else "error", error=text)


def _on_cluster(tasks, address):
    """The same on a cluster. A task of a worker that dies runs elsewhere."""
    distributed, client = _connect(address)
    by_key = {f"{task['run']}-{index}": task for index, task in enumerate(tasks)}
    waiting = set(by_key)
    try:
        futures = client.map(run_task, tasks, key=list(by_key), pure=False)
        for future in distributed.as_completed(futures, loop=client.loop):
            row = _row(future, by_key[future.key], address)
            waiting.discard(future.key)
            yield row
    finally:
        if waiting and client.status == "running":
            # What stopped this is worth more than a cluster that does not answer any more.
            with contextlib.suppress(OSError):
                client.cancel(futures)
                client.run(stop, tasks[0]["run"], on_error="ignore")
        client.close()


def _bar(total):
    """A progress bar, on terminals only."""
    if sys.stderr is None or not sys.stderr.isatty():
        return contextlib.nullcontext()
    try:
        import tqdm
    except ImportError:
        return contextlib.nullcontext()
    return tqdm.tqdm(total=total, unit="scene")


def _run_tasks(tasks, results, jobs, scheduler):
    rows = _on_cluster(tasks, scheduler) if scheduler else _locally(tasks, jobs)
    with contextlib.closing(rows), _bar(len(tasks)) as bar:
        for row in rows:
            results.add(row)
            if bar is not None:
                bar.update()


def _open_results(out, shard):
    try:
        os.makedirs(out, exist_ok=True)
        parts.sweep(out)
        return Results(os.path.join(out, file_name(shard)))
    except OSError as error:
        raise WrongUse(f"The output folder cannot be used: {error}") from None


def run(script, scenes, out, jobs=None, time=None, memory=None, again=False, shard=None, scheduler=None):
    """See delven.batch.run."""
    for name, value in (("jobs", jobs), ("time", time), ("memory", memory)):
        if value is not None and not 0 < value < float("inf"):
            raise WrongUse(f"{name} is {value}. It must be above 0.")
    script, out = os.path.abspath(script), os.path.abspath(out)
    given = [scenes] if isinstance(scenes, (str, os.PathLike)) else list(scenes)
    found = scene_list.shard_of(scene_list.find(given, out), shard)
    common = {"script": script, "hash": _read_script(script), "out": out, "time": time, "memory": memory}
    common["run"] = uuid.uuid4().hex
    results = _open_results(out, shard)
    tasks = [
        {**common, "scene": scene, "folder": folder}
        for scene, folder in found
        if again or not _is_done(results.rows.get(scene), common["hash"])
    ]
    try:
        if tasks:
            _run_tasks(tasks, results, jobs or _cores(), scheduler)
    finally:
        results.finish()
        parts.sweep(out)
    return [results.rows[scene] for scene, _ in found]


def _is_done(row, wanted):
    return row is not None and row.get("status") == "ok" and row.get("script") == wanted
