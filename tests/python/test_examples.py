"""The examples in MEL and their twins in Python: both print the same, and end with the same status."""

import os
import pathlib
import re
import subprocess

import pytest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = PROJECT / "examples"
DELVENPY = pathlib.Path(os.environ["DELVENPY"]).absolute()
# The programs run in other folders than the tests.
DATA = os.environ.get("DELVEN_DATA_FOLDER") and os.path.abspath(os.environ["DELVEN_DATA_FOLDER"])

# The variables that a script in MEL reads, with their values; its twin takes these as arguments, in this order.
VALUES = {
    "regions": {"delvenRegionsFile": "regions.json"},
    "extractMakeHuman": {"delvenMakeHuman": f"{DATA}/makehuman"},
    "mirrorMakeHuman": {"delvenMakeHuman": f"{DATA}/makehuman"},
    "exchangeMakeHuman": {"delvenMakeHuman": f"{DATA}/makehuman", "delvenExchangeFile": "targets.json"},
    "demo": {},
}


def run(folder, *words):
    """Runs a program in a new folder. Returns its process and the files that it has left there, by their names."""
    folder.mkdir()
    process = subprocess.run(
        words, cwd=folder, env={**os.environ, "TMPDIR": str(folder)}, capture_output=True, timeout=300
    )
    return process, {path.name: path.read_bytes() for path in folder.iterdir()}


def run_both(folder, name, values):
    """Runs an example in both languages."""
    declared = "".join(f'string ${variable} = "{value}";' for variable, value in values.items())
    command = ["-command", declared] if declared else []
    script = EXAMPLES / name
    mel = run(folder / "mel", DELVENPY.with_name("delvenbatch"), *command, "-script", script.with_suffix(".mel"))
    python = run(folder / "python", DELVENPY, script.with_suffix(".py"), *values.values())
    return mel, python


def test_each_example_in_mel_has_a_twin():
    assert sorted(path.stem for path in EXAMPLES.glob("*.mel")) == sorted(VALUES)


def test_the_page_shows_an_example_as_it_is():
    section = (PROJECT / "docs" / "python.md").read_text("utf-8").split("## Examples\n")[1]
    blocks = re.findall(r"```(mel|python)\n(.*?)```", section, re.DOTALL)
    assert [language for language, _ in blocks] == ["mel", "python"]
    for (_, text), suffix in zip(blocks, (".mel", ".py")):
        assert text in (EXAMPLES / "exchangeMakeHuman").with_suffix(suffix).read_text("utf-8")


@pytest.mark.parametrize("name", VALUES)
def test_twins_print_and_write_the_same(name, tmp_path):
    values = VALUES[name]
    if "delvenMakeHuman" in values and not DATA:
        pytest.skip(f"{name}: DELVEN_DATA_FOLDER names no folder")
    (mel, mel_files), (python, python_files) = run_both(tmp_path, name, values)
    assert mel.returncode == 0, mel.stderr.decode()
    assert python.returncode == 0, python.stderr.decode()
    assert mel.stdout
    assert python.stdout == mel.stdout
    assert python_files == mel_files


@pytest.mark.parametrize("name", [name for name, values in VALUES.items() if values])
def test_twins_fail_alike_where_a_file_cannot_be_read_or_written(name, tmp_path):
    (mel, _), (python, _) = run_both(tmp_path, name, dict.fromkeys(VALUES[name], "missing/folder"))
    assert mel.returncode == python.returncode == 1, python.stderr.decode()
    assert python.stdout == mel.stdout
