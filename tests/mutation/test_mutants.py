"""The table of mutants still fits the engine, and the runner judges as it says."""

import collections
import stat

import pytest
from mutate import (
    ROOMS,
    ROOT,
    STAGES,
    TABLE,
    First,
    Mutant,
    Result,
    Results,
    Workshop,
    faults_of,
    in_order,
    names_of_tests,
    passes,
    report,
    run,
    source_in,
    table,
    transcripts,
    tried_first,
    unexplained,
    unit_tests,
)


@pytest.fixture(scope="module")
def mutants():
    return table(TABLE.read_text(encoding="utf-8"))


# --- The table ---


def test_every_mutant_applies(mutants):
    assert faults_of(mutants, source_in(ROOT)) == []


def test_tests_tried_first_are_known(mutants):
    programs = {s.target for s in STAGES}
    first = tried_first(TABLE.read_text(encoding="utf-8"))
    assert {f.program for f in first.values()} <= programs
    assert set(first) <= {m.file for m in mutants} | {m.name for m in mutants}
    for f in first.values():
        room = ROOT / "tests" / f.program.removesuffix("_tests")
        assert not f.part or (room / f"{f.part}.cpp").is_file(), f


def test_no_room_is_spared(mutants):
    rooms = collections.Counter(m.room for m in mutants)
    assert set(rooms) == set(ROOMS)
    assert min(rooms.values()) >= 10
    assert rooms.total() >= 60


@pytest.mark.parametrize(
    ("row", "fault"),
    [
        ({"old": "gone"}, "occurs 0 times"),
        ({"old": "twice"}, "occurs 2 times"),
        ({"file": "src/root/gone.cpp"}, "occurs 0 times"),
        ({"new": "once"}, "changes nothing"),
        ({"file": "src/attic/here.cpp"}, "no room"),
        ({"breaks": ""}, "does not tell"),
    ],
)
def test_a_row_that_does_not_fit_is_found(row, fault):
    sound = {"name": "m", "file": "src/root/here.cpp", "old": "once", "new": "1", "breaks": "all"}

    def source(file):
        return "" if "gone" in file else "once twice twice"

    assert faults_of([Mutant(**sound)], source) == []
    found = faults_of([Mutant(**{**sound, **row})], source)
    assert len(found) == 1
    assert fault in found[0]


def test_two_rows_of_one_name_are_found():
    m = Mutant("m", "src/root/here.cpp", "once", "1", "all")
    assert faults_of([m, m], lambda file: "once") == ["m: two rows have this name"] * 2


# --- The runner ---


def program(path, text):
    path.write_text("#!/bin/sh\n" + text, encoding="utf-8")
    path.chmod(path.stat().st_mode | stat.S_IXUSR)
    return path


LISTING = """case $1 in
*list_tests) printf 'First.\\n  A\\n  B/0  # GetParam() = 7\\nSecond.\\n  C\\n'; exit ;;
esac
"""


@pytest.fixture
def sound(tmp_path):
    return program(tmp_path / "sound", LISTING)


def test_tests_of_a_program_are_listed(sound):
    assert names_of_tests(sound) == ["First.A", "First.B/0", "Second.C"]


def test_the_first_test_that_fails_is_told(tmp_path, sound):
    broken = program(tmp_path / "broken", "case $1 in *B/0|*C) exit 1 ;; esac\n")
    assert passes(broken, "First.A")
    assert unit_tests(broken, sound) == "First.B/0"
    assert unit_tests(sound, sound) is None


def test_a_test_that_the_sound_program_fails_too_kills_nothing(tmp_path):
    weak = program(tmp_path / "weak", LISTING + "case $1 in *B/0) exit 1 ;; esac\n")
    broken = program(tmp_path / "broken", "case $1 in *B/0|*C) exit 1 ;; esac\n")
    assert unit_tests(broken, weak) == "Second.C"


