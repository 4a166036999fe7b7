"""Lines that no interface should send: what they do is told by the dialogue's rules, and the next
good line is answered as ever."""

import re
import signal
import subprocess
import sys
import time

import pytest
from live import PATIENCE
from run_dialogue import compared_lines

SHALLOW = "setoption name Deep value 0"
FORGETFUL = "setoption name Memory value false"
GAME = "position startpos moves a2a3 a7a6"
MEGABYTES = 10 * 1_000_000


def said_to(engine, patience, *lines):
    """The answers to lines that are sent at once, with the input closed behind them."""
    data = b"".join((line if isinstance(line, bytes) else line.encode()) + b"\n" for line in lines)
    ended = subprocess.run(
        [str(engine)], input=data, capture_output=True, timeout=PATIENCE * patience, check=True
    )
    assert ended.stderr == b""
    return list(compared_lines(ended.stdout.decode("ascii").split("\n")[:-1], True))


def takes_a_good_game(process):
    """A process in the reply wait is as good as before. White has 19 moves after a2a3: one less for
    the pawn, the knight's b1a3 is gone and the rook's a1a2 is new; one move is counted each."""
    process.send(SHALLOW, FORGETFUL, "position startpos", GAME, "go", "isready")
    assert process.line() == "bestmove e2e4"
    info, bestmove = process.up_to_bestmove()
    assert re.fullmatch(r"info score cp -100 depth 1 nodes 19 pv \w{4}", info)
    assert bestmove == "bestmove " + info[-4:]
    assert process.line() == "readyok"


# --- Long lines, odd bytes, odd line ends ---


@pytest.mark.parametrize("beginning", ["", "setoption name Hash value ", "positional ", "go "])
def test_a_line_of_ten_megabytes_is_dropped(korvu, beginning):
    process = korvu()
    process.send(beginning + "x" * MEGABYTES, "isready")
    assert process.line() == "readyok"
    process.send("position startpos", beginning + "x" * MEGABYTES, "isready")
    assert [process.line(), process.line()] == ["bestmove e2e4", "readyok"]
    takes_a_good_game(process)


def test_a_go_and_an_option_of_ten_megabytes_count_by_their_columns(korvu):
    process = korvu()
    process.send("setoption name Deep value 0" + "x" * MEGABYTES, GAME, "x" * MEGABYTES)
    process.send("go" + "x" * MEGABYTES)
    info, _ = process.up_to_bestmove()
    assert " depth 1 nodes 19 " in info
    takes_a_good_game(process)


def test_a_fen_of_ten_megabytes_is_read_to_its_end(engine, patience):
    board = "4k3/8/8/8/8/8/4P3/4K3"
    lines = [SHALLOW, "position startpos", f"position fen {board} w - - 0 1", "go"]
    told = said_to(engine, patience, *lines)
    lines[2] = f"position fen {board}{'x' * MEGABYTES} w - - 0 1"
    assert said_to(engine, patience, *lines) == told
    # The king goes to d1, f1, d2, f2 and the pawn to e3 and e4.
    assert " nodes 6 " in told[1]


def test_a_nul_in_a_line_reads_as_its_end(korvu):
    process = korvu()
    process.send_raw(b"\0isready\nisready\0\nsetoption name Deep value 0\0\0\n")
    # A list with a NUL behind the first move counts as one of one move, but the book, which looks at
    # the whole line, does not know it.
    process.send_raw(b"position startpos moves e2e4\0 e7e5\ngo\n")
    assert process.is_silent()
    # After e2e4 e7e5 White has 29 moves.
    process.send_raw(b"position startpos moves e2e4 e7e5\0 g1f3\n\0\ngo\0\n")
    info, _ = process.up_to_bestmove()
    assert " depth 1 nodes 29 " in info
    takes_a_good_game(process)


def test_an_interface_that_ends_its_lines_with_cr_lf(korvu):
    process = korvu()
    process.send_raw(b"uci\r\nisready\r\nsetoption name Deep value 0\r\nposition startpos\r\n")
    assert process.is_silent()
    # A first move with a carriage return is no line of one move, so the book is not asked.
    process.send_raw(b"position startpos moves e2e4\r\ngo wtime 300000 btime 300000\r\n")
    info, _ = process.up_to_bestmove()
    assert " depth 1 nodes 20 " in info
    process.send_raw(GAME.encode() + b"\r\ngo\r\n")
    info, _ = process.up_to_bestmove()
    assert " depth 1 nodes 19 " in info
    process.send_raw(b"quit\r\n")
    assert process.is_silent()
    takes_a_good_game(process)


# --- Lists of any length ---


