"""What people do to an engine that they analyse with, through boards on the screen."""

import time

import pytest
from arbiter import Position
from positions import (
    FIRST_MOVES,
    MATE,
    MATE_IN_ONE,
    ONE_MOVE,
    SPECIAL,
    STALEMATE,
    bare,
    game,
)

QUIET_GAME = Position(None, tuple("e2e4 e7e5 g1f3 b8c6 f1b5 a7a6 b5a4 g8f6 e1g1 f8e7".split()))


@pytest.mark.parametrize(
    "position",
    [Position(), Position(None, ("e2e4",)), QUIET_GAME, MATE_IN_ONE, ONE_MOVE, *SPECIAL[:4]],
    ids=lambda position: position.line().removeprefix("position ")[:40],
)
def test_an_endless_search_ends_by_stop_alone(client, position):
    """In positions too that a book knows or that are decided: the answer is kept back."""
    client.position(position)
    client.go("infinite")
    client.quiet(0.4)
    client.ready("readyok during a search")
    client.stop()


def test_a_position_that_has_been_searched_before(client):
    """What is remembered is kept back as well, and told."""
    client.position(QUIET_GAME)
    client.go("depth", 3)
    client.bestmove(5)
    client.position(QUIET_GAME)
    client.go("infinite")
    client.quiet(0.3)
    assert client.judge.search.lines()
    client.stop()


@pytest.mark.parametrize("times", [1, 5])
def test_stop_at_once(client, times):
    """The go and its stop in one packet: there is nothing yet to answer with but a legal move."""
    for _ in range(times):
        client.send(QUIET_GAME.line(), "go infinite", "stop")
        client.bestmove(0.1, "bestmove of stop at once")


def test_stop_ends_a_search_on_the_clock(client):
    client.position(QUIET_GAME)
    client.go("wtime", 3600000, "btime", 3600000)
    client.listen(0.2)
    client.stop()


def test_stop_and_ponderhit_mean_nothing_at_rest(client):
    client.send("stop", "ponderhit", "stop")
    client.quiet(0.2)
    client.position(QUIET_GAME)
    client.send("stop")
    client.quiet(0.1)
    client.go("movetime", 50)
    client.bestmove(1)
    client.send("stop", "stop")
    client.quiet(0.2)


def test_analysis_tells_something(client):
    """A score, a depth and a line whose moves follow one another, within a second."""
    client.position(QUIET_GAME)
    client.go("infinite")
    told = client.judge.search
    client.wait("line of moves", lambda: told.lines() and told.scores(), 1)
    assert told.numbers("depth")
    assert all(number == 1 for number in told.numbers("multipv"))
    search = client.stop()
    assert search.bestmove in {line[0] for line in search.lines()}


def test_the_bestmove_is_the_one_last_told(client):
    client.position(QUIET_GAME)
    client.go("movetime", 500)
    search, _ = client.bestmove(1)
    assert search.bestmove == search.lines()[-1][0]


def test_up_and_down_a_game(client, arbiter):
    """A person steps through a game: stop, another position, on again."""
    whole = game(arbiter, 40, seed=11).moves
    steps = [*range(12), *range(12, 4, -1), 40, 0, 39, 1]
    for plies in steps:
        client.position(Position(None, whole[:plies]))
        client.go("infinite")
        client.listen(0.03)
        client.ready("readyok during a search")
        client.stop()


def test_many_bare_positions(client, arbiter):
    """The first of them is the first thing that the engine ever hears of chess."""
    positions = bare(arbiter, 100)
    sides = {position.fen.split()[1] for position in positions}
    assert len(positions) >= 90
    assert sides == {"w", "b"}
    for position in positions:
        client.position(position)
        client.go("infinite")
        client.listen(0.02)
        client.stop()


@pytest.mark.parametrize("position", SPECIAL, ids=lambda position: position.fen)
def test_a_bare_position_first_of_all(client, position):
    client.position(position)
    client.ready()
    client.go("movetime", 150)
    client.bestmove(1)


def test_a_mate_in_one_is_found_from_a_bare_position(client):
    client.position(MATE_IN_ONE)
    client.go("movetime", 500)
    assert client.bestmove(1)[0].bestmove == "a1a8"


@pytest.mark.parametrize("position", [MATE, STALEMATE], ids=["mate", "stalemate"])
@pytest.mark.parametrize("go", ["infinite", "movetime 100", "wtime 1000 btime 1000", "depth 3"])
def test_where_there_is_no_move(client, position, go):
    client.position(position)
    client.go(go)
    if go == "infinite":
        client.quiet(0.2)
        search = client.stop()
    else:
        search, _ = client.bestmove(1)
    assert search.bestmove == "(none)"
    score = ["mate", "0"] if position is MATE else ["cp", "0"]
    assert search.scores() == [score]


@pytest.mark.parametrize("line", ["fen 4k3/8/8/8/8/8/8/R3K2R w KQ -", "startpos moves"])
def test_a_position_written_short(client, line):
    """Without the counters of a FEN, or without a move behind `moves`."""
    client.send(f"position {line}")
    client.quiet(0.05)
    client.go("movetime", 100)
    client.bestmove(1)


def test_a_position_with_moves_after_a_fen(client):
    base = Position("r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N1PN2/PP3PPP/R1BQKB1R w KQ - 4 8")
    for moves in (("c4d5",), ("c4d5", "f6d5"), ("a2a3", "a7a6", "f1d3")):
        client.position(base.after(*moves))
        client.go("movetime", 100)
        client.bestmove(1)


def test_searchmoves(client):
    """An engine that hears the word answers no other move. One that does not still answers."""
    client.position(Position())
    client.go("movetime", 100, "searchmoves", "a2a3", "h2h4")
    client.bestmove(1)
    client.go("depth", 2, "searchmoves", "g1h3")
    client.bestmove(5)
    client.go("movetime", 100)
    client.bestmove(1)


def test_mate_search(client):
    client.position(MATE_IN_ONE)
    client.go("mate", 1)
    search, _ = client.bestmove(10)
    assert search.bestmove == "a1a8"


def test_every_first_position(client):
    for first in FIRST_MOVES:
        client.position(Position(None, (first,)))
        client.go("infinite")
        client.listen(0.02)
        client.stop()


def test_go_without_a_position(start):
    """The start position is meant."""
    client = start().begin()
    client.go("movetime", 50)
    client.bestmove(1)
    client.quit()


def test_analysis_with_pauses_in_the_midst(client):
    """As a board does that is dragged about: positions quicker than the engine can think."""
    for plies in range(0, 11):
        position = Position(None, QUIET_GAME.moves[:plies])
        client.send(position.line(), "go infinite")
        if plies % 3 == 0:
            time.sleep(0.05)
        client.send("stop")
        client.bestmove(0.1, "bestmove after stop")
