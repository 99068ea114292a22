"""Puts the C++ blocks of a page into a frame that has what they take for granted.

blocks.py PAGE FRAME SOURCE: a line "//[[N]]" of the frame is replaced by the page's Nth block. Each block has one place.
"""

import re
import sys
from pathlib import Path


def blocks(page):
    """The C++ blocks, each with the line that it begins in."""
    text = page.read_text(encoding="utf-8")
    found = re.finditer(r"^```cpp\n(.*?)^```$", text, re.DOTALL | re.MULTILINE)
    return [(text.count("\n", 0, block.start(1)) + 1, block.group(1)) for block in found]


def main():
    page, frame, source = (Path(argument) for argument in sys.argv[1:])
    rest = dict(enumerate(blocks(page), 1))
    lines = []
    for number, line in enumerate(frame.read_text(encoding="utf-8").splitlines(), 1):
        if place := re.fullmatch(r"\s*//\[\[(\d+)\]\]", line):
            if int(place[1]) not in rest:
                sys.exit(f"{frame}:{number}: {page} has no such block, or it was used above")
            begin, block = rest.pop(int(place[1]))
            lines += [f'#line {begin} "{page.as_posix()}"', block.rstrip("\n"), f'#line {number + 1} "{frame.as_posix()}"']
        else:
            lines.append(line)
    for begin, _ in rest.values():
        print(f"{page}:{begin}: error: this block has no place in {frame}", file=sys.stderr)
    if rest:
        sys.exit(1)
    source.write_text("\n".join(lines) + "\n", encoding="utf-8")


main()
