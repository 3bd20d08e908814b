/* clang-format off */
/*
 * VELOxdDll: read, edit and write .oxd measurement files of scanning probe microscopes.
 *
 * This header is the whole interface of the library VELOxdDll. It is C99 and C++.
 *
 * CONVENTIONS, which hold for every function below
 *
 *  1. File handles. OpenOxdFile and CreateOxdFile return a file handle, the smallest number from 1 that is free.
 *     0 is never a handle. A handle is valid until it is given to CloseOxdFile. No file stays open on disk
 *     between calls. Any function that takes a file handle fails with "Handle does not exist" for an unknown one,
 *     unless its comment says otherwise.
 *
 *  2. Errors. No function raises anything to its caller. A function that fails stores a text, raises a flag and
 *     returns its neutral value: 0, 0.0, false or nothing. VELHasLastError reads the flag; VELGetLastError reads
 *     the text and lowers the flag. A call that succeeds changes neither, so lower the flag before a call that is to
 *     be judged alone. Since 0 is also a valid group id, position, sample and axis value, ask VELHasLastError.
 *     Most texts have the line "std::exception::what: Unable to <action>. <reason>". The comment of a function
 *     gives its <action>. These are the reasons, for whichever of the arguments a function has:
 *       "No group with given index available. Index: " and the group id
 *       "No channel with given name available. Index: " and the channel's position
 *       "Buffer to small. Minimum buffer size: " and the size needed
 *       "Value out of range. Min 0, Max " and the limit
 *       "Null pointer"
 *       "Unknown error": the line or point is outside the channel, or the point is outside what an operator gave
 *     Arguments are checked in the order handle, group, channel, line operator, line and point, texts and arrays.
 *     Only SetChannelData_Points and SetChannelData_Lines check their limit of 65536 before the handle. A failed check
 *     changes nothing. When memory runs out, a function fails with "std::bad_alloc" and, unless its comment says
 *     otherwise, the data set is unchanged.
 *
 *  3. Texts in. A text ends with a zero byte, is in UTF-8 and is copied during the call. File names are in the
 *     system's code page on Windows and plain bytes elsewhere.
 *
 *  4. Texts out. `buffer` is the caller's memory and `size` its length in bytes. The text needs its own length and one
 *     byte for the zero that ends it. A buffer that is too short is left untouched, and the failure names the size
 *     needed. A size of 0 does NOT mean "no buffer": it disables the check, and the text is written however long it
 *     is. Always pass the true size.
 *
 *  5. Groups and channels. `group` is a group id: the smallest number from 0 that was free when the group was
 *     made. It is free again after the group is deleted. Groups are renumbered from 0 when the file is saved and
 *     opened again. The logical group id is a second number, which callers may set and the file stores. `channel` is
 *     the position of a slot in its group, from 0. A slot holds one channel or is empty.
 *
 *  6. Shapes. A channel has `lines` lines of `points` points each. An array for a line holds the samples of its points
 *     in order, GetChannelData_Points elements; no function is told the length of such an array or checks it. `line`
 *     and `point` are positions from 0.
 *
 *  7. Samples. A raw sample is an integer of 30 bits, from -536870912 (-2^29) to 536870911 (2^29 - 1). The signal axis
 *     stretches linearly over this range: the lowest raw sample means the axis' min, the highest one its end. So
 *       real = min + range * (raw + 536870912) / 1073741823
 *     is the real value of a raw sample, in the unit of the signal axis, with min and range of that axis. Files store
 *     samples in 8, 16 or 32 bits: 8 and 16 bits keep only the highest bits of a raw sample.
 *
 *  8. Axes. Each channel has a point axis (along a line), a line axis (across the lines) and a signal axis (the
 *     values). An axis has a name, a unit, a min (the physical value of its start) and a range (its span, so that its
 *     end is min + range). Min and range are in the unit of the axis. Files keep 6 significant digits of both.
 *
 *  9. Line operators. Where lines or single samples are read, `lineOp` selects a correction of the whole line:
 *       0 raw data        unchanged
 *       1 mean fit        the mean of the line is subtracted
 *       2 line fit        a least-squares straight line is subtracted
 *       3 derived data    the difference from each sample to the next one; the last difference is repeated
 *       4 parabola fit    a least-squares parabola is subtracted
 *       5 polynomial fit  a least-squares polynomial of degree 4 is subtracted
 *     The fits take the position of a sample as x. Mean fit needs at least one sample, derived data two, line and
 *     parabola fit four, and polynomial fit five; a line of fewer comes back empty. Samples of -536870912 and
 *     536870911 mark saturation: fits leave them unchanged, and clamp their results to the raw range. Operators work
 *     on raw samples; a real value that is read through one is the real value of the corrected raw sample, so a line
 *     minus its mean centres on the middle of the signal axis.
 *     Any other `lineOp` fails with "invalid map<K, T> key".
 *
 * 10. Threads. The library creates no threads. Threads may work on DIFFERENT file handles at the same time, and may
 *     open, save and close files meanwhile; each works as if it were alone. Make one call at a time for each file
 *     handle, from any thread; that includes calls for nodes of its information. The last error is one for the process:
 *     flag and text may be those of another thread's failure. Where several threads make calls, judge these by their
 *     results, and let one thread at a time call VELGetLastError and use its text.
 *
 * 11. Information. A data set has groups of named texts, for example the settings of a scan. There is one ordered list
 *     of top-level groups; the info functions see it as groups with items, the meta-information functions as a tree of
 *     any depth. A group that the former made is saved in a flat list, one that the latter made as a tree, and each
 *     comes back in its own form, flat groups first. When the flat list could not hold the content of the flat
 *     groups, these are saved as trees, too.
 *
 * 12. Opening. A file without the bytes "#!" that end a header, or that cannot be read up to them, opens as an empty
 *     data set without an error. GetOxdVersion tells such a file from a valid one, because it fails for it.
 *     For a file with a fault, OpenOxdFile loads what it can and then fails. The whole header is read first, then
 *     the samples line by line; lines that the file lacks hold no samples. What was loaded stays in memory under the
 *     handle that the function would have returned, the smallest number that was free before the call. That handle
 *     works like any other, and only CloseOxdFile frees it.
 *
 * 13. Saving. SaveOxdFile DROPS views and processors, which are settings of the acquiring application, and all sections
 *     that the library does not know. The file is replaced in place, without a backup. On POSIX systems the new file
 *     takes over the permission bits of the old one, and its owner and group where the system allows that; other hard
 *     links keep the old content, and access control lists are lost. Users who could not open the old file cannot open
 *     the new one, with two exceptions: the new file inherits a default access control list of its folder, and it
 *     belongs to the saver when the saver does not own the old file and may not change owners. A save to a FIFO blocks
 *     until somebody reads from it. To keep the old file, call ChangeOxdFilename first.
 *
 * 14. What a file does not keep. Empty texts: an empty group name comes back as "Group" and the group's id, an
 *     empty axis name as "Noname", an item without a name as " ", and an item without a value not at all. Blanks at the
 *     end of a text. Line breaks in a text, which become blanks. Group ids. What follows a "=" in the name of an item,
 *     which goes to its value. Information whose names a file cannot tell apart gets "_2", "_3" and so on behind them.
 *
 * 15. Output. The library prints nothing. If the environment variable VELOXD_LOG is set to any text when it is loaded,
 *     it prints a line to the standard output for each number of a file that it could not read and each text that it
 *     changed to save it.
 *     In a program that has set up the same copy of Boost.Log, with attributes, these records go to its sinks.
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

/* Opens the file `filename` and reads all of it into memory. Result: its handle, or 0. A file without an end mark
 * opens empty and without an error; a failed open keeps what was loaded (convention 12). Errors: a failure to open,
 * which names "open", the system's error number and the file; any version but 1 and 2; bad content; a failed read, also
 * when the samples are cut short; "Null pointer" for a null name, which uses no handle number. */
