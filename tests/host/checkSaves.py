#!/usr/bin/env python3
"""What stays of a scene when saving it is interrupted or fails, and what hostile scenes touch.

    checkSaves.py <delvenbatch> <work folder> killed|failing|limited|fullDisk|hostile

The save is the calls that the program makes to the system between two look-ups of files that do not exist. One run
lists them. Then the program runs once for each of them, and the tracer kills it there or lets this call fail.

Whatever happens, the file under the scene's name has all the old bytes or all the new ones. A program that is killed
may leave one file `.delven-<number>-<number>.tmp` beside it: nobody can read it who may not read the scene, and the
next save does not care. A save that fails says so, leaves the old file and nothing beside it, and the scene still
counts as modified.

Hostile scenes (hostile/*.ma) are opened, imported, saved and opened again. Meanwhile the program starts nothing,
connects with nothing, and names no file to the system but the scenes, the temporary one beside them and the folders
above.

Ends with 77 and says why where the tracer is missing or not allowed.
"""
import errno
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import threading

PROGRAM, WORK, MODE = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]
SCENE = WORK / "scene.ma"
EDIT = "setAttr first.ty 3; setAttr last.ty 4;"
# The tracer is what a leak checker would be.
ENVIRONMENT = {**os.environ, "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}
MEMORY_CALLS = {"brk", "futex", "madvise", "mmap", "mprotect", "mremap", "munmap"}
failures = []


def expect(condition, text):
    if not condition:
        failures.append(text)


def skip(why):
    print(f"checkSaves: skipped: {why}")
    sys.exit(77)


def scene_text(value):
    """A scene that takes several writes, with an edit near its beginning and one near its end."""
    node = 'createNode transform -n "{}";\n\tsetAttr ".t" -type "double3" 0 {} 0 ;\n'
    filler = 'createNode network -n "n{}";\n\tsetAttr ".note" -type "string" "{}";\n'
    middle = "".join(filler.format(k, "x" * 1000) for k in range(100))
    first, last = node.format("first", 3 if value else 1), node.format("last", 4 if value else 2)
    head = '//Maya ASCII 2024 scene\n//Name: scene.ma\nrequires maya "2024";\n'
    return (head + first + middle + last + "// End of scene.ma\n").encode()


OLD, NEW = scene_text(False), scene_text(True)


def renew(folder=WORK):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    (folder / SCENE.name).write_bytes(OLD)
    (folder / SCENE.name).chmod(0o600)


def left_beside(folder=WORK):
    return [file for file in folder.iterdir() if file.name != SCENE.name]


def traced(inject=()):
    """The command line that traces the program, up to the program's own words."""
    rules = [word for rule in inject for word in ("-e", rule)]
    return ["strace", "-f", "-qq", "-o", str(trace_file()), *rules, PROGRAM, "-noAutoloadPlugins"]


def trace_file():
    return WORK.with_name(WORK.name + ".trace")


def mark(name):
    return f'filetest -f "/delven no such file {name}";'


def calls_of_save():
    """The calls between the marks, and the second mark: each by its name and how many of it the thread had made."""
    counts, calls, inside = {}, [], False
    for line in trace_file().read_text(errors="replace").splitlines():
        call = re.match(r"(\d+) +(\w+)\(", line)
        if call is None:
            continue
        thread, name = call.groups()
        counts[thread, name] = counts.get((thread, name), 0) + 1
        if inside:
            calls.append((name, counts[thread, name]))
        if "delven no such file" in line:
            inside = "begin" in line
    return calls


def listed_calls():
    """The calls of a save that nothing disturbs, and the next one."""
    if shutil.which("strace") is None:
        skip("there is no strace")
    probe = subprocess.run(["strace", "-qq", "-e", "trace=none", "true"], capture_output=True, text=True, check=False)
    if probe.returncode != 0:
        skip("the tracer may not trace: " + probe.stderr.strip())
    renew()
    session = Session([*traced(), "-prompt"])
    expect_good_save(session, "nothing disturbs it", False)
    calls = calls_of_save()
    names = {name for name, _ in calls}
    expect(names & {"rename", "renameat", "renameat2"} and names & {"fsync", "fdatasync"} and len(calls) > 10,
           f"these are not the calls of a save: {calls}")
    return calls


class Session:
    """The program at its prompt, with the scene opened and edited."""

    def __init__(self, words, folder=WORK, limit=None):
        self.scene = folder / SCENE.name
        self.process = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                        text=True, env=ENVIRONMENT, preexec_fn=limit)
        self.watchdog = threading.Timer(60, self.process.kill)
        self.watchdog.start()
        self.ask(f'file -open "{self.scene}"; {EDIT}', '""')

    def ask(self, script, value):
        try:
            self.process.stdin.write(f'{script}\nprint ("answer " + {value} + "\\n");\n')
            self.process.stdin.flush()
        except BrokenPipeError:
            return "ended"
        for line in self.process.stdout:
            if line.startswith("answer "):
                return line[7:].strip()
        return "ended"

    def save(self):
        """Saves the scene. Whether that failed, and whether the scene then counts as modified."""
        answer = self.ask(mark("begin") + "int $failed = catch(`file -save`);" + mark("end"),
                          '$failed + " " + `file -query -modified`')
        return answer.split() if " " in answer else [answer, answer]

    def end(self):
        _, messages = self.process.communicate()
        self.watchdog.cancel()
        return messages


