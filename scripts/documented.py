"""Names the classes and operations of the public headers that have no comment.

A comment holds for the declaration below it and for those that follow that one without an empty line. Private members, what is
deleted or made by the compiler, copies and plain beginnings of objects, destructors, and functions that override a documented one
need none.
"""

import argparse
import sys

import publicheaders
from publicheaders import (CLASS_TEMPLATE, CLASSES, CONSTRUCTOR, CONVERSION, ENUMERATION, FUNCTION, FUNCTION_TEMPLATE, LINKAGE, METHOD,
                           NAMESPACE, OVERRIDE, PRIVATE, UNEXPOSED)

OPERATIONS = {FUNCTION, METHOD, CONSTRUCTOR, CONVERSION, FUNCTION_TEMPLATE}
TYPES = CLASSES | {ENUMERATION, CLASS_TEMPLATE}


class Comments:
    def __init__(self, clang, folders):
        self.clang, self.folders, self.missing, self.count = clang, folders, {}, 0
        self.lines = {}

    def read(self, cursor):
        above = None  # file and last line of what stands above, and whether it has a comment
        for child in self.clang.children(cursor):
            file, line = self.clang.place(child)
            if not file.startswith(self.folders) or "/detail/" in file:
                continue
            commented = self.commented(child, file)
            if not commented and above and above[:2] == (file, line - 1):
                commented = above[2]
            above = file, self.clang.last_line(child), commented
            if self.needed(child):
                self.count += 1
                if not commented:
                    self.missing[f"{file}:{line}"] = self.clang.text(self.clang.lib.clang_getCursorDisplayName(child))
            if child.kind in TYPES | {NAMESPACE, LINKAGE, UNEXPOSED} and not self.internal(child):
                self.read(child)

    def commented(self, cursor, file):
        if self.clang.text(self.clang.lib.clang_Cursor_getRawCommentText(cursor)):
            return True
        if file not in self.lines:
            with open(file, encoding="utf-8") as source:
                self.lines[file] = source.read().splitlines()
        return "///<" in self.lines[file][self.clang.last_line(cursor) - 1]  # the compiler takes those of values alone

    def internal(self, cursor):
        if cursor.kind == NAMESPACE:
            return self.clang.name(cursor) == "detail"
        return self.clang.lib.clang_getCXXAccessSpecifier(cursor) == PRIVATE

    def needed(self, cursor):
        if cursor.kind in TYPES:
            return bool(self.clang.lib.clang_isCursorDefinition(cursor)) and not self.internal(cursor)
        if cursor.kind not in OPERATIONS or self.internal(cursor) or self.clang.deleted(cursor):
            return False
        if any(child.kind == OVERRIDE for child in self.clang.children(cursor)):
            return False
        return not self.clang.lib.clang_CXXMethod_isDefaulted(cursor) and not self.told_by_class(cursor)

    def told_by_class(self, cursor):
        """Making an object from nothing or from another one, which the comment of the class describes where it is not obvious."""
        lib = self.clang.lib
        if cursor.kind == CONSTRUCTOR:
            return (lib.clang_CXXConstructor_isDefaultConstructor(cursor) or lib.clang_CXXConstructor_isCopyConstructor(cursor)
                    or lib.clang_CXXConstructor_isMoveConstructor(cursor))
        owner = self.clang.name(lib.clang_getCursorSemanticParent(cursor))
        shown = self.clang.text(lib.clang_getCursorDisplayName(cursor))
        return cursor.kind == METHOD and shown in (f"operator=(const {owner} &)", f"operator=({owner} &&)")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    publicheaders.add_arguments(parser)
    given = parser.parse_args()
    clang = publicheaders.Clang(given.libclang)
    comments = Comments(clang, tuple(given.include))
    comments.read(clang.parse(given))
    for place, name in comments.missing.items():
        print(f"{place}: not documented: {name}")
    if comments.count == 0:
        sys.exit("no declarations were read")
    sys.exit(1 if comments.missing else 0)


if __name__ == "__main__":
    main()
