"""Whole games under a strict clock, and what duel.py says of games that go wrong."""

import pytest
from conftest import named_by
from driver import Driver, Engine
from duel import Game, Referee, is_fault_of, opponents, play, summary

from matches import Clock
from programs import program


@pytest.fixture(scope="session")
def referee():
    return Referee(named_by("KORVU_REFEREE"))


@pytest.mark.flaky(reruns=2)  # on a busy machine the opponent's clock may run out too
@pytest.mark.parametrize("colour", ["White", "Black"])
def test_a_short_game(start, arbiter, referee, patience, colour):
    """Every line of the engine is judged, and its clock of three seconds must do."""
    engine = start().begin()
    weakest = Driver(opponents()["stockfish"], arbiter, 5.0).begin()
    try:
        drivers = (engine, weakest) if colour == "White" else (weakest, engine)
        game = play(drivers, Clock(3, 0.1), referee, ("a2a4", "h7h5"), 0.05 * patience)
    finally:
        weakest.close()
    print(game)
    assert not is_fault_of(game, colour), game.remark
    assert game.kind in ("checkmate", "stalemate", "material", "repetition", "fifty"), game
    engine.quit()


@pytest.mark.parametrize(
    ("wrong", "kind", "remark"),
    [
        ("'go': lambda: time.sleep(9)", "time", "had 0.500 s"),
        ("'go': lambda: say('bestmove e2e5')", "fault", "not legal"),
        ("'go': lambda: sys.exit(1)", "fault", "has left"),
        ("'position': lambda: say('bestmove e2e4')", "fault", "nobody has asked"),
    ],
)
def test_an_engine_that_goes_wrong_loses(connect, referee, wrong, kind, remark):
    engine, good = connect(wrong).begin(), connect().begin()
    game = play((engine, good), Clock(0.5), referee)
    assert (game.kind, game.winner, game.result()) == (kind, "Black", "0-1")
    assert remark in game.remark
    assert is_fault_of(game, "White")
    assert not is_fault_of(game, "Black")


def test_every_move_takes_from_the_clock(connect, referee):
    """The stand-in takes 0.1 s for e2e4, then plays it once more, which is not legal. Black, who
    answers by the line that it knows, is asked between."""
    white = connect("'go': lambda: (time.sleep(0.1), say('bestmove e2e4'))").begin()
    black = connect("'go': lambda: say('bestmove e7e5')").begin()
    game = play((white, black), Clock(2, 0.05), referee)
    assert (game.moves, game.kind, game.winner) == (("e2e4", "e7e5"), "fault", "Black")
    assert 1.5 < game.least[0] <= 1.9
    assert 1.8 < game.least[1] <= 2.0


@pytest.mark.parametrize(
    ("opening", "kind", "winner"),
    [
        ("f2f3 e7e5 g2g4", "checkmate", "Black"),
        ("g1f3 g8f6 f3g1 f6g8 g1f3 g8f6 f3g1", "repetition", None),
    ],
)
def test_the_rules_end_a_game(connect, referee, opening, kind, winner):
    last = {"checkmate": "d8h4", "repetition": "f6g8"}[kind]
    white = connect().begin()
    black = connect(f"'go': lambda: say('bestmove {last}')").begin()
    game = play((white, black), Clock(5), referee, opening.split())
    assert (game.kind, game.winner) == (kind, winner)


def test_the_summary_counts():
    games = [
        Game(("e2e4",) * 9, "checkmate", "White"),
        Game(("e2e4",) * 8, "checkmate", "White"),
        Game(("e2e4",) * 7, "repetition"),
        Game(("e2e4",) * 6, "time", "White"),
        Game(("e2e4",) * 5, "fault", "White"),
        Game((), "unfinished"),
    ]
    colours = ["White", "Black"] * 3
    lines = [line.split(None, 1) for line in summary(games, colours).splitlines()]
    assert ["games", "6"] in lines
    assert ["finished", "3 by the rules"] in lines
    assert ["time", "1 the companion's"] in lines
    assert ["time", "0 the opponent's"] in lines
    assert ["fault", "0 the companion's"] in lines
    assert ["fault", "1 the opponent's"] in lines
    assert ["unfinished", "1"] in lines
    assert ["score", "2.5 of 5"] in lines
    assert ["plies", "35"] in lines
    faults = [is_fault_of(game, colour) for game, colour in zip(games, colours)]
    assert faults == [False, False, False, True, False, True]


def test_the_opponents_are_there():
    assert {engine.command[0] for engine in opponents().values()} == {
        program(name) for name in opponents()
    }
    assert all(isinstance(engine, Engine) for engine in opponents().values())
