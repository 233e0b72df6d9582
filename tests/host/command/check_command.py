#!/usr/bin/env python3
"""Reads what the command writes with other people's programs: NumPy, a JSON schema, CSV and XML readers, man, bash.

  check_command.py DOTWEAVE MANUAL COMPLETION ROOT TEST

TEST is one of the functions below.
"""
import csv
import io
import json
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml
from pathlib import Path

MODE = ("--nozzle-count", "48", "--base-pass", "3", "--y-res-pass", "2", "--color-count", "3")


class Tool:
    def __init__(self, program):
        self.program = program

    def run(self, *words, statuses=(0,)):
        done = subprocess.run([self.program, *map(str, words)], stdout=subprocess.PIPE, check=False)
        assert done.returncode in statuses, f"{words}: exit status {done.returncode}"
        return done.stdout


def arrays(tool, folder, *_):
    """The NumPy file is an array of the shape in mask.json, whose bits are those of mask.bin."""
    import numpy
    for bits in (1, 2):
        mode = (*MODE, "--bits-per-pixel", bits)
        tool.run("build", "--quiet", "--png", "none", "--out", folder, *mode)
        tool.run("export", "--quiet", "--out", folder / "masks.npy", *mode)
        geometry = json.loads((folder / "mask.json").read_text())["geometry"]
        array = numpy.load(folder / "masks.npy", allow_pickle=False)
        shape = (geometry["colorCount"], geometry["positionCount"], geometry["MaskHeight_IncludeRes"],
                 geometry["MaskWidth"])
        assert array.dtype == numpy.uint8 and array.shape == shape, (array.dtype, array.shape, shape)
        lines = numpy.fromfile(folder / "mask.bin", numpy.uint8).reshape(*shape[:3], geometry["MaskLineBytes_OneColor"])
        pixels = numpy.unpackbits(lines, axis=3)[..., :geometry["MaskWidth"] * bits:bits]
        assert (pixels == array).all() and array.any()


def schemas(tool, folder, root, *_):
    """Every JSON output is as its schema says, and every schema refuses an output with one member more."""
    import jsonschema

    def check(name, text):
        schema = json.loads((root / f"share/schemas/{name}.schema.json").read_text())
        validator = jsonschema.Draft202012Validator(schema)
        validator.check_schema(schema)
        value = json.loads(text)
        validator.validate(value)
        (value[0] if isinstance(value, list) else value)["unexpected"] = 1
        assert not validator.is_valid(value), f"{name}: takes anything"

    result = folder / "masks"
    check("build", tool.run("build", "--json", "--out", result, *MODE))
    check("mask", (result / "mask.json").read_text())
    check("info", tool.run("info", "--json", *MODE))
    check("info", tool.run("info", "--json", "--preset", "quality-2x2"))
    check("info", tool.run("info", "--json", result))
    check("cuttable", tool.run("cuttable", "--json", *MODE))
    check("duty", tool.run("duty", "--json", *MODE))
    check("presets", tool.run("presets", "--json"))
    check("check", tool.run("check", "--json", *MODE))
    check("compare", tool.run("compare", "--json", "speed", "speed-smooth-3", "--height", "64", "--width", "32",
                              "--advances", "0,0.5"))
    check("simulate", tool.run("simulate", "--json", "--dead", "1-3", "--weak", "5:0.5", "--lines", "64", *MODE))
    check("check", tool.run("check", "--json", "--uniform", "--feather-nozzle-type", "smooth-3-sine", *MODE, statuses=(1,)))
    check("diff", tool.run("diff", "--json", result, result))
    check("diff", tool.run("diff", "--json", "speed", "production", statuses=(1,)))
    for name in ("a", "b"):
        (folder / name).write_text(name)
    check("diff", tool.run("diff", "--json", folder / "a", folder / "b", statuses=(1,)))
    (result / "mask.bin").write_bytes(b"short")
    check("info", tool.run("info", "--json", result, statuses=(1,)))


