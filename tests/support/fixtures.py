"""What the conftests of several rooms share: programs under test, which environment variables name,
and patience with them on slow builds and busy machines."""

import os
import pathlib

import pytest


def named_by(variable):
    path = os.environ.get(variable)
    if not path:
        pytest.fail(f"the environment variable {variable} does not name the program to test")
    path = pathlib.Path(path).resolve()
    if not os.access(path, os.X_OK) or path.is_dir():
        pytest.fail(f"there is no program to run at {path}")
    return path


def add_patience(parser):
    parser.addoption(
        "--patience",
        type=float,
        default=1.0,
        metavar="FACTOR",
        help="wait so many times as long for answers",
    )


@pytest.fixture(scope="session")
def patience(pytestconfig):
    return pytestconfig.getoption("--patience")
