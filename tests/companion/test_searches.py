"""What the companion answers to a client, with the engine itself behind it."""

import time

import pytest

QUIET = "position startpos moves e2e4 e7e5 g1f3 d7d6"
OPEN_GAME = "r1bqkbnr/pppp1ppp/2n5/4p3/2B1P3/5N2/PPPP1PPP/RNBQK2R b KQkq - 3 3"
MATE_IN_2 = "6k1/5ppp/8/8/8/8/1R6/R3K3 w - - 0 1"
TINY_CLOCKS = [f"wtime {left} btime {left}" for left in (60, 1, 0, -500)]
ENDED = [
    ("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", "cp 0"),
    ("R5k1/5ppp/8/8/8/8/8/4K3 b - - 0 1", "mate 0"),
]


def moves_of(line):
    return line.partition(" pv ")[2].split()


def move_of(lines):
    return lines[-1].split()[1]


def answer_time(uci, go):
    start = time.monotonic()
    uci.send(go)
    uci.up_to_bestmove()
    return time.monotonic() - start


def quickest(uci, go):
    """Of three tries, since a busy machine may keep any of them waiting."""
    return min(answer_time(uci, go) for _ in range(3))


def expect_no_more(uci):
    assert uci.is_silent()


@pytest.mark.parametrize(
    "position, move",
    [
        ("position startpos", "e2e4"),
        ("position startpos moves d2d4", "c7c5"),
        ("position startpos moves e2e4 c7c6 d2d4 d7d5", "e4d5"),
    ],
)
def test_the_book_answers_at_the_go_and_once(uci, position, move):
    uci.send(position, "isready")
    assert uci.line() == "readyok"
    expect_no_more(uci)
    uci.send("go wtime 300000 btime 300000")
    assert uci.line() == "bestmove " + move
    expect_no_more(uci)


@pytest.mark.parametrize("move", ["c2c4", "a2a3", "b1a3", "f2f4"])
def test_a_first_move_outside_the_book_is_answered(uci, illegal, move):
    lines = uci.ask(f"position startpos moves {move}", "go wtime 9000 btime 9000")
    assert illegal([move, move_of(lines)]) == ""


def test_the_last_of_several_positions_counts(uci, illegal):
    uci.send("position startpos moves e2e4", "position fen " + ENDED[0][0], "isready")
    uci.send(QUIET, "go wtime 9000 btime 9000")
    lines = uci.up_to_bestmove()
    assert illegal(QUIET.split()[3:] + [move_of(lines)]) == ""
    expect_no_more(uci)


def test_stop_is_answered_at_once_and_once(uci, illegal, patience):
    for position in (QUIET, "position fen " + OPEN_GAME):
        uci.send(position, "go infinite")
        while " pv " not in (line := uci.line()):
            pass
        time.sleep(0.3)
        start = time.monotonic()
        uci.send("stop")
        lines = uci.up_to_bestmove()
        assert time.monotonic() - start < 0.5 * patience
        # The last line before the move is that of the move.
        assert moves_of(lines[-2])[0] == move_of(lines)
    expect_no_more(uci)
    uci.send("isready")
    assert uci.line() == "readyok"


def test_stop_without_a_word_of_the_engine_gives_a_legal_move(uci, illegal):
    for _ in range(5):
        uci.send("position fen " + OPEN_GAME, "go infinite", "stop")
        assert illegal([move_of(uci.up_to_bestmove())], OPEN_GAME) == ""
    expect_no_more(uci)


def test_stop_without_a_go_is_nothing(uci):
    uci.send("stop", "ponderhit", "isready")
    assert uci.line() == "readyok"
    expect_no_more(uci)


def test_isready_is_answered_while_the_engine_thinks(uci):
    uci.send(QUIET, "go infinite", "isready")
    assert "readyok" in (uci.line(), uci.line(), uci.line())
    uci.send("stop")
    uci.up_to_bestmove()


NOTHING_TO_PLAY = [("8/8/8/8/8/8/8/8 w - - 0 1", "cp 0")]


def set_up(uci, fen):
    """A position that cannot be played is complained of."""
    uci.send("position fen " + fen)
    if not fen.strip("8/").startswith(" w"):
        return
    assert uci.line().startswith("info string no position to play: ")


@pytest.mark.parametrize("fen, score", ENDED + NOTHING_TO_PLAY)
def test_no_legal_move(uci, fen, score):
    set_up(uci, fen)
    uci.send("go movetime 100")
    assert uci.line() == f"info depth 0 score {score}"
    assert uci.line() == "bestmove (none)"
    for go, ends in (
        ("infinite", ["stop"]),
        ("ponder wtime 900 btime 900", ["stop", "ponderhit"]),
    ):
        for end in ends:
            uci.send("go " + go)
            assert uci.line() == f"info depth 0 score {score}"
            expect_no_more(uci)
            uci.send(end)
            assert uci.line() == "bestmove (none)"
    assert uci.ask("position startpos", "go movetime 50")[-1] == "bestmove e2e4"


