"""A report about blend shapes: what it finds, its figures by hand, its page, and what it leaves as it was."""

import collections
import html.parser
import json
import math
import os
import re
import subprocess

import numpy
import pytest

from delven import arrays, cmds, report
from delven.report import symmetry

RUNNER = [os.environ["DELVENPY"], "-m", "delven.report"]
ITEM = "bs.inputTarget[0].inputTargetGroup[{}].inputTargetItem[{}]"

# In a box of side 1 an odd vertex is on the left, and the one before it is its mirror image.
SCRIPT = """
polyCube -n "box";
duplicate -n "up" "box";
blendShape -n "bs" "up" "box";
delete "up";
string $item = "bs.inputTarget[0].inputTargetGroup[0].inputTargetItem[6000]";
setAttr ($item + ".inputPointsTarget") -type "pointArray" 1 0 1 0 1;
setAttr ($item + ".inputComponentsTarget") -type "componentList" 1 "vtx[%d]";
"""


def make(*names):
    """A blend shape on a box with targets that do not move yet, and have no meshes."""
    cmds.polyCube(name="box")
    targets = [cmds.duplicate("box", name=name)[0] for name in names]
    cmds.blendShape(targets, "box", name="bs")
    cmds.delete(targets)


def store(target, points, components, item=6000):
    """Stores deltas as they are given, which may not fit."""
    plug = ITEM.format(target, item)
    cmds.setAttr(f"{plug}.inputPointsTarget", len(points), *[(*point, 1) for point in points], type="pointArray")
    cmds.setAttr(f"{plug}.inputComponentsTarget", len(components), *components, type="componentList")


def run_program(*words):
    return subprocess.run([*RUNNER, *map(str, words)], capture_output=True, text=True, timeout=120)


class Page(html.parser.HTMLParser):
    """A page whose tags are all closed. Knows its images, links, names, and the figures of each card."""

    def __init__(self, path):
        super().__init__()
        self.open, self.images, self.links, self.ids = [], [], [], []
        self.figures, self.texts = collections.defaultdict(list), []
        self._card = None
        self.text = path.read_text()
        self.feed(self.text)
        self.close()
        assert not self.open

    def handle_startendtag(self, tag, attributes):
        assert tag in ("meta", "img")
        if tag == "img":
            self.images.append(dict(attributes))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.open.append(tag)
        self.ids += [given["id"]] if "id" in given else []
        self.links += [given["href"]] if tag == "a" else []
        if tag == "article":
            self._card = given["id"]
        if tag == "data" and self._card:
            self.figures[self._card].append(float(given["value"]))

    def handle_endtag(self, tag):
        assert self.open.pop() == tag
        if tag == "article":
            self._card = None

    def handle_data(self, data):
        self.texts.append(data)


def numbers(value):
    """All numbers of a part of the report."""
    if isinstance(value, dict):
        return [number for one in value.values() for number in numbers(one)]
    return [float(value)] if isinstance(value, (int, float)) else []


def test_each_fault_is_found_once_at_its_target(tmp_path):
    make("beyond", "notFinite", "counts", "doubled", "noAlias", "empty", "weightsBeyond", "smile_L")
    up = (0, 1, 0)
    store(0, [up] * 4, ["vtx[6:9]"])
    store(1, [up, (0, math.nan, 0), (math.inf, 0, 0)], ["vtx[0:2]"])
    store(2, [up, up, up], ["vtx[0]", "vtx[5]"])
    store(3, [up, up], ["vtx[1]", "vtx[1]"])
    # An in-between repeats nothing that is wrong with the target itself.
    for target in (4, 6, 7):
        store(target, [up], ["vtx[1]"])
        store(target, [(0, 0.5, 0)], ["vtx[1]"], item=5500)
    cmds.aliasAttr("bs.noAlias", remove=True)
    cmds.setAttr("bs.inputTarget[0].inputTargetGroup[6].targetWeights[1]", 0.25)
    cmds.setAttr("bs.inputTarget[0].inputTargetGroup[6].targetWeights[8]", 1)

    made = report.run(tmp_path, size=16)
    rows = {(row["index"], row["item"]): row for row in made["shapes"][0]["targets"]}
    found = [(key, finding["kind"]) for key, row in rows.items() for finding in row["findings"]]
    assert found == [
        ((0, 6000), "beyond"),
        ((1, 6000), "notFinite"),
        ((2, 6000), "counts"),
        ((3, 6000), "doubled"),
        ((4, 5500), "noAlias"),
        ((5, 6000), "empty"),
        ((6, 5500), "weightsBeyond"),
        ((7, 5500), "missingPartner"),
    ]
    assert (made["errors"], made["warnings"]) == (3, 5)
    assert rows[0, 6000]["beyond"] == 2 and rows[1, 6000]["notFinite"] == 2 and rows[3, 6000]["doubled"] == 1
    assert rows[6, 6000]["weights"] == {"painted": 2, "least": 0.25, "most": 0.25, "beyond": 1}

    text = Page(tmp_path / "index.html").text
    findings = text[text.index('<section aria-labelledby="findings">') : text.index("</section>")]
    assert len(re.findall(r'<li class="error">', findings)) == 3
    assert len(re.findall(r'<li class="warning">', findings)) == 5
    for row in rows.values():
        for finding in row["findings"]:
            # At the top and at the target.
            assert text.count(finding["text"]) == 2


