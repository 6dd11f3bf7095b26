#!/usr/bin/env python3
"""Writes membership.pdf, a one-page application form with text fields of every sort.

    examples/forms/make_form.py [OUTPUT]

The form carries no appearances: the plug-in makes them when the file is opened.
"""

import pathlib
import sys

PAGE = (595, 842)
MARGIN = 50
INK, ACCENT, PALE, GREY = "0.13 0.15 0.2", "0.1 0.32 0.42", "0.93 0.96 0.97", "0.45 0.47 0.5"

READ_ONLY, REQUIRED, MULTI_LINE, PASSWORD = 0x1, 0x2, 0x1000, 0x2000


class Pdf:
    """Objects by number, written in one go with their cross-reference table."""

    def __init__(self):
        self.objects = []

    def add(self, text=None):
        self.objects.append(text)
        return len(self.objects)

    def set(self, number, text):
        self.objects[number - 1] = text

    def bytes(self, root):
        out = bytearray(b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n")
        offsets = []
        for number, text in enumerate(self.objects, 1):
            offsets.append(len(out))
            out += f"{number} 0 obj\n{text}\nendobj\n".encode("latin-1")
        start = len(out)
        out += f"xref\n0 {len(offsets) + 1}\n0000000000 65535 f \n".encode()
        out += b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
        out += f"trailer\n<< /Size {len(offsets) + 1} /Root {root} 0 R >>\n".encode()
        out += f"startxref\n{start}\n%%EOF\n".encode()
        return bytes(out)


class Sheet:
    """Page content from the top down: texts and boxes."""

    def __init__(self):
        self.lines = []

    def box(self, x, y, width, height, colour):
        self.lines.append(f"{colour} rg {x} {y} {width} {height} re f")

    def text(self, x, y, size, text, font="Helv", colour=INK):
        escaped = text.replace("\\", r"\\").replace("(", r"\(").replace(")", r"\)")
        self.lines.append(f"BT {colour} rg /{font} {size} Tf {x} {y} Td ({escaped}) Tj ET")

    def section(self, y, title):
        self.box(MARGIN, y - 5, PAGE[0] - 2 * MARGIN, 18, PALE)
        self.box(MARGIN, y - 5, 4, 18, ACCENT)
        self.text(MARGIN + 12, y, 11, title, "HeBo", ACCENT)

    def label(self, x, y, text):
        self.text(x, y, 8, text, colour=GREY)

    def stream(self):
        text = "\n".join(self.lines)
        return f"<< /Length {len(text)} >>\nstream\n{text}\nendstream"


def look(style="S", width=1, border="0.55 0.6 0.65", fill="1 1 1", rotation=0):
    """Border style, border and fill colours, rotation (ISO 32000-1, 12.5.4 and 12.5.6.19)."""
    dash = " /D [3 2]" if style == "D" else ""
    turn = f" /R {rotation}" if rotation else ""
    return f"/BS << /W {width} /S /{style}{dash} >> /MK << /BC [{border}] /BG [{fill}]{turn} >>"


# name, label, rectangle (x, y, width, height), flags, look, further entries
APPLICANT = [
    ("born", "Date of birth (year-month-day)", (50, 618, 150, 22), 0, look(), "/MaxLen 10"),
    ("email", "E-mail", (215, 618, 330, 22), REQUIRED, look("U", border=ACCENT), ""),
    ("address", "Address", (50, 540, 330, 60), MULTI_LINE, look("I", 2, fill="0.98 0.98 0.98"), ""),
    ("phone", "Telephone", (395, 578, 150, 22), 0, look("B", 2, fill="0.9 0.92 0.94"), ""),
    ("city", "Town", (395, 540, 150, 22), 0, look("D"), "/DA (/TiRo 12 Tf 0.1 0.1 0.5 rg)"),
]
MEMBERSHIP = [
    ("membership.number", "Member number (given by us)", (50, 450, 150, 22), READ_ONLY,
     look(fill=PALE), "/V (2024-0117) /DA (/Cour 11 Tf 0.3 g)"),
    ("membership.kind", "Kind of membership", (215, 450, 165, 22), 0, look("D", border=ACCENT),
     "/Q 1"),
    ("membership.fee", "Yearly fee", (395, 450, 150, 22), 0, look("I", 2), "/Q 2"),
    ("membership.password", "Password for the web site", (50, 408, 150, 22), PASSWORD,
     look("B", 2, fill="0.95 0.95 0.95"), "/MaxLen 20"),
    ("membership.motto", "Motto for the member card (as large as fits)", (215, 400, 330, 30), 0,
     look(border=ACCENT, fill="0.99 0.97 0.9"), "/Q 1 /DA (/TiRo 0 Tf 0.5 0.1 0.1 rg)"),
]
OTHERS = [
    ("remarks", "Remarks", (50, 248, 330, 100), MULTI_LINE, look(),
     "/DA (/Helv 0 Tf 0 g) /DV (None.)"),
    ("office.stamp", "Office", (505, 248, 40, 100), 0,
     look("D", border="0.7 0.2 0.2", fill="1 0.96 0.96", rotation=90),
     "/DA (/Cour 9 Tf 0.6 0.1 0.1 rg) /Q 1"),
    ("office.clerk", "Clerk", (395, 326, 105, 22), 0, look("U"), ""),
]


def rect(x, y, width, height):
    return f"/Rect [{x} {y} {x + width} {y + height}]"


def widget(page, box, appearance, extra):
    return (f"<< /Type /Annot /Subtype /Widget /F 4 /P {page} 0 R {rect(*box)} "
            f"{appearance} {extra} >>")


class Form:
    """The field tree: dotted names become parents and kids."""

    def __init__(self, pdf, page):
        self.pdf, self.page = pdf, page
        self.annots, self.top, self.groups = [], [], {}

    def group(self, name, extra=""):
        number = self.pdf.add()
        self.groups[name] = (number, [], extra)
        self.top.append(number)

    def field(self, name, box, flags, appearance, extra):
        group, dot, last = name.rpartition(".")
        entries = f"/FT /Tx /T ({last}) " + (f"/Ff {flags} " if flags else "") + extra
        if dot:
            entries += f" /Parent {self.groups[group][0]} 0 R"
        number = self.pdf.add(widget(self.page, box, appearance, entries))
        self.annots.append(number)
        (self.groups[group][1] if dot else self.top).append(number)

    def shared_field(self, group, name, boxes, appearance):
        """One field shown by several widgets."""
        field = self.pdf.add()
        kids = [self.pdf.add(widget(self.page, box, appearance, f"/Parent {field} 0 R"))
                for box in boxes]
        references = " ".join(f"{kid} 0 R" for kid in kids)
        parent = self.groups[group][0]
        self.pdf.set(field, f"<< /FT /Tx /T ({name}) /Ff {REQUIRED} /Parent {parent} 0 R "
                            f"/Kids [{references}] >>")
        self.annots += kids
        self.groups[group][1].append(field)

    def close_groups(self):
        for name, (number, kids, extra) in self.groups.items():
            references = " ".join(f"{kid} 0 R" for kid in kids)
            self.pdf.set(number, f"<< /T ({name}) {extra} /Kids [{references}] >>")


def draw_sheet():
    sheet = Sheet()
    sheet.box(0, 762, PAGE[0], 80, ACCENT)
    sheet.text(MARGIN, 800, 24, "Application for membership", "HeBo", "1 1 1")
    sheet.text(MARGIN, 778, 11, "Society of Friends of the Printed Form", "TiRo", "0.85 0.93 0.96")
    sheet.section(720, "1  The applicant")
    sheet.label(50, 688, "Full name")
    sheet.section(495, "2  The membership")
    sheet.section(368, "3  Anything else")
    sheet.section(195, "4  Declaration")
    sheet.text(50, 160, 10, "I,", "TiRo")
    sheet.text(285, 160, 10, "apply for membership and will keep the rules of the society.", "TiRo")
    sheet.text(50, 60, 8, "Please fill in with any program that keeps what you wrote.", colour=GREY)
    return sheet


def make_form():
    pdf = Pdf()
    catalog, pages, page = pdf.add(), pdf.add(), pdf.add()
    fonts = {name: pdf.add(f"<< /Type /Font /Subtype /Type1 /BaseFont /{base} "
                           f"/Encoding /WinAnsiEncoding >>")
             for name, base in [("Helv", "Helvetica"), ("HeBo", "Helvetica-Bold"),
                                ("TiRo", "Times-Roman"), ("Cour", "Courier")]}
    font_dict = "<< " + " ".join(f"/{name} {number} 0 R" for name, number in fonts.items()) + " >>"
    sheet, form = draw_sheet(), Form(pdf, page)

    form.group("applicant", "/DA (/Helv 11 Tf 0 0.15 0.35 rg)")
    form.group("membership")
    form.group("office")
    form.shared_field("applicant", "name", [(50, 660, 495, 24), (62, 154, 215, 18)], look())
    for name, label, box, flags, appearance, extra in (
            [("applicant." + entry[0], *entry[1:]) for entry in APPLICANT] + MEMBERSHIP + OTHERS):
        sheet.label(box[0], box[1] + box[3] + 4, label)
        form.field(name, box, flags, appearance, extra)
    form.close_groups()

    content = pdf.add(sheet.stream())
    fields = " ".join(f"{number} 0 R" for number in form.top)
    annots = " ".join(f"{number} 0 R" for number in form.annots)
    form_dict = pdf.add(f"<< /Fields [{fields}] /DR << /Font {font_dict} >> "
                        f"/DA (/Helv 10 Tf 0 g) /NeedAppearances true >>")
    pdf.set(catalog, f"<< /Type /Catalog /Pages {pages} 0 R /QuillForm {form_dict} 0 R >>")
    pdf.set(pages, f"<< /Type /Pages /Kids [{page} 0 R] /Count 1 >>")
    pdf.set(page, f"<< /Type /Page /Parent {pages} 0 R /MediaBox [0 0 {PAGE[0]} {PAGE[1]}] "
                  f"/Resources << /Font {font_dict} >> /Contents {content} 0 R "
                  f"/Annots [{annots}] >>")
    return pdf.bytes(catalog)


def main():
    default = pathlib.Path(__file__).with_name("membership.pdf")
    target = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    target.write_bytes(make_form())


if __name__ == "__main__":
    main()
