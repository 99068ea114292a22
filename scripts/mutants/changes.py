"""The changes that can be made to one source: one operator, constant, condition, order of two statements, or statement at a time."""

import re
from dataclasses import dataclass, replace

from mutants import syntax

KINDS = ("operator", "constant", "condition", "order", "statement")

OTHER_OPERATORS = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"],
    "&": ["|"], "|": ["&"], "^": ["&"], "<<": [">>"], ">>": ["<<"],
    "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="], "&=": ["|="], "|=": ["&="], "<<=": [">>="], ">>=": ["<<="],
}
OTHER_UNARY = {"!": "", "-": "", "~": "", "++": "--", "--": "++"}
COMPARISONS = {"==", "!=", "<", "<=", ">", ">="}
CONSTANTS = {syntax.INTEGER, syntax.FLOATING, syntax.CHARACTER, syntax.TEXT, syntax.TRUTH}
TABLE = 32  # a list of so many constants


@dataclass(frozen=True)
class Change:
    """A piece of a source and what stands in its place; whether it is one of the many values of a table."""
    kind: str
    start: int
    end: int
    text: str
    in_table: bool = False

    def applied(self, source):
        return source[:self.start] + self.text + source[self.end:]


def changes_of(source):
    """All changes of a source, in the order of their places."""
    found = set()
    for part in source.parts:
        _collect(source, part, False, found)
    return sorted(found, key=lambda change: (change.start, change.end, change.kind, change.text))


def _collect(source, part, in_table, found):
    if part.kind == syntax.STATIC_ASSERT or source.in_macro(part):
        return
    in_table = in_table or part.kind == syntax.LIST and _values(part) >= TABLE
    for finder in (_operators, _constants, _conditions, _order, _statements):
        for change in finder(source, part):
            if source.text[change.start:change.end] != change.text:
                found.add(replace(change, in_table=in_table))
    for inner in part.parts:
        _collect(source, inner, in_table, found)


def _values(part):
    """How many constants a list holds."""
    return (part.kind in CONSTANTS) + sum(_values(inner) for inner in part.parts)


# Operators.

def _operators(source, part):
    start, word = _operator_of(source, part)
    for other in OTHER_OPERATORS.get(word, []):
        yield Change("operator", start, start + len(word), other)
    if part.kind == syntax.UNARY:
        yield from _unary(source, part)


def _operator_of(source, part):
    """Place and text of the operator between two parts, also of one that is a function."""
    if part.kind in (syntax.BINARY, syntax.ASSIGNMENT) and len(part.parts) == 2:
        between = source.text[part.parts[0].end:part.parts[1].start]
        return part.parts[0].end + len(between) - len(between.lstrip()), between.strip()
    if part.kind == syntax.CALL and len(part.parts) == 3 and part.parts[0].end <= part.parts[1].start:
        return part.parts[1].start, source.of(part.parts[1])
    return part.start, ""


def _unary(source, part):
    operand = part.parts[0]
    for start, end in ((part.start, operand.start), (operand.end, part.end)):
        word = source.text[start:end].strip()
        if word in OTHER_UNARY:
            yield Change("operator", start, start + len(word), OTHER_UNARY[word])


# Constants.

def _constants(source, part):
    make = {syntax.INTEGER: _other_integers, syntax.FLOATING: _other_floats, syntax.TRUTH: _other_truth,
            syntax.CHARACTER: _other_characters, syntax.TEXT: _other_texts}.get(part.kind)
    if make:
        for other in make(source.of(part)):
            yield Change("constant", part.start, part.end, other)


def _other_integers(text):
    match = re.fullmatch(r"(0[xX](?=.)|0[bB]|)((?<=[xX])[0-9a-fA-F']+|[0-9']+)([uUlLzZ]*)", text)
    if not match:
        return
    prefix, digits, suffix = match.groups()
    base = {"0x": 16, "0b": 2}.get(prefix.lower(), 10)
    value = int(digits.replace("'", ""), base)
    for other in (value + 1, value - 1):
        if other >= 0:
            yield prefix + {16: f"{other:X}", 2: f"{other:b}", 10: str(other)}[base] + suffix


def _other_floats(text):
    match = re.fullmatch(r"([0-9.]+(?:[eE][+-]?[0-9]+)?)([fFlL]?)", text)
    if match:
        value = float(match.group(1))
        yield repr(value * 2 if value else 1.0) + match.group(2)


def _other_truth(text):
    if text in ("true", "false"):
        yield "false" if text == "true" else "true"


def _other_characters(text):
    match = re.fullmatch(r"([LuU]|u8)?'(.*)'", text)
    if match:
        character = match.group(2)
        yield f"{match.group(1) or ''}'{'x' if len(character) != 1 else _next(character)}'"


