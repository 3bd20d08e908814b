"""What a header says as Markdown: for the C reference on the web, with a heading for each function and links between
them, and for manual pages, which have neither."""

from __future__ import annotations

import re
import textwrap

from headers import Convention, Entry, Functions, Header, paragraphs


class Page:
    """The text of a header. With `linked`, each function has a heading, and where it is named it is a link to that."""

    def __init__(self, header: Header, linked: bool) -> None:
        self.header = header
        self.linked = linked
        self.anchors = {one.name: one.name.lower() for one in header.functions()}
        self.anchors |= {f"convention {one.number}": anchor(f"{one.number}-{one.title}") for one in header.conventions}
        self.names = re.compile("|".join(rf"\b{name}\b" for name in sorted(self.anchors, key=len, reverse=True)))

    def conventions(self) -> str:
        return "".join(self.convention(one) for one in self.header.conventions)

    def convention(self, one: Convention) -> str:
        return f"### {one.number}. {one.title}\n\n{self.prose(one.text)}"

    def functions(self) -> str:
        return "".join(
            f"## {section.title}\n\n{self.prose(section.comment)}" + "".join(map(self.entry, section.entries))
            for section in self.header.sections
        )

    def entry(self, entry: Entry) -> str:
        if not isinstance(entry, Functions):
            return self.heading(entry.name) + code(entry.code) + self.prose(entry.comment)
        if not self.linked:
            return code(entry.code) + self.prose(entry.comment)
        first, *others = entry.functions
        described = self.heading(first.name) + code(first.code) + self.prose(entry.comment)
        return described + "".join(
            self.heading(one.name) + code(one.code) + f"Described with [{first.name}](#{self.anchors[first.name]}).\n\n"
            for one in others
        )

    def heading(self, name: str) -> str:
        return f"### {name}\n\n" if self.linked else ""

    def prose(self, comment: str) -> str:
        return "".join(
            code(textwrap.dedent("\n".join(lines)), "text") if kept else self.paragraph(" ".join(lines))
            for kept, lines in paragraphs(comment)
        )

    def paragraph(self, text: str) -> str:
        # What a pair of backticks encloses is code already.
        parts = [part if part.startswith("`") else self.plain(part) for part in re.split(r"(`[^`]*`)", text)]
        return "".join(parts) + "\n\n"

    def plain(self, text: str) -> str:
        if not self.linked:
            return escaped(text)
        parts = re.split(f"({self.names.pattern})", text)
        return "".join(f"[{part}](#{self.anchors[part]})" if part in self.anchors else escaped(part) for part in parts)


def escaped(text: str) -> str:
    return re.sub(r"[*_<\\]", lambda found: "\\" + found[0], text)


def anchor(title: str) -> str:
    return re.sub(r"[^\w-]", "", title.lower().replace(" ", "-"))


def code(text: str, language: str = "c") -> str:
    return f"```{language}\n{text}\n```\n\n"
