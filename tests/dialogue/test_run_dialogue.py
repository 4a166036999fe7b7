"""The transcript runner itself, tried on small programs in the place of the engine."""

import stat
import sys

import pytest
from run_dialogue import Case, Expected, FormatError, agrees, compared_lines, parse, replay


def lines(text):
    return parse("# case\n" + text)[0].expected


@pytest.fixture
def stand_in(tmp_path):
    """A program that runs the given Python statements."""

    def make(body):
        path = tmp_path / "stand_in"
        path.write_text(f"#!{sys.executable}\nimport sys, time\n{body}\n", encoding="ascii")
        path.chmod(path.stat().st_mode | stat.S_IXUSR)
        return path

    return make


def test_cases_are_read_with_blanks_kept():
    first, second = parse("# one\n; why\n> go \n>\n< a  b \n\n# two\n; seconds 3\n; show uci\n")
    assert first == Case("one", 1, ["go ", ""], [Expected("line", "a  b ")])
    assert (second.name, second.line, second.seconds, second.show_uci) == ("two", 7, 3.0, True)


@pytest.mark.parametrize(
    "text", ["> go\n", "# a\nwords\n", "# a\n# b\n", "# a\n\n# a\n", "#a\n", "# a\n<x\n"]
)
def test_what_is_no_transcript_is_refused(text):
    with pytest.raises(FormatError):
        parse(text)


def test_the_clock_and_the_uci_block_are_left_out():
    output = [
        "id name X",
        "option name Y",
        "uciok",
        "readyok",
        "info score cp 1 depth 2 time 345 hashfull 0 pv time 9",
        "info nps 1000",
        "bestmove a1a1 time 3",
    ]
    masked = ["info score cp 1 depth 2 time T hashfull 0 pv time 9", "bestmove a1a1 time 3"]
    assert list(compared_lines(output, False)) == ["readyok", *masked]
    assert list(compared_lines(output, True)) == [*output[:4], *masked]


@pytest.mark.parametrize(
    ("text", "answer", "good"),
    [
        ("< a\n", ["a"], True),
        ("< a\n", ["a "], False),
        ("< a\n", [], False),
        ("< a\n", ["a", "a"], False),
        ("", [], True),
        ("", ["a"], False),
        ("<~ a+\n", ["aaa"], True),
        ("<~ a+\n", ["aaab"], False),
        ("<*\n< z\n", ["z"], True),
        ("<*\n< z\n", ["info 1", "info 2", "z"], True),
        ("<*\n< z\n", ["info 1", "x", "z"], False),
        ("<*\n<~ info 2\n< z\n", ["info 1", "info 2", "z"], True),
        ("<* info [12]\n< z\n", ["info 1", "info 3", "z"], False),
        ("<* info 1\n<* info 2\n", ["info 1", "info 2"], True),
        ("<* info 1\n<* info 2\n", ["info 2", "info 1"], False),
    ],
)
def test_expectations_are_met_or_not(text, answer, good):
    assert agrees(lines(text), answer) is good


def test_a_good_answer_passes(stand_in):
    engine = stand_in("for line in sys.stdin: print('got ' + line.strip())")
    assert replay(engine, Case("c", 1, ["a", "b"], lines("< got a\n< got b\n"))) is None


@pytest.mark.parametrize(
    ("body", "complaint"),
    [
        ("print('other')", "+< other"),
        ("print('a'); sys.exit(3)", "exit code 3"),
        ("print('a'); print('oh', file=sys.stderr)", "standard error: oh"),
        ("sys.stdout.write('a')", "no line ending"),
    ],
)
def test_a_bad_answer_is_told(stand_in, body, complaint):
    assert complaint in replay(stand_in(body), Case("c", 1, [], lines("< a\n")))


def test_a_process_that_does_not_end_is_told(stand_in):
    engine = stand_in("print('a', flush=True); time.sleep(30)")
    fault = replay(engine, Case("c", 1, [], lines("< a\n"), seconds=1.0))
    assert "no end after 1.0 seconds" in fault
    assert "a" in fault.split(":")[-1]
