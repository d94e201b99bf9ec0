#!/usr/bin/env python3
"""What the tests catch: seeded faults in product lines that tests run, built and tested one by one.

Works on copies of the tree, which it keeps with their builds for the next time (--work). A fault is
tried against the tests of its own room first, then against all. It doesn't count if it doesn't
compile, leaves the object code as it was, or is listed as equivalent in scripts/mutate.equivalent.
"""
import argparse
import difflib
import hashlib
import json
import os
import queue
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PRODUCT = ("testsdk/", "sources/", "platform/", "tables/")
KERNELS = re.compile(r"platform/zolvm/(?!zolvm\.cpp)")  # the accuracy tests judge these
TESTED = 5  # a test that takes this many times as long as it should, and ten seconds more, hangs


# ---------------------------------------------------------------------------------------------
# Faults
# ---------------------------------------------------------------------------------------------

TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*)
      | (?P<text>"(?:[^"\\\n]|\\.)*")
      | (?P<char>'(?:[^'\\\n]|\\.)+')
      | (?P<number>(?:0[xX][\da-fA-F]+|\d+\.?\d*(?:[eE][+-]?\d+)?|\.\d+)[uUlLfF]*)
      | (?P<name>[A-Za-z_]\w*)
      | (?P<op><<=|>>=|<=>|->|::|\+\+|--|&&|\|\||[<>=!+\-*/%&|^]=|<<|>>|[^\s\w])""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

