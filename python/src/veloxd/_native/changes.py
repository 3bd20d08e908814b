"""Keeps track of what was changed in a data set."""

from __future__ import annotations

from dataclasses import dataclass, field

# A group id and the position of a channel in it.
Place = tuple[int, ...]


@dataclass
class Changes:
    """What was changed in a data set since it was opened.

    ``clipped`` has, for each channel that samples were assigned to, the number of samples by line that the signal
    axis could not hold. It describes the samples that are there now, so assigning a whole line anew starts at 0.
    """

    anything: bool = False
    clipped: dict[Place, dict[int, int]] = field(default_factory=dict)

    def assigned(self, place: Place, line: int, clipped: int, is_whole: bool) -> None:
        """Notes that samples of a line were assigned, the whole line or some of its points."""
        lines = self.clipped.setdefault(place, {})
        count = clipped + (0 if is_whole else lines.get(line, 0))
        if count:
            lines[line] = count
        else:
            lines.pop(line, None)

    def forget(self, place: Place) -> None:
        """Drops what is known of a deleted group or channel."""
        for known in [known for known in self.clipped if known[: len(place)] == place]:
            del self.clipped[known]

    def clipped_samples(self) -> int:
        return sum(sum(lines.values()) for lines in self.clipped.values())
