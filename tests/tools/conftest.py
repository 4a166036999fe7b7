"""The environment variable KORVU names the engine that is measured."""

import os
import pathlib

import pytest


@pytest.fixture(scope="session")
def engine():
    return pathlib.Path(os.environ["KORVU"]).resolve()