# Operators that stand between blanks, where clang-format puts blanks around binary ones alone.
SWAPS = {
    "<": ["<=", ">"], "<=": ["<", ">="], ">": [">=", "<"], ">=": [">", "<="],
    "==": ["!="], "!=": ["=="], "&&": ["||"], "||": ["&&"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"],
    "&": ["|"], "|": ["&"], "<<": [">>"], ">>": ["<<"], "^": ["|"],
    "+=": ["-=", "="], "-=": ["+=", "="], "*=": ["/="], "/=": ["*="], "|=": ["&="], "&=": ["|="],
    "<<=": [">>="], ">>=": ["<<="],
}
OPEN, CLOSE = "([{", ")]}"


def tokenise(text):
    """Tokens (kind, text, begin, end), without comments, blanks and preprocessor lines."""
    found = []
    for match in TOKEN.finditer(text):
        if match.lastgroup != "skip":
            found.append((match.lastgroup, match.group(), match.start(), match.end()))
    return found


def walk(tokens, at, stops):
    """Index of the first token from at on that is a stop and in no bracket opened since; or None."""
    depth = 0
    for i in range(at, len(tokens)):
        word = tokens[i][1]
        if depth == 0 and word in stops:
            return i
        depth += (word in OPEN) - (word in CLOSE)
        if depth < 0:
            return None
    return None


def other_number(word):
    digits = re.match(r"0[xX][\da-fA-F]+|[\d.]+(?:[eE][+-]?\d+)?", word).group()
    suffix = word[len(digits):]
    if digits.lower().startswith("0x"):
        value = int(digits, 16)
        return [hex(value ^ 1) + suffix, hex(value << 1 or 2) + suffix]
    if not digits.isdigit():
        return [f"({word} + 1)", f"({word} * 2)"]
    value = int(digits)
    return [str(n) + suffix for n in {value + 1, max(value - 1, 0), 0} - {value}]


def other_text(word):
    """One character less, or another one; the quotes and escapes stay whole."""
    parts = re.findall(r"\\[0-7]{1,3}|\\x[\da-fA-F]+|\\.|%%|%[^a-zA-Z%]*[a-zA-Z]+|.", word[1:-1])
    for i, part in enumerate(parts):
        if len(part) == 1:
            other = "x" if part != "x" else "y"
            yield word[0] + "".join(parts[:i] + [other] + parts[i + 1:]) + word[-1]
        if len(parts) > 1 or word[0] == '"':
            yield word[0] + "".join(parts[:i] + parts[i + 1:]) + word[-1]


def faults_of(text, rng):
    """All places of a file that a fault fits: line -> list of lists (begin, end, new text), one inner
    list for each place, so that a place with many variants isn't taken more often."""
    tokens = tokenise(text)
    starts = [0] + [m.end() for m in re.finditer("\n", text)]
    places = defaultdict(list)

    def line_of(offset):
        low, high = 0, len(starts)
        while high - low > 1:
            middle = (low + high) // 2
            low, high = (middle, high) if starts[middle] <= offset else (low, middle)
        return low + 1

    def add(begin, end, variants):
        if variants:
            places[line_of(begin)].append([(begin, end, v) for v in variants])

    def whole_statement(i):
        """The end of the statement that begins with token i, if it is one that can be left out."""
        before = tokens[i - 1][1] if i else ""
        if before not in (";", "{", "}", ":") or text[:tokens[i][2]].rsplit("\n", 1)[-1].strip():
            return None
        stop = walk(tokens, i, (";", "{"))
        if stop is None or tokens[stop][1] == "{":
            return None
        declares = tokens[i + 1][0] == "name" and tokens[i][1] not in ("return", "delete", "throw")
        late = tokens[i][1] == "return" and tokens[stop + 1][1] == "}" and \
            tokens[i][2] - text.rfind("\n", 0, tokens[i][2]) <= 5  # the last of a function
        return None if declares or late or tokens[i][1] == "break" else tokens[stop][3]

    for i, (kind, word, begin, end) in enumerate(tokens):
        if kind in ("number",):
            add(begin, end, other_number(word))
        elif kind == "text":
            around = [t[1] for t in tokens[max(i - 3, 0):i]]
            if not {"asm", "volatile", "static_assert"} & set(around):
                every = list(other_text(word))
                add(begin, end, rng.sample(every, min(2, len(every))) + (['""'] if word != '""' else []))
        elif kind == "char":
            add(begin, end, list(other_text(word)))
        elif kind == "op":
            if word in SWAPS and text[begin - 1] in " \n" and text[end] in " \n":
                add(begin, end, SWAPS[word])
            elif word in ("++", "--"):
                add(begin, end, ["--" if word == "++" else "++"])
            elif word == "!":
                add(begin, end, [""])
            elif word == "?":
                colon = walk(tokens, i + 1, (":",))
                stop = colon and walk(tokens, colon + 1, (";", ",", ")", "}", ":", "<<"))
                if stop:
                    first = text[tokens[i + 1][2]:tokens[colon - 1][3]]
                    second = text[tokens[colon + 1][2]:tokens[stop - 1][3]]
                    add(tokens[i + 1][2], tokens[stop - 1][3], [f"{second} : {first}"])
        elif word in ("if", "while") and i + 1 < len(tokens) and tokens[i + 1][1] == "(":
            stop = walk(tokens, i + 2, (")",))
            if stop and "=" not in [t[1] for t in tokens[i:stop]]:
                inner = text[tokens[i + 1][3]:tokens[stop][2]]
                add(tokens[i + 1][3], tokens[stop][2],
                    [f"!({inner})", "false"] + (["true"] if word == "if" else []))
        elif word in ("true", "false"):
            add(begin, end, ["false" if word == "true" else "true"])
        elif word == "return":
            stop = walk(tokens, i + 1, (";",))
            if stop and {"==", "!=", "<", ">", "<=", ">=", "&&", "||", "!"} & {t[1] for t in tokens[i:stop]}:
                add(end, tokens[stop][2], [f" !({text[end:tokens[stop][2]].strip()})"])
        if kind == "name":
            stop = whole_statement(i)
            if stop:
                add(begin, stop, ["\n" * text.count("\n", begin, stop)])
    return places


class Fault:
    def __init__(self, file, text, begin, end, new):
        self.file = file
        self.line = text.count("\n", 0, begin) + 1
        self.mutated = text[:begin] + new + text[end:]
        low = text.rfind("\n", 0, begin) + 1
        if not new.strip():  # what is left out says little without the line above it
            low = text.rfind("\n", 0, max(low - 1, 0)) + 1
        high = text.find("\n", end)
        self.old = " ".join(text[low:high].split())
        self.new = " ".join((text[low:begin] + new + text[end:high]).split())

    def key(self):
        return self.file, self.old, self.new


def equivalents():
    path = ROOT / "scripts/mutate.equivalent"
    rows = [r.split("\t") for r in path.read_text().splitlines() if r and not r.startswith("#")]
    return {tuple(row[:3]) for row in rows}


# ---------------------------------------------------------------------------------------------
# A copy of the tree: built, tested, changed and put back
# ---------------------------------------------------------------------------------------------

def run(command, **more):
    """The command's output; ends the program, with its cause, if it fails."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **more)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout[-3000:]}")
    return done.stdout


class Copy:
    def __init__(self, place):
        self.tree = place / "tree"
        self.build = place / "build"
        self.temp = place / "temp"
        self.tree.mkdir(parents=True, exist_ok=True)
        names = set(run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT).splitlines())
        names = {n for n in names if (ROOT / n).is_file()}
        self.product = sorted(n for n in names if n.startswith(PRODUCT) and n.endswith((".cpp", ".h"))
                              and not KERNELS.match(n))
        for path in list(self.tree.rglob("*")):
            if path.is_file() and str(path.relative_to(self.tree)) not in names \
                    and self.tree / "build" not in path.parents:
                path.unlink()
        for name in names:  # what hasn't changed keeps its time, so that it isn't built again
            source, target = ROOT / name, self.tree / name
            if not target.exists() or source.read_bytes() != target.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)

    def prepare(self, under, own_only):
        """Builds what is needed, finds out what each test program is and how long it takes."""
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", "-DPS_BUILD_TESTS=ON",
             "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -w", *launcher])
        self.rooms = {folder.name: [] for folder in sorted((self.tree / "tests").iterdir())
                      if (self.build / "tests" / folder.name / "CTestTestfile.cmake").exists()}
        if own_only:
            kept = {self.room_of(file) for file in self.product if file.startswith(under)}
            self.rooms = {room: [] for room in kept}
        run(["ninja", "-C", self.build, *(f"tests/{room}/all" for room in self.rooms)])
        self.users = defaultdict(list)  # product file -> the objects it is compiled into
        target = ""
        for line in run(["ninja", "-C", self.build, "-t", "deps"]).splitlines():
            if line.startswith("    "):
                path = os.path.relpath(os.path.join(self.build, line.strip()), self.tree)
                self.users[path].append(target)
            else:
                target = line.split(":")[0]
        for room in self.rooms:
            self.rooms[room] = self.programs(self.build / "tests" / room)
        if not any(self.rooms.values()):
            sys.exit("no tests found: every fault would survive")
        self.times = {}
        for command in {c for room in self.rooms.values() for c in room}:
            begin = time.monotonic()
            if not self.passes(command, 600):
                sys.exit(f"fails without a fault: {' '.join(command)}")
            self.times[command] = time.monotonic() - begin

    def programs(self, folder):
        """The commands behind a folder's tests; cases of one GoogleTest program run in one process."""
        found = []
        listing = json.loads(run(["ctest", "--test-dir", folder, "--show-only=json-v1"]))
        for test in listing["tests"]:
            command = tuple(test.get("command", ()))
            if any(word.startswith("--gtest_filter") for word in command):
                command = (command[0], "--gtest_fail_fast", "--gtest_brief=1")
            # Checksums and the page in a browser are other programs' work, and no fault is theirs.
            own = command and command[0].startswith((f"{self.build}/", f"{self.tree}/"))
            if own and command not in found:
                found.append(command)
        return found

    def passes(self, command, limit):
        shutil.rmtree(self.temp, ignore_errors=True)
        self.temp.mkdir(parents=True)

        def bounds():
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 28, 1 << 28))
            resource.setrlimit(resource.RLIMIT_AS, (1 << 33, 1 << 33))

        process = subprocess.Popen(command, cwd=self.temp, env={**os.environ, "TMPDIR": str(self.temp)},
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, start_new_session=True, preexec_fn=bounds)
        try:
            return process.wait(limit) == 0
        except subprocess.TimeoutExpired:
            return False
        finally:
            for name in filter(str.isdigit, os.listdir("/proc")):  # and what it left running
                try:
                    if os.getsid(int(name)) == process.pid:  # in groups of their own, too
                        os.kill(int(name), signal.SIGKILL)
                except ProcessLookupError:
                    pass
            process.wait()

    def make(self, *targets):
        return subprocess.run(["ninja", "-C", self.build, *targets], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def room_of(self, file):
        """The outermost of its folders that has a room: tables/page is tables."""
        return next((part for part in Path(file).parts[:-1] if part in self.rooms), "cli")

    def objects(self, file):
        return {name: hashlib.md5((self.build / name).read_bytes()).digest() for name in self.users[file]}

    def judge(self, fault, own_only):
        """"caught", "survived", or "none" for what is no fault."""
        if not self.users[fault.file]:
            return "none"
        path = self.tree / fault.file
        original = path.read_text()
        self.make(*self.users[fault.file])  # the original's, after an earlier fault
        before = self.objects(fault.file)
        try:
            path.write_text(fault.mutated)
            if not self.make(*self.users[fault.file]) or self.objects(fault.file) == before:
                return "none"
            return "survived" if self.survives(fault, own_only) else "caught"
        finally:
            path.write_text(original)

    def survives(self, fault, own_only):
        own = self.room_of(fault.file)
        if self.room_catches(own):
            return False
        if own_only:
            return True
        # Asked of all before any is built: what doesn't depend on the fault has nothing to build.
        touched = [room for room in self.rooms if room != own and not self.is_built(room)]
        touched.sort(key=lambda room: sum(self.times[command] for command in self.rooms[room]))
        return not any(self.room_catches(room) for room in touched)

    def is_built(self, room):
        dry = subprocess.run(["ninja", "-C", self.build, "-n", f"tests/{room}/all"],
                             stdout=subprocess.PIPE, text=True)
        return "no work to do" in dry.stdout

    def room_catches(self, room):
        if not self.make(f"tests/{room}/all"):
            return True  # it no longer links, or a program that the build runs fails
        return not all(self.passes(command, 10 + TESTED * self.times[command])
                       for command in sorted(self.rooms[room], key=self.times.get))


def lines_run(copy, kept, fresh):
    """Product file -> its lines, each with whether a test runs it. A line that the compiler says
    nothing about, in a table or a long statement, goes with the one above it."""
    if kept.exists() and not fresh:
        return json.loads(kept.read_text())
    say("finding the lines that tests run")
    for command in (["cmake", "--preset", "coverage"], ["cmake", "--build", "--preset", "coverage"]):
        run(command, cwd=copy.tree)
    data = copy.tree / "build/coverage"
    for path in data.rglob("*.gcda"):
        path.unlink()
    run(["ctest", "--preset", "coverage", "-j", "2"], cwd=copy.tree)
    counts = defaultdict(lambda: defaultdict(int))
    for path in data.rglob("*.gcda"):
        for part in run(["gcov", "--json-format", "--stdout", path], cwd=data).splitlines():
            listing = json.loads(part)
            for entry in listing["files"]:
                file = os.path.relpath(os.path.join(listing["current_working_directory"], entry["file"]),
                                       copy.tree)
                for line in entry["lines"]:
                    counts[file][line["line_number"]] += line["count"]
    found = {}
    for file in copy.product:
        ran, found[file] = any(counts[file].values()), []
        for number, text in enumerate((copy.tree / file).read_text().splitlines(), 1):
            ran = counts[file].get(number, ran) > 0
            found[file].append((text, ran))
    kept.write_text(json.dumps(found))
    return found


def lines_run_now(text, kept):
    """Numbers of the lines of a file that tests run, by a finding that may be of an earlier text."""
    rows = text.splitlines()
    current = set(range(1, len(rows) + 1))
    matcher = difflib.SequenceMatcher(None, [row for row, _ in kept], rows, autojunk=False)
    for block in matcher.get_matching_blocks():
        current -= {block.b + k + 1 for k in range(block.size) if not kept[block.a + k][1]}
    return current


# ---------------------------------------------------------------------------------------------

def say(text):
    print(text, flush=True)


def sequence(copy, found, under, rng):
    """Faults without end of the lines' supply: a line by chance, then a place on it, then a variant."""
    lines = []
    for file in copy.product:
        if not file.startswith(under):
            continue
        text = (copy.tree / file).read_text()
        current = lines_run_now(text, found.get(file, []))
        for line, places in sorted(faults_of(text, rng).items()):
            if line in current:
                lines.append((file, text, places))
    known = equivalents()
    rng.shuffle(lines)
    for file, text, places in lines:
        fault = Fault(file, text, *rng.choice(rng.choice(places)))
        if fault.key() not in known:
            yield fault


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=200, help="faults to count (200)")
    parser.add_argument("--under", default="", metavar="FOLDER", help="only files under this folder")
    parser.add_argument("--own", action="store_true", help="try the tests of a fault's own room alone")
    parser.add_argument("--jobs", type=int, default=1, help="copies that work side by side (1)")
    parser.add_argument("--fresh", action="store_true", help="find anew which lines tests run")
    parser.add_argument("--work", type=Path, default=Path(tempfile.gettempdir()) / "ps_mutate",
                        help="where the copies are kept")
    options = parser.parse_args()

    under = os.path.normpath(options.under).removeprefix(".")
    under += "/" if (ROOT / under).is_dir() and under else ""  # no other folder that begins alike
    copies = [Copy(options.work / str(i + 1)) for i in range(options.jobs)]
    found = lines_run(copies[0], options.work / "lines.json", options.fresh)
    say("building and testing without a fault")
    for copy in copies:
        copy.prepare(under, options.own)

    supply = enumerate(sequence(copies[0], found, under, random.Random(options.seed)))
    results, lock, failed = {}, threading.Lock(), queue.Queue()

    def work(copy):
        try:
            while True:
                with lock:
                    counted = sum(verdict != "none" for _, verdict in results.values())
                    number, fault = next(supply, (None, None)) if counted < options.count else (None, None)
                if fault is None:
                    return
                verdict = copy.judge(fault, options.own)
                with lock:
                    results[number] = fault, verdict
                    if verdict == "survived":
                        say(f"{fault.file}:{fault.line}\n  - {fault.old}\n  + {fault.new}")
        except BaseException as error:  # told by the main thread
            failed.put(error)

    begin = time.monotonic()
    threads = [threading.Thread(target=work, args=(copy,)) for copy in copies]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if not failed.empty():
        raise failed.get()

    # In the order of the supply, so that the figure doesn't depend on which copy was quicker.
    counted = [(fault, verdict) for _, (fault, verdict) in sorted(results.items()) if verdict != "none"]
    counted = counted[:options.count]
    rooms = defaultdict(list)
    for fault, verdict in counted:
        rooms[os.path.dirname(fault.file)].append(verdict == "caught")
    for room, caught in sorted(rooms.items()):
        say(f"{room}: {sum(caught)} of {len(caught)}")
    caught = sum(verdict == "caught" for _, verdict in counted)
    say(f"seed {options.seed}: caught {caught} of {len(counted)} faults "
        f"({100 * caught / max(len(counted), 1):.0f}%), {(time.monotonic() - begin) / 60:.0f} min")


if __name__ == "__main__":
    main()