@pytest.mark.parametrize("position", ["foo", "", "fen", "fen what is this", "moves e2e4"])
def test_a_position_that_cannot_be_read_leaves_the_one_before(uci, position):
    uci.send("position startpos moves d2d4", "position " + position)
    told = uci.line()
    assert told.startswith("info string no position: ") and "before is kept" in told
    uci.send("go movetime 50")
    assert uci.line() == "bestmove c7c5"


@pytest.mark.parametrize("limit", ["nodes -1", "movetime x", "depth 0", "depth", "mate 0"])
def test_a_limit_without_a_number_is_named_and_does_not_count(uci, limit):
    """Then it is a bare go, which the book may answer; and the other limits count."""
    uci.send("position startpos", "go " + limit)
    assert uci.line().startswith(f"info string go {limit}: ")
    assert uci.line() == "bestmove e2e4"
    lines = uci.ask(QUIET, f"go movetime 100 {limit}")
    assert [line for line in lines if line.startswith("info string")] == [lines[0]]


def test_moves_to_search_are_complained_of_once_a_go(uci):
    for _ in range(2):
        lines = uci.ask(QUIET, "go depth 2 searchmoves a2a3 h2h3")
        complaints = [line for line in lines if line.startswith("info string ")]
        assert len(complaints) == 1 and "searchmoves" in complaints[0]


def test_infinite_answers_on_stop_alone(uci):
    """The engine itself ends as soon as it has seen the mate."""
    uci.send("position fen " + MATE_IN_2, "go infinite")
    time.sleep(0.5)
    lines = []
    while not uci.lines.empty():
        lines.append(uci.line())
    assert any("score mate" in line for line in lines)
    assert not any(line.startswith("bestmove") for line in lines)
    uci.send("stop")
    assert uci.up_to_bestmove()[-1].startswith("bestmove ")


def test_infinite_on_a_book_position_shows_lines(uci):
    uci.send("position startpos", "go infinite")
    assert moves_of(uci.line())
    uci.send("stop")
    uci.up_to_bestmove()


def test_pondering_answers_after_ponderhit_alone(uci):
    uci.send("setoption name Ponder value true", QUIET)
    uci.send("go ponder wtime 5000 btime 5000")
    time.sleep(0.5)
    while not uci.lines.empty():
        assert not uci.line().startswith("bestmove")
    uci.send("ponderhit")
    assert uci.up_to_bestmove()[-1].startswith("bestmove ")
    uci.send("go ponder wtime 5000 btime 5000", "stop")
    assert uci.up_to_bestmove()[-1].startswith("bestmove ")
    expect_no_more(uci)


def test_the_move_to_ponder_on_is_legal(uci, illegal):
    uci.send("setoption name Ponder value true")
    words = uci.ask("position fen " + OPEN_GAME, "go movetime 400")[-1].split()
    assert words[2] == "ponder"
    assert illegal([words[1], words[3]], OPEN_GAME) == ""


def test_a_move_time_is_kept(uci, patience):
    uci.send(QUIET)
    for seconds in (0.2, 0.6):
        taken = quickest(uci, f"go movetime {int(1000 * seconds)}")
        assert 0.5 * seconds < taken < seconds * max(1, patience)


def test_time_never_runs_out(uci, patience):
    """However little is left, and with the engine just left alone in a long search."""
    uci.send(QUIET)
    for left in (60, 120, 300, 1000):
        for go in (f"go wtime {left} btime 99999", f"go btime 1 movestogo 1 wtime {left}"):
            times = []
            for _ in range(3):
                uci.send("go infinite", "stop")
                uci.up_to_bestmove()
                times.append(answer_time(uci, go))
            assert min(times) < left / 1000 * patience


def test_the_clock_of_the_side_to_move_counts(uci):
    """By the other's clock the engine would look eight plies deep."""
    lines = uci.ask("position fen " + OPEN_GAME, "go wtime 90000 btime 900 winc 0 binc 0")
    depths = {line.split(" depth ")[1].split()[0] for line in lines if " currmove " in line}
    assert depths == {"2"}


@pytest.mark.parametrize("go", ["nodes 1", "movetime 50", *TINY_CLOCKS])
def test_the_shortest_search_gives_no_man_away(uci, go):
    """The pawn on e5 is guarded; looking one ply ahead the engine takes it with the knight."""
    assert move_of(uci.ask(QUIET, "go " + go)) != "f3e5"


@pytest.mark.parametrize("depth, told", [(2, 2), (4, 4), (6, 6), (5, 4)])
def test_depth(uci, depth, told):
    lines = uci.ask(QUIET, f"go depth {depth}")
    depths = {int(line.split(" depth ")[1].split()[0]) for line in lines if " currmove " in line}
    assert max(depths) == told


