"""What the tests of installed files need. Environment variables name what was built: KORVU the
engine, KORVU_BUILD the build's folder, and KORVU_UCI the companion, where there is one.
"""

import os
import pathlib
import subprocess

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]


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
