"""PyChess plays and analyses, by its own classes, on a display that nobody sees."""

import json
import os
import pathlib
import subprocess
import sys

import pytest
from arbiter import Position, program
from positions import SPECIAL

CLIENT = pathlib.Path(__file__).parent / "pychess_client.py"


@pytest.fixture
def pychess(tmp_path, patience):
    def run(seconds, *words):
        command = [program("xvfb-run"), "-a", sys.executable, CLIENT, *map(str, words)]
        done = subprocess.run(
            command,
            env={**os.environ, "HOME": str(tmp_path), "XDG_CONFIG_HOME": str(tmp_path)},
            cwd=tmp_path,
            capture_output=True,
            text=True,
            timeout=(60 + seconds) * patience,
            check=False,
        )
        assert done.returncode == 0, done.stderr
        assert "Traceback" not in done.stderr, done.stderr
        return json.loads(done.stdout.splitlines()[-1])

    return run


def command_of(engine):
    return ",".join(map(str, engine.command))


# An engine plays as it is at the highest level; at the lowest it has little depth and no ambition.
HIGHEST, LOWEST = 20, 1


@pytest.mark.parametrize(
    ("colour", "first"), [("White", []), ("White", ["h2h3", "e7e5"]), ("Black", []), ("Black", ["a2a4"])]
)
def test_pychess_plays_a_game(pychess, arbiter, engine, colour, first):
    players = [f"{HIGHEST}:{command_of(engine)}", f"{LOWEST}:{program('stockfish')}"]
    if colour == "Black":
        players.reverse()
    game = pychess(60, "play", 5, 0.1, ",".join(first), *players)
    print(game)
    assert game["end"] == "rules", game
    assert arbiter.first_illegal(Position(), game["moves"]) is None
    assert game["moves"][: len(first)] == first
    assert len(game["moves"]) >= 4


def test_pychess_analyses(pychess, arbiter, engine):
    """One position after another, each stopped for the next."""
    fens = [position.fen for position in SPECIAL if len(arbiter.legal(position)) > 1]
    found = pychess(len(fens), "analyse", 0.4, ",".join(fens), command_of(engine))
    assert [told["fen"] for told in found] == fens
    for told in found:
        assert told["lines"] > 0, told
        assert told["legal"], told
        assert arbiter.first_illegal(Position(told["fen"]), told["moves"]) is None
