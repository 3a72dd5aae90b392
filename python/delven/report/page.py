"""Pages of HTML. They have their styles inside and refer to nothing but the files beside them."""

import html
import urllib.parse

from delven.report.style import CSS
from delven.report.words import counted

_LEVELS = ("error", "warning")
# Name and meaning of each figure, in the order of the page.
_FIGURES = (
    ("stored", "Deltas stored"),
    ("components", "Vertices listed"),
    ("moved", "Vertices moved"),
    ("noise", "Moved by noise only"),
    ("largest", "Largest delta"),
    ("mean", "Mean of the moved"),
    ("beyond", "Beyond the mesh"),
    ("doubled", "Listed twice"),
    ("notFinite", "No finite number"),
)
_WEIGHTS = (("painted", "Painted weights"), ("least", "Least weight"), ("most", "Most weight"))
_SYMMETRY = (
    ("residual", "Residual"),
    ("left", "Share of the left"),
    ("right", "Share of the right"),
    ("unpaired", "Moved without partner"),
)


def text(value):
    return html.escape(str(value))


def _data(value):
    """A figure, with all its digits for programs."""
    if value is None:
        return "–"
    shown = f"{value:.4g}" if isinstance(value, float) else value
    return f'<data value="{value}">{shown}</data>'


def document(title, body):
    """A whole page."""
    return (
        '<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8" />\n'
        '<meta name="viewport" content="width=device-width, initial-scale=1" />\n'
        f"<title>{text(title)}</title>\n<style>{CSS}</style>\n</head>\n<body>\n{body}\n</body>\n</html>\n"
    )


def table(caption, heads, rows):
    """A table that scrolls by itself where the page is narrow. Rows are cells of HTML; the first is a heading."""
    head = "".join(f'<th scope="col">{one}</th>' for one in heads)
    lines = []
    for first, *cells in rows:
        cells = "".join(f"<td>{cell}</td>" for cell in cells)
        lines.append(f'<tr><th scope="row">{first}</th>{cells}</tr>')
    body = "\n".join(lines)
    return (
        f'<div class="wide" role="region" aria-label="{text(caption)}" tabindex="0">\n<table>\n'
        f"<thead><tr>{head}</tr></thead>\n<tbody>\n{body}\n</tbody>\n</table>\n</div>"
    )


def _anchor(number, row):
    return f"t{number}-w{row['index']}-{row['item']}"


def _label(row):
    """Name of a target, or of its in-between."""
    return row["name"] if row["item"] == 6000 else f"{row['name']} at {row['weight']:g}"


def _findings(findings):
    """Findings as list items."""
    return "\n".join(
        f'<li class="{one["level"]}"><b>{one["level"]}:</b> {where}{text(one["text"])}</li>' for where, one in findings
    )


def _top(report):
    """All findings with links to their targets, errors first."""
    found = []
    for number, shape in enumerate(report["shapes"]):
        for row in shape["targets"]:
            link = f'<a href="#{_anchor(number, row)}">{text(shape["blendShape"])}, {text(_label(row))}</a>: '
            found += [(link, finding) for finding in row["findings"]]
    left_out = ""
    if not any(shape["pictures"] for shape in report["shapes"]):
        left_out = '<p class="warning">There are no pictures: this host was built without Embree or libpng.</p>\n'
    left_out += "".join(f'<p class="warning">Left out: {text(one["text"])}</p>\n' for one in report["skipped"])
    if not found:
        return f'{left_out}<p class="fine">Nothing is wrong with these targets.</p>'
    found.sort(key=lambda pair: _LEVELS.index(pair[1]["level"]))
    counts = f"{counted(report['errors'], 'error')}, {counted(report['warnings'], 'warning')}"
    return f'{left_out}<p>{counts}</p>\n<ul class="findings">\n{_findings(found)}\n</ul>'


def _image(name, alt, size):
    path = urllib.parse.quote(name)
    return f'<img src="{path}" alt="{text(alt)}" width="{size}" height="{size}" loading="lazy" />'


def _views(row, size):
    figures = []
    for view, files in row["pictures"].items():
        shape = _image(files["shape"], f"{_label(row)}, seen from: {view}", size)
        heat = _image(files["heat"], f"Where {_label(row)} moves the mesh, seen from: {view}", size)
        figures.append(f"<figure>{shape}<figcaption>{view}</figcaption></figure>")
        figures.append(f"<figure>{heat}<figcaption>{view}, how far it moves</figcaption></figure>")
    return '<div class="views">\n' + "\n".join(figures) + "\n</div>"


def _terms(pairs):
    return "\n".join(f"<dt>{text(term)}</dt><dd>{value}</dd>" for term, value in pairs)


