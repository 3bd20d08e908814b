#!/usr/bin/env python3
"""Copies documents to where packages install them: copy_documents.py SOURCE FOLDER NAME...

Each NAME is a file or a folder below SOURCE. A link in a document that leads to none of the copied files becomes plain
text, so that what is installed has no dead links.
"""

from __future__ import annotations

import re
import shutil
import sys
from pathlib import Path

LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s]+)\)")


def files_of(source: Path, names: list[str]) -> set[Path]:
    found: set[Path] = set()
    for name in names:
        path = source / name
        found |= {file for file in path.rglob("*") if file.is_file()} if path.is_dir() else {path}
    return {file.resolve() for file in found}


def without_dead_links(document: Path, copied: set[Path]) -> str:
    def replaced(link: re.Match[str]) -> str:
        image, text, target = link.groups()
        name = target.split("#")[0]
        if "://" in target or not name:
            return link[0]
        path = (document.parent / name).resolve()
        if not path.exists():
            sys.exit(f"{document}: the link to {target} leads nowhere")
        leads = path in copied or any(path in file.parents for file in copied)
        return link[0] if leads else "" if image else text

    return LINK.sub(replaced, document.read_text(encoding="utf-8"))


def main() -> None:
    source, folder = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    shutil.rmtree(folder, ignore_errors=True)
    copied = files_of(source, sys.argv[3:])
    for file in sorted(copied):
        target = folder / file.relative_to(source)
        target.parent.mkdir(parents=True, exist_ok=True)
        if file.suffix == ".md":
            target.write_text(without_dead_links(file, copied), encoding="utf-8")
        else:
            shutil.copyfile(file, target)


if __name__ == "__main__":
    main()