VELOXD_API uint64_t OpenOxdFile(const char* filename);

/* Creates an empty data set that SaveOxdFile will write to `filename`. Nothing on disk is read or written yet.
 * Result: its handle, or 0 for a null name ("Null pointer"). */
VELOXD_API uint64_t CreateOxdFile(const char* filename);

/* Writes the data set to its file, in place of an existing one. Views, processors and unknown sections are dropped; see
 * convention 13 for this and for what the new file takes over from the old one.
 * Before that, lines are cut to the longest one in use, and they stay cut when the save fails afterwards. Lines that the
 * file promised and did not hold count as in use, with the length that it gave them.
 * Errors that leave the old file untouched: nobody has the permission to write it; the bit count of a channel is not 8,
 * 16 or 32 ("Invalid bit count: "); no file can hold that much; too little memory. When writing fails half-way, for
 * example because the disk is full, a partial file stays, the data set in memory is complete, and the save may be tried
 * again. */
VELOXD_API void SaveOxdFile(uint64_t handle);

/* Frees the handle and the data set with everything in it, without saving. An unknown handle is ignored. */
VELOXD_API void CloseOxdFile(uint64_t handle);

/* Makes `filename` the name that the next SaveOxdFile writes to. Nothing on disk changes. Error: "Null pointer". */
VELOXD_API void ChangeOxdFilename(uint64_t handle, const char* filename);

