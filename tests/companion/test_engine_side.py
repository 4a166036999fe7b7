"""What the companion tells the engine, seen by a stand-in that writes everything down, and what it
does when the engine does not behave."""

import subprocess
import time

import pytest

BLACK_TO_MOVE = "position startpos moves g2g4 d7d5 f1g2"
WHITE_TO_MOVE = BLACK_TO_MOVE + " c8g4"
# So deep there is one search, without limits.
PLAIN_GO = "go depth 2"
GO_OF_THE_ENGINE = "go wtime 300000 btime 300000 winc 0 binc 0"
# Here there is a short one before it.
TWO_SEARCHES = "go depth 8"
FIRST_SEARCH = ["move e7e6"]


# What a go with limits sets by itself.
OWN_SETTINGS = tuple(f"setoption name {name} value " for name in ("Deep", "Memory", "Time control"))


def since_the_start(heard):
    """The lines that the last process has heard behind `uci`, but for the companion's settings."""
    last = len(heard) - heard[::-1].index("started")
    assert heard[last] == "uci"
    return [line for line in heard[last + 1 :] if not line.startswith(OWN_SETTINGS)]


def everything_since_the_start(heard):
    return heard[len(heard) - heard[::-1].index("started") + 1 :]


def settle(stand_in, wanted, patience, line="started"):
    """Waits until the stand-in has heard so many starts, or other lines."""
    end = time.monotonic() + 10 * patience
    while stand_in.heard().count(line) < wanted:
        assert time.monotonic() < end, stand_in.heard()
        time.sleep(0.02)


def test_positions_are_held_until_the_go(companion, stand_in):
    uci = companion(stand_in.plan("move e7e6"))
    uci.send("position startpos", WHITE_TO_MOVE, BLACK_TO_MOVE, "isready")
    assert uci.line() == "readyok"
    assert since_the_start(stand_in.heard()) == []
    uci.send(PLAIN_GO)
    uci.up_to_bestmove()
    assert since_the_start(stand_in.heard()) == [BLACK_TO_MOVE, GO_OF_THE_ENGINE]


def test_another_side_to_move_is_primed_and_its_answer_swallowed(companion, stand_in):
    uci = companion(stand_in.plan("move e7e6", "move d2d4", "move b1c3"))
    for position in (BLACK_TO_MOVE, WHITE_TO_MOVE, WHITE_TO_MOVE):
        uci.send(position, PLAIN_GO)
        assert len(uci.up_to_bestmove()) == 1
    assert uci.is_silent()
    assert since_the_start(stand_in.heard()) == [
        BLACK_TO_MOVE,
        GO_OF_THE_ENGINE,
        "position startpos",
        WHITE_TO_MOVE,
        GO_OF_THE_ENGINE,
        WHITE_TO_MOVE,
        GO_OF_THE_ENGINE,
    ]


def test_without_the_book_it_is_on_for_the_priming_alone(companion, stand_in):
    uci = companion(stand_in.plan("move d2d4"))
    uci.send("setoption name OwnBook value false", WHITE_TO_MOVE, PLAIN_GO)
    uci.up_to_bestmove()
    assert since_the_start(stand_in.heard()) == [
        "position startpos",
        "setoption name Own book value false",
        WHITE_TO_MOVE,
        GO_OF_THE_ENGINE,
    ]


def test_the_clients_settings_hold_again_after_a_go_with_limits(companion, stand_in):
    uci = companion(stand_in.plan("move e7e6", "move e7e6", "move e7e6"))
    uci.send("setoption name Deep value 7", BLACK_TO_MOVE, "go depth 5")
    uci.up_to_bestmove()
    uci.send("go wtime 900 btime 900")
    uci.up_to_bestmove()
    heard = everything_since_the_start(stand_in.heard())
    first, second, third = (i for i, line in enumerate(heard) if line == BLACK_TO_MOVE)
    assert set(heard[:first]) == {
        "setoption name Deep value 1",
        "setoption name Time control value false",
        "setoption name Memory value false",
    }
    assert heard[first + 2 : second] == ["setoption name Deep value 2"]
    assert set(heard[second + 2 : third]) == {
        "setoption name Deep value 7",
        "setoption name Time control value true",
        "setoption name Memory value true",
    }
    assert heard[third + 1 :] == ["go wtime 900 btime 900 winc 0 binc 0"]


def deep_settings(heard):
    settings = [line for line in heard if line.startswith("setoption name Deep")]
    return [int(line[-1]) for line in settings]


def test_a_move_time_begins_shallow(companion, stand_in):
    uci = companion(stand_in.plan(*["move e7e6"] * 4, "move b8c6"))
    uci.send(BLACK_TO_MOVE, "go movetime 5000")
    assert uci.up_to_bestmove()[-1] == "bestmove b8c6"
    assert deep_settings(stand_in.heard()) == [1, 2, 3, 4, 9]


