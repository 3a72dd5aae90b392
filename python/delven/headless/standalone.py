"""Starting and ending the host, as scripts for Maya without a window do."""

from delven import _delven


def initialize(name="python"):
    """Starts the host, unless a command already did."""
    del name
    _delven.names()


def uninitialize():
    """Runs what was deferred. The host ends with the process."""
    _delven.idle()
