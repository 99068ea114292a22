#!/usr/bin/env python3
"""Holds the character maps against the entities of HTML and the code pages, as Python knows them.

usage: charactermaps_test.py RESOURCES
"""

import html
import pathlib
import re
import sys

RESOURCES = pathlib.Path(sys.argv[1])


def check(name, entries, code_page):
    """Each entry is the character of its byte; 0 stands for a byte without one."""
    assert len(entries) == 128, f"{name} has {len(entries)} entries"
    for byte, entry in enumerate(entries, 128):
        try:
            character = bytes([byte]).decode(code_page)
        except UnicodeDecodeError:
            character = "0"
        assert html.unescape(entry) == character, f"{name}: {byte} is {entry}"


for language in ("1031", "2057"):
    script = (RESOURCES / language / "kivara.rc").read_text(encoding="utf-8")
    check(language, re.search(r'^  11764 "(.*)"$', script, re.M).group(1).split(" "), "cp1252")
lines = (RESOURCES / "charmaps" / "central-european.map").read_text().splitlines()
items = [line.partition("//")[0].strip() for line in lines]
items = [item for item in items if item]
assert items[:2] == ["MAP128", "CentralEuropean"], items[:2]
check("central-european.map", items[2:], "cp1250")
