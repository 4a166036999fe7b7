"""The version stands in one place, and every program tells it and its use."""

import os
import re
import shutil

import pytest
from conftest import run


@pytest.fixture(scope="module")
def version(root):
    """The newest of the changes, which is told by hand."""
    changes = (root / "CHANGELOG.md").read_text(encoding="ascii")
    return re.search(r"^## (\S+)", changes, re.MULTILINE)[1]


@pytest.fixture(scope="module")
def programs(root, build, companion):
    built = ["tools/korvu-bench", "tools/korvu-tables", "tests/korvu-referee"]
    scripts = ["check-package", "install-deps", "lint", "measure", "play-installed"]
    of_the_tests = ["fuzz/briefly", "games/match.py", "clients/duel.py", "soak/soak.py"]
    all_of_them = [build / name for name in built]
    all_of_them += [root / "tools" / name for name in scripts]
    all_of_them += [root / "tests" / name for name in of_the_tests]
    return all_of_them + ([companion] if companion else [])


def test_no_script_was_forgotten(root, programs):
    scripts = {file for file in (root / "tools").iterdir() if os.access(file, os.X_OK)}
    files = {file for file in scripts if file.is_file()}
    assert files - set(programs) == {root / "tools" / "about"}


def test_it_is_the_builds_version(root, version):
    project = (root / "CMakeLists.txt").read_text(encoding="ascii")
    assert re.findall(r"^project\(korvu VERSION (\S+)", project, re.MULTILINE) == [version]


def test_nobody_else_writes_it_down(root, version):
    built_from = [root / "CMakeLists.txt", root / "Makefile", root / "CMakePresets.json"]
    for folder in ("tools", "packaging", "companion", "contrib"):
        inside = (root / folder).rglob("*")
        built_from += (f for f in inside if f.is_file() and "__pycache__" not in f.parts)
    holders = {
        file.relative_to(root).as_posix()
        for file in built_from
        if re.search(rf"(?<![\d.]){re.escape(version)}(?![\d.])", file.read_text(encoding="utf-8"))
    }
    assert holders == {"CMakeLists.txt"}


def test_programs_tell_their_version(programs, version):
    for program in programs:
        told = run(program, "--version")
        assert (told.returncode, told.stdout) == (0, f"{program.name} {version}\n")


def test_programs_tell_their_use(programs):
    for program in programs:
        told = run(program, "--help")
        assert told.returncode == 0
        assert told.stdout.lower().startswith("usage: ")
        assert program.name in told.stdout.splitlines()[0]


def test_make_hands_the_version_on(root, version):
    would_run = run("make", "-n", "-C", root, "EXE=/nowhere/korvu", "bench").stdout
    assert f"-DKORVU_VERSION='\"{version}\"'" in would_run


def test_make_builds_the_companion_beside_the_engine(root):
    would_run = run("make", "-n", "-C", root, "EXE=/nowhere/korvu", "companion").stdout
    made = re.findall(r" -o (/nowhere/korvu(?:-uci)?) ", would_run)
    assert made == ["/nowhere/korvu", "/nowhere/korvu-uci"]


def test_an_unknown_table_is_refused(build):
    refused = run(build / "tools" / "korvu-tables", "nosuch")
    assert (refused.returncode, refused.stdout) == (1, "")
    assert "nosuch" in refused.stderr


@pytest.mark.parametrize("arguments", [["0"], ["x"], ["1", "0"]])
def test_a_bench_of_nothing_is_refused(build, arguments):
    refused = run(build / "tools" / "korvu-bench", *arguments)
    assert (refused.returncode, refused.stdout) == (1, "")
    assert refused.stderr.startswith("usage: ")


@pytest.fixture
def alone(root, tmp_path):
    """The scripts in a folder where they can do no harm, with a package made earlier."""
    (tmp_path / "tools").mkdir()
    for name in ("about", "check-package", "install-deps", "lint", "play-installed"):
        shutil.copy(root / "tools" / name, tmp_path / "tools")
    (tmp_path / "build" / "package").mkdir(parents=True)
    (tmp_path / "build" / "package" / "korvu.deb").touch()
    return tmp_path


@pytest.mark.parametrize(
    "command",
    [
        ["check-package", "--nosuch"],
        ["check-package", "--client", "--nosuch"],
        ["check-package", "-DKORVU_WERROR=ON", "--client"],
        ["install-deps", "--nosuch"],
        ["install-deps", "nosuch"],
        ["lint", "--nosuch"],
        ["play-installed"],
    ],
)
def test_scripts_do_nothing_when_they_are_called_wrongly(alone, command):
    refused = run(alone / "tools" / command[0], *command[1:])
    assert (refused.returncode, refused.stdout) == (2, "")
    assert f"usage: {command[0]}" in refused.stderr
    assert (alone / "build" / "package" / "korvu.deb").exists()
