"""The companion over the real process. KORVU_UCI names the program, KORVU_REFEREE the judge of
moves."""

import pathlib
import subprocess
import sys

import pytest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "dialogue"))

from live import Process  # noqa: E402
from fixtures import add_patience, named_by, patience  # noqa: E402, F401

pytest_addoption = add_patience


@pytest.fixture(scope="session")
def program():
    return named_by("KORVU_UCI")


@pytest.fixture(scope="session")
def illegal():
    """What the referee says of moves from a FEN, or nothing when all are legal."""

    def judge(moves, fen=None):
        command = [named_by("KORVU_REFEREE")] + (["--fen", fen] if fen else [])
        told = subprocess.run(command, input=" ".join(moves), text=True, capture_output=True)
        return told.stdout if told.returncode else ""

    return judge


class Companion(Process):
    """The companion with its engine ready."""

    def __init__(self, program, patience, *arguments, **how):
        super().__init__(program, patience, *arguments, **how)
        self.send("uci")
        self.greeting = self.up_to("uciok")

    def up_to(self, end):
        lines = []
        while not lines or not lines[-1].startswith(end):
            lines.append(self.line())
            assert lines[-1] is not None, f"the companion ended without {end}"
        return lines

    def ask(self, position, go):
        self.send(position, go)
        return self.up_to_bestmove()

    def engine(self):
        """The process id of its only child."""
        pid = self.process.pid
        (child,) = pathlib.Path(f"/proc/{pid}/task/{pid}/children").read_text().split()
        return int(child)


@pytest.fixture
def companion(program, patience):
    started = []

    def start(*arguments, **how):
        started.append(Companion(program, patience, *arguments, **how))
        return started[-1]

    yield start
    for one in started:
        one.process.kill()
        one.process.wait()


@pytest.fixture
def uci(companion):
    return companion()


class StandIn:
    """An engine that follows a plan, and writes down what it is told."""

    def __init__(self, folder):
        self.path = folder / "stand_in"
        self.log = folder / "heard"
        text = (HERE / "stand_in.py").read_text(encoding="utf-8")
        self.path.write_text(f"#!{sys.executable}\n{text}", encoding="utf-8")
        self.path.chmod(0o755)
        self.log.touch()

    def plan(self, *steps):
        (self.path.parent / "plan").write_text("\n".join(steps), encoding="utf-8")
        return str(self.path)

    def heard(self):
        return self.log.read_text(encoding="utf-8").splitlines()


@pytest.fixture
def stand_in(tmp_path):
    return StandIn(tmp_path)
