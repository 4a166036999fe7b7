"""Whole games through a real client.

XBoard, on a display of its own that nobody sees, plays Korvu against Stockfish at its weakest;
PolyGlot translates between XBoard's protocol and UCI. XBoard judges every move, the clock and the
end of the game, and the test's own referee then judges the record once more.

The environment variable KORVU names the engine. KORVU_REFEREE may name the built referee tool;
without it the tool is compiled here. The programs come from the Debian packages xboard, polyglot,
stockfish and xvfb.
"""

import contextlib
import dataclasses
import os
import pathlib
import re
import shutil
import signal
import subprocess
import time

import pytest

SUPPORT = pathlib.Path(__file__).parent.parent / "support"
GAME_SECONDS = 170.0

# Against the book Korvu, as Black, answers six first moves only, so the game is opened for it.
OPENING = """\
[Event "Opening"]
[Site "?"]
[Date "????.??.??"]
[Round "?"]
[White "?"]
[Black "?"]
[Result "*"]

1. e4 *
"""


def program(name):
    path = shutil.which(name, path=os.environ.get("PATH", "") + os.pathsep + "/usr/games")
    if path is None:
        pytest.fail(f"{name} is not installed")
    return path


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


@contextlib.contextmanager
def display():
    """The name of a new X display, as long as it is needed."""
    server = subprocess.Popen(
        [program("Xvfb"), "-displayfd", "1", "-nolisten", "tcp", "-screen", "0", "1024x768x24"],
        stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL,
    )
    try:
        number = server.stdout.readline().decode().strip()
        assert number, "the display did not start"
        yield f":{number}"
    finally:
        server.terminate()
        server.wait(timeout=20)
        server.stdout.close()


def adapter(folder, name, command, options):
    """The command of a PolyGlot that runs this engine."""
    settings = [
        "[PolyGlot]",
        f"EngineDir = {folder}",
        f"EngineCommand = {command}",
        "Book = false",
        "Resign = false",
        "Log = true",
        f"LogFile = {folder / name}.log",
        "[Engine]",
        *(f"{option} = {value}" for option, value in options.items()),
    ]
    file = folder / f"{name}.ini"
    file.write_text("\n".join(settings) + "\n", encoding="ascii")
    return f"{program('polyglot')} {file}"


@dataclasses.dataclass
class Record:
    text: str
    tags: dict
    moves: list  # in the notation of the record
    remark: str  # the last one, in which XBoard says how the game ended


def read_record(text):
    tags = dict(re.findall(r'^\[(\w+) "(.*)"\]$', text, re.MULTILINE))
    body = re.sub(r"^\[.*\]$", "", text, flags=re.MULTILINE)
    remarks = re.findall(r"\{([^}]*)\}", body)
    words = re.sub(r"\{[^}]*\}", " ", body).split()
    assert words[-1] == tags["Result"]
    moves = [word for word in words[:-1] if not re.fullmatch(r"\d+\.+", word)]
    return Record(text, tags, moves, " ".join(remarks[-1].split()) if remarks else "")


def play(folder, white, black, opening=None):
    """Plays one game and reads its record. The players are adapter commands."""
    record = folder / "game.pgn"
    command = [program("xboard"), "-noGUI", "-fcp", white, "-scp", black]
    command += ["-matchGames", "1", "-timeControl", "0:20", "-timeIncrement", "0", "-xponder"]
    command += ["-saveGameFile", str(record)]
    command += ["-testLegality", "true", "-checkMates", "true", "-testClaims", "true"]
    command += ["-materialDraws", "true", "-trivialDraws", "false"]
    command += ["-ruleMoves", "50", "-repeatsToDraw", "3"]
    command += ["-popupExitMessage", "false", "-popupMoveErrors", "false"]
    if opening:
        file = folder / "opening.pgn"
        file.write_text(opening, encoding="ascii")
        command += ["-loadGameFile", str(file), "-loadGameIndex", "1"]

    with display() as name, open(folder / "xboard.log", "wb") as log:
        client = subprocess.Popen(
            command,
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=subprocess.STDOUT,
            cwd=folder,
            env={**os.environ, "DISPLAY": name, "HOME": str(folder)},
            start_new_session=True,
        )
        try:
            status = client.wait(timeout=GAME_SECONDS)
        except subprocess.TimeoutExpired:
            os.killpg(client.pid, signal.SIGKILL)
            client.wait()
            pytest.fail(f"the game did not end within {GAME_SECONDS} seconds")
    messages = (folder / "xboard.log").read_text(errors="replace")
    assert status == 0, messages
    assert record.exists(), messages
    return read_record(record.read_text(encoding="ascii"))


def running(executable):
    """The processes that run this file."""
    found = []
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            if (process / "exe").resolve() == executable:
                found.append(int(process.name))
    return found


def judge(referee, moves):
    """What the referee says of a game: a dictionary of its answers."""
    result = subprocess.run(
        [referee, "--san"], input=" ".join(moves), capture_output=True, text=True, check=False
    )
    assert result.returncode == 0, result.stdout + result.stderr
    return dict(line.split(": ", 1) for line in result.stdout.splitlines())


def result_of(verdict, plies):
    """The result that the rules give to a game that ends so."""
    if verdict == "checkmate":
        return "1-0" if plies % 2 == 1 else "0-1"
    assert verdict in ("stalemate", "material", "repetition", "fifty")
    return "1/2-1/2"


@pytest.mark.parametrize("colour", ["White", "Black"])
def test_a_whole_game(engine, referee, tmp_path, capsys, colour):
    korvu = adapter(tmp_path, "korvu", engine, {})
    options = {"Skill Level": 0, "Hash": 16, "Move Overhead": 100}
    other = adapter(tmp_path, "other", program("stockfish"), options)
    if colour == "White":
        record = play(tmp_path, korvu, other)
    else:
        record = play(tmp_path, other, korvu, OPENING)
    with capsys.disabled():
        print(f"\n\n{record.text.strip()}\n")

    assert record.tags[colour].startswith("Korvu")
    judged = judge(referee, record.moves)
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
