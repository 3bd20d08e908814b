"""Work on many files, on a cluster of processes."""

from __future__ import annotations

import contextlib
import itertools
import json
import logging
import os
from collections.abc import Callable, Iterable, Iterator
from pathlib import Path
from typing import Any

import pandas as pd
from distributed import Client, Future, LocalCluster, as_completed

from ..errors import Error
from ._journal import Entry, Journal, rows_of
from ._progress import Progress
from .catalogue import Found, catalogue_paths

__all__ = ["map"]

_PER_THREAD = 4  # tasks that are with the cluster at a time: enough to keep it busy

Work = Callable[[str], Any]


def map(
    function: Work,
    files: Found | Iterable[str | os.PathLike[str]],
    output: str | os.PathLike[str] | None = None,
    *,
    resume: bool = False,
    scheduler: str | None = None,
    workers: int | None = None,
) -> pd.DataFrame:
    """Calls a function with the path of each file, each in a task of its own, and collects what it returns.

    A task that fails is tried once more. A file that fails again is a row with the error, and stops no other.

    Parameters
    ----------
    function : callable
        Takes a path and returns a row, as a dict of numbers and texts, several in a list, or nothing. It must be one
        that can be sent to another process, and writes files in one step.
    files : iterable of path, or Found
        The same path counts once.
    output : path, optional
        A folder for the table ``results.parquet`` and for the journal by which the batch can be resumed. It must be
        empty or new, unless the batch resumes, and no file may be in it.
    resume : bool
        Goes on with what began in ``output``: files that are done are left out, and those that failed tried again.
    scheduler : str, optional
        The address of a Dask cluster. By default one of processes on this machine is started for the time of the batch.
    workers : int, optional
        How many processes that has; by default, as many as there are processors.

    Returns
    -------
    pandas.DataFrame
        The rows in the order of the files, with the columns ``path`` and ``error`` before those of the function.

    Raises
    ------
    ExistingFileError
        if ``output`` is not empty, and the batch does not resume.
    Error
        if a file is in ``output``, or the batch that began there had another function.
    """
    paths = list(dict.fromkeys(os.path.realpath(path) for path in catalogue_paths(files)))
    if output is None:
        entries: dict[str, Entry] = {}
        _run(function, paths, entries.update, scheduler, workers)
        rows = [row for path in paths for row in rows_of(entries[path])]
    else:
        rows = _noted(function, paths, Path(os.path.realpath(output)), resume, scheduler, workers)
    return pd.DataFrame(rows) if rows else pd.DataFrame(columns=["path", "error"])


def _noted(
    function: Work, paths: list[str], folder: Path, resume: bool, scheduler: str | None, workers: int | None
) -> list[Entry]:
    inside = [path for path in paths if folder in Path(path).parents]
    if inside:
        raise Error(f"{inside[0]}: is a file to read in the folder to write to.")
    with Journal(folder, _name(function), resume) as journal:
        missing = [path for path in paths if "rows" not in journal.entries.get(path, ())]

        def note(done: dict[str, Entry]) -> None:
            for entry in done.values():
                journal.add(entry)

        _run(function, missing, note, scheduler, workers)
        return journal.finish(paths)


def _name(function: Work) -> str:
    name = getattr(function, "__qualname__", None)
    return f"{function.__module__}.{name}" if name else repr(function)


def _run(
    function: Work,
    paths: list[str],
    note: Callable[[dict[str, Entry]], None],
    scheduler: str | None,
    workers: int | None,
) -> None:
    if not paths:
        return
    progress = Progress(len(paths))
    with _connected(scheduler, workers, len(paths)) as client:
        try:
            for path, entry in _results(client, function, paths):
                note({path: entry})
                progress.advance()
        finally:
            progress.close()


@contextlib.contextmanager
def _connected(scheduler: str | None, workers: int | None, files: int) -> Iterator[Client]:
    if scheduler is not None:
        with Client(scheduler) as client:
            yield client
        return
    count = min(workers or os.cpu_count() or 1, files)
    # What fails becomes a result; that the workers tell of it, too, with a traceback, helps nobody.
    quiet = {"silence_logs": logging.CRITICAL, "dashboard_address": None}
    local = LocalCluster(n_workers=count, threads_per_worker=1, processes=True, **quiet)
    with local as cluster, Client(cluster) as client:
        yield client


def _results(client: Client, function: Work, paths: list[str]) -> Iterator[tuple[str, Entry]]:
    """What becomes of each file, in the order in which they are done. The cluster never has more than a few tasks."""
    path_of: dict[Any, str] = {}
    waiting = iter(paths)
    most = _PER_THREAD * max(1, sum(client.nthreads().values()))

    def submit(path: str) -> Future[str]:
        future = client.submit(_call, function, path, pure=False, retries=1)
        path_of[future.key] = path
        return future

    completed = as_completed([submit(path) for path in itertools.islice(waiting, most)])
    for future in completed:
        path = path_of.pop(future.key)
        yield path, _entry(path, future)
        for following in itertools.islice(waiting, 1):
            completed.add(submit(following))


def _entry(path: str, future: Future[str]) -> Entry:
    if future.status == "finished":
        return {"path": path, "rows": json.loads(future.result())}
    failure = future.exception()
    return {"path": path, "error": f"{type(failure).__name__}: {failure}"}


def _call(function: Work, path: str) -> str:
    """The rows of one file as they stand in the journal, so that numbers are the same whether it is read or not."""
    result = function(path)
    rows = result if isinstance(result, list) else [result] if result is not None else []
    return json.dumps(rows, default=_plain)


def _plain(value: Any) -> Any:
    if hasattr(value, "item"):  # a number of NumPy's
        return value.item()
    raise TypeError(f"{type(value).__name__} is no number and no text")
