"""A stand-in for the engine. It speaks the engine's dialogue, writes every line that it hears to the
file `heard` beside it, "started" first, and takes a step of the file `plan` for each search:

  move M     answers M at once
  late S M   says nothing for S seconds, then answers M
  line L     prints the line L, then takes the next step
  die        ends
  unborn     ends at the `uci` of a new process already

Like the engine it hears nothing in the meantime."""

import pathlib
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
DONE = HERE / "done"


def say(line):
    print(line, flush=True)


def note(line):
    with (HERE / "heard").open("a", encoding="utf-8") as log:
        log.write(line + "\n")


def next_step(only=None):
    """The steps taken are counted in a file, since a new process goes on with the plan. One that is
    not the `only` one is left for later."""
    steps = (HERE / "plan").read_text(encoding="utf-8").splitlines()
    taken = int(DONE.read_text()) if DONE.exists() else 0
    if only and steps[taken : taken + 1] != [only]:
        return None
    DONE.write_text(str(taken + 1))
    return steps[taken]


def search():
    while True:
        word, _, rest = next_step().partition(" ")
        if word == "line":
            say(rest)
            continue
        if word == "die":
            sys.exit()
        if word == "late":
            seconds, rest = rest.split()
            time.sleep(float(seconds))
        say("bestmove " + rest)
        return


def answered_at_once(position):
    return position == "position startpos" or position == "position startpos moves e2e4"


waits_for_go = False
note("started")
for heard in sys.stdin:
    heard = heard.rstrip("\n")
    note(heard)
    if waits_for_go:
        if heard.startswith("go"):
            waits_for_go = False
            search()
    elif heard == "uci":
        if next_step(only="unborn"):
            break
        say("id name Stand-in")
        say("option name Deep type spin default 9 min 0 max 9")
        say("option name Time control type check default true")
        say("option name Own book type check default true")
        say("option name Memory type check default true")
        say("option name Clear memory type button")
        say("uciok")
    elif answered_at_once(heard):
        say("bestmove e2e4" if heard == "position startpos" else "bestmove d7d5")
    elif heard.startswith("position"):
        waits_for_go = True
