"""Options of the dialogue tests. The environment variable KORVU names the engine under test."""

import os
import pathlib

import pytest
from live import Process


def pytest_addoption(parser):
    parser.addoption(
        "--slow", action="store_true", help="run the transcripts of deep searches too (minutes)"
    )
    parser.addoption(
        "--patience",
        type=float,
        default=1.0,
        metavar="FACTOR",
        help="wait so many times as long for answers, for slow builds",
    )


def pytest_configure(config):
    config.addinivalue_line("markers", "slow: deep searches, run only with --slow")


def pytest_collection_modifyitems(config, items):
    if config.getoption("--slow"):
        return
    slow = [item for item in items if item.get_closest_marker("slow")]
    if slow:
        config.hook.pytest_deselected(items=slow)
        items[:] = [item for item in items if not item.get_closest_marker("slow")]


@pytest.fixture(scope="session")
def engine():
    path = os.environ.get("KORVU")
    if not path:
        pytest.fail("the environment variable KORVU does not name the engine to test")
    path = pathlib.Path(path).resolve()
    if not os.access(path, os.X_OK):
        pytest.fail(f"there is no engine to run at {path}")
    return path


@pytest.fixture(scope="session")
def patience(pytestconfig):
    return pytestconfig.getoption("--patience")


@pytest.fixture
def korvu(engine, patience):
    started = []

    def start(**how):
        started.append(Process(engine, patience, **how))
        return started[-1]

    yield start
    for process in started:
        process.process.kill()
        process.process.wait()
        process.process.stdin.close()
