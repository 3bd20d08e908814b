/* clang-format off */
/*
 * VELOxd: read, edit and write .oxd measurement files of scanning probe microscopes.
 *
 * This header is the whole interface of the library VELOxdDll. It is C99 and C++.
 *
 * CONVENTIONS, which hold for every function below
 *
 *  1. File handles. OpenOxdFile and CreateOxdFile return a handle, the smallest free number from 1.
 *     0 is never a handle. It stays valid until CloseOxdFile. No file stays open on disk between calls.
 *     An unknown handle fails with "Handle does not exist".
 *
 *  2. Errors. No function raises anything to its caller. One that fails stores a text, raises a flag and
 *     returns its neutral value: 0, 0.0, false or nothing. VELHasLastError reads the flag, VELGetLastError
 *     reads the text and lowers the flag. A call that succeeds touches neither, so to judge one call, lower
 *     the flag before it. Since 0 is also a good group id, sample and axis value, ask VELHasLastError.
 *     Most texts hold the line "std::exception::what: Unable to <action>. <reason>", where the function's
 *     own comment gives <action> and these are the reasons:
 *       "No group with given index available. Index: " and the group id
 *       "No channel with given name available. Index: " and the channel index
 *       "Buffer to small. Minimum buffer size: " and the size needed
 *       "Value out of range. Min 0, Max " and the limit
 *       "Null pointer"
 *       "Unknown error": a line or point outside the channel, or a point outside what an operator gave
 *     Arguments are checked in the order handle, group, channel, line operator, line and point, texts and arrays. The two
 *     functions with a limit of 65536 check it first of all. A failed check changes nothing.
 *
 *  3. Texts in. Zero-terminated, UTF-8, copied during the call. File names are in the system's code page on
 *     Windows and plain bytes elsewhere.
 *
 *  4. Texts out. `buffer` is yours, `size` is its length in bytes. Length + 1 bytes are needed, the terminating
 *     zero included. A buffer that is too short is left untouched, and the failure names the size needed.
 *     A size of 0 is NOT "no buffer": it disables the check and the text is written. Always pass the true size.
 *
 *  5. Groups and channels. `group` is a group id: the smallest number from 0 that was free when the group was
 *     made. It is reused after deletion, and renumbered from 0 when the file is saved and opened again.
 *     The logical group id is a second number, freely settable, stored in the file. `channel` is the
 *     position of a slot inside its group, from 0; a slot holds a channel or is empty.
 *
 *  6. Shapes. A channel is `lines` lines of `points` points. Line arrays hold the points of one line in order.
 *     Indices start at 0.
 *
 *  7. Samples. A raw sample is an integer from -536870912 to 536870911 (30 bits). Its real value, in the unit of the signal axis, is
 *       real = min + range * (raw + 536870912) / 1073741823      with the signal axis' min and range.
 *     Files store samples in 8, 16 or 32 bits: 8 and 16 bits keep the highest bits of a raw sample only.
 *
 *  8. Axes. Each channel has a point axis (along a line), a line axis (across lines) and a signal axis (the
 *     values). An axis has a name, a unit, a min (physical value of its start) and a range (its span, so that
 *     its end is min + range), the latter two in its unit. Files keep 6 significant digits of both.
 *
 *  9. Line operators. Where lines or pixels are read, `lineOp` selects a correction of the whole line:
 *       0 raw data      unchanged
 *       1 mean fit      the line's mean is subtracted
 *       2 line fit      a least-squares straight line is subtracted
 *       3 derived data  differences of neighbours; the last one is repeated
 *       4 parabola fit  a least-squares parabola is subtracted
 *       5 polynomial fit  a least-squares polynomial of degree 4 is subtracted
 *     The fits take the sample's index as x, need at least four samples (degree 4: five) and give an empty line for fewer.
 *     They pass -536870912 and 536870911 through as markers and clamp their results to the raw range. Operators work
 *     on raw samples; a real value read through one is the real value of the corrected raw sample, so a
 *     mean-corrected line centres on the middle of the signal axis. Another code fails with
 *     "invalid map<K, T> key".
 *
 * 10. Threads. The library makes no threads and the interface has no lock: call it from one thread at a time.
 *
 * 11. Information. A data set has groups of named texts, for example the settings of a scan. There is one ordered list of
 *     top-level groups; the info functions see it as groups with items, the meta-information functions as a tree of any depth.
 *     A group made by the former is saved in a flat list and one made by the latter as a tree, and both come back so; flat
 *     groups come first. A list that could not hold what is in them is saved as trees, too.
 *
 * 12. What a file does not keep: empty texts (an empty group name comes back as "Group0", an empty axis name
 *     as "Noname", an item without a value not at all, one without a name as " "), blanks at the end of a text, line breaks in a text (they
 *     become blanks), group ids, and what follows a "=" in an item's name (it goes to the value). Information whose names a
 *     file cannot tell apart gets "_2", "_3" and so on behind its name.
 */
