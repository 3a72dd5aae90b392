"""Words of the report."""


def counted(count, noun, plural=None):
    """A number with its noun."""
    return f"{count} {noun if count == 1 else plural or noun + 's'}"
