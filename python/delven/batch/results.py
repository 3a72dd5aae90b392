"""The table of results: lines of JSON, one a scene.

Rows are appended while scenes run, so that a run that is killed loses none. At the end the file is written anew with
the last row of each scene.
"""

import glob
import json
import os
import re

from delven.batch import WrongUse, parts

_SHARD = re.compile(r"results\.(\d+)-of-(\d+)\.jsonl$")


def file_name(shard=None):
    return f"results.{shard[0]}-of-{shard[1]}.jsonl" if shard else "results.jsonl"


def _line(row):
    text = json.dumps(row, ensure_ascii=False)
    try:
        return text.encode("utf-8") + b"\n"
    except UnicodeEncodeError:
        # A name of a file that is no Unicode.
        return json.dumps(row).encode("ascii") + b"\n"


def _rows(data):
    """The rows of a file by their scenes. Lines that are no rows were torn by a kill and are left out."""
    rows = {}
    for line in data.split(b"\n"):
        try:
            row = json.loads(line)
        except ValueError:
            continue
        if isinstance(row, dict) and isinstance(row.get("scene"), str):
            rows[row["scene"]] = row
    return rows


def _write(path, rows):
    """Writes a whole file at once: readers see the old one or the new one."""
    new = f"{path}.{os.getpid()}.new"
    try:
        with open(new, "wb") as file:
            for scene in sorted(rows):
                file.write(_line(rows[scene]))
            file.flush()
            os.fsync(file.fileno())
        os.replace(new, path)
    except OSError:
        if os.path.exists(new):
            os.remove(new)
        raise


class Results:
    """A file of results that this process alone adds to. `rows` has the last row of each scene."""

    def __init__(self, path):
        """Opens a file, made when missing. Raises WrongUse while another run uses it."""
        self._path = path
        self._file = self._open()
        data = self._file.read()
        whole = data.rfind(b"\n") + 1
        self._file.truncate(whole)
        self.rows = _rows(data[:whole])

    def _open(self):
        while True:
            file = open(self._path, "a+b", buffering=0)
            if not parts.lock(file):
                file.close()
                raise WrongUse(f"Another run writes to {self._path}. Wait for it, or name another folder.")
            # The end of another run may have put a new file there in between.
            if os.path.exists(self._path) and os.path.samestat(os.fstat(file.fileno()), os.stat(self._path)):
                file.seek(0)
                return file
            file.close()

    def add(self, row):
        """Appends a row: it is there whatever happens next."""
        self.rows[row["scene"]] = row
        line = _line(row)
        if self._file.write(line) != len(line):
            raise OSError(f"{self._path} could be written in part only: the disk is full.")

    def finish(self):
        """Leaves one row a scene in the file."""
        _write(self._path, self.rows)
        self._file.close()


def merge(out):
    """Joins the results of all shards in a folder into results.jsonl. Returns its rows and the shards that are missing.

    Of several rows of a scene the one that ended last counts. Raises WrongUse if there are no shards.
    """
    found = sorted(glob.glob(os.path.join(glob.escape(out), "results.*-of-*.jsonl")))
    numbers = [tuple(map(int, match.groups())) for match in map(_SHARD.search, found) if match]
    if not numbers:
        raise WrongUse(f"{out} has no results of shards. Run with --shard first.")
    whole = Results(os.path.join(out, file_name()))
    for number in numbers:
        with open(os.path.join(out, file_name(number)), "rb") as file:
            for scene, row in _rows(file.read()).items():
                before = whole.rows.get(scene)
                if before is None or before.get("ended", "") <= row.get("ended", ""):
                    whole.rows[scene] = row
    whole.finish()
    counts = {count for _, count in numbers}
    missing = [(i, n) for n in sorted(counts) for i in range(1, n + 1) if (i, n) not in numbers]
    return [whole.rows[scene] for scene in sorted(whole.rows)], missing
