"""Lines as clients write them, and how an engine leaves."""

import os
import signal
import time

import pytest
from arbiter import Position
from driver import LEAVE, descendants

SEARCHES = {
    "at rest": [],
    "with a position": ["position startpos moves e2e4 e7e5"],
    "in a search": ["position startpos moves e2e4 d7d6 d2d4", "go infinite"],
    "on the clock": ["position startpos moves e2e4 d7d6 d2d4", "go wtime 600000 btime 600000"],
}
each_state = pytest.mark.parametrize("lines", SEARCHES.values(), ids=SEARCHES.keys())


def test_an_introduction_is_whole(start):
    client = start()
    client.listen(0.1)
    client.uci()
    assert client.judge.names.keys() == {"name", "author"}
    assert client.judge.options
    client.uci()  # it may be asked again
    client.quit()


def test_ready_before_uci(start):
    client = start()
    client.ready("first readyok", 3)
    client.uci()
    client.quit()


@pytest.mark.parametrize("ending", ["\r\n", " \n", "\t\r\n"])
def test_line_endings(start, ending):
    client = start()
    lines = ["uci", "isready", "position startpos moves e2e4 c7c5", "go movetime 50"]
    client.send_raw("".join(line + ending for line in lines))
    client.wait("uciok", lambda: not client.judge.asked_uci, 3)
    client.bestmove(3)
    client.send_raw("quit" + ending)
    client.quit()


def test_blanks_and_tabs(client):
    client.send_raw("  position \t startpos   moves  e2e4\tc7c5 \n")
    client.send_raw("\t go   movetime\t50 \n")
    client.bestmove(1)
    client.send_raw("\n  \n\t\n")
    client.ready()


def test_unknown_words_are_passed_over(client):
    client.send("debug on", "debug off", "register later", "xyzzy", "go_on", "9")
    client.send("setoption name Nullmove value", "setoption", "setoption value 3")
    client.ready()
    client.quiet(0.1)
    client.position(Position(None, ("e2e4", "c7c5")))
    client.go("movetime", 50, "whatever", "it", "takes")
    client.bestmove(1)


def test_many_lines_at_once(client):
    """A hundred questions, a hundred answers."""
    client.send(*["isready"] * 100)
    client.wait("a hundred readyok", lambda: not client.judge.asked_ready, 0.5)
    client.quiet(0.1)


def test_ready_in_a_search_many_times(client):
    client.position(Position(None, ("e2e4", "d7d6", "d2d4")))
    client.go("infinite")
    for _ in range(20):
        client.ready("readyok during a search")
        client.listen(0.01)
    client.stop()


@each_state
def test_quit(client, lines):
    client.send(*lines)
    client.listen(0.1)
    client.quit()


@each_state
def test_the_end_of_the_input(client, lines):
    client.send(*lines)
    client.listen(0.1)
    family = descendants(client.process.pid)
    client.judge.leaving = True
    client.process.stdin.close()
    client.leaves(family)


@each_state
@pytest.mark.parametrize("how", [signal.SIGKILL, signal.SIGTERM, signal.SIGINT])
def test_a_client_that_kills(client, lines, how):
    """Nobody stays behind."""
    client.send(*lines)
    client.listen(0.1)
    family = descendants(client.process.pid)
    client.judge.leaving = True
    os.kill(client.process.pid, how)
    client.process.wait(timeout=LEAVE * client.patience)
    client.none_stay(family)


def test_at_rest_it_uses_no_processor(client):
    """Waiting is not working, for it and for all that it has started."""
    client.position(Position(None, ("e2e4", "d7d6", "d2d4")))
    client.go("movetime", 100)
    client.bestmove(1)
    client.ready()
    client.listen(0.5)
    family = [client.process.pid, *descendants(client.process.pid)]
    before = sum(map(ticks, family))
    client.listen(1.0)
    assert sum(map(ticks, family)) - before <= os.sysconf("SC_CLK_TCK") // 10


def test_a_late_answer_is_never_heard(client):
    """A search is given up and another begun; nothing of the first may come in the second."""
    for _ in range(5):
        client.position(Position(None, ("e2e4", "d7d6", "d2d4")))
        client.go("wtime", 600000, "btime", 600000)
        time.sleep(0.05)
        client.stop()
        client.position(Position(None, ("e2e4", "d7d6", "d2d4", "g8f6")))
        client.go("movetime", 100)
        client.bestmove(1)
    client.quiet(0.3)


def ticks(pid):
    with open(f"/proc/{pid}/stat", encoding="ascii") as file:
        fields = file.read().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])
