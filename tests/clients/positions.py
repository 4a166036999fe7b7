"""Positions that clients ask about."""

import random

from arbiter import Position

MATE = Position("7k/6Q1/6K1/8/8/8/8/8 b - - 0 1")
STALEMATE = Position("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1")
MATE_IN_ONE = Position("6k1/5ppp/8/8/8/8/8/R3K3 w Q - 0 1")  # a1a8
ONE_MOVE = Position("6k1/8/8/8/8/6p1/8/4r2K w - - 0 1")  # h1g2, out of check

# Black answers the first move, whatever it is.
FIRST_MOVES = """a2a3 a2a4 b2b3 b2b4 c2c3 c2c4 d2d3 d2d4 e2e3 e2e4 f2f3 f2f4 g2g3 g2g4 h2h3 h2h4
                 b1a3 b1c3 g1f3 g1h3""".split()

# What a bare FEN can have that a game's line of moves hides.
SPECIAL = [
    Position(fen)
    for fen in (
        "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
        "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR b KQkq - 0 1",
        "rnbqkbnr/ppp1pppp/8/3pP3/8/8/PPPP1PPP/RNBQKBNR w KQkq d6 0 3",
        "rnbqkbnr/pppp1ppp/8/8/3Pp3/8/PPP1PPPP/RNBQKBNR b KQkq d3 0 3",
        "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
        "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R b KQkq - 0 1",
        "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
        "8/P6k/8/8/8/8/7K/8 w - - 0 1",
        "8/7k/8/8/8/8/p6K/8 b - - 0 1",
        "1n6/P6k/8/8/8/8/7K/8 w - - 12 60",
        "8/8/8/4k3/8/4K3/4P3/8 b - - 3 70",
        "8/8/8/8/5k2/8/8/K6R w - - 98 140",
        "4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1",
        "r3k2r/8/8/8/8/8/8/4K3 b kq - 0 1",
        "4k3/8/8/8/7b/8/8/4K3 w - - 4 50",
        "r1bqkb1r/pppp1Qpp/2n2n2/4p3/2B1P3/8/PPPP1PPP/RNB1K1NR b KQkq - 0 4",
        "6k1/5ppp/8/8/8/8/8/R3K3 w Q - 0 1",
        "7k/6Q1/6K1/8/8/8/8/8 b - - 0 1",
        "7k/5Q2/6K1/8/8/8/8/8 b - - 0 1",
        "k7/8/8/8/8/8/8/K7 w - - 0 1",
        "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N1PN2/PP3PPP/R1BQKB1R w KQ - 4 8",
    )
]


def game(arbiter, plies, seed):
    """A game of random moves, at most so long."""
    dice = random.Random(seed)
    position = Position()
    while len(position.moves) < plies and arbiter.legal(position):
        position = position.after(dice.choice(sorted(arbiter.legal(position))))
    return position


def bare(arbiter, count):
    """Positions from random games as bare FENs, with moves to play, either side to play."""
    found = []
    for seed in range(count):
        position = game(arbiter, 5 + 37 * seed % 90, seed)
        fen = Position(arbiter.fen(position))
        if arbiter.legal(fen):
            found.append(fen)
    return found