def _other_texts(text):
    """One letter of the text in the middle is another one; not in an escape, nor in what printf replaces."""
    match = re.match(r'((?:[LuU]|u8)?")((?:[^"\\]|\\.)*)"', text)
    if not match:
        return
    prefix, inner = match.groups()
    if not inner:
        yield f'{prefix}?"' + text[match.end():]
        return
    fixed = {place for each in re.finditer(r"\\x[0-9a-fA-F]+|\\.|%[-+ #0-9.*]*(?:I64|ll|[lhz])?[a-zA-Z%]", inner)
             for place in range(*each.span())}
    free = [place for place in range(len(inner)) if place not in fixed]
    if free:
        place = min(free, key=lambda place: (not inner[place].isalnum(), abs(place - len(inner) // 2)))
        yield prefix + inner[:place] + _next(inner[place]) + inner[place + 1:] + '"' + text[match.end():]


def _next(character):
    """Another character of the same kind."""
    if character in "zZ9":
        return chr(ord(character) - 1)
    if character.isascii() and character.isalnum():
        return chr(ord(character) + 1)
    return "x"


# Conditions.

def _conditions(source, part):
    if part.kind in (syntax.IF, syntax.WHILE, syntax.DO, syntax.FOR):
        for condition in _headed(source, part):
            yield from _other_conditions(source, condition, part.kind == syntax.IF)
    elif part.kind == syntax.CHOICE and part.parts:
        yield from _other_conditions(source, part.parts[0], True)
    elif part.kind == syntax.BINARY:
        yield from _sides(source, part)
    elif part.kind in (syntax.RETURN, syntax.VARIABLE) and part.parts and part.parts[-1].is_bool:
        yield from _other_values(source, part.parts[-1])


def _headed(source, part):
    """The condition between the parentheses of a statement; none where it is the value of a variable that is declared there."""
    for inner in part.parts:
        if inner.kind not in syntax.EXPRESSIONS:
            continue
        ends = (";", ";") if part.kind == syntax.FOR else (("(", ";"), ")")
        if source.before(inner).endswith(ends[0]) and source.after(inner) == ends[1]:
            return [inner]
    return []


def _other_conditions(source, condition, also_true):
    """A loop that never ends is of no use: the time limit alone would notice it."""
    if condition.inner().kind == syntax.TRUTH:
        return
    yield Change("condition", condition.start, condition.end, "false")
    if also_true:
        yield Change("condition", condition.start, condition.end, "true")
    yield from _negated(source, condition)


def _other_values(source, value):
    if value.inner().kind != syntax.TRUTH:
        yield from _negated(source, value)


def _negated(source, condition):
    """Not for a comparison, whose operator has its opposite, nor for what is negated already."""
    inner = condition.inner()
    if _operator_of(source, inner)[1] not in COMPARISONS and not source.of(inner).startswith("!"):
        yield Change("condition", condition.start, condition.end, f"!({source.of(condition)})")


def _sides(source, part):
    """One side alone of what two conditions are joined to."""
    if _operator_of(source, part)[1] in ("&&", "||"):
        for side in part.parts:
            yield Change("condition", part.start, part.end, source.of(side))


# Statements.

def _order(source, part):
    if part.kind != syntax.BLOCK:
        return
    for first, second in zip(part.parts, part.parts[1:]):
        if _is_statement(source, part, first) and _is_statement(source, part, second) and _may_depend(source, first, second):
            between = source.text[first.end:second.start]
            yield Change("order", first.start, second.end, source.of(second) + between + source.of(first))


def _may_depend(source, first, second):
    """Both call something, or one writes what the other names: what has nothing in common may stand in any order."""
    if _calls(first) and _calls(second):
        return True
    return _have_in_common(_written(source, first), _names(source, second)) or \
        _have_in_common(_written(source, second), _names(source, first))


def _have_in_common(names, others):
    """Whether one of the names is, or lies in, one of the others, or has one of them in it: two fields of a structure have nothing in
    common."""
    return any(name[:len(other)] == other[:len(name)] for name in names for other in others)


def _written(source, part):
    """What an assignment names on its left side; all names of another statement."""
    inner = part.inner()
    if inner.kind == syntax.ASSIGNMENT or inner.kind == syntax.BINARY and _operator_of(source, inner)[1] == "=":
        return _names(source, inner.parts[0])
    return _names(source, part)


def _names(source, part):
    """The names in a part, each with what it lies in: of "a.b = c->d()" these are ("a", "b") and ("c",), since a call of a member may
    use all of its object."""
    part = part.inner()
    own = _path(source, part)
    if own:
        return {own}
    called = part.parts[0].inner() if part.kind == syntax.CALL and part.parts else None
    if called and called.kind == syntax.MEMBER:
        own = _path(source, called)
        return {own[:-1]}.union(*(_names(source, inner) for inner in part.parts[1:])) if own else \
            set().union(*(_names(source, inner) for inner in called.parts + part.parts[1:]))
    return set().union(*(_names(source, inner) for inner in part.parts))


def _path(source, part):
    """A name, and the fields up to the one that is meant, from the object's own on; nothing where the object is no name."""
    if part.kind == syntax.NAME:
        return (source.of(part),)
    if part.kind == syntax.THIS:
        return ("this",)
    if part.kind != syntax.MEMBER:
        return ()
    if not part.parts:
        return "this", source.of(part)
    base = _path(source, part.parts[0].inner())
    return (*base, re.split(r"\.|->", source.of(part))[-1].strip()) if base else ()


def _calls(part):
    return part.kind == syntax.CALL or any(_calls(inner) for inner in part.parts)


def _statements(source, part):
    for inner in part.parts:
        leaves = inner.kind in (syntax.CONTINUE, syntax.BREAK) or inner.kind == syntax.RETURN and not inner.parts
        if leaves or _is_statement(source, part, inner):
            yield Change("statement", inner.start, inner.end, "")


def _is_statement(source, around, part):
    """Whether an expression stands by itself and is not the header of what is around it."""
    if part.kind not in syntax.EXPRESSIONS or source.after(part) != ";":
        return False
    if around.kind in (syntax.BLOCK, syntax.CASE, syntax.DEFAULT):
        return True
    if around.kind in (syntax.IF, syntax.WHILE, syntax.FOR, syntax.RANGE_FOR):
        return source.before(part).endswith((")", "else"))
    return False
