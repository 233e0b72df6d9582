#!/usr/bin/env python3
"""Changes the library in small ways, one at a time, and looks whether the tests notice.

Works on copies of the tree below --scratch, made anew each time; the tree itself is never touched. Lines with texts
are left alone: nearly all of them are failing paths, which the log's own tests hold. A sample of all possible changes is
drawn with a fixed seed, the kinds of change in turn, so that the same tree gives the same sample. A change that does
not compile is replaced by the next one of its kind. Survivors that tools/mutate_explained.json knows are shown with
their reason.

  tools/mutate.py                       60 changes, two at a time
  tools/mutate.py --list                shows the sample only
  tools/mutate.py --only kelqueue.h     changes of one file

Ends with 1 when fewer than nine out of ten changes were noticed or a survivor has no explanation.
"""
import argparse
import json
import os
import random
import re
import shutil
import subprocess
import sys
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SOURCES = "src/dotweave"
EXPLAINED = ROOT / "tools" / "mutate_explained.json"
# The programs that link the library's objects, quickest first.
PROGRAMS = ("unit_test", "conformance_test", "property_test", "failure_test")
WANTED_SCORE = 0.9
# A change that makes the tests hang is noticed, too: when they take so much longer than without it.
SLOWER_BY = 5
SLOWER_SECONDS = 60
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


class Change:
    """One change of one line."""

    def __init__(self, kind, path, number, before, after):
        self.kind = kind
        self.path = path
        self.number = number
        self.before = before
        self.after = after
        self.verdict = ""

    def key(self):
        return {"file": self.path.name, "before": self.before.strip(), "after": self.after.strip()}

    def __str__(self):
        return f"{self.path}:{self.number}: {self.before.strip()}  ->  {self.after.strip()}"


def is_code(line):
    stripped = line.strip()
    if not stripped or stripped.startswith(("//", "#", "static_assert", "template", "using ", "class ", "struct ")):
        return False
    # Texts of the log are held by whole-record tests; changing their letters would prove nothing.
    return '"' not in stripped


def changes_of(path):
    """All changes that can be made to one file."""
    for number, line in enumerate((ROOT / path).read_text(encoding="utf-8").splitlines(), 1):
        if not is_code(line):
            continue
        code = line.split(" //")[0].rstrip()
        for kind, pattern, replacement in KINDS:
            for match in re.finditer(pattern, code):
                after = code[:match.start()] + match.expand(replacement) + code[match.end():]
                if after != code:
                    yield Change(kind, path, number, line, after)


def sample_of(seed, only):
    """Changes in random order, the kinds in turn and no line twice."""
    paths = sorted(path.relative_to(ROOT) for suffix in ("*.cpp", "*.h") for path in (ROOT / SOURCES).rglob(suffix))
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


