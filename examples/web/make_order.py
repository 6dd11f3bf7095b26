#!/usr/bin/env python3
"""Writes order.pdf, a form that a server answers: buttons that send it and one that clears it.

    examples/web/make_order.py [OUTPUT]

cgi-bin/answer.py is the server's part. The form carries no appearances but those of the check box.
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "forms"))
from make_form import ACCENT, MARGIN, Pdf, REQUIRED, Sheet, look, rect  # noqa: E402

PAGE = (420, 420)
PUSH_BUTTON = 0x10000
SEND = "/A << /S /SubmitForm /F << /FS /URL /F (cgi-bin/answer.py) >> %s >>"

# name, label, rectangle (x, y, width, height), further entries
FIELDS = [
    ("name", "Your name", (50, 290, 150, 22), f"/FT /Tx /Ff {REQUIRED}"),
    ("city", "Town", (220, 290, 150, 22), "/FT /Tx /DV (Oslo) /V (Oslo)"),
    ("reply", "The server's answer", (50, 90, 320, 22), "/FT /Tx"),
    ("seen", "What it was sent", (50, 50, 320, 22), "/FT /Tx"),
    ("kind", "In which form", (50, 10, 320, 22), "/FT /Tx"),
]
BUTTONS = [
    ("send", "Send", (50, 180, 90, 28), SEND % ""),
    ("pairs", "Send as pairs", (150, 180, 110, 28), SEND % "/Flags 4"),
    ("clear", "Clear", (270, 180, 100, 28), "/A << /S /ResetForm >>"),
]


def make_order():
    pdf = Pdf()
    catalog, pages, page = pdf.add(), pdf.add(), pdf.add()
    fonts = " ".join(f"/{name} {pdf.add(f'<< /Type /Font /Subtype /Type1 /BaseFont /{base} >>')} 0 R"
                     for name, base in [("Helv", "Helvetica"), ("HeBo", "Helvetica-Bold"),
                                        ("TiRo", "Times-Roman"), ("ZaDb", "ZapfDingbats")])
    sheet, fields = Sheet(), []

    def widget(entries):
        fields.append(pdf.add(f"<< /Type /Annot /Subtype /Widget /F 4 /P {page} 0 R {entries} >>"))

    sheet.box(0, 360, PAGE[0], 60, ACCENT)
    sheet.text(MARGIN, 382, 20, "Order a form", "HeBo", "1 1 1")
    for name, label, box, entries in FIELDS:
        sheet.label(box[0], box[1] + box[3] + 4, label)
        widget(f"{entries} /T ({name}) {rect(*box)} {look()}")
    mark = pdf.add("<< /Type /XObject /Subtype /Form /BBox [0 0 14 14] /Length 0 >>\n"
                   "stream\n\nendstream")
    widget(f"/FT /Btn /T (express) {rect(50, 240, 14, 14)} /AS /Off /V /Off "
           f"/AP << /N << /Yes {mark} 0 R /Off {mark} 0 R >> >> /DA (/ZaDb 0 Tf 0 g) "
           f"/MK << /CA (4) /BC [0.5 0.5 0.5] >>")
    sheet.text(72, 243, 10, "By express")
    for name, caption, box, action in BUTTONS:
        widget(f"/FT /Btn /Ff {PUSH_BUTTON} /T ({name}) {rect(*box)} {action} /BS << /W 2 /S /B >> "
               f"/MK << /CA ({caption}) /BG [0.85 0.9 0.92] /BC [0.4 0.5 0.55] >>")

    content = pdf.add(sheet.stream())
    references = " ".join(f"{number} 0 R" for number in fields)
    pdf.set(catalog, f"<< /Type /Catalog /Pages {pages} 0 R /QuillForm << /Fields [{references}] "
                     f"/DR << /Font << {fonts} >> >> /DA (/Helv 10 Tf 0 g) "
                     f"/NeedAppearances true >> >>")
    pdf.set(pages, f"<< /Type /Pages /Kids [{page} 0 R] /Count 1 >>")
    pdf.set(page, f"<< /Type /Page /Parent {pages} 0 R /MediaBox [0 0 {PAGE[0]} {PAGE[1]}] "
                  f"/Resources << /Font << {fonts} >> >> /Contents {content} 0 R "
                  f"/Annots [{references}] >>")
    return pdf.bytes(catalog)


if __name__ == "__main__":
    default = pathlib.Path(__file__).with_name("order.pdf")
    target = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    target.write_bytes(make_order())
