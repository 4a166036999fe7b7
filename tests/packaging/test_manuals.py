"""The manual pages: without faults of form, and true to the options that the programs print."""

import re

import pytest
from conftest import run

from option_lines import options_of

PAGES = ("korvu", "korvu-uci")


@pytest.fixture(scope="module", params=PAGES)
def page(request, build):
    return build / "packaging" / f"{request.param}.6"


def rendered(page):
    """The page as it is read, on very long lines."""
    shown = run("mandoc", "-T", "ascii", "-O", "width=400", page)
    assert shown.returncode == 0
    return re.sub(".\b", "", shown.stdout)


def faults(page):
    """What mandoc finds, but pages that are not installed here."""
    found = run("mandoc", "-T", "lint", "-W", "style", page).stdout.splitlines()
    return [fault for fault in found if "referenced manual not found" not in fault]


def test_the_form_is_without_fault(page):
    assert faults(page) == []


def test_a_fault_of_form_is_found(page, tmp_path):
    worse = tmp_path / "worse.6"
    worse.write_text(page.read_text(encoding="ascii").replace(".El\n", "", 1), encoding="ascii")
    assert faults(worse) != []


def test_nothing_was_left_to_fill_in(page):
    assert re.findall(r"@\w+@", page.read_text(encoding="ascii")) == []


def test_it_tells_the_version(page, root):
    version = re.search(r"^## (\S+)", (root / "CHANGELOG.md").read_text(encoding="ascii"), re.M)[1]
    assert f"Korvu {version} " in rendered(page).splitlines()[-1]


def settings(option):
    """What a page says of the settings."""
    told = {
        "check": "true, false",
        "spin": f"{option.min} to {option.max}",
        "combo": ", ".join(option.var),
        "button": "button",
    }[option.type]
    if option.default is None:
        return f"(Settings: {told})"
    return f"(Settings: {told}; Default: {option.default})"


def test_the_engines_options(build, engine):
    page = rendered(build / "packaging" / "korvu.6")
    listed = re.findall(r"^     (\S.*?)(?:\n {13}|  +)(\S.*?) (\(Settings: .*\))$", page, re.MULTILINE)
    options = options_of(engine)
    assert [(name, kind) for name, _, kind in listed] == [
        (name, settings(option)) for name, option in options.items()
    ]
    assert len(listed) == 33 and all(help_text for _, help_text, _ in listed)


def test_the_companions_own_options(build, engine, companion):
    if not companion:
        pytest.skip("built without the companion")
    page = (build / "packaging" / "korvu-uci.6").read_text(encoding="ascii")
    of_the_engine, all_of_them = options_of(engine), options_of(companion)
    assert set(of_the_engine) - set(all_of_them) == {"UCI_Chess960"}
    assert set(re.findall(r'^\.It Cm "(.+)"$', page, re.MULTILINE)) == set(all_of_them) - set(
        of_the_engine
    )
