"""The entries for interfaces and frameworks: they can be read, and name nothing that is not there."""

import configparser
import json
import os
import re
import shutil
import subprocess

import pytest
import yaml
from conftest import plays_as_black, run

from option_lines import options_of, read_option

PROGRAM = "korvu-uci"


@pytest.fixture(scope="module")
def options(engine, companion):
    """What can be set: the companion's options, or in a build without it the engine's."""
    offered = options_of(companion or engine)
    assert len(offered) >= 32
    return offered


@pytest.fixture(scope="module")
def contrib(root):
    return root / "contrib"


def test_the_judge_of_settings():
    check = read_option("option name C type check default true")
    spin = read_option("option name S type spin default 3 min 1 max 9")
    combo = read_option("option name O type combo default b var a var b")
    button = read_option("option name B type button")
    assert check.allows(False) and check.allows("true") and not check.allows("maybe")
    assert spin.allows("9") and spin.allows(1) and not spin.allows(10) and not spin.allows("x")
    assert combo.allows("a") and combo.allows("b") and not combo.allows("var")
    assert not button.allows("true")


def test_cutechess(contrib, options):
    engines = json.loads((contrib / "cutechess" / "engines.json").read_text(encoding="ascii"))
    assert len({engine["name"] for engine in engines}) == len(engines) == 2
    for engine in engines:
        assert (engine["command"], engine["protocol"]) == (PROGRAM, "uci")
        for option in engine.get("options", []):
            offered = options[option["name"]]
            assert offered.type == option["type"]
            assert offered.default == str(option["default"]).lower()
            assert offered.allows(option["value"])


def test_lichess_bot(contrib, options):
    config = yaml.safe_load((contrib / "lichess-bot" / "config.yml").read_text(encoding="ascii"))
    # These the bot insists on.
    for name, kind in (("token", str), ("url", str), ("engine", dict), ("challenge", dict)):
        assert isinstance(config[name], kind)
    assert config["engine"]["name"] == PROGRAM and config["engine"]["protocol"] == "uci"
    assert config["challenge"]["variants"] == ["standard"]
    chosen = config["engine"]["uci_options"]
    assert chosen and all(options[name].allows(value) for name, value in chosen.items())


def test_the_guide_names_options_that_exist(root, options, companion):
    guide = (root / "docs" / "guide.md").read_text(encoding="ascii")
    of_korvu = re.findall(r"cmd=korvu-uci (?:name=\w+ )?option\.(\w+)=(\w+)", guide)
    assert of_korvu == [("OwnBook", "false")] * 2
    assert not companion or options["OwnBook"].allows("false")
    told = set(re.findall(r"`(\w+)` makes it", guide)) | set(re.findall(r'"(Own \w+)"', guide))
    assert told == {"Deep", "Confidence", "Own book"} and told <= options.keys()


def polyglot_settings(contrib):
    reader = configparser.ConfigParser(inline_comment_prefixes=None, comment_prefixes=(";", "#"))
    reader.optionxform = str
    reader.read(contrib / "polyglot" / "korvu.ini", encoding="ascii")
    return reader


def test_polyglot_sets_what_there_is(contrib, options):
    chosen = dict(polyglot_settings(contrib)["Engine"])
    assert chosen and all(options[name].allows(value) for name, value in chosen.items())


def test_polyglot_plays_with_it(contrib, tmp_path, engine, companion):
    """A game's first moves by the real adapter, which finds the program on the path."""
    os.symlink(companion or engine, tmp_path / PROGRAM)
    path = os.pathsep.join([str(tmp_path), os.environ["PATH"], "/usr/games"])
    adapter = shutil.which("polyglot", path=path)
    with subprocess.Popen(
        [adapter, contrib / "polyglot" / "korvu.ini"],
        stdin=subprocess.PIPE,
        stdout=subprocess.PIPE,
        text=True,
        bufsize=1,
        cwd=tmp_path,
        env={**os.environ, "PATH": path, "HOME": str(tmp_path)},
    ) as process:
        said = []

        def ask(lines, awaited):
            process.stdin.write(lines)
            for line in process.stdout:
                said.append(line)
                if found := re.search(awaited, line):
                    return found
            pytest.fail("polyglot left:\n" + "".join(said))

        ask("xboard\nprotover 2\n", r"^feature .*\bdone=1|^feature done=1")
        assert any('myname="Korvu"' in line for line in said)
        first = ask("new\nlevel 40 1 0\ntime 1000\notim 1000\nusermove e2e4\n", r"^move (\w+)")
        assert re.fullmatch(r"[a-h][78][a-h][5-7]|[bg]8[acfh]6", first[1]), "Black answers 1. e4"
        process.stdin.write("quit\n")


@pytest.fixture(scope="module")
def openbench(contrib):
    return json.loads((contrib / "openbench" / "Korvu.json").read_text(encoding="ascii"))


def test_places_that_are_still_to_be_filled_in_lead_nowhere(openbench, root):
    """By RFC 2606 nobody has this domain."""
    maintainer = re.search(r"<(\S+)>\" CACHE", (root / "packaging/CMakeLists.txt").read_text())[1]
    assert maintainer.partition("@")[2] == "example.org"
    assert openbench["source"].split("/")[:3] == ["https:", "", "example.org"]


def test_openbench(openbench, root, companion):
    presets = {"test_presets", "tune_presets", "datagen_presets"}
    assert openbench.keys() == {"private", "nps", "source", "build", *presets}
    assert all("default" in openbench[kind] for kind in presets)
    assert set(openbench["build"]) == {"path", "compilers", "cpuflags", "systems"}
    assert (root / openbench["build"]["path"].strip("/") / "Makefile").exists()
    offered = options_of(companion) if companion else {}
    for preset in openbench["test_presets"].values():
        for setting in preset.get("both_options", "").split():
            name, value = setting.split("=")
            assert not companion or offered[name].allows(value)


@pytest.fixture(scope="module")
def all_in_one(root, openbench, build, engine, companion, tmp_path_factory):
    """The program that OpenBench's workers make, of the programs built here."""
    if not companion:
        pytest.skip("built without the companion")
    folder = tmp_path_factory.mktemp("parts")
    for part in (engine, companion, build / "tools" / "korvu-bench"):
        os.symlink(part, folder / part.name)
    place = root / openbench["build"]["path"].strip("/")
    made = run("make", "-C", place, f"EXE={folder / 'one'}", f"PARTS={folder}")
    assert made.returncode == 0, made.stderr
    for part in (engine, companion, build / "tools" / "korvu-bench"):
        (folder / part.name).unlink()
    return folder / "one"


def test_openbench_plays_with_its_program(all_in_one):
    assert plays_as_black(all_in_one)


def test_openbench_finds_the_bench_in_it(all_in_one):
    """The first of its positions is enough; the whole takes half a minute."""
    with subprocess.Popen([all_in_one, "bench"], stdout=subprocess.PIPE, text=True) as process:
        first = process.stdout.readline()
        process.kill()
    assert re.fullmatch(r"\d+\t(startpos|fen ).*\n", first)