def test_a_failure_that_does_not_come_back_kills_nothing(tmp_path, sound):
    once = "case $1 in *C) test -e $0.seen || { touch $0.seen; exit 1; } ;; esac\n"
    busy = program(tmp_path / "busy", once)
    assert unit_tests(busy, sound) is None
    assert (tmp_path / "busy.seen").exists()


def transcript_engine(path, answer):
    return program(path, f"cat >/dev/null\necho {answer}\n")


def test_the_first_transcript_that_differs_is_told(tmp_path, monkeypatch):
    folder = tmp_path / "tests/dialogue"
    folder.mkdir(parents=True)
    text = "# one\n> isready\n<~ .*\n\n# two\n> isready\n< readyok\n"
    (folder / "t.txt").write_text(text, encoding="ascii")
    monkeypatch.setattr("mutate.ROOT", tmp_path)
    sound = transcript_engine(tmp_path / "sound", "readyok")
    broken = transcript_engine(tmp_path / "broken", "readynot")
    assert transcripts("t.txt")(broken, sound) == "t.txt: two"
    assert transcripts("t.txt")(broken, broken) is None
    assert transcripts("t.txt")(sound, sound) is None


class Shop(Workshop):
    """A workshop whose builder copies the source: the program is the text itself."""

    def build(self, target):
        text = (self.root / "src/root/here.cpp").read_text(encoding="utf-8")
        self.build_dir.mkdir(parents=True, exist_ok=True)
        program(self.build_dir / target, text)
        return "syntax" not in text and not ("assertion" in text and target != "korvu")


@pytest.fixture
def shop(tmp_path):
    source = tmp_path / "copy" / "src/root/here.cpp"
    source.parent.mkdir(parents=True)
    source.write_text(LISTING + "exit 0\n", encoding="utf-8")
    return Shop(tmp_path / "copy", "plain", 1)


def mutant(new, **more):
    return Mutant("m", "src/root/here.cpp", "exit 0\n", new, "all", **more)


def stage(name="unit", target="unit", first_failure=unit_tests):
    return type(STAGES[0])(name, target, first_failure)


@pytest.mark.parametrize(
    ("new", "fate"),
    [
        ("exit 1\n", ("killed", "First.A")),
        ("case $1 in *C) exit 1 ;; esac\n", ("killed", "Second.C")),
        ("true\n", ("alive", "")),
        ("assertion\n", ("killed", "compiling it")),
        ("syntax\n", ("not compiled", "compiling it")),
    ],
)
def test_the_fate_of_a_mutant(shop, new, fate):
    m = mutant(new)
    before = (shop.root / m.file).read_text(encoding="utf-8")
    results = Results(shop.root / "results.json")
    run(shop, [m], [stage()], results, {})
    r = Results(shop.root / "results.json").of(m)
    assert (r.outcome, r.test) == fate
    assert (shop.root / m.file).read_text(encoding="utf-8") == before


def test_tests_tried_first_need_not_wait_for_their_stage(shop):
    m = mutant("case $1 in *C) exit 1 ;; esac\n")
    results = Results(shop.root / "results.json")
    stages = [stage("early"), stage("late")]
    run(shop, [m], stages, results, {m.file: First("unit", "", "Second.*")})
    assert (results.of(m).by, results.of(m).test, results.of(m).passed) == ("unit", "Second.C", [])


def test_tests_tried_first_may_be_a_part_of_a_program_and_a_mutants_own(shop):
    m = mutant("case $1 in *C) exit 1 ;; esac\n")
    results = Results(shop.root / "results.json")
    first = {m.name: First("unit", "part", "Second.*"), m.file: First("unit", "", "First.*")}
    run(shop, [m], [stage()], results, first)
    assert (results.of(m).by, results.of(m).test) == ("unit", "Second.C")
    assert shop.kept == {"unit-part"}


