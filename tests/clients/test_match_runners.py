"""What programs that run matches do to an engine."""

import time

import pytest
from arbiter import Position
from positions import FIRST_MOVES, game

BULLET = "wtime 2000 btime 2000 winc 20 binc 20".split()


def test_ready_between_the_position_and_its_go(client):
    """Position, isready, go, with the whole game in each position line."""
    client.send("ucinewgame")
    client.ready("readyok after ucinewgame")
    position = Position()
    for _ in range(12):
        client.position(position)
        client.ready()
        client.go(*BULLET)
        search, _ = client.bestmove(2)
        position = position.after(search.bestmove)


@pytest.mark.parametrize("first", FIRST_MOVES)
def test_every_first_move_is_answered(client, first):
    client.position(Position(None, (first,)))
    client.ready()
    client.quiet(0.02)
    client.go(*BULLET)
    client.bestmove(2)


def test_no_word_on_a_position_before_its_go(client):
    for moves in ("", "e2e4", "e2e4 c7c5", "a2a3", "e2e4 e7e5 g1f3 d7d6"):
        client.position(Position(None, tuple(moves.split())))
        client.quiet(0.15)
    client.ready()


def test_the_last_of_several_positions_counts(client, arbiter):
    last = Position(None, tuple("d2d4 a7a6 g1h3".split()))
    for moves in ("", "e2e4", "a2a4 h7h5", "e2e4 e7e5"):
        other = Position(None, tuple(moves.split()))
        client.position(other)
        if len(other.moves) % 2 == 0:
            assert not arbiter.legal(other) & arbiter.legal(last)
    client.position(last)
    client.go("movetime", 100)
    client.bestmove(1)


def test_a_search_after_several_positions_and_ready(client):
    client.send(
        "position startpos",
        "isready",
        "position startpos moves e2e4 e7e5",
        "position startpos moves a2a3 a7a6 h2h3",
        "isready",
        "go movetime 50",
    )
    client.wait("readyok", lambda: not client.judge.asked_ready, 0.2)
    client.bestmove(1)


def test_options_in_any_case(client):
    """The names of options have no case."""
    for option in list(client.judge.options.values()):
        if option.type == "spin":
            client.send(f"setoption name {option.name.upper()} value {option.default}")
        elif option.type == "check":
            client.send(f"SetOption name {option.name} value {option.default}")
            client.send(f"setoption name {option.name.lower()} value {option.default}")
    client.send("setoption name No such option value 3", "setoption name")
    client.ready()


def test_every_option_can_be_set_to_all_it_offers(client):
    """And to its default at last; the engine plays on."""
    for option in list(client.judge.options.values()):
        values = {
            "check": ["true", "false"],
            "spin": [option.min, min(option.max or 0, (option.min or 0) + 9)],
            "combo": option.var,
        }.get(option.type, [])
        if option.type == "button":
            client.send(f"setoption name {option.name}")
        for value in [*values, option.default] if values else []:
            client.send(f"setoption name {option.name} value {value}")
    client.ready("readyok after options", 3)
    client.position(Position())
    client.go("movetime", 100)
    client.bestmove(1)


@pytest.mark.parametrize("name", ["Hash", "Threads"])
def test_what_match_runners_require_is_offered(client, name):
    option = client.judge.options[name]
    assert option.type == "spin"
    assert option.min == 1


@pytest.mark.parametrize("milliseconds", [20, 100, 500, 1000])
def test_movetime(client, milliseconds):
    """No later than a margin of 100 ms."""
    client.position(Position(None, tuple("e2e4 c7c5 g1f3 d7d6 d2d4 c5d4 f3d4 g8f6 b1c3".split())))
    client.ready()
    client.go("movetime", milliseconds)
    client.bestmove(milliseconds / 1000 + 0.1, f"bestmove of movetime {milliseconds}")


@pytest.mark.parametrize("depth", [1, 2, 4])
def test_depth(client, depth):
    client.position(Position(None, tuple("d2d4 d7d5 c2c4 e7e6 b1c3 g8f6 c1g5 f8e7".split())))
    client.go("depth", depth)
    search, _ = client.bestmove(10)
    assert search.numbers("depth"), "it tells its depth"
    assert max(search.numbers("depth")) <= depth


