"""The functions of the library: for each, the type of its result, those of its arguments, and its description.

Arrays are passed as addresses.
"""

from __future__ import annotations

from ctypes import c_bool, c_char_p, c_double, c_int32, c_uint64, c_void_p
from typing import Any

# The rest is made by scripts/bindings.

FUNCTIONS: dict[str, tuple[Any, tuple[Any, ...]]] = {
    # Files
    "OpenOxdFile": (c_uint64, (c_char_p,)),
    "CreateOxdFile": (c_uint64, (c_char_p,)),
    "SaveOxdFile": (None, (c_uint64,)),
    "CloseOxdFile": (None, (c_uint64,)),
    "ChangeOxdFilename": (None, (c_uint64, c_char_p)),
    "GetOxdVersion": (c_int32, (c_uint64,)),
    # Errors
    "VELGetLastError": (c_char_p, ()),
    "VELHasLastError": (c_bool, ()),
    # Groups
    "GetGroupCount": (c_uint64, (c_uint64,)),
    "GetAllGroupIds": (None, (c_uint64, c_void_p)),
    "CreateGroup": (c_uint64, (c_uint64, c_int32)),
    "GetGroupId": (c_uint64, (c_uint64, c_char_p)),
    "DeleteGroup": (None, (c_uint64, c_uint64)),
    "DeleteAllGroups": (None, (c_uint64,)),
    "GetLogicalGroupId": (c_uint64, (c_uint64, c_uint64)),
    "SetLogicalGroupId": (None, (c_uint64, c_uint64, c_uint64)),
    "GetGroupName": (None, (c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetGroupName": (None, (c_uint64, c_uint64, c_char_p)),
    "SetChannelCount": (None, (c_uint64, c_uint64, c_uint64)),
    "GetChannelCount": (c_uint64, (c_uint64, c_uint64)),
    # Channels
    "HasChannelBuffer": (c_bool, (c_uint64, c_uint64, c_uint64)),
    "DeleteChannelBuffer": (None, (c_uint64, c_uint64, c_uint64)),
    "SetChannelXYDimension": (None, (c_uint64, c_uint64, c_uint64, c_uint64, c_uint64)),
    "SetChannelData_Points": (None, (c_uint64, c_uint64, c_uint64, c_uint64)),
    "GetChannelData_Points": (c_uint64, (c_uint64, c_uint64, c_uint64)),
    "GetChannelData_PointsPerLine": (c_uint64, (c_uint64, c_uint64, c_uint64, c_uint64)),
    "SetChannelData_Lines": (None, (c_uint64, c_uint64, c_uint64, c_uint64)),
    "GetChannelData_Lines": (c_uint64, (c_uint64, c_uint64, c_uint64)),
    # Axes
    "SetChannelData_PointAxisName": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetChannelData_PointAxisName": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetChannelData_PointAxisUnit": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetChannelData_PointAxisUnit": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetChannelData_PointAxisMin": (None, (c_uint64, c_uint64, c_uint64, c_double)),
    "GetChannelData_PointAxisMin": (c_double, (c_uint64, c_uint64, c_uint64)),
    "GetChannelData_PointAxisMinPerLine": (c_double, (c_uint64, c_uint64, c_uint64, c_uint64)),
    "SetChannelData_PointAxisRange": (None, (c_uint64, c_uint64, c_uint64, c_double)),
    "GetChannelData_PointAxisRange": (c_double, (c_uint64, c_uint64, c_uint64)),
    "GetChannelData_PointAxisRangePerLine": (c_double, (c_uint64, c_uint64, c_uint64, c_uint64)),
    "SetChannelData_LineAxisName": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetChannelData_LineAxisName": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetChannelData_LineAxisUnit": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetChannelData_LineAxisUnit": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetChannelData_LineAxisMin": (None, (c_uint64, c_uint64, c_uint64, c_double)),
    "GetChannelData_LineAxisMin": (c_double, (c_uint64, c_uint64, c_uint64)),
    "SetChannelData_LineAxisRange": (None, (c_uint64, c_uint64, c_uint64, c_double)),
    "GetChannelData_LineAxisRange": (c_double, (c_uint64, c_uint64, c_uint64)),
    "SetChannelData_SignalAxisName": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetChannelData_SignalAxisName": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetChannelData_SignalAxisUnit": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetChannelData_SignalAxisUnit": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetChannelData_SignalAxisMin": (None, (c_uint64, c_uint64, c_uint64, c_double)),
    "GetChannelData_SignalAxisMin": (c_double, (c_uint64, c_uint64, c_uint64)),
    "SetChannelData_SignalAxisRange": (None, (c_uint64, c_uint64, c_uint64, c_double)),
    "GetChannelData_SignalAxisRange": (c_double, (c_uint64, c_uint64, c_uint64)),
    # Samples
    "SetChannelData_LineRaw": (None, (c_uint64, c_uint64, c_uint64, c_uint64, c_void_p)),
    "SetChannelData_LineReal": (None, (c_uint64, c_uint64, c_uint64, c_uint64, c_void_p)),
    "GetChannelData_LineRaw": (None, (c_uint64, c_uint64, c_uint64, c_uint64, c_int32, c_void_p)),
    "GetChannelData_LineReal": (None, (c_uint64, c_uint64, c_uint64, c_uint64, c_int32, c_void_p)),
    "SetChannelData_PixelRaw": (None, (c_uint64, c_uint64, c_uint64, c_uint64, c_uint64, c_int32)),
    "SetChannelData_PixelReal": (None, (c_uint64, c_uint64, c_uint64, c_uint64, c_uint64, c_double)),
    "GetChannelData_PixelRaw": (c_int32, (c_uint64, c_uint64, c_uint64, c_uint64, c_uint64, c_int32)),
    "GetChannelData_PixelReal": (c_double, (c_uint64, c_uint64, c_uint64, c_uint64, c_uint64, c_int32)),
    # Info groups and items
    "GetInfoGroupCount": (c_uint64, (c_uint64,)),
    "CreateInfoGroup": (c_uint64, (c_uint64,)),
    "CreateInfoGroupWithName": (c_uint64, (c_uint64, c_char_p)),
    "GetInfoGroupIndex": (c_uint64, (c_uint64, c_char_p)),
    "DeleteInfoGroup": (None, (c_uint64, c_uint64)),
    "DeleteAllInfoGroups": (None, (c_uint64,)),
    "GetInfoGroupName": (None, (c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetInfoGroupName": (None, (c_uint64, c_uint64, c_char_p)),
    "SetInfoGroupNewIndex": (None, (c_uint64, c_uint64, c_uint64)),
    "GetInfoItemCount": (c_uint64, (c_uint64, c_uint64)),
    "CreateInfoItem": (c_uint64, (c_uint64, c_uint64, c_char_p, c_char_p)),
    "SetInfoItemValue": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetInfoItemValue": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetInfoItemName": (None, (c_uint64, c_uint64, c_uint64, c_char_p)),
    "GetInfoItemName": (None, (c_uint64, c_uint64, c_uint64, c_char_p, c_uint64)),
    "GetInfoItemIndex": (c_uint64, (c_uint64, c_uint64, c_char_p)),
    "DeleteInfoItem": (None, (c_uint64, c_uint64, c_uint64)),
    "DeleteAllInfoItems": (None, (c_uint64, c_uint64)),
    # Meta-information tree
    "GetMetaInfoTreeRootHandle": (c_uint64, (c_uint64,)),
    "IsMetaInfoItemAGroup": (c_bool, (c_uint64, c_uint64)),
    "GetMetaInfoItemChildCount": (c_uint64, (c_uint64, c_uint64)),
    "GetMetaInfoItemName": (None, (c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetMetaInfoItemName": (None, (c_uint64, c_uint64, c_char_p)),
    "GetMetaInfoItemValue": (None, (c_uint64, c_uint64, c_char_p, c_uint64)),
    "SetMetaInfoItemValue": (None, (c_uint64, c_uint64, c_char_p)),
    "SelectFirstChildMetaInfoItem": (c_uint64, (c_uint64, c_uint64)),
    "SelectNextMetaInfoItem": (c_uint64, (c_uint64, c_uint64)),
    "SelectParentMetaInfoItem": (c_uint64, (c_uint64, c_uint64)),
    "AddMetaInfoItem": (c_uint64, (c_uint64, c_uint64, c_char_p, c_char_p)),
    "AddMetaInfoItemGroup": (c_uint64, (c_uint64, c_uint64, c_char_p)),
    "DeleteMetaInfoItem": (None, (c_uint64, c_uint64)),
    "DeleteAllMetaInfoItems": (None, (c_uint64,)),
}

DESCRIPTIONS: dict[str, str] = {
    "OpenOxdFile": """uint64_t OpenOxdFile(const char* filename);

Opens the file `filename` and reads all of it into memory. Result: its handle, or 0. A file without an end mark
opens empty and without an error; a failed open keeps what was loaded (convention 12). Errors: a failure to open,
which names "open", the system's error number and the file; any version but 1 and 2; bad content; a failed read, also
when the samples are cut short; "Null pointer" for a null name, which uses no handle number.
""",
    "CreateOxdFile": """uint64_t CreateOxdFile(const char* filename);

Creates an empty data set that SaveOxdFile will write to `filename`. Nothing on disk is read or written yet.
Result: its handle, or 0 for a null name ("Null pointer").
""",
    "SaveOxdFile": """void SaveOxdFile(uint64_t handle);

Writes the data set to its file, in place of an existing one. Views, processors and unknown sections are dropped; see
convention 13 for this and for what the new file takes over from the old one.
Before that, lines are cut to the longest one in use, and they stay cut when the save fails afterwards. Lines that the
file promised and did not hold count as in use, with the length that it gave them.
Errors that leave the old file untouched: nobody has the permission to write it; the bit count of a channel is not 8,
16 or 32 ("Invalid bit count: "); no file can hold that much; too little memory. When writing fails half-way, for
example because the disk is full, a partial file stays, the data set in memory is complete, and the save may be tried
again.
""",
    "CloseOxdFile": """void CloseOxdFile(uint64_t handle);

Frees the handle and the data set with everything in it, without saving. An unknown handle is ignored.
""",
    "ChangeOxdFilename": """void ChangeOxdFilename(uint64_t handle, const char* filename);

Makes `filename` the name that the next SaveOxdFile writes to. Nothing on disk changes. Error: "Null pointer".
""",
    "GetOxdVersion": """int32_t GetOxdVersion(uint64_t handle);

Result: the version of the file as last opened or saved, 1 or 2, and 1 if its header gives none. When the open failed
because of the version, the result is the file's own number, for example 7, 0 or -3, without an error. A data set
that was created and never saved has no version, nor has a file without a header (convention 12) or one that could
not be opened: the result is 0 and the failure "m_pActiveSection == nullptr".
""",
    "VELGetLastError": """const char* VELGetLastError(void);

Result: the text of the latest failure; never null, and empty when there was none. Lowers the error flag. The text
stays, and the pointer remains valid, until the function is called after another failure. It cannot fail.
""",
    "VELHasLastError": """bool VELHasLastError(void);

Result: whether a failure was stored since VELGetLastError was last called. The function cannot fail.
""",
    "GetGroupCount": """uint64_t GetGroupCount(uint64_t handle);

Result: the number of groups.
""",
    "GetAllGroupIds": """void GetAllGroupIds(uint64_t handle, uint64_t* ids);

Writes all group ids in ascending order to `ids`, an array of GetGroupCount elements. It must not be null, even when
there are no groups.
""",
    "CreateGroup": """uint64_t CreateGroup(uint64_t handle, int32_t bitCount);

Makes a group without channels, named "Group" and its id, for example "Group0". `bitCount` (8, 16 or 32) is the
number of bits in which samples of its channels are saved; any other number makes SaveOxdFile fail once the group has
a channel. Result: the group id.
""",
    "GetGroupId": """uint64_t GetGroupId(uint64_t handle, const char* name);

Result: the id of the first group whose name is exactly `name`. Action "get group index"; for an unknown name
the reason is "No group with given name available. Index: " and the name.
""",
    "DeleteGroup": """void DeleteGroup(uint64_t handle, uint64_t group);

Deletes a group with its channels. Action "delete group".
""",
    "DeleteAllGroups": """void DeleteAllGroups(uint64_t handle);

Deletes all groups with their channels. The next group that is made gets the id 0 and the logical id 256 again.
""",
    "GetLogicalGroupId": """uint64_t GetLogicalGroupId(uint64_t handle, uint64_t group);

Result: the logical group id, a number of 32 bits. New groups get ascending ones from 256. Action "get logical group
id".
""",
    "SetLogicalGroupId": """void SetLogicalGroupId(uint64_t handle, uint64_t group, uint64_t id);

Sets the logical group id to the low 32 bits of `id`. Action "set logical group id".
""",
    "GetGroupName": """void GetGroupName(uint64_t handle, uint64_t group, char* buffer, uint64_t size);

Copies the group's name to `buffer`. Action "get group name".
""",
    "SetGroupName": """void SetGroupName(uint64_t handle, uint64_t group, const char* name);

Renames the group, and with it the frame name of each of its channels. Action "set group name".
""",
    "SetChannelCount": """void SetChannelCount(uint64_t handle, uint64_t group, uint64_t count);

Gives the group `count` empty slots, at most 1 048 576; beyond that it fails with "std::bad_alloc". A count that
differs from the present one DISCARDS all channels of the group; the same count changes nothing. Action "get channel
count" (sic).
""",
    "GetChannelCount": """uint64_t GetChannelCount(uint64_t handle, uint64_t group);

Result: the number of channel slots, empty ones included. Action "get channel count".
""",
    "HasChannelBuffer": """bool HasChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel);

Result: whether the slot holds a channel. A slot that does not exist is an error. Action "evaluate channel".
""",
    "DeleteChannelBuffer": """void DeleteChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel);

Deletes the channel. Its slot stays, empty. Action "delete channel".
""",
    "SetChannelXYDimension": """void SetChannelXYDimension(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points, uint64_t lines);

Gives the slot a channel of `lines` lines of `points` points each, all samples 0. A channel that has this size
already keeps its samples; one of another size loses them. `points` and `lines` may each be up to 2^31 - 1 and their
product up to 2^32; without points, there may be 1 048 576 lines. Beyond that the function fails with
"std::bad_alloc". Action "set channel xy dimension".
""",
    "SetChannelData_Points": """void SetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points);

Sets the points per line, at most 65536, and keeps the number of lines. A change DISCARDS all samples.
Action "set channel points".
""",
    "GetChannelData_Points": """uint64_t GetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel);

Result: the points per line. Action "get channel points".
""",
    "GetChannelData_PointsPerLine": """uint64_t GetChannelData_PointsPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line);

Result: how many points of one line are valid, counted from its start: those that were measured. Action "get channel
points"; for a line outside the channel the failure is "invalid vector<T> subscript".
""",
    "SetChannelData_Lines": """void SetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel, uint64_t lines);

Sets the number of lines, at most 65536, and keeps the points per line. A change DISCARDS all samples.
Action "set channel lines".
""",
    "GetChannelData_Lines": """uint64_t GetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel);

Result: the number of lines. Action "get channel lines".
""",
    "SetChannelData_PointAxisName": """void SetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "GetChannelData_PointAxisName": """void GetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "SetChannelData_PointAxisUnit": """void SetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "GetChannelData_PointAxisUnit": """void GetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "SetChannelData_PointAxisMin": """void SetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "GetChannelData_PointAxisMin": """double GetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "GetChannelData_PointAxisMinPerLine": """double GetChannelData_PointAxisMinPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "SetChannelData_PointAxisRange": """void SetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "GetChannelData_PointAxisRange": """double GetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "GetChannelData_PointAxisRangePerLine": """double GetChannelData_PointAxisRangePerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line);

The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
old value.
""",
    "SetChannelData_LineAxisName": """void SetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);

The line axis, which runs across the lines.
""",
    "GetChannelData_LineAxisName": """void GetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);

The line axis, which runs across the lines.
""",
    "SetChannelData_LineAxisUnit": """void SetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);

The line axis, which runs across the lines.
""",
    "GetChannelData_LineAxisUnit": """void GetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);

The line axis, which runs across the lines.
""",
    "SetChannelData_LineAxisMin": """void SetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);

The line axis, which runs across the lines.
""",
    "GetChannelData_LineAxisMin": """double GetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel);

