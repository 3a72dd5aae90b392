"""A script over many scenes: what is kept, and what a fault of one scene does to the others."""

import contextlib
import fcntl
import json
import os
import pathlib
import signal
import subprocess
import sys
import time

import pytest

from delven import batch
from delven.batch import current, parts
from delven.batch.results import Results

SCENE = '//Maya ASCII 2025 scene\nrequires maya "2025";\ncreateNode transform -n "thing";\n'
RUNNER = [os.environ["DELVENPY"], "-m", "delven.batch"]


def wait_for(condition):
    """Waits for what another process does; long, as the machine may be busy."""
    end = time.monotonic() + 60
    while not condition():
        assert time.monotonic() < end, "waited in vain"
        time.sleep(0.02)


def read(path):
    return path.read_text() if path.exists() else ""


def is_free(path):
    """Whether no process holds a lock on a file any more."""
    with open(path, "a") as file:
        return parts.lock(file)


class Place:
    """A folder with scenes, a script and an output folder."""

    def __init__(self, folder):
        self.folder, self.out, self.path = folder, folder / "out", folder / "script.py"
        self.scenes = folder / "scenes"
        self.scenes.mkdir()

    def add(self, *names):
        for name in names:
            path = self.scenes / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(SCENE)

    def script(self, text):
        """A script that knows `name` of its scene and `folder` of this place."""
        self.path.write_text(
            "import fcntl, os, subprocess, sys, time\nfrom delven import batch, cmds\n"
            f"name, folder = os.path.basename(batch.scene()), {str(self.folder)!r}\n{text}"
        )

    def words(self, *more):
        return [*RUNNER, self.path, self.scenes, "--out", self.out, *map(str, more)]

    def run(self, *more, words=None):
        return subprocess.run(words or self.words(*more), capture_output=True, text=True, timeout=100)

    def rows(self, file="results.jsonl"):
        """Rows by the names of scenes. Each line must be a row of a scene of its own."""
        rows = [json.loads(line) for line in (self.out / file).read_text("utf-8").splitlines()]
        assert len({row["scene"] for row in rows}) == len(rows)
        return {os.path.relpath(row["scene"], self.scenes): row for row in rows}

    def statuses(self, file="results.jsonl"):
        return {name: row["status"] for name, row in self.rows(file).items()}

    def left_over(self):
        return [name for name in os.listdir(self.out) if name.startswith(".")]


@pytest.fixture
def place(tmp_path):
    return Place(tmp_path)


HOSTILE = ["a b.ma", "ünï ☃.ma", "quo'te \"$(ls); &.ma", "-dash.ma", "new\nline.ma", "sub/a b.ma", "sub/ma.ma"]


def test_every_scene_of_a_folder_has_its_row_files_and_log(place):
    place.add(*HOSTILE)
    (place.scenes / "sub" / "notes.txt").write_text("no scene")
    os.symlink(place.scenes / "a b.ma", place.scenes / "sub" / "the same.ma")
    place.script(
        "open(batch.output('deep/own.txt'), 'w').write(cmds.ls('thing')[0] + __name__ + str(sys.argv))\n"
        "cmds.file(rename=batch.output('ünï.ma')); cmds.file(save=True)\n"
        "batch.report(a=1, b=1); batch.report(b=[True, None, 'ü'])\n"
        "cmds.warning('careful'); print('seen', name)\n"
        "assert sys.stdin.read() == '' and sys.path[0] == folder and __file__ == sys.argv[0]\n"
    )
    done = place.run(words=[*RUNNER, place.path, place.scenes / "a b.ma", "--out", place.out, place.scenes])
    assert (done.returncode, done.stderr) == (0, "")
    assert done.stdout == f"7 scenes: 7 ok. Results: {place.out}/results.jsonl\n"
    rows = place.rows()
    assert sorted(rows) == sorted(HOSTILE)
    for row in rows.values():
        assert (row["status"], row["error"], row["warnings"]) == ("ok", "", 1)
        assert row["report"] == {"a": 1, "b": [True, None, "ü"]}
        assert read(place.out / row["files"][0]) == f"thing__main__['{place.path}']"
        assert "createNode transform" in read(place.out / row["files"][1])
    assert read(place.out / "sub" / "a b.ma" / "log.txt") == "# Warning: careful #\nseen a b.ma\n"
    assert place.left_over() == []