@pytest.mark.parametrize("nodes", [1, 1000, 30000])
def test_nodes(client, nodes):
    client.position(Position(None, tuple("d2d4 d7d5 c2c4 e7e6 b1c3 g8f6 c1g5 f8e7".split())))
    client.go("nodes", nodes)
    client.bestmove(5)


@pytest.mark.parametrize("moves_to_go", [1, 2, 40])
@pytest.mark.parametrize("colour", ["w", "b"])
def test_moves_to_go(client, moves_to_go, colour):
    """A clock for few moves, in another order of the fields; the last move may take it all."""
    moves = "e2e4 c7c5 g1f3 d7d6 d2d4 c5d4 f3d4 g8f6 b1c3".split()
    client.position(Position(None, tuple(moves if colour == "b" else moves[:-1])))
    client.go("movestogo", moves_to_go, f"{colour}inc", 0, f"{colour}time", 1000)
    client.bestmove(1.0, f"bestmove of 1 s for {moves_to_go}")


@pytest.mark.parametrize("own, other", [(300, 600000), (600000, 300)])
def test_the_clock_of_the_side_to_move_counts(client, own, other):
    """With much time it may think; with little it must not, however much the other has."""
    client.position(Position(None, ("e2e4", "a7a6", "g1f3")))  # Black to move
    client.go("wtime", other, "btime", own, "winc", 0, "binc", 0)
    if own < other:
        client.bestmove(own / 1000, "bestmove with 300 ms left")
    else:
        # A search by the wrong clock would be over at once.
        client.quiet(0.35)
        client.stop()


@pytest.mark.parametrize("left", [-100, 0, 1, 10, 50, 100])
def test_the_last_moments_of_a_clock(client, left):
    """Nothing can be asked of a clock of a moment but an answer at once; nor of one that has run
    out, which clients show as it is."""
    client.position(game(client.judge.arbiter, 20, seed=3))  # White to move
    client.go("wtime", left, "btime", 1000)
    client.bestmove(max(0.05, left / 1000), f"bestmove with {left} ms left")


def test_a_game_of_many_plies(client, arbiter):
    client.position(game(arbiter, 400, seed=7))
    client.ready()
    client.go("movetime", 100)
    client.bestmove(1)


def test_a_game_that_leads_nowhere(client):
    """Knights to and fro, a thousand plies, before a pawn moves; no client need claim a draw."""
    there_and_back = ("g1f3", "g8f6", "f3g1", "f6g8")
    client.position(Position(None, 250 * there_and_back + ("e2e4",)))
    client.ready()
    client.go("movetime", 100)
    client.bestmove(1)


def test_without_its_book_it_searches(client):
    """Under the name by which interfaces know the option."""
    client.set("OwnBook", "false")
    client.position(Position())
    client.go("depth", 2)
    search, _ = client.bestmove(5)
    assert max(search.numbers("nodes")) > 1


def test_games_in_a_row(client):
    """Two short games, each begun as new, every move within the clock and nothing late."""
    for opening in ("f2f4 e7e5", "c2c4 b8c6"):
        client.send("uci")
        client.wait("uciok", lambda: not client.judge.asked_uci, 0.5)
        client.send("ucinewgame")
        client.ready("readyok after ucinewgame")
        clocks = [1.0, 1.0]
        position = Position(None, tuple(opening.split()))
        for ply in range(16):
            client.position(position)
            shown = [int(1000 * clock) for clock in clocks]
            client.go("wtime", shown[0], "btime", shown[1], "winc", 50, "binc", 50)
            search, took = client.bestmove(clocks[ply % 2])
            clocks[ply % 2] += 0.05 - took / client.patience
            position = position.after(search.bestmove)


@pytest.mark.parametrize("pause", [0.0, 0.2])
def test_quit_during_a_search(client, pause):
    client.position(Position(None, ("e2e4", "d7d6", "d2d4")))
    client.go("wtime", 600000, "btime", 600000)
    time.sleep(pause)
    client.quit()