#ifndef VELOXDDLL_H
#define VELOXDDLL_H

#include <stdbool.h>
#include <stdint.h>

#if defined(_WIN32) && defined(VELOXD_BUILDING)
#define VELOXD_API __declspec(dllexport)
#elif defined(_WIN32)
#define VELOXD_API __declspec(dllimport)
#elif defined(VELOXD_BUILDING)
#define VELOXD_API __attribute__((visibility("default")))
#else
#define VELOXD_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Files ------------------------------------------------------------------------------------------------ */

/* Opens the file `filename` and reads it whole. Result: its handle, or 0.
 * A file without the bytes "#!" that end a header opens as an empty data set without an error. A file whose
 * samples are cut short does not open. A failed open keeps its handle number from being given out again.
 * Errors: file-open failure naming "open", the system's error number and the file; a version above 2; bad content;
 * a stream failure; "Null pointer" for a null name. */
VELOXD_API uint64_t OpenOxdFile(const char* filename);

/* Makes an empty data set that SaveOxdFile will write to `filename`. Nothing is read or written yet.
 * Result: its handle, or 0 for a null name ("Null pointer"). */
VELOXD_API uint64_t CreateOxdFile(const char* filename);

/* Writes the data set to its file, in place: an existing file is removed and written anew, without a backup.
 * Lines are cut to the longest one in use first, and stay so if the save fails then. A file without any write
 * permission is refused and untouched, as is every file when a channel's bit count is not 8, 16 or 32 ("Invalid bit count: ").
 * When writing fails half-way (a full disk), a partial file stays, the data set in memory is whole, and saving may be tried
 * again. */
VELOXD_API void SaveOxdFile(uint64_t handle);

/* Drops the data set and everything in it without saving. An unknown handle is ignored. */
VELOXD_API void CloseOxdFile(uint64_t handle);

/* Makes `filename` the name that the next SaveOxdFile writes to. Nothing changes on disk. */
VELOXD_API void ChangeOxdFilename(uint64_t handle, const char* filename);

/* Result: the version of the file as last opened or saved (1 or 2). A data set that was created and never
 * saved has none: 0 and the failure "m_pActiveSection == nullptr". */
VELOXD_API int32_t GetOxdVersion(uint64_t handle);

/* ---- Errors ----------------------------------------------------------------------------------------------- */

/* Result: the text of the latest failure, never null, empty if there was none. Lowers the error flag. The text
 * stays, and the pointer stays valid, until the next failure. */
VELOXD_API const char* VELGetLastError(void);

/* Result: whether a failure was stored since VELGetLastError was last called. */
VELOXD_API bool VELHasLastError(void);

/* ---- Groups ----------------------------------------------------------------------------------------------- */

/* Result: the number of groups. */
VELOXD_API uint64_t GetGroupCount(uint64_t handle);

/* Writes all group ids, ascending, to `ids`, which must have room for GetGroupCount elements and, even without groups, be
 * no null pointer. */
VELOXD_API void GetAllGroupIds(uint64_t handle, uint64_t* ids);

/* Makes a group named "Group" and its id, without channels. `bitCount` (8, 16 or 32) is the number of bits in
 * which samples of its channels are saved; another number is found out by SaveOxdFile. Result: the group id. */
VELOXD_API uint64_t CreateGroup(uint64_t handle, int32_t bitCount);

/* Result: the id of the first group whose name is exactly `name`. Action "get group index"; for an unknown name
 * the reason is "No group with given name available. Index: " and the name. */
