"""The public headers as the compiler reads them: the few calls of libclang that the scripts beside this one need."""

import ctypes
import sys
import tempfile

# Kinds of cursors.
STRUCT, CLASS, ENUMERATION = 2, 4, 5
FUNCTION, VARIABLE, METHOD, CONSTRUCTOR, DESTRUCTOR, CONVERSION = 8, 9, 21, 24, 25, 26
NAMESPACE, LINKAGE, FUNCTION_TEMPLATE, CLASS_TEMPLATE = 22, 23, 30, 31
OVERRIDE, DLLEXPORT = 405, 418
CLASSES = {STRUCT, CLASS}

CONTINUE = 1
SKIP_BODIES = 0x40
ERROR, FATAL = 3, 4
NOT_AVAILABLE = 2
PRIVATE = 3


class Cursor(ctypes.Structure):
    _fields_ = [("kind", ctypes.c_int), ("xdata", ctypes.c_int), ("data", ctypes.c_void_p * 3)]


class Text(ctypes.Structure):
    _fields_ = [("data", ctypes.c_void_p), ("flags", ctypes.c_uint)]


class TextSet(ctypes.Structure):
    _fields_ = [("texts", ctypes.POINTER(Text)), ("count", ctypes.c_uint)]


class Location(ctypes.Structure):
    _fields_ = [("data", ctypes.c_void_p * 2), ("integer", ctypes.c_uint)]


class Range(ctypes.Structure):
    _fields_ = [("data", ctypes.c_void_p * 2), ("begin", ctypes.c_uint), ("end", ctypes.c_uint)]


VISITOR = ctypes.CFUNCTYPE(ctypes.c_int, Cursor, Cursor, ctypes.c_void_p)

# Result and arguments of each call.
CALLS = {
    "clang_createIndex": (ctypes.c_void_p, [ctypes.c_int, ctypes.c_int]),
    "clang_parseTranslationUnit": (ctypes.c_void_p, [
        ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(ctypes.c_char_p), ctypes.c_int, ctypes.c_void_p, ctypes.c_uint,
        ctypes.c_uint]),
    "clang_getTranslationUnitCursor": (Cursor, [ctypes.c_void_p]),
    "clang_visitChildren": (ctypes.c_uint, [Cursor, VISITOR, ctypes.c_void_p]),
    "clang_getCursorSpelling": (Text, [Cursor]),
    "clang_getCursorDisplayName": (Text, [Cursor]),
    "clang_Cursor_getMangling": (Text, [Cursor]),
    "clang_Cursor_getCXXManglings": (ctypes.POINTER(TextSet), [Cursor]),
    "clang_Cursor_getRawCommentText": (Text, [Cursor]),
    "clang_getCString": (ctypes.c_char_p, [Text]),
    "clang_getCursorLocation": (Location, [Cursor]),
    "clang_getCursorExtent": (Range, [Cursor]),
    "clang_getRangeEnd": (Location, [Range]),
    "clang_getSpellingLocation": (None, [
        Location, ctypes.POINTER(ctypes.c_void_p), ctypes.POINTER(ctypes.c_uint), ctypes.c_void_p, ctypes.c_void_p]),
    "clang_getFileName": (Text, [ctypes.c_void_p]),
    "clang_getCursorAvailability": (ctypes.c_int, [Cursor]),
    "clang_getCXXAccessSpecifier": (ctypes.c_int, [Cursor]),
    "clang_CXXConstructor_isDefaultConstructor": (ctypes.c_uint, [Cursor]),
    "clang_CXXConstructor_isCopyConstructor": (ctypes.c_uint, [Cursor]),
    "clang_CXXConstructor_isMoveConstructor": (ctypes.c_uint, [Cursor]),
    "clang_getCursorSemanticParent": (Cursor, [Cursor]),
    "clang_CXXMethod_isDefaulted": (ctypes.c_uint, [Cursor]),
    "clang_CXXMethod_isPureVirtual": (ctypes.c_uint, [Cursor]),
    "clang_Cursor_isFunctionInlined": (ctypes.c_uint, [Cursor]),
    "clang_isCursorDefinition": (ctypes.c_uint, [Cursor]),
    "clang_getNumDiagnostics": (ctypes.c_uint, [ctypes.c_void_p]),
    "clang_getDiagnostic": (ctypes.c_void_p, [ctypes.c_void_p, ctypes.c_uint]),
    "clang_getDiagnosticSeverity": (ctypes.c_int, [ctypes.c_void_p]),
    "clang_getDiagnosticLocation": (Location, [ctypes.c_void_p]),
    "clang_Location_isInSystemHeader": (ctypes.c_int, [Location]),
    "clang_formatDiagnostic": (Text, [ctypes.c_void_p, ctypes.c_uint]),
}


