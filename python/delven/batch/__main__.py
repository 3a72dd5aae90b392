"""The command line of delven.batch."""

import argparse
import collections
import os
import sys

from delven.batch import WrongUse, run
from delven.batch.results import file_name, merge


def _shard(text):
    index, slash, count = text.partition("/")
    if not (slash and index.isdecimal() and count.isdecimal()):
        raise argparse.ArgumentTypeError(f"'{text}' is no shard. Write it as 2/8.")
    return int(index), int(count)


def _parser():
    parser = argparse.ArgumentParser(
        prog="delvenpy -m delven.batch",
        description="Runs a script over many scenes, each in a process of its own. A run that was stopped goes on.",
        epilog="Ends with 0 if all scenes succeeded, 1 if one failed, 2 for wrong use, 130 after Ctrl-C.",
    )
    parser.add_argument("script", nargs="?", help="the script; it finds its scene open")
    parser.add_argument("scenes", nargs="*", help="scenes, and folders that stand for all .ma below them")
    parser.add_argument("--out", metavar="FOLDER", required=True, help="where the results go")
    parser.add_argument("--jobs", type=int, metavar="N", help="processes at a time (all cores)")
    parser.add_argument("--time", type=float, metavar="SECONDS", help="longest time for a scene")
    parser.add_argument("--memory", type=float, metavar="MEGABYTES", help="most address space for a scene")
    parser.add_argument("--again", action="store_true", help="run also what succeeded before")
    parser.add_argument("--shard", type=_shard, metavar="I/N", help="run the I-th of N parts only")
    parser.add_argument("--merge", action="store_true", help="join the results of shards; runs nothing")
    parser.add_argument("--scheduler", metavar="ADDRESS", help="run on a Dask cluster, such as tcp://farm:8786")
    return parser


def _summary(rows, path):
    """Prints what came out. Returns the exit status."""
    for row in rows:
        if row["status"] != "ok":
            print(f"{row['scene']}: {row['status']}: {row['error']}", file=sys.stderr)
    counts = collections.Counter(row["status"] for row in rows)
    text = ", ".join(f"{count} {status}" for status, count in counts.most_common())
    noun = "scene" if len(rows) == 1 else "scenes"
    print(f"{len(rows)} {noun}: {text or 'none in this shard'}. Results: {path}")
    return 0 if set(counts) <= {"ok"} else 1


def _merge(out):
    rows, missing = merge(out)
    for shard in missing:
        print(f"The shard {shard[0]}/{shard[1]} has no results yet.", file=sys.stderr)
    return max(_summary(rows, os.path.join(out, file_name())), bool(missing))


def _execute(parser, arguments):
    out = arguments.out
    if arguments.merge:
        if arguments.script:
            parser.error("--merge takes no script and no scenes")
        return _merge(out)
    if not arguments.scenes:
        parser.error("a script and at least one scene or folder are needed")
    options = {name: getattr(arguments, name) for name in ("jobs", "time", "memory", "again", "shard", "scheduler")}
    rows = run(arguments.script, arguments.scenes, out, **options)
    return _summary(rows, os.path.join(out, file_name(arguments.shard)))


def main():
    # Names of files may be no Unicode.
    for stream in (sys.stdout, sys.stderr):
        stream.reconfigure(errors="backslashreplace")
    parser = _parser()
    arguments = parser.parse_intermixed_args()
    try:
        return _execute(parser, arguments)
    except WrongUse as error:
        print(f"delven.batch: {error}", file=sys.stderr)
        return 2
    except OSError as error:
        print(f"delven.batch: {error}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        print("Stopped. What is done is kept: the same call goes on.", file=sys.stderr)
        return 130


if __name__ == "__main__":
    sys.exit(main())
