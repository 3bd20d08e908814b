#!/usr/bin/env python3
"""Fails if a document below FOLDER has a link to a file that is not there: links.py FOLDER."""

from __future__ import annotations

import re
import sys
from pathlib import Path

documents = sorted(Path(sys.argv[1]).rglob("*.md"))
dead = [
    f"{document}: {target}"
    for document in documents
    for target in re.findall(r"\]\(([^)#\s]+)[^)]*\)", document.read_text(encoding="utf-8"))
    if "://" not in target and not (document.parent / target).exists()
]
print(*dead, f"{len(dead)} dead links in {len(documents)} documents.", sep="\n")
sys.exit(1 if dead or not documents else 0)
