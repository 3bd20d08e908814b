"""Work on one file that a batch does for many: correcting and exporting channels, and their statistics."""

from __future__ import annotations

import os
import re
from collections.abc import Iterator
from dataclasses import dataclass
from typing import Any, NamedTuple, Optional

import numpy as np
import numpy.typing as npt

from .. import file as oxd
from .._replacing import replacement
from ..channel import Channel
from ..errors import NameNotFoundError
from ._exporting import SUFFIXES, WRITERS
from .roughness import heights

__all__ = ["Export", "Selection", "Statistics"]


@dataclass(frozen=True)
class Selection:
    """Channels of a file: those of this name, in groups of this name; all images by default."""

    group: Optional[str] = None  # noqa: UP045
    channel: Optional[str] = None  # noqa: UP045

    def of(self, file: oxd.File) -> Iterator[Chosen]:
        """The channels of an open file with their positions; ``NameNotFoundError`` if there is none."""
        found = False
        for position, group in enumerate(file.groups):
            for slot, channel in enumerate(group.channels):
                if self._has(group.name, channel):
                    found = True
                    yield Chosen(position, slot, group.name, channel)
        if not found:
            raise NameNotFoundError("There is no such channel.")

    def _has(self, group: str, channel: Channel) -> bool:
        if self.group is not None and group != self.group:
            return False
        return not channel.is_curves if self.channel is None else channel.name == self.channel


class Chosen(NamedTuple):
    """A channel and where it is."""

    position: int
    slot: int
    group: str
    channel: Channel

    @property
    def file_name(self) -> str:
        """What tells it from the other channels of its file, fit for a file name."""
        words = (str(self.position), str(self.slot), self.group, self.channel.name)
        return re.sub(r"[^\w.-]+", "_", "-".join(words))[:100]


def corrected(channel: Channel, operator: str | None) -> npt.NDArray[np.float64]:
    """The real values of a channel, after a correction of each line if there is one."""
    values: npt.NDArray[np.float64] = channel.values if operator is None else channel.level(operator)
    return values


@dataclass(frozen=True)
class Export:
    """Writes channels to files of their own below ``folder``, where their file is below ``root``."""

    format: str  # png, tiff or netcdf
    folder: str
    root: str
    operator: Optional[str] = None  # noqa: UP045
    selection: Selection = Selection()

    def __call__(self, path: str) -> list[dict[str, Any]]:
        """Writes the channels of one file; a row for each."""
        target = os.path.join(self.folder, os.path.relpath(path, self.root))
        os.makedirs(os.path.dirname(target), exist_ok=True)
        rows = []
        with oxd.open(path) as file:
            for chosen in self.selection.of(file):
                output = f"{target}-{chosen.file_name}{SUFFIXES[self.format]}"
                with replacement(output, overwrite=True) as temporary:
                    WRITERS[self.format](temporary, corrected(chosen.channel, self.operator), chosen.channel)
                name = os.path.relpath(output, self.folder)
                rows.append({"group": chosen.group, "channel": chosen.channel.name, "output": name})
        return rows


@dataclass(frozen=True)
class Statistics:
    """Height parameters of channels after ISO 25178-2, after a correction of each line if there is one."""

    operator: Optional[str] = None  # noqa: UP045
    selection: Selection = Selection()

    def __call__(self, path: str) -> list[dict[str, Any]]:
        """The parameters of the channels of one file; a row for each."""
        with oxd.open(path) as file:
            return [self._row(chosen) for chosen in self.selection.of(file)]

    def _row(self, chosen: Chosen) -> dict[str, Any]:
        values = heights(corrected(chosen.channel, self.operator))
        place = {"group": chosen.group, "channel": chosen.channel.name, "unit": chosen.channel.unit}
        return {**place, "filter": self._filter, **values._asdict()}

    @property
    def _filter(self) -> str:
        form = f"each line by {self.operator}" if self.operator else "none"
        return f"F-operation: {form}; S-filter: none; L-filter: none"
