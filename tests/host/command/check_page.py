#!/usr/bin/env python3
"""Runs the command lines of a page, in its order and in one folder, and compares what they print and draw.

  check_page.py DOTWEAVE PAGE             checks the page
  check_page.py DOTWEAVE PAGE --rewrite   writes what the commands print and draw into the page and its pictures

A block of "console" has command lines after "$ " and below each what it prints on both outputs; milliseconds may
differ. A picture of the page must be one that a command draws: an SVG byte for byte, a PNG pixel for pixel.
"""
import os
import re
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

BLOCK = re.compile(r"(?<=^```console\n)(.*?)(?=^```$)", re.MULTILINE | re.DOTALL)
PICTURE = re.compile(r"!\[[^\]]*\]\((pictures/[^)]+)\)")
TIME = re.compile(r" *\d+ ms")


def run(line, tool, folder):
    environment = dict(os.environ, PATH=f"{tool.parent}:/usr/bin:/bin", LC_ALL="C.UTF-8")
    done = subprocess.run(["bash", "-c", line], cwd=folder, env=environment, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, check=False)
    if done.returncode != 0:
        sys.exit(f"$ {line}\n{done.stdout.decode()}exit status {done.returncode}")
    return done.stdout.decode()


def printed(block, tool, folder):
    """The block as it should be."""
    commands = [line for line in block.splitlines() if line.startswith("$ ")]
    return "".join(f"{line}\n{run(line[2:], tool, folder)}" for line in commands)


def pixels(png):
    """What a PNG file shows: its size and kind, and the pixels before they are packed."""
    chunks, at = {}, 8
    while at < len(png):
        size = int.from_bytes(png[at:at + 4], "big")
        name = png[at + 4:at + 8]
        chunks[name] = chunks.get(name, b"") + png[at + 8:at + 8 + size]
        at += size + 12
    return chunks[b"IHDR"], zlib.decompress(chunks[b"IDAT"])


def is_same(drawn, shown):
    if drawn.suffix == ".png":
        return pixels(drawn.read_bytes()) == pixels(shown.read_bytes())
    return drawn.read_bytes() == shown.read_bytes()


def main():
    tool, page = (Path(argument).resolve() for argument in sys.argv[1:3])
    text = page.read_text(encoding="utf-8")
    mistakes = []
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        rewritten = BLOCK.sub(lambda found: printed(found.group(1), tool, folder), text)
        pictures = [(folder / Path(picture).name, page.parent / picture) for picture in PICTURE.findall(text)]
        if sys.argv[3:] == ["--rewrite"]:
            page.write_text(rewritten, encoding="utf-8")
            for drawn, shown in pictures:
                shown.write_bytes(drawn.read_bytes())
            return
        for is_now, should_be in zip(BLOCK.findall(text), BLOCK.findall(rewritten), strict=True):
            if TIME.sub("", is_now) != TIME.sub("", should_be):
                mistakes.append(f"the page says\n{is_now}and the commands print\n{should_be}")
        mistakes += [f"{shown}: no command draws it like this" for drawn, shown in pictures
                     if not drawn.exists() or not shown.exists() or not is_same(drawn, shown)]
    if mistakes or not BLOCK.findall(text) or not pictures:
        sys.exit("\n".join(mistakes) or f"{page}: no commands or no pictures")


if __name__ == "__main__":
    main()
