"""The same dialogue twice gives the same answers, apart from times."""

import pathlib
import subprocess

import pytest
from run_dialogue import compared_lines, parse

REFERENCE = pathlib.Path(__file__).parent / "reference"


def answers(engine, lines):
    process = subprocess.run(
        [str(engine)],
        input="".join(line + "\n" for line in lines).encode(),
        capture_output=True,
        timeout=120,
        check=True,
    )
    return list(compared_lines(process.stdout.decode("ascii").split("\n")[:-1], True))


@pytest.mark.parametrize("options", ([], ["Temperament value positional", "Lmr value false"]))
def test_two_processes_agree(engine, options):
    cases = parse((REFERENCE / "d5.txt").read_text(encoding="ascii"))[::40]
    assert len(cases) >= 3
    for case in cases:
        lines = ["setoption name " + option for option in options] + case.sent
        first, second = answers(engine, lines), answers(engine, lines)
        assert len(first) > 36, "identification and a search"
        assert first == second
