"""Runs a script on one scene, in a process of its own.

A task is a dictionary, so that it travels to other machines: `scene`, `script` and `out` are absolute paths, `hash`
says which text of the script is meant, `folder` is the scene's folder in `out`, `time` and `memory` are limits or
None, and `run` names the run that it belongs to.
"""

import contextlib
import datetime
import hashlib
import importlib.util
import marshal
import os
import re
import signal
import subprocess
import sys
import threading
import time

from delven.batch import current, parts

_PACKAGES = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
# The package is found before the worker knows anything. An empty entry would be the current folder.
_START = (
    "import sys; sys.path = [sys.argv.pop(1), *filter(None, sys.path)]; "
    "from delven.batch.worker import main; main()"
)
_WARNING = re.compile(rb"^(?:# )?Warning: ", re.MULTILINE)
_NO_MEMORY = re.compile("MemoryError|bad_alloc|annot allocate memory|failed to map segment")
_LONGEST = 4000

_lock = threading.Lock()
_running = {}
_stopped = set()


def script_hash(data):
    """What tells texts of scripts apart."""
    return hashlib.sha256(data).hexdigest()[:16]


def stop(run):
    """Ends all processes of a run on this machine, and those that would begin."""
    with _lock:
        _stopped.add(run)
        for process in _running.get(run, ()):
            _kill(process)


def _kill(process):
    """Ends a process and its children."""
    if not hasattr(os, "killpg"):
        process.kill()
        return
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process.pid, signal.SIGKILL)


@contextlib.contextmanager
def _known(process, run):
    """Lets `stop` find a process."""
    with _lock:
        _running.setdefault(run, set()).add(process)
        if run in _stopped:
            _kill(process)
    try:
        yield
    finally:
        with _lock:
            _running[run].discard(process)


def _start(log):
    return subprocess.Popen(
        [sys.executable, "-c", _START, _PACKAGES],
        stdin=subprocess.PIPE,
        stdout=log,
        stderr=subprocess.STDOUT,
        start_new_session=True,
    )


def _watch(process, given, limit):
    """Hands a process its task, and waits for its end. Returns whether it took too long."""
    late = threading.Event()

    def end():
        late.set()
        _kill(process)

    timer = threading.Timer(limit, end) if limit else None
    if timer:
        timer.start()
    try:
        # The pipe stays open: its end tells the process that nobody waits for it.
        with contextlib.suppress(BrokenPipeError):
            process.stdin.write(marshal.dumps(given))
            process.stdin.flush()
        process.wait()
    finally:
        if timer:
            timer.cancel()
            timer.join()
        # Children that a script left would write on.
        _kill(process)
        with contextlib.suppress(BrokenPipeError):
            process.stdin.close()
    return late.is_set() and process.returncode != 0


def _signal_name(number):
    try:
        return signal.Signals(number).name
    except ValueError:
        return f"signal {number}"


def _crash_place(log):
    """Where Python was when a signal came, from the lines that it leaves then."""
    fatal = log.rfind("Fatal Python error")
    place = re.search(r'  File "(.+)", line (\d+)', log[fatal:]) if fatal >= 0 else None
    if place is None:
        return ""
    name = os.path.basename(place[1])
    return " while the scene was opened" if name == "worker.py" else f" ({name}, line {place[2]})"


def _broken(task, status, log):
    """The outcome of a process that ended without a result, or after it."""
    text = log.decode("utf-8", "replace")
    last = next((line.strip() for line in reversed(text.split("\n")) if line.strip()), "nothing")
    if task["memory"] and _NO_MEMORY.search(text, max(0, len(text) - _LONGEST)):
        return {"status": "memory", "error": f"Out of memory. The last message is: {last}"}
    if status < 0:
        hint = ", as the system does when memory runs out" if status == -signal.SIGKILL else ""
        return {"status": "crash", "error": f"{_signal_name(-status)} ended the process{_crash_place(text)}{hint}."}
    error = f"The process ended with status {status} before the script did. The last message is: {last}"
    return {"status": "error", "error": error}


def _outcome(task, late, status, result, log):
    if late:
        return {"status": "timeout", "error": f"Stopped after {task['time']:g} seconds."}
    if status != 0 or not os.path.exists(result):
        return _broken(task, status, log)
    with open(result, "rb") as file:
        return marshal.load(file)


def _keep_log(log, folder):
    """Puts the messages of a scene beside its files. No messages, no file."""
    final = os.path.join(folder, current.LOG)
    if os.path.getsize(log):
        os.makedirs(folder, exist_ok=True)
        os.replace(log, final)
    elif os.path.exists(final):
        os.remove(final)


def _read_script(task):
    with open(task["script"], "rb") as file:
        data = file.read()
    if script_hash(data) != task["hash"]:
        raise OSError(f"{task['script']} has changed since this run began. Run again when it is as you want it.")
    return importlib.util.decode_source(data)


def _in_part(task, part):
    """Runs the script with a folder to work in. Returns what the row says of it."""
    files, result, log = (os.path.join(part, name) for name in ("files", "result", "log"))
    folder = os.path.join(task["out"], task["folder"])
    given = {**task, "text": _read_script(task), "files": files, "result": result}
    with open(log, "ab") as file:
        process = _start(file)
    with _known(process, task["run"]):
        late = _watch(process, given, task["time"])
    with open(log, "rb") as file:
        messages = file.read()
    outcome = _outcome(task, late, process.returncode, result, messages)
    outcome["warnings"] = len(_WARNING.findall(messages))
    _keep_log(log, folder)
    if outcome["status"] == "ok":
        outcome["files"] = [os.path.join(task["folder"], name) for name in parts.publish(files, folder)]
    return outcome


def row_of(task, **outcome):
    """A row of the results."""
    ended = datetime.datetime.now(datetime.timezone.utc).isoformat(timespec="milliseconds")
    row = {"scene": task["scene"], "status": "error", "seconds": 0.0, "error": "", "report": {}, "warnings": 0}
    row.update(files=[], script=task["hash"], ended=ended)
    row.update(outcome)
    if len(row["error"]) > _LONGEST:
        row["error"] = row["error"][:_LONGEST] + "..."
    return row


def run_task(task):
    """Runs a script on one scene. Returns its row; what goes wrong is in there."""
    began = time.monotonic()
    try:
        with parts.part(task["out"]) as part:
            outcome = _in_part(task, part)
    except OSError as error:
        outcome = {"status": "error", "error": str(error)}
    return row_of(task, seconds=round(time.monotonic() - began, 3), **outcome)
