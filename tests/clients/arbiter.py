"""Positions, and the moves that are legal in them by the word of a program that everybody trusts:
Stockfish, from the Debian package, asked for `go perft 1`."""

import dataclasses
import pathlib
import re
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from programs import program  # noqa: E402


@dataclasses.dataclass(frozen=True)
class Position:
    """A FEN, or None for the start position, and the moves that were played from there."""

    fen: str | None = None
    moves: tuple = ()

    @staticmethod
    def of_words(words):
        """Reads what follows the word `position`."""
        words = list(words)
        at = words.index("moves") if "moves" in words else len(words)
        moves = tuple(words[at + 1 :])
        if words[0] == "startpos":
            return Position(None, moves)
        assert words[0] == "fen", words
        return Position(" ".join(words[1:at]), moves)

    def line(self):
        start = f"fen {self.fen}" if self.fen else "startpos"
        return f"position {start}" + (f" moves {' '.join(self.moves)}" if self.moves else "")

    def after(self, *moves):
        return Position(self.fen, self.moves + moves)


class Arbiter:
    def __init__(self):
        self.process = subprocess.Popen(
            [program("stockfish")],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
            bufsize=1,
        )
        self.known = {}

    def close(self):
        self.process.stdin.close()
        self.process.wait(timeout=20)
        self.process.stdout.close()

    def _ask(self, position, question, last):
        """The lines of the answer, up to the one that begins with `last`."""
        print(position.line(), question, sep="\n", file=self.process.stdin)
        lines = []
        while not lines or not lines[-1].startswith(last):
            line = self.process.stdout.readline()
            assert line, f"the arbiter has left, asked {question} of {position}"
            lines.append(line.strip())
        return lines

    def legal(self, position):
        """The legal moves of a position that has come about by legal moves."""
        if position not in self.known:
            lines = self._ask(position, "go perft 1", "Nodes searched")
            moves = [re.fullmatch(r"(\w{4,5}): 1", line) for line in lines]
            self.known[position] = frozenset(match[1] for match in moves if match)
            assert lines[-1] == f"Nodes searched: {len(self.known[position])}"
        return self.known[position]

    def is_legal(self, position, move):
        return move in self.legal(position)

    def first_illegal(self, position, line):
        """The first move of a line that is not legal in its turn, or None."""
        for move in line:
            if not self.is_legal(position, move):
                return move
            position = position.after(move)
        return None

    def shown(self, position):
        """The FEN of a position, and the squares from which check is given."""
        lines = self._ask(position, "d", "Checkers:")
        fen = next(line.removeprefix("Fen: ") for line in lines if line.startswith("Fen: "))
        return fen, lines[-1].removeprefix("Checkers:").split()

    def fen(self, position):
        return self.shown(position)[0]

    def is_check(self, position):
        return bool(self.shown(position)[1])