/* Result: the version of the file as last opened or saved, 1 or 2, and 1 if its header gives none. When the open failed
 * because of the version, the result is the file's own number, for example 7, 0 or -3, without an error. A data set
 * that was created and never saved has no version, nor has a file without a header (convention 12) or one that could
 * not be opened: the result is 0 and the failure "m_pActiveSection == nullptr". */
VELOXD_API int32_t GetOxdVersion(uint64_t handle);

/* ---- Errors ----------------------------------------------------------------------------------------------- */

/* Result: the text of the latest failure; never null, and empty when there was none. Lowers the error flag. The text
 * stays, and the pointer remains valid, until the function is called after another failure. It cannot fail. */
VELOXD_API const char* VELGetLastError(void);

/* Result: whether a failure was stored since VELGetLastError was last called. The function cannot fail. */
VELOXD_API bool VELHasLastError(void);

/* ---- Groups ----------------------------------------------------------------------------------------------- */

/* Result: the number of groups. */
VELOXD_API uint64_t GetGroupCount(uint64_t handle);

/* Writes all group ids in ascending order to `ids`, an array of GetGroupCount elements. It must not be null, even when
 * there are no groups. */
VELOXD_API void GetAllGroupIds(uint64_t handle, uint64_t* ids);

/* Makes a group without channels, named "Group" and its id, for example "Group0". `bitCount` (8, 16 or 32) is the
 * number of bits in which samples of its channels are saved; any other number makes SaveOxdFile fail once the group has
 * a channel. Result: the group id. */
VELOXD_API uint64_t CreateGroup(uint64_t handle, int32_t bitCount);

/* Result: the id of the first group whose name is exactly `name`. Action "get group index"; for an unknown name
 * the reason is "No group with given name available. Index: " and the name. */
VELOXD_API uint64_t GetGroupId(uint64_t handle, const char* name);

/* Deletes a group with its channels. Action "delete group". */
VELOXD_API void DeleteGroup(uint64_t handle, uint64_t group);

/* Deletes all groups with their channels. The next group that is made gets the id 0 and the logical id 256 again. */
VELOXD_API void DeleteAllGroups(uint64_t handle);

/* Result: the logical group id, a number of 32 bits. New groups get ascending ones from 256. Action "get logical group
 * id". */
VELOXD_API uint64_t GetLogicalGroupId(uint64_t handle, uint64_t group);

/* Sets the logical group id to the low 32 bits of `id`. Action "set logical group id". */
VELOXD_API void SetLogicalGroupId(uint64_t handle, uint64_t group, uint64_t id);

/* Copies the group's name to `buffer`. Action "get group name". */
VELOXD_API void GetGroupName(uint64_t handle, uint64_t group, char* buffer, uint64_t size);

/* Renames the group, and with it the frame name of each of its channels. Action "set group name". */
VELOXD_API void SetGroupName(uint64_t handle, uint64_t group, const char* name);

/* Gives the group `count` empty slots, at most 1 048 576; beyond that it fails with "std::bad_alloc". A count that
 * differs from the present one DISCARDS all channels of the group; the same count changes nothing. Action "get channel
 * count" (sic). */
