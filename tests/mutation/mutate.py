#!/usr/bin/env python3
"""Breaks a copy of the engine on purpose, one fault at a time, and tells which test notices.

The faults are the rows of mutants.toml. Each is built and tested in a copy of this checkout, which
itself is never written to. A test that fails has killed the mutant if the sound engine passes the
same test right then and the mutant fails it once more; the first one counts, and the tests run from
the cheapest to the dearest.
README.md tells how to read what is printed.
"""

from __future__ import annotations

import argparse
import collections
import contextlib
import dataclasses
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import tomllib
from collections.abc import Callable, Iterator

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
TABLE = HERE / "mutants.toml"
ROOMS = ("board", "eval", "memory", "tree", "root", "frontend")

sys.path.insert(0, str(ROOT / "tests" / "dialogue"))
from run_dialogue import Case, parse, replay  # noqa: E402  (the path is set above)


# --- The table ---


@dataclasses.dataclass(frozen=True)
class Mutant:
    name: str
    file: str
    old: str
    new: str
    breaks: str
    survives: str = ""  # why no test can notice, if none can

    @property
    def room(self) -> str:
        return self.file.split("/")[1]

    @property
    def in_header(self) -> bool:
        return self.file.endswith(".h")

    @property
    def fingerprint(self) -> str:
        return hashlib.sha256("\0".join((self.file, self.old, self.new)).encode()).hexdigest()[:16]


def table(text: str) -> list[Mutant]:
    return [Mutant(**row) for row in tomllib.loads(text)["mutant"]]


@dataclasses.dataclass(frozen=True)
class First:
    """Tests that are tried before all others, of a program or of a part of it, a file."""

    program: str
    part: str
    which: str  # the filter

    @property
    def target(self) -> str:
        return f"{self.program}-{self.part}" if self.part else self.program


def tried_first(text: str) -> dict[str, First]:
    """By the name of a mutant or by file."""
    first = {}
    for key, tests in tomllib.loads(text)["first"].items():
        program, _, which = tests.partition(": ")
        program, _, part = program.partition("/")
        first[key] = First(program, part, which)
    return first


def faults_of(mutants: list[Mutant], source: Callable[[str], str]) -> list[str]:
    """What is wrong with the rows, given the text of each file."""
    faults = []
    names = collections.Counter(m.name for m in mutants)
    for m in mutants:
        if names[m.name] > 1:
            faults.append(f"{m.name}: two rows have this name")
        if m.old == m.new:
            faults.append(f"{m.name}: changes nothing")
        if m.room not in ROOMS:
            faults.append(f"{m.name}: {m.room} is no room of the engine")
        if not m.breaks:
            faults.append(f"{m.name}: does not tell what it breaks")
        count = source(m.file).count(m.old)
        if count != 1:
            faults.append(f"{m.name}: its old text occurs {count} times in {m.file}, not once")
    return faults


def source_in(root: pathlib.Path) -> Callable[[str], str]:
    def read(file: str) -> str:
        path = root / file
        return path.read_text(encoding="utf-8") if path.is_file() else ""

    return read


# --- The copy ---


class Workshop:
    """A copy of the checkout with a build of its own, and the sound programs beside it."""

    def __init__(self, work: pathlib.Path, preset: str, jobs: int) -> None:
        if work.resolve().is_relative_to(ROOT):
            raise SystemExit("the copy must lie outside the checkout")
        self.root = work.resolve()
        self.build_dir = self.root / "build" / preset
        self.sound_dir = self.root / "build" / "sound"
        self.preset, self.jobs = preset, jobs
        self.kept: set[str] = set()  # targets whose sound program is there

    def copy(self) -> None:
        """Brings the copy up to date; files that are the same keep their times, for the build."""
        listed = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=ROOT, capture_output=True, check=True,
        )  # fmt: skip
        for name in filter(None, listed.stdout.decode().split("\0")):
            there, here = ROOT / name, self.root / name
            if not there.is_file():
                continue
            if not here.is_file() or here.read_bytes() != there.read_bytes():
                here.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(there, here)
                shutil.copymode(there, here)

    def configure(self) -> None:
        command = ["cmake", "--preset", self.preset]
        if shutil.which("ccache"):
            command.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(command, cwd=self.root, stdout=subprocess.DEVNULL, check=True)

    def build(self, target: str) -> bool:
        command = ["cmake", "--build", self.build_dir, "-j", str(self.jobs), "--target", target]
        return subprocess.run(command, capture_output=True, check=False).returncode == 0

    def program(self, target: str) -> pathlib.Path:
        found = [p for p in self.build_dir.rglob(target) if p.is_file() and os.access(p, os.X_OK)]
        if len(found) != 1:
            raise SystemExit(f"{len(found)} programs are called {target}")
        return found[0]

    def sound(self, target: str) -> pathlib.Path:
        return self.sound_dir / target

    def keep_sound(self, target: str) -> None:
        """Builds the sound program, once, and puts it aside. Called while no mutant is in place."""
        if target in self.kept:
            return
        if not self.build(target):
            raise SystemExit(f"{target} of the sound engine does not compile")
        self.sound_dir.mkdir(parents=True, exist_ok=True)
        shutil.copy(self.program(target), self.sound(target))
        self.kept.add(target)

    @contextlib.contextmanager
    def broken(self, m: Mutant) -> Iterator[None]:
        path = self.root / m.file
        text = path.read_text(encoding="utf-8")
        path.write_text(text.replace(m.old, m.new), encoding="utf-8")
        try:
            yield
        finally:
            path.write_text(text, encoding="utf-8")


