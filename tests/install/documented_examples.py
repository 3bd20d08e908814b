"""Runs the programs of the installed documents as they are printed there, with the commands that are printed there:
documented_examples.py DOCUMENTS LANGUAGE..., with the folder of the package that has them. Each prints what its page
says and renames a group."""

import re
import subprocess
import sys
from pathlib import Path

DOCUMENTS = Path(sys.argv[1])
PAGES = DOCUMENTS / "docs" / "using"

# The page, the name of the program, and how the commands begin that build and run it; what compilers made is run as
# usual.
EXAMPLES = {
    "c": ("c.md", "program.c", ("cc program.c",)),
    "cpp": ("cpp.md", "program.cpp", ("c++ program.cpp",)),
    "csharp": ("csharp.md", "program.cs", ("mcs program.cs", "mono program.exe")),
    "python": ("python.md", "program.py", ("python3 program.py",)),
    "octave": ("matlab.md", "rename_group.m", ("octave-cli --eval",)),
}
RUN_COMPILED = "./program old.oxd new.oxd"


def block(document: Path, language: str) -> str:
    text = document.read_text(encoding="utf-8")
    return re.search(rf"^```{language}\n(.*?)^```$", text, flags=re.DOTALL | re.MULTILINE)[1]


def commands(document: Path, beginnings: tuple[str, ...]) -> list[str]:
    printed = re.findall(r"^    (\S.*)$", document.read_text(encoding="utf-8"), flags=re.MULTILINE)
    return [next(line for line in printed if line.startswith(beginning)) for beginning in beginnings]


def run(command: str) -> str:
    print("$", command, flush=True)
    return subprocess.run(command, shell=True, check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout


def try_example(language: str, shown: str) -> None:
    page, source, beginnings = EXAMPLES[language]
    Path(source).write_text(block(PAGES / page, {"octave": "matlab"}.get(language, language)), encoding="utf-8")
    lines = commands(PAGES / page, beginnings)
    printed = "".join(map(run, [*lines, RUN_COMPILED] if language in ("c", "cpp") else lines))
    if printed != shown:
        sys.exit(f"the program in {page} prints\n{printed}")
    if b"Scan at 25" not in Path("new.oxd").read_bytes():
        sys.exit(f"the program in {page} has not renamed the group")
    Path("new.oxd").unlink()


Path("bindings").symlink_to(DOCUMENTS / "bindings")
Path("program.c").write_text(block(DOCUMENTS / "docs" / "format.md", "c"), encoding="utf-8")
run(commands(PAGES / "c.md", ("cc program.c",))[0])
run("./program old.oxd")
for name in sys.argv[2:]:
    try_example(name, block(PAGES / "README.md", "text"))
print("Run as printed:", *sys.argv[2:])
