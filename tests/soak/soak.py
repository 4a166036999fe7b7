#!/usr/bin/env python3
"""Plays fast games in one process for as long as one likes, and watches it.

ENGINE is the built korvu and REFEREE the built korvu-referee. The engine plays both sides, with
options drawn anew for each game, from one of the 400 pairs of first moves. What is watched:

* every move is legal, by the referee, and comes within SLOWEST seconds;
* nothing else is said than info lines and one bestmove a position, nothing on standard error;
* the resident memory stays within 1 MB of what it was after the warm-up (a few games with searches
  that fill the tables);
* every 100 positions a fresh process with the same options says the same, to the last node count.

Tells its figures every ten seconds and at the end. Ends with 1 at the first thing that is not as it
should be. Needs a system that shows its processes under /proc.
"""

import argparse
import itertools
import pathlib
import queue
import random
import re
import subprocess
import sys
import time

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path += [str(TESTS / "dialogue"), str(TESTS.parent / "tools")]
from about import add_version  # noqa: E402
from live import Process  # noqa: E402

FIRST_MOVES = [
    [f"{file}{rank}{file}{to}" for file in "abcdefgh" for to in pushes] + knights
    for rank, pushes, knights in (
        (2, "34", ["b1a3", "b1c3", "g1f3", "g1h3"]),
        (7, "65", ["b8a6", "b8c6", "g8f6", "g8h6"]),
    )
]
BOOK_OFF = "setoption name Own book value false"
LONGEST_SILENCE = 60  # seconds
WARM_UP_GAMES = 10
LONGEST_GAME = 120
POSITIONS_BETWEEN_COMPARISONS = 100
MEMORY_LEEWAY = 1 << 20

# Options that change what is searched, and their settings.
DRAWN = {
    "Temperament": ["dynamic", "consistent", "positional"],
    "Null move filter": ["off", "normal", "plus"],
    "Positive float filter": ["off", "full", "auto", "manual"],
    "Negative float filter": ["off", "full", "auto", "manual"],
    "Vertical filter": ["true", "false"],
    "Lmr": ["true", "false"],
    "PVS": ["true", "false"],
    "Turbo search": ["true", "false"],
    "Deep memory": ["true", "false"],
    "Positional matrices": ["true", "false"],
    "Aggressiveness": list("0159"),
    "Confidence": list("1579"),
    "Mobility": list("0159"),
    "Material quociente": list("159"),
    "Full info": ["true", "false"],
}
GO_LINES = ["go wtime 99 btime 99", "go wtime 999 btime 999", "go wtime 999 btime 999"]


class Fault(Exception):
    """Something is not as it should be."""


class Engine(Process):
    def __init__(self, path):
        super().__init__(path, 1, stderr=subprocess.PIPE)
        self.patience = LONGEST_SILENCE

    def line(self):
        try:
            line = super().line()
        except queue.Empty:
            raise Fault(f"no answer for {self.patience} seconds") from None
        if line is None:
            raise Fault(f"the process has ended with {self.process.wait()}")
        return line

    def answer(self):
        """The lines up to the bestmove."""
        lines = [self.line()]
        while not lines[-1].startswith("bestmove "):
            if not re.match(r"info (score|nps) ", lines[-1]):
                raise Fault(f"a stray line: {lines[-1]}")
            lines.append(self.line())
        return lines

    def settle(self):
        """Nothing has been said that nobody asked for."""
        self.send("isready")
        line = self.line()
        if line != "readyok":
            raise Fault(f"a stray line: {line}")

    def resident(self):
        pages = pathlib.Path(f"/proc/{self.process.pid}/statm").read_text().split()[1]
        return int(pages) * 4096

    def end(self):
        self.send("quit")
        self.process.stdin.close()
        if self.ends() != 0:
            raise Fault(f"the process has ended with {self.process.returncode}")
        if complaint := self.process.stderr.read():
            raise Fault(f"on standard error: {complaint!r}")


def without_times(lines):
    return [
        re.sub(r" time \d+", "", line) for line in lines if not line.startswith("info nps ")
    ]


