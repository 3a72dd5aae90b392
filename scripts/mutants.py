#!/usr/bin/env python3
"""Makes faults of one line each in a copy of source/ and prints those that no test notices.

    scripts/mutants.py [--list]

Each fault is made alone, built and tested: with the tests that name its file, then with the whole of test_module, and
what survives both with every other entry of ctest that runs the module, the variants of the host among them. A fault
counts as killed when a test fails, crashes, takes far too long or far too much memory.

MUTANTS_COUNT (150) faults are drawn from the seed MUTANTS_SEED (1), at most one a line. MUTANTS_FILES is a pattern for
the files below source/ ('symmetry/*'). The same seed draws the same faults, also where other lines have changed since.
--list only prints what is drawn.

A fault that nobody can observe stands with its reason in scripts/mutants-equivalent.txt. It is made too: when the quick
tests kill it, its reason is wrong. Ends with 0 whatever survives. build/mutants/log.txt says what became of each fault.
"""
import fcntl
import fnmatch
import hashlib
import json
import os
import pathlib
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutants"
TREE = WORK / "tree"
BUILD = TREE / "build" / "release"
SCRATCH = WORK / "scratch"
EXPLAINED = ROOT / "scripts" / "mutants-equivalent.txt"

# The optimised build makes the quickest round: compiling without optimisation saves a quarter of a second a file, and
# costs more than that in the tests.
PRESET = "release"
TARGETS = ["test_module", "DELVENTools", "delvenbatch", "test_module_walk", "test_module_numbers_by_stream"]
# Entries of ctest that run the module's code.
ENTRIES = re.compile(r"test_module(_.*)?|demo|example_regions")

# A test program that takes so many times its usual time hangs.
SLOWER = 10
LEAST_SECONDS = 20
BUILD_SECONDS = 900
MEMORY = 4 << 30
FILE_SIZE = 256 << 20