def test_sides_and_pairs_are_told_by_figures(tmp_path):
    make("smile_L", "smile_R", "frownLeft", "frownRight", "both", "uneven")
    store(0, [(1, 2, 0)], ["vtx[3]"])
    store(1, [(-1, 2, 0)], ["vtx[2]"])
    store(2, [(0, 4, 0)], ["vtx[3]"])
    store(3, [(0, 3, 0)], ["vtx[2]"])
    store(4, [(-1, 1, 0), (1, 1, 0), (1e-9, 0, 0)], ["vtx[2:3]", "vtx[5]"])
    store(5, [(0, 1, 0), (0, 0.5, 0)], ["vtx[2:3]"])
    targets = report.run(tmp_path, size=16)["shapes"][0]["targets"]
    assert [row["symmetry"]["class"] for row in targets] == ["left", "right"] * 2 + ["both", "asymmetric"]
    assert targets[0]["pair"]["partner"] == "smile_R" and targets[0]["pair"]["residual"] < 1e-6
    assert targets[1]["pair"]["residual"] < 1e-6
    assert targets[2]["pair"]["residual"] == targets[3]["pair"]["residual"] == 0.25
    assert targets[4]["moved"] == 2 and targets[4]["noise"] == 1 and targets[4]["pair"] is None
    assert targets[4]["largest"] == targets[4]["mean"] == math.sqrt(2)
    uneven = targets[5]["symmetry"]
    assert uneven["residual"] == 0.5
    assert [uneven["left"], uneven["right"]] == pytest.approx([1 / 3, 2 / 3])


def test_partners_by_position_are_the_nearest_mirror_images():
    random = numpy.random.default_rng(5)
    half = random.uniform(0.1, 1, (200, 3))
    nearly = half * [1, -1, 1] + random.uniform(-2e-5, 2e-5, (200, 3))
    points = numpy.concatenate([half, nearly, [[7, 0, 7], [3, 3, 3]]])
    expected = [*range(200, 400), *range(200), 400, -1]
    assert symmetry.partners_by_position(points, "y").tolist() == expected


def test_page_holds_the_figures_of_the_file_and_needs_nothing_else(tmp_path, shapes):
    store(0, [(0, 0.3, 0)], ["vtx[2]"], item=5300)
    report.run(tmp_path, size=24)
    page, made = Page(tmp_path / "index.html"), json.loads((tmp_path / "report.json").read_text())
    rows = {f"t0-w{row['index']}-{row['item']}": row for row in made["shapes"][0]["targets"]}
    assert list(page.figures) == list(rows) == ["t0-w0-5300", "t0-w0-6000", "t0-w1-6000"]
    for card, row in rows.items():
        row.pop("weight")
        assert set(page.figures[card]) == set(numbers(row))
    for image in page.images:
        assert image["alt"] and image["width"] == image["height"] == "24"
        assert (tmp_path / image["src"]).read_bytes().startswith(b"\x89PNG")
    # Two views of the mesh, and of each card with and without colours.
    assert len({image["src"] for image in page.images}) == len(page.images) == 2 + 3 * 4
    assert {link[1:] for link in page.links} <= set(page.ids) and len(set(page.ids)) == len(page.ids)
    assert not re.search(r"https?:|<script|url\(|@import|<link", page.text)


