"""The rules of UCI for an engine, line by line, as a strict client applies them.

A Judge is told every line in its turn: `sent` what the client said, `said` what the engine said. It
raises Fault at the first line of the engine that UCI does not allow in that place.
"""

import dataclasses
import re

from arbiter import Position

from option_lines import read_option

LONGEST_LINE = 4000

COUNTERS = frozenset(
    "depth seldepth time nodes nps hashfull tbhits sbhits cpuload currmovenumber multipv".split()
)
INFO_FIELDS = COUNTERS | {"score", "currmove", "pv", "string"}


class Fault(Exception):
    """The engine did what it must not, or left out what it must do."""


@dataclasses.dataclass(frozen=True)
class Habits:
    """What an engine is forgiven."""

    greets: bool = False  # says who it is before it is asked
    blank_lines: bool = False
    complains: tuple = ()  # beginnings of what it says of lines that it does not know
    passes_over_searchmoves: bool = False  # answers with the best of all moves
    strict: bool = True  # when not, only the answers that a client waits for are looked at


def is_number(word, sign=""):
    return re.fullmatch(sign + r"\d+", word) is not None


def read_info(line):
    """The fields of an `info` line: name to list of words."""
    words = line.split()[1:]
    fields = {}
    while words:
        name = words.pop(0)
        if name not in INFO_FIELDS or name in fields:
            raise Fault(f"{name} has no place in: {line}")
        if name in ("pv", "string"):
            fields[name], words = words, []
        elif name == "score":
            length = 3 if words[2:3] and words[2] in ("lowerbound", "upperbound") else 2
            fields[name], words = words[:length], words[length:]
        else:
            fields[name], words = words[:1], words[1:]
    for name, value in fields.items():
        if name in COUNTERS and not (value and is_number(value[0])):
            raise Fault(f"{name} is no number in: {line}")
        if name == "pv" and not value:
            raise Fault(f"an empty pv: {line}")
    score = fields.get("score")
    if score is not None and not (
        len(score) >= 2 and score[0] in ("cp", "mate") and is_number(score[1], "-?")
    ):
        raise Fault(f"a score that cannot be read: {line}")
    if not fields:
        raise Fault("an info that tells nothing")
    return fields


@dataclasses.dataclass
class Search:
    """One `go`, until its bestmove."""

    position: Position
    go: str
    may_end: bool  # false while an answer has to be kept back
    among: frozenset | None = None  # searchmoves
    infos: list = dataclasses.field(default_factory=list)
    bestmove: str | None = None  # "(none)" where there is no move
    ponder: str | None = None

    def numbers(self, name):
        return [int(info[name][0]) for info in self.infos if name in info]

    def lines(self):
        return [info["pv"] for info in self.infos if "pv" in info]

    def scores(self):
        return [info["score"] for info in self.infos if "score" in info]