The line axis, which runs across the lines.
""",
    "SetChannelData_LineAxisRange": """void SetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);

The line axis, which runs across the lines.
""",
    "GetChannelData_LineAxisRange": """double GetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel);

The line axis, which runs across the lines.
""",
    "SetChannelData_SignalAxisName": """void SetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "GetChannelData_SignalAxisName": """void GetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "SetChannelData_SignalAxisUnit": """void SetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "GetChannelData_SignalAxisUnit": """void GetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "SetChannelData_SignalAxisMin": """void SetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "GetChannelData_SignalAxisMin": """double GetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "SetChannelData_SignalAxisRange": """void SetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "GetChannelData_SignalAxisRange": """double GetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel);

The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
(sic).
""",
    "SetChannelData_LineRaw": """void SetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const int32_t* values);

Stores one line. `values` holds GetChannelData_Points raw samples; those outside the raw range are clamped to it. All
points of the line are valid afterwards. Action "set channel line".
""",
    "SetChannelData_LineReal": """void SetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const double* values);

Stores one line. `values` holds GetChannelData_Points real values in the unit of the signal axis. Each is converted
by the inverse of the formula in convention 7, with min and range of the signal axis:
  raw = (real - min) * 1073741823 / range - 536870912, cut towards zero
A value outside the axis gives the raw value of its nearer end. With a range of 0, with an axis that is not finite,
and for a NaN, the sample is -536870912. All points of the line are valid afterwards. Action "set channel line".
""",
    "GetChannelData_LineRaw": """void GetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp, int32_t* values);

Reads one line of raw samples through `lineOp` into `values`, which must have GetChannelData_Points elements. As
many are written as the operator gives: GetChannelData_PointsPerLine of that line, or none, without an error, when a
fit finds fewer samples than it needs. The others keep what they held. A line that has more valid points than
GetChannelData_Points, as a damaged file may say, cannot be read ("Unknown error"). Action "get channel line".
""",
    "GetChannelData_LineReal": """void GetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp, double* values);

Reads one line like GetChannelData_LineRaw, as real values in the unit of the signal axis (conventions 7 and 9).
Action "get channel line".
""",
    "SetChannelData_PixelRaw": """void SetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t value);

Stores one raw sample, clamped to the raw range. The points up to this one are valid afterwards. Action "set channel
pixel".
""",
    "SetChannelData_PixelReal": """void SetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, double value);

Stores one real value in the unit of the signal axis, converted as by SetChannelData_LineReal. The points up to this
one are valid afterwards. Action "set channel pixel".
""",
    "GetChannelData_PixelRaw": """int32_t GetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t lineOp);

Result: one raw sample of the line, after `lineOp` was applied to the whole line. Action "get channel pixel".
""",
    "GetChannelData_PixelReal": """double GetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t lineOp);

Result: the same sample as a real value in the unit of the signal axis. Action "get channel pixel".
""",
    "GetInfoGroupCount": """uint64_t GetInfoGroupCount(uint64_t handle);

Result: the number of top-level groups.
""",
    "CreateInfoGroup": """uint64_t CreateInfoGroup(uint64_t handle);

Appends a group without a name and without items. Result: its position.
""",
    "CreateInfoGroupWithName": """uint64_t CreateInfoGroupWithName(uint64_t handle, const char* name);

Appends a group without items. Several groups may have the same name. Result: its position. Action "create info".
""",
    "GetInfoGroupIndex": """uint64_t GetInfoGroupIndex(uint64_t handle, const char* name);

Result: the position of the first group of this name, whatever the case of its letters A to Z. The failure for an
unknown name is "No info with given name found. Name: " and the name. Action, for a null name, "get info index".
""",
    "DeleteInfoGroup": """void DeleteInfoGroup(uint64_t handle, uint64_t info);

Deletes a group with everything in it. Action "delete info".
""",
    "DeleteAllInfoGroups": """void DeleteAllInfoGroups(uint64_t handle);

Deletes all groups.
""",
    "GetInfoGroupName": """void GetInfoGroupName(uint64_t handle, uint64_t info, char* buffer, uint64_t size);

Copies the group's name to `buffer`. Action "get info name", but "get info item value" (sic) when the buffer is too
short.
""",
    "SetInfoGroupName": """void SetInfoGroupName(uint64_t handle, uint64_t info, const char* name);

Renames a group. Action "set info name".
""",
    "SetInfoGroupNewIndex": """void SetInfoGroupNewIndex(uint64_t handle, uint64_t info, uint64_t newIndex);

Moves a group to the position `newIndex`; the groups in between move by one. Action "set new info index"; when there
is no group at the new position, the failure is "Error while moving info".
""",
    "GetInfoItemCount": """uint64_t GetInfoItemCount(uint64_t handle, uint64_t info);

Result: the number of items in a group. Action "get info item count".
""",
    "CreateInfoItem": """uint64_t CreateInfoItem(uint64_t handle, uint64_t info, const char* name, const char* value);

Appends an item to a group. Result: its position. Action "create info item"; when an item of the group has the name
already, the reason is "Info item with given name already exists. Name: " and the name.
""",
    "SetInfoItemValue": """void SetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, const char* value);

Sets the item's value. Action "set info item value".
""",
    "GetInfoItemValue": """void GetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size);

Copies the item's value to `buffer`. Action "get info item value".
""",
    "SetInfoItemName": """void SetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, const char* name);

Renames the item. Action "set info item name".
""",
    "GetInfoItemName": """void GetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size);

Copies the item's name to `buffer`. Action "get info item name".
""",
    "GetInfoItemIndex": """uint64_t GetInfoItemIndex(uint64_t handle, uint64_t info, const char* name);

Result: the position of the item whose name is exactly `name`. Action "get info item index"; for an unknown name the
reason is "No info item with given name available. Name: " and the name.
""",
    "DeleteInfoItem": """void DeleteInfoItem(uint64_t handle, uint64_t info, uint64_t item);

Deletes an item; those behind it move up by one. Action "delete info item".
""",
    "DeleteAllInfoItems": """void DeleteAllInfoItems(uint64_t handle, uint64_t info);

Deletes all items of a group; groups inside it stay. Action "delete all info items".
""",
    "GetMetaInfoTreeRootHandle": """uint64_t GetMetaInfoTreeRootHandle(uint64_t handle);

Result: 1, the handle of the root.
""",
    "IsMetaInfoItemAGroup": """bool IsMetaInfoItemAGroup(uint64_t handle, uint64_t item);

Result: whether the node is a group; true for the root. `handle` is ignored: the node may be of any open file. Action
"evaluate info item".
""",
    "GetMetaInfoItemChildCount": """uint64_t GetMetaInfoItemChildCount(uint64_t handle, uint64_t item);

Result: the number of nodes directly below this one, 0 for an item. Action "get info item child count".
""",
    "GetMetaInfoItemName": """void GetMetaInfoItemName(uint64_t handle, uint64_t item, char* buffer, uint64_t size);

Copies the node's name to `buffer`, "Root" for the root. Action "get info item name".
""",
    "SetMetaInfoItemName": """void SetMetaInfoItemName(uint64_t handle, uint64_t item, const char* name);

Renames the node. Action "set info item name"; the root fails with "Unable to set info item name of ROOT item".
""",
    "GetMetaInfoItemValue": """void GetMetaInfoItemValue(uint64_t handle, uint64_t item, char* buffer, uint64_t size);

Copies the node's value to `buffer`, "--------" for a group. Action "get info item value"; the root fails with
"Unable to get info item value from ROOT item".
""",
    "SetMetaInfoItemValue": """void SetMetaInfoItemValue(uint64_t handle, uint64_t item, const char* value);

Sets the value of an item. Action "set info item value"; the root fails with "Unable to set info item value of ROOT
item", a group with "Unable to set info item value of group item".
""",
    "SelectFirstChildMetaInfoItem": """uint64_t SelectFirstChildMetaInfoItem(uint64_t handle, uint64_t item);

Result: the handle of the first node below this one. Action "select first child of info item"; when there is none,
the failure is "Item isn't a group or has no childs. Handle: " and the handle of the node.
""",
    "SelectNextMetaInfoItem": """uint64_t SelectNextMetaInfoItem(uint64_t handle, uint64_t item);

Result: the handle of the next node in the same group. Action "select next info item"; for the last node and for the
root the failure is "No further items in this node available!".
""",
    "SelectParentMetaInfoItem": """uint64_t SelectParentMetaInfoItem(uint64_t handle, uint64_t item);

Result: the handle of the group that the node is in, 1 for a top-level group. Action "select parent of info item";
the root fails with "Unable to get parent of ROOT item", whatever the file handle is.
""",
    "AddMetaInfoItem": """uint64_t AddMetaInfoItem(uint64_t handle, uint64_t item, const char* name, const char* value);

Appends an item to a group. Result: its handle. Action "add info item"; the root fails with "Unable to add non group
info item to ROOT item. Only group items are allowed.", whatever the file handle is, and an item with "Unable to add
info item to non group item.".
""",
    "AddMetaInfoItemGroup": """uint64_t AddMetaInfoItemGroup(uint64_t handle, uint64_t item, const char* name);

Appends a group without a value to a group or to the root. Result: its handle. Action "add info item"; an item fails
with "Unable to add info item to non group item.".
""",
    "DeleteMetaInfoItem": """void DeleteMetaInfoItem(uint64_t handle, uint64_t item);

Deletes the node with everything below it. Action "delete info item"; the root fails with "Unable to delete ROOT
item.", whatever the file handle is.
""",
    "DeleteAllMetaInfoItems": """void DeleteAllMetaInfoItems(uint64_t handle);

Deletes all nodes but the root.
""",
}
