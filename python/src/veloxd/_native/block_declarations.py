"""The interface of the library of blocks: its constants, structures and functions, for ctypes.

veloxd_blocks.h says what each means. Arrays and structures are passed as addresses.
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
