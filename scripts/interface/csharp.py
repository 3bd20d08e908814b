"""Declarations for .NET of the functions of a header, with what the header says of each.

File names are in the code page of the system, all other texts in UTF-8. An operator may give fewer values than an array
holds, so that those behind must survive: In as well as Out.
"""

from __future__ import annotations

import re
import textwrap
from html import escape

from headers import Constant, Entry, Enumeration, Function, Functions, Header, Section, Structure, Variable, paragraphs

SIMPLE = {"uint64_t": "ulong", "int64_t": "long", "int32_t": "int", "double": "double"}
RESULTS = {**SIMPLE, "void": "void", "bool": "bool", "const char*": "IntPtr"}
ARRAYS = {
    "const char*": "[MarshalAs(LPUTF8Str)] string",
    "char*": "[In, Out] byte[]",
    "const int32_t*": "[In] int[]",
    "const double*": "[In] double[]",
    "int32_t*": "[In, Out] int[]",
    "double*": "[In, Out] double[]",
    "uint64_t*": "[In, Out] ulong[]",
}
# Blocks are written to arrays of any rank, so that their addresses are passed.
ADDRESSES = dict.fromkeys(
    ("uint64_t*", "const uint64_t*", "VELBlockNames*", "int32_t*", "const int32_t*", "double*", "const double*"),
    "IntPtr",
)
FILE_NAMES = ", BestFitMapping = false, ThrowOnUnmappableChar = true"
INDENT = "    "


def declarations(header: Header, pointers: dict[str, str]) -> str:
    values = {**SIMPLE, **pointers}
    return "".join(section(one, values) for one in header.sections) + "}\n"


def section(one: Section, values: dict[str, str]) -> str:
    text = f"\n{INDENT}// {one.title}\n"
    text += "".join(f"{INDENT}// {line}".rstrip() + "\n" for line in one.comment.splitlines())
    return text + "".join(entry(each, values) for each in one.entries)


def entry(each: Entry, values: dict[str, str]) -> str:
    if isinstance(each, Enumeration):
        return "\n" + "".join(constant(one) for one in each.constants)
    if isinstance(each, Structure):
        return ""  # its address is passed
    assert isinstance(each, Functions)
    return "".join(
        "\n" + function(one, each.comment, values)
        for one in each.functions
        if one.result in RESULTS and all(known(parameter, values) for parameter in one.parameters)
    )


def constant(one: Constant) -> str:
    described = "".join(f"{INDENT}{line}\n" for line in summary(one.comment, set())) if one.comment else ""
    return f"{described}{INDENT}public const int {one.name} = {one.value};\n"


def function(one: Function, comment: str, values: dict[str, str]) -> str:
    names = FILE_NAMES if any(parameter.name == "filename" for parameter in one.parameters) else ""
    lines = [
        *summary(comment, {parameter.name for parameter in one.parameters}),
        f"[DllImport(Library, CallingConvention = Cdecl{names})]",
    ]
    if one.result == "bool":
        lines.append("[return: MarshalAs(I1)]")
    parameters = ", ".join(f"{known(parameter, values)} {parameter.name}" for parameter in one.parameters)
    lines.append(f"public static extern {RESULTS[one.result]} {one.name}({parameters});")
    return "".join(f"{INDENT}{line}\n" for line in lines)


def known(parameter: Variable, values: dict[str, str]) -> str:
    return "[MarshalAs(LPStr)] string" if parameter.name == "filename" else values[parameter.type]


def summary(comment: str, parameters: set[str]) -> list[str]:
    """A documentation comment. Lines that are indented in the header stay lines."""
    lines: list[str] = []
    for kept, block in paragraphs(comment):
        if kept:
            lines += ["<code>", *(escape(line, quote=False) for line in block), "</code>"]
        else:
            text = escape(" ".join(block), quote=False)
            lines += textwrap.wrap(
                re.sub(r"`(\w+)`", lambda name: reference(name[1], parameters), text),
                108,
                break_long_words=False,
                break_on_hyphens=False,
            )
    lines = ["<summary>", *lines, "</summary>"] if len(lines) > 1 else [f"<summary>{lines[0]}</summary>"]
    return [f"/// {line}" for line in lines]


def reference(name: str, parameters: set[str]) -> str:
    return f'<paramref name="{name}"/>' if name in parameters else f"<c>{name}</c>"
