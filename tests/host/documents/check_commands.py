#!/usr/bin/env python3
"""Runs the command lines that a page shows, in their order and in one folder, and compares the pictures that they
make with those of the same name in docs/pictures.

  check_commands.py DOTWEAVE ROOT PAGE...

A command line is an indented line that starts with "dotweave". "(exit status N)" in the paragraph after it says how
it ends; else it ends with 0.
"""
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path

COMMAND = re.compile(r"^    dotweave (.+)$(?:\n\n\(exit status (\d)\))?", re.MULTILINE)
PICTURE = re.compile(r"\]\(pictures/([^)]+)\)")


def main():
    tool, root = (Path(argument).resolve() for argument in sys.argv[1:3])
    failures = []
    for page in sys.argv[3:]:
        text = re.sub(r"\\\n +", "", (root / "docs" / page).read_text(encoding="utf-8"))
        commands = COMMAND.findall(text)
        if not commands:
            failures.append(f"{page}: no command lines found")
        with tempfile.TemporaryDirectory() as folder:
            for words, status in commands:
                run = subprocess.run([tool, *shlex.split(words)], cwd=folder, capture_output=True, text=True)
                if run.returncode != int(status or 0):
                    failures.append(f"{page}: dotweave {words}: exit status {run.returncode}: {run.stderr}")
            made = {path.name: path for path in Path(folder).rglob("*")}
            for name in PICTURE.findall(text):
                if name not in made:
                    failures.append(f"{page}: no command makes {name}")
                elif made[name].read_bytes() != (root / "docs/pictures" / name).read_bytes():
                    failures.append(f"{page}: the command draws another {name}")
    sys.exit("\n".join(failures) or None)


if __name__ == "__main__":
    main()
