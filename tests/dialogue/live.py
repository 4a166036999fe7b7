"""The engine as a process whose input stays open."""

import pathlib
import queue
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from programs import Spoken  # noqa: E402

PATIENCE = 20.0  # for an answer that has to come
SILENCE = 0.3  # for one that must not come


class Process(Spoken):
    def __init__(self, engine, patience, *arguments, **how):
        self.patience = PATIENCE * patience
        super().__init__((engine, *arguments), **how)

    def send(self, *lines):
        self.send_raw("".join(line + "\n" for line in lines).encode())

    def send_raw(self, data):
        self.write(data)

    def line(self):
        """The next line, or None at the end."""
        return self.lines.get(timeout=self.patience)[1]

    def is_silent(self):
        try:
            return self.lines.get(timeout=SILENCE)[1] is None
        except queue.Empty:
            return True

    def up_to_bestmove(self):
        lines = []
        while not lines or not lines[-1].startswith("bestmove "):
            lines.append(self.line())
            assert lines[-1] is not None, "the process ended without a bestmove"
        return lines

    def ends(self):
        return self.process.wait(timeout=self.patience)

    def runs(self):
        return self.process.poll() is None
