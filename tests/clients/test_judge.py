"""The judge finds every fault, and nothing else."""

import re

import pytest
from arbiter import Position
from judge import Fault, Habits, Judge, read_info
from positions import FIRST_MOVES, MATE, MATE_IN_ONE, ONE_MOVE, SPECIAL, STALEMATE

from option_lines import read_option

INTRODUCED = """\
> uci
< id name Stand-in
< id author Nobody
< option name Hash type spin default 1 min 1 max 8
< uciok
"""

ALLOWED = {
    "ready": "> isready\n< readyok",
    "two questions": "> isready\n> isready\n< readyok\n< readyok",
    "a search": "> go movetime 5\n< info depth 1 score cp 3 pv e2e4 e7e5\n< bestmove e2e4",
    "a ponder move": "> go depth 1\n< bestmove e2e4 ponder e7e5",
    "ready in a search": "> go depth 1\n> isready\n< readyok\n< bestmove e2e4",
    "a remark at rest": "< info string at rest",
    "stopped": "> go infinite\n< info nodes 3 nps 5\n> stop\n< bestmove e2e4",
    "hit": "> position startpos moves e2e4\n> go ponder wtime 9\n> ponderhit\n< bestmove e7e5",
    "ponder and stop": "> go ponder wtime 9\n> stop\n< bestmove e2e4",
    "a position for later": "> go depth 1\n> position startpos moves e2e4\n< bestmove d2d4",
    "among": "> go searchmoves a2a3\n< bestmove a2a3",
    "no move": "> position fen 7k/5Q2/6K1/8/8/8/8/8 b - - 0 1\n> go depth 1\n"
    "< info depth 0 score cp 0\n< bestmove (none)",
    "a promotion": "> position fen 8/P6k/8/8/8/8/7K/8 w - - 0 1\n> go depth 1\n< bestmove a7a8q",
    "castling": "> position fen 4k3/8/8/8/8/8/8/4K2R w K - 0 1\n> go depth 1\n< bestmove e1g1",
    "a long line": "> go depth 1\n< info string " + "x" * 3900 + "\n< bestmove e2e4",
    "after quit": "> quit\n< bestmove e2e4",
}

FORBIDDEN = {
    "unasked readyok": "< readyok",
    "readyok twice": "> isready\n< readyok\n< readyok",
    "unasked bestmove": "> position startpos\n< bestmove e2e4",
    "bestmove twice": "> go depth 1\n< bestmove e2e4\n< bestmove e2e4",
    "bestmove before stop": "> go infinite\n< bestmove e2e4",
    "bestmove before the hit": "> go ponder wtime 9 btime 9\n< bestmove e2e4",
    "bestmove of an endless search after a hit": "> go infinite\n> ponderhit\n< bestmove e2e4",
    "illegal bestmove": "> go depth 1\n< bestmove e2e5",
    "the other side's move": "> position startpos moves e2e4\n> go depth 1\n< bestmove d2d4",
    "a move of the position before": "> position startpos moves e2e4\n> go depth 1\n"
    "< bestmove e7e5\n> position startpos moves e2e4 e7e5\n> go depth 1\n< bestmove c7c5",
    "a promotion without a letter": "> position fen 8/P6k/8/8/8/8/7K/8 w - - 0 1\n> go depth 1\n"
    "< bestmove a7a8",
    "illegal ponder move": "> go depth 1\n< bestmove e2e4 ponder e2e4",
    "words after bestmove": "> go depth 1\n< bestmove e2e4 because",
    "an empty bestmove": "> go depth 1\n< bestmove",
    "(none) with moves": "> go depth 1\n< bestmove (none)",
    "a move without moves": "> position fen 7k/5Q2/6K1/8/8/8/8/8 b - - 0 1\n> go depth 1\n"
    "< bestmove h8g8",
    "not among": "> go searchmoves a2a3\n< bestmove e2e4",
    "illegal first move of a pv": "> go depth 1\n< info depth 1 score cp 1 pv e7e5",
    "illegal later move of a pv": "> go depth 1\n< info depth 1 score cp 1 pv e2e4 e7e5 e4e5",
    "illegal currmove": "> go depth 1\n< info currmove a1a2 currmovenumber 1",
    "info at rest": "< info depth 3",
    "info after the bestmove": "> go depth 1\n< bestmove e2e4\n< info depth 3",
    "time runs backwards": "> go depth 1\n< info time 5\n< info time 4",
    "a stray line": "< hello",
    "a blank line": "< ",
    "a carriage return": "> isready\n< readyok\r",
    "an odd character": "< info string \x07",
    "a line too long": "< info string " + "x" * 4000,
    "words after readyok": "> isready\n< readyok now",
    "an unasked uciok": "< uciok",
    "an unasked option": "< option name X type button",
}


def hold(arbiter, dialogue, habits=Habits()):
    judge = Judge(arbiter, habits)
    for line in re.split("\n", dialogue):
        if line.startswith("> "):
            judge.sent(line[2:])
        elif line.startswith("< "):
            judge.said(line[2:])
    return judge