def there_and_back(plies):
    moves = ["g1f3", "g8f6", "f3g1", "f6g8"]
    return "position startpos moves " + " ".join(moves[k % 4] for k in range(plies))


def test_a_list_of_one_move_is_answered_by_the_book(korvu):
    process = korvu()
    process.send(there_and_back(1))
    assert process.line() == "bestmove g8f6"
    takes_a_good_game(process)


@pytest.mark.parametrize(
    "plies, side, nodes",
    [
        # Black's knight stands on f6: 14 pawn moves, 2 and 5 of knights, 1 of the rook; the
        # knight's way home repeats a position of the game and is not searched.
        (999, "78", 21),
        # The start position: the knight's way to f3 repeats.
        (1000, "12", 19),
        # With more than 1000 plies no repetition is seen.
        (1001, "78", 20),
        (5000, "12", 20),
        # After 99999 moves the list is left, with the number of the next: White's turn by number.
        (120_000, "12", 20),
    ],
)
def test_a_list_of_any_length_is_replayed(korvu, plies, side, nodes):
    process = korvu()
    process.send(SHALLOW, there_and_back(plies), "go")
    info, bestmove = process.up_to_bestmove()
    assert re.fullmatch(rf"info score cp -100 depth 1 nodes {nodes} pv \w{{4}}", info)
    assert bestmove[len("bestmove ") + 1] in side
    takes_a_good_game(process)


# --- Moves that nobody can make ---


@pytest.mark.parametrize(
    "moves, nodes",
    [
        # Nothing stands on e4, and nothing goes to e5: White's 20 first moves.
        ("e4e5 a7a6", 20),
        # Both moves are Black's.
        ("a7a6 a6a5", 20),
        # "x" is no file: the knight's g8 keeps the rank, and the file is that of g1f3. White has the
        # 27 moves of e2e4 e7e5 g1f3 b8c6.
        ("e2e4 e7e5 g1f3 x8c6", 27),
    ],
)
def test_moves_are_taken_as_they_stand(korvu, moves, nodes):
    process = korvu()
    process.send(SHALLOW, "position startpos moves " + moves, "go")
    info, _ = process.up_to_bestmove()
    assert f" nodes {nodes} " in info
    takes_a_good_game(process)


@pytest.mark.parametrize(
    "moves",
    ["a2a9 i7i6", "e1e8 e8e1", "-1-1 -1-1", "e2e4 ????", "d1e1 d8e8 e1e8 a1a1", "e2e4 e7e5 " * 3]
)
def test_moves_that_ruin_the_game_ruin_no_other(korvu, moves):
    process = korvu()
    process.send("setoption name Deep value 2", "position startpos moves " + moves, "go")
    assert re.fullmatch(r"bestmove [a-h][1-8][a-h][1-8]q?", process.up_to_bestmove()[-1])
    takes_a_good_game(process)


# --- FENs ---

PLAIN_FEN = "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1"


@pytest.mark.parametrize(
    "fen",
    [
        pytest.param("4k3rr/8/8/8/8/8/4P3/4K3qqq w - - 0 1", id="files beyond the eighth"),
        pytest.param("4k39/08/80/8/8/8/4P3/904K309 w - - 0 1", id="digits 0 and 9"),
        pytest.param("4k3/8/8/8/8/8/4P3/4K3/rrrrrrrr w - - 0 1", id="a ninth rank"),
        pytest.param("4k3/8/8/8/8/8/4P3/4K3 w", id="two fields"),
        pytest.param("4k3/8/8/8/8/8/4P3/4K3", id="one field, the side of the line before"),
        pytest.param("4k3/8/8/8/8/8/4P3/4K3 w - - -99999999999 99999999999", id="huge counters"),
    ],
)
def test_an_odd_fen_means_the_plain_one(engine, patience, fen):
    def lines(text):
        yield from ("setoption name Deep value 2", "position startpos", "position fen " + text)
        yield from ("go", "position startpos moves a2a3 a7a6", "go")

    told = said_to(engine, patience, *lines(PLAIN_FEN))
    assert sum(line.startswith("bestmove ") for line in told) == 3
    assert " nodes 0 " not in told[1], "the totals of the start position count"
    assert said_to(engine, patience, *lines(fen)) == told


