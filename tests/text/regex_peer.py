#!/usr/bin/env python3
"""Asks the C library of this machine for matches of random patterns.

usage: regex_peer.py SEED COUNT FILE

Writes a line for each pattern: its bytes in hexadecimal, the flags, 0 or 1 for whether it compiles, then for each text its bytes and
"start,end", or "-" where it does not match. FILE appears when it is complete.

Left out is what POSIX leaves to the implementation: escapes of letters, "+?" and its like, "(?", "{,n}", repetitions of nothing,
empty alternatives, anchors within, and bounds of groups that may be empty.
"""

import ctypes
import os
import random
import sys

LETTERS = "abAB1 -_."
TEXT_LETTERS = LETTERS + "\x01\t\n]["
HIGH = "\xe4\xff"  # letters in the code page of the matchers, but not in the locale of the peer


class Match(ctypes.Structure):
    _fields_ = [("start", ctypes.c_int), ("end", ctypes.c_int)]


class Patterns:
    """A pattern is made together with whether it may match the empty text."""

    def __init__(self, chance):
        self.chance = chance
        self.is_plain = False  # without classes, so that any byte will do

    def atom(self, depth):
        kind = self.chance.randrange(12 if depth > 0 else 8)
        if kind < 4:
            return self.character(), False
        if kind == 4:
            return ".", False
        if kind < 8:
            return self.bracket(), False
        inner, empty = self.alternatives(depth - 1)
        return "(" + inner + ")", empty

    def character(self):
        letter = self.chance.choice(LETTERS + (HIGH if self.is_plain else "") + "*+?(){}[]|^$\\")
        return "\\" + letter if letter in ".*+?(){}[]|^$\\" else letter

    def bracket(self):
        items = [self.item() for _ in range(self.chance.randrange(1, 4))]
        start = self.chance.choice(["[", "[", "[^"])
        return start + self.chance.choice(["", "", "]"]) + "".join(items) + self.chance.choice(["", "", "-"]) + "]"

    def item(self):
        kind = self.chance.randrange(5)
        if kind == 0 and not self.is_plain:
            return "[:" + self.chance.choice(["alpha", "digit", "alnum", "upper", "lower", "space", "blank", "punct", "cntrl",
                                              "print", "graph", "xdigit"]) + ":]"
        if kind == 1:
            low, high = sorted(self.chance.choice("abcAB1289") for _ in range(2))
            return low + "-" + high
        return self.chance.choice("abAB1 _.*$" + (HIGH if self.is_plain else ""))

    def piece(self, depth):
        atom, empty = self.atom(depth)
        kind = self.chance.randrange(10)
        if kind > 4 or (empty and kind > 2):
            return atom, empty
        if kind < 3:
            sign = "*+?"[kind]
            return atom + sign, empty or sign != "+"
        low = self.chance.randrange(4)
        high = low + self.chance.randrange(3)
        form = self.chance.randrange(3)
        if form == 0 and low > 0:
            return "%s{%d}" % (atom, low), False
        if form == 1:
            return "%s{%d,}" % (atom, low), low == 0
        return "%s{%d,%d}" % (atom, low, max(high, 1)), low == 0

    def branch(self, depth):
        pieces = [self.piece(depth) for _ in range(self.chance.randrange(1, 5))]
        return "".join(text for text, _ in pieces), all(empty for _, empty in pieces)

    def alternatives(self, depth):
        branches = [self.branch(depth) for _ in range(self.chance.choice([1, 1, 2, 3]))]
        return "|".join(text for text, _ in branches), any(empty for _, empty in branches)

    def whole(self):
        self.is_plain = self.chance.randrange(2) == 0
        text, _ = self.alternatives(self.chance.randrange(3))
        if "|" not in text:
            text = self.chance.choice(["", "", "^"]) + text + self.chance.choice(["", "", "$"])
        return text


def text_for(chance, is_plain):
    letters = TEXT_LETTERS + (HIGH if is_plain else "")
    return "".join(chance.choice(letters) for _ in range(chance.randrange(12)))


def answers(library, pattern, flags, texts):
    expression = ctypes.create_string_buffer(256)
    if library.regcomp(expression, pattern, flags) != 0:
        return None
    found = []
    for text in texts:
        match = Match(-1, -1)
        matched = library.regexec(expression, text, 1, ctypes.byref(match), 0) == 0
        found.append("%d,%d" % (match.start, match.end) if matched else "-")
    library.regfree(expression)
    return found


def main():
    seed, count, file = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3]
    library = ctypes.CDLL("libc.so.6")
    library.setlocale.argtypes = [ctypes.c_int, ctypes.c_char_p]
    library.setlocale(6, b"C")  # LC_ALL; a byte is a character then
    chance = random.Random(seed)
    patterns = Patterns(chance)
    with open(file + ".part", "w", encoding="ascii") as out:
        for _ in range(count):
            pattern = patterns.whole().encode("latin-1")
            flags = 1 if patterns.is_plain else chance.choice([1, 3])
            texts = [text_for(chance, patterns.is_plain).encode("latin-1") for _ in range(3)]
            found = answers(library, pattern, flags, texts)
            fields = ["x" + pattern.hex(), str(flags), "0" if found is None else "1"]
            for text, answer in zip(texts, found or []):
                fields += ["x" + text.hex(), answer]
            out.write(" ".join(fields) + "\n")
    os.rename(file + ".part", file)


main()
