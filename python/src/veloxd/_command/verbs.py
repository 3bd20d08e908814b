"""The verbs of the command ``veloxd``, their options and their help."""

from __future__ import annotations

import argparse
import os
import sys
from collections.abc import Callable
from typing import Any

import pandas as pd

from .. import __version__, archive
from ..archive._folders import walk
from . import complain

_EXIT_CODES = """Exit codes: 0 done, 1 nothing was found, or some files failed, 2 wrong usage, 3 cannot open, 4 damaged,
5 cannot write, 70 the command failed, 130 interrupted by Ctrl-C."""

_LANGUAGE = """A query compares names with numbers and their units, texts or dates: Setpoint < 10 nN and
channel = 'Topography' and date > 2026-05. It has < <= > >= = != and ~ (contains), in (..., ...), and, or, not, and
parentheses. Names are path, date, size, id, version, errors, warnings, notes, error, channel, group, unit, points,
lines, bits, width, height, and those of items of information; one with blanks is in double quotes."""

_OPERATORS = ("mean", "line", "parabola")
_Verbs = Any  # what argparse gives has no public name


def run(arguments: list[str] | None = None) -> int:
    """Runs a verb; its exit code."""
    options = _parser().parse_args(arguments)
    work: Callable[[argparse.Namespace], int] = options.work
    return work(options)


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="veloxd", description="Finds and processes the files of an archive.", epilog=_EXIT_CODES
    )
    parser.add_argument("-V", "--version", action="version", version=f"veloxd {__version__}")
    verbs = parser.add_subparsers(metavar="COMMAND", required=True)
    _add_index(verbs)
    _add_find(verbs)
    _add_batch(verbs)
    _add_stats(verbs)
    _add_gallery(verbs)
    return parser


def _verb(verbs: _Verbs, name: str, text: str, work: Callable[[argparse.Namespace], int]) -> argparse.ArgumentParser:
    verb: argparse.ArgumentParser = verbs.add_parser(name, help=text, description=text + ".", epilog=_LANGUAGE)
    verb.add_argument(
        "-C",
        "--catalogue",
        metavar="FOLDER",
        default=os.environ.get("VELOXD_CATALOGUE", "veloxd-catalogue"),
        help="the catalogue; by default VELOXD_CATALOGUE, else veloxd-catalogue in this folder",
    )
    verb.set_defaults(work=work)
    return verb


def _add_index(verbs: _Verbs) -> None:
    verb = _verb(verbs, "index", "Make a catalogue of all files in folders, or bring it up to date", _index)
    verb.add_argument("folders", metavar="DIR", nargs="*", help="more folders; those of before are kept")


def _index(options: argparse.Namespace) -> int:
    if not options.folders and not os.path.isdir(options.catalogue):
        complain(f"{options.catalogue}: there is no catalogue, so DIR is required (see veloxd index --help)")
        return 2
    report = archive.index(options.catalogue, *options.folders).report
    assert report is not None
    print(
        f"{report.files} files: {report.read} read, {report.moved} moved, {report.removed} removed, "
        f"{report.unreadable} cannot be read"
    )
    return 0


def _add_find(verbs: _Verbs) -> None:
    verb = _verb(verbs, "find", "Find files by what their headers hold", _find)
    verb.add_argument("query", metavar="EXPRESSION", help="what the files have")
    form = verb.add_mutually_exclusive_group()
    form.add_argument("--json", action="store_true", help="print a line of JSON for each file")
    form.add_argument("--paths", action="store_true", help="print paths alone")


def _find(options: argparse.Namespace) -> int:
    found = archive.Catalogue(options.catalogue).find(options.query)
    if options.json:
        _print_json(found.frame)
    elif options.paths:
        sys.stdout.writelines(path + "\n" for path in found.paths)
    else:
        rows = found.frame[["modified", "size", "path"]].values.tolist()
        sys.stdout.writelines(f"{time:%Y-%m-%d %H:%M} {size:>12} {path}\n" for time, size, path in rows)
    return 0 if len(found) else 1


def _print_json(frame: pd.DataFrame) -> None:
    if len(frame):
        text = frame.to_json(orient="records", lines=True, date_format="iso", force_ascii=False, double_precision=15)
        sys.stdout.write(text)