def tables(tool, folder, *_):
    """CSV files have as many rows and cells as the mode has lines and pixels."""
    tool.run("build", "--quiet", "--png", "none", "--out", folder, *MODE)
    geometry = json.loads((folder / "mask.json").read_text())["geometry"]
    rows = list(csv.DictReader(io.StringIO(tool.run("duty", "--csv", "-", *MODE).decode())))
    nozzles = geometry["MaskHeight_IncludeRes"] // geometry["YResPass"]
    assert len(rows) == 3 * nozzles
    assert [int(row["row"]) for row in rows[:nozzles]] == list(range(nozzles))
    dots = sum(int(row["dots"]) for row in rows)
    lines = list(csv.reader(io.StringIO(tool.run("export", "--format", "csv", "--out", "-", *MODE).decode())))
    assert len(lines) == 1 + 3 * geometry["positionCount"] * geometry["MaskHeight_IncludeRes"]
    assert all(len(line) == 3 + geometry["MaskWidth"] for line in lines)
    assert dots == sum(line[3:].count("1") for line in lines[1:]) > 0


def plots(tool, folder, *_):
    """SVG files are XML whose parts are where they say."""
    space = "{http://www.w3.org/2000/svg}"
    for command, marks in (("duty", 3), ("cuttable", 48)):
        tool.run(command, "--svg", folder / "plot.svg", *MODE)
        plot = xml.parse(folder / "plot.svg").getroot()
        width, height = (float(plot.get(name)) for name in ("width", "height"))
        assert plot.tag == f"{space}svg" and plot.find(f"{space}title").text
        found = plot.findall(f"{space}path[@class='duty']") + plot.findall(f"{space}rect[@class='bar']")
        assert 0 < len(found) <= marks and (command != "duty" or len(found) == marks)
        for text in plot.iter(f"{space}text"):
            if text.get("x"):
                assert 0 <= float(text.get("x")) <= width and 0 <= float(text.get("y")) <= height, text.text


def manual(tool, folder, _, page, *__):
    """man shows the page without a warning, and every command and option is in it."""
    shown = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page], stdout=subprocess.PIPE,
                           stderr=subprocess.PIPE, check=True)
    assert shown.stderr == b"", shown.stderr.decode()
    text = subprocess.run(["man", "-l", page], stdout=subprocess.PIPE, check=True,
                          env={"MANWIDTH": "100", "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}).stdout.decode()
    text = text.replace("\u2010", "-")
    assert max(map(len, text.splitlines())) <= 100
    for command in commands(tool):
        assert f"dotweave {command}" in text, command
        for option in options(tool, command):
            assert option in text, option


def commands(tool):
    text = tool.run("--help").decode().split("\nCommands:\n")[1].split("\n\n")[0]
    return [line.split()[0] for line in text.splitlines() if line[2] != " "]


def options(tool, command):
    lines = tool.run(command, "--help").decode().splitlines()
    words = [word for line in lines if line.startswith("  -") for word in line.split()[0].split(",")]
    return [word for word in words if word.startswith("--")]


def completed(completion, folder, *words):
    """What bash offers for the last word."""
    script = (f"source {completion}; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); "
              "compopt() { :; }; _dotweave; printf '%s\\n' \"${COMPREPLY[@]}\"")
    done = subprocess.run(["bash", "-c", script, "bash", *words], stdout=subprocess.PIPE, check=True, cwd=folder)
    return done.stdout.decode().split()


def completion(tool, folder, _, __, script):
    """bash completes commands, options, words, presets and files."""
    def offer(*words):
        return completed(script, folder, str(tool.program), *words)

    assert sorted(offer("")) == sorted(commands(tool) + ["--version", "--help"])
    assert offer("bu") == ["build"]
    for command in commands(tool):
        assert sorted(offer(command, "--")) == sorted(options(tool, command)), command
    assert offer("build", "--feather-mode", "") == ["none", "nozzle"]
    assert offer("build", "--png", "f") == ["first"]
    presets = [line.split()[0] for line in tool.run("presets").decode().splitlines()]
    assert offer("info", "--preset", "") == presets
    (folder / "mode.json").write_text("{}")
    (folder / "masks").mkdir()
    assert offer("build", "--param", "mo") == ["mode.json"]
    assert offer("build", "--out", "m") == ["masks"]
    assert sorted(offer("diff", "m")) == ["masks", "mode.json"]
    assert offer("build", "--base-pass", "") == []


def main():
    program, page, script, root = (Path(argument).resolve() for argument in sys.argv[1:5])
    with tempfile.TemporaryDirectory() as folder:
        globals()[sys.argv[5]](Tool(program), Path(folder), root, page, script)


if __name__ == "__main__":
    main()
