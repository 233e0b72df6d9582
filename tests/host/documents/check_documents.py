#!/usr/bin/env python3
"""Fails when a document points at something that is not there.

  check_documents.py ROOT          checks the documents of the tree at ROOT
  check_documents.py --self-test   checks a small tree with one mistake of each kind

Checked are links to files and headings, and names in backticks: paths that begin with a folder of the tree, source
files such as `maskparam.h`, and test files such as `maskparam_test`. A name may have `*` and
`<placeholder>` in it. A path to a program, such as `tests/fuzz/fuzz_record`, counts as there when its source file is.
Conflict markers are mistakes as well.
"""
import fnmatch
import re
import sys
import tempfile
from pathlib import Path

DOCUMENTS = ("*.md", "docs/*.md", "data/*.md", "benchmarks/*.md", "examples/*.md", "tests/*.md")
FOLDERS = ("benchmarks", "cmake", "data", "docs", "examples", "include", "instrument", "packages", "platform", "presets", "share", "src",
           "tests", "tools")
NOT_SOURCES = re.compile(r"build.*|out|\.git")
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
NAME = re.compile(r"`([^`\n]+)`")
PATH = re.compile(rf"(?:{'|'.join(FOLDERS)})/[\w./*<>-]*")
SOURCE_FILE = re.compile(r"[\w*<>-]+\.(?:cpp|h|S|py|cmake|sh|md)")
TEST_FILE = re.compile(r"[\w*<>]+_test")
ENDINGS = ("", ".cpp", ".h", ".md")


def tree_files(root):
    """All files and folders below root as posix paths, without build folders."""
    paths = set()
    folders = [root]
    while folders:
        for entry in folders.pop().iterdir():
            if entry.parent == root and NOT_SOURCES.fullmatch(entry.name):
                continue
            paths.add(entry.relative_to(root).as_posix())
            if entry.is_dir():
                folders.append(entry)
    return paths


def headings(text):
    """The anchors of a page, as the usual Markdown viewers make them from its headings."""
    titles = re.findall(r"^#+ (.+)$", text, re.MULTILINE)
    return {re.sub(r"[^\w -]", "", title.lower()).replace(" ", "-") for title in titles}


def link_mistake(root, document, target):
    if re.match(r"\w+:", target):
        return None
    name, _, anchor = target.partition("#")
    file = (document.parent / name) if name else document
    if not file.exists():
        return f"links to {target}, which is not there"
    if anchor and anchor not in headings(file.read_text(encoding="utf-8")):
        return f"links to {target}, but {file.relative_to(root)} has no such heading"
    return None


def is_there(name, paths, base_names):
    """Whether a name matches a path of the tree, or the name of any file when it has no folder."""
    pattern = re.sub(r"<[^>]*>", "*", name).rstrip("/")
    candidates = paths if "/" in pattern else base_names
    return any(fnmatch.filter(candidates, pattern + ending) for ending in ENDINGS)


def mistakes(root):
    paths = tree_files(root)
    base_names = {path.rsplit("/", 1)[-1] for path in paths}
    for document in sorted(file for pattern in DOCUMENTS for file in root.glob(pattern)):
        for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
            found = [link_mistake(root, document, target) for target in LINK.findall(line)]
            if line.startswith(("<<<<<<< ", ">>>>>>> ")):
                found.append("has a conflict that nobody resolved")
            for name in NAME.findall(line):
                is_name = any(pattern.fullmatch(name) for pattern in (PATH, SOURCE_FILE, TEST_FILE))
                if is_name and not is_there(name, paths, base_names):
                    found.append(f"names `{name}`, which is not there")
            yield from (f"{document.relative_to(root)}:{number}: {text}" for text in found if text)


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        for name in ("docs", "src", "tests/fuzz", "build"):
            (root / name).mkdir(parents=True)
        for name in ("src/log.cpp", "src/log.h", "tests/log_test.cpp", "tests/fuzz/fuzz_log.cpp", "build/gone.h"):
            (root / name).touch()
        (root / "docs/log.md").write_text("# The log\n\n## How it is read, in short\n", encoding="utf-8")
        (root / "README.md").write_text(
            "[a](docs/log.md) [b](docs/log.md#how-it-is-read-in-short) [c](https://example.org/x) `src/log.*`\n"
            "`log.h` `log_test` `src/` `tests/fuzz/fuzz_log` `tests/fuzz/fuzz_<name>` `log.json` `cmake --build .`\n"
            "[d](docs/gone.md)\n[e](docs/log.md#gone)\n`src/gone.cpp`\n`gone.h`\n`gone_test`\n`tests/gone_*`\n"
            "<<<<<<< ours\n",
            encoding="utf-8")
        lines = [int(text.split(":")[1]) for text in mistakes(root)]
    if lines != [3, 4, 5, 6, 7, 8, 9]:
        sys.exit(f"found mistakes in lines {lines}, not in lines 3 to 9")


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    found = list(mistakes(Path(sys.argv[1])))
    return sys.exit("\n".join(found)) if found else None


if __name__ == "__main__":
    main()
