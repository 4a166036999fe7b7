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


@pytest.mark.parametrize("colour", ["White", "Black"])
@pytest.mark.parametrize("first", ["", "a2a4"])
def test_pychess_plays_a_game(pychess, arbiter, engine, colour, first):
    if colour == "White" and first:
        pytest.skip("White's own first move is wanted")
    players = [command_of(engine), program("gnuchess") + ",--uci"]
    if colour == "Black":
        players.reverse()
    game = pychess(40, "play", 5, 0.1, first, *players)
    print(game)
    assert game["end"] == "rules" or game["turn"] != colour, game
    assert arbiter.first_illegal(Position(), game["moves"]) is None
    assert game["moves"][: len(first.split())] == first.split()
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
