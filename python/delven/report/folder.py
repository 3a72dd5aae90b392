"""Reports about all scenes of folders, each made in a process of its own, and a page that lists them."""

import os
import sys
import tempfile
import urllib.parse

from delven import batch
from delven.report import NothingToReport, WrongUse, page, writing
from delven.report.words import counted


def in_batch(options):
    """Writes the report about the scene that a batch has open. This runs in the process of that scene."""
    title = os.path.basename(batch.scene())
    try:
        made = writing.run(os.path.dirname(batch.output("index.html")), title=title, **options)
    except NothingToReport as error:
        batch.report(nothing=str(error))
        return
    except (WrongUse, RuntimeError) as error:
        # Raised on, it would be told with a place in the script of the batch, which nobody has written.
        batch.report(failed=str(error))
        return
    targets = sum(len(shape["targets"]) for shape in made["shapes"])
    batch.report(targets=targets, errors=made["errors"], warnings=made["warnings"])


def _rows(files, out, options):
    with tempfile.TemporaryDirectory() as place:
        script = os.path.join(place, "report.py")
        with open(script, "w", encoding="utf-8") as file:
            file.write(f"from delven.report import folder\n\nfolder.in_batch({options!r})\n")
        try:
            # Scenes may have changed since the last report.
            return batch.run(script, files, out, again=True)
        except batch.WrongUse as error:
            raise WrongUse(str(error)) from None


def _place(row):
    """Folder of a scene's report below the output folder; None if it has none."""
    return next((os.path.dirname(name) for name in row["files"] if os.path.basename(name) == "index.html"), None)


def _failure(row):
    """Why a scene has no report; None if it has one, or needs none."""
    return f"{row['status']}: {row['error']}" if row["status"] != "ok" else row["report"].get("failed")


def _listed(row, root):
    """The cells of a scene in the list."""
    name = page.text(os.path.relpath(row["scene"], root))
    failure = _failure(row)
    if failure:
        return name, "–", "–", "–", f'<span class="error">{page.text(failure)}</span>'
    report = row["report"]
    if "nothing" in report:
        return name, "0", "0", "0", page.text(report["nothing"])
    link = urllib.parse.quote(_place(row).replace(os.sep, "/") + "/index.html", errors="surrogateescape")
    state = "error" if report["errors"] else "warning" if report["warnings"] else "fine"
    label = {"error": "has errors", "warning": "has warnings", "fine": "fine"}[state]
    counts = [str(report[key]) for key in ("targets", "errors", "warnings")]
    return f'<a href="{link}">{name}</a>', *counts, f'<span class="{state}">{label}</span>'


def run(files, out, options):
    """Writes a report about each scene (.ma) of folders and files. Returns the numbers of errors and failed scenes."""
    writing.check(options["axis"], options["views"], options["size"])
    out = os.path.abspath(out)
    rows = _rows(files, out, options)
    for row in rows:
        if _failure(row):
            print(f"{row['scene']}: {_failure(row)}", file=sys.stderr)
        elif _place(row):
            writing.sweep(os.path.join(out, _place(row)))
    root = os.path.commonpath([os.path.dirname(row["scene"]) for row in rows])
    heads = ("Scene", "Targets", "Errors", "Warnings", "State")
    body = page.table("Scenes", heads, [_listed(row, root) for row in rows])
    whole = page.document("Blend shapes", f"<main>\n<h1>Blend shapes</h1>\n{body}\n</main>")
    writing.replace(os.path.join(out, "index.html"), whole)
    errors = sum(row["report"].get("errors", 0) for row in rows)
    failed = sum(_failure(row) is not None for row in rows)
    found = f"{counted(len(rows), 'scene')}, {counted(errors, 'error')} in targets, {failed} failed"
    print(f"{found}: {os.path.join(out, 'index.html')}")
    return errors, failed
