"""Compares what a DLL exports with what the public headers declare for it.

Every function, member and value that the headers mark must be exported, and nothing else may be, except for what the compiler
makes of a marked class by itself. The compiler's own library reads the headers, so that it tells what is marked.
"""

import argparse
import ctypes
import re
import subprocess
import sys
import tempfile

# Kinds of cursors.
CLASSES = {2, 4}  # struct, class
FUNCTION, VARIABLE, METHOD, CONSTRUCTOR, DESTRUCTOR, CONVERSION = 8, 9, 21, 24, 25, 26
MEMBERS = {METHOD, CONSTRUCTOR, DESTRUCTOR, CONVERSION, VARIABLE}
NAMESPACE, LINKAGE = 22, 23
DLLEXPORT = 418
CONTINUE = 1
SKIP_BODIES = 0x40
ERROR, FATAL = 3, 4
NOT_AVAILABLE = 2  # deleted


class Cursor(ctypes.Structure):
    _fields_ = [("kind", ctypes.c_int), ("xdata", ctypes.c_int), ("data", ctypes.c_void_p * 3)]


class Text(ctypes.Structure):
    _fields_ = [("data", ctypes.c_void_p), ("flags", ctypes.c_uint)]


class TextSet(ctypes.Structure):
    _fields_ = [("texts", ctypes.POINTER(Text)), ("count", ctypes.c_uint)]


class Location(ctypes.Structure):
    _fields_ = [("data", ctypes.c_void_p * 2), ("integer", ctypes.c_uint)]


VISITOR = ctypes.CFUNCTYPE(ctypes.c_int, Cursor, Cursor, ctypes.c_void_p)


class Clang:
    """The few calls of libclang that are needed."""

    def __init__(self, library):
        lib = self.lib = ctypes.CDLL(library)
        lib.clang_createIndex.restype = ctypes.c_void_p
        lib.clang_parseTranslationUnit.restype = ctypes.c_void_p
        lib.clang_parseTranslationUnit.argtypes = [
            ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(ctypes.c_char_p), ctypes.c_int, ctypes.c_void_p, ctypes.c_uint,
            ctypes.c_uint]
        lib.clang_getTranslationUnitCursor.restype = Cursor
        lib.clang_getTranslationUnitCursor.argtypes = [ctypes.c_void_p]
        lib.clang_visitChildren.argtypes = [Cursor, VISITOR, ctypes.c_void_p]
        for name in ("clang_getCursorSpelling", "clang_Cursor_getMangling", "clang_getCursorDisplayName"):
            function = getattr(lib, name)
            function.restype, function.argtypes = Text, [Cursor]
        lib.clang_Cursor_getCXXManglings.restype = ctypes.POINTER(TextSet)
        lib.clang_Cursor_getCXXManglings.argtypes = [Cursor]
        lib.clang_getCString.restype, lib.clang_getCString.argtypes = ctypes.c_char_p, [Text]
        lib.clang_getCursorLocation.restype, lib.clang_getCursorLocation.argtypes = Location, [Cursor]
        lib.clang_getSpellingLocation.argtypes = [
            Location, ctypes.POINTER(ctypes.c_void_p), ctypes.POINTER(ctypes.c_uint), ctypes.c_void_p, ctypes.c_void_p]
        lib.clang_getFileName.restype, lib.clang_getFileName.argtypes = Text, [ctypes.c_void_p]
        for name in ("clang_getCursorAvailability", "clang_CXXMethod_isPureVirtual", "clang_Cursor_isFunctionInlined",
                     "clang_isCursorDefinition"):
            getattr(lib, name).argtypes = [Cursor]
        lib.clang_getNumDiagnostics.argtypes = [ctypes.c_void_p]
        lib.clang_getDiagnostic.restype, lib.clang_getDiagnostic.argtypes = ctypes.c_void_p, [ctypes.c_void_p, ctypes.c_uint]
        lib.clang_getDiagnosticSeverity.argtypes = [ctypes.c_void_p]
        lib.clang_getDiagnosticLocation.restype, lib.clang_getDiagnosticLocation.argtypes = Location, [ctypes.c_void_p]
        lib.clang_Location_isInSystemHeader.argtypes = [Location]
        lib.clang_formatDiagnostic.restype, lib.clang_formatDiagnostic.argtypes = Text, [ctypes.c_void_p, ctypes.c_uint]

    def text(self, value):
        characters = self.lib.clang_getCString(value)
        return characters.decode() if characters else ""

    def parse(self, source, arguments):
        words = (ctypes.c_char_p * len(arguments))(*[word.encode() for word in arguments])
        index = self.lib.clang_createIndex(0, 0)
        unit = self.lib.clang_parseTranslationUnit(index, source.encode(), words, len(words), None, 0, SKIP_BODIES)
        if not unit:
            sys.exit("the headers cannot be read")
        for i in range(self.lib.clang_getNumDiagnostics(unit)):
            diagnostic = self.lib.clang_getDiagnostic(unit, i)
            severity = self.lib.clang_getDiagnosticSeverity(diagnostic)
            system = self.lib.clang_Location_isInSystemHeader(self.lib.clang_getDiagnosticLocation(diagnostic))
            # GCC's headers have errors of their own for another compiler, in functions of the processor.
            if severity == FATAL or severity == ERROR and not system:
                sys.exit("the headers have errors: " + self.text(self.lib.clang_formatDiagnostic(diagnostic, 1)))
        return self.lib.clang_getTranslationUnitCursor(unit)

    def children(self, cursor):
        found = []
        visitor = VISITOR(lambda child, parent, data: found.append(copy(child)) or CONTINUE)
        self.lib.clang_visitChildren(cursor, visitor, None)
        return found

    def place(self, cursor):
        file, line = ctypes.c_void_p(), ctypes.c_uint()
        self.lib.clang_getSpellingLocation(self.lib.clang_getCursorLocation(cursor), ctypes.byref(file), ctypes.byref(line), None, None)
        return (self.text(self.lib.clang_getFileName(file)) if file else ""), line.value

    def symbols(self, cursor):
        """All symbols of a function; constructors and destructors have several."""
        names = []
        if cursor.kind in (CONSTRUCTOR, DESTRUCTOR):
            found = self.lib.clang_Cursor_getCXXManglings(cursor)
            names = [self.text(found.contents.texts[i]) for i in range(found.contents.count)] if found else []
        return names or [self.text(self.lib.clang_Cursor_getMangling(cursor))]