VELOXD_API uint64_t GetGroupId(uint64_t handle, const char* name);

/* Deletes a group with its channels. Action "delete group". */
VELOXD_API void DeleteGroup(uint64_t handle, uint64_t group);

/* Deletes all groups; the next group made gets id 0 and logical id 256 again. */
VELOXD_API void DeleteAllGroups(uint64_t handle);

/* Result: the logical group id, a 32-bit number; new groups count up from 256. Action "get logical group id". */
VELOXD_API uint64_t GetLogicalGroupId(uint64_t handle, uint64_t group);

/* Sets the logical group id to the low 32 bits of `id`. Action "set logical group id". */
VELOXD_API void SetLogicalGroupId(uint64_t handle, uint64_t group, uint64_t id);

/* Copies the group's name to `buffer`. Action "get group name". */
VELOXD_API void GetGroupName(uint64_t handle, uint64_t group, char* buffer, uint64_t size);

/* Renames the group, and with it the frame name of each of its channels. Action "set group name". */
VELOXD_API void SetGroupName(uint64_t handle, uint64_t group, const char* name);

/* Makes the group have `count` empty slots. A different count DISCARDS all channels of the group; the same
 * count changes nothing. At most 1 048 576 slots. Action "get channel count" (sic). */
VELOXD_API void SetChannelCount(uint64_t handle, uint64_t group, uint64_t count);

/* Result: the number of channel slots, empty ones included. Action "get channel count". */
VELOXD_API uint64_t GetChannelCount(uint64_t handle, uint64_t group);

/* ---- Channels --------------------------------------------------------------------------------------------- */

/* Result: whether the slot holds a channel. A slot that does not exist is an error. Action "evaluate channel". */
VELOXD_API bool HasChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel);

/* Empties the slot; the slot stays. Action "delete channel". */
VELOXD_API void DeleteChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel);

/* Gives the slot a channel of `lines` lines of `points` points, all samples 0. A channel that has this size
 * already keeps its samples, any other loses them. At most 2^32 samples; beyond it "std::bad_alloc".
 * Action "set channel xy dimension". */
VELOXD_API void SetChannelXYDimension(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points, uint64_t lines);

/* Sets the points per line, at most 65536, and keeps the number of lines. A change discards all samples.
 * Action "set channel points". */
VELOXD_API void SetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points);

/* Result: the points per line. Action "get channel points". */
VELOXD_API uint64_t GetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel);

/* Result: how many points of one line are valid. Action "get channel points"; for a line outside the channel
 * the failure is "invalid vector<T> subscript". */
VELOXD_API uint64_t GetChannelData_PointsPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line);

/* Sets the number of lines, at most 65536, and keeps the points per line. A change discards all samples.
 * Action "set channel lines". */
VELOXD_API void SetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel, uint64_t lines);

/* Result: the number of lines. Action "get channel lines". */
VELOXD_API uint64_t GetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel);

/* ---- Axes --------------------------------------------------------------------------------------------------
 * Actions: "set" or "get", then "channel", the axis ("point", "line" or "signal"), "axis" and the property, for example
 * "get channel point axis unit". Min and range are in the axis' unit. Per-line values describe the point axis of one
 * line, which a file may give its own start and span; a line outside the channel fails with
 * "invalid vector<T> subscript". Setting the point axis' min or range moves every line that still has the old value.
 * The signal axis scales the samples (convention 7): changing it changes what real values the raw samples mean. */

VELOXD_API void SetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);
VELOXD_API void GetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);
VELOXD_API void GetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);
VELOXD_API double GetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel);
VELOXD_API double GetChannelData_PointAxisMinPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line);
VELOXD_API void SetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);
VELOXD_API double GetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel);
VELOXD_API double GetChannelData_PointAxisRangePerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line);

VELOXD_API void SetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);
VELOXD_API void GetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);
VELOXD_API void GetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);
VELOXD_API double GetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel);
VELOXD_API void SetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);
VELOXD_API double GetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel);

/* For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name" (sic). */
VELOXD_API void SetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);
VELOXD_API void GetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);
VELOXD_API void GetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);
VELOXD_API double GetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel);
VELOXD_API void SetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);
VELOXD_API double GetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel);