VELOXD_API void SetChannelCount(uint64_t handle, uint64_t group, uint64_t count);

/* Result: the number of channel slots, empty ones included. Action "get channel count". */
VELOXD_API uint64_t GetChannelCount(uint64_t handle, uint64_t group);

/* ---- Channels --------------------------------------------------------------------------------------------- */

/* Result: whether the slot holds a channel. A slot that does not exist is an error. Action "evaluate channel". */
VELOXD_API bool HasChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel);

/* Deletes the channel. Its slot stays, empty. Action "delete channel". */
VELOXD_API void DeleteChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel);

/* Gives the slot a channel of `lines` lines of `points` points each, all samples 0. A channel that has this size
 * already keeps its samples; one of another size loses them. `points` and `lines` may each be up to 2^31 - 1 and their
 * product up to 2^32; without points, there may be 1 048 576 lines. Beyond that the function fails with
 * "std::bad_alloc". Action "set channel xy dimension". */
VELOXD_API void SetChannelXYDimension(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points, uint64_t lines);

/* Sets the points per line, at most 65536, and keeps the number of lines. A change DISCARDS all samples.
 * Action "set channel points". */
VELOXD_API void SetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points);

/* Result: the points per line. Action "get channel points". */
VELOXD_API uint64_t GetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel);

/* Result: how many points of one line are valid, counted from its start: those that were measured. Action "get channel
 * points"; for a line outside the channel the failure is "invalid vector<T> subscript". */
VELOXD_API uint64_t GetChannelData_PointsPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line);

/* Sets the number of lines, at most 65536, and keeps the points per line. A change DISCARDS all samples.
 * Action "set channel lines". */
VELOXD_API void SetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel, uint64_t lines);

/* Result: the number of lines. Action "get channel lines". */
VELOXD_API uint64_t GetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel);

/* ---- Axes --------------------------------------------------------------------------------------------------
 * Names, units, mins and ranges of the three axes of a channel (convention 8). `min` and `range` are in the unit of the
 * axis, and any double is accepted. Setting a name or a unit converts no number. The getters copy texts to `buffer`.
 * The action is "set" or "get", then "channel", the axis ("point", "line" or "signal"), "axis" and the property, for
 * example "get channel point axis unit". */

/* The point axis, which runs along a line. A file may give each line its own start and span: the functions "PerLine"
 * read those of one line, and fail with "invalid vector<T> subscript" for a line outside the channel; their actions
 * are those of the functions for the channel. Setting min or range also moves every line that still had the channel's
 * old value. */
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

/* The line axis, which runs across the lines. */
VELOXD_API void SetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);
VELOXD_API void GetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);
VELOXD_API void GetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);
VELOXD_API double GetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel);
VELOXD_API void SetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);
VELOXD_API double GetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel);

/* The signal axis, which scales the samples (convention 7): setting its min or range changes what real values the raw
 * samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal axis name"
 * (sic). */
VELOXD_API void SetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name);
VELOXD_API void GetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit);
VELOXD_API void GetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
VELOXD_API void SetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min);
VELOXD_API double GetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel);
VELOXD_API void SetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range);
VELOXD_API double GetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel);

/* ---- Samples ---------------------------------------------------------------------------------------------- */

/* Stores one line. `values` holds GetChannelData_Points raw samples; those outside the raw range are clamped to it. All
 * points of the line are valid afterwards. Action "set channel line". */
VELOXD_API void SetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const int32_t* values);

/* Stores one line. `values` holds GetChannelData_Points real values in the unit of the signal axis. Each is converted
 * by the inverse of the formula in convention 7, with min and range of the signal axis:
 *   raw = (real - min) * 1073741823 / range - 536870912, cut towards zero
 * A value outside the axis gives the raw value of its nearer end. With a range of 0, with an axis that is not finite,
 * and for a NaN, the sample is -536870912. All points of the line are valid afterwards. Action "set channel line". */
VELOXD_API void SetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const double* values);

/* Reads one line of raw samples through `lineOp` into `values`, which must have GetChannelData_Points elements. As
 * many are written as the operator gives: GetChannelData_PointsPerLine of that line, or none, without an error, when a
 * fit finds fewer samples than it needs. The others keep what they held. A line that has more valid points than
 * GetChannelData_Points, as a damaged file may say, cannot be read ("Unknown error"). Action "get channel line". */