# The share of such a clock is 400 ms: after 160 of them no other search is begun.
SHARED_CLOCK = "go wtime 10000 btime 10000 winc 0 binc 0"


def test_by_a_clock_it_goes_deeper_while_there_is_time(companion, stand_in):
    uci = companion(stand_in.plan("move e7e6", "move b8c6", "late 0.3 g8f6", "move a7a6"))
    uci.send(BLACK_TO_MOVE, SHARED_CLOCK)
    assert uci.up_to_bestmove()[-1] == "bestmove g8f6"
    assert deep_settings(stand_in.heard()) == [1, 2, 3]


def test_by_a_clock_a_search_that_takes_too_long_is_cut_short(companion, stand_in, patience):
    uci = companion(stand_in.plan("move e7e6", "late 60 g8f6"))
    start = time.monotonic()
    uci.send(BLACK_TO_MOVE, SHARED_CLOCK)
    assert uci.up_to_bestmove()[-1] == "bestmove e7e6"
    assert 0.9 < time.monotonic() - start < 1 + patience


def test_the_only_move_is_not_thought_about_for_long(companion, stand_in):
    uci = companion(stand_in.plan("move h8g8", "move h8g8"))
    uci.send("position fen 7k/5R2/8/8/8/8/8/K7 b - - 0 1", SHARED_CLOCK)
    assert uci.up_to_bestmove()[-1] == "bestmove h8g8"
    assert deep_settings(stand_in.heard()) == [1]


def test_while_pondering_no_share_is_ever_spent(companion, stand_in):
    uci = companion(stand_in.plan("late 0.4 e7e6", "move b8c6", "late 60 g8f6"))
    uci.send(BLACK_TO_MOVE, SHARED_CLOCK.replace("go", "go ponder"))
    time.sleep(0.6)
    assert deep_settings(stand_in.heard()) == [1, 2, 3]
    uci.send("stop")
    assert uci.up_to_bestmove()[-1] == "bestmove b8c6"


def test_the_first_line_of_all_is_not_taken_at_its_word(companion, stand_in):
    """It gives a bishop for nothing; then the time is up."""
    bad = "info score cp -300 depth 2 seldepth 2 currmove c8f5 currmovenumber 1 nodes 9 pv c8f5"
    uci = companion(stand_in.plan("line " + bad, "late 60 e7e6"))
    uci.send(BLACK_TO_MOVE, "go movetime 500")
    assert uci.up_to_bestmove()[-1].split()[1] != "c8f5"


def test_the_first_search_is_completed_whatever_the_nodes(companion, stand_in):
    line = "line info score cp -9 depth 2 seldepth 2 currmove {0} currmovenumber 1 nodes 9 pv {0}"
    uci = companion(stand_in.plan(line.format("a7a6"), line.format("h7h6"), "move e7e6"))
    uci.send(BLACK_TO_MOVE, "go nodes 1")
    assert uci.up_to_bestmove()[-1] == "bestmove e7e6"
    assert uci.is_silent()
    assert len([line for line in stand_in.heard() if line.startswith("go")]) == 1


def test_buttons_are_passed_on_before_the_next_search(companion, stand_in):
    uci = companion(stand_in.plan("late 0.3 e7e6", "move e7e6"))
    uci.send(BLACK_TO_MOVE, PLAIN_GO, "setoption name Clear memory")
    uci.up_to_bestmove()
    uci.send(PLAIN_GO)
    uci.up_to_bestmove()
    heard = since_the_start(stand_in.heard())
    assert heard[2:] == ["setoption name Clear memory", BLACK_TO_MOVE, GO_OF_THE_ENGINE]


def test_a_new_game_empties_the_game_memory(companion, stand_in):
    uci = companion(stand_in.plan("move e7e6", "move e7e6"))
    for _ in range(2):
        uci.send("ucinewgame", BLACK_TO_MOVE, PLAIN_GO)
        uci.up_to_bestmove()
    one_game = ["setoption name Clear memory", BLACK_TO_MOVE, GO_OF_THE_ENGINE]
    assert since_the_start(stand_in.heard()) == one_game * 2


def test_a_late_answer_is_never_passed_on(companion, stand_in):
    """It comes within the grace time, and nothing is asked for in the meantime: the same process goes
    on."""
    uci = companion(stand_in.plan("late 0.05 e7e6", "move b8c6"))
    uci.send(BLACK_TO_MOVE, PLAIN_GO)
    time.sleep(0.01)
    uci.send("stop")
    uci.up_to_bestmove()
    assert uci.is_silent()
    uci.send(BLACK_TO_MOVE, PLAIN_GO)
    assert uci.up_to_bestmove()[-1] == "bestmove b8c6"
    assert uci.is_silent()


