"""Each of the 33 options, one row each: the same lines with two settings, and what each answers.

A row fails when the option is ignored: the two answers must fit their own expectation, and neither
may fit the other's. Expectations come from a hand's reckoning, told at the row, or from the
reference transcripts, in which case the whole answer is compared with one of the settings and must
depart from it with the other.
"""

from __future__ import annotations

import dataclasses
import pathlib
import re
import subprocess
import time

import pytest
from run_dialogue import agrees, compared_lines, parse

HERE = pathlib.Path(__file__).parent
REFERENCE = {
    case.name: case
    for file in ("d7", "d9", "opt")
    for case in parse((HERE / "reference_slow" / f"{file}.txt").read_text(encoding="ascii"))
}

SET = "the option's own line goes here"


@dataclasses.dataclass(frozen=True)
class Wait:
    """A rest between two lines. The clock of a search starts with its position line."""

    seconds: float


@dataclasses.dataclass(frozen=True)
class Says:
    """Something in the answer matches the regular expression."""

    regex: str

    def fits(self, lines):
        return re.search(self.regex, "\n".join(lines), re.MULTILINE) is not None


@dataclasses.dataclass(frozen=True)
class Lacks:
    """Nothing in the answer matches it."""

    regex: str

    def fits(self, lines):
        return lines != [] and not Says(self.regex).fits(lines)


@dataclasses.dataclass(frozen=True)
class Is:
    """The answer is that of a reference transcript."""

    case: str

    def fits(self, lines):
        return agrees(REFERENCE[self.case].expected, lines)


@dataclasses.dataclass(frozen=True)
class IsNot:
    case: str

    def fits(self, lines):
        return lines != [] and not Is(self.case).fits(lines)


@dataclasses.dataclass
class Row:
    option: str
    lines: list
    first: tuple  # a setting and what it answers; no setting is the default, or an untouched button
    second: tuple


UNTOUCHED = None
PRESSED = ""


def shallow(position, *more, deep=0):
    """One position searched to a small depth with the option set."""
    return [f"setoption name Deep value {deep}", SET, f"position {position}", "go", *more]


def turned_on(option, setting, case):
    """A reference transcript that was made with this setting among others."""
    line = f"setoption name {option} value {setting}"
    sent = REFERENCE[case].sent
    assert line in sent, f"{case} does not set {option} to {setting}"
    lines = [SET if other == line else other for other in sent]
    return Row(option, lines, (setting, Is(case)), (UNTOUCHED, IsNot(case)))


def turned_off(option, setting, case):
    """A reference transcript that was made with the default, and one setting that departs."""
    assert not any(line.startswith(f"setoption name {option} ") for line in REFERENCE[case].sent)
    return Row(option, [SET, *REFERENCE[case].sent], (UNTOUCHED, Is(case)), (setting, IsNot(case)))


def manual_margin(which, other):
    """A side that is a rook or more ahead gets the margin 90 from "auto", which is level 5."""
    case = "d7 17"
    lines = [f"setoption name {which} value manual", SET, *REFERENCE[case].sent]
    return Row(f"{which} level", lines, ("5", Is(case)), (other, IsNot(case)))


# Pawns that block each other, sixteen men and seven beside the kings.
SIXTEEN = "fen 7k/p1p5/p1p1p3/p1p1p3/P1P1P3/P1P1P3/P1P5/7K b - - 0 1 moves h8g8"
SEVEN = "fen 7k/8/p7/p1p1p3/P1P1P3/8/8/7K b - - 0 1 moves h8g8"
START = "position startpos"
KINGS_AND_PAWN = "fen 8/8/8/4k3/8/8/4P3/4K3 w - - 0 1 moves e1d2"
PAWN_AHEAD = "fen 8/8/4k3/8/8/4K3/P7/8 b - - 0 1 moves e6e7"
REPETITION = "fen 7k/8/8/8/8/6q1/8/K7 w - - 0 1 moves a1b1 h8g8 b1a1 g8h8"
REPETITION_WITH_PAWNS = "fen 7k/8/8/8/8/2p3q1/2P5/K7 w - - 0 1 moves a1b1 h8g8 b1a1 g8h8"
ROOKS_AT_HOME = "fen r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1"
CASTLING_NEAR = (
    "fen r3k2r/pppq1ppp/2npbn2/4p3/4P3/2NPBN2/PPPQ1PPP/R3K2R b KQkq - 0 9 moves h7h6"
)

