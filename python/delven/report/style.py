"""The styles of the pages."""

from delven.report import pictures


def _ramp():
    colors = ", ".join(f"rgb({', '.join(str(round(255 * channel)) for channel in color)})" for color in pictures.RAMP)
    return f"linear-gradient(to right, {colors})"


# Text on its ground has a contrast of at least 4.5 in both schemes.
CSS = (
    """
:root { color-scheme: light dark; --ground: #ffffff; --text: #1b1b1f; --soft: #55555f; --card: #f4f4f6;
  --line: #c6c6ce; --link: #0b57a4; --error: #a3121c; --warning: #7a4b00; --fine: #1b6130; }
@media (prefers-color-scheme: dark) {
  :root { --ground: #17171a; --text: #ececf0; --soft: #b2b2bd; --card: #222227; --line: #46464f; --link: #8ec2ff;
    --error: #ff9a9a; --warning: #f2c063; --fine: #86d69c; } }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1rem; max-width: 76rem; background: var(--ground); color: var(--text);
  font: 1rem/1.5 system-ui, sans-serif; overflow-wrap: anywhere; }
h1 { font-size: 1.6rem; line-height: 1.2; }
h2 { font-size: 1.3rem; margin-top: 2.5rem; } h3 { font-size: 1.1rem; margin: 0; }
a { color: var(--link); } :focus-visible { outline: 3px solid var(--link); outline-offset: 2px; }
.soft, figcaption { color: var(--soft); }
.error { color: var(--error); } .warning { color: var(--warning); } .fine { color: var(--fine); }
.findings { padding-left: 1.2rem; } .findings b { text-transform: capitalize; }
.wide { overflow-x: auto; border: 1px solid var(--line); border-radius: .4rem; }
table { border-collapse: collapse; width: 100%; overflow-wrap: normal; font-variant-numeric: tabular-nums; }
th, td { padding: .3rem .7rem; text-align: right; white-space: nowrap; border-top: 1px solid var(--line); }
thead th { border-top: 0; } th:first-child, :is(th, td):last-child { text-align: left; }
td:last-child { white-space: normal; min-width: 6rem; }
.cards { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(100%, 34rem), 1fr)); gap: 1rem; }
.card { background: var(--card); border: 1px solid var(--line); border-radius: .4rem; padding: 1rem; min-width: 0; }
.views { display: flex; flex-wrap: wrap; gap: .5rem; margin: .7rem 0; }
figure { margin: 0; max-width: 100%; } figcaption { font-size: .85rem; }
img { display: block; max-width: 100%; height: auto; border-radius: .3rem; }
dl { display: grid; grid-template-columns: max-content minmax(0, 1fr); gap: .1rem 1rem; margin: .5rem 0 0; }
dt { color: var(--soft); } dd { margin: 0; font-variant-numeric: tabular-nums; }
summary { cursor: pointer; }
.ramp { height: .8rem; max-width: 20rem; border-radius: .2rem; background: """
    + _ramp()
    + """; }
@media print { .card { break-inside: avoid; } }
"""
)
