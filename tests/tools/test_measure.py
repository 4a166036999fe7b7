"""What tools/measure reads and reckons, and that it finds out builds which differ."""

import importlib.machinery
import importlib.util
import pathlib
import sys

import pytest

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"


def load(name):
    loader = importlib.machinery.SourceFileLoader(name, str(TOOLS / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    sys.modules[name] = module
    loader.exec_module(module)
    return module


measure = load("measure")


@pytest.mark.parametrize(
    ("position", "men"),
    [
        ("startpos", 30),
        ("startpos moves e2e4 d7d5 e4d5 d8d5", 28),
        ("startpos moves e2e4 a7a6 e4e5 d7d5 e5d6", 29),  # in passing
        ("startpos moves e2e4 e7e5 g1f3 b8c6 f1b5 a7a6 e1g1", 30),  # castling
        ("fen 8/6P1/8/8/8/2k5/8/K7 w - - 0 1 moves g7g8q", 1),
        ("fen 5r2/6P1/8/8/8/2k5/8/K7 w - - 0 1 moves g7f8q", 1),
        ("fen 8/8/8/8/8/2k5/8/K7 w - - 0 1", 0),
    ],
)
def test_men_are_counted_behind_the_moves(position, men):
    assert measure.men_without_kings(position) == men


# 30 men at usage 3: 300000 / (10 + 5). With 20 men 20 / 3 = 6, with 2 men 0.
@pytest.mark.parametrize(
    ("clock", "men", "limit"),
    [
        (300000, 30, 20000),
        (399999, 30, 20000),
        (60000, 20, 5454),
        (20000, 2, 4000),
        (1234567, 30, 66666),
    ],
)
def test_the_hard_limit(clock, men, limit):
    assert measure.hard_limit(clock, men) == limit


@pytest.mark.parametrize("clock", [9999, 10000000])
def test_a_clock_without_a_limit_in_time_is_refused(clock):
    with pytest.raises(ValueError, match="digits"):
        measure.hard_limit(clock, 30)


def test_the_positions_of_the_bench_are_read():
    text = '    {"startpos moves e2e4", {}},\n    {"fen 8/8 w - - 0 1", {"Deep value 4"}},\n'
    assert measure.positions(text) == ["startpos moves e2e4", "fen 8/8 w - - 0 1"]
    listed = (TOOLS / "bench_positions.h").read_text(encoding="ascii")
    found = measure.positions(listed)
    assert len(found) == listed.count('{"startpos ') + listed.count('{"fen ') > 40


def test_middle_games_have_enough_men():
    few, many = "fen 8/8/8/8/8/2k5/8/K7 w - - 0 1", "startpos"
    assert measure.middle_games([few, many, few, many, many], 2) == [many, many]


def test_the_totals_of_the_bench_are_read():
    output = "12\tstartpos moves e2e4\n7\tfen 8/8 w - - 0 1 moves a2a3\n19 nodes 1000 nps\n"
    assert measure.totals_of(output) == ["12", "7", "19"]


def test_the_outcomes_of_searches_are_read():
    output = (
        "info score cp 1 depth 7 nodes 10 pv a2a3\ninfo nps 5\n"
        "info score cp 2 depth 9 nodes 30 pv a2a4\nbestmove a2a4\nbestmove b2b4\n"
    )
    assert measure.outcomes_of(output) == [(30, "a2a4"), (None, "b2b4")]


def runs(*pairs):
    """Work that yields these runs by turns."""
    left = iter(pairs)
    return lambda: measure.Run(*next(left))


def test_the_least_time_of_each_counts():
    first, second = runs((3.0, "n"), (1.0, "n"), (2.0, "n")), runs((5.0, "n"), (6.0, "n"), (4.0, "n"))
    assert measure.paired(first, second, 3) == (1.0, 4.0)


def test_runs_take_turns():
    order = []

    def work(name):
        return lambda: order.append(name) or measure.Run(1.0, "n")

    measure.paired(work("a"), work("b"), 3)
    assert order == list("abbaab")


def test_builds_that_count_differently_are_found_out():
    with pytest.raises(measure.Failed, match="differ"):
        measure.paired(runs((1.0, "n")), runs((1.0, "m")), 1)


def test_processor_time_is_that_of_the_work():
    burn = "sum(range(20_000_000))"
    _, idle = measure.run([sys.executable, "-c", "import time; time.sleep(0.3)"])
    output, busy = measure.run([sys.executable, "-c", f"print({burn}, input())"], ["line"])
    assert output == "199999990000000 line\n"
    assert idle < 0.3 < 10 * busy


def test_a_process_that_fails_is_found_out():
    with pytest.raises(measure.Failed, match="ended with 3"):
        measure.run([sys.executable, "-c", "raise SystemExit(3)"])


@pytest.mark.parametrize(
    ("arguments", "told"),
    [
        (["start", "--times", "2"], "resident memory"),
        (["reply", "--count", "3"], "clock 300 ms, 3 searches: median"),
    ],
)
def test_the_engine_is_measured(engine, capsys, arguments, told):
    kind, *rest = arguments
    chosen = measure.options_of([kind, str(engine), *rest])
    chosen.measure(chosen)
    assert told in capsys.readouterr().out
