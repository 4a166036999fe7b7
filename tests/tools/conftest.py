"""The environment variable KORVU names the engine that is measured."""

import os
import pathlib
import sys

import pytest

# Where the tool finds what it imports.
sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "tools"))


@pytest.fixture(scope="session")
def engine():
    return pathlib.Path(os.environ["KORVU"]).resolve()
