"""Measures the Python package beside C, which calls the library line by line, and beside h5py on the same data.

    python compare.py BASELINE [--benchmarks REGEX] [--quick] [--rounds N] [--processor-time] [--folder FOLDER]

BASELINE is the program made of Baseline.c. The contenders take turns, so that whatever else the machine does affects
all of them alike, and must agree on checksums. Figures are medians; the spread is the slowest less the fastest.
"""

from __future__ import annotations

import argparse
import functools
import re
import subprocess
import tempfile
import time
from collections.abc import Callable, Iterator
from pathlib import Path
from statistics import median
from typing import NamedTuple

import data
import h5py
import numpy as np
import numpy.typing as npt

import veloxd

SIDE = 8192
SMALL_SIDE = 256
SMALL_FILES = 2000

Figure = tuple[float, int]  # seconds, and the checksum of what was read
Contender = Callable[[], Figure]


class Benchmark(NamedTuple):
    """Contenders by name, the package first, and what its ratio to the others may be."""

    name: str
    contenders: dict[str, Contender]
    goals: dict[str, float]


class Baseline(NamedTuple):
    """The program in C."""

    program: Path
    column: int  # of the clock that it prints

    def __call__(self, what: str, path: Path) -> Figure:
        done = subprocess.run([self.program, what, path], check=True, capture_output=True, text=True)
        printed = done.stdout.split()
        return float(printed[self.column]), int(printed[2])


class Settings(NamedTuple):
    """What to measure, and how."""

    baseline: Baseline
    clock: Callable[[], float]
    shrink: int  # divides the size of data
    wanted: re.Pattern[str]  # finds something in the names of benchmarks


def checksum(array: npt.NDArray[np.generic]) -> int:
    return int(np.bitwise_xor.reduce(array.reshape(-1).view(np.uint64)))


def timed(clock: Callable[[], float], read: Callable[[], npt.NDArray[np.generic]]) -> Figure:
    start = clock()
    array = read()
    took = clock() - start
    return took, checksum(array)


def each_timed(clock: Callable[[], float], use: Callable[[Path], int], paths: list[Path]) -> Figure:
    start = clock()
    total = sum(map(use, paths)) % 2**64
    return clock() - start, total


def opened_oxd(path: Path) -> int:
    with veloxd.open(path):
        return 1


def opened_hdf5(path: Path) -> int:
    with h5py.File(path):
        return 1


def image_of_oxd(path: Path) -> int:
    with veloxd.open(path) as file:
        return int(file[0][0].raw.reshape(-1)[:2].view(np.uint64)[0])


def image_of_hdf5(path: Path) -> int:
    with h5py.File(path) as file:
        return int(file["ForwardScan/Topography"][...][0, 0])


def names_of_oxd(path: Path) -> int:
    with veloxd.open(path) as file:
        return sum(len(group.name) + sum(map(len, group)) for group in file.groups)


def names_of_hdf5(path: Path) -> int:
    with h5py.File(path) as file:
        return sum(len(name) + sum(map(len, file[name])) for name in file)


USES = {
    "opening": ("opened", opened_oxd, opened_hdf5),
    "an image in each of": ("images", image_of_oxd, image_of_hdf5),
    "all names in each of": ("names", names_of_oxd, names_of_hdf5),
}


def values_of_hdf5(dataset: h5py.Dataset) -> npt.NDArray[np.float64]:
    values = dataset[...].astype(np.float64)
    values *= dataset.attrs["scale"]
    values += dataset.attrs["offset"]
    return values


def raw_of_hdf5(dataset: h5py.Dataset) -> npt.NDArray[np.int32]:
    return dataset[...].astype(np.int32, copy=False)


READ_HDF5 = {"values": values_of_hdf5, "raw": raw_of_hdf5}


def check_same(what: str, ours: npt.NDArray[np.generic], peers: npt.NDArray[np.generic]) -> None:
    """Raises an error unless lines are the same, but for the bits by which raw samples are shifted and for rounding."""
    if what == "raw":
        ours, peers = ours / ours.max(), peers / peers.max()
    np.testing.assert_allclose(ours, peers, rtol=1e-6)


