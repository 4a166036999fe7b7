"""Whole games through a real client, as game.py plays them; match.py plays as many as one likes."""

import re
import time

import pytest
from game import judge, opponent, play_korvu, result_of, running

from matches import Clock


@pytest.mark.parametrize("colour", ["White", "Black"])
def test_a_whole_game(engine, referee, tmp_path, capsys, colour):
    record = play_korvu(tmp_path, engine, opponent("stockfish"), colour, Clock(20))
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

    # The book was in use, where it has an answer.
    if colour == "White":
        assert moves[0] == "e2e4"
    elif engine.answers_to == "e4":
        assert moves[:2] == ["e2e4", "d7d5"]
    else:
        assert moves[0] == "a2a4"

    # Nothing stays behind when the client has gone.
    deadline = time.monotonic() + 10
    while running(engine) and time.monotonic() < deadline:
        time.sleep(0.1)
    assert running(engine) == []
