"""One game through a real client, and its judgement.

XBoard, on a display of its own that nobody sees, plays Korvu, or the companion that runs it,
against Stockfish at its weakest or another opponent; PolyGlot translates between XBoard's protocol
and UCI. XBoard judges every move, the clock and the end of the game, and the project's own referee
judges the record once more. The programs come from the Debian packages xboard, polyglot and xvfb,
and those of the opponents.
"""

import contextlib
import dataclasses
import os
import pathlib
import re
import signal
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from programs import program  # noqa: E402

OPENING = """\
[Event "Opening"]
[Site "?"]
[Date "????.??.??"]
[Round "?"]
[White "?"]
[Black "?"]
[Result "*"]

1. {first} *
"""


class GameFailed(Exception):
    """There is no record of a game."""


@dataclasses.dataclass(frozen=True)
class Player:
    name: str  # of its files
    command: str
    uci: bool = True  # or XBoard's own protocol
    options: dict = dataclasses.field(default_factory=dict)
    answers_to: str = "e4"  # White's first move when it plays Black
    programs: tuple = ()  # the files whose processes have to end with the client

    def for_xboard(self, folder):
        """The command by which XBoard plays it."""
        return adapter(folder, self) if self.uci else self.command


# Against the book Korvu itself answers six first moves only, as Black; 1. e4 is one of them. The
# companion answers all, 1. a4 too.
def korvu(path):
    return Player("korvu", str(path), programs=(path,))


def companion(path):
    """The companion, with Korvu beside it."""
    return Player("korvu", str(path), answers_to="a4", programs=(path, path.parent / "korvu"))


def opponent(name):
    if name == "fairymax":
        return Player(name, program(name), uci=False)
    if name == "gnuchess":
        return Player(name, f"{program(name)} --uci")
    options = {"Skill Level": 0, "Hash": 16, "Move Overhead": 100}
    return Player(name, program(name), options=options)


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


def adapter(folder, player):
    """The command of a PolyGlot that runs this engine."""
    settings = [
        "[PolyGlot]",
        f"EngineDir = {folder}",
        f"EngineCommand = {player.command}",
        "Book = false",
        "Resign = false",
        "Log = true",
        f"LogFile = {folder / player.name}.log",
        "[Engine]",
        *(f"{option} = {value}" for option, value in player.options.items()),
    ]
    file = folder / f"{player.name}.ini"
    file.write_text("\n".join(settings) + "\n", encoding="ascii")
    return f"{program('polyglot')} {file}"


@dataclasses.dataclass
class Record:
    text: str
    tags: dict
    moves: list  # in the notation of the record
    remark: str  # the last one, in which XBoard says how the game ended
    left_early: bool = False  # Korvu's process ended without being asked to


def read_record(text):
    tags = dict(re.findall(r'^\[(\w+) "(.*)"\]$', text, re.MULTILINE))
    body = re.sub(r"^\[.*\]$", "", text, flags=re.MULTILINE)
    remarks = re.findall(r"\{([^}]*)\}", body)
    words = re.sub(r"\{[^}]*\}", " ", body).split()
    assert words[-1] == tags["Result"]
    moves = [word for word in words[:-1] if not re.fullmatch(r"\d+\.+", word)]
    return Record(text, tags, moves, " ".join(remarks[-1].split()) if remarks else "")


def play(folder, white, black, clock, opening=None):
    """Plays one game and reads its record. The players are adapter commands."""
    record = folder / "game.pgn"
    minutes, seconds = divmod(int(clock.seconds), 60)
    command = [program("xboard"), "-noGUI", "-fcp", white, "-scp", black]
    command += ["-matchGames", "1", "-timeControl", f"{minutes}:{seconds:02}"]
    command += ["-timeIncrement", str(clock.increment), "-xponder"]
    command += ["-saveGameFile", str(record)]
    command += ["-testLegality", "true", "-checkMates", "true", "-testClaims", "true"]
    command += ["-materialDraws", "true", "-trivialDraws", "false"]
    command += ["-ruleMoves", "50", "-repeatsToDraw", "3", "-autoCallFlag", "true"]
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
            status = client.wait(timeout=clock.longest())
        except subprocess.TimeoutExpired:
            os.killpg(client.pid, signal.SIGKILL)
            client.wait()
            raise GameFailed(f"no end within {clock.longest()} seconds") from None
    messages = (folder / "xboard.log").read_text(errors="replace")
    if status != 0 or not record.exists():
        raise GameFailed(messages)
    return read_record(record.read_text(encoding="ascii"))


def left_early(log):
    """Whether PolyGlot's log tells of an end that it had not asked for. XBoard is not told, and
    waits for the clock to run out."""
    before, end, _ = log.partition("Engine->Adapter: EOF")
    return end != "" and "Adapter->Engine: quit" not in before


def play_korvu(folder, korvu, other, colour, clock):
    """Plays one game with Korvu as "White" or "Black"."""
    players = [korvu.for_xboard(folder), other.for_xboard(folder)]
    if colour == "White":
        record = play(folder, *players, clock)
    else:
        players.reverse()
        record = play(folder, *players, clock, OPENING.format(first=korvu.answers_to))
    record.left_early = left_early((folder / f"{korvu.name}.log").read_text(errors="replace"))
    return record


def running(player):
    """The processes that run this player's files."""
    files = [path.resolve() for path in player.programs]
    found = []
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            if (process / "exe").resolve() in files:
                found.append(int(process.name))
    return found


def judge(referee, moves):
    """What the referee says of a game: a dictionary of its answers, of which "illegal" is one if
    there is such a move."""
    result = subprocess.run(
        [referee, "--san"], input=" ".join(moves), capture_output=True, text=True, check=False
    )
    assert result.returncode in (0, 1), result.stderr
    return dict(line.split(": ", 1) for line in result.stdout.splitlines())


def result_of(verdict, plies):
    """The result that the rules give to a game that ends so."""
    if verdict == "checkmate":
        return "1-0" if plies % 2 == 1 else "0-1"
    assert verdict in ("stalemate", "material", "repetition", "fifty")
    return "1/2-1/2"
