"""Names that other formats take, each of them once."""

from __future__ import annotations

from typing import Callable


def safe(name: str) -> str:
    """A name for a variable or a node of a tree: no slash, and not empty."""
    return name.replace("/", "_").strip() or "_"


def unused(name: str, is_taken: Callable[[str], bool]) -> str:
    """The name, or the first of ``name_2``, ``name_3`` and so on that is not taken."""
    candidate = name
    number = 2
    while is_taken(candidate):
        candidate = f"{name}_{number}"
        number += 1
    return candidate