def test_what_is_tried_first_is_told_by_program_part_and_filter():
    text = '[first]\n"a.h" = "tree_tests/cut_test: Cut.*:X.*"\nname = "root_tests: Y.*"\n'
    assert tried_first(text) == {
        "a.h": First("tree_tests", "cut_test", "Cut.*:X.*"),
        "name": First("root_tests", "", "Y.*"),
    }


def test_sound_programs_are_built_when_they_are_needed_without_the_mutant(shop):
    stages = [stage("early", "first", lambda program, sound: None), stage("late", "second")]
    stages.append(stage("never", "third"))
    m = mutant("case $1 in *C) exit 1 ;; esac\n")
    results = Results(shop.root / "results.json")
    run(shop, [m], stages, results, {})
    assert (results.of(m).by, results.of(m).test) == ("late", "Second.C")
    assert shop.kept == {"first", "second"}


@pytest.fixture
def order():
    def names(file):
        return [s.name for s in in_order(STAGES, Mutant("m", file, "a", "b", "all"))]

    return names


def test_a_rooms_own_tests_come_early_where_they_are_cheap(order):
    assert order("src/root/caps.cpp")[:3] == ["reference", "root_tests", "transcripts"]


def test_the_engine_tells_of_a_header_before_other_rooms_tests_are_compiled(order):
    first = ["reference", "transcripts", "tree_tests", "clock transcripts", "deep reference"]
    assert order("src/tree/try_move.h")[: len(first)] == first


@pytest.mark.parametrize("file", ["src/root/caps.cpp", "src/tree/try_move.h"])
def test_every_stage_has_its_turn_and_the_signature_the_last(order, file):
    assert sorted(order(file)) == sorted(s.name for s in STAGES)
    assert order(file)[-1] == "signature"


def test_a_run_is_taken_up_where_it_ended(shop, tmp_path):
    m = mutant("true\n")
    results = Results(tmp_path / "results.json")
    results.note(m, Result(m.fingerprint, passed=["unit"]))
    (shop.root / m.file).write_text("exit 0\n", encoding="utf-8")
    run(shop, [m], [stage(), stage("again")], results, {})
    assert results.of(m).passed == ["unit", "again"]
    changed = mutant("exit 1\n")
    assert results.of(changed).passed == []


def test_the_copy_lies_outside():
    with pytest.raises(SystemExit):
        Workshop(ROOT / "build" / "mutants", "plain", 1)


@pytest.mark.parametrize(
    ("result", "reason", "wrong"),
    [
        ({"outcome": "killed", "by": "unit"}, "", False),
        ({"outcome": "killed", "by": "unit"}, "because", True),
        ({"outcome": "killed", "by": "signature"}, "", True),
        ({"passed": ["unit"]}, "", True),
        ({"passed": ["unit"]}, "because", False),
        ({"outcome": "not compiled", "by": "unit"}, "because", True),
    ],
)
def test_what_needs_a_test_or_a_reason(tmp_path, result, reason, wrong):
    m = mutant("true\n", survives=reason)
    results = Results(tmp_path / "results.json")
    results.note(m, Result(m.fingerprint, **result))
    assert bool(unexplained([m], results)) == wrong


def test_the_report_counts(tmp_path):
    fates = [
        Result("", "killed", "reference", "d1"),
        Result("", "killed", "signature", "short"),
        Result("", "alive", passed=["reference"]),
        Result("", "not compiled", "reference"),
        Result(""),
    ]
    mutants = [Mutant(str(i), "src/root/here.cpp", "a", "b", "") for i in range(len(fates))]
    results = Results(tmp_path / "results.json")
    for m, r in zip(mutants, fates, strict=True):
        r.fingerprint = m.fingerprint
        results.note(m, r)
    text = report(mutants, results)
    assert "| root | 3 | 1 | 1 | 1 |" in text
    assert "| tree | 0 | 0 | 0 | 0 |" in text
    assert "| all | 3 | 1 | 1 | 1 |" in text
