"""What the tests of games need. The environment variable KORVU names the engine. KORVU_REFEREE may
name the built referee tool; without it the tool is compiled here.
"""

import os
import pathlib
import shutil
import subprocess

import pytest

SUPPORT = pathlib.Path(__file__).parent.parent / "support"


@pytest.fixture(scope="session")
def engine(tmp_path_factory):
    """A copy of the engine, so that its processes can be told from all others."""
    path = os.environ.get("KORVU")
    if not path:
        pytest.fail("the environment variable KORVU does not name the engine to test")
    return pathlib.Path(shutil.copy(path, tmp_path_factory.mktemp("engine") / "korvu"))


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