FAILURES = {
    # name: text of the script, status, text of the error
    "fine.ma": ("pass", "ok", ""),
    "raises.ma": ("cmds.select('ghost')", "error", "ValueError: No object matches name: ghost (script.py, line "),
    "exits.ma": ("sys.exit('enough')", "error", "The script ended with: enough"),
    "vanishes.ma": ("print('last words'); os._exit(0)", "error", "The last message is: last words"),
    "escapes.ma": ("batch.output('../x')", "error", "'../x' is no name of a file"),
    "crashes.ma": ("os.kill(os.getpid(), 11)", "crash", "SIGSEGV ended the process (script.py, line "),
    "is killed.ma": ("os.kill(os.getpid(), 9)", "crash", "SIGKILL ended the process, as"),
    "is large.ma": ("kept = bytearray(1 << 31)", "memory", "MemoryError (script.py, line "),
    "is dense.ma": ("cmds.polyPlane(sx=4000, sy=4000); cmds.polyEvaluate(vertex=True)", "memory", "Out of memory."),
    "broken.ma": ("pass", "unreadable", "broken.ma, line 1"),
    "missing.ma": ("pass", "unreadable", "No such file"),
    os.fsdecode(b"no text\xff.ma"): ("pass", "unreadable", "UnicodeEncodeError"),
}


def test_each_kind_of_failure_is_a_row_and_stops_nothing(place):
    place.script("open(batch.output('file'), 'w').write('half')\n")
    with open(place.path, "a") as file:
        for name, (text, _, _) in FAILURES.items():
            file.write(f"if name == {name!r}:\n    {text}\n")
    place.add(*FAILURES)
    (place.scenes / "broken.ma").write_text("nonsense {")
    os.remove(place.scenes / "missing.ma")
    given = [place.scenes, place.scenes / "missing.ma"]
    done = place.run(words=[*RUNNER, place.path, *given, "--out", place.out, "--memory", "500"])
    assert done.returncode == 1
    assert place.statuses() == {name: status for name, (_, status, _) in FAILURES.items()}
    for name, row in place.rows().items():
        assert FAILURES[name][2] in row["error"]
        shown = f"{row['scene']}: {row['status']}: {row['error']}".encode("utf-8", "backslashreplace").decode()
        assert (shown in done.stderr) == (row["status"] != "ok")
        assert (place.out / name / "file").exists() == (row["status"] == "ok")
    assert "Traceback" in read(place.out / "raises.ma" / "log.txt")
    assert place.left_over() == []


# A child of the script holds the lock too.
HOLDING = """
    held = open(folder + '/held', 'w'); fcntl.flock(held, fcntl.LOCK_EX)
    child = subprocess.Popen(['sleep', '100'], pass_fds=[held.fileno()])
"""


def test_no_child_of_a_script_outlives_its_end_or_its_time(place):
    place.add("hangs.ma")
    place.script("if True:" + HOLDING + "    child.wait()")
    row = batch.run(place.path, place.scenes, place.out, time=1.5)[0]
    assert (row["status"], row["error"]) == ("timeout", "Stopped after 1.5 seconds.")
    wait_for(lambda: is_free(place.folder / "held"))
    place.script("if True:" + HOLDING)
    assert batch.run(place.path, place.scenes, place.out)[0]["status"] == "ok"
    wait_for(lambda: is_free(place.folder / "held"))


# Writes half of a file, holds a lock, and ends when it is let go.
HALTING = f"""
with open(folder + '/ran', 'a') as file: file.write(name + ' ')
file = open(batch.output('file'), 'w'); file.write('half'); file.flush()
if name == 'c.ma' and not os.path.exists(folder + '/go'):
    {HOLDING}
    cmds.polyCube(); open(folder + '/halted', 'w').close()
    child.wait()
file.write(', whole'); file.close()
"""
# Starts the runner so that it hears Ctrl-C also where the tests run in the background.
LISTENING = """
import runpy, signal, sys
signal.signal(signal.SIGINT, signal.default_int_handler)
sys.argv = ['batch', *sys.argv[1:]]
runpy.run_module('delven.batch', run_name='__main__', alter_sys=True)
"""


