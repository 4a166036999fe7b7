"""Replays every transcript: data/ and reference/ always, reference_slow/ with --slow."""

import pathlib

import pytest
from run_dialogue import parse, replay

HERE = pathlib.Path(__file__).parent


def transcripts():
    for folder in ("data", "reference", "reference_slow"):
        slow = folder == "reference_slow"
        for file in sorted((HERE / folder).glob("*.txt")):
            for case in parse(file.read_text(encoding="ascii"), file.name):
                if slow:
                    case.seconds = 300.0
                yield pytest.param(
                    case,
                    id=f"{folder}/{file.name}:{case.name}",
                    marks=[pytest.mark.slow] if slow else [],
                )


@pytest.mark.parametrize("case", transcripts())
def test_transcript(engine, patience, case):
    fault = replay(engine, case, patience)
    assert fault is None, f"{case.name}\n{fault}"


def test_no_folder_of_transcripts_is_empty():
    for folder in ("data", "reference", "reference_slow"):
        assert list((HERE / folder).glob("*.txt")), folder
