"""Options of the dialogue tests. The environment variable KORVU names the engine under test."""

import pytest
from live import Process

from fixtures import add_patience, named_by, patience  # noqa: F401


def pytest_addoption(parser):
    parser.addoption(
        "--slow", action="store_true", help="run the transcripts of deep searches too (minutes)"
    )
    add_patience(parser)


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
    return named_by("KORVU")


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
