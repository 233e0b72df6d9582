#!/usr/bin/env python3
"""Makes a report of a preset with the command and reads it as a browser would.

  check_report.py DOTWEAVE PRESET

The page is one file that loads nothing: every address in it is a data: address or a place in the page. Ids are unique,
every picture has a text alternative, every control has a name, there is one h1. The data of its scripts agree with
mask.json and mask.bin, which the command writes too.
"""
import base64
import json
import re
import subprocess
import sys
import tempfile
import zlib
from html.parser import HTMLParser
from pathlib import Path

PAGE_BYTES_MAX = 3_000_000
ADDRESSES = ("src", "href", "srcset", "action", "data", "poster", "xlink:href")
EMPTY = ("meta", "link", "img", "input", "br", "hr")


class Page(HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.elements, self.texts, self.open, self.mistakes = [], {}, [], []
        self.feed(text)
        self.close()
        if self.open:
            self.mistakes.append(f"<{self.open[-1]}> is not closed")

    def handle_starttag(self, tag, attributes):
        self.elements.append((tag, dict(attributes)))
        if tag not in EMPTY:
            self.open.append(tag)

    def handle_startendtag(self, tag, attributes):
        self.elements.append((tag, dict(attributes)))

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.mistakes.append(f"</{tag}> closes something else")

    def handle_data(self, data):
        if self.open and self.open[-1] in ("script", "style"):
            self.texts[len(self.elements) - 1] = self.texts.get(len(self.elements) - 1, "") + data

    def all(self, tag):
        return [attributes for name, attributes in self.elements if name == tag]


LOADS = re.compile(r"@import|url\(\s*['\"]?(?!data:)|\bfetch\(|XMLHttpRequest|WebSocket|^\s*import\b", re.MULTILINE)


def page_mistakes(page):
    yield from page.mistakes
    ids = [attributes["id"] for _, attributes in page.elements if "id" in attributes]
    yield from (f"id {one} is not unique" for one in set(ids) if ids.count(one) > 1)
    if len(page.all("h1")) != 1:
        yield f"{len(page.all('h1'))} h1"
    for tag, attributes in page.elements:
        for name in ADDRESSES:
            address = attributes.get(name, "data:")
            if not address.startswith(("data:", "#")):
                yield f"<{tag}> loads {address}"
            if address.startswith("#") and address[1:] not in ids:
                yield f"<{tag}> points at {address}, which is not there"
        for name in ("for", "aria-labelledby", "data-for"):
            if name in attributes and attributes[name] not in ids:
                yield f"<{tag}> names {attributes[name]}, which is not there"
        if tag == "img" and not attributes.get("alt"):
            yield "a picture has no text alternative"
    labelled = [attributes.get("for") for attributes in page.all("label")]
    controls = [attributes.get("id") for tag in ("input", "select") for attributes in page.all(tag)]
    yield from (f"{control} has no label" for control in controls if control not in labelled)
    policies = [one["content"] for one in page.all("meta") if one.get("http-equiv") == "Content-Security-Policy"]
    if len(policies) != 1 or "default-src 'none'" not in policies[0]:
        yield "the page may load files"
    for text in page.texts.values():
        if LOADS.search(text):
            yield "a style or a script loads something"


def png_lines(file):
    """The packed lines of a greyscale PNG of 1 bit, each byte as in the file: 1 is white."""
    assert file[:8] == b"\x89PNG\r\n\x1a\n"
    place, packed, head = 8, b"", None
    while place < len(file):
        size, kind = int.from_bytes(file[place:place + 4], "big"), file[place + 4:place + 8]
        body = file[place + 8:place + 8 + size]
        assert zlib.crc32(kind + body) == int.from_bytes(file[place + 8 + size:place + 12 + size], "big")
        head = body if kind == b"IHDR" else head
        packed += body if kind == b"IDAT" else b""
        place += 12 + size
    width, height = int.from_bytes(head[:4], "big"), int.from_bytes(head[4:8], "big")
    assert head[8:10] == b"\x01\x00" and head[12] == 0, "not 1 bit of grey, line after line"
    stride, raw, above, lines = (width + 7) // 8, zlib.decompress(packed), bytes((width + 7) // 8), []
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            left, up, corner = (line[i - 1] if i else 0), above[i], (above[i - 1] if i else 0)
            guess = left + up - corner
            nearest = min((left, up, corner), key=lambda one: abs(guess - one))
            line[i] = (line[i] + (0, left, up, (left + up) // 2, nearest)[kind]) % 256
        above = bytes(line)
        lines.append(above)
    return width, lines


def data_mistakes(page, data, folder):
    built = json.loads((folder / "mask.json").read_text(encoding="utf-8"))
    for name in ("dotweave", "input", "current", "warnings", "geometry", "layout"):
        if data["mask"][name] != built[name]:
            yield f"{name} is not that of mask.json"
    geometry, bits = built["geometry"], (folder / "mask.bin").read_bytes()
    pictures = data["masks"]["pictures"]
    if [len(one) for one in pictures] != [geometry["positionCount"]] * geometry["colorCount"]:
        yield "masks are missing" # of a mode with very many of them they would be
    first = next(one["src"] for one in page.all("img") if one.get("id") == "mask-picture")
    for color, positions in enumerate(pictures):
        for position, address in enumerate(positions):
            width, lines = png_lines(base64.b64decode((address or first).partition(",")[2], validate=True))
            if width > geometry["MaskWidth"] or len(lines) > geometry["MaskHeight_IncludeRes"]:
                yield "a mask is larger than it is"
            if geometry["BitsPerPixel"] != 1:
                continue
            begin = color * geometry["MaskBytes_OneColor"] + position * geometry["MaskBytes_OnePosition"]
            stride = geometry["MaskLineBytes_OneColor"]
            for y, line in enumerate(lines): # a large mask is shown in part, by its first lines and columns
                there = bits[begin + y * stride:begin + y * stride + len(line)]
                padding = 8 * len(line) - width
                if int.from_bytes(line, "big") >> padding ^ int.from_bytes(there, "big") >> padding != (1 << width) - 1:
                    yield f"line {y} of colour {color}, position {position} is another one"
                    break
    window = data["sketch"]["window"]
    if window["stepLines"] != geometry["StepHeight_IncludeRes"] or window["yResPass"] != geometry["YResPass"]:
        yield "the sketch has another geometry"
    if any(len(mark["lines"]) != window["lineCount"] for mark in data["sketch"]["marks"]):
        yield "a mark has another window"
    if len(data["sketch"]["weights"]) != window["lineCount"] // 2 + 1:
        yield "the sketch has too few weights"


def main():
    tool, preset = Path(sys.argv[1]).resolve(), sys.argv[2]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for arguments in (["report", "--out", folder / "report.html"], ["build", "--out", folder, "--png", "none"]):
            run = subprocess.run([tool, *arguments, "--preset", preset, "--quiet"], check=True, capture_output=True)
            if run.stderr or run.stdout:
                sys.exit(f"a quiet run prints {run.stdout + run.stderr}")
        text = (folder / "report.html").read_text(encoding="ascii")
        page = Page(text)
        place = next(i for i, one in enumerate(page.elements) if one[1].get("id") == "report-data")
        mistakes = list(page_mistakes(page)) + list(data_mistakes(page, json.loads(page.texts[place]), folder))
        if len(text) > PAGE_BYTES_MAX:
            mistakes.append(f"{len(text)} bytes, at most {PAGE_BYTES_MAX} are wanted")
    if mistakes:
        sys.exit("\n".join(mistakes))


if __name__ == "__main__":
    main()
