#!/usr/bin/env python3
"""Writes files of about 10 MB that try to cost their reader much time or memory.

    make_hostile.py FOLDER

Each has a form with one field named "a", so that `quillon fill FILE a=x -o OUTPUT` goes through all
of it. docs/reliability.md tells what bounds them.
"""
import pathlib
import sys
import zlib

SIZE = 10_000_000
FONTS = b"/DA(/Helv 0 Tf 0 g)/DR<</Font<</Helv<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>>>"
FIELD = b"/T(a)/Subtype/Widget/Type/Annot/Rect[0 0 50 20]/P 3 0 R"
PAGE = b"/Type/Page/Parent 2 0 R/MediaBox[0 0 100 100]"
CATALOG = b"/Type/Catalog/Pages 2 0 R/QuillForm<</Fields[%s]" + FONTS + b">>"
DEFLATE = b"/Filter/FlateDecode"
MEMBERS = b"/Type/ObjStm/N 10/First 100"


def obj(number, text):
    return b"%d 0 obj%sendobj\n" % (number, text)


FORM = (b"%PDF-1.7\n" + obj(1, b"<<" + CATALOG % b"4 0 R" + b">>") +
        obj(2, b"<</Type/Pages/Kids[3 0 R]/Count 1>>") +
        obj(3, b"<<" + PAGE + b"/Annots[4 0 R]>>") + obj(4, b"<</FT/Tx" + FIELD + b">>"))


def stream(number, entries, data):
    return obj(number, b"<<%s/Length %d>>stream\n" % (entries, len(data)) + data + b"\nendstream ")


