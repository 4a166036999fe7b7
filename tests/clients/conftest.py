"""What the clients need. The environment variable KORVU_UCI names the companion under test, and
KORVU the engine that it runs.

Every test of it is made with Stockfish too: what a good engine does not pass would be the client's
own error. `--engine NAME` makes the tests with one of the two alone, and `--engine none` those of
the clients themselves, which need neither.
"""

import signal
import stat
import sys

import pytest
from arbiter import Arbiter
from driver import Driver, Engine
from judge import Habits

from fixtures import add_patience, named_by, patience  # noqa: F401
from programs import program

# Answers as it should, but for what a test replaces.
STAND_IN = """\
#!{python}
import subprocess, sys, time

def say(line):
    print(line, flush=True)

answers = {{
    "uci": lambda: say("id name Stand-in\\nid author Nobody\\nuciok"),
    "isready": lambda: say("readyok"),
    "go": lambda: say("bestmove e2e4"),
    "quit": lambda: sys.exit(0),
    "end": lambda: None,
}}
answers.update({{{wrong}}})
for line in sys.stdin:
    answers.get(line.split()[0], lambda: None)()
answers["end"]()
"""


# Who runs the tests in the background has shells ignore the interrupt, and so would every program
# that the tests start and interrupt.
signal.signal(signal.SIGINT, signal.default_int_handler)


def pytest_addoption(parser):
    add_patience(parser)
    parser.addoption("--engine", choices=["stockfish", "korvu-uci", "none"])


def pytest_generate_tests(metafunc):
    if "engine" in metafunc.fixturenames:
        metafunc.parametrize("engine", ["stockfish", "korvu-uci"], indirect=True, scope="session")


def pytest_collection_modifyitems(config, items):
    wanted = config.getoption("--engine")
    if wanted is None:
        return

    def is_wanted(item):
        has_engine = "engine" in item.fixturenames
        return wanted == (item.callspec.params["engine"] if has_engine else "none")

    config.hook.pytest_deselected(items=[item for item in items if not is_wanted(item)])
    items[:] = filter(is_wanted, items)


def stockfish():
    complains = ("Unknown command:", "No such option:")
    habits = Habits(greets=True, blank_lines=True, complains=complains)
    return Engine("stockfish", (program("stockfish"),), habits, (("Hash", 16),))


def companion():
    habits = Habits(passes_over_searchmoves=True)
    return Engine("korvu-uci", (named_by("KORVU_UCI"), named_by("KORVU")), habits)


@pytest.fixture(scope="session")
def engine(request):
    return {"stockfish": stockfish, "korvu-uci": companion}[request.param]()


@pytest.fixture(scope="session")
def arbiter():
    arbiter = Arbiter()
    yield arbiter
    arbiter.close()


SLOWEST = {}  # engine and what was waited for: seconds


@pytest.fixture
def start(engine, arbiter, patience):
    """Starts drivers that have said nothing yet."""
    started = []

    def start(**how):
        started.append(Driver(engine, arbiter, patience, **how))
        return started[-1]

    yield start
    for driver in started:
        driver.close()
        for what, seconds in driver.slowest.items():
            key = (engine.name, what)
            SLOWEST[key] = max(seconds, SLOWEST.get(key, 0.0))


@pytest.fixture
def connect(tmp_path, arbiter):
    """Starts drivers of engines that go wrong as they are told to."""
    started = []

    def connect(wrong="", patience=1.0):
        file = tmp_path / f"engine{len(started)}"
        file.write_text(STAND_IN.format(python=sys.executable, wrong=wrong), encoding="ascii")
        file.chmod(file.stat().st_mode | stat.S_IXUSR)
        started.append(Driver(Engine("stand-in", (file,)), arbiter, patience))
        return started[-1]

    yield connect
    for driver in started:
        driver.close()


@pytest.fixture
def client(start):
    """A driver as it is when an engine has been introduced. In the end it asks the engine to leave,
    with no word of it unheard."""
    driver = start().begin()
    yield driver
    if driver.process.poll() is None and not driver.judge.leaving:
        if driver.judge.search:
            driver.stop()
        driver.ready()
        driver.quiet(0.05)
        driver.quit()


def pytest_terminal_summary(terminalreporter):
    for (name, what), seconds in sorted(SLOWEST.items()):
        terminalreporter.write_line(f"{name:10} {what:24} {1000 * seconds:8.1f} ms at the slowest")
