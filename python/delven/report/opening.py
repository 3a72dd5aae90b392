"""A report about files, which are opened here."""

import os

from delven import cmds, mel, standalone
from delven.report import WrongUse, writing
from delven.report.words import counted

_KINDS = (".ma", ".obj", ".mel")


def check(files):
    """Raises WrongUse for files that make no scene."""
    for position, name in enumerate(files):
        kind = os.path.splitext(name)[1].lower()
        if kind not in _KINDS:
            raise WrongUse(f"{name} cannot be opened. Give a scene (.ma), a mesh (.obj), a script (.mel) or a folder.")
        if kind == ".ma" and position:
            raise WrongUse(f"{name} would replace what comes before it. Give the scene first.")
        if not os.path.isfile(name):
            raise WrongUse(f"There is no file {name}.")


def _open(path):
    kind = os.path.splitext(path)[1].lower()
    if kind == ".ma":
        cmds.file(path, open=True, force=True)
    elif kind == ".obj":
        cmds.file(path, i=True)
    else:
        escaped = path.replace("\\", "\\\\").replace('"', '\\"')
        mel.eval(f'source "{escaped}"')


def load(files):
    """Makes one scene of files. Raises WrongUse for one that cannot be read."""
    check(files)
    standalone.initialize()
    for name in files:
        try:
            _open(os.path.abspath(name))
        except (RuntimeError, ValueError) as error:
            raise WrongUse(f"{name} cannot be opened: {error}") from None


def run(files, out, options):
    """Writes a report about files. Returns the number of errors that it found."""
    writing.check(options["axis"], options["views"], options["size"])
    load(files)
    report = writing.run(out, title=os.path.basename(files[0]), **options)
    targets = sum(len(shape["targets"]) for shape in report["shapes"])
    page = os.path.join(out, "index.html")
    counts = (targets, "target"), (report["errors"], "error"), (report["warnings"], "warning")
    print(f"{', '.join(counted(*one) for one in counts)}: {page}")
    return report["errors"]