VELOXD_API void GetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp, int32_t* values);

/* Reads one line like GetChannelData_LineRaw, as real values in the unit of the signal axis (conventions 7 and 9).
 * Action "get channel line". */
VELOXD_API void GetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp, double* values);

/* Stores one raw sample, clamped to the raw range. The points up to this one are valid afterwards. Action "set channel
 * pixel". */
VELOXD_API void SetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t value);

/* Stores one real value in the unit of the signal axis, converted as by SetChannelData_LineReal. The points up to this
 * one are valid afterwards. Action "set channel pixel". */
VELOXD_API void SetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, double value);

/* Result: one raw sample of the line, after `lineOp` was applied to the whole line. Action "get channel pixel". */
VELOXD_API int32_t GetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t lineOp);

/* Result: the same sample as a real value in the unit of the signal axis. Action "get channel pixel". */
VELOXD_API double GetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line, int32_t lineOp);

/* ---- Info groups and items ----------------------------------------------------------------------------------
 * Measurement information, seen as a list of groups with items in them (convention 11). `info` is the position of a
 * top-level group and `item` that of an item in it, both from 0; only their low 32 bits count. Groups inside groups
 * are no items and are not counted here. There are two more reasons:
 *   "No info with given index available. Index: " and the position
 *   "No info item with given index available. Index: " and the position */

/* Result: the number of top-level groups. */
VELOXD_API uint64_t GetInfoGroupCount(uint64_t handle);

/* Appends a group without a name and without items. Result: its position. */
VELOXD_API uint64_t CreateInfoGroup(uint64_t handle);

/* Appends a group without items. Several groups may have the same name. Result: its position. Action "create info". */
VELOXD_API uint64_t CreateInfoGroupWithName(uint64_t handle, const char* name);

/* Result: the position of the first group of this name, whatever the case of its letters A to Z. The failure for an
 * unknown name is "No info with given name found. Name: " and the name. Action, for a null name, "get info index". */
VELOXD_API uint64_t GetInfoGroupIndex(uint64_t handle, const char* name);

/* Deletes a group with everything in it. Action "delete info". */
VELOXD_API void DeleteInfoGroup(uint64_t handle, uint64_t info);

/* Deletes all groups. */
VELOXD_API void DeleteAllInfoGroups(uint64_t handle);

/* Copies the group's name to `buffer`. Action "get info name", but "get info item value" (sic) when the buffer is too
 * short. */
VELOXD_API void GetInfoGroupName(uint64_t handle, uint64_t info, char* buffer, uint64_t size);

/* Renames a group. Action "set info name". */
VELOXD_API void SetInfoGroupName(uint64_t handle, uint64_t info, const char* name);

/* Moves a group to the position `newIndex`; the groups in between move by one. Action "set new info index"; when there
 * is no group at the new position, the failure is "Error while moving info". */
VELOXD_API void SetInfoGroupNewIndex(uint64_t handle, uint64_t info, uint64_t newIndex);

/* Result: the number of items in a group. Action "get info item count". */
VELOXD_API uint64_t GetInfoItemCount(uint64_t handle, uint64_t info);

/* Appends an item to a group. Result: its position. Action "create info item"; when an item of the group has the name
 * already, the reason is "Info item with given name already exists. Name: " and the name. */
VELOXD_API uint64_t CreateInfoItem(uint64_t handle, uint64_t info, const char* name, const char* value);

/* Sets the item's value. Action "set info item value". */
VELOXD_API void SetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, const char* value);

/* Copies the item's value to `buffer`. Action "get info item value". */
VELOXD_API void GetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size);

/* Renames the item. Action "set info item name". */
VELOXD_API void SetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, const char* name);

/* Copies the item's name to `buffer`. Action "get info item name". */
VELOXD_API void GetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size);

/* Result: the position of the item whose name is exactly `name`. Action "get info item index"; for an unknown name the
 * reason is "No info item with given name available. Name: " and the name. */
