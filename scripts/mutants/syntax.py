"""A source as the compiler reads it: its tree, with the place of each part in the text."""

import ctypes

import publicheaders
from publicheaders import Cursor, Location, Range

# Kinds of parts.
VARIABLE = 9
EXPRESSIONS = range(100, 200)
NAME, MEMBER, CALL, THIS = 101, 102, 103, 132
INTEGER, FLOATING, TEXT, CHARACTER = 106, 107, 109, 110
UNARY, BINARY, ASSIGNMENT, CHOICE, LIST, TRUTH = 112, 114, 115, 116, 119, 130
STATEMENTS = range(200, 300)
BLOCK, CASE, DEFAULT, IF, WHILE, DO, FOR = 202, 203, 204, 205, 207, 208, 209
CONTINUE, BREAK, RETURN, RANGE_FOR = 212, 213, 214, 225
MACRO_USE = 502
STATIC_ASSERT = 602

BOOL = 3  # a kind of type
WITH_MACROS = 1


class Type(ctypes.Structure):
    _fields_ = [("kind", ctypes.c_int), ("data", ctypes.c_void_p * 2)]


CALLS = {
    "clang_getRangeStart": (Location, [Range]),
    "clang_getFileLocation": (None, [Location] + [ctypes.c_void_p] * 4),
    "clang_getCursorType": (Type, [Cursor]),
}


class Part:
    """A piece of the tree: what it is, where it stands, and the parts that it is made of."""

    def __init__(self, kind, start, end, is_bool, parts):
        self.kind, self.start, self.end, self.is_bool, self.parts = kind, start, end, is_bool, parts

    def inner(self):
        """The part without the conversions around it that the text does not show."""
        part = self
        while part.kind == EXPRESSIONS[0] and len(part.parts) == 1 and (part.parts[0].start, part.parts[0].end) == (part.start, part.end):
            part = part.parts[0]
        return part


class Source:
    """The text of a file, its tree, and the ranges that macros stand for."""

    def __init__(self, text, parts, macros, faults):
        self.text, self.parts, self.macros, self.faults = text, parts, macros, faults

    def of(self, part):
        return self.text[part.start:part.end]

    def after(self, part):
        """The first character after the part that is neither blank nor comment."""
        return _without_comments(self.text[part.end:part.end + 400]).lstrip()[:1]

    def before(self, part):
        """The text before the part up to the last character that is neither blank nor comment."""
        text = self.text[max(0, part.start - 400):part.start].rstrip()
        while "//" in (line := text[text.rfind("\n") + 1:]):
            text = text[:len(text) - len(line) + line.index("//")].rstrip()
        return text

    def in_macro(self, part):
        return any(start <= part.start < end for start, end in self.macros)


def _without_comments(text):
    while text.lstrip().startswith("//"):
        text = text.partition("\n")[2]
    return text


class Reader(publicheaders.Clang):
    def __init__(self, library):
        super().__init__(library, CALLS)

    def read(self, path, words):
        """The source at the path, compiled with the options."""
        unit = self.translate(path, words, WITH_MACROS)
        with open(path, encoding="utf-8") as file:
            text = file.read()
        self._path, self._offsets = path, _character_offsets(text)
        parts, macros = [], []
        for cursor in self._own(self.lib.clang_getTranslationUnitCursor(unit)):
            part = self._part(cursor)
            if cursor.kind == MACRO_USE:
                macros.append((part.start, part.end))
            elif cursor.kind < MACRO_USE - 1 or cursor.kind > MACRO_USE + 1:
                parts.append(part)
        faults = [fault for fault in self.faults(unit) if fault.startswith(path)]
        self.lib.clang_disposeTranslationUnit(unit)
        # A word that stands for a value is a name like any other; what is handed to a macro may be used in any way.
        return Source(text, parts, [(start, end) for start, end in macros if "(" in text[start:end]], faults)

    def _own(self, cursor):
        """What the cursor is made of, but for what an included file brings."""
        return [child for child in self.children(cursor) if self.place(child)[0] == self._path]

    def _part(self, cursor):
        extent = self.lib.clang_getCursorExtent(cursor)
        is_bool = self.lib.clang_getCursorType(cursor).kind == BOOL
        parts = [self._part(child) for child in self._own(cursor)]
        return Part(cursor.kind, self._offset(self.lib.clang_getRangeStart(extent)), self._offset(self.lib.clang_getRangeEnd(extent)),
                    is_bool, parts)

    def _offset(self, location):
        offset = ctypes.c_uint()
        self.lib.clang_getFileLocation(location, None, None, None, ctypes.byref(offset))
        return self._offsets[min(offset.value, len(self._offsets) - 1)] if self._offsets else offset.value


def _character_offsets(text):
    """For each byte of the file the number of its character; nothing where the two are the same."""
    if text.isascii():
        return None
    offsets = []
    for number, character in enumerate(text):
        offsets += [number] * len(character.encode())
    return offsets + [len(text)]
