"""Transcripts of the engine's dialogue, and what it takes to replay them.

A transcript file is a list of cases, each with a fresh process:

    # what the case shows
    ; a remark, as many lines as it needs
    > a line sent to the engine
    < a line expected from it

An empty line ends the case. All lines are sent at once and the input is closed behind them, so a
case must not depend on when the engine reads. Answers are compared line by line. Left out of the
comparison is what depends on the clock or would drown the rest:

* the block that answers `uci`, from its `id name` to its `uciok`;
* lines that begin with `info nps`;
* the figure behind ` time ` in an `info score` line, which reads `time T`.

Instead of an answer, a case may state what is known of it:

    <~ regex     one line, which matches the regular expression as a whole
    <*           any number of `info` lines
    <* regex     any number of `info` lines that match

Remarks that begin with a keyword change the rules for their case:

    ; show uci     the answers to `uci` are compared too
    ; seconds N    the case may take so long (20 seconds otherwise)

In every case the process must end by itself with exit code 0, with nothing on standard error.

As a program: run_dialogue.py ENGINE FILE ... replays the files and says which cases differ.
"""

from __future__ import annotations

import dataclasses
import difflib
import pathlib
import re
import subprocess
import sys
from collections.abc import Iterable, Iterator

DEFAULT_SECONDS = 20.0


@dataclasses.dataclass(frozen=True)
class Expected:
    """One line of expectation: an exact text, one line by pattern, or a run of info lines."""

    kind: str  # "line", "match" or "run"
    text: str

    def accepts(self, line: str) -> bool:
        if self.kind == "line":
            return line == self.text
        if self.kind == "match":
            return re.fullmatch(self.text, line) is not None
        return line.startswith("info ") and (
            not self.text or re.fullmatch(self.text, line) is not None
        )

    def __str__(self) -> str:
        return {"line": "< ", "match": "<~ ", "run": "<* "}[self.kind] + self.text


@dataclasses.dataclass
class Case:
    name: str
    line: int = 0
    sent: list[str] = dataclasses.field(default_factory=list)
    expected: list[Expected] = dataclasses.field(default_factory=list)
    show_uci: bool = False
    seconds: float = DEFAULT_SECONDS


class FormatError(ValueError):
    pass


def parse(text: str, where: str = "") -> list[Case]:
    """The cases of a transcript file."""
    cases: list[Case] = []
    case: Case | None = None
    for number, line in enumerate(text.split("\n"), start=1):

        def wrong(what: str) -> FormatError:
            return FormatError(f"{where}:{number}: {what}: {line!r}")

        if line == "":
            case = None
        elif line.startswith("# "):
            if case is not None:
                raise wrong("a case begins before the last one has ended")
            case = Case(name=line[2:], line=number)
            cases.append(case)
        elif case is None:
            raise wrong("a line outside a case")
        elif line.startswith(";"):
            words = line[1:].split()
            if words == ["show", "uci"]:
                case.show_uci = True
            elif words[:1] == ["seconds"] and len(words) == 2:
                case.seconds = float(words[1])
        elif line == ">" or line.startswith("> "):
            case.sent.append(line[2:])
        elif line == "<*" or line.startswith("<* "):
            case.expected.append(Expected("run", line[3:]))
        elif line.startswith("<~ "):
            case.expected.append(Expected("match", line[3:]))
        elif line == "<" or line.startswith("< "):
            case.expected.append(Expected("line", line[2:]))
        else:
            raise wrong("a line of no known kind")
    names = [c.name for c in cases]
    for name in names:
        if names.count(name) > 1:
            raise FormatError(f"{where}: two cases are called {name!r}")
    return cases


def compared_lines(output: Iterable[str], show_uci: bool) -> Iterator[str]:
    """The lines of an answer that take part in the comparison, with the time masked."""
    in_uci_block = False
    for line in output:
        if not show_uci:
            if line.startswith("id name "):
                in_uci_block = True
            if in_uci_block:
                in_uci_block = line != "uciok"
                continue
        if line.startswith("info nps "):
            continue
        if line.startswith("info score "):
            line = re.sub(r" time \d+", " time T", line, count=1)
        yield line


def agrees(expected: list[Expected], lines: list[str]) -> bool:
    """Whether the lines can be read as the expectation. Runs take as many lines as is needed."""
    # reached[i] says that the lines so far can be read as the first i expectations.
    reached = [True] + [False] * len(expected)

    def skip_runs() -> None:
        for i, e in enumerate(expected):
            if reached[i] and e.kind == "run":
                reached[i + 1] = True

    skip_runs()
    for line in lines:
        following = [False] * len(reached)
        for i, e in enumerate(expected):
            if reached[i] and e.accepts(line):
                following[i if e.kind == "run" else i + 1] = True
        reached = following
        skip_runs()
    return reached[-1]


def difference(expected: list[Expected], lines: list[str]) -> str:
    """Both sides, expected and answered, for people to read."""
    return "\n".join(
        difflib.unified_diff(
            [str(e) for e in expected],
            ["< " + line for line in lines],
            "expected",
            "answered",
            lineterm="",
            n=2,
        )
    )


def replay(engine: str | pathlib.Path, case: Case, patience: float = 1.0) -> str | None:
    """Runs one case, giving it that many times its seconds. Returns what is wrong, or None."""
    seconds = case.seconds * patience
    try:
        process = subprocess.run(
            [str(engine)],
            input="".join(line + "\n" for line in case.sent).encode(),
            capture_output=True,
            timeout=seconds,
            check=False,
        )
    except subprocess.TimeoutExpired as expired:
        so_far = (expired.stdout or b"").decode("ascii", errors="replace")
        return f"no end after {seconds} seconds; the answer so far:\n{so_far}"

    output = process.stdout.decode("ascii", errors="replace")
    faults = []
    if process.returncode != 0:
        faults.append(f"exit code {process.returncode}")
    if process.stderr:
        faults.append("standard error: " + process.stderr.decode(errors="replace"))
    if output and not output.endswith("\n"):
        faults.append("the last line has no line ending")
    lines = list(compared_lines(output.split("\n")[:-1], case.show_uci))
    if not agrees(case.expected, lines):
        faults.append(difference(case.expected, lines))
    return "\n".join(faults) or None


def main(arguments: list[str]) -> int:
    if len(arguments) < 2:
        print("usage: run_dialogue.py ENGINE FILE ...", file=sys.stderr)
        return 2
    engine, *files = arguments
    passed = failed = 0
    for file in files:
        for case in parse(pathlib.Path(file).read_text(encoding="ascii"), file):
            fault = replay(engine, case)
            if fault is None:
                passed += 1
            else:
                failed += 1
                print(f"{file}:{case.line}: {case.name}\n{fault}\n")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