VELOXD_API uint64_t GetInfoItemIndex(uint64_t handle, uint64_t info, const char* name);

/* Deletes an item; those behind it move up by one. Action "delete info item". */
VELOXD_API void DeleteInfoItem(uint64_t handle, uint64_t info, uint64_t item);

/* Deletes all items of a group; groups inside it stay. Action "delete all info items". */
VELOXD_API void DeleteAllInfoItems(uint64_t handle, uint64_t info);

/* ---- Meta-information tree ----------------------------------------------------------------------------------
 * The same information, seen as a tree of groups and of items with a value. `item` is the handle of a node. 1 is the
 * root, which stands for the list of top-level groups; the functions below return all others. The handle of a node
 * ends with the node and is never given out again. A handle that is not of a living node of this file fails with the
 * function's action and "Unknown error". Failures that stand without an action are given in full. */

/* Result: 1, the handle of the root. */
VELOXD_API uint64_t GetMetaInfoTreeRootHandle(uint64_t handle);

/* Result: whether the node is a group; true for the root. `handle` is ignored: the node may be of any open file. Action
 * "evaluate info item". */
VELOXD_API bool IsMetaInfoItemAGroup(uint64_t handle, uint64_t item);

/* Result: the number of nodes directly below this one, 0 for an item. Action "get info item child count". */
VELOXD_API uint64_t GetMetaInfoItemChildCount(uint64_t handle, uint64_t item);

/* Copies the node's name to `buffer`, "Root" for the root. Action "get info item name". */
VELOXD_API void GetMetaInfoItemName(uint64_t handle, uint64_t item, char* buffer, uint64_t size);

/* Renames the node. Action "set info item name"; the root fails with "Unable to set info item name of ROOT item". */
VELOXD_API void SetMetaInfoItemName(uint64_t handle, uint64_t item, const char* name);

/* Copies the node's value to `buffer`, "--------" for a group. Action "get info item value"; the root fails with
 * "Unable to get info item value from ROOT item". */
VELOXD_API void GetMetaInfoItemValue(uint64_t handle, uint64_t item, char* buffer, uint64_t size);

/* Sets the value of an item. Action "set info item value"; the root fails with "Unable to set info item value of ROOT
 * item", a group with "Unable to set info item value of group item". */
VELOXD_API void SetMetaInfoItemValue(uint64_t handle, uint64_t item, const char* value);

/* Result: the handle of the first node below this one. Action "select first child of info item"; when there is none,
 * the failure is "Item isn't a group or has no childs. Handle: " and the handle of the node. */
VELOXD_API uint64_t SelectFirstChildMetaInfoItem(uint64_t handle, uint64_t item);

/* Result: the handle of the next node in the same group. Action "select next info item"; for the last node and for the
 * root the failure is "No further items in this node available!". */
VELOXD_API uint64_t SelectNextMetaInfoItem(uint64_t handle, uint64_t item);

/* Result: the handle of the group that the node is in, 1 for a top-level group. Action "select parent of info item";
 * the root fails with "Unable to get parent of ROOT item", whatever the file handle is. */
VELOXD_API uint64_t SelectParentMetaInfoItem(uint64_t handle, uint64_t item);

/* Appends an item to a group. Result: its handle. Action "add info item"; the root fails with "Unable to add non group
 * info item to ROOT item. Only group items are allowed.", whatever the file handle is, and an item with "Unable to add
 * info item to non group item.". */
VELOXD_API uint64_t AddMetaInfoItem(uint64_t handle, uint64_t item, const char* name, const char* value);

/* Appends a group without a value to a group or to the root. Result: its handle. Action "add info item"; an item fails
 * with "Unable to add info item to non group item.". */
VELOXD_API uint64_t AddMetaInfoItemGroup(uint64_t handle, uint64_t item, const char* name);

/* Deletes the node with everything below it. Action "delete info item"; the root fails with "Unable to delete ROOT
 * item.", whatever the file handle is. */
VELOXD_API void DeleteMetaInfoItem(uint64_t handle, uint64_t item);

/* Deletes all nodes but the root. */
VELOXD_API void DeleteAllMetaInfoItems(uint64_t handle);

#ifdef __cplusplus
}
#endif

#endif
