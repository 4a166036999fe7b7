"""What every tool in Python tells about itself."""

import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[1]


def version():
    """The project's version, from the one place where it stands."""
    project = (ROOT / "CMakeLists.txt").read_text(encoding="ascii")
    return re.search(r"^project\(korvu VERSION ([\d.]+)", project, re.MULTILINE)[1]


def add_version(parser):
    """The option --version of a parser."""
    parser.add_argument("--version", action="version", version=f"{parser.prog} {version()}")