class Judge:
    def __init__(self, arbiter, habits=Habits()):
        self.arbiter = arbiter
        self.habits = habits
        self.options = {}
        self.names = {}
        self.position = Position()
        self.search = None  # the one that runs
        self.last = None  # the one that has ended
        self.asked_uci = 0  # how often an answer is due
        self.asked_ready = 0
        self.has_introduced_itself = False
        self.leaving = False

    # --- the client ---

    def sent(self, line):
        words = line.split()
        command = words[0] if words else ""
        if command == "uci":
            self.asked_uci += 1
        elif command == "isready":
            self.asked_ready += 1
        elif command == "position":
            self.position = Position.of_words(words[1:])
        elif command == "go":
            assert self.search is None, "the client itself must wait for the bestmove"
            self.search = self._search_of(line, words)
        elif command in ("stop", "ponderhit") and self.search:
            if command == "stop" or "infinite" not in self.search.go:
                self.search.may_end = True
        elif command == "quit":
            self.leaving = True

    def _search_of(self, line, words):
        among = None
        if "searchmoves" in words and not self.habits.passes_over_searchmoves:
            rest = words[words.index("searchmoves") + 1 :]
            legal = self.arbiter.legal(self.position)
            among = frozenset(word for word in rest if word in legal)
        keeps_back = "infinite" in words or "ponder" in words
        return Search(self.position, line, not keeps_back, among)

    # --- the engine ---

    def said(self, line):
        if self.leaving:
            return  # nobody listens any more
        if not self.habits.strict:
            return self._only_answers(line)
        if len(line) > LONGEST_LINE:
            raise Fault(f"a line of {len(line)} characters")
        if not re.fullmatch(r"[ -~]*", line):
            raise Fault(f"a line with odd characters: {line!r}")
        if not line.strip():
            if self.habits.blank_lines:
                return
            raise Fault("a blank line")
        if line.startswith(self.habits.complains):
            return
        answer = ANSWERS.get(line.split()[0])
        if answer is not None:
            answer(self, line)
        elif not self.habits.greets or self.names:
            raise Fault(f"a stray line: {line}")

    def _only_answers(self, line):
        command = (line.split() or [""])[0]
        if command in ("uciok", "readyok") or (command == "bestmove" and self.search):
            ANSWERS[command](self, line)
        elif command == "option":
            name = re.match(r"option name (.*?) type", line)
            if name:
                self.options[name[1]] = line

    def _in_introduction(self, line):
        if not self.asked_uci:
            raise Fault(f"nobody has asked for: {line}")

    def _id(self, line):
        self._in_introduction(line)
        match = re.fullmatch(r"id (name|author) (\S.*)", line)
        if not match:
            raise Fault(f"not an id: {line}")
        self.names[match[1]] = match[2]

    def _option(self, line):
        self._in_introduction(line)
        try:
            option = read_option(line)
        except ValueError as error:
            raise Fault(error) from None
        if option.name.lower() in map(str.lower, self.options) and not self.has_introduced_itself:
            raise Fault(f"the option {option.name} is offered twice")
        self.options[option.name] = option

    def _uciok(self, line):
        self._in_introduction(line)
        if line != "uciok":
            raise Fault(f"not an uciok: {line}")
        if self.habits.strict and set(self.names) != {"name", "author"}:
            raise Fault("uciok without a name and an author")
        self.asked_uci -= 1
        self.has_introduced_itself = True

    def _readyok(self, line):
        if not self.asked_ready or line != "readyok":
            raise Fault(f"nobody has asked for: {line}")
        self.asked_ready -= 1

    def _info(self, line):
        fields = read_info(line)
        if not self.has_introduced_itself and "string" not in fields:
            raise Fault(f"nobody has asked for: {line}")
        if self.search is None:
            if set(fields) != {"string"}:
                raise Fault(f"nothing is being searched: {line}")
            return
        illegal = self.arbiter.first_illegal(self.search.position, fields.get("pv", ()))
        if illegal:
            raise Fault(f"{illegal} is not legal in: {line}")
        current = fields.get("currmove")
        if current and not self.arbiter.is_legal(self.search.position, current[0]):
            raise Fault(f"{current[0]} is not legal in: {line}")
        if self.search.infos and "time" in fields:
            times = self.search.numbers("time")
            if times and int(fields["time"][0]) < times[-1]:
                raise Fault(f"time runs backwards: {line}")
        self.search.infos.append(fields)

    def _bestmove(self, line):
        search = self.search
        if search is None:
            raise Fault(f"nobody has asked for: {line}")
        if not search.may_end:
            raise Fault(f"{line}, before `{search.go}` may end")
        match = re.fullmatch(r"bestmove (\(none\)|\w+)(?: ponder (\w+))?", line)
        if not match and self.habits.strict:
            raise Fault(f"not a bestmove: {line}")
        move, ponder = match.groups() if match else (line.split() + [""])[1:2] + [None]
        if move == "(none)":
            if self.arbiter.legal(search.position):
                raise Fault("(none), and there are legal moves")
        elif not self.arbiter.is_legal(search.position, move):
            raise Fault(f"{move} is not legal")
        elif search.among and move not in search.among:
            raise Fault(f"{move} is not among the moves to search")
        if ponder and not self.arbiter.is_legal(search.position.after(move), ponder):
            raise Fault(f"{ponder} is not legal after {move}")
        search.bestmove, search.ponder = move, ponder
        self.search, self.last = None, search


ANSWERS = {
    "id": Judge._id,
    "option": Judge._option,
    "uciok": Judge._uciok,
    "readyok": Judge._readyok,
    "info": Judge._info,
    "bestmove": Judge._bestmove,
}
