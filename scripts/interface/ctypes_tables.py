"""Declarations for Python's ctypes, which takes addresses of arrays and structures as numbers, and what a header says
of each function."""

from __future__ import annotations

from headers import Enumeration, Function, Functions, Header, Section, Structure

VALUES = {
    "void": "None",
    "bool": "c_bool",
    "uint64_t": "c_uint64",
    "int64_t": "c_int64",
    "int32_t": "c_int32",
    "size_t": "c_size_t",
    "double": "c_double",
    "const char*": "c_char_p",
    "char*": "c_char_p",
}


def declarations(header: Header) -> str:
    constants = "".join(
        f"{constant.name} = {constant.value}\n"
        for section in header.sections
        for enumeration in section.all(Enumeration)
        for constant in enumeration.constants
    )
    structures = "".join(structure(one) for section in header.sections for one in section.all(Structure))
    functions = "".join(section(one) for one in header.sections if one.all(Functions))
    described = "".join(f'    "{one.name}": """{text}""",\n' for one, text in comments(header))
    return (
        "\n"
        + (f"{constants}\n\n" if constants else "")
        + structures
        + (
            f"FUNCTIONS: dict[str, tuple[Any, tuple[Any, ...]]] = {{\n{functions}}}\n\n"
            f"DESCRIPTIONS: dict[str, str] = {{\n{described}}}\n"
        )
    )


def structure(one: Structure) -> str:
    members = "".join(f'        ("{member.name}", {c_type(member.type)}),\n' for member in one.members)
    return f"class {one.name}(Structure):\n    _fields_ = (\n{members}    )\n\n\n"


def section(one: Section) -> str:
    lines = [f"    # {one.title}\n"]
    lines += [function(each) for entry in one.all(Functions) for each in entry.functions]
    return "".join(lines)


def function(one: Function) -> str:
    types = [c_type(parameter.type) for parameter in one.parameters]
    listed = ", ".join(types) + ("," if len(types) == 1 else "")
    return f'    "{one.name}": ({c_type(one.result)}, ({listed})),\n'


def c_type(name: str) -> str:
    return VALUES.get(name) or ("c_void_p" if name.endswith("*") else VALUES[name])


def comments(header: Header) -> list[tuple[Function, str]]:
    return [
        (one, f"{one.code}\n\n{entry.comment}\n")
        for section in header.sections
        for entry in section.all(Functions)
        for one in entry.functions
    ]
