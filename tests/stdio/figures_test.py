#!/usr/bin/env python3
"""figures_test.py PROGRAM: a figure over `kelo serve --stdio`: drawn, saved, listed, shown, exported, deleted."""
import base64, os, sys, tempfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "examples"))
from client import Kelo

PNG, PDF, SVG = b"\x89PNG\r\n\x1a\n", b"%PDF-1.", b"<svg "
ROLES = {"background", "plot area", "x axis", "x tick", "x tick label", "x label", "y axis", "y tick", "y tick label", "y label",
         "grid", "title", "line 1", "line 2", "markers 2", "legend", "legend line 1", "legend text 1"}


def bytes_of(text):
    return base64.b64decode(text, validate=True)


def drawn_and_exported(kelo, roles):
    for theme in ("light", "dark"):
        items = kelo.call("figure/drawing", width=640, height=480, theme=theme)["items"]
        assert roles <= {item["role"] for item in items}, roles - {item["role"] for item in items}
    for name, mark in (("png", PNG), ("pdf", PDF), ("svg", SVG)):
        picture = bytes_of(kelo.call("figure/picture", format=name)["base64"])
        assert picture.startswith(mark) and len(picture) > 1000, name


def saved(kelo, documents, name):
    model = kelo.call("figure/get")["model"]
    kelo.call("figure/save", name=name)
    (item,) = kelo.call("figures/list")["items"]
    assert item["name"] == name and item["timeStamp"] > 8e8 and bytes_of(item["thumbnail"]).startswith(PNG)
    kelo.call("figure/close")
    assert kelo.call("figure/get")["kind"] == "none"
    kelo.call("figures/show", id=item["id"])
    assert kelo.call("figure/get")["model"] == model
    assert os.path.exists(f"{documents}/.FIGURES/{name}.kfig")
    kelo.call("figures/delete", id=item["id"])
    assert kelo.call("figures/list")["items"] == [] and os.listdir(documents + "/.FIGURES") == []


with tempfile.TemporaryDirectory() as folder:
    kelo = Kelo(sys.argv[1], folder)
    kelo.call("console/run", text="plot(1:3, [1 4 9], 'b', 1:3, [2 3 1], 'r--o'); legend('up', 'down'); "
                                  "title('T'), xlabel('x'), ylabel('y'), grid('on')")
    drawn_and_exported(kelo, ROLES)
    saved(kelo, folder, "lines")
    kelo.call("console/run", text="[X, Y] = meshgrid(0:0.5:2); surf(X, Y, X.*Y); zlabel('height')")
    drawn_and_exported(kelo, {"z axis", "z tick", "z tick label", "z label", "surface 1"})
    saved(kelo, folder, "surface")
