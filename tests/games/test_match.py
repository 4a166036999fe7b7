"""What match.py says of games that go wrong, and of games that do not."""

import stat
import sys

import pytest
from game import Record, korvu, opponent
from match import Outcome, outcome_of, play_one, summary

from matches import Clock

# Plays e2e4 and then goes wrong: thinks for ever, leaves, or moves a man that is not there.
STAND_IN = """\
#!{python}
import sys, time
moves = 0
for line in sys.stdin:
    word = line.split()[0] if line.split() else ""
    if word == "uci":
        print("id name Stand-in\\nuciok", flush=True)
    elif word == "isready":
        print("readyok", flush=True)
    elif word == "quit":
        break
    elif word == "go":
        moves += 1
        if moves == 1:
            print("bestmove e2e4", flush=True)
        else:
            {wrong}
"""


@pytest.mark.parametrize(
    ("wrong", "kind"),
    [
        ("time.sleep(60)", "time"),
        ("sys.exit(3)", "crash"),
        ("print('bestmove e2e4', flush=True)", "illegal"),
    ],
)
def test_an_engine_that_goes_wrong_is_found_out(tmp_path, referee, wrong, kind):
    engine = tmp_path / "korvu"
    engine.write_text(STAND_IN.format(python=sys.executable, wrong=wrong), encoding="ascii")
    engine.chmod(engine.stat().st_mode | stat.S_IXUSR)
    players = (korvu(engine), opponent("stockfish"))
    outcome = play_one(players, referee, "White", Clock(2), None)
    assert outcome.kind == kind, outcome
    assert outcome.points == 0
    assert outcome.is_korvus_fault()


FOOLS_MATE = "f3 e5 g4 Qh4#".split()


def game(moves, result, remark="", left_early=False):
    return Record("", {"Result": result}, moves, remark, left_early)


@pytest.mark.parametrize(
    ("record", "kind", "white", "black"),
    [
        (game(FOOLS_MATE, "0-1"), "checkmate", 0, 1),
        (game(FOOLS_MATE, "1-0"), "disputed", 1, 0),
        (game(FOOLS_MATE[:2] + ["Ke3"], "1-0"), "disputed", 1, 0),
        (game(FOOLS_MATE[:2], "1-0", "White wins on time"), "time", 1, 0),
        (game(FOOLS_MATE[:2], "1-0", "White wins on time", True), "crash", 1, 0),
        (game(FOOLS_MATE[:2], "*"), "unfinished", None, None),
        (game("Nf3 Nf6 Ng1 Ng8".split() * 2, "1/2-1/2"), "repetition", 0.5, 0.5),
    ],
)
def test_a_record_is_read(referee, record, kind, white, black):
    for colour, points in (("White", white), ("Black", black)):
        outcome = outcome_of(record, colour, referee)
        assert (outcome.kind, outcome.points) == (kind, points)
        lost_by_a_mishap = kind == "time" and points == 0
        assert outcome.is_korvus_fault() == (
            lost_by_a_mishap or kind in ("disputed", "crash", "unfinished")
        )


def test_the_summary_counts():
    outcomes = [
        Outcome("checkmate", 1.0, 41, ""),
        Outcome("repetition", 0.5, 60, ""),
        Outcome("time", 0.0, 30, ""),
        Outcome("time", 1.0, 20, ""),
        Outcome("unfinished", None, 0, ""),
    ]
    lines = dict(line.split(None, 1) for line in summary(outcomes).splitlines())
    assert lines["games"] == "5"
    assert lines["finished"] == "4"
    assert lines["score"] == "2.5 of 4 for Korvu"
    assert lines["time"] == "1 lost by Korvu"
    assert lines["plies"] == "151"
    assert lines["unfinished"] == "1"
    assert lines["ends"] == "time 2, checkmate 1, repetition 1, unfinished 1"