class Soak:
    def __init__(self, arguments):
        self.engine_path, self.referee = arguments.engine, arguments.referee
        self.slowest_allowed = arguments.slowest
        self.random = random.Random(arguments.seed)
        self.engine = Engine(self.engine_path)
        self.resident_after_warm_up = None
        self.games = self.positions = self.comparisons = 0
        self.slowest = self.thought = 0.0
        self.ends = {}

    def verdict(self, moves):
        judged = subprocess.run(
            [self.referee], input=" ".join(moves).encode(), stdout=subprocess.PIPE, check=False
        ).stdout.decode()
        if judged.startswith("illegal") or "verdict: " not in judged:
            raise Fault(judged)
        return judged.split("verdict: ")[1].strip()

    def options_of_a_game(self):
        drawn = {name: self.random.choice(settings) for name, settings in DRAWN.items()}
        return ["setoption name Clear memory", BOOK_OFF] + [
            f"setoption name {name} value {setting}" for name, setting in drawn.items()
        ]

    def play(self, fills_tables):
        """One game. While it warms up, its first searches go to the depth that fills the tables."""
        options = self.options_of_a_game()
        self.engine.send(*options)
        if fills_tables:
            self.engine.send("setoption name Deep memory value true", "setoption name Deep value 4")
        moves = [self.random.choice(first) for first in FIRST_MOVES]
        while self.verdict(moves) == "open" and len(moves) < LONGEST_GAME:
            line = "position startpos moves " + " ".join(moves)
            deep = fills_tables and len(moves) in (10, 11)
            go = "go" if deep else self.random.choice(GO_LINES)
            moves.append(self.move(line, go, LONGEST_SILENCE if deep else self.slowest_allowed))
            self.positions += 1
            if self.positions % POSITIONS_BETWEEN_COMPARISONS == 0:
                self.compare(options, line, go if not deep else GO_LINES[1])
        self.engine.send("setoption name Deep value 9")
        self.engine.settle()
        self.games += 1
        end = self.verdict(moves)
        self.ends[end] = self.ends.get(end, 0) + 1
        if not fills_tables:
            self.watch_memory()

    def move(self, line, go, allowed):
        begun = time.monotonic()
        self.engine.send(line, go)
        said = self.engine.answer()
        took = time.monotonic() - begun
        if took > allowed:
            raise Fault(f"{took:.1f} seconds for {line}, {go}")
        self.thought += took
        if self.resident_after_warm_up is not None:
            self.slowest = max(self.slowest, took)
        return said[-1].removeprefix("bestmove ")

    def compare(self, options, line, go):
        """The position once more, as the first of a game, here and in a fresh process."""
        told = []
        fresh = Engine(self.engine_path)
        for engine in (self.engine, fresh):
            engine.send(*options, "setoption name Own book value true", "position startpos")
            told.append(engine.answer())
            engine.send(BOOK_OFF, line, go)
            told[-1] += engine.answer()
        fresh.end()
        here, there = map(without_times, told)
        if here != there:
            differing = next(p for p in itertools.zip_longest(here, there) if p[0] != p[1])
            raise Fault(f"{line}, {go}: {differing[0]}, but afresh: {differing[1]}\n{options}")
        self.comparisons += 1

    def watch_memory(self):
        resident = self.engine.resident()
        if self.resident_after_warm_up is None:
            self.resident_after_warm_up = resident
        if abs(resident - self.resident_after_warm_up) > MEMORY_LEEWAY:
            raise Fault(f"{resident} bytes resident, {self.resident_after_warm_up} after warm-up")

    def tell(self):
        before, now = self.resident_after_warm_up or 0, self.engine.resident()
        print(
            f"{self.games} games {self.ends}, {self.positions} positions, "
            f"{1000 * self.thought / max(1, self.positions):.1f} ms each, "
            f"slowest after warm-up {1000 * self.slowest:.0f} ms, "
            f"{self.comparisons} equal to a fresh process, "
            f"resident {now / 1024:.0f} KB, after warm-up {before / 1024:.0f} KB",
            flush=True,
        )

    def run(self, seconds):
        until = time.monotonic() + seconds
        next_word = time.monotonic() + 10
        while time.monotonic() < until:
            self.play(self.games < WARM_UP_GAMES)
            if time.monotonic() > next_word:
                self.tell()
                next_word = time.monotonic() + 10
        self.tell()
        if self.resident_after_warm_up is None:
            raise Fault("too short: the warm-up is not over")
        self.engine.end()


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    add_version(parser)
    parser.add_argument("engine")
    parser.add_argument("referee")
    parser.add_argument("--seconds", type=float, default=600)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--slowest", type=float, default=5, help="seconds a fast answer may take")
    soak = Soak(parser.parse_args())
    try:
        soak.run(parser.parse_args().seconds)
    except Fault as fault:
        print(f"seed {parser.parse_args().seed}, game {soak.games + 1}: {fault}", file=sys.stderr)
        return 1
    finally:
        soak.engine.process.kill()
    return 0


if __name__ == "__main__":
    sys.exit(main())