def _add_files(verb: argparse.ArgumentParser) -> None:
    verb.add_argument("files", metavar="FILE", nargs="*", help="files, and folders that are walked")
    verb.add_argument("--find", metavar="EXPRESSION", help="files that a query of the catalogue finds")
    verb.add_argument("--scheduler", metavar="ADDRESS", help="of a Dask cluster; by default, processes here")
    verb.add_argument("--jobs", metavar="N", type=_positive, help="processes here; by default, one for each processor")
    verb.add_argument("--resume", action="store_true", help="go on with what began in OUT")


def _add_step(verb: argparse.ArgumentParser) -> None:
    _add_files(verb)
    verb.add_argument("--op", choices=_OPERATORS, help="correct each line")
    verb.add_argument("-g", "--group", metavar="NAME", help="groups of this name only")
    verb.add_argument("-c", "--channel", metavar="NAME", help="channels of this name; all images if not given")


def _positive(text: str) -> int:
    number = int(text)
    if number < 1:
        raise argparse.ArgumentTypeError("must be at least 1")
    return number


def _chosen(options: argparse.Namespace) -> list[str]:
    paths = [seen.path for seen in walk(options.files)]
    if options.find is not None:
        paths += archive.Catalogue(options.catalogue).find(options.find).paths
    return list(dict.fromkeys(map(os.path.realpath, paths)))


def _cluster(options: argparse.Namespace) -> dict[str, Any]:
    return {"resume": options.resume, "scheduler": options.scheduler, "workers": options.jobs}


def _selection(options: argparse.Namespace) -> archive.Selection:
    return archive.Selection(options.group, options.channel)


def _outcome(done: pd.DataFrame, found: int) -> int:
    failed = done[done["error"].notna()]
    for path, error in failed[["path", "error"]].values.tolist():
        complain(f"{path}: {error}")
    if not found:
        complain("there are no such files")
    return 1 if len(failed) or not found else 0


def _add_batch(verbs: _Verbs) -> None:
    text = "Correct channels of many files and export them"
    steps = verbs.add_parser("batch", help=text, description=text + ".").add_subparsers(metavar="STEP", required=True)
    for step, help_text in (("level", "Correct lines, and export"), ("export", "Export channels as they are")):
        verb = _verb(steps, step, help_text, _batch)
        _add_step(verb)
        verb.set_defaults(op="line" if step == "level" else None)
        verb.add_argument("--export", choices=("png", "tiff", "netcdf"), default="png", help="what is written")
        verb.add_argument("-o", "--output", metavar="OUT", required=True, help="a folder that is new or empty")


def _batch(options: argparse.Namespace) -> int:
    paths = _chosen(options)
    root = os.path.commonpath([os.path.dirname(path) for path in paths]) if paths else ""
    folder = os.path.realpath(options.output)
    step = archive.Export(options.export, folder, root, options.op, _selection(options))
    return _outcome(archive.map(step, paths, folder, **_cluster(options)), len(paths))


def _add_stats(verbs: _Verbs) -> None:
    verb = _verb(verbs, "stats", "Print height parameters of channels after ISO 25178-2", _stats)
    _add_step(verb)
    verb.add_argument("--json", action="store_true", help="print a line of JSON for each channel, not a table")
    verb.add_argument("-o", "--output", metavar="OUT", help="a folder, new or empty, for the results as Parquet")


def _stats(options: argparse.Namespace) -> int:
    paths = _chosen(options)
    step = archive.Statistics(options.op, _selection(options))
    done = archive.map(step, paths, options.output, **_cluster(options))
    rows = done[done["error"].isna()].drop(columns="error")
    if options.json:
        _print_json(rows)
    else:
        rows.to_csv(sys.stdout, index=False)
    return _outcome(done, len(paths))


def _add_gallery(verbs: _Verbs) -> None:
    verb = _verb(verbs, "gallery", "Make pages with thumbnails of files, for a browser", _gallery)
    _add_files(verb)
    verb.add_argument("--op", choices=_OPERATORS, default="line", help="correct each line; line by default")
    verb.add_argument("-o", "--output", metavar="OUT", required=True, help="a folder that is new or empty")


def _gallery(options: argparse.Namespace) -> int:
    paths = _chosen(options)
    done = archive.gallery(paths, options.output, operator=options.op, **_cluster(options))
    return _outcome(done, len(paths))