def each(text, length):
    """An object of this text for each of as many numbers as fit."""
    return b"".join(b"%d 0 obj%s" % (n, text) for n in range(5, SIZE // length))


def chain(first, text):
    """Objects that each name the one before and the one behind."""
    return b"".join(obj(n, text % (n - 1 if n > 10 else first, n + 1))
                    for n in range(10, SIZE // 60))


def zeros(size, levels=1):
    deflate = zlib.compressobj(9)
    parts = [deflate.compress(bytes(1_000_000)) for _ in range(size // 1_000_000)]
    data = b"".join(parts) + deflate.flush()
    for _ in range(levels - 1):
        data = zlib.compress(data, 9)
    return data


def members_of_same_bytes():
    index = b"".join(b"%d 0 " % n for n in range(10, 20010))
    array = b"[" + b"()" * 500_000 + b"]"
    return stream(5, b"/Type/ObjStm/N 20000/First %d" % len(index) + DEFLATE,
                  zlib.compress(index + array, 9))


def found_by_reading(body):
    return FORM + body + b"trailer<</Root 1 0 R/Size 5>>\n%%EOF\n"


def with_cross_references(section):
    return FORM + section + b"startxref\n%d\n%%%%EOF\n" % len(FORM)


def xref_stream(entries, data):
    return stream(9, b"/Type/XRef/Root 1 0 R" + DEFLATE + entries, data)


def xref_chain():
    data, out, previous = zeros(90_000_000), FORM, None
    while len(out) < SIZE:
        entries = b"/W[1 1 1]/Size 5" + (b"/Prev %d" % previous if previous else b"")
        previous = len(out)
        out += xref_stream(entries, data)
    return out + b"startxref\n%d\n%%%%EOF\n" % previous


def bodies():
    bomb = zeros(400_000_000)
    kids = b"<</Type/Pages/Count 1/Kids[%s]>>"
    one = SIZE // 6
    yield "nesting", b"5 0 obj" + b"[" * SIZE
    yield "nested-dictionaries", b"5 0 obj" + b"<</A" * (SIZE // 4)
    yield "strings", each(b"(", 14)
    yield "hex-strings", each(b"<", 14)
    yield "streams-without-end", each(b"<<>>stream\n", 22)
    yield "streams-with-one-end", each(b"<<>>stream\n", 22) + b"endstream endobj\n"
    yield "words-stream", b"5 0 obj<<>>" + b"stream\n" * (SIZE // 7)
    yield "words-endobj", b"5 0 obj<<>>stream\n" + b"endobj\n" * (SIZE // 7)
    yield "trailers", b"trailer(" * (SIZE // 8)
    yield "empty-strings", obj(5, b"[" + b"()" * (SIZE // 2) + b"]")
    yield "empty-arrays", obj(5, b"[" + b"[]" * (SIZE // 2) + b"]")
    yield "one-key", obj(5, b"<<" + b"/A 1" * (SIZE // 4) + b">>")
    yield "many-keys", obj(5, b"<<" + b"".join(b"/%x 1" % n for n in range(SIZE // 9)) + b">>")
    yield "high-numbers", b"".join(obj(n * 1024 + 7, b"[]") for n in range(8190))
    yield "many-objects", each(b" 1 endobj\n", 20)
    yield "comments", b"5 0 obj" + b"%\n" * (SIZE // 2) + b"1 endobj\n"
    yield "blanks", b"5 0 obj " + b" " * SIZE + b"obj\n"
    yield "annotations", obj(3, b"<<" + PAGE + b"/Annots[" + b"4 0 R " * one + b"]>>")
    yield "kids", obj(2, kids % (b"3 0 R " * one))
    yield "null-kids", obj(2, kids % (b"null " * (SIZE // 5)))
    yield "fields", obj(1, b"<<" + CATALOG % (b"4 0 R " * one) + b">>")
    yield "kids-of-a-field", obj(4, b"<</FT/Tx/T(a)/Kids[" + b"4 0 R " * one + b"]>>")
    yield "field-levels", (obj(4, b"<</T(a)/Kids[10 0 R]>>") +
                           chain(4, b"<</T(a)/Parent %d 0 R/Kids[%d 0 R]>>"))
    yield "page-levels", (obj(2, kids % b"10 0 R") +
                          chain(2, b"<</Type/Pages/Parent %d 0 R/Kids[%d 0 R]>>"))
    yield "options", obj(4, b"<</FT/Ch/Ff 131072" + FIELD + b"/Opt[" + b"(a)" * 2_200_000 +
                         b" " * 3_400_000 + b"]>>")
    yield "bombs", stream(5, MEMBERS + DEFLATE, bomb) + stream(6, MEMBERS + DEFLATE, bomb)
    yield "chained-bomb", stream(5, MEMBERS + b"/Filter[/FlateDecode/FlateDecode]",
                                 zeros(400_000_000, 2))
    yield "object-streams", b"".join(stream(n, MEMBERS + DEFLATE, zeros(90_000_000))
                                     for n in range(10, 120))
    yield "same-members", members_of_same_bytes()
    yield "appearance-bomb", (obj(4, b"<</FT/Tx/AP<</N 6 0 R>>" + FIELD + b">>") +
                              stream(6, b"/Subtype/Form/BBox[0 0 50 20]" + DEFLATE, bomb))


def files():
    for name, body in bodies():
        yield name, found_by_reading(body)
    count = 8_388_607
    yield "xref-bomb", with_cross_references(
        xref_stream(b"/W[1 1 1]/Size 8000000", zeros(400_000_000)))
    yield "xref-of-all", with_cross_references(
        xref_stream(b"/W[1 1 1]/Size %d" % count, zlib.compress(b"\1\1\1" * count, 9)))
    yield "xref-of-free", with_cross_references(
        xref_stream(b"/W[1 0 0]/Size %d" % count, zeros(8_000_000)))
    yield "xref-count", with_cross_references(
        b"xref\n0 999999999\n" + b"0000000009 00000 n \n" * (SIZE // 20) +
        b"trailer<</Root 1 0 R/Size 5>>\n")
    yield "xref-chain", xref_chain()


def main():
    folder = pathlib.Path(sys.argv[1])
    for name, data in files():
        (folder / f"{name}.pdf").write_bytes(data)


if __name__ == "__main__":
    main()
