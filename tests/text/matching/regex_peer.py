#!/usr/bin/env python3
"""Asks the C library of this machine for matches of random patterns.

The C library itself is not always right, mostly for repeated groups of alternatives. So each of its answers is held against the sets of
places where the parts of the pattern may end, and these count where the two differ; how often they did is printed.

usage: regex_peer.py SEED COUNT FILE

Writes a line for each pattern: its bytes in hexadecimal, the flags, 0 or 1 for whether it compiles, then for each text its bytes and
"start,end", or "-" where it does not match. FILE appears when it is complete.

Left out is what POSIX leaves to the implementation: escapes of letters, "+?" and its like, "(?", "{,n}", repetitions of nothing,
empty alternatives, anchors within, and bounds of groups that may be empty. So is what the locales differ in: bytes from 128 on
beside classes, "[:print:]", to which the code page adds the tab, and ranges from capitals to small letters.
"""

import ctypes
import os
import random
import string
import sys

LETTERS = "abAB1 -_."
TEXT_LETTERS = LETTERS + "\x01\t\n]["
HIGH = "\xe4\xff"  # letters in the code page of the matchers, but not in the locale of the peer


CLASSES = {
    "alpha": string.ascii_letters, "digit": string.digits, "alnum": string.ascii_letters + string.digits,
    "upper": string.ascii_uppercase, "lower": string.ascii_lowercase, "space": string.whitespace, "blank": " \t",
    "punct": string.punctuation, "cntrl": "".join(map(chr, range(32))) + "\x7f",
    "graph": string.ascii_letters + string.digits + string.punctuation, "xdigit": string.hexdigits}


class Match(ctypes.Structure):
    _fields_ = [("start", ctypes.c_int), ("end", ctypes.c_int)]


class Part:
    """A part of a pattern: its text, whether it may match the empty text, and where it may end: ends(text, start) gives the set."""

    def __init__(self, text, empty, ends):
        self.text = text
        self.empty = empty
        self.ends = ends


def one_of(letters):
    return lambda text, start: {start + 1} if start < len(text) and text[start] in letters else set()


def sequence(parts):
    def ends(text, start):
        places = {start}
        for part in parts:
            places = set().union(*(part.ends(text, place) for place in places))
        return places
    return ends


def repetition(part, low, high):
    def ends(text, start):
        places, found, seen = {start}, set(), set()
        count = 0
        while places and (high is None or count <= high):
            if count >= low:
                if places <= seen:
                    break
                seen |= places
                found |= places
            places = set().union(*(part.ends(text, place) for place in places))
            count += 1
        return found
    return ends


