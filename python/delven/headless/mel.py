"""Maya's script language."""

from delven import _delven


def eval(text):
    """The value of the last statement of a script. Arrays are lists.

    Raises RuntimeError with the script's error.
    """
    return _delven.eval(text)