# --- The tests, from the cheapest to the dearest ---


@dataclasses.dataclass(frozen=True)
class Stage:
    name: str
    target: str
    # Gives the name of the first test that the program fails and the sound one passes, or None.
    first_failure: Callable[[pathlib.Path, pathlib.Path], str | None]
    room: str = ""  # whose own tests these are


def tells_apart(
    passes_with: Callable[[pathlib.Path], bool], program: pathlib.Path, sound: pathlib.Path
) -> bool:
    """A busy machine makes searches end early: such a failure is the sound engine's too, or is gone
    at the next try."""
    return not passes_with(program) and passes_with(sound) and not passes_with(program)


def transcripts(*files: str, seconds: float | None = None) -> Callable:
    def first_failure(program: pathlib.Path, sound: pathlib.Path) -> str | None:
        for file in files:
            path = ROOT / "tests" / "dialogue" / file
            for case in parse(path.read_text(encoding="ascii"), file):
                if seconds is not None:
                    case.seconds = seconds

                def answered_by(engine: pathlib.Path, case: Case = case) -> bool:
                    return replay(engine, case, PATIENCE) is None

                if tells_apart(answered_by, program, sound):
                    return f"{file}: {case.name}"
        return None

    return first_failure


def names_of_tests(program: pathlib.Path, which: str = "*") -> list[str]:
    listed = subprocess.run(
        [program, "--gtest_list_tests", f"--gtest_filter={which}"],
        capture_output=True, text=True, check=True,
    )  # fmt: skip
    names, suite = [], ""
    for line in listed.stdout.splitlines():
        word = line.split("#")[0].strip()
        if not line.startswith(" "):
            suite = word
        elif word:
            names.append(suite + word)
    return names


def passes(program: pathlib.Path, test: str) -> bool:
    with contextlib.suppress(subprocess.TimeoutExpired):
        run = subprocess.run(
            [program, f"--gtest_filter={test}"],
            capture_output=True, check=False, timeout=120 * PATIENCE,
        )  # fmt: skip
        return run.returncode == 0
    return False


def unit_tests(program: pathlib.Path, sound: pathlib.Path, which: str = "*") -> str | None:
    """Each test in a process of its own, as ctest runs them."""
    for test in names_of_tests(sound, which):

        def passed_by(p: pathlib.Path, test: str = test) -> bool:
            return passes(p, test)

        if tells_apart(passed_by, program, sound):
            return test
    return None


def signature(program: pathlib.Path, sound: pathlib.Path) -> str | None:
    def last_line(bench: pathlib.Path) -> str:
        with contextlib.suppress(subprocess.SubprocessError):
            run = subprocess.run(
                [bench, "7"], capture_output=True, text=True, check=True, timeout=300 * PATIENCE
            )
            return re.sub(r" nodes .*", "", run.stdout.splitlines()[-1])
        return "none"

    return "signature_short" if last_line(program) != last_line(sound) else None


