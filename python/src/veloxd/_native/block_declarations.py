"""The interface of the library of blocks: its constants, structures and functions, for ctypes.

veloxd_blocks.h says what constants and members mean. Arrays and structures are passed as addresses.
"""

from __future__ import annotations

from ctypes import Structure, c_char_p, c_int32, c_int64, c_size_t, c_uint64, c_void_p
from typing import Any

# The rest is made by scripts/bindings.

VEL_BLOCK_OK = 0
VEL_BLOCK_FAILED = 1
VEL_BLOCK_BAD_CALL = 2
VEL_BLOCK_TOO_SMALL = 3
VEL_BLOCK_NO_HEADER = 4


class VELBlockNames(Structure):
    _fields_ = (
        ("room", c_size_t),
        ("size", c_size_t),
        ("numbers", c_void_p),
        ("texts", c_char_p),
        ("count", c_size_t),
        ("bytes", c_size_t),
    )


FUNCTIONS: dict[str, tuple[Any, tuple[Any, ...]]] = {
    # Files
    "VELBlockVersion": (c_char_p, ()),
    "VELBlockOpen": (c_int32, (c_char_p, c_void_p)),
    # Names
    "VELBlockGroups": (c_int32, (c_uint64, c_void_p)),
    "VELBlockChannels": (c_int32, (c_uint64, c_uint64, c_void_p)),
    # Lines
    "VELBlockShape": (c_int32, (c_uint64, c_uint64, c_uint64, c_void_p, c_void_p)),
    "VELBlockAcquired": (c_int32, (c_uint64, c_uint64, c_uint64, c_uint64, c_void_p, c_uint64, c_void_p)),
    "VELBlockPointAxes": (c_int32, (c_uint64, c_uint64, c_uint64, c_uint64, c_void_p, c_uint64, c_void_p, c_void_p)),
    "VELBlockReadRaw": (c_int32, (c_uint64, c_uint64, c_uint64, c_int32, c_uint64, c_void_p, c_uint64, c_void_p, c_int64)),
    "VELBlockReadReal": (c_int32, (c_uint64, c_uint64, c_uint64, c_int32, c_uint64, c_void_p, c_uint64, c_void_p, c_int64)),
    "VELBlockWriteRaw": (c_int32, (c_uint64, c_uint64, c_uint64, c_uint64, c_void_p, c_uint64, c_void_p, c_int64)),
    "VELBlockWriteReal": (c_int32, (c_uint64, c_uint64, c_uint64, c_uint64, c_void_p, c_uint64, c_void_p, c_int64)),
}

DESCRIPTIONS: dict[str, str] = {
    "VELBlockVersion": """const char* VELBlockVersion(void);

Result: the version of this library, such as "1.2.3". It stays valid and is no VELBlockResult.
""",
    "VELBlockOpen": """int32_t VELBlockOpen(const char* filename, uint64_t* file);

Opens a file as OpenOxdFile does and stores its handle in `file`. With VEL_BLOCK_FAILED and VEL_BLOCK_NO_HEADER, that
is the handle under which the library keeps what it has loaded: to be closed, or used as any other. It is 0 if there is
none.
""",
    "VELBlockGroups": """int32_t VELBlockGroups(uint64_t file, VELBlockNames* names);

Ids and names of all groups of a file. With VEL_BLOCK_TOO_SMALL, neither array is of use, and `count` and `bytes` say
what the names up to the first take for which there is no room. All of them may take more than that.
""",
    "VELBlockChannels": """int32_t VELBlockChannels(uint64_t file, uint64_t group, VELBlockNames* names);

The same for the channels of a group: positions of slots that hold one, and the names of the signal axes.
""",
    "VELBlockShape": """int32_t VELBlockShape(uint64_t file, uint64_t group, uint64_t channel, uint64_t* lines, uint64_t* points);

Stores how many lines a channel has and how many points each of them has. Otherwise neither is changed.
""",
    "VELBlockAcquired": """int32_t VELBlockAcquired(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, uint64_t* acquired);

Stores, for each line, how many of its points were acquired. `acquired` has `count` elements.
""",
    "VELBlockPointAxes": """int32_t VELBlockPointAxes(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, double* minimums, double* ranges);

Stores min and range of the point axis of each line. Each array has `count` elements.
""",
    "VELBlockReadRaw": """int32_t VELBlockReadRaw(uint64_t file, uint64_t group, uint64_t channel, int32_t operation, uint64_t first, const uint64_t* lines, uint64_t count, int32_t* rows, int64_t pitch);

Reads lines through `operation`, a line operator, as raw samples or real values. What GetChannelData_LineRaw leaves as it
was, because the points were not acquired or the operator takes more samples, becomes INT32_MIN or a quiet NaN.
""",
    "VELBlockReadReal": """int32_t VELBlockReadReal(uint64_t file, uint64_t group, uint64_t channel, int32_t operation, uint64_t first, const uint64_t* lines, uint64_t count, double* rows, int64_t pitch);

Reads lines through `operation`, a line operator, as raw samples or real values. What GetChannelData_LineRaw leaves as it
was, because the points were not acquired or the operator takes more samples, becomes INT32_MIN or a quiet NaN.
""",
    "VELBlockWriteRaw": """int32_t VELBlockWriteRaw(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, const int32_t* rows, int64_t pitch);

Writes whole lines of raw samples or real values, as SetChannelData_LineRaw and SetChannelData_LineReal do. Of several
rows for one line, the last one is kept.
""",
    "VELBlockWriteReal": """int32_t VELBlockWriteReal(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, const double* rows, int64_t pitch);

Writes whole lines of raw samples or real values, as SetChannelData_LineRaw and SetChannelData_LineReal do. Of several
rows for one line, the last one is kept.
""",
}