class Patterns:
    def __init__(self, chance):
        self.chance = chance
        self.is_plain = False  # without classes, so that any byte will do
        self.ignores_case = False

    def letters(self, letters):
        return set(letters) | (set(letters.lower() + letters.upper()) if self.ignores_case and letters.isascii() else set())

    def atom(self, depth):
        kind = self.chance.randrange(12 if depth > 0 else 8)
        if kind < 4:
            return self.character()
        if kind == 4:
            return Part(".", False, lambda text, start: {start + 1} if start < len(text) else set())
        if kind < 8:
            return self.bracket()
        inner = self.alternatives(depth - 1)
        return Part("(" + inner.text + ")", inner.empty, inner.ends)

    def character(self):
        letter = self.chance.choice(LETTERS + (HIGH if self.is_plain else "") + "*+?(){}[]|^$\\")
        text = "\\" + letter if letter in ".*+?(){}[]|^$\\" else letter
        return Part(text, False, one_of(self.letters(letter)))

    def bracket(self):
        items = [self.item() for _ in range(self.chance.randrange(1, 4))]
        start = self.chance.choice(["[", "[", "[^"])
        first, last = self.chance.choice(["", "", "]"]), self.chance.choice(["", "", "-"])
        letters = self.letters(first + last + "".join(letters for _, letters in items))
        if start == "[^":
            letters = set(map(chr, range(256))) - letters
        return Part(start + first + "".join(text for text, _ in items) + last + "]", False, one_of(letters))

    def item(self):
        kind = self.chance.randrange(5)
        if kind == 0 and not self.is_plain:
            name = self.chance.choice(sorted(CLASSES))
            return "[:" + name + ":]", CLASSES[name]
        if kind == 1:
            kind = self.chance.choice(["abc", "ABC", "1289"])
            low, high = sorted(self.chance.choice(kind) for _ in range(2))
            return low + "-" + high, "".join(map(chr, range(ord(low), ord(high) + 1)))
        letter = self.chance.choice("abAB1 _.*$" + (HIGH if self.is_plain else ""))
        return letter, letter

    def piece(self, depth):
        atom = self.atom(depth)
        kind = self.chance.randrange(10)
        if kind > 4 or (atom.empty and kind > 2):
            return atom
        if kind < 3:
            low, high = [(0, None), (1, None), (0, 1)][kind]
            return Part(atom.text + "*+?"[kind], atom.empty or low == 0, repetition(atom, low, high))
        low = self.chance.randrange(4)
        high = max(low + self.chance.randrange(3), 1)
        form = self.chance.randrange(3)
        if form == 0 and low > 0:
            return Part("%s{%d}" % (atom.text, low), False, repetition(atom, low, low))
        if form == 1:
            return Part("%s{%d,}" % (atom.text, low), low == 0, repetition(atom, low, None))
        return Part("%s{%d,%d}" % (atom.text, low, high), low == 0, repetition(atom, low, high))

    def branch(self, depth):
        pieces = [self.piece(depth) for _ in range(self.chance.randrange(1, 5))]
        return Part("".join(piece.text for piece in pieces), all(piece.empty for piece in pieces), sequence(pieces))

    def alternatives(self, depth):
        branches = [self.branch(depth) for _ in range(self.chance.choice([1, 1, 2, 3]))]
        return Part("|".join(branch.text for branch in branches), any(branch.empty for branch in branches),
                    lambda text, start: set().union(*(branch.ends(text, start) for branch in branches)))

    def whole(self):
        """A pattern and its flags."""
        self.is_plain = self.chance.randrange(2) == 0
        self.ignores_case = not self.is_plain and self.chance.randrange(2) == 0
        whole = self.alternatives(self.chance.randrange(3))
        if "|" not in whole.text:
            ends, at_start, at_end = whole.ends, self.chance.randrange(3) == 0, self.chance.randrange(3) == 0
            whole.text = "^" * at_start + whole.text + "$" * at_end
            whole.ends = lambda text, start: {end for end in (ends(text, start) if start == 0 or not at_start else set())
                                              if end == len(text) or not at_end}
        return whole, 3 if self.ignores_case else 1


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


def longest(part, text):
    """The longest of the leftmost matches."""
    for start in range(len(text) + 1):
        if ends := part.ends(text, start):
            return "%d,%d" % (start, max(ends))
    return "-"


def main():
    seed, count, file = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3]
    library = ctypes.CDLL("libc.so.6")
    library.setlocale.argtypes = [ctypes.c_int, ctypes.c_char_p]
    library.setlocale(6, b"C")  # LC_ALL; a byte is a character then
    chance = random.Random(seed)
    patterns = Patterns(chance)
    with open(file + ".part", "w", encoding="ascii") as out:
        corrected = 0
        for _ in range(count):
            part, flags = patterns.whole()
            pattern = part.text.encode("latin-1")
            texts = [text_for(chance, patterns.is_plain) for _ in range(3)]
            right = [longest(part, text) for text in texts]
            texts = [text.encode("latin-1") for text in texts]
            found = answers(library, pattern, flags, texts)
            if found is not None and found != right:
                corrected += 1
                found = right
            fields = ["x" + pattern.hex(), str(flags), "0" if found is None else "1"]
            for text, answer in zip(texts, found or []):
                fields += ["x" + text.hex(), answer]
            out.write(" ".join(fields) + "\n")
    print("the C library was wrong for %d of %d patterns" % (corrected, count))
    os.rename(file + ".part", file)


main()