PATIENCE = 5.0
TRIPWIRE = "signature"
STAGES = [
    Stage(
        "reference",
        "korvu",
        transcripts("reference/d1.txt", "reference/d3.txt", "reference/d5.txt"),
    ),
    Stage(
        "transcripts",
        "korvu",
        transcripts(
            *(
                f"data/{name}.txt"
                for name in (
                    "book", "root_moves", "identification", "reporting", "repetition", "readers",
                    "game_course", "game_memory", "options", "position_intake",
                )
            )
        ),
    ),  # fmt: skip
    *(
        Stage(name, name, unit_tests, room)
        for name, room in (
            ("memory_tests", "memory"), ("frontend_tests", "frontend"), ("root_tests", "root"),
            ("eval_tests", "eval"), ("board_tests", "board"), ("symmetry_tests", "board"),
            ("root_move_set_tests", "board"), ("move_set_tests", "board"), ("tree_tests", "tree"),
        )
    ),
    Stage("clock transcripts", "korvu", transcripts("data/go.txt", "data/clock_levels.txt")),
    Stage(
        "deep reference",
        "korvu",
        transcripts(
            "reference_slow/d7.txt", "reference_slow/d9.txt", "reference_slow/opt.txt", seconds=300
        ),
    ),
    Stage(TRIPWIRE, "korvu-bench", signature),
]  # fmt: skip


# --- The run ---


@dataclasses.dataclass
class Result:
    fingerprint: str
    outcome: str = "alive"  # "alive", "killed" or "not compiled"
    by: str = ""  # the stage
    test: str = ""
    passed: list[str] = dataclasses.field(default_factory=list)


class Results:
    """What is known of the mutants, kept in a file, so that a run can be ended and taken up."""

    def __init__(self, path: pathlib.Path) -> None:
        self.path = path
        kept = json.loads(path.read_text(encoding="utf-8")) if path.is_file() else {}
        self.known = {name: Result(**row) for name, row in kept.items()}

    def of(self, m: Mutant) -> Result:
        r = self.known.get(m.name)
        return r if r and r.fingerprint == m.fingerprint else Result(m.fingerprint)

    def note(self, m: Mutant, r: Result) -> None:
        self.known[m.name] = r
        rows = {name: dataclasses.asdict(row) for name, row in self.known.items()}
        self.path.write_text(json.dumps(rows, indent=1) + "\n", encoding="utf-8")


def in_order(stages: list[Stage], m: Mutant) -> list[Stage]:
    """The tests of the mutant's own room early, where they need only be linked again. A header is
    compiled into most tests: the engine tells all that it can before those of other rooms."""

    def rank(stage: Stage) -> int:
        if stage.name in ("reference", TRIPWIRE):
            return 0 if stage.name == "reference" else 5
        if m.in_header and stage.target == "korvu":
            return 1 if stage.name == "transcripts" else 3
        return 2 if stage.room == m.room else 4

    return sorted(stages, key=rank)


def try_first(shop: Workshop, first: First, r: Result) -> None:
    """Leaves no mark of a test passed: the stages run it again among the others."""
    if not shop.build(first.target):
        return
    program, sound = shop.program(first.target), shop.sound(first.target)
    test = unit_tests(program, sound, first.which)
    if test is not None:
        r.outcome, r.by, r.test = "killed", first.program, test


def try_stage(shop: Workshop, stage: Stage, r: Result) -> None:
    if not shop.build(stage.target):
        # The engine itself decides whether there is a mutant; a test that does not compile fails.
        r.outcome = "killed" if shop.build("korvu") else "not compiled"
        r.by, r.test = stage.name, "compiling it"
        return
    test = stage.first_failure(shop.program(stage.target), shop.sound(stage.target))
    if test is None:
        r.passed.append(stage.name)
    else:
        r.outcome, r.by, r.test = "killed", stage.name, test


def try_stages(shop: Workshop, left: list[Stage], m: Mutant, r: Result, results: Results) -> None:
    """Takes stages off the list as far as their sound programs are there."""
    while r.outcome == "alive" and left and left[0].target in shop.kept:
        try_stage(shop, left.pop(0), r)
        results.note(m, r)


