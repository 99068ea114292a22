#!/usr/bin/env python3
"""Writes what comes from the list of options: the getters in the public header, and the table of the page.

usage: options.py ROOT

`./dev format` calls this, and lays the header out afterwards. A getter with a rule of its own is declared by hand; the others are
written after the one before them in the list.
"""

import pathlib
import re
import sys
from dataclasses import dataclass

LIST = "kivara/frame/cmdline_options.inc"
HEADER = "kivara/include/acmdline.hpp"
PAGE = "docs/command-line.md"
HEAD = "| option | getter | meaning |\n|---|---|---|\n"
TEXT = r'"(?:[^"\\]|\\.)*"'
ROW = re.compile(rf"^KIV_(\w+)\(((?:{TEXT}|[^\"()])*)\)$", re.M)
GETTER = re.compile(r"^  [\w:& ]* (\w+)\(.*\)(?: const)?;")
TYPES = {"FLAG": "static bool", "FLAG_SWITCHED_OFF": "static bool", "TEXT": "SV::String", "NUMBER": "int"}
REMARKS = {"on": ", or no GUI", "off": "; always false without a GUI"}


@dataclass
class Option:
    kind: str
    name: str
    getter: str
    without_gui: str
    meaning: str

    @property
    def is_flag(self):
        return "FLAG" in self.kind

    @property
    def declaration(self):
        """The line of the header; none for what is declared by hand or has no getter."""
        if self.kind not in TYPES:
            return None
        switched_off = ": accepted, but switched off: always false" if self.kind == "FLAG_SWITCHED_OFF" else ""
        const = "" if self.is_flag else " const"
        return f'  {TYPES[self.kind]} {self.getter}(){const}; ///< "{self.name}"{switched_off}{REMARKS.get(self.without_gui, "")}'

    @property
    def table_line(self):
        getter = f"`{self.getter}`" if self.getter else "none: `isFlag`" if self.is_flag else "none: `getValue`"
        forced = f"; always {self.without_gui} without a GUI" if self.without_gui in REMARKS else ""
        return f"| `-{self.name}{'' if self.is_flag else 'VALUE'}` | {getter} | {self.meaning}{forced} |"


def read_list(text):
    """The rows in their order. The texts of a row are its name and its meaning, the words between them the rest."""
    for kind, inside in ROW.findall(text):
        words = re.sub(TEXT, '"', inside).split('"')
        between = [word.strip() for word in words[1].split(",") if word.strip()]
        name, *meaning = (each[1:-1].replace(r"\"", "\"") for each in re.findall(TEXT, inside))
        getter = between[0] if between else ""
        yield Option(kind, name, getter, between[1] if len(between) > 1 else "", "".join(meaning))


def getter_of(line):
    match = GETTER.match(line)
    return match.group(1) if match else None


def with_declarations(header, options):
    """The header with a declaration for each row. Those of rows that have gone, which the remark after them shows, go too."""
    known = {option.getter for option in options}
    lines = [line for line in header.split("\n") if '; ///< "' not in " ".join(line.split()) or getter_of(line) in known]
    for number, option in enumerate(options):
        if option.declaration is None:
            continue
        place = line_of(option, lines)
        if place is None:
            lines.insert(place_for(number, options, lines), option.declaration)
        elif not " ".join(lines[place].split()).startswith(option.declaration.strip()):  # a remark may say more
            lines[place] = option.declaration
    return "\n".join(lines)


def line_of(option, lines):
    return next((i for i, line in enumerate(lines) if option.getter and getter_of(line) == option.getter), None)


def place_for(number, options, lines):
    """After the getter of the same kind that comes before it in the list; before the next one where it is the first."""
    for other in reversed(options[:number]):
        if other.is_flag == options[number].is_flag and line_of(other, lines) is not None:
            return line_of(other, lines) + 1
    return next(line_of(other, lines) for other in options[number:]
                if other.is_flag == options[number].is_flag and line_of(other, lines) is not None)


def with_table(page, options):
    before, rest = page.split(HEAD)
    return before + HEAD + "".join(option.table_line + "\n" for option in options) + rest[rest.index("\n\n") + 1:]


def write(path, text):
    """Leaves a file alone that is so already: what includes it need not be built again."""
    if path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def main():
    root = pathlib.Path(sys.argv[1])
    options = list(read_list((root / LIST).read_text(encoding="utf-8")))
    write(root / HEADER, with_declarations((root / HEADER).read_text(encoding="utf-8"), options))
    write(root / PAGE, with_table((root / PAGE).read_text(encoding="utf-8"), options))


if __name__ == "__main__":
    main()