class Tree:
    """A copy of the tree with a build of its tests."""

    def __init__(self, scratch, index, programs):
        self.source = scratch / str(index) / "tree"
        self.build = scratch / str(index) / "build"
        # With paths taken from here the copies look alike to a compiler cache, and only the first costs a build.
        self.environment = {**os.environ, "CCACHE_BASEDIR": str(scratch / str(index)), "CCACHE_NOHASHDIR": "1",
                            "TEST_TMPDIR": str(scratch / str(index))}
        self.programs = programs
        self.limit = None
        shutil.rmtree(scratch / str(index), ignore_errors=True)
        files = subprocess.run(["git", "-C", ROOT, "ls-files", "-z"], check=True, capture_output=True, text=True).stdout
        for name in filter(None, files.split("\0")):
            if (ROOT / name).is_file():
                (self.source / name).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy2(ROOT / name, self.source / name)
        launcher = shutil.which("ccache")
        subprocess.run(
            ["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
             "-DCMAKE_CXX_FLAGS_DEBUG=-O1", "-DDOTWEAVE_BUILD_TOOLS=OFF", "-DDOTWEAVE_BUILD_EXAMPLES=OFF",
             "-DDOTWEAVE_BUILD_BENCHMARKS=OFF"] + ([f"-DCMAKE_CXX_COMPILER_LAUNCHER={launcher}"] if launcher else []),
            check=True, stdout=subprocess.DEVNULL, env=self.environment)

    def built(self, jobs=1):
        done = subprocess.run(["ninja", "-C", self.build, f"-j{jobs}", *self.programs], stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, check=False, text=True, env=self.environment)
        return done.returncode == 0, done.stdout

    def failure(self, program, only=None):
        """What is wrong with a program's run, as (what, test), or None."""
        command = [next(self.build.rglob(program)), "--gtest_fail_fast", "--gtest_brief=1"]
        command += [f"--gtest_filter={only}"] if only else []
        try:
            done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False,
                                  timeout=self.limit, cwd=self.build, errors="replace", text=True,
                                  env=self.environment)
        except subprocess.TimeoutExpired:
            return f"{program} hangs", None
        if done.returncode == 0:
            return None
        if done.returncode == KILLED:
            raise MemoryError(f"{program} was killed")
        failed = re.search(r"\[  FAILED  \] ([^\s,]+)", done.stdout)
        return (failed.group(1), failed.group(1)) if failed else (f"{program} ends with {done.returncode}", None)

    def complaint(self):
        """The first test that fails, and fails again when asked alone; None when all pass."""
        for program in self.programs:
            found = self.failure(program)
            if found and (found[1] is None or self.failure(program, found[1])):
                return found[0]
            if found:
                print(f"{found[1]} failed once and then passed: not counted", flush=True)
        return None

    def baseline(self):
        """Builds and tests the unchanged tree. @return what is wrong with it, or None"""
        is_built, output = self.built(os.cpu_count() or 1)
        if not is_built:
            return output[-2000:]
        begin = time.monotonic()
        complaint = self.complaint()
        self.limit = SLOWER_BY * (time.monotonic() - begin) + SLOWER_SECONDS
        return complaint

    def judge(self, change):
        """Whether the tests notice the change; None when it does not compile."""
        path = self.source / change.path
        original = path.read_text(encoding="utf-8")
        lines = original.splitlines(keepends=True)
        lines[change.number - 1] = change.after + "\n"
        path.write_text("".join(lines), encoding="utf-8")
        try:
            if not self.built()[0]:
                return None
            return self.complaint() or ""
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
    explained = json.loads(EXPLAINED.read_text(encoding="utf-8")) if EXPLAINED.exists() else []
    reasons = {json.dumps(entry["change"], sort_keys=True): entry["reason"] for entry in explained}
    survivors = [change for change in judged if not change.verdict]
    unexplained = 0
    for change in survivors:
        reason = reasons.get(json.dumps(change.key(), sort_keys=True))
        unexplained += reason is None
        print(f"survivor: {change}\n    {reason or 'no explanation; its key: ' + json.dumps(change.key())}")
    score = 1 - len(survivors) / len(judged) if judged else 0
    print(f"{len(judged)} changes, {len(judged) - len(survivors)} noticed, {len(survivors)} survived "
          f"({unexplained} without explanation): {score:.0%}")
    return bool(judged) and score >= WANTED_SCORE and unexplained == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=60, help="changes to judge (default 60)")
    parser.add_argument("--seed", type=int, default=1, help="of the sample (default 1)")
    parser.add_argument("--jobs", type=int, default=min(2, os.cpu_count() or 1), help="changes at a time (default 2)")
    parser.add_argument("--only", action="append", metavar="FILE", help="only changes of this file; may be repeated")
    parser.add_argument("--scratch", type=Path, default=ROOT / "build" / "mutate", help="where the copies go")
    parser.add_argument("--programs", default=",".join(PROGRAMS), help="test programs to ask, comma-separated")
    parser.add_argument("--list", action="store_true", help="show the sample and end")
    arguments = parser.parse_args()
    if arguments.count < 1 or arguments.jobs < 1:
        sys.exit("mutate.py: --count and --jobs: at least 1")

    changes = sample_of(arguments.seed, arguments.only)
    if arguments.list:
        for change, _ in zip(changes, range(arguments.count)):
            print(f"{change.kind}: {change}")
        return 0
    trees = [Tree(arguments.scratch.resolve(), index, arguments.programs.split(",")) for index in range(arguments.jobs)]
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
