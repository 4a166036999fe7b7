"""What can be checked of a document by itself: its links, and the names of code it uses."""

import re

FENCE = re.compile(r"^```.*?^```[^\n]*$", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ (.+?)\s*$", re.MULTILINE)
CODE = re.compile(r"(?<!`)`([^`\n]+)`(?!`)")
NAME = re.compile(r"[A-Za-z_]\w*")
CAMEL = re.compile(r"[a-z][A-Z]")


def prose(text):
    """The text without its fenced blocks."""
    return FENCE.sub("", text)


def overlong(text):
    """The lines that run over a hundred columns. Rows of tables cannot be broken, and fenced lines
    mean what they are."""
    return [line for line in prose(text).splitlines() if len(line) > 100 and line[0] != "|"]


def anchors(text):
    """The names that headings can be linked by."""
    names = set()
    for heading in HEADING.findall(prose(text)):
        plain = re.sub(r"[^\w\- ]", "", heading.lower())
        names.add(plain.replace(" ", "-"))
    return names


def broken_links(document, text):
    """The links of the document at path `document` that lead nowhere. Addresses of the web are
    left alone."""
    broken = []
    for target in LINK.findall(prose(text)):
        if re.match(r"[a-z]+:", target):
            continue
        path, _, anchor = target.partition("#")
        file = (document.parent / path).resolve() if path else document
        if not file.exists():
            broken.append(target)
        elif anchor:
            there = text if file == document else file.read_text(encoding="utf-8")
            if anchor not in anchors(there):
                broken.append(target)
    return broken


def code_names(text):
    """The names in backticks that claim to be code: every name of a span without blanks, and
    elsewhere those that no plain word looks like. Single letters are variables of the prose."""
    names = set()
    for span in CODE.findall(prose(text)):
        if "/" in span or span.startswith("-"):
            continue
        for name in NAME.findall(span):
            looks_like_code = "_" in name or CAMEL.search(name)
            if len(name) > 1 and (" " not in span or looks_like_code):
                names.add(name)
    return names


def tables_promised(text):
    """The tables that a document says are printed by the tool and compared."""
    return re.findall(r"^<!-- \S*korvu-tables (\S+) prints this table", text, re.MULTILINE)


def tables_compared(cmake):
    """The pairs of document and table that the build registers for comparison."""
    pairs = set()
    for document, names in re.findall(r"^korvu_table\((\S+) ([^)]+)\)", cmake, re.MULTILINE):
        pairs.update((document, name) for name in names.split())
    return pairs


def paths(text):
    """The files and folders in backticks."""
    return {s for s in CODE.findall(prose(text)) if re.fullmatch(r"[\w.\-]+(/[\w.\-]*)+", s)}


def words_of(folders):
    """Every name that occurs in the sources of these folders."""
    words = set()
    for folder in folders:
        for file in folder.rglob("*"):
            if file.suffix in (".h", ".cpp"):
                words.update(NAME.findall(file.read_text(encoding="utf-8")))
    return words
