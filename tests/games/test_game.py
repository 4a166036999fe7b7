"""Whole games through a real client, as game.py plays them.

The environment variable KORVU names the engine. KORVU_REFEREE may name the built referee tool;
without it the tool is compiled here. match.py plays as many games as one likes.
"""

import os
import pathlib
import re
import shutil
import subprocess
import time

import pytest
from game import Clock, judge, korvu_against_the_weakest, result_of, running

SUPPORT = pathlib.Path(__file__).parent.parent / "support"


@pytest.fixture(scope="session")
def engine(tmp_path_factory):
    """A copy of the engine, so that its processes can be told from all others."""
    path = os.environ.get("KORVU")
    if not path:
        pytest.fail("the environment variable KORVU does not name the engine to test")
    return pathlib.Path(shutil.copy(path, tmp_path_factory.mktemp("engine") / "korvu"))


@pytest.fixture(scope="session")
def referee(tmp_path_factory):
    if "KORVU_REFEREE" in os.environ:
        return pathlib.Path(os.environ["KORVU_REFEREE"]).resolve()
    tool = tmp_path_factory.mktemp("referee") / "referee_tool"
    sources = [SUPPORT / "referee.cpp", SUPPORT / "referee_tool.cpp"]
    subprocess.run(
        [os.environ.get("CXX", "c++"), "-std=c++20", "-O2", *sources, "-o", tool], check=True
    )
    return tool


@pytest.mark.parametrize("colour", ["White", "Black"])
def test_a_whole_game(engine, referee, tmp_path, capsys, colour):
    record = korvu_against_the_weakest(tmp_path, engine, colour, Clock(20))
    with capsys.disabled():
        print(f"\n\n{record.text.strip()}\n")

    assert record.tags[colour].startswith("Korvu")
    judged = judge(referee, record.moves)
    assert "illegal" not in judged, judged
    assert int(judged["count"]) == len(record.moves)
    moves = judged["moves"].split()

    # The game went its way by the rules, to an end that the rules know.
    assert judged["verdict"] != "open", f"{record.remark}, in {judged['position']}"
    assert record.tags["Result"] == result_of(judged["verdict"], len(moves)), record.remark
    assert not re.search("illegal|forfeit|time|exit|abandon|resign", record.remark, re.IGNORECASE)

    # The book was in use.
    assert moves[:2] == ["e2e4", "d7d5"] if colour == "Black" else moves[0] == "e2e4"

    # Nothing stays behind when the client has gone.
    deadline = time.monotonic() + 10
    while running(engine) and time.monotonic() < deadline:
        time.sleep(0.1)
    assert running(engine) == []
