"""Writes what Python's tools and entry points need to know of an installed package into a folder:

    python3 dist_info.py pyproject.toml VERSION FOLDER

It says what pyproject.toml says, but without the scripts, which Debian packages of programs bring."""

import sys
import tomllib
from pathlib import Path


def metadata(project, version):
    yield from ("Metadata-Version: 2.1", f"Name: {project['name']}", f"Version: {version}")
    yield from (f"Summary: {project['description']}", f"Requires-Python: {project['requires-python']}")
    yield from (f"Classifier: {classifier}" for classifier in project["classifiers"])
    yield from (f"Requires-Dist: {requirement}" for requirement in project["dependencies"])
    for extra, requirements in project["optional-dependencies"].items():
        yield f"Provides-Extra: {extra}"
        yield from (f'Requires-Dist: {requirement}; extra == "{extra}"' for requirement in requirements)


def entry_points(project):
    for group, entries in project["entry-points"].items():
        yield f"[{group}]"
        yield from (f"{name} = {target}" for name, target in entries.items())


def main(pyproject, version, folder):
    project = tomllib.loads(Path(pyproject).read_text(encoding="utf-8"))["project"]
    files = {"METADATA": metadata(project, version), "entry_points.txt": entry_points(project), "INSTALLER": ["debian"]}
    Path(folder).mkdir(parents=True, exist_ok=True)
    for name, lines in files.items():
        (Path(folder) / name).write_text("".join(f"{line}\n" for line in lines), encoding="utf-8")


main(*sys.argv[1:])
