"""What programs do that play on servers: one game from the start, clocks, thinking ahead."""

import pytest
from arbiter import Position
from positions import game

CLOCKS = "wtime 60000 btime 60000 winc 1000 binc 1000".split()
MIDDLE = Position().after(*"d2d4 g8f6 c2c4 e7e6 b1c3 f8b4 e2e3 e8g8 f1d3 d7d5 g1f3 c7c5".split())
PREDICTED = MIDDLE.after("e1g1", "d5c4")


def test_a_ponder_move_is_kept_back(client):
    client.position(PREDICTED)
    client.go("ponder", *CLOCKS)
    client.quiet(0.4)
    client.ready("readyok during a search")
    client.stop()


def test_ponderhit_makes_a_search_of_it(client):
    client.position(PREDICTED)
    client.go("ponder", "wtime", 2000, "btime", 2000, "winc", 0, "binc", 0)
    client.listen(0.4)
    client.send("ponderhit")
    client.bestmove(2, "bestmove after ponderhit")


def test_ponderhit_on_a_book_move(client):
    """What was known at once is said at the hit, and not before."""
    client.position(Position(None, ("e2e4",)))
    client.go("ponder", "wtime", 1000, "btime", 1000)
    client.quiet(0.3)
    client.send("ponderhit")
    client.bestmove(1, "bestmove after ponderhit")


@pytest.mark.parametrize("words", [["ponder", *CLOCKS], [*CLOCKS, "ponder"]])
def test_another_move_than_the_predicted_one(client, words):
    client.position(PREDICTED)
    client.go(*words)
    client.listen(0.1)
    client.stop()
    client.position(MIDDLE.after("e1g1", "b8c6"))
    client.go("wtime", 1000, "btime", 1000)
    client.bestmove(1)


def test_ponderhit_at_once(client):
    client.send(PREDICTED.line(), "go ponder wtime 1000 btime 1000", "ponderhit")
    client.bestmove(1, "bestmove after ponderhit")


def test_a_game_with_thinking_ahead(client, arbiter):
    """The opponent plays the predicted move every other time."""
    client.set("Ponder", "true")
    client.send("ucinewgame")
    client.ready("readyok after ucinewgame")
    position = Position()
    pondering = False
    for turn in range(10):
        if not pondering:
            client.position(position)
            client.go("wtime", 3000, "btime", 3000, "winc", 100, "binc", 100)
        search, _ = client.bestmove(3)
        position = position.after(search.bestmove)
        replies = sorted(arbiter.legal(position))
        if not replies:
            break
        reply = search.ponder if search.ponder and turn % 2 else replies[turn % len(replies)]
        pondering = False
        if search.ponder:
            client.position(position.after(search.ponder))
            client.go("ponder", "wtime", 3000, "btime", 3000, "winc", 100, "binc", 100)
            client.quiet(0.05)
            pondering = reply == search.ponder
            if pondering:
                client.send("ponderhit")
            else:
                client.stop()
        position = position.after(reply)
    if client.judge.search:
        client.stop()


@pytest.mark.parametrize("seed", range(4))
def test_a_game_taken_up_in_its_middle(client, arbiter, seed):
    """After a lost connection the first line that the engine hears is a long one."""
    client.position(game(arbiter, 60 + seed, seed=100 + seed))
    client.go("wtime", 1500, "btime", 1500, "winc", 0, "binc", 0)
    client.bestmove(1.5)
