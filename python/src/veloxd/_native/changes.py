"""Keeps track of what was changed in a data set."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass, field

import numpy as np
import numpy.typing as npt

# A group id and the position of a channel in it.
Place = tuple[int, ...]

Indices = npt.NDArray[np.intp]


@dataclass
class Changes:
    """What was changed in a data set since it was opened.

    ``clipped`` has, for each channel that samples were assigned to, the points by line whose value the signal axis
    could not hold. It describes the samples that are there now, so assigning a point anew forgets what it had.
    """

    anything: bool = False
    clipped: dict[Place, dict[int, Indices]] = field(default_factory=dict)

    def assigned(self, place: Place, line: int, points: Indices, is_clipped: npt.NDArray[np.bool_]) -> None:
        """Notes that some points of a line were assigned, in ascending order, and which values were clipped.

        Of several values for one point, the last is there now.
        """
        lines = self.clipped.setdefault(place, {})
        before = lines.pop(line, None)
        clipped = points[is_clipped & (np.diff(points, append=points[-1:] + 1) > 0)]
        if before is not None:
            clipped = np.union1d(np.setdiff1d(before, points), clipped)
        if clipped.size:
            lines[line] = clipped

    def assigned_lines(self, place: Place, lines: Sequence[int], is_clipped: npt.NDArray[np.bool_]) -> None:
        """Notes that whole lines were assigned, and which values were clipped: shape (lines, points).

        Of several rows for one line, the last is there now.
        """
        known = self.clipped.setdefault(place, {})
        clipped = set(np.flatnonzero(is_clipped.any(axis=1)).tolist())
        if not known and not clipped:
            return
        for line, row in dict(zip(lines, range(len(lines)))).items():
            known.pop(line, None)
            if row in clipped:
                known[line] = np.flatnonzero(is_clipped[row])

    def forget(self, place: Place) -> None:
        """Drops what is known of a deleted group or channel."""
        for known in [known for known in self.clipped if known[: len(place)] == place]:
            del self.clipped[known]

    def clipped_samples(self) -> int:
        return sum(sum(map(len, lines.values())) for lines in self.clipped.values())