@pytest.mark.parametrize("number, status", [(signal.SIGKILL, -9), (signal.SIGINT, 130)])
def test_a_run_that_was_stopped_goes_on(place, number, status):
    place.add("a.ma", "b.ma", "c.ma", "d.ma")
    place.script(HALTING)
    words = [RUNNER[0], "-c", LISTENING, *place.words("--jobs", 1)[3:]]
    runner = subprocess.Popen(words, stderr=subprocess.PIPE, text=True)
    wait_for((place.folder / "halted").exists)
    runner.send_signal(number)
    assert "Traceback" not in runner.communicate(timeout=30)[1]
    assert runner.returncode == status
    # Neither the process of the scene nor its child outlives the runner.
    wait_for(lambda: is_free(place.folder / "held"))
    assert place.statuses() == {"a.ma": "ok", "b.ma": "ok"}
    assert not (place.out / "c.ma").exists()

    (place.folder / "go").touch()
    with open(place.out / "results.jsonl", "ab") as file:
        file.write(b'{"scene": "torn in the mid\xc3')
    assert place.run().returncode == 0
    assert place.statuses() == dict.fromkeys(["a.ma", "b.ma", "c.ma", "d.ma"], "ok")
    assert sorted(read(place.folder / "ran").split()) == ["a.ma", "b.ma", "c.ma", "c.ma", "d.ma"]
    assert read(place.out / "c.ma" / "file") == "half, whole"
    assert place.left_over() == []


def test_what_runs_again(place):
    place.add("a.ma", "b.ma")
    text = (
        "open(folder + '/ran', 'a').write(name[0])\n"
        "open(batch.output('file'), 'w').write('{}')\n"
        "assert name != '{}'\n"
    )

    def ran(word, bad, **options):
        place.script(text.format(word, bad))
        (place.folder / "ran").write_text("")
        rows = batch.run(place.path, place.scenes, place.out, jobs=1, **options)
        assert [row["status"] for row in rows] == ["error" if bad == name else "ok" for name in ("a.ma", "b.ma")]
        return read(place.folder / "ran")

    assert ran("old", "b.ma") == "ab"
    assert ran("old", "b.ma") == "b"
    assert ran("old", "b.ma", again=True) == "ab"
    assert ran("new", "a.ma") == "ab"
    # A run that fails leaves the whole file of the one before.
    assert [read(place.out / name / "file") for name in ("a.ma", "b.ma")] == ["old", "new"]
    # A row never comes from another text than the one it names.
    place.script("open(__file__, 'a').write('# changed')")
    rows = batch.run(place.path, place.scenes, place.out, jobs=1)
    assert [row["status"] for row in rows] == ["ok", "error"] and "has changed since" in rows[1]["error"]


def test_a_torn_line_tears_no_other(place):
    path = place.folder / "results.jsonl"
    path.write_bytes(b'{"scene": "a"}\n{"scene": "b", "torn": "\xc3')
    # Two runs that are killed: neither comes to write the file anew.
    for scene in ("c", "d"):
        results = Results(path)
        results.add({"scene": scene})
        results._file.close()
    assert path.read_text() == "".join(f'{{"scene": "{scene}"}}\n' for scene in "acd")