def test_nodes(uci):
    lines = uci.ask(QUIET, "go nodes 20000")
    nodes = [int(line.split(" nodes ")[1].split()[0]) for line in lines if " nodes " in line]
    # The engine reports whenever a root move is done; the first report past the limit ends it.
    running = [n for n, line in zip(nodes, lines) if " currmove " in line]
    assert nodes[-1] >= 20000
    assert sum(n >= 20000 for n in running) <= 1
    assert nodes == sorted(nodes)


def test_mate(uci, illegal):
    lines = uci.ask("position fen " + MATE_IN_2, "go mate 2")
    assert any("score mate" in line for line in lines)
    uci.send("position fen 4k3/8/8/8/8/8/8/R3K3 w - - 0 1", "go mate 1")
    uci.up_to_bestmove()


FIGURES = [
    (QUIET, "go movetime 500"),
    (QUIET, "go wtime 10000 btime 10000"),
    ("position fen " + MATE_IN_2, "go depth 2"),
    ("position fen " + MATE_IN_2, "go mate 2"),
]


@pytest.mark.parametrize("position, go", FIGURES)
def test_figures_never_run_backwards(uci, position, go):
    lines = uci.ask(position, go)
    for field in (" time ", " nodes ", " depth "):
        told = [int(line.split(field)[1].split()[0]) for line in lines if field in line]
        assert told and told == sorted(told)


def test_promotions_have_their_letter(uci):
    fen = "8/P6k/8/8/8/8/8/K7 w - - 0 1"
    lines = uci.ask("position fen " + fen, "go depth 5")
    assert lines[-1] == "bestmove a7a8q"
    told = [word for line in lines for word in line.split() if word.startswith("a7a8")]
    assert told and set(told) == {"a7a8q"}


@pytest.mark.parametrize(
    "fen, move",
    [
        ("4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1", "e4d5"),
        ("4k3/8/8/3p4/4Q3/8/8/4K3 b - - 0 1", "d5e4"),
        ("6k1/5ppp/8/8/8/8/8/R3K3 w - - 0 1", "a1a8"),
    ],
)
def test_a_fen_as_the_very_first_position_is_understood(uci, fen, move):
    """By itself the engine would not know of any material."""
    assert move_of(uci.ask("position fen " + fen, "go depth 4")) == move


FENS = [
    OPEN_GAME,
    MATE_IN_2,
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1",
    "rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8",
    "8/8/8/8/k2pP2R/8/8/K7 b - e3 0 1",
    "4k3/8/8/8/8/8/8/4K3 w - - 0 1",
    "8/8/1k6/8/2pP4/8/5BK1/8 b - d3 0 1",
]


def test_every_line_of_an_analysis_is_legal(uci, illegal):
    """One position after the other, stopped at once or soon."""
    shown = 0
    for number, fen in enumerate(FENS * 2):
        uci.send("position fen " + fen, "go infinite")
        time.sleep(0.15 * (number % 2))
        uci.send("stop")
        lines = uci.up_to_bestmove()
        assert illegal([move_of(lines)], fen) == ""
        lines_of_moves = [line for line in lines if line.startswith("info") and " pv " in line]
        shown += len(lines_of_moves)
        for line in lines_of_moves[:5] + lines_of_moves[-5:]:
            assert illegal(moves_of(line), fen) == "", line
        if lines_of_moves:
            assert lines[0] == lines_of_moves[0], "the first line has moves"
    assert shown > 50


def test_words_are_taken_as_uci_asks(uci, illegal):
    uci.send_raw(b"  isready \r\n")
    assert uci.line() == "readyok"
    uci.send_raw(b"hello isready\r\n\r\n \t \r\n")
    assert uci.line() == "readyok"
    uci.send_raw(b"position\tstartpos  moves e2e4   e7e5 \r\n")
    uci.send_raw(b"  go\tquickly btime  9000  wtime 900 \r\n")
    assert uci.up_to_bestmove()[-1] == "bestmove g1f3"
    expect_no_more(uci)


def test_a_second_go_ends_the_first(uci):
    uci.send(QUIET, "go infinite", "go wtime 900 btime 900")
    uci.up_to_bestmove()
    uci.up_to_bestmove()
    expect_no_more(uci)


def test_a_new_game_forgets_the_position(uci):
    uci.send(QUIET, "ucinewgame", "go wtime 9000 btime 9000")
    assert uci.line() == "bestmove e2e4"


def test_a_new_game_is_thought_about_anew(uci):
    """By a short clock there is one search, which the game memory answers when it is asked again."""
    go = "go wtime 900 btime 900"
    searched = [len(uci.ask(QUIET, go)) > 2 for _ in range(2)]
    uci.send("ucinewgame")
    searched.append(len(uci.ask(QUIET, go)) > 2)
    assert searched == [True, False, True]