@pytest.mark.parametrize(
    "fen",
    [
        pytest.param("8/pppp4/8/8/8/8/PPPP4/8 w - - 0 1", id="no kings"),
        pytest.param("8/pppp4/8/8/8/8/PPPP4/4K3 b - - 0 1", id="one king"),
        pytest.param("kkk5/8/8/8/8/8/8/5KKK w - - 0 1", id="three kings"),
        pytest.param("4k2P/8/8/8/8/8/8/p3K2p w KQkq - 0 1", id="pawns on the last ranks"),
        pytest.param("4k3/8/8/8/8/8/8/PPPPKPPP b KQkq - 0 1", id="pawns on the first rank"),
        pytest.param("8/8/8/8/8/8/8/8 w - - 0 1", id="no man"),
        pytest.param("4k3/8/8", id="a few ranks"),
        pytest.param("w - - 0 1", id="no board"),
        pytest.param("", id="nothing"),
        pytest.param("////////// w KQkq a3 0 1", id="strokes alone"),
        pytest.param("4k3/8/8/8/8/8/8/4K3 x zzzzzzzz z9 0 1", id="unknown letters"),
        pytest.param("4k3/8/8/6P1/8/8/8/4K3 w - h6 0 1", id="no pawn to take in passing"),
    ],
)
@pytest.mark.parametrize("moves", ["", " moves e1e2 e8e7 i0i0"])
@pytest.mark.parametrize("first", [True, False])
def test_a_fen_that_is_no_position_gets_its_one_answer(korvu, fen, moves, first):
    process = korvu()
    process.send("setoption name Deep value 2")
    if not first:
        process.send("position startpos moves e2e4")
        assert process.line() == "bestmove d7d5"
    process.send(f"position fen {fen}{moves}", "go", "isready")
    info = process.up_to_bestmove()
    assert re.fullmatch(r"bestmove [a-h][1-8][a-h][1-8]q?", info.pop())
    assert all(re.match(r"info (score|nps) ", line) for line in info)
    assert process.line() == "readyok"
    takes_a_good_game(process)


# --- The end of the input, and of those who read the output ---


@pytest.mark.parametrize(
    "before, bestmoves",
    [
        ([], 0),
        (["uci"], 0),
        (["position startpos"], 1),
        ([SHALLOW, GAME], 1),
        ([SHALLOW, GAME, "go"], 1),
        (["setoption name Deep value 3", GAME, "go"], 1),
    ],
    ids=["start", "top loop", "reply wait", "go wait", "after a search", "during a search"],
)
@pytest.mark.parametrize("ending", [b"", b"posit", b"\0"])
def test_the_input_may_end_anywhere(korvu, before, bestmoves, ending):
    process = korvu(stderr=subprocess.PIPE)
    process.send(*before)
    process.send_raw(ending)
    process.process.stdin.close()
    assert process.ends() == 0
    answers = list(iter(process.line, None))
    assert sum(line.startswith("bestmove ") for line in answers) == bestmoves
    assert process.process.stderr.read() == b""


def test_the_process_ends_quietly_when_nobody_reads_any_more(engine, patience):
    process = subprocess.Popen(
        [str(engine)], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE
    )
    process.stdout.close()
    process.stdin.write(b"isready\n")
    process.stdin.flush()
    assert process.wait(timeout=PATIENCE * patience) == -signal.SIGPIPE
    assert process.stderr.read() == b""
    process.stdin.close()


def test_without_the_signal_the_process_ends_with_its_input(engine, patience):
    process = subprocess.Popen(
        [str(engine)],
        stdin=subprocess.PIPE,
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        preexec_fn=lambda: signal.signal(signal.SIGPIPE, signal.SIG_IGN),
        restore_signals=False,
    )
    process.stdout.close()
    process.stdin.write(f"uci\n{SHALLOW}\n{GAME}\ngo\nisready\n".encode())
    process.stdin.close()
    assert process.wait(timeout=PATIENCE * patience) == 0
    assert process.stderr.read() == b""


@pytest.mark.parametrize("closed", ["<&-", ">&-", "<&- >&- 2>&-"])
def test_a_process_without_input_or_output_ends(engine, patience, closed):
    lines = f"uci\n{SHALLOW}\n{GAME}\ngo\n".encode()
    ended = subprocess.run(
        ["sh", "-c", f'"$0" {closed}', str(engine)],
        input=lines,
        capture_output=True,
        timeout=PATIENCE * patience,
        check=False,
    )
    assert (ended.returncode, ended.stdout, ended.stderr) == (0, b"", b"")


# --- Settings ---

NO_SETTINGS = ["", " ", " value", " value ", " value -5", " value  3", " value x", " Value 3\0"]


@pytest.mark.parametrize("setting", NO_SETTINGS)
def test_a_setting_that_is_none_leaves_the_option(engine, patience, setting):
    told = said_to(engine, patience, SHALLOW, GAME, "go")
    assert " depth 1 nodes 19 " in told[0]
    odd = "setoption name Deep" + setting
    assert said_to(engine, patience, SHALLOW, odd, GAME, "go") == told


