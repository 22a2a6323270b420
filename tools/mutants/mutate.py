"""Puts the listed faults into copies of the tree, one at a time, and runs the tests; see tools/mutate.sh."""
import argparse
import fcntl
import fnmatch
import hashlib
import json
import os
import queue
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
WORK = ROOT / "build-mutants"
RESULTS = WORK / "results.json"
NATIVE, WINDOWS = "build", "build-windows"
SUITES = {name: (NATIVE, f"tests/{name}_tests") for name in ("base", "ui", "tool", "screen", "engine", "library", "trainer", "qt")}
SUITES |= {name: (WINDOWS, f"tests/{name}_tests.exe") for name in ("com", "win32", "app")}
SUITES["control"] = (WINDOWS, "windows/control_tests.exe")
CONFIGURE = {
    NATIVE: ["-DCMAKE_BUILD_TYPE=RelWithDebInfo", "-DDRAVIK_TESTS=ON"],
    WINDOWS: ["-DCMAKE_BUILD_TYPE=RelWithDebInfo", "-DDRAVIK_DESKTOP=OFF",
              "-DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake"],
}
NOTICED, SURVIVED, HARMLESS, WRONG = "noticed", "survived", "harmless", "list is wrong"
stopping = threading.Event()
running = set()  # processes, each the leader of a group
lock = threading.Lock()


class ListError(Exception):
    pass


class Mutant:
    def __init__(self, room, paragraph):
        lines = paragraph.splitlines()
        head = re.fullmatch(r"\[([\w-]+)\] (\S+): (.+)", lines[0])
        if not head:
            raise ListError(f"{room}.list: not the head of a fault: {lines[0]}")
        self.room, self.name, self.place, self.suites = room, head[1], head[2], head[3].split()
        for suite in self.suites:
            if suite.split(":")[0] not in SUITES:
                raise ListError(f"{self.name}: no suite is called {suite}")
        self.says = self.harmless = ""
        self.pairs = []
        side = None  # of the last pair: what a line that begins with blanks goes on
        for line in lines[1:]:
            if line.startswith("- "):
                self.pairs.append([line[2:], None])
                side = 0
            elif re.match(r"\+( |$)", line) and self.pairs and side == 0:
                self.pairs[-1][1] = line[2:]
                side = 1
            elif line.startswith("  ") and side is not None:
                self.pairs[-1][side] += "\n" + line[2:]
            elif line.startswith("harmless: "):
                self.harmless, side = line[len("harmless: "):], None
            elif self.harmless:
                self.harmless += " " + line.strip()
            elif side is None:
                self.says = (self.says + " " + line).strip()
            else:
                raise ListError(f"{self.name}: neither - nor + nor blanks in front of: {line}")
        if not self.pairs or any(after is None for _, after in self.pairs) or not self.says:
            raise ListError(f"{self.name}: needs a sentence, and texts after - and +")
        self.key = hashlib.sha256(paragraph.encode()).hexdigest()

    def changed(self, tree):
        """The one file that changes, as (path, text before, text after)."""
        place = tree / self.place
        files = sorted(p for p in place.rglob("*") if p.suffix in (".cpp", ".h")) if place.is_dir() else [place]
        found = []
        for file in files:
            try:
                before = file.read_text()
            except OSError as error:
                raise ListError(f"{self.name}: {error}") from error
            if pattern(self.pairs[0][0]).search(before):
                found.append((file, before))
        if len(found) != 1:
            raise ListError(f"{self.name}: its text is in {len(found)} files of {self.place} instead of one")
        file, before = found[0]
        after = before
        for old, new in self.pairs:
            after, times = pattern(old).subn(lambda _: new, after)
            if times != 1:
                raise ListError(f"{self.name}: \"{old}\" occurs {times} times in {file.relative_to(tree)}")
        if after == before:
            raise ListError(f"{self.name}: changes nothing")
        return file, before, after


