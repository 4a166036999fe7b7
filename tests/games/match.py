#!/usr/bin/env python3
"""Plays a match of whole games and tells how they went.

ENGINE is the built korvu and REFEREE the built korvu-referee; with --companion, the built korvu-uci
plays and runs ENGINE. The opponent is stockfish (at its weakest), gnuchess or fairymax. Colours
alternate, White first. Each game is told when it has ended, and all of them at the end. Several matches can run side by side.
Ends with 1 when a game was not played to an end that the rules know, and that was Korvu's doing.
"""

import argparse
import collections
import dataclasses
import pathlib
import re
import shutil
import sys
import tempfile
import time

from game import (
    GameFailed,
    companion,
    judge,
    korvu,
    opponent,
    play_korvu,
    result_of,
    running,
)

from matches import add_options, colour_of, ends, points_of

# What a game can end by, other than by the rules. The loser is the one whose doing it was.
MISHAPS = {
    "illegal": r"illegal",
    "time": r"time|flag",
    "resigned": r"resign",
}


@dataclasses.dataclass
class Outcome:
    kind: str  # an end by the rules, a mishap, or "unfinished"
    points: float | None  # Korvu's, None for a game without a result
    plies: int
    remark: str

    def is_korvus_fault(self):
        return self.kind in ("crash", "unfinished", "disputed", "stays behind") or (
            self.kind in MISHAPS and self.points == 0
        )


def outcome_of(record, colour, referee):
    """Reads a record as XBoard and the referee have judged it."""
    judged = judge(referee, record.moves)
    result = record.tags["Result"]
    plies, points = len(record.moves), points_of(result, colour)
    if record.left_early:
        return Outcome("crash", points, plies, record.remark)
    if "illegal" in judged:
        return Outcome("disputed", points, plies, "illegal: " + judged["illegal"])
    if judged["verdict"] != "open":
        agreed = result == result_of(judged["verdict"], plies)
        kind = judged["verdict"] if agreed else "disputed"
        return Outcome(kind, points, plies, record.remark)
    for kind, pattern in MISHAPS.items():
        if re.search(pattern, record.remark, re.IGNORECASE):
            return Outcome(kind, points, plies, record.remark)
    return Outcome("unfinished", points, plies, record.remark)


def all_gone(player):
    """Waits for the processes of the player to end with their client."""
    deadline = time.monotonic() + 10
    while running(player) and time.monotonic() < deadline:
        time.sleep(0.1)
    return not running(player)


def play_one(players, referee, colour, clock, save):
    """`players` are Korvu and its opponent."""
    with tempfile.TemporaryDirectory() as name:
        try:
            record = play_korvu(pathlib.Path(name), *players, colour, clock)
        except GameFailed as failed:
            return Outcome("unfinished", None, 0, str(failed))
    if save:
        with open(save, "a", encoding="ascii") as file:
            file.write(record.text.strip() + "\n\n")
    outcome = outcome_of(record, colour, referee)
    if not all_gone(players[0]):
        outcome.kind = "stays behind"
    return outcome


def summary(outcomes):
    kinds = collections.Counter(outcome.kind for outcome in outcomes)
    faults = [outcome for outcome in outcomes if outcome.is_korvus_fault()]
    finished = sum(outcome.points is not None for outcome in outcomes)
    points = sum(outcome.points or 0 for outcome in outcomes)
    of_korvu = collections.Counter(outcome.kind for outcome in faults)
    return "\n".join(
        [
            f"games      {len(outcomes)}",
            f"finished   {finished}",
            f"illegal    {of_korvu['illegal']} by Korvu",
            f"time       {of_korvu['time']} lost by Korvu",
            f"crashes    {of_korvu['crash']}",
            f"unfinished {of_korvu['unfinished']}",
            f"score      {points:g} of {finished} for Korvu",
            f"plies      {sum(outcome.plies for outcome in outcomes)}",
            ends(kinds),
        ]
    )


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("engine", type=pathlib.Path)
    parser.add_argument("referee", type=pathlib.Path)
    parser.add_argument("--companion", type=pathlib.Path)
    add_options(parser, ("stockfish", "gnuchess", "fairymax"))
    options = parser.parse_args()

    outcomes = []
    referee = options.referee.resolve()
    with tempfile.TemporaryDirectory() as name:
        # Copies, so that their processes can be told from all others.
        folder = pathlib.Path(name).resolve()
        player = korvu(pathlib.Path(shutil.copy(options.engine, folder / "korvu")))
        if options.companion:
            player = companion(pathlib.Path(shutil.copy(options.companion, folder / "korvu-uci")))
        players = (player, opponent(options.opponent))
        for number in range(1, options.games + 1):
            colour = colour_of(number)
            outcome = play_one(players, referee, colour, options.clock, options.save)
            outcomes.append(outcome)
            print(
                f"{number:3} {colour}: {outcome.points} points, {outcome.kind} after "
                f"{outcome.plies} plies. {outcome.remark}",
                flush=True,
            )
    print(summary(outcomes))
    return any(outcome.is_korvus_fault() for outcome in outcomes)


if __name__ == "__main__":
    sys.exit(main())
