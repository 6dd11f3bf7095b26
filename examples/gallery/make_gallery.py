#!/usr/bin/env python3
"""Remakes the pictures of docs/gallery.md.

    examples/gallery/make_gallery.py [QUILLON]

Writes a form with fields of every kind, lets the program fill it in (the plug-in draws all fields
then), and draws the result with pdftoppm: once as it is, once with every pressed ("down") appearance
in the place of the normal one. Needs qpdf and poppler's tools.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "examples" / "forms"))
from make_form import Pdf, Sheet  # noqa: E402

PICTURES = ROOT / "docs" / "images" / "gallery"
DPI = 144
WIDTH = 480
RADIO, PUSH_BUTTON, COMBO, MULTI_LINE, PASSWORD = 0x8000, 0x10000, 0x20000, 0x1000, 0x2000

STYLES = [("Check", "4"), ("Cross", "8"), ("Diamond", "u"), ("Circle", "l"), ("Star", "H"),
          ("Square", "n")]
BORDERS = [("Solid", "S", 1), ("Dashed", "D", 1), ("Beveled", "B", 2), ("Inset", "I", 2),
           ("Underlined", "U", 1)]
LAYOUTS = ["Text only", "Icon only", "Icon top, text bottom", "Text top, icon bottom",
           "Icon left, text right", "Text left, icon right", "Text over icon"]
LAYOUT_CODES = [0, 1, 2, 3, 4, 5, 6]
OPTIONS = ["Antiqua", "Bodoni", "Caslon", "Didot", "Egyptienne", "Fraktur", "Garamond", "Helvetica"]
TEXT = "/DA (/Helv 11 Tf 0.1 0.15 0.35 rg)"
LOREM = ("A field of several lines breaks its text between words, and shows as many lines as there "
         "is room for.")


def frame(style="S", width=1, fill="1 1 1", more=""):
    dash = " /D [3]" if style == "D" else ""
    return (f"/BS << /W {width} /S /{style}{dash} >> "
            f"/MK << /BC [0.45 0.5 0.55] /BG [{fill}] {more} >>")


class Page:
    """One picture: its fields, and labels beside them."""

    def __init__(self, height):
        self.height, self.sheet, self.fields = height, Sheet(), []

    def label(self, x, y, text):
        self.sheet.label(x, y, text)

    def field(self, kind, name, box, entries):
        x, y, width, height = box
        self.fields.append((name, f"/Type /Annot /Subtype /Widget /F 4 /FT /{kind} "
                                  f"/Rect [{x} {y} {x + width} {y + height}] {entries}"))


def text_page():
    page = Page(210)
    cases = [("Left", "", "Ada Lovelace"), ("Centred", "/Q 1", "Ada Lovelace"),
             ("Right", "/Q 2", "Ada Lovelace"), ("Password", f"/Ff {PASSWORD}", "secret")]
    for i, (label, entries, value) in enumerate(cases):
        y = 170 - 34 * i
        page.label(20, y + 24, label)
        page.field("Tx", f"text{i}", (20, y, 200, 20), f"{TEXT} {frame()} {entries} /V ({value})")
    page.label(20, 57, "Automatic size")
    page.field("Tx", "auto", (20, 20, 200, 33),
               f"/DA (/TiRo 0 Tf 0.5 0.1 0.1 rg) {frame(fill='1 0.97 0.9')} /V (As large as fits)")
    page.label(250, 194, "Several lines")
    page.field("Tx", "lines", (250, 110, 170, 80),
               f"{TEXT} {frame('I', 2)} /Ff {MULTI_LINE} /V ({LOREM})")
    page.label(440, 194, "Turned")
    page.field("Tx", "turned", (440, 20, 20, 170),
               f"{TEXT} {frame(more='/R 90')} /Q 1 /V (Bottom to top)")
    for i, (label, style, width) in enumerate(BORDERS[1:]):
        x, y = 250 + 90 * (i % 2), 62 - 42 * (i // 2)
        page.label(x, y + 24, label)
        page.field("Tx", f"border{i}", (x, y, 80, 20),
                   f"{TEXT} {frame(style, width, '0.93 0.95 0.97')} /V (Border)")
    return page


def check_page(radio):
    """Rows are borders, columns the styles, each on and off."""
    page = Page(230)
    flags = f"/Ff {RADIO} " if radio else ""
    for column, (label, mark) in enumerate(STYLES):
        x = 80 + 66 * column
        page.label(x, 210, label)
        for row, (border, style, width) in enumerate(BORDERS):
            y = 172 - 38 * row
            if column == 0:
                page.label(20, y + 9, border)
            for place, value in ((0, "/V /On"), (30, "")):
                page.field("Btn", f"box{row}.{column}.{place}".replace(".", "_"),
                           (x + place, y, 24, 24),
                           f"/DA (/ZaDb 0 Tf 0.1 0.15 0.35 rg) {flags}{value} "
                           + frame(style, width, "0.86 0.9 0.93", f"/CA ({mark})"))
    return page


def button_page(icon):
    page = Page(210)
    look = f"/AC (Done) /I {icon} 0 R"
    for i, (label, code) in enumerate(zip(LAYOUTS, LAYOUT_CODES)):
        x, y = 20 + 112 * (i % 4), 112 - 92 * (i // 4)
        page.label(x, y + 64, label)
        page.field("Btn", f"button{i}", (x, y, 104, 60),
                   f"{TEXT} /Ff {PUSH_BUTTON} /H /P "
                   + frame("B", 2, "0.86 0.9 0.93", f"/CA (Send) /TP {code} {look}"))
    page.label(356, 84, "Inset border")
    page.field("Btn", "inset", (356, 20, 104, 60),
               f"{TEXT} /Ff {PUSH_BUTTON} /H /P "
               + frame("I", 2, "0.86 0.9 0.93", f"/CA (Send) /TP 2 {look}"))
    return page


def choice_page():
    page = Page(150)
    options = "/Opt [" + " ".join(f"({option})" for option in OPTIONS) + "]"
    page.label(20, 132, "Combo box")
    page.field("Ch", "combo", (20, 108, 130, 20),
               f"{TEXT} {frame()} /Ff {COMBO} {options} /V (Caslon)")
    for x, label, value in ((170, "Nothing selected", ""), (275, "Second option", "/V (Bodoni)"),
                            (380, "Last option, scrolled to", "/V (Helvetica)")):
        page.label(x, 132, label)
        page.field("Ch", f"list{x}", (x, 46, 85, 82), f"{TEXT} {frame('I', 2)} {options} {value}")
    return page


def stream(entries, data):
    return f"<< {entries} /Length {len(data)} >>\nstream\n{data}\nendstream"


def make_form():
    pdf = Pdf()
    catalog, tree, form = pdf.add(), pdf.add(), pdf.add()
    fonts = " ".join(
        f"/{name} {pdf.add(f'<< /Type /Font /Subtype /Type1 /Name /{name} /BaseFont /{base} >>')} 0 R"
        for name, base in (("Helv", "Helvetica"), ("HeBo", "Helvetica-Bold"),
                           ("TiRo", "Times-Roman"), ("ZaDb", "ZapfDingbats")))
    icon = pdf.add(stream("/Type /XObject /Subtype /Form /BBox [0 0 40 40]",
                          "0.1 0.45 0.6 rg 4 4 m 36 20 l 4 36 l 11 20 l f "
                          "1 1 1 RG 1.5 w 11 20 m 36 20 l S"))
    pages, fields = [], []
    for page in (text_page(), check_page(False), check_page(True), button_page(icon),
                 choice_page()):
        number = pdf.add()
        annots = [pdf.add(f"<< /T (page{len(pages)}_{name}) /P {number} 0 R {entries} >>")
                  for name, entries in page.fields]
        content = pdf.add(page.sheet.stream())
        references = " ".join(f"{annot} 0 R" for annot in annots)
        pdf.set(number, f"<< /Type /Page /Parent {tree} 0 R /MediaBox [0 0 {WIDTH} {page.height}] "
                        f"/Resources << /Font << {fonts} >> >> /Contents {content} 0 R "
                        f"/Annots [{references}] >>")
        pages.append(number)
        fields.append(references)
    pdf.set(catalog, f"<< /Type /Catalog /Pages {tree} 0 R /QuillForm {form} 0 R >>")
    pdf.set(tree, f"<< /Type /Pages /Count {len(pages)} "
                  f"/Kids [{' '.join(f'{page} 0 R' for page in pages)}] >>")
    pdf.set(form, f"<< /Fields [{' '.join(fields)}] /DR << /Font << {fonts} >> >> "
                  f"/DA (/Helv 0 Tf 0 g) /NeedAppearances true >>")
    return pdf.bytes(catalog)


def press(qdf):
    """Exchanges the names N and D in every appearance dictionary; no byte moves."""
    def exchange(match):
        swapped = {b"D": b"N", b"N": b"D"}
        return re.sub(rb"(?m)^(    /)([DN])(?= )", lambda m: m[1] + swapped[m[2]], match[0])
    return re.sub(rb"(?ms)^  /AP <<\n    /D .*?^  >>", exchange, qdf)


def run(*command):
    subprocess.run([str(part) for part in command], check=True)


def draw(pdf, number, name):
    run("pdftoppm", "-r", DPI, "-f", number, "-l", number, "-png", "-singlefile", pdf,
        PICTURES / name)


def main():
    quillon = sys.argv[1] if len(sys.argv) > 1 else ROOT / "build/release/bin/quillon"
    PICTURES.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        form, filled, plain, pressed = (folder / f"{name}.pdf"
                                        for name in ("form", "filled", "plain", "pressed"))
        form.write_bytes(make_form())
        run(quillon, "fill", form, "page0_text0=Grace Hopper", "-o", filled)
        run("qpdf", "--check", filled)
        run("qpdf", "--qdf", "--object-streams=disable", filled, plain)
        pressed.write_bytes(press(plain.read_bytes()))
        for number, name in enumerate(("text", "check-boxes", "radio-buttons", "push-buttons",
                                       "choices"), 1):
            draw(filled, number, name)
        for number, name in ((2, "check-boxes-down"), (3, "radio-buttons-down"),
                             (4, "push-buttons-down")):
            draw(pressed, number, name)


if __name__ == "__main__":
    main()
