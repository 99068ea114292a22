"""Puts the C++ blocks of a page into a frame that has what they take for granted.

blocks.py PAGE FRAME SOURCE: a line "//[[N]]" of the frame is replaced by the page's Nth block. Each block has one place.
"""

import re
import sys
from pathlib import Path

sys.dont_write_bytecode = True
from page import blocks  # noqa: E402 (the setting has to come first)


def main():
    page, frame, source = (Path(argument) for argument in sys.argv[1:])
    rest = dict(enumerate((block for block in blocks(page) if block.language == "cpp"), 1))
    lines = []
    for number, line in enumerate(frame.read_text(encoding="utf-8").splitlines(), 1):
        if place := re.fullmatch(r"\s*//\[\[(\d+)\]\]", line):
            if int(place[1]) not in rest:
                sys.exit(f"{frame}:{number}: {page} has no such block, or it was used above")
            block = rest.pop(int(place[1]))
            lines += [f'#line {block.line} "{page.as_posix()}"', block.text.rstrip("\n"), f'#line {number + 1} "{frame.as_posix()}"']
        else:
            lines.append(line)
    for block in rest.values():
        print(f"{page}:{block.line}: error: this block has no place in {frame}", file=sys.stderr)
    if rest:
        sys.exit(1)
    source.write_text("\n".join(lines) + "\n", encoding="utf-8")


main()
