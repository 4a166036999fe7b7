#!/usr/bin/env python3
"""Plays matches of the companion as strict programs do: every line of it is judged, its clock runs
from the go that was sent to the bestmove that has come, and nothing is allowed beyond it.

One game at a time, colours in turn, White first; the first four plies are random, game k of one seed
being game 1 of k - 1 seeds further. Ends with 1 when a game was not played to an end
that the rules know, and that was the companion's doing.
"""

import argparse
import collections
import dataclasses
import pathlib
import random
import subprocess
import sys
import time

from arbiter import Arbiter, Position
from driver import Driver, Engine
from judge import Fault, Habits

from matches import add_options, colour_of, ends, points_of
from programs import program

LONGEST = 600  # plies; no opponent holds out so long
SLOPPY = Habits(strict=False)


def opponents():
    return {
        "stockfish": Engine(
            "stockfish",
            (program("stockfish"),),
            SLOPPY,
            (("Skill Level", 0), ("Hash", 16), ("Move Overhead", 100)),
        ),
        "gnuchess": Engine("gnuchess", (program("gnuchess"), "--uci"), SLOPPY),
    }


@dataclasses.dataclass
class Game:
    moves: tuple = ()
    kind: str = "unfinished"  # an end by the rules, "time" or "fault"
    winner: str | None = None  # "White", "Black" or nobody
    remark: str = ""
    least: list = dataclasses.field(default_factory=list)  # of each clock, in seconds

    def result(self):
        if self.kind == "unfinished":
            return "*"
        return {"White": "1-0", "Black": "0-1", None: "1/2-1/2"}[self.winner]


class Referee:
    """Tells how a game stands: "open", or the rule by which it has ended."""

    def __init__(self, path):
        self.path = path

    def verdict(self, moves):
        answer = subprocess.run(
            [self.path], input=" ".join(moves), capture_output=True, text=True, check=True
        )
        return dict(line.split(": ", 1) for line in answer.stdout.splitlines() if ": " in line)[
            "verdict"
        ]


class Late(Exception):
    """The flag has fallen."""


def other(colour):
    return {"White": "Black", "Black": "White"}[colour]


def play(drivers, clock, referee, opening=(), margin=0.0):
    """One game. `drivers` are White's and Black's, both introduced. Each overstepping of the clock by
    more than the margin loses."""
    clocks = [float(clock.seconds)] * 2
    game = Game(tuple(opening), least=list(clocks))
    for driver in drivers:
        driver.send("ucinewgame")
        driver.ready("readyok after ucinewgame", 1)
    while len(game.moves) < LONGEST:
        turn = len(game.moves) % 2
        driver, colour = drivers[turn], ("White", "Black")[turn]
        try:
            took = one_move(driver, game.moves, clocks, clock.increment, margin)
        except Late as late:
            game.kind, game.winner, game.remark = "time", other(colour), str(late)
            return game
        except Fault as fault:
            game.kind, game.winner, game.remark = "fault", other(colour), str(fault)
            return game
        clocks[turn] = max(0.0, clocks[turn] - took)
        game.least[turn] = min(game.least[turn], clocks[turn])
        clocks[turn] += clock.increment
        game.moves += (driver.judge.last.bestmove,)
        verdict = referee.verdict(game.moves)
        if verdict != "open":
            game.kind = verdict
            game.winner = colour if verdict == "checkmate" else None
            return game
    return game


def one_move(driver, moves, clocks, increment, margin):
    """Has the driver's engine move, and returns the seconds it took."""
    own = clocks[len(moves) % 2]
    driver.position(Position(None, moves))
    driver.ready("readyok", 1)
    white, black = (max(1, int(1000 * clock)) for clock in clocks)
    added = int(1000 * increment)
    driver.go("wtime", white, "btime", black, "winc", added, "binc", added)
    began = time.monotonic()
    try:
        _, took = driver.bestmove((own + margin) / driver.patience)  # a clock knows no patience
    except Fault:
        if time.monotonic() - began >= own + margin:
            raise Late(driver.fault(f"had {own:.3f} s")) from None
        raise
    if took > own + margin:
        raise Late(driver.fault(f"took {took:.3f} s of {own:.3f}"))
    return took