def add_arguments(parser):
    """What a script has to be told before it can read the headers."""
    parser.add_argument("--libclang", required=True)
    parser.add_argument("--header", required=True, action="append")
    parser.add_argument("--include", default=[], action="append", help="a folder of headers")
    parser.add_argument("--system", default=[], action="append", help="a folder of the compiler's headers")


class Clang:
    def __init__(self, library):
        self.lib = ctypes.CDLL(library)
        for name, (result, arguments) in CALLS.items():
            function = getattr(self.lib, name)
            function.restype, function.argtypes = result, arguments

    def parse(self, given, options=(), flags=0):
        """A source that includes the headers; ends the script when they have errors."""
        words = ["-x", "c++", "-std=c++20", "--target=x86_64-w64-mingw32", "-Wno-everything", "-ferror-limit=0", *options]
        words += ["-I" + folder for folder in given.include]
        words += [word for folder in given.system for word in ("-isystem", folder)]
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
            source.write("".join(f'#include "{header}"\n' for header in given.header))
            source.flush()
            passed = (ctypes.c_char_p * len(words))(*[word.encode() for word in words])
            index = self.lib.clang_createIndex(0, 0)
            unit = self.lib.clang_parseTranslationUnit(index, source.name.encode(), passed, len(words), None, 0, flags)
        if not unit:
            sys.exit("the headers cannot be read")
        self._stop_at_errors(unit)
        return self.lib.clang_getTranslationUnitCursor(unit)

    def _stop_at_errors(self, unit):
        for i in range(self.lib.clang_getNumDiagnostics(unit)):
            diagnostic = self.lib.clang_getDiagnostic(unit, i)
            severity = self.lib.clang_getDiagnosticSeverity(diagnostic)
            system = self.lib.clang_Location_isInSystemHeader(self.lib.clang_getDiagnosticLocation(diagnostic))
            # GCC's headers have errors of their own for another compiler, in functions of the processor.
            if severity == FATAL or severity == ERROR and not system:
                sys.exit("the headers have errors: " + self.text(self.lib.clang_formatDiagnostic(diagnostic, 1)))

    def text(self, value):
        characters = self.lib.clang_getCString(value)
        return characters.decode() if characters else ""

    def name(self, cursor):
        return self.text(self.lib.clang_getCursorSpelling(cursor))

    def children(self, cursor):
        found = []
        visitor = VISITOR(lambda child, parent, data: found.append(_copy(child)) or CONTINUE)
        self.lib.clang_visitChildren(cursor, visitor, None)
        return found

    def place(self, cursor):
        """File and line."""
        return self._file_and_line(self.lib.clang_getCursorLocation(cursor))

    def last_line(self, cursor):
        return self._file_and_line(self.lib.clang_getRangeEnd(self.lib.clang_getCursorExtent(cursor)))[1]

    def _file_and_line(self, location):
        file, line = ctypes.c_void_p(), ctypes.c_uint()
        self.lib.clang_getSpellingLocation(location, ctypes.byref(file), ctypes.byref(line), None, None)
        return (self.text(self.lib.clang_getFileName(file)) if file else ""), line.value

    def deleted(self, cursor):
        return self.lib.clang_getCursorAvailability(cursor) == NOT_AVAILABLE

    def symbols(self, cursor):
        """All symbols of a function; constructors and destructors have several."""
        names = []
        if cursor.kind in (CONSTRUCTOR, DESTRUCTOR):
            found = self.lib.clang_Cursor_getCXXManglings(cursor)
            names = [self.text(found.contents.texts[i]) for i in range(found.contents.count)] if found else []
        return names or [self.text(self.lib.clang_Cursor_getMangling(cursor))]


def _copy(cursor):
    made = Cursor()
    ctypes.pointer(made)[0] = cursor
    return made
