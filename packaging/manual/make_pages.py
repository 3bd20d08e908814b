#!/usr/bin/env python3
"""Makes the manual pages: make_pages.py OXD SOURCE VERSION FOLDER.

Nothing is written for them alone. Pages of the tool are what its help says and what docs/oxd.md adds for its readers on
the web; oxd-format(5) is docs/format.md; veloxd(3) and its like are what the headers say of each function. Markdown
becomes a page by the program lowdown.
"""

from __future__ import annotations

import re
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts" / "interface"))

import headers  # noqa: E402
import markdown  # noqa: E402


@dataclass(frozen=True)
class Library:
    page: str
    header: str
    errors: str
    example: str  # the document in docs/using that has it
    environment: str = ""


LIBRARIES = (
    Library(
        "veloxd",
        "VELOxdDll.h",
        "See convention 2: **VELHasLastError** tells of a failure, and **VELGetLastError** gives its text.",
        "c.md",
        "# ENVIRONMENT\n\n**VELOXD\\_LOG**\n\n: see convention 15\n\n",
    ),
    Library(
        "veloxd_blocks",
        "veloxd_blocks.h",
        "See convention 1: what a function returns tells whether it has failed.",
        "c-blocks.md",
    ),
    Library(
        "veloxd_curves",
        "veloxd_curves.h",
        "See conventions 2 and 4: a result has a reason, **VELCurveReasonText** the phrase for it.",
        "c-curves.md",
    ),
)


def sections(text: str, level: int = 2) -> list[tuple[str, str]]:
    """What stands ahead of the first heading is under the name ""."""
    parts = re.split(rf"^{'#' * level} (.*)$", text, flags=re.MULTILINE)
    return [("", parts[0]), *zip(parts[1::2], parts[2::2])]


def without_links(text: str) -> str:
    """A page is read where no link can be followed, and no picture seen."""
    text = re.sub(r"^!\[[^\]]*\]\([^)]*\)$", "", text, flags=re.MULTILINE)
    return re.sub(r"\[([^\]]+)\]\([^)\s]*\)", r"\1", text)


def examples(text: str) -> str:
    return "\n".join(re.findall(r"^```sh\n(.*?)^```$", text, flags=re.MULTILINE | re.DOTALL))


def as_block(text: str) -> str:
    return "".join(f"    {line}\n" for line in text.strip("\n").splitlines())


class Help:
    """The help text of a command, taken apart."""

    def __init__(self, text: str) -> None:
        self.summary = text.splitlines()[0]
        self.usage = "\n".join(re.findall(r"^(?:Usage:|      ) (oxd.*)$", text, flags=re.MULTILINE))
        self.notes = ""
        self.options: list[tuple[str, str]] = []
        for part in text.split("\n\n")[1:]:
            head = part.splitlines()[0]
            if head in ("Positionals:", "Options:"):
                self.options += self.entries(part.splitlines()[1:])
            elif head != "Commands:" and not head.startswith("Exit codes:"):
                self.notes += as_block(part) + "\n"

    @staticmethod
    def entries(lines: list[str]) -> list[tuple[str, str]]:
        found: list[tuple[str, str]] = []
        for line in lines:
            start = re.match(r"^  (\S.*?)(?:  +(\S.*))?$", line)
            if start:
                found.append((start[1], start[2] or ""))
            else:
                name, meaning = found[-1]
                found[-1] = (name, f"{meaning} {line.strip()}".strip())
        return found

    def option_list(self) -> str:
        return "\n".join(
            f"**{name.replace('*', '')}**\n\n: {meaning or 'see above'}\n" for name, meaning in self.options
        )