def openings(arbiter, count, first):
    """So many beginnings of four plies, of random moves: every first move comes to be answered."""
    for seed in range(first, first + count):
        dice = random.Random(seed)
        position = Position()
        for _ in range(4):
            position = position.after(dice.choice(sorted(arbiter.legal(position))))
        yield position.moves


def record(game, number, players):
    """The game for keeping, in coordinates."""
    tags = zip(("Round", "White", "Black", "Result"), (number, *players, game.result()))
    head = "".join(f'[{name} "{value}"]\n' for name, value in tags)
    return f"{head}\n{' '.join(game.moves)} {{{game.kind}}} {game.result()}\n\n"


def summary(games, colours):
    """`colours` are the companion's."""
    kinds = collections.Counter(game.kind for game in games)
    mishaps = [
        (game.kind, "the companion's" if game.winner == other(colour) else "the opponent's")
        for game, colour in zip(games, colours)
        if game.kind in ("time", "fault")
    ]
    points = sum(
        points_of(game.result(), colour) or 0 for game, colour in zip(games, colours)
    )
    by_rules = len(games) - sum(kinds[kind] for kind in ("time", "fault", "unfinished"))
    return "\n".join(
        [
            f"games      {len(games)}",
            f"finished   {by_rules} by the rules",
            *(
                f"{kind:10} {mishaps.count((kind, whose))} {whose}"
                for kind in ("fault", "time")
                for whose in ("the companion's", "the opponent's")
            ),
            f"unfinished {kinds['unfinished']}",
            f"score      {points:g} of {len(games) - kinds['unfinished']}",
            f"plies      {sum(len(game.moves) for game in games)}",
            ends(kinds),
        ]
    )


def is_fault_of(game, colour):
    return game.kind == "unfinished" or (
        game.kind in ("time", "fault") and game.winner == other(colour)
    )


def match(arbiter, referee, companion, opponent, settings):
    games, colours = [], []
    for number, opening in enumerate(openings(arbiter, settings.games, settings.seed), 1):
        colour = colour_of(number)
        pair = (companion, opponent) if colour == "White" else (opponent, companion)
        drivers = []
        try:
            for engine in pair:
                drivers.append(Driver(engine, arbiter, 1.0 if engine is companion else 5.0))
                drivers[-1].begin()
            game = play(drivers, settings.clock, referee, opening, settings.margin)
            if not is_fault_of(game, colour):
                drivers[pair.index(companion)].quit()
        except Fault as fault:
            game = Game(kind="fault", winner=other(colour), remark=str(fault))
        finally:
            for driver in drivers:
                driver.close()
        games.append(game)
        colours.append(colour)
        own = game.least[pair.index(companion)] if game.least else 0
        print(
            f"{number:3} {colour}: {game.result()}, {game.kind} after {len(game.moves)} plies, "
            f"least time left {own:.2f} s. {game.remark}",
            flush=True,
        )
        if settings.save:
            with open(settings.save, "a", encoding="ascii") as file:
                file.write(record(game, number, [engine.name for engine in pair]))
    print(summary(games, colours))
    return any(map(is_fault_of, games, colours))


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("companion", type=pathlib.Path)
    parser.add_argument("engine", type=pathlib.Path)
    parser.add_argument("referee", type=pathlib.Path)
    add_options(parser, ("stockfish", "gnuchess"))
    parser.add_argument("--margin", type=float, default=0.0, help="seconds that a clock may lack")
    parser.add_argument("--seed", type=int, default=0)
    settings = parser.parse_args()
    companion = Engine("korvu-uci", (settings.companion.resolve(), settings.engine.resolve()))
    arbiter = Arbiter()
    try:
        return match(
            arbiter,
            Referee(settings.referee.resolve()),
            companion,
            opponents()[settings.opponent],
            settings,
        )
    finally:
        arbiter.close()


if __name__ == "__main__":
    sys.exit(main())