def expect_save(session, where):
    """One save under bad conditions. Returns whether it failed."""
    failed, modified = session.save()
    saved = session.scene.read_bytes()
    expect(failed in "01" and modified == failed, f"{where}: failed {failed}, modified {modified}")
    expect(saved == (OLD if failed == "1" else NEW), f"{where}: failed {failed}, but the file has {len(saved)} bytes")
    left = left_beside(session.scene.parent)
    expect(not left, f"{where}: failed {failed} and left {left}")
    return failed == "1"


def expect_good_save(session, where, has_failed):
    """A save when the cause is gone. Ends the session."""
    expect(session.save() == ["0", "0"] and session.scene.read_bytes() == NEW, f"{where}: the save after it")
    expect(not left_beside(session.scene.parent), f"{where}: the save after it left something")
    messages = session.end()
    expect(("cannot write '" + str(session.scene)) in messages or not has_failed, f"{where}: no error, but {messages}")


# --- Killed

def check_killed():
    calls = listed_calls()
    states = []
    for at, (name, count) in enumerate(calls):
        renew()
        session = Session([*traced([f"inject={name}:signal=KILL:when={count}"]), "-prompt"])
        where = f"killed at call {at} ({name} {count})"
        expect(session.save() == ["ended", "ended"], f"{where}: it goes on")
        session.end()
        expect(len(calls_of_save()) == at + 1, f"{where}: ended after {len(calls_of_save())} calls")
        saved = SCENE.read_bytes()
        expect(saved in (OLD, NEW), f"{where}: the file is neither the old one nor the new one, but {len(saved)} bytes")
        states.append(saved == NEW)
        left = left_beside()
        expect(len(left) <= 1 and all(re.fullmatch(r"\.delven-\d+-\d+\.tmp", file.name) for file in left),
               f"{where}: left {left}")
        expect(all(file.stat().st_size == 0 or file.stat().st_mode & 0o077 == 0 for file in left),
               f"{where}: others can read what is left")
        again = subprocess.run([PROGRAM, "-noAutoloadPlugins", "-file", str(SCENE), "-command", EDIT + "file -save;"],
                               capture_output=True, text=True, timeout=120, env=ENVIRONMENT, check=False)
        expect(again.returncode == 0 and SCENE.read_bytes() == NEW and left_beside() == left,
               f"{where}: the next save: {again.stderr} {left_beside()}")
    expect(states == sorted(states), f"old and new take turns: {states}")
    expect(not states[0] and states[-1], f"neither the old nor the new file was found: {states}")
    print(f"killed at each of {len(calls)} calls; old {states.count(False)} times, new {states.count(True)} times")


# --- Failing

def check_failing():
    reported = {}
    # Without the second mark, and without memory: what an allocator does when it gets none is not asked here.
    calls = [call for call in listed_calls()[:-1] if call[0] not in MEMORY_CALLS]
    for code in (errno.EIO, errno.ENOSPC):
        for at, (name, count) in enumerate(calls):
            renew()
            where = f"{errno.errorcode[code]} of call {at} ({name} {count})"
            session = Session([*traced([f"inject={name}:error={errno.errorcode[code]}:when={count}"]), "-prompt"])
            has_failed = expect_save(session, where)
            reported.setdefault(name, set()).add(has_failed)
            expect_good_save(session, where, has_failed)
            expect("(INJECTED)" in trace_file().read_text(errors="replace"), f"{where}: nothing failed")
    # Anything else may succeed all the same.
    for names in (("write", "writev"), ("fsync", "fdatasync"), ("rename", "renameat", "renameat2")):
        seen = set().union(*(reported.get(name, set()) for name in names))
        expect(seen == {True}, f"failures of {names} are reported: {seen}")
    names = sorted(name for name, seen in reported.items() if True in seen)
    print(f"each of {len(calls)} calls failed; reported: {names}")


