#!/usr/bin/env python3
"""Makes small changes to the code, one at a time, and checks that the tests notice.

Works on copies of the tree below --scratch, which it makes anew each time; the tree itself is never touched. Lines with
texts are not changed: nearly all of them are failing paths, whose texts the log's own tests compare as a whole. The
sample of all possible changes has a fixed seed and takes the kinds of change in turn, so that the same tree gives the
same sample. A change that does not compile is replaced by the next one of its kind. A test that hangs, or fills the disk
with output, is ended and has noticed the change.

A change that makes no difference to what the code does is explained in the code and then left out. The comment is on the
line or right above it and names the kind of change, as in "// Any bound: equal heights give the same mask."

  tools/mutate.py                         60 changes of all product code, two at a time
  tools/mutate.py --area src/dotweave     of the library only
  tools/mutate.py --only kelqueue.h       of one file
  tools/mutate.py --list                  shows the sample and ends

Prints the changes that survived: each is a missing test, or wants an explanation. Ends with 1 when the tests noticed
fewer than 95 out of 100 changes.
"""
import argparse
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
# Product code, and the test programs that run it, quickest first.
AREAS = {
    "src/dotweave": ("unit_test", "memory_test", "conformance_test", "failure_test"),
    "platform": ("platform_test",),
    "instrument": ("instrument_test", "tool_test"),
    "tools/dotweave": ("tool_test", "placing_test"),
}
ELSEWHERE = "win32"  # folders of this name are not built here
WANTED_SCORE = 0.95
# A program hangs when it takes so much longer than without a change.
SLOWER_BY = 5
SLOWER_SECONDS = 60
UNCHANGED_SECONDS = 900  # for a build, and for a program before it has been timed
OUTPUT_BYTES_MAX = 64 << 20
KILLED = -9  # by the system, for want of memory: says nothing about the change

# What may be changed: kind, pattern, replacement. Spaces around an operator tell it from templates, pointers and
# references, as the format of these sources has it.
KINDS = (
    ("bound", r" < ", " <= "),
    ("bound", r" <= ", " < "),
    ("bound", r" > ", " >= "),
    ("bound", r" >= ", " > "),
    ("off by one", r" \+ 1\b(?!\.)", ""),
    ("off by one", r" - 1\b(?!\.)", ""),
    ("off by one", r"= 0;", "= 1;"),
    ("comparison", r" == ", " != "),
    ("comparison", r" != ", " == "),
    ("logic", r" && ", " || "),
    ("logic", r" \|\| ", " && "),
    ("arithmetic", r" \+ ", " - "),
    ("arithmetic", r" - ", " + "),
    ("arithmetic", r" \* ", " + "),
    ("arithmetic", r" / ", " * "),
    ("arithmetic", r" % ", " / "),
    ("swapped operands", r"(?<![\w.>)\] ])(?<![-/%*+] )\b(\w+) ([-/%]) (\w+)\b(?![.(\[-])", r"\3 \2 \1"),
    ("result", r"return true;", "return false;"),
    ("result", r"return false;", "return true;"),
    ("dropped statement", r"^(\s+)[\w.>()\[\]:-]+(\(.*\))?( [-+|&]?= [^;]*|\([^;]*\));$", r"\1;"),
)

KIND_NAMES = {kind for kind, _, _ in KINDS}
EXPLANATION = re.compile(r"// Any ([\w ]+): ")


class Change:
    """One change of one line."""

    def __init__(self, kind, path, number, before, after):
        self.kind = kind
        self.path = path
        self.number = number
        self.before = before
        self.after = after
        self.verdict = ""

    def programs(self):
        return next(programs for area, programs in AREAS.items() if self.path.is_relative_to(area))

    def __str__(self):
        return f"{self.path}:{self.number}: {self.before.strip()}  ->  {self.after.strip()}"


def is_code(line):
    stripped = line.strip()
    if not stripped or stripped.startswith(("//", "#", "static_assert", "template", "using ", "class ", "struct ")):
        return False
    return '"' not in stripped


