"""The `option` lines of a reply to `uci`."""

import dataclasses
import re
import subprocess


@dataclasses.dataclass
class Option:
    name: str
    type: str
    default: str | None = None
    min: int | None = None
    max: int | None = None
    var: list = dataclasses.field(default_factory=list)

    def allows(self, value):
        """Whether it can be set to this, by a text or what a configuration file makes of it."""
        text = str(value).lower() if isinstance(value, bool) else str(value)
        if self.type == "check":
            return text in ("true", "false")
        if self.type == "spin":
            return re.fullmatch(r"-?\d+", text) is not None and self.min <= int(text) <= self.max
        return self.type == "combo" and text in self.var


def read_option(line):
    """An `option` line, which must be whole and have a default that it allows itself. Otherwise
    ValueError."""
    words = re.split(r"\s(name|type|default|min|max|var)(?=\s|$)", line)
    if words[0] != "option" or words[1::2][:2] != ["name", "type"]:
        raise ValueError(f"not an option: {line}")
    option = Option(words[2].strip(), words[4].strip())
    for key, value in zip(words[5::2], (word.strip() for word in words[6::2])):
        if key == "var":
            option.var.append(value)
        elif key in ("min", "max"):
            setattr(option, key, int(value))
        else:
            setattr(option, key, value)
    allowed = {
        "check": lambda: option.default in ("true", "false"),
        "spin": lambda: option.min <= int(option.default) <= option.max,
        "combo": lambda: option.default in option.var and len(set(option.var)) == len(option.var),
        "button": lambda: option.default is None,
        "string": lambda: option.default is not None,
    }
    try:
        sound = option.type in allowed and allowed[option.type]()
    except (TypeError, ValueError):
        sound = False
    if not sound or not option.name:
        raise ValueError(f"an option that contradicts itself: {line}")
    return option


def options_of(program):
    """The options that a program offers, by name."""
    answer = subprocess.run(
        [program], input="uci\nquit\n", capture_output=True, text=True, timeout=60, check=True
    ).stdout
    lines = [line for line in answer.splitlines() if line.startswith("option ")]
    return {option.name: option for option in map(read_option, lines)}
