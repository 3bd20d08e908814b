"""Fails if a block of code in a document below FOLDER has no language, or is not of the one that it names, as far as that
can be told without running it: check_blocks.py FOLDER."""

import json
import re
import subprocess
import sys
import tomllib
from pathlib import Path

BLOCK = re.compile(r"^```([^\n]*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def check_shell(code):
    found = subprocess.run(["bash", "-n"], input=code, stderr=subprocess.PIPE, text=True)
    if found.returncode != 0:
        raise ValueError(found.stderr.strip())


def check_python(code):
    if not code.startswith(">>>"):  # what the doctests run
        compile(code, "block", "exec")


CHECKS = {"json": json.loads, "toml": tomllib.loads, "sh": check_shell, "python": check_python}


def faults_of(document):
    for language, code in BLOCK.findall(document.read_text(encoding="utf-8")):
        begin = code.split("\n")[0]
        if not language:
            yield f"{document}: no language: {begin}"
            continue
        try:
            CHECKS.get(language, str)(code)
        except (SyntaxError, ValueError) as error:
            yield f"{document}: no {language}: {begin}: {error}"


documents = sorted(Path(sys.argv[1]).rglob("*.md"))
faults = [fault for document in documents for fault in faults_of(document)]
print(*faults, f"{len(faults)} faults in the code of {len(documents)} documents.", sep="\n")
sys.exit(1 if faults or not documents else 0)
