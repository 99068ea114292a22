"""A page of the documentation as its blocks of code."""

import re
from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True)
class Block:
    line: int  # of the page, where its text begins
    language: str
    text: str  # without the indentation of a list
    lead: str  # the last line of text before it


FENCE = re.compile(r"( *)```(\w*)$")


def blocks(page):
    """The blocks of a page in their order."""
    found, lead, fence, text = [], "", None, []
    for number, line in enumerate(Path(page).read_text(encoding="utf-8").splitlines(), 1):
        if fence is not None and line == fence[1] + "```":
            found.append(Block(number - len(text), fence[2], "".join(part + "\n" for part in text), lead))
            fence, text, lead = None, [], ""
        elif fence is not None:
            text.append(line.removeprefix(fence[1]))
        elif (fence := FENCE.fullmatch(line)) is None and line.strip():
            lead = line.strip()
    return found
