#!/usr/bin/env python3
"""Holds the includes of kivara/ against the order of its rooms.

usage: layers.py ROOT

The order and the arrows against it are read from docs/layers.md. Prints each line that breaks the order, and each arrow of the page
that no line needs or that is there although the page says "to come"; exits with 1 if there is any.
"""

import pathlib
import re
import sys

PAGE = "docs/layers.md"
INCLUDE = re.compile(r'#include "([^"]+)"')


def read_page(text):
    """The rooms from the highest to the lowest, and the arrows: pairs of room and header, each with whether it is to come."""
    order = re.search(r"```\n(.*?)```", text, re.S)
    rooms = [line.split()[0] for line in order.group(1).splitlines()] if order else []
    rows = re.findall(r"^\| (\w+) \| `([\w.]+)` \| (.*) \|$", text, re.M)
    arrows = {(room, header): why.endswith("(to come)") for room, header, why in rows}
    return rooms, arrows


def room_of_headers(library, rooms):
    """Public headers belong to the room that has a source of their name, others to the room that they lie in."""
    homes = {}
    for room in rooms:
        for source in sorted((library / room).rglob("*.cpp")):
            homes[source.stem + ".hpp"] = room
    return homes


def included_room(name, rooms, homes):
    """The room of what an #include names; none for what does not belong to a room."""
    room, folder, _ = name.partition("/")
    if room in rooms and folder:
        return room
    return homes.get(room) if not folder else None


def sources(library, rooms, homes):
    """All sources with their rooms, the public headers among them."""
    for room in rooms:
        for path in sorted((library / room).rglob("*.?pp")):
            yield path, room
    for path in sorted((library / "include").glob("*.hpp")):
        if path.name in homes:
            yield path, homes[path.name]


def check(root):
    """The lines to print, empty when all is in order."""
    library = root / "kivara"
    rooms, arrows = read_page((root / PAGE).read_text())
    found = [f"{PAGE}: names no room '{path.name}'" for path in sorted(library.iterdir())
             if path.is_dir() and path.name not in rooms and path.name != "include"]
    homes = room_of_headers(library, rooms)
    needed = set()
    for path, room in sources(library, rooms, homes):
        for number, line in enumerate(path.read_text().splitlines(), 1):
            match = INCLUDE.match(line)
            other = included_room(match.group(1), rooms, homes) if match else None
            if other is None or rooms.index(other) >= rooms.index(room):
                continue
            header = match.group(1).rpartition("/")[2]
            needed.add((room, header))
            if (room, header) not in arrows:
                found.append(f"{path.relative_to(root)}:{number}: {room} may not use {header}, which is above it in {other}")
    for (room, header), to_come in sorted(arrows.items()):
        if to_come and (room, header) in needed:
            found.append(f"{PAGE}: {room} uses {header} by now, which is said to come")
        elif not to_come and (room, header) not in needed:
            found.append(f"{PAGE}: no line of {room} needs {header} any more")
    return found


def main():
    found = check(pathlib.Path(sys.argv[1]))
    print("\n".join(found), end="\n" if found else "")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
