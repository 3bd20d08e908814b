"""Prints docs/python/reference.md: all public names with their docstrings. scripts/python runs it, a test compares."""

from __future__ import annotations

import inspect
import re
from collections.abc import Iterable, Iterator
from typing import Any

import veloxd
import veloxd.curves
import veloxd.xarray

INTRODUCTION = """# Reference

This page is made of the docstrings of the package by `scripts/python docs`.

What holds everywhere:

- Arrays of samples have the shape (lines, points). Real values are in the unit of their signal axis, positions in that
  of their axis. Neither is converted to another unit, except by `veloxd.curves`.
- Whatever belongs to a closed file raises `ClosedError`, what was deleted `DeletedError`, and what was opened by the
  parent of this process `ForkError`. Changes of a file that was opened with mode `"r"` raise `ReadOnlyError`.
- Wrong arguments raise `TypeError`, `ValueError` or `IndexError`, as in NumPy, and change nothing.
"""

FUNCTIONS = (veloxd.open, veloxd.create, veloxd.xarray.from_xarray)
CLASSES = (
    veloxd.File,
    veloxd.Group,
    veloxd.Channel,
    veloxd.Axis,
    veloxd.PointAxis,
    veloxd.Information,
    veloxd.Quantity,
    veloxd.SaveReport,
)

_SECTION = re.compile(r"^(\w+)\n-+\n", re.MULTILINE)
_ROLE = re.compile(r":\w+:`([^`]*)`")


def text(docstring: str) -> str:
    """A docstring as Markdown: its sections become lists, and its examples programs."""
    parts = _SECTION.split(_ROLE.sub(r"`\1`", docstring).replace("``", "`"))
    shown = [parts[0].strip()]
    for title, body in zip(parts[1::2], parts[2::2]):
        shown.append(f"```pycon\n{body.strip()}\n```" if title == "Examples" else f"{title}:\n\n{entries(body)}")
    return "\n\n".join(shown)


def entries(body: str) -> str:
    """The entries of a section: each a name at the margin, with its description below, further in."""
    shown: list[str] = []
    for line in body.strip().splitlines():
        if line.startswith(" "):
            shown[-1] += " " + line.strip()
        elif line:
            shown.append(f"- `{line}`:")
    return "\n".join(shown).replace(" : ", "`, `")


def signature(function: Any) -> str:
    """What a function takes, without the types of its arguments, which its description tells."""
    parameters = [one.replace(annotation=one.empty) for one in inspect.signature(function).parameters.values()]
    shown = inspect.Signature([one for one in parameters if one.name not in ("self", "cls")])
    return str(shown).replace("Ellipsis", "...")


def members(kind: type) -> Iterator[str]:
    """The public properties and methods of a class, in the order of its source."""
    for name, member in vars(kind).items():
        function = member.fget if isinstance(member, property) else getattr(member, "__func__", member)
        is_field = name.startswith("_") or not inspect.isfunction(function)
        if is_field:
            continue
        if isinstance(member, property):
            kept = "" if member.fset else ", read-only"
            yield f"### `{kind.__name__}.{name}`\n\nProperty{kept}. {text(inspect.getdoc(member) or '')}"
        else:
            yield f"### `{kind.__name__}.{name}{signature(function)}`\n\n{text(inspect.getdoc(function) or '')}"


def errors() -> Iterator[str]:
    """A row for each error, with Python's own kind of it."""
    yield "## Errors\n"
    yield "All errors are kinds of `veloxd.Error` and say in one sentence what failed. `error.details` is the full text"
    yield "of the library, with the place in its source code.\n\n| Error | Also | Meaning |\n|---|---|---|"
    for name in veloxd.errors.__all__:
        kind = getattr(veloxd, name)
        also = ", ".join(f"`{base.__name__}`" for base in kind.__bases__ if base is not Exception)
        yield f"| `{name}` | {also or '`Exception`'} | {text(inspect.getdoc(kind)).splitlines()[0]} |"


def described(module: str, functions: Iterable[Any], classes: Iterable[type]) -> Iterator[str]:
    """The functions and classes of a module."""
    for function in functions:
        name = f"{module}.{function.__name__}"
        yield f"### `{name}{signature(function)}`\n\n{text(inspect.getdoc(function) or '')}"
    for kind in classes:
        yield f"## `{module}.{kind.__name__}`\n\n{text(inspect.getdoc(kind) or '')}"
        yield from members(kind)


def curves() -> Iterator[str]:
    """The module of force curves."""
    public = [getattr(veloxd.curves, name) for name in veloxd.curves.__all__]
    yield f"## `veloxd.curves`\n\n{text(inspect.getdoc(veloxd.curves) or '')}"
    yield from described("veloxd.curves", filter(inspect.isfunction, public), filter(inspect.isclass, public))


def page() -> str:
    """The whole page."""
    parts = [INTRODUCTION.strip(), "## Functions"]
    parts.extend(described("veloxd", FUNCTIONS, CLASSES))
    accessor = veloxd.xarray.OxdAccessor
    parts.append(f"## The accessor `oxd` of `xarray.DataArray`\n\n{text(inspect.getdoc(accessor) or '')}")
    parts.extend(member.replace("OxdAccessor.", "array.oxd.") for member in members(accessor))
    parts.extend(curves())
    parts.append("\n".join(errors()))
    parts.append(
        f"## Constants\n\n- `veloxd.RAW_MISSING`: {veloxd.RAW_MISSING}, what stands among raw samples for a point that"
        " was never acquired.\n- `veloxd.__version__`: the version of the package, which is that of the library."
    )
    return "\n\n".join(parts) + "\n"


if __name__ == "__main__":
    print(page(), end="")
