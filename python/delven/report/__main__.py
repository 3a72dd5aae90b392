"""The command line of delven.report."""

import argparse
import os
import sys

from delven.report import WrongUse, opening
from delven.report.pictures import VIEWS


def _words(text):
    return [word for word in text.split(",") if word]


def _faces(text):
    try:
        pairs = [[int(number) for number in part.split(":")] for part in _words(text)]
    except ValueError:
        pairs = []
    if not pairs or any(len(pair) > 2 for pair in pairs):
        raise argparse.ArgumentTypeError(f"'{text}' are no faces. Write them as 0:99,200.")
    return [(pair[0], pair[-1]) for pair in pairs]


def _parser():
    parser = argparse.ArgumentParser(
        prog="delvenpy -m delven.report",
        description="Writes a page about blend shapes: figures, findings and pictures of each target.",
        epilog="Ends with 0, with 1 if a scene failed or --strict found an error, 2 for wrong use, 130 after Ctrl-C.",
    )
    kinds = ".ma, .obj and .mel that make one scene, in their order; or folders, which stand for all .ma below them"
    parser.add_argument("files", nargs="+", metavar="file", help=kinds)
    parser.add_argument("--blend-shape", action="append", metavar="NAME", help="a blend shape (all of the scene)")
    parser.add_argument("--mesh", action="append", metavar="NAME", help="a mesh that it deforms (all of them)")
    parser.add_argument("--out", metavar="FOLDER", required=True, help="where the report goes")
    parser.add_argument("--axis", choices=("x", "y", "z"), default="x", help="symmetry axis (x)")
    parser.add_argument("--views", type=_words, default=["front", "side"], help=f"(front,side) from {', '.join(VIEWS)}")
    parser.add_argument("--size", type=int, default=256, metavar="PIXELS", help="side of a picture (256)")
    parser.add_argument("--faces", type=_faces, metavar="A:B,...", help="all that pictures show of a mesh (all faces)")
    parser.add_argument("--strict", action="store_true", help="end with 1 if a target has an error")
    return parser


def _execute(arguments):
    names = ("axis", "views", "size", "faces")
    options = {name: getattr(arguments, name) for name in names}
    options.update(blend_shapes=arguments.blend_shape, meshes=arguments.mesh)
    if any(os.path.isdir(name) for name in arguments.files):
        from delven.report import folder

        errors, failed = folder.run(arguments.files, arguments.out, options)
    else:
        errors, failed = opening.run(arguments.files, arguments.out, options), 0
    return 1 if failed or (arguments.strict and errors) else 0


def main():
    # Names of files may be no Unicode.
    for stream in (sys.stdout, sys.stderr):
        stream.reconfigure(errors="backslashreplace")
    arguments = _parser().parse_intermixed_args()
    try:
        return _execute(arguments)
    except WrongUse as error:
        print(f"delven.report: {error}", file=sys.stderr)
        return 2
    except (OSError, RuntimeError) as error:
        print(f"delven.report: {error}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        print("Stopped.", file=sys.stderr)
        return 130


if __name__ == "__main__":
    sys.exit(main())