def _facts(row):
    """What somebody who looks at a target wants to know first."""
    yield "Moves", f"{counted(row['moved'], 'vertex', 'vertices')}, at most {_data(row['largest'])}"
    yield "Symmetry", text(row["symmetry"]["class"] or "–")
    if row["live"]:
        yield "Live mesh", text(row["live"])
    if row["pair"]:
        yield "Partner", text(row["pair"]["partner"])
        yield "Differs from it", _data(row["pair"]["residual"])


def _details(row):
    yield "Index", _data(row["index"])
    yield "Item", _data(row["item"])
    for name, term in _FIGURES:
        yield term, _data(row[name])
    for name, term in _SYMMETRY:
        yield term, _data(row["symmetry"][name])
    if row["weights"]:
        for name, term in _WEIGHTS:
            yield term, _data(row["weights"][name])
        yield "Weights beyond", _data(row["weights"]["beyond"])
    else:
        yield "Painted weights", "none"


def _card(number, row, size):
    anchor = _anchor(number, row)
    findings = ""
    if row["findings"]:
        findings = f'<ul class="findings">\n{_findings([("", one) for one in row["findings"]])}\n</ul>\n'
    return (
        f'<article class="card" id="{anchor}" aria-labelledby="{anchor}-name">\n'
        f'<h3 id="{anchor}-name">{text(_label(row))}</h3>\n{findings}{_views(row, size)}\n'
        f"<dl>\n{_terms(_facts(row))}\n</dl>\n"
        f"<details><summary>All figures</summary>\n<dl>\n{_terms(_details(row))}\n</dl>\n</details>\n</article>"
    )


def _overview(number, shape):
    heads = ("Target", "Moved", "Largest", "Symmetry", "Residual", "Partner differs", "Findings")
    rows = []
    for row in shape["targets"]:
        levels = {finding["level"] for finding in row["findings"]}
        worst = next((level for level in _LEVELS if level in levels), "fine")
        rows.append(
            (
                f'<a href="#{_anchor(number, row)}">{text(_label(row))}</a>',
                _data(row["moved"]),
                _data(row["largest"]),
                text(row["symmetry"]["class"] or "–"),
                _data(row["symmetry"]["residual"]),
                _data(row["pair"] and row["pair"]["residual"]),
                f'<span class="{worst}">{len(row["findings"])}</span>',
            )
        )
    return table(f"Targets of {shape['blendShape']}", heads, rows)


def _section(number, shape, size):
    name = f"{shape['blendShape']} on {shape['mesh']}"
    views = "\n".join(
        f"<figure>{_image(file, f'{name} at rest, seen from: {view}', size)}"
        f"<figcaption>{view}, at rest</figcaption></figure>"
        for view, file in shape["pictures"].items()
    )
    cards = "\n".join(_card(number, row, size) for row in shape["targets"])
    return (
        f'<section aria-labelledby="s{number}">\n<h2 id="s{number}">{text(name)}</h2>\n'
        f"<p>{counted(shape['vertices'], 'vertex', 'vertices')}. Mirror partners by "
        f"{shape['partnersBy']}, {shape['unpaired']} without one.</p>\n"
        f'{_overview(number, shape)}\n<div class="views">\n{views}\n</div>\n'
        f'<div class="cards">\n{cards}\n</div>\n</section>'
    )


def _notes(report):
    return (
        "<details><summary>What the figures mean</summary>\n"
        "<p>Lengths are centimetres in object space. A vertex counts as moved by more than 1e-8; less is noise.</p>\n"
        f"<p>Symmetry is across the plane {report['axis']} = 0; left is its positive side. The residual is the largest "
        "difference between a delta and the mirrored one of its partner, as a share of the largest delta. Below 0.001 "
        "a target is on both sides alike. It is left or right when the other side has less than 1 % of all movement. "
        "A target of one side is compared with its partner by name in the same way.</p>\n"
        "<p>Colours show how far each vertex moves, up to the largest delta of that target. What is grey stays.</p>\n"
        '<div class="ramp" role="img" aria-label="From little movement, blue, to the largest, yellow"></div>\n'
        "</details>"
    )


def render(report):
    """The page of a report."""
    title = f"Blend shapes of {report['scene']}"
    sections = "\n".join(_section(number, shape, report["size"]) for number, shape in enumerate(report["shapes"]))
    return document(
        title,
        f'<main>\n<h1>{text(title)}</h1>\n<section aria-labelledby="findings">\n<h2 id="findings">Findings</h2>\n'
        f"{_top(report)}\n</section>\n{_notes(report)}\n{sections}\n</main>",
    )