class Manual:
    def __init__(self, tool: str, source: Path, version: str, folder: Path) -> None:
        self.tool, self.docs, self.headers, self.version, self.folder = (
            tool,
            source / "docs",
            source / "include",
            version,
            folder,
        )
        self.web = (self.docs / "oxd.md").read_text(encoding="utf-8")
        self.codes = re.search(r"^\| Exit code .*?\n\n", self.web, flags=re.MULTILINE | re.DOTALL)[0]

    def help_of(self, *words: str) -> str:
        return subprocess.run([self.tool, "help", *words], check=True, capture_output=True, encoding="utf-8").stdout

    def commands(self) -> list[str]:
        listed = self.help_of().split("\nCommands:\n")[1].split("\n\n")[0]
        return re.findall(r"^  ([a-z-]+)", listed, flags=re.MULTILINE)

    def write(self, name: str, section: int, markdown: str) -> None:
        words = [
            "lowdown",
            "-s",
            "-Tman",
            "--parse-no-metadata",
            "--parse-no-intraemph",
            "--parse-no-super",
            "--out-no-smarty",
            "-m",
            f"title:{name}",
            "-m",
            f"section:{section}",
        ]
        words += ["-m", f"source:VELOxd {self.version}", "-m", "date:"]
        page = subprocess.run(words, input=markdown, check=True, capture_output=True, encoding="utf-8").stdout
        page = re.sub(r"^\.SH\n", ".SH ", page, flags=re.MULTILINE)  # what lists pages reads a heading's own line only
        (self.folder / f"{name}.{section}").write_text(page, encoding="utf-8")

    def command_page(self, command: str) -> None:
        about = Help(self.help_of(command))
        # Of the headings that name the command, such as "`oxd get` and `oxd set`".
        described = "".join(text for head, text in sections(self.web) if f"`oxd {command}`" in head)
        shown = examples(described) or about.usage
        summary = about.summary[0].lower() + about.summary[1:].rstrip(".")
        self.write(
            f"oxd-{command}",
            1,
            f"# NAME\n\noxd-{command} - {summary}\n\n# SYNOPSIS\n\n{as_block(about.usage)}\n"
            f"# DESCRIPTION\n\n{without_links(described)}\n\n{about.notes}\n# OPTIONS\n\n{about.option_list()}\n"
            f"# EXIT STATUS\n\n{self.codes}\n# EXAMPLES\n\n{as_block(shown)}\n"
            "# SEE ALSO\n\n**oxd**(1), **oxd-format**(5)\n",
        )

    def tool_page(self) -> None:
        about = Help(self.help_of())
        head, *others = sections(self.web)
        parts = [text for name, text in others if "`oxd " not in name]
        names = [name for name, _ in others if "`oxd " not in name]
        general = "".join(f"## {name.replace('`', '')}\n{text}" for name, text in zip(names, parts))
        described = head[1].split("\n", 1)[1].replace(self.codes, "")
        pages = ", ".join(f"**oxd-{command}**(1)" for command in self.commands())
        self.write(
            "oxd",
            1,
            "# NAME\n\noxd - show, correct and make .oxd measurement files\n\n"
            f"# SYNOPSIS\n\n{as_block(about.usage)}\n# DESCRIPTION\n\n{without_links(described)}\n{without_links(general)}\n"
            f"# OPTIONS\n\n{about.option_list()}\n# EXIT STATUS\n\n{self.codes}\n"
            f"# EXAMPLES\n\n{as_block(examples(self.web))}\n# SEE ALSO\n\n{pages}, **oxd-format**(5), **veloxd**(3)\n",
        )

    def format_page(self) -> None:
        text = (self.docs / "format.md").read_text(encoding="utf-8")
        # Every page has these two, at its end.
        last = {"A whole file": "EXAMPLES", "Limits of a reader": "ERRORS", "What a reader tolerates": "ERRORS"}
        parts = sections(without_links(text.split("\n", 1)[1]))
        body = "".join(f"\n# {name}\n{part}" if name else part for name, part in parts if name not in last)
        for heading in ("ERRORS", "EXAMPLES"):
            body += f"\n# {heading}\n" + "".join(
                f"\n## {name}\n{part}" for name, part in parts if last.get(name) == heading
            )
        self.write(
            "oxd-format",
            5,
            f"# NAME\n\noxd-format - the .oxd files of scanning probe microscopes\n\n# DESCRIPTION\n{body}\n"
            "# SEE ALSO\n\n**oxd**(1), **veloxd**(3)\n",
        )

    def library_page(self, library: Library) -> None:
        header = headers.read(self.headers / library.header)
        page = markdown.Page(header, linked=False)
        conventions = page.conventions().replace("### ", "## ")  # a manual page has two levels of headings
        example = (self.docs / "using" / library.example).read_text(encoding="utf-8")
        program = re.search(r"```c\n(.*?)```", example, flags=re.DOTALL)[1]
        others = ", ".join(
            f"**{other.page.replace('_', chr(92) + '_')}**(3)" for other in LIBRARIES if other != library
        )
        self.write(
            library.page,
            3,
            f"# NAME\n\n{library.page} - {header.summary.rstrip('.')}\n\n"
            f"# SYNOPSIS\n\n    #include <{header.name}>\n\n    cc ... $(pkg-config --cflags --libs {header.library})\n\n"
            f"# DESCRIPTION\n\n{page.prose(header.introduction)}# CONVENTIONS\n\n{conventions}"
            f"# FUNCTIONS\n\n{page.functions()}# ERRORS\n\n{library.errors}\n\n{library.environment}"
            f"# EXAMPLES\n\n{as_block(program)}\n# SEE ALSO\n\n**oxd**(1), **oxd-format**(5), {others}\n",
        )

    def write_all(self) -> None:
        self.folder.mkdir(parents=True, exist_ok=True)
        self.tool_page()
        for command in self.commands():
            self.command_page(command)
        self.format_page()
        for library in LIBRARIES:
            self.library_page(library)


if __name__ == "__main__":
    Manual(sys.argv[1], Path(sys.argv[2]), sys.argv[3], Path(sys.argv[4])).write_all()
