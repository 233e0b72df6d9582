#!/usr/bin/env python3
"""Fails when a file includes against the flow of the data.

  check_layers.py ROOT              checks the tree at ROOT
  check_layers.py --self-test ROOT  plants one mistake of each kind into copies of the tree at ROOT

The rules are the tables of docs/architecture.md, each under its heading:
  Levels         level and name | files of src/ and include/ | levels that these files include
  Rooms          folder | description | folders that its files include; the longest folder counts
  Libraries      headers of other libraries | the only files and folders of the product that include them
  Kept away      folder | texts that its code never has
Files and folders are in backticks; a file without an ending is both its header and its source.
"""
import fnmatch
import re
import shutil
import sys
import tempfile
from pathlib import Path

PRODUCT = ("include", "src", "platform", "instrument", "tools", "examples")
CHECKED = PRODUCT + ("tests/reference",)
ENDINGS = (".h", ".cpp", ".S")
# Where the compiler finds headers of the tree.
INCLUDE_FOLDERS = ("include", "src/dotweave", "instrument", "tools/*", "platform/*/include", "platform/*/src",
                   "tests/support", "tests/reference")
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)


def table(text, heading):
    """The rows of the table under a heading, without its head; a cell is the list of its names in backticks and its
    text without them."""
    section = re.search(rf"^## {heading}\n(.*?)(?=^## |\Z)", text, re.MULTILINE | re.DOTALL)
    rows = re.findall(r"^\|(.*)\|$", section.group(1) if section else "", re.MULTILINE)[2:]
    if not rows:
        sys.exit(f"docs/architecture.md: no table under \"{heading}\"")
    return [[(re.findall(r"`([^`]+)`", cell), re.sub(r"`[^`]+`", "", cell).strip()) for cell in row.split("|")]
            for row in rows]


def numbers(text):
    """"1, 3 to 5" as {1, 3, 4, 5}."""
    found = set()
    for first, last in re.findall(r"(\d+)(?: to (\d+))?", text):
        found.update(range(int(first), int(last or first) + 1))
    return found


def is_in(path, folders):
    return any(path == folder or (folder.endswith("/") and path.startswith(folder)) for folder in folders)


def name_matches(path, name):
    short = re.sub(r"^(?:src|include)/dotweave/", "", path)
    return any(fnmatch.fnmatch(short, name + ending) for ending in ("",) + ENDINGS)


class Rules:
    def __init__(self, page):
        self.levels = [(name, int(re.match(r"\d+", head).group()), numbers(below))
                       for (_, head), (names, _), (_, below) in table(page, "Levels") for name in names]
        self.rooms = {folder: allowed for (folders, _), _, (allowed, _) in table(page, "Rooms") for folder in folders}
        self.libraries = [(headers, places) for (headers, _), (places, _) in table(page, "Libraries")]
        self.kept_away = [(folders, texts) for (folders, _), (texts, _) in table(page, "Kept away")]

    def level(self, path):
        """Level of a file of the library, and the levels that it includes; of several names the longest counts."""
        found = [(len(name), number, below) for name, number, below in self.levels if name_matches(path, name)]
        return max(found, key=lambda one: one[0])[1:] if found else None

    def room(self, path):
        found = [folder for folder in self.rooms if path.startswith(folder)]
        return max(found, key=len) if found else None


def find_include(root, file, name):
    """The file of the tree that an include means; None for other libraries."""
    for folder in [file.parent] + [found for pattern in INCLUDE_FOLDERS for found in sorted(root.glob(pattern))]:
        if (folder / name).is_file():
            return (folder / name).resolve().relative_to(root).as_posix()
    return None


def include_mistakes(rules, path, target):
    room = rules.room(path)
    if room is None:
        yield "is in no room"
    elif not is_in(target, rules.rooms[room]):
        yield f"includes {target}, which {room} never does"
    if path.startswith(("src/", "include/")) and target.startswith(("src/", "include/")):
        own, other = rules.level(path), rules.level(target)
        if own is None:
            yield "is in no level"
        elif other is not None and other[0] not in own[1]:
            yield f"of level {own[0]} includes {target} of level {other[0]}"


