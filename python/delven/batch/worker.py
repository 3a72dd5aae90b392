"""The process of one scene: opens it, runs the script, and writes down what came of it.

The task comes through the standard input; `task.py` says what it holds. The result is a file, so that nothing the
script prints can disturb it. Both are in Python's own binary form: this process starts for each scene, and the
modules for JSON would cost as much time as the host itself.
"""

import errno
import faulthandler
import marshal
import os
import sys
import types

from delven.batch import current

try:
    import fcntl
    import resource
except ImportError:
    fcntl = resource = None


def _set_memory(megabytes):
    """Limits the address space. None takes the limit away."""
    if resource is None or not hasattr(resource, "RLIMIT_AS"):
        return
    hard = resource.getrlimit(resource.RLIMIT_AS)[1]
    soft = hard if megabytes is None else int(megabytes * (1 << 20))
    if hard != resource.RLIM_INFINITY:
        soft = min(soft, hard) if soft != resource.RLIM_INFINITY else hard
    resource.setrlimit(resource.RLIMIT_AS, (soft, hard))


def _end_with_runner():
    """Lets the system end this process and its children when the runner is gone, however it ended.

    The runner holds the other end of the standard input. A signal comes also while the host works, when no thread of
    Python could look. The script itself gets an empty input.
    """
    line = os.dup(0)
    null = os.open(os.devnull, os.O_RDONLY)
    os.dup2(null, 0)
    os.close(null)
    if fcntl is None or not hasattr(os, "O_ASYNC"):
        return
    fcntl.fcntl(line, fcntl.F_SETOWN, -os.getpgrp())
    fcntl.fcntl(line, fcntl.F_SETFL, fcntl.fcntl(line, fcntl.F_GETFL) | os.O_ASYNC | os.O_NONBLOCK)
    try:
        os.read(line, 1)
    except BlockingIOError:
        return
    # It ended before the signal was ordered.
    os._exit(1)


def _is_memory(error):
    if isinstance(error, MemoryError) or (isinstance(error, OSError) and error.errno == errno.ENOMEM):
        return True
    text = str(error)
    # The host's own words, and those of the system's loader of libraries.
    return text.endswith("Out of memory.") or "failed to map segment" in text or "annot allocate memory" in text


def _text(error):
    """A line for an exception, also for one that cannot tell its text."""
    import traceback

    return "".join(traceback.format_exception_only(type(error), error)).strip()


def _failure(status, error, place=""):
    if _is_memory(error):
        status = "memory"
    # Whatever took the memory still lives in the frames of the error.
    _set_memory(None)
    return {"status": status, "error": _text(error) + place}


def _place(trace, task):
    """The last line of the script that an exception came through."""
    number = None
    while trace is not None:
        if trace.tb_frame.f_code.co_filename == task["script"]:
            number = trace.tb_lineno
        trace = trace.tb_next
    if number is None:
        return ""
    lines = task["text"].splitlines()
    line = lines[number - 1].strip() if number <= len(lines) else ""
    return f" ({os.path.basename(task['script'])}, line {number}: {line})"


def _show(error):
    """Shows an exception as Python does, without the frames of this file."""
    import traceback

    trace = error.__traceback__
    while trace is not None and trace.tb_frame.f_code.co_filename == __file__:
        trace = trace.tb_next
    traceback.print_exception(type(error), error, trace)


def _run_script(task):
    """The outcome of the script, which runs as Python runs one."""
    script = task["script"]
    main = types.ModuleType("__main__")
    main.__file__ = script
    sys.modules["__main__"] = main
    sys.argv = [script]
    sys.path.insert(0, os.path.dirname(os.path.realpath(script)))
    try:
        exec(compile(task["text"], script, "exec"), vars(main))
    except SystemExit as end:
        if end.code not in (None, 0):
            return {"status": "error", "error": f"The script ended with: {end.code}"}
    except BaseException as error:
        outcome = _failure("error", error, _place(error.__traceback__, task))
        _show(error)
        return outcome
    return {"status": "ok", "error": ""}


def _work(task):
    try:
        from delven import cmds, standalone

        standalone.initialize()
    except Exception as error:
        return _failure("error", error)
    try:
        cmds.file(task["scene"], open=True, force=True)
    except Exception as error:
        return _failure("unreadable", error)
    current.begin(task["scene"], task["files"])
    return _run_script(task)


def main():
    task = marshal.load(sys.stdin.buffer)
    _end_with_runner()
    for stream in (sys.stdout, sys.stderr):
        stream.reconfigure(encoding="utf-8", errors="backslashreplace", line_buffering=True)
    faulthandler.enable()
    # The stand-in for Maya goes last, so that a real one is never hidden.
    stand_in = os.path.join(sys.path[0], "headless")
    if os.path.isdir(stand_in) and stand_in not in sys.path:
        sys.path.append(stand_in)
    _set_memory(task["memory"])
    outcome = _work(task)
    _set_memory(None)
    outcome["report"] = current.values()
    with open(task["result"], "wb") as file:
        marshal.dump(outcome, file)
