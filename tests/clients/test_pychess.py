"""PyChess plays and analyses, by its own classes, on a display that nobody sees."""

import contextlib
import json
import os
import pathlib
import signal
import subprocess
import sys

import pytest
from arbiter import Position
from positions import SPECIAL

from programs import program

CLIENT = pathlib.Path(__file__).parent / "pychess_client.py"


@pytest.fixture
def pychess(tmp_path, patience):
    def run(seconds, *words):
        command = [program("xvfb-run"), "-a", sys.executable, CLIENT, *map(str, words)]
        client = subprocess.Popen(
            command,
            env={**os.environ, "HOME": str(tmp_path), "XDG_CONFIG_HOME": str(tmp_path)},
            cwd=tmp_path,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
            start_new_session=True,
        )
        try:
            told, complaints = client.communicate(timeout=(60 + seconds) * patience)
        finally:
            with contextlib.suppress(ProcessLookupError):  # nobody is left but after a failure
                os.killpg(client.pid, signal.SIGKILL)
        assert client.returncode == 0, complaints
        assert "Traceback" not in complaints, complaints
        return json.loads(told.splitlines()[-1])

    return run


def command_of(engine):
    return ",".join(map(str, engine.command))


# An engine plays as it is at the highest level; at the lowest it has little depth and no ambition.
HIGHEST, LOWEST = 20, 1


# PyChess takes a second for itself on a busy machine, on anybody's clock.
by_a_busy_clock = pytest.mark.flaky(reruns=2)


@by_a_busy_clock
@pytest.mark.parametrize(
    ("colour", "first"),
    [("White", []), ("White", ["h2h3", "e7e5"]), ("Black", []), ("Black", ["a2a4"])],
)
def test_pychess_plays_a_game(pychess, arbiter, engine, colour, first):
    players = [f"{HIGHEST}:{command_of(engine)}", f"{LOWEST}:{program('stockfish')}"]
    if colour == "Black":
        players.reverse()
    game = pychess(60, "play", 5, 0.1, ",".join(first), *players)
    print(game)
    assert game["end"] in ("rules", "long"), game
    assert arbiter.first_illegal(Position(), game["moves"]) is None
    assert game["moves"][: len(first)] == first
    assert len(game["moves"]) >= 4


@by_a_busy_clock
def test_pychess_analyses(pychess, arbiter, engine):
    """One position after another, each stopped for the next. Now and then, with any engine, PyChess
    loses the stop that crosses a new position and asks nothing: such a position is asked again."""
    fens = [position.fen for position in SPECIAL if len(arbiter.legal(position)) > 1]
    for _ in range(3):
        found = pychess(len(fens), "analyse", 0.3, ",".join(fens), command_of(engine))
        assert [told["fen"] for told in found] == fens
        for told in found:
            assert told["legal"], told
            assert arbiter.first_illegal(Position(told["fen"]), told["moves"]) is None
        fens = [told["fen"] for told in found if told["lines"] == 0]
        if not fens:
            break
    assert not fens, "never analysed"
