#!/usr/bin/env python3
"""Takes a form as FDF or as name=value pairs and answers with FDF that fills in its fields."""
import os
import re
import sys
from urllib.parse import parse_qs

STRING = r"\(((?:[^()\\]|\\.)*)\)"


def unescape(text):
    return re.sub(r"\\(.)", r"\1", text)


def from_fdf(text):
    """The flat fields of an FDF file: dictionaries with T and V and nothing nested."""
    values = {}
    for entry in re.findall(r"<<([^<>]*)>>", text):
        name = re.search(r"/T\s*" + STRING, entry)
        value = re.search(r"/V\s*(?:" + STRING + r"|/([^\s/<>]+))", entry)
        if name:
            found = (value.group(1) or value.group(2) or "") if value else ""
            values[unescape(name.group(1))] = unescape(found)
    return values


def field(name, value):
    escaped = re.sub(r"([()\\])", r"\\\1", value)
    return "<< /T (%s) /V (%s) >>" % (name, escaped)


def main():
    kind = os.environ.get("CONTENT_TYPE", "")
    text = sys.stdin.buffer.read(int(os.environ.get("CONTENT_LENGTH") or 0)).decode("latin-1")
    if kind == "application/vnd.fdf":
        values = from_fdf(text)
    else:
        pairs = parse_qs(text, keep_blank_values=True, encoding="latin-1")
        values = {name: found[0] for name, found in pairs.items()}
    seen = " ".join("%s=%s" % pair for pair in sorted(values.items()))
    fields = field("reply", "Thank you, %s" % values.get("name", "nobody")) + field("seen", seen)
    fields += field("kind", kind)
    body = "%%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [%s] >> >>\nendobj\n" % fields
    body += "trailer\n<< /Root 1 0 R >>\n%%EOF\n"
    sys.stdout.write("Content-Type: application/vnd.fdf\n\n" + body)


main()