def run(
    shop: Workshop,
    mutants: list[Mutant],
    stages: list[Stage],
    results: Results,
    first: dict[str, First],
) -> None:
    targets = {s.target for s in stages}
    for m in mutants:
        r = results.of(m)
        left = [s for s in in_order(stages, m) if s.name not in r.passed]
        if r.outcome != "alive" or not left:
            continue
        likely = first.get(m.name) or first.get(m.file)
        if likely and likely.program in targets and likely.program not in r.passed:
            shop.keep_sound(likely.target)
            with shop.broken(m):
                try_first(shop, likely, r)
                try_stages(shop, left, m, r, results)
        while r.outcome == "alive" and left:
            shop.keep_sound(left[0].target)
            with shop.broken(m):
                try_stages(shop, left, m, r, results)
        results.note(m, r)
        print(f"{m.name}: {r.outcome}", f"by {r.by}: {r.test}" if r.by else "", flush=True)


# --- The report ---


def report(mutants: list[Mutant], results: Results) -> str:
    lines = ["| Room | Made | Killed | By the signature alone | Alive |", "|---|---|---|---|---|"]
    tried = [(m, results.of(m)) for m in mutants]
    made = [(m, r) for m, r in tried if r.outcome == "killed" or r.passed]
    for room in (*ROOMS, "all"):
        of_room = [r for m, r in made if room in (m.room, "all")]
        killed = [r for r in of_room if r.outcome == "killed" and r.by != TRIPWIRE]
        tripped = [r for r in of_room if r.by == TRIPWIRE]
        alive = len(of_room) - len(killed) - len(tripped)
        lines.append(f"| {room} | {len(of_room)} | {len(killed)} | {len(tripped)} | {alive} |")
    lines += ["", "| Killed by | Mutants |", "|---|---|"]
    kinds = collections.Counter(r.by for _, r in made if r.outcome == "killed")
    lines += [f"| {s.name} | {kinds[s.name]} |" for s in STAGES if kinds[s.name]]
    lines += ["", "| Mutant | Fate |", "|---|---|"]
    for m, r in tried:
        fate = f"{r.by}: {r.test}" if r.by else m.survives or ("alive" if r.passed else "not tried")
        lines.append(f"| {m.name} | {fate.replace('|', '/')} |")
    return "\n".join(lines)


def unexplained(mutants: list[Mutant], results: Results) -> list[str]:
    """Rows that tell something else than the tests: the run has failed if there are any."""
    wrong = []
    for m in mutants:
        r = results.of(m)
        if r.outcome == "killed" and r.by != TRIPWIRE:
            if m.survives:
                wrong.append(f"{m.name} is killed, and yet there is a reason why it survives")
        elif r.outcome == "not compiled":
            wrong.append(f"{m.name} does not compile")
        elif not m.survives:
            wrong.append(f"{m.name} is alive, and nobody tells why")
    return wrong


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("names", nargs="*", help="mutants or rooms; all if none is given")
    parser.add_argument("--check", action="store_true", help="only check that the table applies")
    parser.add_argument("--report", action="store_true", help="only print what is known")
    parser.add_argument("--stages", help="comma between them: " + ", ".join(s.name for s in STAGES))
    parser.add_argument("--preset", default="plain", help="the build to break (plain)")
    parser.add_argument("--jobs", type=int, default=1, help="compilers at a time (1)")
    parser.add_argument(
        "--work",
        type=pathlib.Path,
        default=pathlib.Path(tempfile.gettempdir()) / "korvu-mutation",
        help="where the copy is made; it is kept, and the results with it",
    )
    arguments = parser.parse_args()

    text = TABLE.read_text(encoding="utf-8")
    mutants, first = table(text), tried_first(text)
    faults = faults_of(mutants, source_in(ROOT))
    if faults or arguments.check:
        print("\n".join(faults) or f"{len(mutants)} mutants apply")
        return 1 if faults else 0
    # A change of a source compiles one file, that of a header many; who survives takes all tests.
    mutants.sort(key=lambda m: (m.survives != "", m.in_header))
    if arguments.names:
        mutants = [m for m in mutants if {m.name, m.room} & set(arguments.names)]
    shop = Workshop(arguments.work, arguments.preset, arguments.jobs)
    shop.root.mkdir(parents=True, exist_ok=True)
    results = Results(shop.root / "mutation-results.json")
    if not arguments.report:
        if os.nice(0) == 0:  # else the caller has said how nice
            os.nice(19)
        asked = arguments.stages.split(",") if arguments.stages else [s.name for s in STAGES]
        stages = [s for s in STAGES if s.name in asked]
        shop.copy()
        shop.configure()
        run(shop, mutants, stages, results, first)
    print(report(mutants, results))
    wrong = unexplained(mutants, results)
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