def pattern(text):
    words = re.findall(r'"(?:[^"\\]|\\.)*"|\w+|[^\w\s]', text)
    edges = ["\\b" if re.match(r"\w", words[0]) else "", "\\b" if re.search(r"\w$", words[-1]) else ""]
    return re.compile(edges[0] + r"\s*".join(map(re.escape, words)) + edges[1])


def read_lists(rooms):
    mutants, errors = [], []
    for file in sorted((ROOT / "tools/mutants").glob("*.list")):
        if rooms and file.stem not in rooms:
            continue
        text = re.sub(r"^#.*\n", "", file.read_text(), flags=re.M)
        for paragraph in re.split(r"\n\s*\n", text.strip()):
            try:
                mutants.append(Mutant(file.stem, paragraph.strip()))
            except ListError as error:
                errors.append(str(error))
    names = [m.name for m in mutants]
    errors += [f"{name}: the name is given twice" for name in sorted({n for n in names if names.count(n) > 1})]
    return mutants, errors


def tree_files():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout.split("\0")
    return [f for f in listed if f and (ROOT / f).is_file()]


def tree_hash(files):
    total = hashlib.sha256()
    for file in files:
        if file.startswith(("src/", "tests/", "cmake/", "fuzz/", "data/")) or file == "CMakeLists.txt":
            total.update(file.encode() + b"\0" + (ROOT / file).read_bytes())
    return total.hexdigest()


def run(command, log, timeout=None, **options):
    """The exit status; None when the time was over. What is said goes to the end of the log."""
    with open(log, "ab") as out:
        process = subprocess.Popen(command, stdout=out, stderr=subprocess.STDOUT, start_new_session=True, **options)
        with lock:
            running.add(process)
        try:
            return process.wait(timeout)
        except subprocess.TimeoutExpired:
            return None
        finally:
            end(process)
            with lock:
                running.discard(process)


def end(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


class Copy:
    """A copy of the tree with its build folders, for one fault at a time."""

    def __init__(self, number, cores):
        self.place = WORK / str(number)
        self.tree = self.place / "tree"
        self.log = self.place / "log"
        self.cores = cores
        self.limits = {}
        self.environment = dict(os.environ, CCACHE_BASEDIR=str(self.tree), CCACHE_NOHASHDIR="1",
                                QT_QPA_PLATFORM="offscreen", GTEST_FAIL_FAST="1", GTEST_BRIEF="1",
                                TMPDIR=str(self.place / "tmp"))

    def refresh(self, files):
        (self.place / "tmp").mkdir(parents=True, exist_ok=True)
        wanted = set(files)
        for old in self.tree.rglob("*"):
            inside = old.relative_to(self.tree)
            if inside.parts[0] not in (NATIVE, WINDOWS) and old.is_file() and str(inside) not in wanted:
                old.unlink()
        for file in files:
            source, target = ROOT / file, self.tree / file
            if target.exists() and target.read_bytes() == source.read_bytes():
                continue
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)
            shutil.copymode(source, target)

    def build(self, suites):
        for folder in (NATIVE, WINDOWS):
            targets = [Path(SUITES[s][1]).stem for s in suites if SUITES[s][0] == folder]
            if not targets:
                continue
            if not (self.tree / folder / "build.ninja").exists():
                command = ["cmake", "-S", ".", "-B", folder, "-G", "Ninja", *CONFIGURE[folder]]
                if self.run(command) != 0:
                    return False
            if folder == WINDOWS and self.run(["tools/wine-prefix.sh", f"{WINDOWS}/wine"]) != 0:
                return False
            if self.run(["ninja", "-C", folder, f"-j{self.cores}", *targets]) != 0:
                return False
        return True

    def run(self, command, timeout=None):
        return run(command, self.log, timeout, cwd=self.tree, env=self.environment)

    def test(self, suite):
        """None when all is well, else what failed."""
        name, _, filter_ = suite.partition(":")
        folder, program = SUITES[name]
        command = [str(self.tree / folder / program)] + ([f"--gtest_filter={filter_}"] if filter_ else [])
        if folder == WINDOWS:
            command.insert(0, "tools/wine.sh")
        shutil.rmtree(self.place / "tmp", ignore_errors=True)
        (self.place / "tmp").mkdir()
        start = self.log.stat().st_size if self.log.exists() else 0
        began = time.monotonic()
        status = self.run(command, self.limits.get(suite, 900))
        self.limits.setdefault(suite, 30 + 5 * (time.monotonic() - began))
        if status == 0:
            return None
        if status is None:
            return f"{name} (time was over)"
        said = self.log.read_bytes()[start:].decode(errors="replace")
        failed = re.search(r"\[  FAILED  \] ([\w./]+)", said)
        return f"{name}: {failed[1]}" if failed else f"{name} (exit {status})"

    def try_out(self, mutant):
        file, before, after = mutant.changed(self.tree)
        self.log.write_bytes(b"")
        try:
            file.write_text(after)
            for suite in mutant.suites:
                if not self.build([suite.split(":")[0]]):
                    return WRONG, "does not build: " + first_error(self.log)
                if by := self.test(suite):
                    return NOTICED, by
            return (HARMLESS, mutant.harmless) if mutant.harmless else (SURVIVED, mutant.says)
        finally:
            file.write_text(before)