def of_large_channels(folder: Path, settings: Settings) -> Iterator[Benchmark]:
    """Arrays of 512 MiB, of 8 bytes for real values and of 4 for raw samples. HDF5 stores samples in as many bits."""
    for what, lines, bits, goal in (("values", SIDE, 16, 1.15), ("raw", 2 * SIDE, 16, 1.1), ("raw", 2 * SIDE, 32, 1.1)):
        name = f"`channel.{what}` of 512 MiB, {bits} bits"
        if settings.wanted.search(name):
            stored = data.samples(lines // settings.shrink, SIDE, bits)
            path, peer = folder / "large.oxd", folder / "large.h5"
            data.write_oxd(path, stored, 1)
            data.write_hdf5(peer, stored, 1)
            with veloxd.open(path) as file, h5py.File(peer) as other:
                yield of_a_large_channel(name, what, goal, path, file[0][0], other["ForwardScan/Topography"], settings)


def of_a_large_channel(
    name: str, what: str, goal: float, path: Path, channel: veloxd.Channel, dataset: h5py.Dataset, settings: Settings
) -> Benchmark:
    read = functools.partial(getattr, channel, what)
    read_peer = functools.partial(READ_HDF5[what], dataset)
    check_same(what, read()[-1], read_peer()[-1])
    contenders = {
        "veloxd": functools.partial(timed, settings.clock, read),
        "C": functools.partial(settings.baseline, what, path),
        "h5py": functools.partial(timed, settings.clock, read_peer),
    }
    return Benchmark(name, contenders, {"C": goal, "h5py": 1.0})


def of_small_files(folder: Path, settings: Settings) -> Iterator[Benchmark]:
    """Files of images of 256 x 256 samples of 16 bits."""
    stored = data.samples(SMALL_SIDE, SMALL_SIDE, 16)
    for channels, size in ((8, "1 MiB"), (1, "128 KiB")):
        tasks = [(f"{title} 2 000 files of {size}", *uses) for title, uses in USES.items()]
        wanted = [task for task in tasks if settings.wanted.search(task[0])]
        paths = [folder / f"{number}.oxd" for number in range(SMALL_FILES // settings.shrink if wanted else 0)]
        peers = [path.with_suffix(".h5") for path in paths]
        for path, peer in zip(paths, peers):
            data.write_oxd(path, stored, channels)
            data.write_hdf5(peer, stored, channels)
        for name, what, use, use_peer in wanted:
            contenders = {
                "veloxd": functools.partial(each_timed, settings.clock, use, paths),
                "C": functools.partial(settings.baseline, what, folder),
                "h5py": functools.partial(each_timed, settings.clock, use_peer, peers),
            }
            yield Benchmark(name, contenders, {"C": 1.5, "h5py": 1.0})


def measure(benchmark: Benchmark, rounds: int) -> None:
    """Prints a row of the table of figures."""
    seconds: dict[str, list[float]] = {name: [] for name in benchmark.contenders}
    for _ in range(rounds):
        found = {name: run() for name, run in benchmark.contenders.items()}
        if found["veloxd"][1] != found["C"][1]:
            raise RuntimeError(f"{benchmark.name}: the package and C have read different samples.")
        for name, (took, _) in found.items():
            seconds[name].append(took)
    ours, *others = seconds
    middle = {name: median(each) for name, each in seconds.items()}
    ratios = {name: middle[ours] / middle[name] for name in others}
    spread = (max(seconds[ours]) - min(seconds[ours])) / middle[ours]
    goals = [
        f"{'' if ratios[name] <= goal else '**missed:** '}{ratios[name]:.3g} of at most {goal:g} ({name})"
        for name, goal in benchmark.goals.items()
    ]
    shown = ", ".join(f"{name} {ratio:.2f}" for name, ratio in ratios.items())
    print(
        f"| {benchmark.name} | {1e3 * middle[ours]:.3g} ms | {spread:.0%} | {shown} | {'; '.join(goals)} |", flush=True
    )


def main() -> None:
    parser = argparse.ArgumentParser(description="Measures the Python package beside C and h5py.")
    parser.add_argument("baseline", type=Path, help="the program made of Baseline.c")
    parser.add_argument("--benchmarks", default="", help="those whose names contain this regular expression")
    parser.add_argument("--quick", action="store_true", help="small data, each once: that it works, not how fast")
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--processor-time", action="store_true")
    parser.add_argument("--folder", help="where to make files; they are removed again")
    options = parser.parse_args()
    baseline = Baseline(options.baseline.absolute(), column=1 if options.processor_time else 0)
    clock = time.process_time if options.processor_time else time.perf_counter
    settings = Settings(baseline, clock, 64 if options.quick else 1, re.compile(options.benchmarks))
    print("| Benchmark | Median | Spread | Ratio to others | Goals |\n|---|---|---|---|---|")
    for benchmarks in (of_large_channels, of_small_files):
        with tempfile.TemporaryDirectory(dir=options.folder) as folder:
            for benchmark in benchmarks(Path(folder), settings):
                measure(benchmark, 1 if options.quick else options.rounds)


if __name__ == "__main__":
    main()
