"""What a public header says: its conventions, and its sections of constants, structures and functions with what their
comments say of them. The headers are the one place where this is written; all that other languages, manual pages and
the reference say is made of it."""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from pathlib import Path


@dataclass(frozen=True)
class Variable:
    """A parameter of a function, or a member of a structure."""

    type: str
    name: str


@dataclass(frozen=True)
class Constant:
    name: str
    value: str
    comment: str


@dataclass
class Entry:
    """What stands below one comment: an enumeration, a structure, or functions that are described together."""

    comment: str
    code: str  # as the header has it, without what makes it an export


@dataclass
class Enumeration(Entry):
    name: str
    constants: list[Constant]


@dataclass
class Structure(Entry):
    name: str
    members: list[Variable]


@dataclass(frozen=True)
class Function:
    result: str
    name: str
    parameters: list[Variable]
    code: str


@dataclass
class Functions(Entry):
    functions: list[Function]


@dataclass
class Section:
    title: str
    comment: str = ""
    entries: list[Entry] = field(default_factory=list)

    def all(self, kind: type) -> list:
        return [entry for entry in self.entries if isinstance(entry, kind)]


@dataclass(frozen=True)
class Convention:
    number: int
    title: str
    text: str


@dataclass
class Header:
    name: str
    library: str
    summary: str
    introduction: str
    conventions: list[Convention]
    sections: list[Section]

    def functions(self) -> list[Function]:
        return [
            function for section in self.sections for entry in section.all(Functions) for function in entry.functions
        ]


def read(path: Path) -> Header:
    text = path.read_text(encoding="utf-8")
    opening = unwrapped(re.search(r"/\*\n( \* VELOxd.*?)\*/", text, flags=re.DOTALL)[1])
    introduction, conventions = re.split(r"^CONVENTIONS.*\n\n", opening, flags=re.MULTILINE)
    first, introduction = introduction.split("\n\n", 1)
    library, summary = first.split(": ", 1)
    numbered = re.split(r"^ ?(\d+)\. ", conventions, flags=re.MULTILINE)[1:]
    return Header(
        path.name,
        library,
        summary,
        introduction.strip(),
        [convention(*pair) for pair in zip(numbered[::2], numbered[1::2])],
        sections(text),
    )


def convention(number: str, text: str) -> Convention:
    title, text = text.split(". ", 1)
    return Convention(int(number), title, re.sub(r"^ {4}", "", text, flags=re.MULTILINE).strip())


def unwrapped(comment: str) -> str:
    """The text of a comment: without the asterisks at the beginning of its lines."""
    return re.sub(r"^ \* ?", "", comment.strip("\n"), flags=re.MULTILINE).strip()


# A comment, and what follows it, if that is declared for callers.
PART = re.compile(
    r"/\*(?P<comment>(?:(?!\*/).)*)\*/[ ]*\n"
    r"(?P<code>enum \w+ \{.*?\};|typedef struct .*?\n\} \w+;|(?:VELOXD\w*_API [^;]*;\n?)*)",
    flags=re.DOTALL,
)
TITLE = re.compile(r" ---- (.*?) -{4,}\n?(.*)", flags=re.DOTALL)


def sections(text: str) -> list[Section]:
    found = [Section("")]
    for part in PART.finditer(text, text.index('extern "C"')):
        title = TITLE.fullmatch(part["comment"])
        comment = unwrapped(" * " + part["comment"].strip())
        if title:
            found.append(Section(title[1], unwrapped(title[2])))
        elif part["code"]:
            found[-1].entries.append(entry(comment, part["code"].strip()))
    return [section for section in found if section.entries]


def entry(comment: str, code: str) -> Entry:
    if code.startswith("enum"):
        constants = [Constant(*parts) for parts in re.findall(r"\b(VEL_\w+) = (\d+),?(?: */\* (.*?) \*/)?", code)]
        return Enumeration(comment, code, re.match(r"enum (\w+)", code)[1], constants)
    if code.startswith("typedef"):
        members = [variable(line) for line in re.findall(r"^  ([a-z][^;]*);", code, flags=re.MULTILINE)]
        return Structure(comment, code, re.search(r"\w+(?=;$)", code)[0], members)
    code = re.sub(r"^VELOXD\w*_API ", "", code, flags=re.MULTILINE)
    return Functions(comment, code, [function(line) for line in code.splitlines()])


def function(code: str) -> Function:
    declared, parameters = re.fullmatch(r"(.*)\((.*)\);", code).groups()
    made = variable(declared)
    taken = [] if parameters == "void" else [variable(parameter) for parameter in parameters.split(", ")]
    return Function(made.type, made.name, taken, code)


def variable(code: str) -> Variable:
    kind, name = re.fullmatch(r"(.*[ *])(\w+)", code).groups()
    return Variable(kind.strip(), name)


def paragraphs(comment: str) -> list[tuple[bool, list[str]]]:
    """The lines of each paragraph, and whether they must stay as they are, because they are indented."""
    found: list[tuple[bool, list[str]]] = []
    for block in re.split(r"\n\s*\n", comment):
        before = None
        for line in block.splitlines():
            kept = line.startswith(" ")
            if kept != before:
                found.append((kept, []))
            found[-1][1].append(line)
            before = kept
    return found


def first_sentence(comment: str) -> str:
    text = " ".join(comment.split())
    return re.match(r"(.*?(?<!\bsic)[.:])(?= [A-Z\"`(]|$)|.*", text)[0].rstrip(":") if text else ""