def test_the_next_search_does_not_wait_for_the_last(companion, stand_in, patience):
    """The grace time of 100 ms is for who has nothing to ask. The quickest of five tries, since a busy
    machine may keep any of them waiting."""
    uci = companion(stand_in.plan(*["late 60 e7e6", "move b8c6"] * 5))
    waits = []
    for number in range(1, 10, 2):
        uci.send(BLACK_TO_MOVE, PLAIN_GO)
        settle(stand_in, number, patience, GO_OF_THE_ENGINE)
        time.sleep(0.01)  # the step is taken
        uci.send("stop")
        uci.up_to_bestmove()
        start = time.monotonic()
        uci.send(PLAIN_GO)
        assert uci.up_to_bestmove()[-1] == "bestmove b8c6"
        waits.append(time.monotonic() - start)
    assert min(waits) < 0.1


def test_an_engine_that_does_not_come_back_is_replaced(companion, stand_in, patience):
    uci = companion(stand_in.plan("late 60 e7e6", "move b8c6"))
    uci.send("setoption name Own book value false", BLACK_TO_MOVE, PLAIN_GO)
    time.sleep(0.05)
    uci.send("stop")
    uci.up_to_bestmove()
    settle(stand_in, 2, patience)
    uci.send(PLAIN_GO)
    assert uci.up_to_bestmove()[-1] == "bestmove b8c6"
    assert since_the_start(stand_in.heard()) == [
        "setoption name Own book value false",
        BLACK_TO_MOVE,
        GO_OF_THE_ENGINE,
    ]
    assert uci.is_silent()


def test_the_best_line_so_far_is_played(companion, stand_in):
    line = "line info score cp {} depth 6 seldepth 6 currmove {} currmovenumber 1 nodes 9 time 1 pv {}"
    uci = companion(
        stand_in.plan(
            *FIRST_SEARCH,
            line.format(10, "e7e6", "e7e6 a2a3"),
            line.format(40, "b8c6", "b8c6 a2a3"),
            line.format(-90, "a7a6", "a7a6 a2a3"),
            "late 60 e7e6",
        )
    )
    uci.send(BLACK_TO_MOVE, TWO_SEARCHES)
    for _ in range(3):
        uci.line()
    uci.send("stop")
    closing, answer = uci.up_to_bestmove()
    assert closing.endswith(" pv b8c6 a2a3") and "score cp 40 " in closing
    assert answer == "bestmove b8c6"


def test_score_and_moves_are_told_of_the_best_line_alone(companion, stand_in):
    line = "line info score cp {} depth {} currmove {} currmovenumber 1 nodes 9 time 1 pv {} a2a3"
    told = [(10, 6, "e7e6"), (-90, 6, "a7a6"), (40, 6, "b8c6"), (20, 8, "e7e6"), (-5, 8, "b8c6")]
    steps = [line.format(score, depth, move, move) for score, depth, move in told]
    uci = companion(stand_in.plan(*FIRST_SEARCH, *steps, "move e7e6"))
    uci.send(BLACK_TO_MOVE, TWO_SEARCHES)
    lines = uci.up_to_bestmove()
    opinions = [line.split(" score cp ")[1].split()[0] for line in lines if " score " in line]
    assert opinions == ["10", "40", "20"]
    assert [line.split(" pv ")[1] for line in lines if " pv " in line] == [
        "e7e6 a2a3",
        "b8c6 a2a3",
        "e7e6 a2a3",
    ]
    in_work = [line.split(" currmove ")[1].split()[0] for line in lines if " currmove " in line]
    assert in_work == [move for _, _, move in told]


def test_a_move_that_is_not_legal_is_not_passed_on(companion, stand_in, illegal):
    uci = companion(stand_in.plan("move h1h8"))
    uci.send(BLACK_TO_MOVE, PLAIN_GO)
    move = uci.up_to_bestmove()[-1].split()[1]
    assert illegal(BLACK_TO_MOVE.split()[3:] + [move]) == ""


def test_an_engine_that_dies_once_is_asked_again(companion, stand_in):
    uci = companion(stand_in.plan("die", "move b8c6"))
    uci.send(BLACK_TO_MOVE, PLAIN_GO)
    lines = uci.up_to_bestmove()
    assert lines[0].startswith("info string ")
    assert lines[-1] == "bestmove b8c6"


def test_an_engine_that_dies_over_a_position_costs_no_answer(companion, stand_in, illegal):
    uci = companion(stand_in.plan("die", "die", "move b8c6"))
    uci.send(BLACK_TO_MOVE, PLAIN_GO)
    move = uci.up_to_bestmove()[-1].split()[1]
    assert illegal(BLACK_TO_MOVE.split()[3:] + [move]) == ""
    uci.send(PLAIN_GO)
    assert uci.up_to_bestmove()[-1] == "bestmove b8c6"


