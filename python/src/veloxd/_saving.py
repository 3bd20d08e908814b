"""Saves data sets, and counts the samples that a file holds other than they were assigned."""

from __future__ import annotations

import re
from dataclasses import dataclass
from typing import TYPE_CHECKING

import numpy as np

from ._native.failure import save_failure
from ._native.file_names import file_name, label, name_to_write
from ._native.library import LOCK, call
from ._native.log import Capture
from ._replacing import replacement
from .errors import Error

if TYPE_CHECKING:
    from .channel import Channel
    from .file import File

__all__ = ["SaveReport"]

_RAW_BITS = 30
_END_OF_HEADER = b"\r\n#!"
_SECTION = re.compile(r"\[DataSet-(\d+):(\d+)\]\r\n((?:[^\[\r\n][^\r\n]*\r\n)*)")
_BITS = re.compile(r"^SaveBits=(\d+)", re.MULTILINE)


@dataclass(frozen=True)
class SaveReport:
    """What `File.save` has written.

    Attributes
    ----------
    path : str
        The file that was written.
    clipped : int
        Samples that were assigned values beyond the ends of their signal axis, and so have the value of the nearer end.
    inexact : int
        Samples that were assigned and have lost low bits, because their channel is stored in 8 or 16 bits.
    """

    path: str
    clipped: int
    inexact: int


def save(file: File, path: str, overwrite: bool) -> SaveReport:
    """Writes the data set to ``path`` in one step, and leaves the file's own name as it is."""
    handle = file._handle
    capture = Capture()
    try:
        with LOCK:
            number = handle.number
            usual = handle.path
            with replacement(path, overwrite) as temporary, name_to_write(temporary, path) as written:
                try:
                    with capture:
                        call("ChangeOxdFilename", number, file_name(written))
                        call("SaveOxdFile", number)
                except Error as refused:
                    raise save_failure(refused.details, path) from None
                finally:
                    call("ChangeOxdFilename", number, label(usual))
                inexact = _inexact_samples(file, written)
            return SaveReport(path, handle.changes.clipped_samples(), inexact)
    finally:
        capture.publish()


def _inexact_samples(file: File, saved: str) -> int:
    changed = file._handle.changes.clipped
    if not changed:
        return 0
    bits = _stored_bits(saved)
    total = 0
    for position, group in enumerate(file.groups):
        for channel in group.channels:
            lost = _RAW_BITS - bits.get((position, channel._place[1]), _RAW_BITS + 2)
            if channel._place in changed and lost > 0:
                total += _with_low_bits(channel, lost)
    return total


def _with_low_bits(channel: Channel, lost: int) -> int:
    mask = (1 << lost) - 1
    missing = ~channel.valid
    count = 0
    for line in range(channel.shape[0]):
        raw = channel.read(line, raw=True)
        count += int(np.count_nonzero((raw & mask != 0) & ~missing[line]))
    return count


def _stored_bits(path: str) -> dict[tuple[int, int], int]:
    """The bits of a stored sample, by the positions of group and channel, of a file that the library has saved."""
    with open(path, "rb") as saved:
        header = b""
        while _END_OF_HEADER not in header[-(1 << 16) - 4 :]:
            chunk = saved.read(1 << 16)
            if not chunk:
                break
            header += chunk
    text = header.partition(_END_OF_HEADER)[0].decode("utf-8", "replace") + "\r\n"
    bits = {}
    for section in _SECTION.finditer(text):
        found = _BITS.search(section.group(3))
        if found:
            bits[int(section.group(1)), int(section.group(2))] = int(found.group(1))
    return bits