def check_limited():
    hard = resource.getrlimit(resource.RLIMIT_FSIZE)[1]
    for size in (0, 1, 4096, len(NEW) // 2, len(NEW) - 1):
        renew()
        session = Session([PROGRAM, "-noAutoloadPlugins", "-prompt"],
                          limit=lambda size=size: resource.setrlimit(resource.RLIMIT_FSIZE, (size, hard)))
        where = f"at most {size} bytes in a file"
        expect(expect_save(session, where), f"{where}: the save succeeds")
        resource.prlimit(session.process.pid, resource.RLIMIT_FSIZE, (hard, hard))
        expect_good_save(session, where, True)
    print("files may not become as long as the scene: every save failed cleanly")


def check_full_disk():
    if os.environ.get("DELVEN_CHECK_SAVES_INSIDE") != "yes":
        renew()
        # In a name space of its own, in which it may mount.
        script = 'mount -t tmpfs -o size=400k none "$1" || exit 77; shift; exec "$@"'
        words = ["unshare", "--user", "--map-root-user", "--mount", "sh", "-c", script, "sh", str(WORK), sys.executable,
                 *sys.argv]
        if shutil.which("unshare") is None:
            skip("there is no unshare")
        result = subprocess.run(words, capture_output=True, text=True, timeout=300, check=False,
                                env={**os.environ, "DELVEN_CHECK_SAVES_INSIDE": "yes"})
        if "unshare:" in result.stderr or "mount:" in result.stderr:
            skip("no disk of its own can be mounted: " + result.stderr.strip().splitlines()[0])
        print(result.stdout + result.stderr, end="")
        sys.exit(result.returncode)
    for free in (0, 1, 20, 60):
        SCENE.write_bytes(OLD)
        session = Session([PROGRAM, "-noAutoloadPlugins", "-prompt"])
        # Elsewhere on the disk, so that the folder has nothing else.
        filler = WORK / "filler"
        room = os.statvfs(WORK).f_bavail * os.statvfs(WORK).f_bsize
        filler.write_bytes(b"x" * (room - 1024 * free))
        failed, modified = session.save()
        where = f"a disk with {free} KB left"
        expect((failed, modified) == ("1", "1"), f"{where}: failed {failed}, modified {modified}")
        expect(SCENE.read_bytes() == OLD, f"{where}: the old file is lost")
        expect(left_beside() == [filler], f"{where}: left {left_beside()}")
        filler.unlink()
        expect_good_save(session, where, True)
    print("the disk is full: every save failed cleanly")


# --- Hostile

def paths_of(line):
    """The strings of a traced call."""
    return [path for path in re.findall(r'"((?:[^"\\]|\\.)*)"', line.split(" = ")[0]) if path]


def check_hostile():
    listed_calls()
    sources = sorted((pathlib.Path(__file__).parent / "hostile").glob("*.ma"))
    expect(len(sources) > 1, f"hostile scenes: {sources}")
    for source in sources:
        renew()
        os.mkfifo(WORK / "pipe")
        text = source.read_text().replace("MARK", str(WORK / "mark")).replace("PIPE", str(WORK / "pipe"))
        SCENE.write_text(text)
        script = (mark("begin") + f'file -open -force "{SCENE}"; currentTime 5; string $all = `headlessDump`; '
                  f'file -save; file -import -namespace "again" "{SCENE}"; file -save; file -open -force "{SCENE}"; '
                  f'file -exportAll -force -type "mayaAscii" "{WORK / "out.ma"}"; quit;')
        words = traced(["trace=%file,%process,%network"])
        result = subprocess.run([*words, "-command", script], capture_output=True, text=True, timeout=120,
                                env=ENVIRONMENT, stdin=subprocess.DEVNULL, check=False)
        expect(result.returncode == 0 and (WORK / "out.ma").read_text().count("createNode") > 10,
               f"{source.name}: {result.stderr}")
        expect(not (WORK / "mark").exists(), f"{source.name}: a command was run")
        lines = trace_file().read_text(errors="replace").splitlines()
        begin = next(k for k, line in enumerate(lines) if "delven no such file begin" in line)
        named = [path for line in lines[begin + 1:] for path in paths_of(line)]
        allowed = {str(SCENE), str(WORK / "out.ma"), str(WORK), *map(str, WORK.parents), "."}
        temporary = re.compile(re.escape(str(WORK)) + r"/\.delven-\d+-\d+\.tmp")
        others = {path for path in named if path not in allowed and not temporary.fullmatch(path)}
        expect(str(SCENE) in named and not others, f"{source.name}: named {sorted(others)}")
        started = [line for line in lines[begin + 1:]
                   if not paths_of(line) and not re.match(r"\d+ +(\+\+\+|exit)|.*AT_EMPTY_PATH", line)]
        expect(not started, f"{source.name}: {started}")
    print(f"{len(sources)} hostile scenes touched nothing")


{"killed": check_killed, "failing": check_failing, "limited": check_limited, "fullDisk": check_full_disk,
 "hostile": check_hostile}[MODE]()
print("\n".join(failures))
sys.exit(1 if failures else 0)
