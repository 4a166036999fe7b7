"""The program itself: its arguments, its options, its beginning and its end."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

import pytest

QUIET = "position startpos moves e2e4 e7e5 g1f3 d7d6"
ROOT = pathlib.Path(__file__).resolve().parents[2]


def run(program, *arguments, text=""):
    return subprocess.run(
        [program, *arguments], input=text, text=True, capture_output=True, timeout=60
    )


def gone(pid, patience):
    """Has the process ended, or does it within the time?"""
    end = time.monotonic() + 5 * patience
    while time.monotonic() < end:
        try:
            if pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()[0] == "Z":
                return True
        except (FileNotFoundError, ProcessLookupError):
            return True
        time.sleep(0.02)
    return False


def test_version(program):
    told = run(program, "--version")
    wanted = re.search(r"project\(korvu VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())
    assert told.returncode == 0
    assert told.stdout == f"korvu-uci {wanted.group(1)}\n"


def test_help(program):
    told = run(program, "--help")
    assert told.returncode == 0
    assert told.stdout.startswith("usage: korvu-uci")


@pytest.mark.parametrize("arguments", [["--verbose"], ["one", "two"]])
def test_wrong_arguments(program, arguments):
    told = run(program, *arguments)
    assert told.returncode == 2
    assert told.stderr.startswith("usage: korvu-uci")


@pytest.mark.parametrize("engine", ["/nonexistent/korvu", "/bin/true"])
def test_an_engine_that_cannot_be_had(program, engine):
    told = run(program, engine, text="uci\n")
    assert told.returncode == 1
    assert engine in told.stderr


def test_identification(uci):
    names = [line.removeprefix("option name ") for line in uci.greeting if "option name" in line]
    assert uci.greeting[0] == "id name Korvu 29.0 64bit"
    assert uci.greeting[1].startswith("id author ")
    assert len(names) == 37
    assert "Deep type spin default 9 min 0 max 9" in names
    assert "OwnBook type check default true" in names
    assert not any("Chess960" in name for name in names)


def test_uci_is_answered_at_any_time(uci):
    uci.ask(QUIET, "go wtime 900 btime 900")
    uci.send("uci")
    assert uci.up_to("uciok") == uci.greeting


def test_options_reach_the_engine(uci):
    """Without the book the start position is searched, and shows lines."""
    assert len(uci.ask("position startpos", "go wtime 9000 btime 9000")) == 1
    uci.send("setoption name ownbook value FALSE")
    assert len(uci.ask("position startpos", "go wtime 9000 btime 9000")) > 1
    uci.send("setoption name Own book value true")
    assert len(uci.ask("position startpos", "go wtime 9000 btime 9000")) == 1


def test_a_setting_that_there_is_not_is_refused_aloud(uci):
    uci.send("setoption name Threads value 2", "setoption name Nothing value 2", "isready")
    assert uci.line().startswith("info string option Threads ")
    assert uci.line() == "readyok"


def test_the_engine_is_looked_for_beside_the_program_alone(program, tmp_path):
    """Not where a build would have it."""
    for folder in ("companion", "src"):
        (tmp_path / folder).mkdir()
    alone = shutil.copy(program, tmp_path / "companion")
    engine = shutil.copy(os.environ["KORVU"], tmp_path / "src" / "korvu")
    assert run(alone, text="uci\nquit\n").returncode == 1
    shutil.move(engine, tmp_path / "companion")
    assert "uciok" in run(alone, text="uci\nquit\n").stdout


@pytest.mark.parametrize("closed, name", [("<&-", "input"), (">&-", "output"), ("<&- 2>&-", "")])
def test_without_input_or_output_it_leaves(program, closed, name):
    told = subprocess.run(
        ["sh", "-c", f'"$1" {closed}', "sh", program],
        stdin=subprocess.PIPE,
        capture_output=True,
        text=True,
        timeout=20,
    )
    assert told.returncode == 1
    assert told.stdout == ""
    assert told.stderr == (f"korvu-uci: standard {name} is closed\n" if name else "")


def test_without_a_place_for_errors_it_plays(program):
    told = subprocess.run(
        ["sh", "-c", '"$1" 2>&-', "sh", program],
        input="position startpos\ngo movetime 1000\n",
        capture_output=True,
        text=True,
        timeout=20,
    )
    assert told.returncode == 0
    assert re.fullmatch(r"bestmove \w+\n", told.stdout)


def test_a_script_on_its_input_is_answered_to_the_end(program):
    told = run(program, text="uci\nisready\nposition startpos moves e2e4\ngo movetime 1000\n")
    assert told.returncode == 0
    assert "uciok" in told.stdout and "readyok" in told.stdout
    assert told.stdout.count("bestmove") == 1


@pytest.mark.parametrize("go", ["go infinite", "go movetime 1000", ""])
def test_a_script_may_quit_at_any_point(program, go):
    told = run(program, text=f"{QUIET}\n{go}\nquit\n")
    assert told.returncode == 0
    assert told.stdout.count("bestmove") == 0


def test_a_script_from_a_file_is_answered_to_the_end(program, tmp_path):
    script = tmp_path / "script"
    script.write_text("uci\nisready\nquit")
    with script.open() as lines:
        told = subprocess.run([program], stdin=lines, capture_output=True, text=True, timeout=60)
    assert told.returncode == 0
    assert "uciok\n" in told.stdout and "readyok\n" in told.stdout


@pytest.mark.parametrize("end", ["quit", "the end of input"])
@pytest.mark.parametrize("search", [True, False], ids=["thinking", "idle"])
def test_both_end_together(uci, patience, end, search):
    if search:
        uci.send(QUIET, "go infinite")
        time.sleep(0.1)
    engine = uci.engine()
    if end == "quit":
        uci.send("quit")
    else:
        uci.process.stdin.close()
    assert uci.ends() == 0
    assert gone(engine, patience)


@pytest.fixture
def mute(tmp_path):
    """An engine that hears and says nothing."""
    path = tmp_path / "mute"
    path.write_text(f"#!{sys.executable}\nimport sys\nfor _ in sys.stdin:\n    pass\n")
    path.chmod(0o755)
    return path


# The first waits for nothing; the others for answers that might come, but no ten seconds.
@pytest.mark.parametrize(
    "text, seconds",
    [("position startpos\nquit\n", 1.5), ("uci\nquit\n", 5), ("uci\n", 5), ("go infinite\n", 5)],
)
def test_quit_does_not_wait_for_a_mute_engine(program, mute, patience, text, seconds):
    start = time.monotonic()
    assert run(program, mute, text=text).returncode == 0
    assert time.monotonic() - start < min(9, seconds * patience)


def test_lines_behind_an_early_quit_do_not_count(program):
    told = run(program, text="uci\nquit\nisready\nuci\nsetoption name Threads value 2\n")
    assert told.returncode == 0
    assert told.stdout.count("uciok") == 1
    assert "readyok" not in told.stdout and "Threads has" not in told.stdout


@pytest.mark.parametrize("how", [signal.SIGKILL, signal.SIGTERM])
def test_the_engine_does_not_outlive_the_companion(uci, patience, how):
    uci.send(QUIET, "go infinite")
    time.sleep(0.1)
    engine = uci.engine()
    uci.process.send_signal(how)
    uci.process.wait()
    assert gone(engine, patience)


def test_a_killed_engine_is_started_anew(uci, patience):
    first = uci.engine()
    os.kill(first, signal.SIGKILL)
    assert uci.line().startswith("info string ")
    assert uci.ask("position startpos", "go wtime 9000 btime 9000")[-1] == "bestmove e2e4"
    assert uci.engine() != first


def test_an_engine_killed_in_a_search_costs_no_answer(uci):
    uci.send(QUIET, "go movetime 1500")
    time.sleep(0.3)
    os.kill(uci.engine(), signal.SIGKILL)
    assert uci.up_to_bestmove()[-1].startswith("bestmove ")
    assert uci.is_silent()


def test_nothing_is_left_behind_by_many_stops(uci, patience):
    """Each leaves the engine in a search that would last; there is one engine all the time."""
    for _ in range(6):
        uci.send(QUIET, "go infinite")
        time.sleep(0.02)
        uci.send("stop")
        uci.up_to_bestmove()
    time.sleep(0.3)
    uci.engine()
    # Three of its own, two pipes, and what its event loop holds.
    assert len(os.listdir(f"/proc/{uci.process.pid}/fd")) < 14
