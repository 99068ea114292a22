"""The public headers as the compiler reads them: the few calls of libclang that the scripts beside this one need."""

import ctypes
import sys
import tempfile

# Kinds of cursors.
STRUCT, CLASS, ENUMERATION = 2, 4, 5
FUNCTION, VARIABLE, METHOD, CONSTRUCTOR, DESTRUCTOR, CONVERSION = 8, 9, 21, 24, 25, 26
NAMESPACE, LINKAGE, FUNCTION_TEMPLATE, CLASS_TEMPLATE = 22, 23, 30, 31
UNEXPOSED = 1  # what clang 14 takes extern "C" { } for
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
    "clang_disposeTranslationUnit": (None, [ctypes.c_void_p]),
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
    """What a script needs to know before it can read the headers."""
    parser.add_argument("--libclang", required=True)
    parser.add_argument("--header", required=True, action="append")
    parser.add_argument("--include", default=[], action="append", help="a folder of headers")
    parser.add_argument("--system", default=[], action="append", help="a folder of the compiler's headers")


class Clang:
    def __init__(self, library, more_calls=None):
        self.lib = ctypes.CDLL(library)
        for name, (result, arguments) in {**CALLS, **(more_calls or {})}.items():
            function = getattr(self.lib, name)
            function.restype, function.argtypes = result, arguments
        self.index = self.lib.clang_createIndex(0, 0)

    def parse(self, given, options=(), flags=0):
        """A source that includes the headers; ends the script when they have errors."""
        words = ["-I" + folder for folder in given.include]
        words += [word for folder in given.system for word in ("-isystem", folder)]
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
            source.write("".join(f'#include "{header}"\n' for header in given.header))
            source.flush()
            unit = self.translate(source.name, [*options, *words], flags)
        for fault in self.faults(unit):
            sys.exit("the headers have errors: " + fault)
        return self.lib.clang_getTranslationUnitCursor(unit)

    def translate(self, path, options, flags=0):
        """The unit of one source; ends the script when it cannot be read at all."""
        words = ["-x", "c++", "-std=c++20", "--target=x86_64-w64-mingw32", "-Wno-everything", "-ferror-limit=0", *options]
        passed = (ctypes.c_char_p * len(words))(*[word.encode() for word in words])
        unit = self.lib.clang_parseTranslationUnit(self.index, path.encode(), passed, len(words), None, 0, flags)
        if not unit:
            sys.exit(f"{path} cannot be read")
        return unit

    def faults(self, unit):
        """The errors of a unit, each with its place."""
        found = []
        for i in range(self.lib.clang_getNumDiagnostics(unit)):
            diagnostic = self.lib.clang_getDiagnostic(unit, i)
            severity = self.lib.clang_getDiagnosticSeverity(diagnostic)
            system = self.lib.clang_Location_isInSystemHeader(self.lib.clang_getDiagnosticLocation(diagnostic))
            # GCC's headers have errors of their own for another compiler, in functions of the processor.
            if severity == FATAL or severity == ERROR and not system:
                found.append(self.text(self.lib.clang_formatDiagnostic(diagnostic, 1)))
        return found

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