def test_shards_run_each_scene_once_and_are_joined(place):
    place.add(*(f"{name}.ma" for name in "abcde"))
    place.script("batch.report(first=True)")
    assert len(batch.run(place.path, [place.scenes], place.out, shard=(1, 2))) == 3
    joined = place.run(words=[*RUNNER, "--merge", "--out", place.out])
    assert (joined.returncode, joined.stderr) == (1, "The shard 2/2 has no results yet.\n")
    assert list(place.rows()) == ["a.ma", "c.ma", "e.ma"]
    place.script("batch.report(second=True); assert name != 'd.ma'")
    assert place.run("--shard", "2/2", "--jobs", 1).returncode == 1
    # A shard that still runs may be in the middle of a line.
    with open(place.out / "results.1-of-2.jsonl", "ab") as file:
        file.write(b'{"scene"')
    joined = place.run(words=[*RUNNER, "--merge", "--out", place.out])
    assert joined.returncode == 1 and joined.stdout.startswith("5 scenes: 4 ok, 1 error.")
    assert place.statuses() == {"a.ma": "ok", "b.ma": "ok", "c.ma": "ok", "d.ma": "error", "e.ma": "ok"}
    assert place.rows()["b.ma"]["report"] == {"second": True}
    # The row that ended last counts, in whatever file it is.
    batch.run(place.path, place.scenes, place.out, shard=(1, 1))
    assert place.run(words=[*RUNNER, "--merge", "--out", place.out]).returncode == 1
    assert {str(row["report"]) for row in place.rows().values()} == {"{'second': True}"}


def test_the_example_finds_targets_without_partners(tmp_path):
    examples = pathlib.Path(__file__).resolve().parents[2] / "examples" / "batch"
    rows = batch.run(examples / "checkTargets.py", examples / "scenes", tmp_path)
    assert [row["report"] for row in rows] == [
        {"empty": [], "alone": ["clothShapes.leftFold"]},
        {"empty": [], "alone": ["shapes.smile_L", "shapes.L_blink"]},
    ]
    assert read(tmp_path / "mask.ma" / "targets.txt") == "no partner: shapes.smile_L\nno partner: shapes.L_blink\n"


def test_scenes_of_one_name_keep_apart(place):
    place.add("anna/rig.ma", "bob/rig.ma")
    place.script("open(batch.output('file'), 'w').write(batch.scene())")
    rows = batch.run(place.path, [place.scenes / "anna", place.scenes / "bob" / "rig.ma"], place.out)
    assert [row["files"] for row in rows] == [["anna/rig.ma/file"], ["bob/rig.ma/file"]]
    # What an earlier run wrote below the scenes is none of them.
    inner = place.scenes / "out"
    place.script("cmds.file(rename=batch.output('new.ma')); cmds.file(save=True)")
    for _ in range(2):
        assert len(batch.run(place.path, place.scenes, inner, again=True)) == 2


def test_wrong_use_runs_nothing(place):
    place.add("a.ma")
    place.script("pass")
    (place.folder / "empty").mkdir()
    (place.folder / "bad.py").write_text("def (")

    def refuses(text, script=place.path, scenes=place.scenes, out=place.out, **options):
        with pytest.raises(batch.WrongUse, match=text):
            batch.run(script, scenes, out, **options)
        assert not place.out.exists() or os.listdir(place.out) == []

    refuses("There is no scene", scenes=place.folder / "empty")
    refuses("holds the scenes themselves", out=place.scenes)
    refuses("The script cannot be read", script=place.folder / "none.py")
    refuses("The script is no Python: .*bad.py, line 1", script=place.folder / "bad.py")
    refuses("The output folder cannot be used", out=place.path)
    refuses("There is no shard 3 of 2", shard=(3, 2))
    refuses("jobs is 0", jobs=0)
    refuses("time is -1", time=-1)
    for words in (["--shard", "x"], ["--merge"], ["--memory", "nan"]):
        done = place.run(*words)
        assert (done.returncode, done.stdout) == (2, "") and "Traceback" not in done.stderr
    place.out.mkdir(exist_ok=True)
    with contextlib.closing(Results(place.out / "results.jsonl")._file):
        with pytest.raises(batch.WrongUse, match="Another run writes to"):
            batch.run(place.path, place.scenes, place.out)


