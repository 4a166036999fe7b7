"""What the tests of games need. The environment variable KORVU names the engine, KORVU_UCI its
companion, if that is to play too, and KORVU_REFEREE the built referee tool.
"""

import os
import pathlib
import shutil

import pytest
from game import companion, korvu

from fixtures import named_by


def pytest_generate_tests(metafunc):
    if "engine" in metafunc.fixturenames:
        names = ["korvu", "korvu-uci"] if "KORVU_UCI" in os.environ else ["korvu"]
        metafunc.parametrize("engine", names, indirect=True, scope="session")


@pytest.fixture(scope="session")
def engine(request, tmp_path_factory):
    """The engine or its companion as a player. They are copies, so that their processes can be told
    from all others."""
    folder = tmp_path_factory.mktemp("engine")
    path = pathlib.Path(shutil.copy(named_by("KORVU"), folder / "korvu"))
    if request.param == "korvu":
        return korvu(path)
    return companion(pathlib.Path(shutil.copy(named_by("KORVU_UCI"), folder / "korvu-uci")))


@pytest.fixture(scope="session")
def referee():
    return named_by("KORVU_REFEREE")