@pytest.mark.parametrize("setting", ["0", "00", "0.5", "0" + "9" * 30, "0e9"])
def test_of_a_huge_setting_the_first_digit_counts(engine, patience, setting):
    told = said_to(engine, patience, SHALLOW, GAME, "go")
    assert said_to(engine, patience, "setoption name Deep value " + setting, GAME, "go") == told


def test_a_time_usage_of_nothing_is_none(engine, patience):
    # It is a divisor.
    odd = [f"setoption name Time usage value {setting}" for setting in ("0", "-1", "", "00", "x")]
    lines = ["setoption name Deep value 2", GAME, "go wtime 100000 btime 1"]
    assert said_to(engine, patience, *odd, *lines) == said_to(engine, patience, *lines)


# --- Signals ---


def test_a_search_that_was_stopped_for_a_while_goes_on(korvu, engine, patience):
    # Half a second of thought, in which the clock decides nothing.
    rooks = "position fen r4rk1/5ppp/8/8/8/8/5PPP/R4RK1 w - - 0 1 moves h2h3 h7h6"
    lines = ["setoption name Deep value 4", rooks, "go"]
    told = said_to(engine, patience, *lines)
    process = korvu()
    process.send(*lines)
    heard = [process.line()]
    process.process.send_signal(signal.SIGSTOP)
    time.sleep(0.4)  # lines that were on their way have come
    while not process.lines.empty():
        heard.append(process.line())
    assert process.is_silent()
    process.process.send_signal(signal.SIGCONT)
    heard += process.up_to_bestmove()
    assert list(compared_lines(heard, True)) == told
    assert max(int(t) for t in re.findall(r" time (\d+)", "\n".join(heard))) >= 400
    takes_a_good_game(process)


@pytest.mark.parametrize(
    "before, after, answer",
    [
        ([], "isready", "readyok"),
        (["position startpos", SHALLOW, GAME], "go", "info score "),
        (["position startpos"], "isready", "readyok"),
    ],
    ids=["top loop", "go wait", "reply wait"],
)
def test_a_process_that_was_stopped_while_it_waited_hears_on(korvu, before, after, answer):
    process = korvu()
    process.send(*before)
    assert all(process.line() == "bestmove e2e4" for line in before if line == "position startpos")
    for _ in range(20):
        process.process.send_signal(signal.SIGSTOP)
        process.process.send_signal(signal.SIGCONT)
    process.process.send_signal(signal.SIGSTOP)
    process.send(after)
    process.process.send_signal(signal.SIGCONT)
    assert process.line().startswith(answer)
    assert process.runs()


@pytest.mark.parametrize(
    "before, heard",
    [
        (["isready"], "readyok"),
        (["position startpos", GAME], "bestmove e2e4"),
        (["setoption name Deep value 4", GAME, "go"], "info score "),
    ],
    ids=["idle", "go wait", "search"],
)
def test_a_process_that_is_told_to_end_ends(korvu, before, heard):
    process = korvu(stderr=subprocess.PIPE)
    process.send(*before)
    assert process.line().startswith(heard)
    told_at = time.monotonic()
    process.process.terminate()
    assert process.ends() == -signal.SIGTERM
    assert time.monotonic() - told_at < 1
    assert process.process.stderr.read() == b""


# --- A machine with much to do ---


@pytest.fixture
def busy_machine():
    """Eight processes that want all the time there is."""
    rivals = [subprocess.Popen([sys.executable, "-c", "while True: pass"]) for _ in range(8)]
    yield
    for rival in rivals:
        rival.kill()
        rival.wait()


def times_of(lines):
    return [int(t) for t in re.findall(r" time (\S+)", "\n".join(lines))]


def test_a_search_by_depth_is_the_same_on_a_busy_machine(engine, patience, request):
    lines = [GAME, "go wtime 9999 btime 9999"]
    told = said_to(engine, patience, *lines)
    assert len(told) > 2
    request.getfixturevalue("busy_machine")
    assert said_to(engine, patience, *lines) == told


def test_a_search_by_the_clock_ends_on_a_busy_machine(korvu, busy_machine, patience):
    process = korvu()
    # 16 men beside the kings and a clock of 100 seconds: the pawns could be searched for minutes,
    # but 100000 / (16 / 1 + 5) ms are the limit.
    pawns = "position fen 4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3 w - - 0 1 moves a2a3 a7a6"
    process.send("setoption name Time usage value 1", pawns, "go wtime 100000 btime 100000")
    begun = time.monotonic()
    heard = process.up_to_bestmove()
    took = 1000 * (time.monotonic() - begun)
    told = times_of(heard)
    assert len(told) > 2
    assert told == sorted(told)
    assert told[0] >= 0
    assert told[-1] <= took
    assert took < 4761 + 5000 * patience, "the others may have taken much, but not that much"
    takes_a_good_game(process)