def is_a_legal_answer(line, illegal):
    word, move = line.split()
    return word == "bestmove" and illegal(BLACK_TO_MOVE.split()[3:] + [move]) == ""


def test_an_engine_that_dies_while_it_starts_anew_is_tried_again(companion, stand_in):
    uci = companion(stand_in.plan("die", "unborn", "unborn", "move b8c6"))
    uci.send(BLACK_TO_MOVE, PLAIN_GO)
    assert uci.up_to_bestmove()[-1] == "bestmove b8c6"
    assert stand_in.heard().count("started") == 4


@pytest.mark.parametrize("step", ["die", "unborn"])
def test_an_engine_that_always_dies_costs_no_answer(companion, stand_in, illegal, step):
    uci = companion(stand_in.plan("die", *[step] * 80))
    for _ in range(8):
        uci.send(BLACK_TO_MOVE, PLAIN_GO)
        *told, answer = uci.up_to_bestmove()
        assert is_a_legal_answer(answer, illegal)
        assert told and all(line.startswith("info string the engine ") for line in told)
    assert stand_in.heard().count("started") < 1 + 8 * 6 + 1
    uci.send("isready")
    assert uci.up_to("readyok")[-1] == "readyok"


def test_an_engine_that_is_gone_costs_no_answer_and_may_come_back(companion, stand_in, illegal):
    uci = companion(stand_in.plan("die", "move b8c6"))
    hidden = stand_in.path.rename(stand_in.path.with_name("hidden"))
    for _ in range(2):
        uci.send(BLACK_TO_MOVE, PLAIN_GO)
        *told, answer = uci.up_to_bestmove()
        assert "does not start" in told[-1]
        assert is_a_legal_answer(answer, illegal)
    hidden.rename(stand_in.path)
    uci.send(PLAIN_GO)
    assert uci.up_to_bestmove()[-1] == "bestmove b8c6"


@pytest.mark.parametrize("go", ["go infinite", "go ponder wtime 9000 btime 9000"])
def test_without_an_engine_the_answer_waits_for_the_client(companion, stand_in, illegal, go):
    uci = companion(stand_in.plan("die", *["unborn"] * 20))
    uci.send(BLACK_TO_MOVE, go)
    while "without it" not in uci.line():
        pass
    assert uci.is_silent()
    uci.send("stop" if "infinite" in go else "ponderhit")
    assert is_a_legal_answer(uci.line(), illegal)


def test_isready_does_not_overtake_uci(program, stand_in):
    """The engine's names and options come first."""
    told = subprocess.run(
        [program, stand_in.plan()],
        input="isready\nuci\nisready\nisready\nquit\n",
        capture_output=True,
        text=True,
        timeout=60,
    ).stdout.splitlines()
    assert [line for line in told if line in ("uciok", "readyok")] == [
        "readyok",
        "uciok",
        "readyok",
        "readyok",
    ]


def test_what_a_dead_engine_has_searched_still_counts(companion, stand_in):
    line = "line info score cp 5 depth 8 currmove e7e6 currmovenumber 1 nodes {} time 1 pv e7e6"
    steps = [line.format(90), "die", line.format(7), "move e7e6"]
    uci = companion(stand_in.plan(*FIRST_SEARCH, *steps))
    uci.send(BLACK_TO_MOVE, TWO_SEARCHES)
    assert told_of(uci.up_to_bestmove(), "nodes") == [90, 97]


def told_of(lines, field):
    return [int(line.split(f" {field} ")[1].split()[0]) for line in lines if f" {field} " in line]


def test_depth_never_falls_and_every_line_has_the_speed_of_its_figures(companion, stand_in):
    """As of a mate: the engine's own last line tells how far off it is, without a time. Its lines of
    speed alone are of one of the searches only."""
    line = "line info score cp {} depth {} currmove {} currmovenumber 1 nodes 90 time 1 pv {}"
    uci = companion(
        stand_in.plan(
            line.format(10, 2, "e7e6", "e7e6"),
            "line info nps 77",
            "late 0.05 e7e6",
            line.format(-10, 8, "b8c6", "b8c6"),
            line.format(20, 8, "e7e6", "e7e6"),
            "line info score cp 20 depth 1 nodes 90 pv e7e6",
            "move e7e6",
        )
    )
    uci.send(BLACK_TO_MOVE, TWO_SEARCHES)
    lines = uci.up_to_bestmove()[:-1]
    assert told_of(lines, "depth") == sorted(told_of(lines, "depth"))
    assert max(told_of(lines, "depth")) == 8
    timed = [line for line in lines if told_of([line], "time") > [0]]
    assert timed
    for line in timed:
        (nodes,), (taken,) = told_of([line], "nodes"), told_of([line], "time")
        assert told_of([line], "nps") == [1000 * nodes // taken]
    assert all(told_of([line], "nodes") for line in lines)