/* ---- Samples ---------------------------------------------------------------------------------------------- */

/* Stores one line. `values` holds GetChannelData_Points raw samples; those outside the raw range are clamped to it.
 * Action "set channel line". */
VELOXD_API void SetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const int32_t* values);

/* Stores one line. `values` holds GetChannelData_Points real values in the unit of the signal axis:
 *   raw = (real - min) * 1073741823 / range - 536870912, cut towards zero; values outside the axis give the raw value of its nearer end.
 * With a range of 0, an axis that is not finite, or for a NaN, the sample is -536870912.
 * Action "set channel line". */
VELOXD_API void SetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const double* values);

/* Reads one line of raw samples through `lineOp` into `values`, as many as the operator gives: GetChannelData_PointsPerLine
 * of that line, or none (and no error) when a fit finds fewer samples than it needs. Never more than GetChannelData_Points: a
 * line of which a damaged file says that it has more cannot be read ("Unknown error"). Action "get channel line". */
VELOXD_API void GetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp, int32_t* values);

/* The same as real values (conventions 7 and 9). Action "get channel line". */
VELOXD_API void GetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp, double* values);

/* Stores one raw sample, clamped to the raw range. Action "set channel pixel". */
VELOXD_API void SetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t value);

/* Stores one real value, converted as by SetChannelData_LineReal. Action "set channel pixel". */
VELOXD_API void SetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, double value);

/* Result: one raw sample of the line that `lineOp` gives. Action "get channel pixel". */
VELOXD_API int32_t GetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t lineOp);

/* The same as a real value. Action "get channel pixel". */
VELOXD_API double GetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t lineOp);

/* ---- Info groups and items ----------------------------------------------------------------------------------
 * Measurement information, seen as a list of groups with items in them (convention 11). `info` and `item` are positions from 0,
 * of which the low 32 bits count; groups inside groups are not items and not counted here. Further reasons:
 *   "No info with given index available. Index: " and the position
 *   "No info item with given index available. Index: " and the position */

/* Result: the number of top-level groups. */
VELOXD_API uint64_t GetInfoGroupCount(uint64_t handle);

/* Appends a group without a name. Result: its position. */
VELOXD_API uint64_t CreateInfoGroup(uint64_t handle);

/* Appends a group; others may have the same name. Result: its position. Action "create info". */
VELOXD_API uint64_t CreateInfoGroupWithName(uint64_t handle, const char* name);

/* Result: the position of the first group of this name, whatever the case of its letters (A to Z). Failure:
 * "No info with given name found. Name: " and the name. Action, for a null name, "get info index". */
VELOXD_API uint64_t GetInfoGroupIndex(uint64_t handle, const char* name);

/* Deletes a group with everything in it. Action "delete info". */
VELOXD_API void DeleteInfoGroup(uint64_t handle, uint64_t info);

/* Deletes all groups. */
VELOXD_API void DeleteAllInfoGroups(uint64_t handle);

/* Copies the group's name to `buffer`. Action "get info name", but "get info item value" when the buffer is too short (sic). */
VELOXD_API void GetInfoGroupName(uint64_t handle, uint64_t info, char* buffer, uint64_t size);

/* Renames a group. Action "set info name". */
VELOXD_API void SetInfoGroupName(uint64_t handle, uint64_t info, const char* name);

/* Moves a group to position `newIndex`; those between make way by one. Action "set new info index"; for a new position that is
 * not one of a group, the failure is "Error while moving info". */
VELOXD_API void SetInfoGroupNewIndex(uint64_t handle, uint64_t info, uint64_t newIndex);

/* Result: the number of items in a group. Action "get info item count". */
VELOXD_API uint64_t GetInfoItemCount(uint64_t handle, uint64_t info);

/* Appends an item. Result: its position. Action "create info item"; a name that an item of the group has already gives the
 * reason "Info item with given name already exists. Name: " and the name. */
VELOXD_API uint64_t CreateInfoItem(uint64_t handle, uint64_t info, const char* name, const char* value);

/* Sets the item's value. Action "set info item value". */
VELOXD_API void SetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, const char* value);

/* Copies the item's value to `buffer`. Action "get info item value". */
VELOXD_API void GetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size);

