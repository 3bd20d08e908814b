"""The tables of settings for LabVIEW. Parameters that are pointers are told by what they point to: what has the same
type has the same size in each function."""

from __future__ import annotations

from headers import Functions, Header, Section, Variable, first_sentence

VALUES = {
    "void": "Void",
    "bool": "U8",
    "uint64_t": "U64",
    "int32_t": "I32",
    "double": "DBL",
    "const char*": "Text",
    "char*": "Text[size]",
    "uint64_t*": "U64[GetGroupCount]",
    "int32_t*": "I32[GetChannelData_Points]",
    "const int32_t*": "I32[GetChannelData_Points]",
    "double*": "DBL[GetChannelData_Points]",
    "const double*": "DBL[GetChannelData_Points]",
}


def tables(header: Header) -> str:
    return "".join(table(section) for section in header.sections)


def table(section: Section) -> str:
    rows = "".join(
        f"| `{one.name}` | {VALUES[one.result]} | {', '.join(map(setting, one.parameters))} | {cell(entry.comment)} |\n"
        for entry in section.all(Functions)
        for one in entry.functions
    )
    return f"\n### {section.title}\n\n| Function | Return | Parameters | What it is for |\n|---|---|---|---|\n{rows}"


def setting(parameter: Variable) -> str:
    return f"{parameter.name} {VALUES[parameter.type]}"


def cell(comment: str) -> str:
    return first_sentence(comment).replace("|", "\\|").replace("<", "&lt;")
