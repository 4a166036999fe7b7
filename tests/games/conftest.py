"""What the tests of games need. The environment variable KORVU names the engine, and KORVU_UCI its
companion, if that is to play too. KORVU_REFEREE may name the built referee tool; without it the
tool is compiled here.
"""

import os
import pathlib
import shutil
import subprocess

import pytest
from game import companion, korvu

SUPPORT = pathlib.Path(__file__).parent.parent / "support"


def pytest_generate_tests(metafunc):
    if "engine" in metafunc.fixturenames:
        names = ["korvu", "korvu-uci"] if "KORVU_UCI" in os.environ else ["korvu"]
        metafunc.parametrize("engine", names, indirect=True, scope="session")


@pytest.fixture(scope="session")
def engine(request, tmp_path_factory):
    """The engine or its companion as a player. They are copies, so that their processes can be told
    from all others."""
    folder = tmp_path_factory.mktemp("engine")

    def copy(name, variable):
        path = os.environ.get(variable)
        if not path:
            pytest.fail(f"the environment variable {variable} does not name the program to test")
        return pathlib.Path(shutil.copy(path, folder / name))

    path = copy("korvu", "KORVU")
    return korvu(path) if request.param == "korvu" else companion(copy(request.param, "KORVU_UCI"))


@pytest.fixture(scope="session")
def referee(tmp_path_factory):
    if "KORVU_REFEREE" in os.environ:
        return pathlib.Path(os.environ["KORVU_REFEREE"]).resolve()
    tool = tmp_path_factory.mktemp("referee") / "referee_tool"
    sources = [SUPPORT / "referee.cpp", SUPPORT / "referee_tool.cpp"]
    subprocess.run(
        [os.environ.get("CXX", "c++"), "-std=c++20", "-O2", *sources, "-o", tool], check=True
    )
    return tool