/* Renames the item. Action "set info item name". */
VELOXD_API void SetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, const char* name);

/* Copies the item's name to `buffer`. Action "get info item name". */
VELOXD_API void GetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size);

/* Result: the position of the item of exactly this name. Action "get info item index"; for an unknown name the reason is
 * "No info item with given name available. Name: " and the name. */
VELOXD_API uint64_t GetInfoItemIndex(uint64_t handle, uint64_t info, const char* name);

/* Deletes an item; those behind it move up by one. Action "delete info item". */
VELOXD_API void DeleteInfoItem(uint64_t handle, uint64_t info, uint64_t item);

/* Deletes all items of a group; groups inside it stay. Action "delete all info items". */
VELOXD_API void DeleteAllInfoItems(uint64_t handle, uint64_t info);

/* ---- Meta-information tree ----------------------------------------------------------------------------------
 * The same information, seen as a tree. `item` is the handle of a node: 1 is the root, which stands for the list of top-level
 * groups, any other comes from the functions below. A handle dies with its node and is never given out again; one that
 * is not of a living node of the file fails with the action's "Unknown error". Failures without an action are given in full. */

/* Result: 1. */
VELOXD_API uint64_t GetMetaInfoTreeRootHandle(uint64_t handle);

/* Result: whether the node is a group, true for the root. `handle` is not looked at. Action "evaluate info item". */
VELOXD_API bool IsMetaInfoItemAGroup(uint64_t handle, uint64_t item);

/* Result: the number of nodes directly below this one. Action "get info item child count". */
VELOXD_API uint64_t GetMetaInfoItemChildCount(uint64_t handle, uint64_t item);

/* Copies the node's name to `buffer`, "Root" for the root. Action "get info item name". */
VELOXD_API void GetMetaInfoItemName(uint64_t handle, uint64_t item, char* buffer, uint64_t size);

/* Renames the node. Action "set info item name"; "Unable to set info item name of ROOT item". */
VELOXD_API void SetMetaInfoItemName(uint64_t handle, uint64_t item, const char* name);

/* Copies the node's value to `buffer`, "--------" for a group. Action "get info item value";
 * "Unable to get info item value from ROOT item". */
VELOXD_API void GetMetaInfoItemValue(uint64_t handle, uint64_t item, char* buffer, uint64_t size);

/* Sets the value of a node that is no group. Action "set info item value"; "Unable to set info item value of ROOT item",
 * "Unable to set info item value of group item". */
VELOXD_API void SetMetaInfoItemValue(uint64_t handle, uint64_t item, const char* value);

/* Result: the handle of the first node below this one. Action "select first child of info item"; when there is none,
 * "Item isn't a group or has no childs. Handle: " and the handle. */
VELOXD_API uint64_t SelectFirstChildMetaInfoItem(uint64_t handle, uint64_t item);

/* Result: the handle of the node behind this one. Action "select next info item"; behind the last one and for the root,
 * "No further items in this node available!". */
VELOXD_API uint64_t SelectNextMetaInfoItem(uint64_t handle, uint64_t item);

/* Result: the handle of the group that the node is in, 1 for a top-level group. Action "select parent of info item";
 * "Unable to get parent of ROOT item", whatever the file handle. */
VELOXD_API uint64_t SelectParentMetaInfoItem(uint64_t handle, uint64_t item);

/* Appends a node with a value to a group. Result: its handle. Action "add info item"; "Unable to add non group info item
 * to ROOT item. Only group items are allowed.", whatever the file handle, "Unable to add info item to non group item.". */
VELOXD_API uint64_t AddMetaInfoItem(uint64_t handle, uint64_t item, const char* name, const char* value);

/* Appends a group to a group or to the root. Result: its handle. Action and failure as above. */
VELOXD_API uint64_t AddMetaInfoItemGroup(uint64_t handle, uint64_t item, const char* name);

/* Deletes the node with everything below it. Action "delete info item"; "Unable to delete ROOT item.", whatever the file handle. */
VELOXD_API void DeleteMetaInfoItem(uint64_t handle, uint64_t item);

/* Deletes all nodes. */
VELOXD_API void DeleteAllMetaInfoItems(uint64_t handle);

#ifdef __cplusplus
}
#endif

#endif