def changes_of(path):
    """All changes that can be made to one file and are not explained."""
    explained = set()  # kinds, by the comments right above
    is_elsewhere = False  # between the lines of another system
    for number, line in enumerate((ROOT / path).read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("#if defined(_WIN32)"):
            is_elsewhere = True
        elif line.startswith(("#else", "#elif", "#endif")):
            is_elsewhere = False
        if not line.strip().startswith("//"):
            own, explained = explained, set()
        else:
            own = explained
        own |= set(EXPLANATION.findall(line))
        if own - KIND_NAMES:
            sys.exit(f"mutate.py: {path}:{number}: no such kind of change: {', '.join(own - KIND_NAMES)}")
        if is_elsewhere or not is_code(line):
            continue
        code = line.split(" //")[0].rstrip()
        for kind, pattern, replacement in KINDS:
            for match in re.finditer(pattern, code):
                after = code[:match.start()] + match.expand(replacement) + code[match.end():]
                if after != code and kind not in own:
                    yield Change(kind, path, number, line, after)


def paths_in(area):
    return sorted(path.relative_to(ROOT) for suffix in ("*.cpp", "*.h") for path in (ROOT / area).rglob(suffix)
                  if ELSEWHERE not in path.parts)


def sample_of(seed, areas, only):
    """Changes in random order, the kinds in turn and no line twice."""
    paths = [path for area in areas for path in paths_in(area)]
    by_kind = {}
    for path in paths:
        if only and path.name not in only:
            continue
        for change in changes_of(path):
            by_kind.setdefault(change.kind, []).append(change)
    source = random.Random(seed)
    for changes in by_kind.values():
        source.shuffle(changes)
    lines = set()
    while any(by_kind.values()):
        for changes in by_kind.values():
            while changes:
                change = changes.pop()
                if (change.path, change.number) not in lines:
                    lines.add((change.path, change.number))
                    yield change
                    break


def run(command, seconds, folder, environment):
    """Runs a program and all that it starts, for so long at most. @return exit code, None on time-out, and output"""
    with tempfile.TemporaryFile(dir=folder) as output:
        process = subprocess.Popen(command, stdout=output, stderr=subprocess.STDOUT, cwd=folder, env=environment,
                                   start_new_session=True)
        try:
            code = process.wait(timeout=seconds)
        except subprocess.TimeoutExpired:
            code = None
        try:
            os.killpg(process.pid, signal.SIGKILL)  # the process, or what it left running
        except ProcessLookupError:
            pass
        process.wait()
        output.seek(0)
        return code, output.read().decode(errors="replace")


class Tree:
    """A copy of the tree with a build of its tests."""

    def __init__(self, scratch, index, programs):
        folder = scratch / str(index)
        self.source = folder / "tree"
        self.build = folder / "build"
        # With paths taken from here the copies look alike to a compiler cache, and only the first costs a build.
        self.environment = {**os.environ, "CCACHE_BASEDIR": str(folder), "CCACHE_NOHASHDIR": "1",
                            "TEST_TMPDIR": str(folder)}
        self.programs = programs
        self.seconds = {}
        shutil.rmtree(folder, ignore_errors=True)
        files = subprocess.run(["git", "-C", ROOT, "ls-files", "-z"], check=True, capture_output=True, text=True).stdout
        for name in filter(None, files.split("\0")):
            if (ROOT / name).is_file():
                (self.source / name).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy2(ROOT / name, self.source / name)
        launcher = shutil.which("ccache")
        subprocess.run(
            ["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
             "-DCMAKE_CXX_FLAGS_DEBUG=-O1", "-DDOTWEAVE_BUILD_EXAMPLES=OFF", "-DDOTWEAVE_BUILD_BENCHMARKS=OFF"]
            + ([f"-DCMAKE_CXX_COMPILER_LAUNCHER={launcher}"] if launcher else []),
            check=True, stdout=subprocess.DEVNULL, env=self.environment)

    def built(self, programs, jobs=1):
        code, output = run(["ninja", "-C", self.build, f"-j{jobs}", *programs], UNCHANGED_SECONDS, self.build,
                           self.environment)
        return code == 0, output

    def failure(self, program, only=None):
        """What is wrong with a program's run, as (what, test), or None."""
        command = ["prlimit", f"--fsize={OUTPUT_BYTES_MAX}", next(self.build.rglob(program)), "--gtest_fail_fast",
                   "--gtest_brief=1"] + ([f"--gtest_filter={only}"] if only else [])
        code, output = run(command, self.seconds.get(program, UNCHANGED_SECONDS), self.build, self.environment)
        if code == 0:
            return None
        if code is None:
            return f"{program}, which hangs", None
        if code == KILLED:
            raise MemoryError(f"{program} was killed")
        failed = re.search(r"\[  FAILED  \] ([^\s,]+)", output)
        return (failed.group(1), failed.group(1)) if failed else (f"{program}, which ends with {code}", None)

    def complaint(self, programs):
        """The first test that fails, and fails again when run alone; None when all pass."""
        for program in programs:
            found = self.failure(program)
            if found and (found[1] is None or self.failure(program, found[1])):
                return found[0]
            if found:
                print(f"{found[1]} failed once and then passed: not counted", flush=True)
        return None

    def baseline(self):
        """Builds and tests the unchanged tree. @return what is wrong with it, or None"""
        is_built, output = self.built(self.programs, os.cpu_count() or 1)
        if not is_built:
            return output[-2000:]
        for program in self.programs:
            begin = time.monotonic()
            complaint = self.complaint([program])
            if complaint:
                return complaint
            self.seconds[program] = SLOWER_BY * (time.monotonic() - begin) + SLOWER_SECONDS
        return None

    def judge(self, change):
        """Whether the tests notice the change; None when it does not compile."""
        path = self.source / change.path
        original = path.read_text(encoding="utf-8")
        lines = original.splitlines(keepends=True)
        lines[change.number - 1] = change.after + "\n"
        path.write_text("".join(lines), encoding="utf-8")
        try:
            if not self.built(change.programs())[0]:
                return None
            return self.complaint(change.programs()) or ""
        finally:
            path.write_text(original, encoding="utf-8")


def judge_all(trees, changes, count):
    """Judges until `count` changes that compile have been judged."""
    lock = threading.Lock()
    judged = []
    waiting = iter(changes)
    started = 0

    def work(tree):
        nonlocal started
        while True:
            with lock:
                if started >= count:
                    return
                change = next(waiting, None)
                if change is None:
                    return
                started += 1
            verdict = tree.judge(change)
            with lock:
                if verdict is None:
                    started -= 1
                    print(f"does not compile: {change}", flush=True)
                    continue
                change.verdict = verdict
                judged.append(change)
                print(f"[{len(judged)}/{count}] {'noticed by ' + verdict if verdict else 'SURVIVED'}: {change}", flush=True)

    threads = [threading.Thread(target=work, args=(tree,)) for tree in trees]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return judged


def report(judged):
    """Prints the result. @return whether it is good enough"""
    survivors = [change for change in judged if not change.verdict]
    for change in survivors:
        print(f"survivor: {change}")
    score = 1 - len(survivors) / len(judged) if judged else 0
    print(f"{len(judged)} changes, {len(judged) - len(survivors)} noticed, {len(survivors)} survived: {score:.0%}")
    return bool(judged) and score >= WANTED_SCORE


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=60, help="changes to judge (default 60)")
    parser.add_argument("--seed", type=int, default=1, help="of the sample (default 1)")
    parser.add_argument("--jobs", type=int, default=min(2, os.cpu_count() or 1), help="changes at a time (default 2)")
    parser.add_argument("--area", action="append", choices=AREAS, help="only this code; may be repeated")
    parser.add_argument("--only", action="append", metavar="FILE", help="only changes of this file; may be repeated")
    parser.add_argument("--scratch", type=Path, default=ROOT / "build" / "mutate", help="where the copies go")
    parser.add_argument("--list", action="store_true", help="show the sample and end")
    arguments = parser.parse_args()
    if arguments.count < 1 or arguments.jobs < 1:
        sys.exit("mutate.py: --count and --jobs: at least 1")

    areas = arguments.area or list(AREAS)
    changes = sample_of(arguments.seed, areas, arguments.only)
    if arguments.list:
        for change, _ in zip(changes, range(arguments.count)):
            print(f"{change.kind}: {change}")
        return 0
    if arguments.only:  # no programs that are not run
        areas = [area for area in areas if any(path.name in arguments.only for path in paths_in(area))]
    programs = list(dict.fromkeys(program for area in areas for program in AREAS[area]))
    trees = [Tree(arguments.scratch.resolve(), index, programs) for index in range(arguments.jobs)]
    for tree in trees:
        complaint = tree.baseline()
        if complaint:
            sys.exit(f"mutate.py: the unchanged tree fails: {complaint}")
    judged = judge_all(trees, changes, arguments.count)
    if len(judged) < arguments.count:
        print(f"mutate.py: only {len(judged)} of {arguments.count} changes were judged", file=sys.stderr)
    is_good = report(judged)
    complaints = [complaint for tree in trees if (complaint := tree.baseline())]
    if complaints:
        sys.exit(f"mutate.py: the unchanged tree fails in the end: {complaints[0]}")
    return 0 if is_good and (len(judged) == arguments.count or arguments.only) else 1


if __name__ == "__main__":
    sys.exit(main())