def first_error(log):
    for line in log.read_text(errors="replace").splitlines():
        if "error" in line:
            return line.strip()[:160]
    return f"see {log.relative_to(ROOT)}"


def work(copy, files, mutants, todo, record):
    copy.refresh(files)
    suites = sorted({s.split(":")[0] for m in mutants for s in m.suites})
    copy.log.unlink(missing_ok=True)
    if not copy.build(suites):
        return f"the tree does not build without any fault; see {copy.log.relative_to(ROOT)}"
    for suite in sorted({s for m in mutants for s in m.suites}):
        if not stopping.is_set() and (failed := copy.test(suite)) and not stopping.is_set():
            return f"the tests fail without any fault: {failed}; see {copy.log.relative_to(ROOT)}"
    while not stopping.is_set():
        try:
            mutant = todo.get_nowait()
        except queue.Empty:
            break
        began = time.monotonic()
        try:
            result, detail = copy.try_out(mutant)
        except ListError as error:
            result, detail = WRONG, str(error)
        if not stopping.is_set():
            record(mutant, result, detail, time.monotonic() - began)
    return None


def arguments():
    parser = argparse.ArgumentParser(prog="tools/mutate.sh", description="Shows whether the tests notice faults.")
    parser.add_argument("lists", nargs="*", help="rooms (tools/mutants/ROOM.list)")
    parser.add_argument("--only", action="append", metavar="NAME", help="only this fault")
    parser.add_argument("--survivors", action="store_true", help="only those that survived the last time")
    parser.add_argument("--check", action="store_true", help="only whether the lists fit the code")
    parser.add_argument("--again", action="store_true", help="try again what has a result for this tree")
    parser.add_argument("--jobs", type=int, default=1, help="copies at a time (1)")
    return parser.parse_args()