OPTIONS = [
    # A clock of 30000 and sixteen men: medium gives depth 6, and extreme, up to seventeen men, 8.
    Row(
        "CPU power level",
        [SET, f"position {SIXTEEN}", "go wtime 30000 btime 30000 winc 0 binc 0"],
        ("medium", Says(" depth 6 seldepth ")),
        ("extreme", Says(" depth 8 seldepth ")),
    ),
    # k stands for depth 2k.
    Row(
        "Deep",
        [SET, f"position {KINGS_AND_PAWN}", "go"],
        ("1", Says(" depth 2 seldepth ")),
        ("2", Says(" depth 4 seldepth ")),
    ),
    # With seven men and 20000 the time for a deeper pass is over after 20000 / 70 milliseconds; the
    # first pass, of depth 10, is always made.
    Row(
        "Time control",
        [
            "setoption name CPU power level value extreme",
            "setoption name Deep value 6",
            SET,
            f"position {SEVEN}",
            Wait(0.4),
            "go wtime 20000 btime 20000 winc 0 binc 0",
        ],
        ("true", Lacks(" depth 12 seldepth ")),
        ("false", Says(" depth 12 seldepth ")),
    ),
    # Sixteen men and 400000: over after 400000 / 210 milliseconds, or after 400000 / 60.
    Row(
        "Time usage",
        [
            "setoption name Deep value 6",
            SET,
            f"position {SIXTEEN}",
            Wait(2.1),
            "go wtime 400000 btime 400000 winc 0 binc 0",
        ],
        ("1", Lacks(" depth 12 seldepth ")),
        ("9", Says(" depth 12 seldepth ")),
    ),
    # The transcript reaches ply 14 at a depth of 10; without extensions nothing lies beyond it.
    Row(
        "Search extension",
        [SET, *REFERENCE["d9 7"].sent],
        (UNTOUCHED, Is("d9 7")),
        ("false", Lacks(r"(seld| d)epth 1[1-9] ")),
    ),
    turned_on("PVS", "false", "opt 24"),
    turned_off("Turbo search", "false", "d9 15"),
    # A capture that wins a bishop is enough, and the other sixteen moves are not looked at.
    Row(
        "Positive float filter",
        shallow("startpos moves a2a3 f8b4"),
        ("auto", Says("^info score cp 230 depth 1 nodes 17 pv a3b4")),
        ("full", Says("^info score cp 230 depth 1 nodes 1 pv a3b4")),
    ),
    manual_margin("Positive float filter", "4"),
    turned_off("Negative float filter", "off", "d9 19"),
    manual_margin("Negative float filter", "0"),
    turned_on("Vertical filter", "false", "opt 15"),
    turned_off("Lmr", "false", "d9 15"),
    turned_off("Null move filter", "off", "d7 22"),
    # The dearest target first, or first a man that takes a dearer one.
    Row(
        "Temperament",
        [
            "setoption name Positive float filter value full",
            *shallow("startpos moves a2a3 f8b4 d1d4 a8d5"),
        ],
        ("dynamic", Says("bestmove d4d5")),
        ("consistent", Says("bestmove a3b4")),
    ),
    turned_on("Aggressiveness", "6", "opt 8"),
    turned_off("Attack to King proximity", "9", "d7 26"),
    # A check is worth 77 or 88, less 30 for a knight left attacked; the knight's move 50 and 1.
    Row(
        "Attack by check to King",
        shallow("fen 4k3/8/8/1r6/8/8/8/1N2K2R b - - 0 1 moves e8d8"),
        ("7", Says("bestmove b1c3")),
        ("8", Says("bestmove h1h8")),
    ),
    # The draw by the first move is worth 0 or -20, and 100 centipawns less at an even last ply.
    Row(
        "Confidence",
        ["setoption name Material quociente value 0", *shallow(REPETITION)],
        ("1", Says("^info score cp -100 depth 1 nodes 2 pv a1b1")),
        ("9", Says("^info score cp -300 depth 1 nodes 2 pv a1b1")),
    ),
    # No first move attacks anything: by square values, or in the order of the squares.
    Row(
        "Positional matrices",
        ["setoption name Own book value false", "setoption name Deep value 0", SET, START],
        ("true", Says("bestmove e2e4")),
        ("false", Says("bestmove a2a4")),
    ),
    # The extra evaluation notes how deep a search has been, and it is not asked at ply 2.
    Row(
        "Extra evaluation",
        shallow(PAWN_AHEAD, deep=1),
        ("true", Says("^info score cp 220 depth 2 seldepth 1 ")),
        ("false", Says("^info score cp 220 depth 2 seldepth 2 ")),
    ),
    turned_on("Positional relevance", "8", "opt 28"),
    turned_on("Mobility", "0", "opt 27"),
    # Alike but for the move: castling comes first when it weighs enough.
    Row(
        "Castle value",
        shallow(CASTLING_NEAR, deep=2),
        ("0", Lacks("bestmove e1[cg]1")),
        ("9", Says("bestmove e1[cg]1")),
    ),
    # A pawn ahead: 10, and 2 for the ratio of 20 to 10, or nothing.
    Row(
        "Extra definition",
        shallow(PAWN_AHEAD, deep=1),
        ("true", Says("^info score cp 220 depth 2 ")),
        ("false", Says("^info score cp 200 depth 2 ")),
    ),
    # The draw: -15, and 10 or no times the logarithm of 120 to 210, the fraction cut off.
    Row(
        "Material quociente",
        shallow(REPETITION_WITH_PAWNS),
        ("0", Says("^info score cp -250 depth 1 nodes 1 pv a1b1")),
        ("9", Says("^info score cp -300 depth 1 nodes 1 pv a1b1")),
    ),
    # The book says nothing of its reasons.
    Row(
        "Own book",
        ["setoption name Deep value 0", SET, START],
        ("true", Lacks("info")),
        ("false", Says("^info score cp -100 depth 1 nodes 20 pv e2e4$")),
    ),
    # The second time the answer is remembered, and no node is searched.
    Row(
        "Memory",
        shallow("startpos moves a2a3 a7a6", "position startpos moves a2a3 a7a6", "go"),
        ("true", Says("nodes 19 .*\n.*\n.* nodes 0 ")),
        ("false", Says("nodes 19 .*\n.*\n.* nodes 19 ")),
    ),
    Row(
        "Clear memory",
        ["setoption name Deep value 0", "position startpos moves a2a3 a7a6", "go", SET]
        + ["position startpos moves a2a3 a7a6", "go"],
        (UNTOUCHED, Says("nodes 19 .*\n.*\n.* nodes 0 ")),
        (PRESSED, Says("nodes 19 .*\n.*\n.* nodes 19 ")),
    ),
    # Without tables there is nothing to say of their filling.
    Row(
        "Deep memory",
        shallow(PAWN_AHEAD, deep=1),
        ("true", Says(" hashfull 0 ")),
        ("false", Lacks("hashfull")),
    ),
    # Black's report tells how full White's last search has left White's tables.
    Row(
        "Clear deep memory",
        ["setoption name Deep value 2", "position startpos moves a2a3 a7a6", "go", SET]
        + ["position startpos moves a2a3 a7a6 b2b3 b7b6 c2c3", "go"],
        (UNTOUCHED, Says(r"bestmove(.*\n)+.* hashfull [1-9]\d* ")),
        (PRESSED, Says(r"bestmove(.*\n)+.* hashfull 0 ")),
    ),
    # Three moves lose the queen.
    Row(
        "Full info",
        shallow("fen r7/7k/8/8/8/8/5PPP/3Q2K1 w - - 0 1 moves h2h3 h7h8", deep=1),
        ("true", Says(" currmove d1a1 ")),
        ("false", Lacks(" currmove d1a1 ")),
    ),
    # A FEN allows two castlings, or none.
    Row(
        "UCI_Chess960",
        ["setoption name Deep value 0", SET, START, f"position {ROOKS_AT_HOME}", "go"],
        ("false", Says("nodes 26 ")),
        ("true", Says("nodes 24 ")),
    ),
]


