"""Everything that clients do, in an order that the dice have chosen."""

import random

import pytest
from arbiter import Position
from positions import SPECIAL, game

STEPS = 40

# What may be changed without changing how an engine answers a client.
LEFT_ALONE = {"uci_chess960", "ponder", "threads", "debug log file", "syzygypath", "evalfile"}


class Player:
    def __init__(self, client, arbiter, seed):
        self.client, self.arbiter = client, arbiter
        self.dice = random.Random(seed)

    def a_position(self):
        kind = self.dice.randrange(4)
        if kind == 0:
            return self.dice.choice(SPECIAL)
        position = game(self.arbiter, self.dice.randrange(120), self.dice.randrange(1000))
        return Position(self.arbiter.fen(position)) if kind == 1 else position

    def change_an_option(self):
        options = [
            option
            for option in self.client.judge.options.values()
            if option.name.lower() not in LEFT_ALONE and option.type in ("check", "combo", "button")
        ]
        option = self.dice.choice(options)
        values = {"check": ["true", "false"], "combo": option.var, "button": [None]}[option.type]
        value = self.dice.choice(values)
        self.client.send(
            f"setoption name {option.name}" + (f" value {value}" if value is not None else "")
        )

    def between_searches(self):
        kind = self.dice.randrange(8)
        if kind == 0:
            self.client.send("ucinewgame")
            self.client.ready("readyok after ucinewgame", 1)
        elif kind == 1:
            self.change_an_option()
            self.client.ready("readyok after options", 1)
        elif kind == 2:
            self.client.send("stop", "ponderhit")
        elif kind == 3:
            self.client.position(self.a_position())
        elif kind == 4:
            self.client.ready()
        elif kind == 5:
            self.client.quiet(0.02)

    def wait(self):
        self.client.listen(self.dice.choice([0, 0, 0.002, 0.01, 0.05, 0.15]))
        if self.dice.random() < 0.5:
            self.client.ready("readyok during a search")

    def search(self):
        number = self.dice.randrange(1, 80)
        kind = self.dice.randrange(7)
        if kind == 0:
            self.client.go("movetime", number)
            self.client.bestmove(number / 1000 + 0.2, "bestmove of a movetime")
        elif kind == 1:
            self.client.go("depth", 1 + number % 3)
            self.client.bestmove(10, "bestmove of a depth")
        elif kind == 2:
            self.client.go("nodes", 50 * number)
            self.client.bestmove(10, "bestmove of nodes")
        elif kind == 3:
            left = 20 * number
            self.client.go("wtime", left, "btime", left, "winc", 0, "binc", 0)
            self.client.bestmove(max(0.1, left / 1000), "bestmove on a clock")
        elif kind in (4, 5):
            self.client.go("infinite")
            self.wait()
            self.client.stop()
        else:
            self.client.go("ponder", "wtime", 20 * number + 200, "btime", 20 * number + 200)
            self.wait()
            if self.dice.random() < 0.5:
                self.client.stop()
            else:
                self.client.send("ponderhit")
                self.client.bestmove((20 * number + 200) / 1000, "bestmove after ponderhit")


@pytest.mark.parametrize("seed", range(4))
def test_any_order(client, arbiter, seed):
    player = Player(client, arbiter, seed)
    for _ in range(STEPS):
        player.between_searches()
        client.position(player.a_position())
        if player.dice.random() < 0.3:
            client.ready()
        player.search()
