#!/usr/bin/env python3
"""Runs engines as PyChess does, with its own classes and nobody looking at the screen.

    pychess_client.py play SECONDS INCREMENT FIRST_MOVES WHITE BLACK
    pychess_client.py analyse SECONDS FEN,FEN... ENGINE

An engine is a command, its words parted by commas. WHITE and BLACK have PyChess's level of play,
1 to 20, and a colon before it. FIRST_MOVES are played for both before the game, parted by commas
too. Prints what happened as JSON. It needs a display and a home of its own.
"""

import asyncio
import json
import sys
import time

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("GtkSource", "3.0")

from pychess.Players.engineNest import discoverer  # noqa: E402
from pychess.Players.Player import InvalidMove, PlayerIsDead, TurnInterrupt  # noqa: E402
from pychess.System import conf  # noqa: E402
from pychess.Utils.Board import Board  # noqa: E402
from pychess.Utils.const import ANALYZING, BLACK, CASTLE_KK, RUNNING, WHITE  # noqa: E402
from pychess.Utils.logic import getStatus, validate  # noqa: E402
from pychess.Utils.lutils.lmove import ParsingError  # noqa: E402
from pychess.Utils.Move import parseAny, toAN  # noqa: E402
from pychess.Variants import variants  # noqa: E402

NORMAL_CHESS = variants[0]
LONGEST = 400  # plies
BUSY = 5.0  # seconds in which an engine must have told something, on the busiest machine
SLACK = 0.5  # seconds that PyChess itself may take to hear of a move


def description(command):
    path, *arguments = command.split(",")
    return {
        "name": path.rpartition("/")[2],
        "protocol": "uci",
        "command": path,
        "args": arguments,
        "md5": None,
        "workingDirectory": path.rpartition("/")[0],
    }


async def begin(engine):
    """Waits until the engine is ready to play, as PyChess does before a game."""
    event, dead = asyncio.Event(), set()
    engine.start(event, dead)
    await event.wait()
    if dead:
        raise PlayerIsDead


async def leave(engine):
    """Tells the engine to leave; PyChess does not wait to see it go."""
    process = engine.engine.proc
    engine.kill(None)
    await asyncio.wait_for(process.wait(), 10)


async def play(seconds, increment, first_moves, commands):
    """A game, each player on its clock. Who plays an illegal move, leaves or lets the flag fall has
    lost, and the end tells which of these it was. Two hundred moves are enough of any game."""
    engines = []
    for colour, word in zip((WHITE, BLACK), commands):
        level, _, command = word.partition(":")
        engine = await discoverer.initPlayerEngine(
            description(command), colour, int(level), NORMAL_CHESS, seconds, increment
        )
        engines.append(engine)
        await begin(engine)

    boards, moves, clocks = [Board(setup=True)], [], [float(seconds)] * 2

    def put(move):
        moves.append(move)
        boards.append(boards[-1].move(move))

    for text in first_moves:
        put(parseAny(boards[-1], text))
    for engine in engines:
        engine._recordMove(boards[0], None, None)
        for before, move, after in zip(boards, moves, boards[1:]):
            engine._recordMove(after, move, before)

    end = "long"
    while len(moves) < LONGEST and end == "long":
        turn = len(moves) % 2
        engine = engines[turn]
        engine.updateTime(clocks[turn], clocks[1 - turn])
        last = (moves[-1], boards[-2]) if moves else (None, None)
        began = time.monotonic()
        try:
            move = await asyncio.wait_for(
                engine.makeMove(boards[-1], *last), clocks[turn] + 2
            )
        except asyncio.TimeoutError:
            end = "time"
        except PlayerIsDead:
            end = "left"
        except (InvalidMove, TurnInterrupt):
            end = "illegal"
        else:
            clocks[turn] -= time.monotonic() - began
            if clocks[turn] < -SLACK:
                end = "time"
            clocks[turn] = max(0.0, clocks[turn]) + increment
            put(move)
            if getStatus(boards[-1])[0] != RUNNING:
                end = "rules"
    texts = [
        toAN(board, move, short=True, castleNotation=CASTLE_KK)
        for board, move in zip(boards, moves)
    ]
    result = {
        "end": end,
        "turn": "White" if len(moves) % 2 == 0 else "Black",  # who was, or would be, to move
        "moves": texts,
        "names": [repr(engine) for engine in engines],
        "ponders": [engine.ponderOn for engine in engines],
    }
    for engine in engines:
        await leave(engine)
    return result


async def analyse(seconds, fens, command):
    """What the engine tells of each position: how many lines, the last of them, and whether all its
    moves are legal by PyChess."""
    engine = await discoverer.initAnalyzerEngine(description(command), ANALYZING, NORMAL_CHESS)
    board = None
    told = []

    def listen(_, analysis):
        told.extend(line for line in analysis if line)

    await begin(engine)
    engine.connect("analyze", listen)
    found = []
    for fen in fens:
        board = Board(setup=fen)
        engine.setBoard(board)
        while engine.board != board:  # the search of the one before has still to be stopped
            await asyncio.sleep(0.005)
        told.clear()
        end = time.monotonic() + BUSY
        while not told and time.monotonic() < end:
            await asyncio.sleep(0.01)
        await asyncio.sleep(seconds)
        lines = list(told)
        found.append(
            {
                "fen": fen,
                "lines": len(lines),
                "moves": lines[-1][1] if lines else [],
                "legal": all(is_line(board, moves) for _, moves, *_ in lines),
            }
        )
    await leave(engine)
    return found


def is_line(board, moves):
    for text in moves:
        try:
            move = parseAny(board, text)
        except ParsingError:
            return False
        if not validate(board, move):
            return False
        board = board.move(move)
    return True


async def main(task, *words):
    conf.set("infinite_analysis", True)
    if task == "play":
        seconds, increment, first_moves, *commands = words
        moves = [move for move in first_moves.split(",") if move]
        return await play(int(seconds), float(increment), moves, commands)
    seconds, fens, command = words
    return await analyse(float(seconds), fens.split(","), command)


if __name__ == "__main__":
    loop = asyncio.new_event_loop()
    asyncio.set_event_loop(loop)
    print(json.dumps(loop.run_until_complete(main(*sys.argv[1:]))))