def answer(engine, lines, patience):
    """What a fresh process answers to the lines, sent with their rests."""
    process = subprocess.Popen([str(engine)], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    for line in lines:
        if isinstance(line, Wait):
            time.sleep(line.seconds)
        else:
            process.stdin.write(line.encode() + b"\n")
            process.stdin.flush()
    output, _ = process.communicate(timeout=60 * patience)
    assert process.returncode == 0
    return list(compared_lines(output.decode("ascii").split("\n")[:-1], show_uci=False))


def with_setting(row, setting):
    if setting is UNTOUCHED:
        return [line for line in row.lines if line is not SET]
    line = f"setoption name {row.option}" + (f" value {setting}" if setting else "")
    return [line if other is SET else other for other in row.lines]


@pytest.mark.parametrize("row", OPTIONS, ids=lambda row: row.option)
def test_the_option_is_heeded(engine, patience, row):
    assert row.lines.count(SET) == 1
    answers = []
    for setting, expected in (row.first, row.second):
        answers.append(answer(engine, with_setting(row, setting), patience))
        assert expected.fits(answers[-1]), (setting, expected, answers[-1])
    assert not row.first[1].fits(answers[1])
    assert not row.second[1].fits(answers[0])


def test_every_option_has_its_row(engine, patience):
    printed = subprocess.run(
        [str(engine)], input=b"uci\nquit\n", capture_output=True, timeout=20 * patience, check=True
    ).stdout.decode("ascii")
    names = re.findall(r"^option name (.*) type ", printed, re.MULTILINE)
    assert names == [row.option for row in OPTIONS]
    assert len(names) == 33