@pytest.mark.parametrize("dialogue", ALLOWED.values(), ids=ALLOWED.keys())
def test_what_is_allowed(arbiter, dialogue):
    hold(arbiter, INTRODUCED + dialogue)


@pytest.mark.parametrize("dialogue", FORBIDDEN.values(), ids=FORBIDDEN.keys())
def test_what_is_forbidden(arbiter, dialogue):
    *before, last = dialogue.split("\n")
    judge = hold(arbiter, INTRODUCED + "\n".join(before))
    assert last.startswith("< ")
    with pytest.raises(Fault):
        judge.said(last[2:])


@pytest.mark.parametrize(
    "dialogue",
    [
        "< hello",
        "< info string hello\n< id name X",
        "< id name X",
        "> uci\n< uciok",
        "> uci\n< id name X\n< uciok",
        "> uci\n< id name",
        "> uci\n< option name A type button\n< option name a type button",
        "> uci\n< option name A type wheel default 3",
    ],
)
def test_an_introduction_that_is_none(arbiter, dialogue):
    with pytest.raises(Fault):
        hold(arbiter, dialogue)


def test_what_is_forgiven(arbiter):
    habits = Habits(greets=True, blank_lines=True, complains=("Unknown",))
    hold(arbiter, "< hello\n> uci\n< id name X\n< \n< id author Y\n< uciok", habits)
    hold(arbiter, INTRODUCED + "> xyzzy\n< Unknown command", habits)
    hold(
        arbiter,
        INTRODUCED + FORBIDDEN["not among"],
        Habits(passes_over_searchmoves=True),
    )
    with pytest.raises(Fault):
        hold(arbiter, INTRODUCED + "< hello", habits)


def test_what_is_remembered_of_a_search(arbiter):
    judge = hold(
        arbiter,
        INTRODUCED + "> position startpos moves e2e4\n> go depth 2\n"
        "< info depth 1 score cp -3 pv e7e5\n"
        "< info depth 2 multipv 1 nodes 30 time 7 score mate 4 upperbound pv c7c5 g1f3\n"
        "< bestmove c7c5 ponder g1f3",
    )
    assert judge.search is None
    search = judge.last
    assert (search.bestmove, search.ponder) == ("c7c5", "g1f3")
    assert search.numbers("depth") == [1, 2]
    assert search.lines() == [["e7e5"], ["c7c5", "g1f3"]]
    assert search.scores() == [["cp", "-3"], ["mate", "4", "upperbound"]]


@pytest.mark.parametrize(
    "line",
    [
        "info",
        "info depth",
        "info depth x",
        "info depth -1",
        "info depth 1 depth 2",
        "info score cp",
        "info score cp x",
        "info score 30",
        "info pv",
        "info nodes 1 pv",
        "info speed 3",
        "info score cp 1 about pv e2e4",
    ],
)
def test_infos_that_cannot_be_read(line):
    with pytest.raises(Fault):
        read_info(line)


@pytest.mark.parametrize(
    "line",
    [
        "option name A",
        "option type check default true",
        "option name A type check",
        "option name A type check default yes",
        "option name A type spin default 1",
        "option name A type spin default 9 min 1 max 8",
        "option name A type spin default 0 min 1 max 8",
        "option name A type spin default x min 1 max 8",
        "option name A type combo default x var y var z",
        "option name A type combo default x var x var x",
        "option name A type button default x",
        "option name A type string",
        "option name A type wheel default 3",
    ],
)
def test_options_that_contradict_themselves(line):
    with pytest.raises(ValueError):
        read_option(line)


def test_options_are_read():
    option = read_option("option name Own book type check default true")
    assert (option.name, option.type, option.default) == ("Own book", "check", "true")
    option = read_option("option name Way type combo default by sea var by land var by sea")
    assert (option.default, option.var) == ("by sea", ["by land", "by sea"])
    option = read_option("option name Hash type spin default 16 min 1 max 1024")
    assert (option.min, option.max) == (1, 1024)
    assert read_option("option name Path type string default ").default == ""
    assert read_option("option name Clear type button").default is None


def test_the_positions_are_what_they_are_called(arbiter):
    assert not arbiter.legal(MATE) and arbiter.is_check(MATE)
    assert not arbiter.legal(STALEMATE) and not arbiter.is_check(STALEMATE)
    assert arbiter.legal(ONE_MOVE) == {"h1g2"}
    after = MATE_IN_ONE.after("a1a8")
    assert not arbiter.legal(after) and arbiter.is_check(after)
    assert arbiter.legal(Position()) == set(FIRST_MOVES)
    for position in SPECIAL:
        # The arbiter understands the FEN as it is written; one that could not be is put right.
        given, understood = position.fen.split(), arbiter.fen(position).split()
        assert given[:3] + given[4:] == understood[:3] + understood[4:]
        assert not arbiter.is_check(Position(other_side(position.fen)))


def other_side(fen):
    """The same men, with the other side to move and nothing to capture in passing."""
    board, side, rights, _, *counters = fen.split()
    return " ".join([board, {"w": "b", "b": "w"}[side], rights, "-", *counters])