def test_what_a_script_may_ask(place, monkeypatch):
    for call in (batch.scene, batch.report, lambda: batch.output("a")):
        with pytest.raises(RuntimeError, match="No batch is running here"):
            call()
    for name in ("_scene", "_folder", "_values"):
        monkeypatch.setattr(current, name, {})
    current.begin("a.ma", str(place.folder / "files"))
    for name in ("", ".", "..", "../a", "a/../../b", "/etc/a", "a/", "a//b", "a\0b", "log.txt", "LOG.TXT"):
        with pytest.raises(ValueError):
            batch.output(name)
    assert batch.output("..a/b...ma") == str(place.folder / "files" / "..a" / "b...ma")
    numpy = pytest.importorskip("numpy")
    batch.report(array=numpy.arange(2), number=numpy.float32(0.5), inner=({"a": numpy.int64(1)}, None))
    for wrong in (float("nan"), float("inf"), object(), {1: 2}, [{1, 2}]):
        with pytest.raises((TypeError, ValueError)):
            batch.report(wrong=wrong)
    assert current.values() == {"array": [0, 1], "number": 0.5, "inner": [{"a": 1}, None]}


def test_a_terminal_shows_progress(place):
    pytest.importorskip("tqdm")
    place.add("a.ma", "b.ma")
    place.script("pass")
    reader, writer = os.openpty()
    assert subprocess.run(place.words(), stdout=subprocess.DEVNULL, stderr=writer, timeout=60).returncode == 0
    os.close(writer)
    assert b"2/2" in os.read(reader, 10000)
    os.close(reader)


@contextlib.contextmanager
def cluster(folder):
    """A Dask scheduler with two workers on this machine: its address and the processes of the workers."""
    options = ["--host", "127.0.0.1", "--no-dashboard"]
    address = folder / "scheduler.json"
    log = open(folder / "dask.log", "w")
    processes = []

    def start(*words):
        processes.append(subprocess.Popen([RUNNER[0], "-m", *words, *options], stdout=log, stderr=log, cwd=folder))

    try:
        start("distributed.cli.dask_scheduler", "--port", "0", "--scheduler-file", address)
        wait_for(lambda: read(address).endswith("}"))
        for _ in range(2):
            start("distributed.cli.dask_worker", json.loads(read(address))["address"], "--no-nanny", "--nthreads", "1")
        yield json.loads(read(address))["address"], processes[1:]
    finally:
        for process in processes:
            process.kill()
            process.wait()
        log.close()


def test_scenes_of_a_dask_worker_that_is_killed_run_elsewhere(place):
    pytest.importorskip("distributed", reason="python3-distributed is missing")
    names = [f"{name}.ma" for name in "abcdefgh"]
    place.add(*names)
    place.script(
        "with open(folder + '/ran', 'a') as file: file.write(f'{os.getppid()} {name}\\n')\n"
        "open(batch.output('file'), 'w').write('whole')\n"
        "while not os.path.exists(folder + '/go'): time.sleep(0.02)\n"
        "assert name != 'h.ma'\n"
    )

    def ran():
        return [line.split() for line in read(place.folder / "ran").splitlines()]

    with cluster(place.folder) as (address, workers):
        runner = subprocess.Popen(place.words("--scheduler", address), stdout=subprocess.PIPE, text=True)
        wait_for(lambda: {str(worker.pid) for worker in workers} == {pid for pid, _ in ran()})
        workers[0].kill()
        (place.folder / "go").touch()
        assert runner.communicate(timeout=60)[0].startswith("8 scenes: 7 ok, 1 error.")
        assert runner.returncode == 1
    assert place.statuses() == {**dict.fromkeys(names, "ok"), "h.ma": "error"}
    again = [name for pid, name in ran() if pid == str(workers[0].pid)]
    assert len(again) == 1 and sorted(name for _, name in ran()) == sorted([*names, *again])
    assert all(read(place.out / name / "file") == "whole" for name in names[:-1])
    assert place.left_over() == []


def test_a_scheduler_that_is_not_there(place, monkeypatch):
    place.add("a.ma")
    place.script("pass")
    monkeypatch.setitem(sys.modules, "distributed", None)
    with pytest.raises(batch.WrongUse, match="python3-distributed"):
        batch.run(place.path, place.scenes, place.out, scheduler="tcp://127.0.0.1:1")
