"""Which scenes a run is about, and where the files of each go."""

import os

from delven.batch import WrongUse


def _below(folder, out):
    """All .ma below a folder, without those that an earlier run wrote."""
    for place, folders, files in os.walk(folder):
        folders[:] = [name for name in folders if os.path.realpath(os.path.join(place, name)) != os.path.realpath(out)]
        for name in files:
            if name.lower().endswith(".ma"):
                yield os.path.join(place, name)


def _names(roots):
    """A folder's name for each scene of {scene: file or folder that was given for it}.

    It is the path below what was given. Where two would meet, all are named by their paths below the folder that all
    have in common.
    """
    names = {scene: os.path.relpath(scene, root) for scene, root in roots.items()}
    if len(set(names.values())) == len(names):
        return names
    try:
        root = os.path.commonpath([os.path.dirname(scene) for scene in roots])
    except ValueError:
        raise WrongUse("Scenes of one name lie on several drives. Run once for each drive.") from None
    return {scene: os.path.relpath(scene, root) for scene in roots}


def find(given, out):
    """Scenes of files and folders, sorted, each once: pairs of a path and the name of its folder in `out`.

    Names and order are the same on other machines, wherever the scenes lie there.
    """
    roots, seen = {}, set()
    for name in given:
        path = os.path.abspath(name)
        is_folder = os.path.isdir(path)
        for scene in sorted(_below(path, out)) if is_folder else [path]:
            real = os.path.realpath(scene)
            if real not in seen:
                seen.add(real)
                roots[scene] = path if is_folder else os.path.dirname(path)
    if not roots:
        raise WrongUse(f"There is no scene (.ma) in {', '.join(map(str, given)) or 'nothing'}.")
    names = _names(roots)
    if any(os.path.realpath(os.path.join(out, folder)) in seen for folder in names.values()):
        raise WrongUse(f"The output folder {out} holds the scenes themselves. Name another one.")
    return sorted(names.items(), key=lambda pair: pair[1])


def shard_of(found, shard):
    """Every n-th scene: neighbours in a folder are often alike, and so their work is shared."""
    if shard is None:
        return found
    index, count = shard
    if not 1 <= index <= count:
        raise WrongUse(f"There is no shard {index} of {count}. The first of 4 is 1/4, the last 4/4.")
    return found[index - 1 :: count]