def main():
    options = arguments()
    mutants, errors = read_lists(options.lists)
    unknown = set(options.lists) - {f.stem for f in (ROOT / "tools/mutants").glob("*.list")}
    errors += [f"there is no list {name}" for name in sorted(unknown)]
    fitting = []
    for mutant in mutants:
        try:
            mutant.changed(ROOT)
            fitting.append(mutant)
        except ListError as error:
            errors.append(str(error))
    for error in errors:
        print(f"ERROR in the lists: {error}", file=sys.stderr)
    if options.check:
        print(f"{len(fitting)} of {len(mutants)} faults have their place in the code.")
        return 2 if errors else 0

    files = tree_files()
    tree = tree_hash(files)
    WORK.mkdir(exist_ok=True)
    held = open(WORK / "lock", "w")
    try:
        fcntl.flock(held, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError:
        print("ERROR: another run is at work in build-mutants/", file=sys.stderr)
        return 2
    results = json.loads(RESULTS.read_text()) if RESULTS.exists() else {}
    chosen = [m for m in fitting
              if (not options.only or any(fnmatch.fnmatch(m.name, name) for name in options.only)) and
              (not options.survivors or results.get(m.name, {}).get("result") in (SURVIVED, WRONG))]

    def known(mutant):
        last = results.get(mutant.name, {})
        return last.get("tree") == tree and last.get("key") == mutant.key

    waiting = [m for m in chosen if options.again or not known(m)]
    todo = queue.Queue()
    for mutant in waiting:
        todo.put(mutant)
    total = len(waiting)
    print(f"{len(chosen)} faults, {total} to try", flush=True)

    def record(mutant, result, detail, seconds):
        with lock:
            results[mutant.name] = {"result": result, "detail": detail, "seconds": round(seconds, 1), "tree": tree,
                                    "key": mutant.key}
            fresh = RESULTS.with_suffix(".new")
            fresh.write_text(json.dumps(results, indent=1))
            fresh.replace(RESULTS)
            print(f"{seconds:6.1f} s  {result:9} {mutant.name}: {detail}", flush=True)

    def stop(*_):
        stopping.set()
        for process in list(running):
            os.killpg(process.pid, signal.SIGKILL)

    signal.signal(signal.SIGINT, stop)
    signal.signal(signal.SIGTERM, stop)
    jobs = max(1, min(options.jobs, total))
    cores = max(1, (os.cpu_count() or 1) // jobs)
    threads, problems = [], []

    def worker(number):
        copy = Copy(number, cores)
        copy.tree.mkdir(parents=True, exist_ok=True)
        try:
            problem = work(copy, files, waiting, todo, record)
        except Exception as error:  # a thread has nobody else to tell
            problem = repr(error)
        if problem and not stopping.is_set():
            problems.append(problem)
            stop()

    for number in range(1, jobs + 1) if total else ():
        threads.append(threading.Thread(target=worker, args=(number,)))
        threads[-1].start()
    for thread in threads:
        while thread.is_alive():
            thread.join(0.2)
    return summary([m for m in chosen if known(m)], results, len(chosen), errors + problems)


def summary(tried, results, chosen, errors):
    counts = {}
    for mutant in tried:
        counts.setdefault(mutant.room, []).append(results[mutant.name]["result"])
    print(f"\n{'list':12}{'faults':>8}{'noticed':>9}{'harmless':>10}{'survived':>10}{'share':>8}")
    for room, all_ in [*sorted(counts.items()), ("all", [r for each in counts.values() for r in each])]:
        noticed, harmless, survived = (all_.count(r) for r in (NOTICED, HARMLESS, SURVIVED))
        share = f"{100 * noticed / max(1, noticed + harmless + survived):.0f} %"
        print(f"{room:12}{len(all_):8}{noticed:9}{harmless:10}{survived:10}{share:>8}")
    for mutant in tried:
        last = results[mutant.name]
        if last["result"] != NOTICED:
            print(f"{last['result']}: {mutant.name}: {last['detail']}")
        if last["result"] == NOTICED and mutant.harmless:
            print(f"noticed though called harmless: {mutant.name}: {last['detail']}")
    seconds = sum(results[m.name]["seconds"] for m in tried)
    print(f"{len(tried)} of {chosen} tried, {seconds / 60:.0f} minutes of work")
    for error in errors:
        print(f"ERROR: {error}", file=sys.stderr)
    states = [results[m.name]["result"] for m in tried]
    if errors or WRONG in states:
        return 2
    return 1 if SURVIVED in states or len(tried) < chosen else 0


sys.exit(main())
