"""What every match has: a clock, colours in turn, points, and options of its command line."""

import dataclasses
import pathlib
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from about import add_version  # noqa: E402


@dataclasses.dataclass(frozen=True)
class Clock:
    """Seconds for a whole game, and seconds more for each move."""

    seconds: float
    increment: float = 0

    @staticmethod
    def of_text(text):
        """SECONDS+INCREMENT"""
        seconds, _, increment = text.partition("+")
        return Clock(float(seconds), float(increment or 0))

    def longest(self):
        """How long a game of two hundred moves may take, with a minute for the programs."""
        return 2 * (self.seconds + 200 * self.increment) + 60


def colour_of(number):
    """The colour in a game of this number, from 1 on."""
    return ("White", "Black")[(number - 1) % 2]


def points_of(result, colour):
    """None for a game without a result."""
    if result == "1/2-1/2":
        return 0.5
    if result not in ("1-0", "0-1"):
        return None
    return 1.0 if (result == "1-0") == (colour == "White") else 0.0


def ends(kinds):
    """The summary's line of how often games ended in which way, from a Counter."""
    return "ends       " + ", ".join(f"{kind} {n}" for kind, n in kinds.most_common())


def add_options(parser, opponents):
    add_version(parser)
    parser.add_argument("--opponent", choices=opponents, default=opponents[0])
    parser.add_argument("--games", type=int, default=2)
    parser.add_argument("--clock", type=Clock.of_text, default=Clock(10, 0.1))
    parser.add_argument("--save", type=pathlib.Path, help="append the games to this file")
