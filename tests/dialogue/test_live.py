"""What a transcript cannot show: when an answer comes, and when the process ends."""

import os
import pathlib
import re
import subprocess
import time

import pytest
from live import PATIENCE


def test_nothing_is_said_before_it_is_asked(korvu):
    process = korvu()
    assert process.is_silent()
    process.send("isready")
    assert process.line() == "readyok"


def test_every_answer_comes_while_the_input_is_open(korvu):
    process = korvu()
    process.send("uci")
    block = [process.line() for _ in range(36)]
    assert block[0].startswith("id name ")
    assert block[-1] == "uciok"
    process.send("position startpos")
    assert process.line() == "bestmove e2e4"
    process.send("go wtime 300000 btime 300000 winc 0 binc 0")
    assert process.is_silent()


def test_a_position_waits_for_its_go(korvu):
    process = korvu()
    process.send("setoption name Deep value 0", "position startpos moves a2a3 a7a6")
    assert process.is_silent()
    process.send("isready")
    assert process.is_silent()
    process.send("go")
    assert process.up_to_bestmove()[0].startswith("info score cp ")


def test_quit_in_the_go_wait_does_not_end_the_process(korvu):
    process = korvu()
    process.send("setoption name Deep value 0", "position startpos moves a2a3 a7a6", "quit")
    assert process.is_silent()
    assert process.runs()
    process.send("go")
    process.up_to_bestmove()
    assert process.runs()


@pytest.mark.parametrize("before", [[], ["uci"], ["position startpos"]])
def test_quit_ends_the_process_with_its_input_open(korvu, before):
    process = korvu()
    process.send(*before, "quit")
    assert process.ends() == 0


@pytest.mark.parametrize("before", [[], ["isready"], ["position startpos"]])
def test_the_end_of_the_input_ends_the_process(korvu, before):
    process = korvu()
    process.send(*before)
    process.process.stdin.close()
    assert process.ends() == 0


def test_nothing_is_heard_during_a_search(korvu):
    process = korvu()
    process.send("setoption name Deep value 4", "position startpos moves a2a3 a7a6", "go")
    first = process.line()
    process.send("stop", "isready", "quit")
    rest = process.up_to_bestmove()
    answers = [line for line in [first, *rest] if not line.startswith("info ")]
    assert len(answers) == 1
    assert sum(" currmovenumber " in line for line in [first, *rest]) >= 2
    assert process.line() == "readyok"
    assert process.ends() == 0


def test_a_last_line_without_an_ending_counts(korvu):
    process = korvu()
    process.send_raw(b"isready")
    process.process.stdin.close()
    assert process.line() == "readyok"
    assert process.ends() == 0


def test_a_carriage_return_is_a_character_like_any_other(korvu):
    process = korvu()
    process.send_raw(b"isready\r\nuci\r\nquit\r\n")
    assert process.is_silent()
    process.send("isready")
    assert process.line() == "readyok"


def test_lines_of_any_length_and_content_are_dropped(korvu):
    process = korvu()
    process.send_raw(b"x" * 1_000_000 + b"\n" + bytes(range(1, 10)) + bytes(range(11, 256)) + b"\n")
    process.send_raw(b"\0\nisready\0\n")
    process.send("isready")
    assert process.line() == "readyok"


def test_a_game_of_900_plies_is_taken_in(korvu):
    process = korvu()
    there_and_back = " g1f3 g8f6 f3g1 f6g8"
    line = "position startpos moves" + 225 * there_and_back
    process.send("setoption name Deep value 0", line, "go")
    info, bestmove = process.up_to_bestmove()
    # The knight's way to f3 repeats a position and is not searched; 19 of the 20 moves are.
    assert re.fullmatch(r"info score cp -100 depth 1 nodes 19 pv \w{4}", info)
    assert bestmove != "bestmove g1f3"


def test_every_running_line_tells_its_speed(korvu):
    process = korvu()
    process.send("setoption name Deep value 4", "position startpos moves a2a3 a7a6", "go")
    lines = process.up_to_bestmove()
    running = [i for i, line in enumerate(lines) if " currmovenumber " in line]
    assert len(running) >= 2
    timed = 0
    last_time = 0
    for i in running:
        nodes, time = (
            int(re.search(rf" {field} (\d+)", lines[i]).group(1)) for field in ("nodes", "time")
        )
        assert time >= last_time
        last_time = time
        if time == 0:
            assert not lines[i + 1].startswith("info nps ")
        else:
            timed += 1
            assert lines[i + 1] == f"info nps {nodes // time * 1000}"
    assert timed > 0
    assert sum(line.startswith("info nps ") for line in lines) == timed


def test_a_search_runs_in_the_one_thread_and_opens_nothing(korvu):
    process = korvu()
    of_process = pathlib.Path("/proc") / str(process.process.pid)
    if not of_process.exists():
        pytest.skip("the system does not show its processes")

    def held():
        return sorted(p.name for p in (of_process / "fd").iterdir())

    process.send("isready")
    assert process.line() == "readyok"
    before = held()
    process.send("setoption name Deep value 3", "position startpos moves a2a3 a7a6", "go")
    assert process.line().startswith("info score ")
    assert len(list((of_process / "task").iterdir())) == 1
    assert held() == before == ["0", "1", "2"]
    assert len(process.up_to_bestmove()) > 2, "it was searching still"


def test_time_runs_from_the_position_line(korvu):
    process = korvu()
    process.send("setoption name Deep value 1", "position startpos moves a2a3 a7a6")
    time.sleep(0.4)
    process.send("go")
    first = process.line()
    assert int(re.search(r" time (\d+) ", first).group(1)) >= 350


def test_output_that_nobody_takes_is_no_reason_to_stop(engine, patience):
    if not os.path.exists("/dev/full"):
        pytest.skip("there is no device that refuses everything")
    lines = b"uci\nisready\nposition startpos moves a2a3 a7a6\ngo wtime 9 btime 9\nquit\n"
    with open("/dev/full", "wb") as full:
        ended = subprocess.run(
            [str(engine)], input=lines, stdout=full, timeout=PATIENCE * patience, check=False
        )
    assert ended.returncode == 0


def test_neither_the_environment_nor_a_file_is_needed(korvu, tmp_path):
    os.chmod(tmp_path, 0o500)
    process = korvu(env={}, cwd=tmp_path, stderr=subprocess.PIPE)
    process.send("uci", "setoption name Deep value 0")
    process.send("position startpos moves a2a3 a7a6", "go", "quit")
    assert process.up_to_bestmove()[-1] == "bestmove e2e4"
    assert process.ends() == 0
    assert process.process.stderr.read() == b""
    os.chmod(tmp_path, 0o700)
    assert list(tmp_path.iterdir()) == []