def mistakes(root):
    rules = Rules((root / "docs/architecture.md").read_text(encoding="utf-8"))
    files = sorted(file for folder in CHECKED for file in (root / folder).rglob("*") if file.suffix in ENDINGS)
    for file in files:
        path = file.relative_to(root).as_posix()
        code = COMMENT.sub("", file.read_text(encoding="utf-8"))
        for name in INCLUDE.findall(code):
            target = find_include(root, file, name)
            if target is not None:
                yield from (f"{path}: {text}" for text in include_mistakes(rules, path, target))
            for headers, places in rules.libraries:
                is_meant = any(fnmatch.fnmatch(f"<{name}>", header) for header in headers)
                if path.startswith(PRODUCT) and is_meant and not is_in(path, places):
                    yield f"{path}: includes <{name}>, which is left to {', '.join(places)}"
        for folders, texts in rules.kept_away:
            yield from (f"{path}: has {text}" for text in texts if is_in(path, folders) and text in code)
    paths = [file.relative_to(root).as_posix() for file in files]
    for name, *_ in rules.levels:
        if "*" not in name and not any(name_matches(path, name) for path in paths):
            yield f"docs/architecture.md: no file is called {name}"


PLANTED = (
    ("src/dotweave/maskdatagenerator.cpp", '#include "dotweave/maskdata_base.h"', "of level 6"),
    ("src/dotweave/maskdata_base.cpp", '#include "maskdatagenerator.h"', "of level 7"),
    ("include/dotweave/maskparam.h", '#include "dotweave/cuttable.h"\n#include "dotweave/maskblock.h"', "of level 1"),
    ("src/dotweave/maskblock.cpp", "#include <boost/log/core.hpp>", "includes <boost/log/core.hpp>"),
    ("src/dotweave/newunit.h", '#include "constants.h"', "is in no level"),
    ("instrument/record/recordjson.cpp", '#include "../../src/dotweave/constants.h"', "includes src/"),
    ("instrument/view/maskview.cpp", '#include "picture/maskpicture.h"', "includes instrument/picture/"),
    ("instrument/sheet/tint.cpp", '#include "figures/lightness.h"', "includes instrument/figures/"),
    ("instrument/figures/banding.cpp", "#include <kissfft/kissfft.hh>", "includes <kissfft/kissfft.hh>"),
    ("instrument/picture/maskpicture.cpp", "#include <fstream>", "has <fstream>"),
    ("instrument/picture/cuttableplot.cpp", "auto* file = std::fopen(name, mode);", "has fopen"),
    ("instrument/record/recordfields.cpp", "#include <CLI/CLI.hpp>", "includes <CLI/CLI.hpp>"),
    ("tools/dotweave/main.cpp", '#include "log.h"', "includes src/"),
    ("tests/reference/printlaw.h", '#include "view/maskview.h"', "includes instrument/"),
)


def self_test(root):
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder).resolve()
        for name in CHECKED + ("docs", "tests/support"):
            shutil.copytree(root / name, copy / name, dirs_exist_ok=True)
        before = set(mistakes(copy))
        for path, text, _ in PLANTED:
            file = copy / path
            file.write_text(f"{text}\n{file.read_text(encoding='utf-8') if file.exists() else ''}", encoding="utf-8")
        found = sorted(set(mistakes(copy)) - before)
        expected = sorted(f"{path}: {mistake}" for path, _, mistake in PLANTED)
        if len(found) != len(expected) or not all(map(str.startswith, found, expected)):
            sys.exit("\n".join(["planted:"] + expected + ["found:"] + found))


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "--self-test":
        return self_test(Path(sys.argv[2]).resolve())
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    found = list(mistakes(Path(sys.argv[1]).resolve()))
    return sys.exit("\n".join(found)) if found else None


if __name__ == "__main__":
    main()
