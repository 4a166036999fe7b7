"""What `cmake --install` puts where, and that it runs from there."""

import gzip
import re

import pytest
from conftest import plays_as_black, run

ALWAYS = {
    "games/korvu",
    "share/doc/korvu/changelog.gz",
    "share/doc/korvu/copyright",
    "share/doc/korvu/examples/cutechess/engines.json",
    "share/doc/korvu/examples/lichess-bot/config.yml",
    "share/doc/korvu/examples/openbench/Korvu.json",
    "share/doc/korvu/examples/polyglot/korvu.ini",
    "share/doc/korvu/guide.md",
    "share/games/plugins/uci/korvu.eng",
    "share/man/man6/korvu.6.gz",
}
COMPANION = {"games/korvu-uci", "share/man/man6/korvu-uci.6.gz"}


@pytest.fixture(scope="module")
def installed(build, tmp_path_factory):
    prefix = tmp_path_factory.mktemp("prefix")
    assert run("cmake", "--install", build, "--prefix", prefix).returncode == 0
    return prefix


def test_every_file_in_its_place(installed, companion):
    files = {f.relative_to(installed).as_posix() for f in installed.rglob("*") if f.is_file()}
    assert files == ALWAYS | (COMPANION if companion else set())


def test_the_companion_finds_the_engine_beside_it(installed, companion):
    if not companion:
        pytest.skip("built without the companion")
    assert plays_as_black(installed / "games" / "korvu-uci")


def test_the_engine_plays(installed):
    said = run(installed / "games" / "korvu", input="position startpos moves e2e4\ngo\nquit\n")
    assert re.fullmatch(r"bestmove [a-h][78][a-h][5-7]\s*", said.stdout)


def test_packed_files_open(installed, root):
    changes = gzip.decompress((installed / "share/doc/korvu/changelog.gz").read_bytes())
    assert changes == (root / "CHANGELOG.md").read_bytes()
    page = gzip.decompress((installed / "share/man/man6/korvu.6.gz").read_bytes())
    assert page.startswith(b".Dd ")


def test_the_licence_is_whole(installed, root):
    """Word for word, behind its title."""

    def words(text):
        return [word for word in text.split() if word != "."]

    licence = words((root / "LICENSE").read_text(encoding="ascii"))
    copyright = words((installed / "share/doc/korvu/copyright").read_text(encoding="ascii"))
    assert licence[:2] == ["MIT", "License"]
    terms = licence[licence.index("Permission") :]
    assert copyright[-len(terms) :] == terms
    assert licence[2:4] == ["Copyright", "(c)"]
    holders = licence[4 : licence.index("Permission")]
    where = copyright.index("Copyright:") + 1
    assert copyright[where : where + len(holders)] == holders


def test_xboard_is_told_a_program_that_is_there(installed):
    lines = (installed / "share/games/plugins/uci/korvu.eng").read_text(encoding="ascii").split("\n")
    assert lines[0] == "plugin spec 0.0" and lines[2:] == ["chess", ""]
    assert (installed / "games" / lines[1]).exists()