def test_figures_come_without_pictures_too(tmp_path, shapes, monkeypatch):
    def refuse(**_):
        raise RuntimeError("playblast: Pictures are not covered by this host: it was built without Embree or libpng.")

    monkeypatch.setattr(cmds, "playblast", refuse, raising=False)
    made = report.run(tmp_path, size=16)
    assert sorted(os.listdir(tmp_path)) == ["index.html", "report.json"] and len(made["shapes"][0]["targets"]) == 2
    page = Page(tmp_path / "index.html")
    assert not page.images and "There are no pictures" in page.text


def test_pictures_show_what_moves_and_old_ones_go(tmp_path):
    make("still", "up")
    store(1, [(0, 1, 0)], ["vtx[3]"])
    for name in ("0-w7-6000-front.png", "mine.png"):
        (tmp_path / name).write_bytes(b"")
    report.run(tmp_path, views=["front"], size=32)
    names = sorted(os.listdir(tmp_path))
    assert names == [
        "0-base-front.png",
        *(f"0-w{target}-6000-front{kind}.png" for target in (0, 1) for kind in ("-heat", "")),
        *("index.html", "mine.png", "report.json"),
    ]
    base, _, still, heat, up = ((tmp_path / name).read_bytes() for name in names[:5])
    assert base == still and len({base, heat, up}) == 3
    # The back of the box alone does not show the corner that moves at the front.
    report.run(tmp_path, views=["front"], size=32, faces=[(2, 2)])
    assert (tmp_path / names[4]).read_bytes() != up


def test_scene_stays_as_it_is(tmp_path, shapes):
    cmds.setAttr("bs.up", 0.5)
    cmds.lookThru("side")
    cmds.select("box.vtx[1]")
    nodes, points = cmds.ls(), arrays.points("box")
    report.run(tmp_path, size=16)
    assert cmds.ls() == nodes and cmds.ls(selection=True) == ["box.vtx[1]"]
    assert cmds.lookThru(query=True) == "side"
    assert not cmds.attributeQuery("dvVertexOrderMap", node="boxShape", exists=True)
    assert (arrays.points("box") == points).all()
    # What was done before can still be undone.
    cmds.undo()
    cmds.undo()
    assert cmds.getAttr("bs.up") == 0


def test_strict_ends_with_one_for_an_error(tmp_path):
    for vertex, status in ((7, 0), (8, 1)):
        script = tmp_path / f"{vertex}.mel"
        script.write_text(SCRIPT % vertex)
        words = ["--blend-shape", "bs", "--mesh", "box", "--size", 16, script, "--out", tmp_path / "out"]
        assert run_program(*words).returncode == 0
        assert run_program(*words, "--strict").returncode == status


def test_folder_gives_a_report_for_each_scene_and_a_list(tmp_path, shapes):
    scenes, out = tmp_path / "scenes", tmp_path / "out"
    scenes.mkdir()
    for name in ("one.ma", "two.ma"):
        cmds.file(rename=str(scenes / name))
        cmds.file(save=True, type="mayaAscii")
    (scenes / "torn.ma").write_text("torn")
    done = run_program(scenes, "--out", out, "--size", 16)
    assert done.returncode == 1 and "torn.ma: unreadable" in done.stderr and "%|" not in done.stderr
    page = Page(out / "index.html")
    assert page.links == ["one.ma/index.html", "two.ma/index.html"] and "has no" not in page.text
    for link in page.links:
        Page(out / link)


@pytest.mark.parametrize(
    ("words", "text"),
    [
        (["--blend-shape", "bss"], "There is no blendShape bss in the scene. It has: bs."),
        (["--blend-shape", "box"], "box is something else."),
        (["--mesh", "ball"], "There is no mesh ball in the scene."),
        (["--views", "front,behind"], "There is no view 'behind'."),
        (["--size", "4"], "The size is 4."),
        (["--faces", "0:6"], "There are no faces 0:6: boxShape has 6, the last is 5."),
        (["--faces", "all"], "Write them as 0:99,200."),
        (["more.ma"], "There is no file more.ma."),
        (["more.fbx"], "more.fbx cannot be opened."),
    ],
)
def test_wrong_use_says_what_to_change_and_writes_nothing(tmp_path, words, text):
    script = tmp_path / "a.mel"
    script.write_text(SCRIPT % 1)
    files = words if words[0].startswith("more") else [*words, script]
    done = run_program(*files, "--out", tmp_path / "out")
    assert done.returncode == 2 and text in done.stderr
    assert not (tmp_path / "out").exists()
