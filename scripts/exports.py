"""Compares what a DLL exports with what the public headers declare for it.

Every function, member and value that the headers mark must be exported, and nothing else may be, except for what the compiler
makes of a marked class by itself. The compiler's own library, which knows what is marked, reads the headers.
"""

import argparse
import re
import subprocess
import sys

import publicheaders
from publicheaders import (CLASSES, CONSTRUCTOR, CONVERSION, DESTRUCTOR, DLLEXPORT, FUNCTION, LINKAGE, METHOD, NAMESPACE, UNEXPOSED, VARIABLE)

MEMBERS = {METHOD, CONSTRUCTOR, DESTRUCTOR, CONVERSION, VARIABLE}

class Declarations:
    """What the headers mark: needed symbols with their places, symbols that may be there, and the names of marked classes."""

    def __init__(self, clang, folder):
        self.clang, self.folder = clang, folder
        self.needed, self.allowed, self.classes = {}, set(), set()

    def marked(self, children):
        return any(child.kind == DLLEXPORT for child in children)

    def read(self, cursor, scope=""):
        for child in self.clang.children(cursor):
            file, line = self.clang.place(child)
            if not file.startswith(self.folder):
                continue
            name = self.clang.name(child)
            inner = scope + name + "::"
            if child.kind in (FUNCTION, VARIABLE):
                if self.marked(self.clang.children(child)):
                    self.add(child, file, line)
            elif child.kind in CLASSES:
                members = self.clang.children(child)
                if self.marked(members):
                    self.classes.add(scope + name)
                    self.add_members(members)
                else:
                    self.add_members([m for m in members if self.marked(self.clang.children(m))])
                self.read(child, inner)
            elif child.kind in (NAMESPACE, LINKAGE, UNEXPOSED):
                self.read(child, inner if child.kind == NAMESPACE else scope)

    def add_members(self, members):
        for member in members:
            if member.kind in MEMBERS:
                self.add(member, *self.clang.place(member))

    def add(self, cursor, file, line):
        lib = self.clang.lib
        if self.clang.deleted(cursor):
            return
        symbols = self.clang.symbols(cursor)
        self.allowed.update(symbols)
        # A value with its definition in the header is a constant, of which each module has its own.
        if lib.clang_isCursorDefinition(cursor):
            return
        if cursor.kind != VARIABLE and (lib.clang_Cursor_isFunctionInlined(cursor) or lib.clang_CXXMethod_isPureVirtual(cursor)):
            return
        for symbol in symbols:
            # The deleting destructor exists only where a virtual one is; which classes have it is the compiler's matter.
            if cursor.kind != DESTRUCTOR or not re.search(r"D0Ev$", symbol):
                self.needed[symbol] = f"{file}:{line}"


def exports(objdump, dll):
    listing = subprocess.run([objdump, "-p", dll], check=True, capture_output=True, text=True).stdout
    table = listing.split("[Ordinal/Name Pointer] Table", 1)[-1].split("\n\n", 1)[0]
    return set(re.findall(r"^\s*\[\s*\d+\]\s+(\S+)$", table, re.MULTILINE))


def demangle(tool, symbols):
    shown = subprocess.run([tool, *symbols], check=True, capture_output=True, text=True).stdout
    return dict(zip(symbols, shown.splitlines()))


def made_by_compiler(shown, classes):
    """Tables and names of a marked class, entries of its virtual functions, and members that nobody declared."""
    of = re.match(r"(?:vtable|typeinfo|typeinfo name|VTT) for (.*)$", shown)
    if of:
        return of.group(1) in classes
    thunk = re.match(r"(?:non-virtual|virtual|covariant return) thunk to (.*)$", shown)
    owner, _, name = (thunk.group(1) if thunk else shown).split("(", 1)[0].rpartition("::")
    own_name = owner.rpartition("::")[2]
    return owner in classes and (bool(thunk) or name in ("operator=", own_name, "~" + own_name))


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    publicheaders.add_arguments(parser)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--filter", required=True, help="c++filt of the compiler")
    parser.add_argument("--dll", required=True)
    parser.add_argument("--define", required=True, help="what marks the DLL's own declarations for export")
    parser.add_argument("--folder", required=True, help="only headers below it count")
    parser.add_argument("--seam", default=[], action="append", help="an export that only tests use")
    return parser.parse_args()


def declarations(given):
    clang = publicheaders.Clang(given.libclang)
    declared = Declarations(clang, given.folder)
    declared.read(clang.parse(given, ["-D" + given.define], publicheaders.SKIP_BODIES))
    return declared


def main():
    given = arguments()
    declared = declarations(given)
    exported = exports(given.objdump, given.dll)
    if not exported or not declared.needed:
        sys.exit(f"{len(exported)} exports and {len(declared.needed)} declarations: one of them was not read")

    missing = sorted(set(declared.needed) - exported)
    spare = sorted(exported - declared.allowed)
    shown = demangle(given.filter, [*missing, *spare]) if missing or spare else {}
    spare = [symbol for symbol in spare
             if shown[symbol] not in given.seam and not made_by_compiler(shown[symbol], declared.classes)]
    # A constructor has several symbols and one name.
    for line in dict.fromkeys(f"{declared.needed[symbol]}: declared, but not exported: {shown[symbol]}" for symbol in missing):
        print(line)
    for symbol in spare:
        print(f"exported, but declared by no public header: {shown[symbol]} ({symbol})")
    print(f"{len(exported)} exports, {len(declared.needed)} declarations, {len(declared.classes)} classes")
    sys.exit(1 if missing or spare else 0)


if __name__ == "__main__":
    main()
