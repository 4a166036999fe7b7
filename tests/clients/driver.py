"""A strict UCI client: an engine's process, every line of which goes past the judge."""

import contextlib
import dataclasses
import os
import pathlib
import queue
import signal
import subprocess
import time

from judge import Fault, Habits, Judge

from programs import Spoken

# Seconds. Each is what a person at a board would find prompt; `patience` stretches them all on slow
# or busy machines.
PROMPT = 0.1  # isready, stop, ponderhit after a long thought
START = 3.0
LEAVE = 2.0


@dataclasses.dataclass(frozen=True)
class Engine:
    """How an engine is started, and what it is forgiven."""

    name: str
    command: tuple
    habits: Habits = Habits()
    options: tuple = ()  # (name, value), set at the start


class Driver(Spoken):
    def __init__(self, engine, arbiter, patience=1.0, **how):
        self.engine = engine
        self.judge = Judge(arbiter, engine.habits)
        self.patience = patience
        self.dialogue = []
        self.slowest = {}  # what was waited for: seconds
        self.start = time.monotonic()
        super().__init__(engine.command, **how)

    # --- lines ---

    def _note(self, sign, line, moment):
        self.dialogue.append(f"{1000 * (moment - self.start):7.0f} {sign} {line}")

    def fault(self, what):
        """The dialogue that shows a fault, its end at least."""
        shown = "\n".join(line[:300] for line in self.dialogue[-40:])
        return Fault(f"{self.engine.name}: {what}\n{shown}")

    def send(self, *lines):
        """Sends lines in one go. What came before was said without knowing of them."""
        self.send_raw("".join(line + "\n" for line in lines))

    def send_raw(self, text):
        self.listen()
        for line in text.splitlines():
            self._note(">", line, time.monotonic())
            self.judge.sent(line)
        try:
            self.write(text.encode())
        except BrokenPipeError:
            raise self.fault("has left") from None

    def _hear(self, timeout):
        """Takes one line to the judge; tells when it came, or None when nothing comes."""
        try:
            moment, line = self.lines.get(timeout=timeout) if timeout else self.lines.get_nowait()
        except queue.Empty:
            return None
        if line is None:
            if not self.judge.leaving:
                raise self.fault("has left")
            return moment
        self._note("<", line, moment)
        try:
            self.judge.said(line)
        except Fault as fault:
            raise self.fault(fault) from None
        return moment

    def listen(self, seconds=0.0):
        """Hears what comes within this time."""
        end = time.monotonic() + seconds
        while self._hear(max(0.0, end - time.monotonic())) is not None or time.monotonic() < end:
            pass

    def quiet(self, seconds=0.3):
        """As `listen`, and nothing may come but info lines."""
        before = (self.judge.search, self.judge.asked_ready)
        self.listen(seconds)
        if (self.judge.search, self.judge.asked_ready) != before:
            raise self.fault("did not wait")

    def wait(self, what, done, seconds):
        """Hears until `done()`. Returns the time it took, of which no more than `seconds` times the
        patience may pass."""
        began = moment = time.monotonic()
        end = began + seconds * self.patience
        while not done():
            moment = self._hear(max(0.001, end - time.monotonic()))
            if moment is None and time.monotonic() >= end:
                raise self.fault(f"no {what} within {seconds * self.patience:.2f} s")
            moment = moment or time.monotonic()
        took = max(0.0, moment - began)
        self.slowest[what] = max(took, self.slowest.get(what, 0.0))
        return took

    # --- what clients do ---

    def uci(self):
        self.send("uci")
        self.wait("uciok", lambda: not self.judge.asked_uci, START)

    def ready(self, what="readyok", seconds=PROMPT):
        self.send("isready")
        return self.wait(what, lambda: not self.judge.asked_ready, seconds)

    def begin(self):
        """As every client begins."""
        self.uci()
        for name, value in self.engine.options:
            self.send(f"setoption name {name} value {value}")
        self.ready("first readyok", START)
        return self

    def offers(self, name):
        return name.lower() in map(str.lower, self.judge.options)

    def set(self, name, value):
        """Sets an option that is offered, in whatever case; tells whether it is."""
        if self.offers(name):
            self.send(f"setoption name {name} value {value}")
        return self.offers(name)

    def position(self, position):
        self.send(position.line())

    def go(self, *words):
        self.send(" ".join(["go", *map(str, words)]))

    def bestmove(self, seconds, what="bestmove"):
        """Waits for the end of the search that runs, and returns it."""
        took = self.wait(what, lambda: self.judge.search is None, seconds)
        return self.judge.last, took

    def stop(self):
        self.send("stop")
        return self.bestmove(PROMPT, "bestmove after stop")[0]

    def quit(self):
        """Asks the engine to leave; nothing that it has started may stay."""
        family = descendants(self.process.pid)
        if not self.judge.leaving:
            self.send("quit")
        self.leaves(family)

    def leaves(self, family):
        try:
            status = self.process.wait(timeout=LEAVE * self.patience)
        except subprocess.TimeoutExpired:
            raise self.fault("does not leave") from None
        if status != 0:
            raise self.fault(f"left with {status}")
        self.none_stay(family)

    def none_stay(self, family):
        end = time.monotonic() + LEAVE * self.patience
        while any(map(runs, family)) and time.monotonic() < end:
            time.sleep(0.02)
        staying = [pid for pid in family if runs(pid)]
        if staying:
            raise self.fault(f"left {len(staying)} processes behind")

    def close(self):
        """The end, whatever has happened."""
        family = descendants(self.process.pid)
        self.process.kill()
        self.process.wait()
        for pid in family:
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, signal.SIGKILL)
        with contextlib.suppress(BrokenPipeError):
            self.process.stdin.close()


def parents():
    """Every process and its parent. Those that have ended and wait to be buried do not count."""
    found = {}
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            state, parent = (folder / "stat").read_text().rpartition(")")[2].split()[:2]
            if state not in "ZX":
                found[int(folder.name)] = int(parent)
    return found


def runs(pid):
    return pid in parents()


def descendants(pid):
    found = parents()
    family = [pid]
    for member in family:
        family.extend(child for child, parent in found.items() if parent == member)
    return family[1:]
