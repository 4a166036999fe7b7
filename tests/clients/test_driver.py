"""The driver finds out engines that go wrong in time, in silence or in leaving."""

import time

import pytest
from judge import Fault

SLEEPER = "subprocess.Popen(['sleep', '30'], stdout=subprocess.DEVNULL)"


def play(client):
    client.begin()
    client.send("position startpos")
    client.quiet(0.1)
    client.ready()
    client.go("movetime", 100)
    client.bestmove(0.3)
    client.quiet(0.1)
    client.quit()


def test_a_good_engine_passes(connect):
    play(connect())


@pytest.mark.parametrize(
    ("wrong", "what"),
    [
        ("'uci': lambda: say('id name X')", "no uciok"),
        ("'isready': lambda: None", "no first readyok"),
        ("'position': lambda: say('bestmove e2e4')", "nobody has asked"),
        ("'position': lambda: time.sleep(9)", "no readyok within"),
        ("'go': lambda: None", "no bestmove within"),
        ("'go': lambda: time.sleep(0.5)", "no bestmove within"),
        ("'go': lambda: say('bestmove e2e5')", "not legal"),
        ("'go': lambda: say('bestmove e2e4\\nbestmove e2e4')", "nobody has asked"),
        ("'go': lambda: sys.exit(0)", "has left"),
        ("'quit': lambda: None", "does not leave"),
        ("'quit': lambda: sys.exit(3)", "left with 3"),
        (f"'go': lambda: ({SLEEPER}, say('bestmove e2e4'))", "left 1 processes behind"),
    ],
)
def test_an_engine_that_goes_wrong_is_found_out(connect, wrong, what):
    with pytest.raises(Fault, match=what):
        play(connect(wrong))


def test_what_is_kept_back_is_waited_for(connect):
    """An answer that comes while the client waits for quiet is a fault."""
    client = connect("'go': lambda: (time.sleep(0.1), say('bestmove e2e4'))").begin()
    client.go("infinite")
    with pytest.raises(Fault, match="may end"):
        client.quiet(0.4)


def test_quiet_is_quiet(connect):
    client = connect("'go': lambda: (time.sleep(0.1), say('bestmove e2e4'))").begin()
    client.go("movetime", 100)
    with pytest.raises(Fault, match="did not wait"):
        client.quiet(0.4)


def test_a_stop_that_is_not_heard(connect):
    client = connect("'go': lambda: None").begin()
    client.go("infinite")
    with pytest.raises(Fault, match="no bestmove after stop"):
        client.stop()


def test_patience_stretches_the_time(connect):
    client = connect("'isready': lambda: (time.sleep(0.3), say('readyok'))", patience=5).begin()
    assert 0.25 < client.ready() < 0.5
    client.patience = 1
    with pytest.raises(Fault, match="no readyok within 0.10 s"):
        client.ready()


def test_the_end_of_the_input_must_end_it(connect):
    client = connect("'end': lambda: time.sleep(20)").begin()
    client.judge.leaving = True
    client.process.stdin.close()
    with pytest.raises(Fault, match="does not leave"):
        client.leaves([])


def test_a_fault_shows_its_dialogue(connect):
    client = connect("'go': lambda: say('bestmove a1a5')").begin()
    client.send("position startpos")
    client.go("depth", 1)
    with pytest.raises(Fault) as fault:
        client.bestmove(1)
    shown = [line.split(None, 1)[1] for line in str(fault.value).splitlines()[1:]]
    assert shown[-3:] == ["> position startpos", "> go depth 1", "< bestmove a1a5"]


def test_a_whole_answer_counts_from_when_it_came(connect):
    """Not from when the client looks."""
    client = connect().begin()
    client.send("isready")
    time.sleep(0.2)
    assert client.wait("readyok", lambda: not client.judge.asked_ready, 0.1) < 0.1
