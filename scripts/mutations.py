"""Finds the places of a source where scripts/mutate can make a small change, by the text alone."""

import re
from dataclasses import dataclass

# Each has one or two spaces around it in formatted sources, which template arguments, pointers and references have not.
SWAPPED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
           "+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+=", "true": "false", "false": "true"}
OPERATOR = re.compile(r"(?<=\s)(<=|>=|==|!=|<|>|&&|\|\||\+=|-=|[-+*/])(?= )|\b(true|false)\b")
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?=[uUlLzZ]*(?![\w.']))")
CONDITION = re.compile(r"\b(?:if|while) (?=\()")
CALL = re.compile(r"\b(?!(?:if|for|while|switch|catch|sizeof|decltype|alignas)\b)\w+(?=\()")
DECLARATION = re.compile(r"[\w>&*\]] +[&*]*\w+$")
# What begins on a line of its own: a call or an assignment without a type before it, or a jump.
RESERVATION = re.compile(r"[\w.]+(?:\.|->)reserve\(")  # only makes what follows quicker
SYMMETRIC = {"max", "min", "hypot", "minmax", "gcd"}  # have one result whatever the order of their arguments
STATEMENT = re.compile(r"(?<=[;{})e]\n)[ ]+((?:[\w:.\[\]*]|->)+(?:\(| [-+*/|&]?= |\+\+;|--;)|[+]{2}|throw |break;|continue;)")
IGNORED = re.compile(r'//[^\n]*|/\*.*?\*/|R"\((?:.*?)\)"|"(?:\\.|[^"\\\n])*"|' r"(?<!\w)'(?:\\.|[^'\\\n])+'|"
                     r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*|\bstatic_assert\([^;]*;", re.DOTALL | re.MULTILINE)


@dataclass(frozen=True)
class Mutation:
    path: str
    start: int
    end: int
    text: str

    def apply(self, source):
        return source[:self.start] + self.text + source[self.end:]


def mask(source):
    """The source with comments, texts, preprocessor lines and static assertions blotted out, of the same length."""
    return IGNORED.sub(lambda match: re.sub(r"[^\n]", "\x01", match[0]), source)


def closing(masked, opening):
    """Where the bracket that stands at `opening` is closed, and the commas between its direct parts."""
    depth, commas = 0, []
    for at in range(opening, len(masked)):
        if masked[at] in "([{":
            depth += 1
        elif masked[at] in ")]}":
            depth -= 1
            if depth == 0:
                return at, commas
        elif masked[at] == "," and depth == 1:
            commas.append(at)
    return None, []


def find_mutations(path, source):
    """All changes that the file of this path can be given."""
    masked = mask(source)

    def mutation(start, end, text):
        return Mutation(path, start, end, text)

    yield from (mutation(*match.span(), SWAPPED[match[0]]) for match in OPERATOR.finditer(masked))
    yield from (mutation(*match.span(), str(int(match[0]) + 1)) for match in NUMBER.finditer(masked))
    yield from negated_conditions(source, masked, mutation)
    yield from removed_statements(masked, mutation)
    yield from swapped_arguments(source, masked, mutation)


def negated_conditions(source, masked, mutation):
    for match in CONDITION.finditer(masked):
        start, (end, _) = match.end(), closing(masked, match.end())
        if end and not re.search(r";|[^=!<>]=[^=]", masked[start:end]):  # which declares nothing
            yield mutation(start, end + 1, f"(!{source[start:end + 1]})")


def removed_statements(masked, mutation):
    for match in STATEMENT.finditer(masked):
        start = at = match.start(1)
        if RESERVATION.match(masked, start):
            continue
        while at is not None and at < len(masked) and masked[at] not in ";}":
            at = (closing(masked, at)[0] or len(masked)) + 1 if masked[at] in "([{" else at + 1
        if at < len(masked) and masked[at] == ";":
            yield mutation(start, at + 1, ";" + "\n" * masked.count("\n", start, at))


def swapped_arguments(source, masked, mutation):
    for match in CALL.finditer(masked):
        if match[0] in SYMMETRIC:
            continue
        end, commas = closing(masked, match.end())
        bounds = [match.end(), *commas, end]
        for first, middle, last in zip(bounds, bounds[1:], bounds[2:]):
            left, right = source[first + 1:middle], source[middle + 1:last]
            if left.strip() != right.strip() and not any(DECLARATION.search(part) for part in (left, right)):
                swapped = left.replace(left.strip(), right.strip()) + "," + right.replace(right.strip(), left.strip())
                yield mutation(first + 1, last, swapped)