def copy(cursor):
    made = Cursor()
    ctypes.pointer(made)[0] = cursor
    return made


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
            name = self.clang.text(self.clang.lib.clang_getCursorSpelling(child))
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
            elif child.kind in (NAMESPACE, LINKAGE):
                self.read(child, inner if child.kind == NAMESPACE else scope)

    def add_members(self, members):
        for member in members:
            if member.kind in MEMBERS:
                self.add(member, *self.clang.place(member))

    def add(self, cursor, file, line):
        lib = self.clang.lib
        if lib.clang_getCursorAvailability(cursor) == NOT_AVAILABLE:
            return
        symbols = self.clang.symbols(cursor)
        self.allowed.update(symbols)
        if cursor.kind != VARIABLE and (lib.clang_Cursor_isFunctionInlined(cursor) or lib.clang_isCursorDefinition(cursor)
                                        or lib.clang_CXXMethod_isPureVirtual(cursor)):
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
    parser.add_argument("--libclang", required=True)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--filter", required=True, help="c++filt of the compiler")
    parser.add_argument("--dll", required=True)
    parser.add_argument("--define", required=True, help="what marks the DLL's own declarations for export")
    parser.add_argument("--folder", required=True, help="only headers below it count")
    parser.add_argument("--header", required=True, action="append")
    parser.add_argument("--seam", default=[], action="append", help="an export that only tests use")
    parser.add_argument("--include", default=[], action="append", help="a folder of headers")
    parser.add_argument("--system", default=[], action="append", help="a folder of the compiler's headers")
    return parser.parse_args()


def declarations(given):
    clang = Clang(given.libclang)
    words = ["-x", "c++", "-std=c++20", "--target=x86_64-w64-mingw32", "-Wno-everything", "-ferror-limit=0"]
    words += ["-D" + given.define, *("-I" + folder for folder in given.include)]
    words += [word for folder in given.system for word in ("-isystem", folder)]
    with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
        source.write("".join(f'#include "{header}"\n' for header in given.header))
        source.flush()
        declared = Declarations(clang, given.folder)
        declared.read(clang.parse(source.name, words))
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
