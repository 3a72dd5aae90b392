#!/usr/bin/env python3
"""Lists each text literal of source/ that no test has shown.

    scripts/check-texts.py <shown> [--list]

<shown> holds what the tests have shown (the file that they wrote for $DELVEN_SHOWN_TEXTS). Literals that nobody is
shown, or that cannot be shown in tests, stand with a reason in scripts/texts-not-shown.txt. Fails when a literal is
neither shown nor explained, and when an explanation is out of date. --list prints the literals without a verdict.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
EXPLAINED = ROOT / "scripts" / "texts-not-shown.txt"

TOKEN = re.compile(
    r"""//[^\n]*|/\*.*?\*/|\#\s*include[^\n]*|'(?:\\.|[^'\\])'|"(?:\\.|[^"\\\n])*\"""", re.DOTALL | re.VERBOSE)
ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "f": "\f", "v": "\v", "\\": "\\", '"': '"', "'": "'", "0": "\0"}


def literals(code):
    """The string literals of a file; those that stand side by side count as one."""
    parts, last_end = [], None
    for match in TOKEN.finditer(code):
        if not match.group().startswith('"'):
            continue
        text = re.sub(r"\\(.)", lambda m: ESCAPES.get(m.group(1), m.group(1)), match.group()[1:-1])
        if last_end is not None and code[last_end:match.start()].strip() == "":
            parts[-1] += text
        else:
            parts.append(text)
        last_end = match.end()
    return parts


def explained():
    reasons = {}
    for line in EXPLAINED.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            literal, _, reason = line.partition(" <- ")
            reasons[literal.replace("\\n", "\n").replace("\\t", "\t")] = reason
    return reasons


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    shown = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8", errors="replace")
    # Columns of the help texts are padded with blanks.
    folded = re.sub(r" +", " ", shown)
    unseen = {}
    for file in sorted((ROOT / "source").rglob("*.cpp")) + sorted((ROOT / "source").rglob("*.h")):
        for literal in literals(file.read_text(encoding="utf-8")):
            if literal.strip() and literal not in shown and re.sub(r" +", " ", literal) not in folded:
                unseen.setdefault(literal, file.name)
    if "--list" in sys.argv:
        for literal, file in unseen.items():
            print(f"{file}: {literal!r}")
        return
    reasons = explained()
    faults = [f"{file}: no test shows {literal!r}" for literal, file in unseen.items() if literal not in reasons]
    faults += [f"{EXPLAINED.name}: {literal!r} is shown or gone" for literal in reasons if literal not in unseen]
    print("\n".join(faults) if faults else f"Every text is shown, but {len(unseen)} with a reason.")
    sys.exit(1 if faults else 0)


main()