# Lines that are left out, each with the reason.
SKIPPED = [
    (r"\breserve\(|shrink_to_fit", "room made ahead: it saves time only"),
    (r"\bstatic_assert\b", "the compiler is its test"),
    (r"\bk\w*Room\b|\bkPieceSize\b", "the size of a buffer: a larger one changes nothing"),
    (r"\bkBuildCost\b|\bwork_\b|\bkFew\b|\balignas\b", "chooses the faster of two ways to one result"),
    (r"\bperror\(", "a report on the standard error stream, which tests do not read"),
    (r"\bkVendor\b", "names the vendor, which no script can read"),
    (r"\bint previous = 0;", "where an iterator was: the host sets it, and nobody reads it"),
    (r"\bkRequiredApi\b|\bPLUGIN_EXPORT\b", "for the loader of the plug-in"),
]

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#[^\n]*(?:\\\n[^\n]*)*)
      | (?P<text>R?"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+')
      | (?P<number>\.?\d(?:[\w.]|(?<=[eE])[+-])*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<sign><<=|>>=|->|::|\+\+|--|&&|\|\||[<>=!+\-*/%&|^]=|<<|>>|[^\s\w])""",
    re.DOTALL | re.VERBOSE | re.MULTILINE)

# Signs between two operands, which the layout sets between blanks: those of templates and references are not.
BINARY = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "&": ["|"], "|": ["&"],
    "+=": ["-=", "="], "-=": ["+=", "="], "*=": ["/="], "/=": ["*="], "|=": ["&=", "="], "&=": ["|=", "="],
}
WORDS = {
    "true": ["false"], "false": ["true"], "min": ["max"], "max": ["min"], "any_of": ["all_of"], "all_of": ["any_of"],
    "none_of": ["any_of"], "lower_bound": ["upper_bound"], "upper_bound": ["lower_bound"], "front": ["back"],
    "back": ["front"], "x": ["y"], "y": ["z"], "z": ["x"], "infinity": ["lowest"],
}
MEMBERS = {"x", "y", "z", "front", "back"}

IF_AND_LEAVE = re.compile(r"if \(.*\) (?:return\b.*|continue|break);")
LEAVE = re.compile(r"(?:return|continue|break);")
CALL = re.compile(r"(?!return\b|throw\b|if\b|for\b|while\b|switch\b|case\b|delete\b|using\b)[\w:.\->\[\]()*]+\(.*\);")
ASSIGNMENT = re.compile(r"[\w.\->\[\]()*]+ (?:=|\+=|-=|\*=|/=|\|=|&=) .*;|(?:\+\+|--)[\w.\->\[\]]+;")


class ToolError(Exception):
    """The tool itself fails, not a test."""


class Mutant:
    def __init__(self, file, line, before, after):
        self.file = file  # below source/
        self.line = line  # from 1
        self.before = before
        self.after = after
        self.outcome = ""

    def key(self):
        return self.file, self.before.strip(), self.after.strip()

    def __str__(self):
        return f"source/{self.file}:{self.line}: {self.before.strip()}  ->  {self.after.strip() or '(nothing)'}"


# --- Faults ---


def changed_number(number):
    """What a literal becomes: a small whole number its neighbours, a small fraction ten times as much and as little."""
    match = re.fullmatch(r"(\d+)([uUlL]*)", number)
    if match:
        value, suffix = int(match.group(1)), match.group(2)
        return [f"{value + 1}{suffix}"] + ([f"{value - 1}{suffix}"] if value > 0 else [])
    match = re.fullmatch(r"(\d*\.\d*(?:[eE][+-]?\d+)?|\d+[eE][+-]?\d+)([fFlL]?)", number)
    if not match:
        return []
    value, suffix = float(match.group(1)), match.group(2)
    if 0 < value < 0.1:
        return [f"{value * 10!r}{suffix}", f"{value / 10!r}{suffix}"]
    return [f"{value + 1!r}{suffix}"] + ([f"{value / 2!r}{suffix}"] if value > 0 else [])


def matching(tokens, start, opening, closing):
    """Index of the token that closes the one at start; None when it is not among the tokens."""
    depth = 0
    for k in range(start, len(tokens)):
        depth += (tokens[k].group() == opening) - (tokens[k].group() == closing)
        if depth == 0:
            return k
    return None


def swapped_choice(line, tokens, question):
    """The line with the two values of `a ? b : c` exchanged, where it ends on the line."""
    depth, colon = 0, None
    for token in tokens[question + 1:]:
        sign = token.group()
        if sign in "([{":
            depth += 1
        elif sign in ")]}":
            depth -= 1
        if depth < 0 or (depth == 0 and sign in ";,"):
            if colon is None:
                return None
            start, middle, end = tokens[question].end(), colon, token.start()
            first, second = line[start:middle.start()], line[middle.end():end]
            return line[:start] + " " + second.strip() + " : " + first.strip() + line[end:]
        if depth == 0 and sign == "?":
            return None
        if depth == 0 and sign == ":" and colon is None:
            colon = token
    return None


def changed_lines(line, tokens, ends_statement):
    """The faults of one line.

    tokens          matches in the line, without comments
    ends_statement  whether a statement begins with the line
    """
    found = []
    is_loop = line.lstrip().startswith("for (")

    def replace(start, end, text):
        found.append(line[:start] + text + line[end:])

    for k, token in enumerate(tokens):
        text, start, end = token.group(), token.start(), token.end()
        before, after = line[start - 1:start], line[end:end + 1]
        beside = [t.lastgroup for t in tokens[max(0, k - 1):k + 2]]
        previous = tokens[k - 1].group() if k else ""
        if token.lastgroup == "number":
            for number in changed_number(text):
                replace(start, end, number)
        elif token.lastgroup == "word" and text in WORDS:
            if text in MEMBERS and previous not in (".", "->"):
                continue
            for word in WORDS[text]:
                replace(start, end, word)
        elif text in BINARY and before == " " and after in (" ", ""):
            # Texts are joined, but not taken from each other.
            if not (text in "+-" and "text" in beside):
                # A loop over nothing or without end is too easy to notice: its bound moves by one only.
                for sign in BINARY[text][:1 if is_loop else None]:
                    replace(start, end, sign)
        elif text == "!" and after != "=":
            replace(start, end, "")
        elif text in ("++", "--") and not is_loop:
            replace(start, end, "--" if text == "++" else "++")
        elif text == "-" and before in " (,{" and after.strip() and previous not in (")", "]"):
            replace(start, end, "")
        elif text in ("if", "while") and k + 1 < len(tokens) and tokens[k + 1].group() == "(":
            close = matching(tokens, k + 1, "(", ")")
            if close is not None:
                opening, closing = tokens[k + 1].end(), tokens[close].start()
                replace(opening, closing, f"!({line[opening:closing]})")
        elif text == "?":
            exchanged = swapped_choice(line, tokens, k)
            if exchanged and exchanged != line:
                found.append(exchanged)
    code = line.strip()
    if ends_statement and any(p.fullmatch(code) for p in (IF_AND_LEAVE, LEAVE, CALL, ASSIGNMENT)):
        found.append(line[:len(line) - len(line.lstrip())] + ";")
    return found


def lines_in_bodies(tokens, line_of):
    """Numbers of the lines of a header that are inside a function."""
    lines, stack = set(), []
    for k, token in enumerate(tokens):
        sign = token.group()
        if sign == "{":
            back = k - 1
            while back >= 0 and tokens[back].group() in ("const", "noexcept", "override", "final"):
                back -= 1
            stack.append(bool(stack and stack[-1]) or (back >= 0 and tokens[back].group() == ")"))
        if stack and stack[-1]:
            lines.add(line_of(token.start()))
        if sign == "}" and stack:
            stack.pop()
    return lines


def mutants_of(file):
    """All faults that the patterns make in a file, line by line."""
    code = (ROOT / "source" / file).read_text(encoding="utf-8")
    tokens = [t for t in TOKEN.finditer(code) if t.lastgroup not in ("comment", "directive")]
    starts = [0] + [m.end() for m in re.finditer("\n", code)]
    line_of = lambda place: code.count("\n", 0, place)
    by_line = {}
    for token in tokens:
        by_line.setdefault(line_of(token.start()), []).append(token)
    lines = code.split("\n")
    bodies = lines_in_bodies(tokens, line_of) if file.endswith(".h") else None
    result, last_sign = [], ";"
    for number in sorted(by_line):
        line, on_line = lines[number], by_line[number]
        begins = last_sign in (";", "{", "}", ")", ":")
        last_sign = on_line[-1].group()
        if bodies is not None and number not in bodies and not re.fullmatch(r"\s+[\w:<>, *]+ \w+ = [^()]+;", line):
            continue
        # Only what the line holds itself; a comment at its end stays.
        end = on_line[-1].end() - starts[number]
        if end > len(line) or any(re.search(pattern, line) for pattern, _ in SKIPPED):
            continue
        own = [t for t in TOKEN.finditer(line) if t.lastgroup != "comment" and t.start() < end]
        rest = line[end:]
        for changed in changed_lines(line[:end], own, begins and last_sign == ";"):
            result.append(Mutant(file, number + 1, line, changed + rest))
    return result


def draw(files, seed, count):
    """Faults of different lines, in an order that depends on the seed and on the lines themselves only."""
    rank = lambda *parts: hashlib.sha256("\0".join(map(str, parts)).encode()).hexdigest()
    by_line = {}
    for file in files:
        occurrence = {}
        for mutant in mutants_of(file):
            known = by_line.setdefault((file, mutant.line), [])
            if not known:
                text = mutant.before.strip()
                occurrence[text] = occurrence.get(text, 0) + 1
                known.append((rank(seed, file, text, occurrence[text]), []))
            known[0][1].append(mutant)
    chosen = [min(mutants, key=lambda m: rank(seed, *m.key())) for _, mutants in sorted(
        (entry[0] for entry in by_line.values()), key=lambda entry: entry[0])[:count]]
    # File by file, so that each is compiled once more to be restored.
    return sorted(chosen, key=lambda m: (m.file, m.line))


# --- The list of what nobody can observe ---


def read_explained():
    """(file, line, changed line) -> reason. Each entry has four lines: file, '- line', '+ changed line', reason."""
    reasons = {}
    blocks = re.split(r"\n\s*\n", EXPLAINED.read_text(encoding="utf-8")) if EXPLAINED.exists() else []
    for block in blocks:
        lines = [line.strip() for line in block.splitlines() if line.strip() and not line.startswith("#")]
        if not lines:
            continue
        if len(lines) < 4 or lines[1][0] != "-" or lines[2][0] != "+":
            raise ToolError(f"{EXPLAINED.name}: not an entry:\n{block}")
        reasons[lines[0].removeprefix("source/"), lines[1][1:].strip(), lines[2][1:].strip()] = " ".join(lines[3:])
    return reasons


# --- Building and testing ---


def run(command, seconds, limits=True, **options):
    """Whether a command succeeds within its limits. Its whole process group ends with it."""
    def limit():
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if limits:
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
            resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))

    options.setdefault("stdout", subprocess.DEVNULL)
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stderr=subprocess.STDOUT, start_new_session=True,
                               preexec_fn=limit, **options)
    try:
        code = process.wait(seconds)
        return "" if code == 0 else f"crash {-code}" if code < 0 else f"failure {code}"
    except subprocess.TimeoutExpired:
        return "too slow"
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()


def copy_tree():
    """Brings the copy up to date: only what differs is written, so that little is built again."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                            check=True, capture_output=True).stdout.decode().split("\0")
    wanted = {name for name in listed if name and (ROOT / name).is_file()}
    for path in [p for p in TREE.rglob("*") if p.is_file() and BUILD.parent not in p.parents]:
        if path.relative_to(TREE).as_posix() not in wanted:
            path.unlink()
    for name in wanted:
        target, content = TREE / name, (ROOT / name).read_bytes()
        if not target.is_file() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            shutil.copymode(ROOT / name, target)


def build():
    with open(WORK / "build.log", "w", encoding="utf-8") as log:
        command = ["cmake", "--build", str(BUILD), "--target", *TARGETS]
        return run(command, BUILD_SECONDS, limits=False, stdout=log, cwd=TREE)


def configure_and_build():
    copy_tree()
    with open(WORK / "configure.log", "w", encoding="utf-8") as log:
        # A fault may leave a variable unused. A step over the end of an array is to end the program.
        options = ["-DDELVEN_WARNINGS_AS_ERRORS=OFF", "-DCMAKE_CXX_FLAGS=-D_GLIBCXX_ASSERTIONS"]
        if run(["cmake", "--preset", PRESET, *options], BUILD_SECONDS, limits=False, stdout=log, cwd=TREE):
            raise ToolError(f"The copy cannot be configured: {WORK}/configure.log")
    if build():
        raise ToolError(f"The copy cannot be built: {WORK}/build.log")


def objects_of_source():
    """The object files that come from source/."""
    commands = json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8"))
    return [BUILD / shlex.split(entry["command"])[shlex.split(entry["command"]).index("-o") + 1]
            for entry in commands if pathlib.Path(entry["file"]).is_relative_to(TREE / "source")]


def digest(objects):
    return [hashlib.sha256(path.read_bytes()).digest() for path in objects]


class Entry:
    """A test that ctest knows."""

    def __init__(self, test):
        properties = {p["name"]: p["value"] for p in test["properties"]}
        self.name = test["name"]
        self.command = test.get("command", [])
        self.folder = properties["WORKING_DIRECTORY"]
        self.environment = dict(pair.split("=", 1) for pair in properties.get("ENVIRONMENT", []))
        self.is_disabled = properties.get("DISABLED", False)
        self.seconds = 0.0

    def run(self, arguments=()):
        """How it fails; '' when it does not. Its temporary files are its own."""
        shutil.rmtree(SCRATCH, ignore_errors=True)
        SCRATCH.mkdir(parents=True)
        limit = max(LEAST_SECONDS, SLOWER * self.seconds) if self.seconds else BUILD_SECONDS
        environment = {**os.environ, **self.environment, "TMPDIR": str(SCRATCH)}
        start = time.monotonic()
        fault = run([*self.command, *arguments], limit, cwd=self.folder, env=environment)
        self.seconds = self.seconds or time.monotonic() - start
        shutil.rmtree(SCRATCH, ignore_errors=True)
        return fault


def find_entries():
    """The entry test_module, and the others that run the module: those that are quick or take in most come first."""
    listing = subprocess.run(["ctest", "--test-dir", str(BUILD), "--show-only=json-v1"], check=True,
                             capture_output=True).stdout
    entries = [Entry(t) for t in json.loads(listing)["tests"] if ENTRIES.fullmatch(t["name"])]
    entries = [e for e in entries if e.command and not e.is_disabled]
    main = next(e for e in entries if e.name == "test_module")
    others = sorted((e for e in entries if e is not main), key=lambda e: (
        e.name != "test_module_everything", e.name.startswith("test_module_")))
    return main, others


def suites_naming(file):
    """A filter for the tests that name a file, or its concept, by the words of their own files."""
    stem = pathlib.Path(file).stem
    word = re.compile(rf"\b{stem}\b|dv_{stem}\b")
    patterns = [f"*{stem}*"]
    for path in sorted((TREE / "tests" / "module").glob("*.cpp")):
        text = path.read_text(encoding="utf-8")
        if path.stem == stem + "Test" or word.search(text):
            for suite in sorted(set(re.findall(r"^(?:TEST|TEST_F|TEST_P)\((\w+),", text, re.MULTILINE))):
                patterns += [f"{suite}.*", f"*/{suite}.*"]
    return ":".join(patterns)


class Bench:
    """Makes faults in the copy and says what becomes of them."""

    def __init__(self):
        note("Building the copy")
        configure_and_build()
        self.objects = objects_of_source()
        self.digest = digest(self.objects)
        self.main, self.others = find_entries()
        self.check([self.main])
        self.changed = None  # the file that holds a fault now
        self.code = {}  # of the files that held one

    def check(self, entries):
        """Without a fault every test must pass. Tells how long each takes, too."""
        for entry in entries:
            note(f"Without a fault: {entry.name}")
            fault = entry.run()
            if fault:
                raise ToolError(f"{entry.name} fails without any fault ({fault}).")

    def restore(self):
        if self.changed is not None:
            (TREE / "source" / self.changed).write_text(self.code[self.changed], encoding="utf-8")
            self.changed = None

    def make(self, mutant):
        """Builds the copy with a fault; false when it does not compile."""
        if self.changed != mutant.file:
            self.restore()
        self.changed = mutant.file
        code = self.code.setdefault(mutant.file, (TREE / "source" / mutant.file).read_text(encoding="utf-8"))
        lines = code.split("\n")
        lines[mutant.line - 1] = mutant.after
        (TREE / "source" / mutant.file).write_text("\n".join(lines), encoding="utf-8")
        return not build()

    def judge(self, mutant):
        if not self.make(mutant):
            return "not compiling"
        if digest(self.objects) == self.digest:
            return "same code"
        fault = self.main.run(["--gtest_fail_fast", f"--gtest_filter={suites_naming(mutant.file)}"])
        fault = fault or self.main.run(["--gtest_fail_fast"])
        return f"killed: {fault}" if fault else "survived"

    def judge_by_others(self, mutant):
        """The same for one that test_module does not notice."""
        self.make(mutant)
        for entry in self.others:
            fault = entry.run(["--gtest_fail_fast"] if entry.name.startswith("test_module") else [])
            if fault:
                return f"killed: {fault} in {entry.name}"
        return "survived"


def note(text):
    """Shows how far the work has come."""
    print(f"\r\033[K{text}", end="", file=sys.stderr, flush=True)


def judge_all(bench, drawn, reasons, log):
    for number, mutant in enumerate(drawn, 1):
        note(f"{number} of {len(drawn)}: source/{mutant.file}")
        mutant.outcome = bench.judge(mutant)
        if mutant.key() in reasons and mutant.outcome == "survived":
            mutant.outcome = "equivalent"
        print(f"{mutant.outcome}\t{mutant}", file=log, flush=True)
        if mutant.key() in reasons and mutant.outcome.startswith("killed"):
            note("")
            print(f"{EXPLAINED.name}: a test notices {mutant}", flush=True)
    left = [m for m in drawn if m.outcome == "survived"]
    bench.restore()
    if left:
        if build():
            raise ToolError("The copy cannot be built without a fault any more.")
        bench.check(bench.others)
    for number, mutant in enumerate(left, 1):
        note(f"{number} of {len(left)} with the other entries: source/{mutant.file}")
        mutant.outcome = bench.judge_by_others(mutant)
        print(f"{mutant.outcome}\t{mutant}", file=log, flush=True)
        if mutant.outcome == "survived":
            note("")
            print(mutant, flush=True)


def main():
    seed = os.environ.get("MUTANTS_SEED") or "1"
    count = int(os.environ.get("MUTANTS_COUNT") or 150)
    pattern = os.environ.get("MUTANTS_FILES") or "*"
    source = ROOT / "source"
    files = sorted(p.relative_to(source).as_posix() for p in source.rglob("*") if p.suffix in (".cpp", ".h"))
    files = [f for f in files if fnmatch.fnmatch(f, pattern)]
    drawn = draw(files, seed, count)
    if not drawn:
        raise ToolError(f"No line of source/{pattern} can be given a fault.")
    if "--list" in sys.argv:
        print(*drawn, sep="\n")
        return
    reasons = read_explained()
    possible = {m.key() for f in files for m in mutants_of(f)}
    for key in reasons:
        if fnmatch.fnmatch(key[0], pattern) and key not in possible:
            print(f"{EXPLAINED.name}: no fault fits this entry any more: source/{key[0]}: {key[1]}")
    WORK.mkdir(parents=True, exist_ok=True)
    lock = open(WORK / "lock", "w", encoding="utf-8")
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        raise ToolError("It runs already; two cannot share the copy.") from None
    # Also where it runs in the background, where an interrupt is ignored: what it started ends with it.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    bench = Bench()
    with open(WORK / "log.txt", "w", encoding="utf-8") as log:
        try:
            judge_all(bench, drawn, reasons, log)
        except KeyboardInterrupt:
            drawn = [m for m in drawn if m.outcome]
        finally:
            bench.restore()
    note("")
    number_of = lambda outcome: sum(m.outcome.startswith(outcome) for m in drawn)
    tested = number_of("killed") + number_of("survived")
    share = 100.0 * number_of("survived") / tested if tested else 0.0
    print(f"{len(drawn)} faults from seed {seed}: {number_of('not compiling')} do not compile, "
          f"{number_of('same code')} compile to the same code, {number_of('equivalent')} equivalent and explained, "
          f"{number_of('killed')} killed, {number_of('survived')} survived ({share:.1f} % of killed and survived)")


try:
    main()
except KeyboardInterrupt:
    sys.exit("mutants: stopped")
except (ToolError, OSError, subprocess.CalledProcessError) as error:
    sys.exit(f"mutants: {error}")
