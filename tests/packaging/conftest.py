"""What the tests of installed files need. Environment variables name what was built: KORVU the
engine, KORVU_BUILD the build's folder, and KORVU_UCI the companion, where there is one.
"""

import os
import pathlib
import re
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests" / "support"))
from programs import Spoken  # noqa: E402


@pytest.fixture(scope="session")
def root():
    return ROOT


@pytest.fixture(scope="session")
def build():
    return pathlib.Path(os.environ["KORVU_BUILD"]).resolve()


@pytest.fixture(scope="session")
def engine():
    return pathlib.Path(os.environ["KORVU"]).resolve()


@pytest.fixture(scope="session")
def companion():
    """None in a build without it."""
    path = os.environ.get("KORVU_UCI")
    return pathlib.Path(path).resolve() if path else None


def run(*command, **how):
    words = [str(word) for word in command]
    return subprocess.run(words, capture_output=True, text=True, timeout=60, **how)


def plays_as_black(*command):
    """Has a program of UCI answer a short game, and says whether a black man moves."""
    player = Spoken(command)
    player.write(b"position startpos moves e2e4 e7e5 a2a3\ngo movetime 100\n")
    line = ""
    while line is not None and not line.startswith("bestmove"):
        line = player.lines.get(timeout=60)[1]
    player.write(b"quit\n")
    assert player.process.wait(timeout=60) == 0
    player.process.stdin.close()
    # Black has men on ranks 7 and 8 and on e5 alone.
    return re.match(r"bestmove ([a-h][78]|e5)[a-h][1-8]", line or "") is not None
