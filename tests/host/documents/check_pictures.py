#!/usr/bin/env python3
"""Runs the commands that docs/cut-tables.md gives for its plots and compares the plots with those in docs/pictures.

  check_pictures.py DOTWEAVE ROOT
"""
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path

COMMAND = re.compile(r"^    dotweave (cuttable .*--svg (\S+).*)$", re.MULTILINE)


def main():
    tool, root = (Path(argument).resolve() for argument in sys.argv[1:3])
    pictures = root / "docs/pictures"
    page = (root / "docs/cut-tables.md").read_text(encoding="utf-8")
    commands = COMMAND.findall(re.sub(r"\\\n +", "", page))
    failures = [f"{path.name}: no command" for path in pictures.glob("cuttable-*.svg")
                if path.name not in [name for _, name in commands]]
    with tempfile.TemporaryDirectory() as folder:
        for arguments, name in commands:
            subprocess.run([tool, *shlex.split(arguments)], cwd=folder, check=True, stdout=subprocess.DEVNULL)
            if (Path(folder) / name).read_bytes() != (pictures / name).read_bytes():
                failures.append(f"{name}: the command draws another plot")
    if failures or not commands:
        sys.exit("\n".join(failures) or "no commands found")


if __name__ == "__main__":
    main()
