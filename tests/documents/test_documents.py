"""The documents: their links lead somewhere, and the code they name exists."""

import pathlib

import pytest
from check_documents import (
    LINK,
    broken_links,
    code_names,
    overlong,
    paths,
    prose,
    tables_compared,
    tables_promised,
    words_of,
)

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = sorted((ROOT / "docs").glob("*.md"))
DOCUMENTS = [ROOT / "README.md", ROOT / "CONTRIBUTING.md", ROOT / "CHANGELOG.md", *PAGES]
FOR_PLAYERS = {"guide.md"}  # these name programs and their options, not the code


def by_name(file):
    return file.name


def read(file):
    return file.read_text(encoding="utf-8")


@pytest.fixture(scope="module")
def words():
    return words_of([ROOT / "src", ROOT / "companion"])


@pytest.mark.parametrize("document", DOCUMENTS, ids=by_name)
def test_links_lead_somewhere(document):
    assert broken_links(document, read(document)) == []


@pytest.mark.parametrize("name", ["README.md", "docs/companion.md", "docs/guide.md"])
def test_lines_that_many_read_are_not_too_long(name):
    assert overlong(read(ROOT / name)) == []


def test_a_line_that_is_too_long_is_found():
    long = "x" * 101
    assert overlong(f"{long}\n") == [long]
    assert overlong(f"| {long} |\n```\n{long}\n```\n{long[1:]}\n") == []


@pytest.mark.parametrize("page", [p for p in PAGES if p.name not in FOR_PLAYERS], ids=by_name)
def test_names_of_code_exist(page, words):
    named = code_names(read(page))
    assert named or page.name == "behaviour.md"
    assert sorted(named - words) == []


@pytest.mark.parametrize("document", DOCUMENTS, ids=by_name)
def test_files_exist(document):
    made_by_a_build = "build/"
    named = {path for path in paths(read(document)) if not path.startswith(made_by_a_build)}
    places = (ROOT, ROOT / "src")
    assert sorted(p for p in named if not any((place / p).exists() for place in places)) == []


def test_every_page_is_in_the_index():
    index = read(ROOT / "docs" / "behaviour.md")
    listed = {link.partition("#")[0] for link in LINK.findall(prose(index))}
    assert {page.name for page in PAGES} - {"behaviour.md"} <= listed


def test_every_table_that_promises_it_is_compared():
    promised = {
        (document.relative_to(ROOT).as_posix(), name)
        for document in DOCUMENTS
        for name in tables_promised(read(document))
    }
    assert promised == tables_compared(read(ROOT / "tests" / "CMakeLists.txt"))


# --- The checks themselves ---


def test_a_broken_link_is_found(tmp_path):
    (tmp_path / "there.md").write_text("# A heading, with `code`\n", encoding="utf-8")
    text = (
        "[good](there.md) [good](there.md#a-heading-with-code) [web](https://example.org)\n"
        "[bad](gone.md) [bad](there.md#no-such-heading)\n"
        "```\n[shown](only.md)\n```\n"
    )
    broken = broken_links(tmp_path / "page.md", text)
    assert broken == ["gone.md", "there.md#no-such-heading"]


def test_names_are_told_from_prose():
    text = "`tab2`, `valor<N>()`, `MAXcut[0]`, `go wtime 1`, `a name like_this`, plain_text, `N`"
    assert code_names(text) == {"tab2", "valor", "MAXcut", "like_this"}


def test_an_unknown_name_is_found(tmp_path):
    (tmp_path / "source.h").write_text("inline int known = 0;\n", encoding="utf-8")
    words = words_of([tmp_path])
    assert code_names("`known` and `unknown`") - words == {"unknown"}


def test_promised_and_registered_tables_are_read():
    assert tables_promised("<!-- korvu-tables men prints this table; -->\n") == ["men"]
    assert tables_compared("korvu_table(docs/a.md men\n  hills)\n") == {
        ("docs/a.md", "men"),
        ("docs/a.md", "hills"),
    }


def test_paths_are_told_from_names():
    assert paths("`src/tree/node.h`, `tests/`, `tab2`, `a / b`") == {"src/tree/node.h", "tests/"}
