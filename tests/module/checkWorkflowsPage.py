#!/usr/bin/env python3
"""Runs each example of docs/workflows.md after the scene of docs/commands.md, and compares what it prints.

    checkWorkflowsPage.py <delvenbatch> <folder to write to>

MAYA_SCRIPT_PATH names module/scripts.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM, WORK = sys.argv[1], pathlib.Path(sys.argv[2])
BLOCK = r"```mel\n(.*?)```"

scene = re.search(r"## The scene of the examples.*?" + BLOCK, (ROOT / "docs/commands.md").read_text(encoding="utf-8"), re.S)
page = (ROOT / "docs/workflows.md").read_text(encoding="utf-8")
procedures = sorted(file.stem for file in (ROOT / "module/scripts").glob("*.mel"))
sources = "".join(f'source "{name}.mel";\n' for name in procedures)
faults = 0
WORK.mkdir(parents=True, exist_ok=True)
for title, text in re.findall(r"^## (.*?)\n(.*?)(?=^## |\Z)", page, re.S | re.M):
    examples = re.findall(BLOCK + r"\n\n```\n(.*?)```", text, re.S)
    if title.startswith("delven") and not examples:
        print(f"{title} has no example")
        faults += 1
    for script, expected in examples:
        file = WORK / "example.mel"
        file.write_text(sources + scene.group(1) + script, encoding="utf-8")
        result = subprocess.run([PROGRAM, "-script", file], capture_output=True, encoding="utf-8", check=False)
        if (result.stdout, result.stderr) != (expected, ""):
            print(f"{title} prints\n{result.stdout}{result.stderr}instead of\n{expected}")
            faults += 1
sys.exit(faults > 0)
