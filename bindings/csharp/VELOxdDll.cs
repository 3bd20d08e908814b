// The functions of the library VELOxdDll, for .NET, with what VELOxdDll.h says of each. docs/using/csharp.md tells how to call
// them, and docs/reference/files.md has the conventions that their comments name.
using System;
using System.Runtime.InteropServices;
using System.Text;
using static System.Runtime.InteropServices.CallingConvention;
using static System.Runtime.InteropServices.UnmanagedType;

/// <summary>The functions of the library VELOxdDll, as C has them.</summary>
public static class VELOxdDll
{
    // VELOxdDll.dll on Windows, libVELOxdDll.so on Linux: the runtime adds what is missing.
    private const string Library = "VELOxdDll";

    /// <summary>Throws the stored text of a failure, if there was one since the last call.</summary>
    public static void Check()
    {
        if (VELHasLastError())
            throw new InvalidOperationException(LastError());
    }

    /// <summary>The text of the latest failure. Lowers the flag that VELHasLastError reads.</summary>
    public static string LastError()
    {
        IntPtr text = VELGetLastError();
        int length = 0;
        while (Marshal.ReadByte(text, length) != 0)
            ++length;
        var bytes = new byte[length];
        Marshal.Copy(text, bytes, 0, length);
        return Encoding.UTF8.GetString(bytes);
    }

    /// <summary>What a function has written to a text buffer.</summary>
    public static string Text(byte[] buffer)
    {
        int length = Array.IndexOf(buffer, (byte)0);
        return Encoding.UTF8.GetString(buffer, 0, length < 0 ? buffer.Length : length);
    }

    // The rest is made by scripts/bindings.

    // Files

    /// <summary>
    /// Opens the file <paramref name="filename"/> and reads all of it into memory. Result: its handle, or 0. A file
    /// without an end mark opens empty and without an error; a failed open keeps what was loaded (convention 12).
    /// Errors: a failure to open, which names "open", the system's error number and the file; any version but 1 and
    /// 2; bad content; a failed read, also when the samples are cut short; "Null pointer" for a null name, which
    /// uses no handle number.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern ulong OpenOxdFile([MarshalAs(LPStr)] string filename);

    /// <summary>
    /// Creates an empty data set that SaveOxdFile will write to <paramref name="filename"/>. Nothing on disk is
    /// read or written yet. Result: its handle, or 0 for a null name ("Null pointer").
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern ulong CreateOxdFile([MarshalAs(LPStr)] string filename);

    /// <summary>
    /// Writes the data set to its file, in place of an existing one. Views, processors and unknown sections are
    /// dropped; see convention 13 for this and for what the new file takes over from the old one. Before that,
    /// lines are cut to the longest one in use, and they stay cut when the save fails afterwards. Lines that the
    /// file promised and did not hold count as in use, with the length that it gave them. Errors that leave the old
    /// file untouched: nobody has the permission to write it; the bit count of a channel is not 8, 16 or 32
    /// ("Invalid bit count: "); no file can hold that much; too little memory. When writing fails half-way, for
    /// example because the disk is full, a partial file stays, the data set in memory is complete, and the save may
    /// be tried again.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SaveOxdFile(ulong handle);

    /// <summary>Frees the handle and the data set with everything in it, without saving. An unknown handle is ignored.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void CloseOxdFile(ulong handle);

    /// <summary>
    /// Makes <paramref name="filename"/> the name that the next SaveOxdFile writes to. Nothing on disk changes.
    /// Error: "Null pointer".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern void ChangeOxdFilename(ulong handle, [MarshalAs(LPStr)] string filename);

    /// <summary>
    /// Result: the version of the file as last opened or saved, 1 or 2, and 1 if its header gives none. When the
    /// open failed because of the version, the result is the file's own number, for example 7, 0 or -3, without an
    /// error. A data set that was created and never saved has no version, nor has a file without a header
    /// (convention 12) or one that could not be opened: the result is 0 and the failure "m_pActiveSection ==
    /// nullptr".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int GetOxdVersion(ulong handle);

    // Errors

    /// <summary>
    /// Result: the text of the latest failure; never null, and empty when there was none. Lowers the error flag.
    /// The text stays, and the pointer remains valid, until the function is called after another failure. It cannot
    /// fail.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern IntPtr VELGetLastError();

    /// <summary>Result: whether a failure was stored since VELGetLastError was last called. The function cannot fail.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    [return: MarshalAs(I1)]
    public static extern bool VELHasLastError();

    // Groups

    /// <summary>Result: the number of groups.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetGroupCount(ulong handle);

    /// <summary>
    /// Writes all group ids in ascending order to <paramref name="ids"/>, an array of GetGroupCount elements. It
    /// must not be null, even when there are no groups.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetAllGroupIds(ulong handle, [In, Out] ulong[] ids);

    /// <summary>
    /// Makes a group without channels, named "Group" and its id, for example "Group0". <paramref name="bitCount"/>
    /// (8, 16 or 32) is the number of bits in which samples of its channels are saved; any other number makes
    /// SaveOxdFile fail once the group has a channel. Result: the group id.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateGroup(ulong handle, int bitCount);

    /// <summary>
    /// Result: the id of the first group whose name is exactly <paramref name="name"/>. Action "get group index";
    /// for an unknown name the reason is "No group with given name available. Index: " and the name.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetGroupId(ulong handle, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>Deletes a group with its channels. Action "delete group".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteGroup(ulong handle, ulong group);

    /// <summary>
    /// Deletes all groups with their channels. The next group that is made gets the id 0 and the logical id 256
    /// again.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllGroups(ulong handle);

    /// <summary>
    /// Result: the logical group id, a number of 32 bits. New groups get ascending ones from 256. Action "get
    /// logical group id".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetLogicalGroupId(ulong handle, ulong group);

    /// <summary>Sets the logical group id to the low 32 bits of <paramref name="id"/>. Action "set logical group id".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetLogicalGroupId(ulong handle, ulong group, ulong id);

    /// <summary>Copies the group's name to <paramref name="buffer"/>. Action "get group name".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetGroupName(ulong handle, ulong group, [In, Out] byte[] buffer, ulong size);

    /// <summary>Renames the group, and with it the frame name of each of its channels. Action "set group name".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetGroupName(ulong handle, ulong group, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>
    /// Gives the group <paramref name="count"/> empty slots, at most 1 048 576; beyond that it fails with
    /// "std::bad_alloc". A count that differs from the present one DISCARDS all channels of the group; the same
    /// count changes nothing. Action "get channel count" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelCount(ulong handle, ulong group, ulong count);

    /// <summary>Result: the number of channel slots, empty ones included. Action "get channel count".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelCount(ulong handle, ulong group);

    // Channels

    /// <summary>Result: whether the slot holds a channel. A slot that does not exist is an error. Action "evaluate channel".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    [return: MarshalAs(I1)]
    public static extern bool HasChannelBuffer(ulong handle, ulong group, ulong channel);

    /// <summary>Deletes the channel. Its slot stays, empty. Action "delete channel".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteChannelBuffer(ulong handle, ulong group, ulong channel);

    /// <summary>
    /// Gives the slot a channel of <paramref name="lines"/> lines of <paramref name="points"/> points each, all
    /// samples 0. A channel that has this size already keeps its samples; one of another size loses them. <paramref
    /// name="points"/> and <paramref name="lines"/> may each be up to 2^31 - 1 and their product up to 2^32;
    /// without points, there may be 1 048 576 lines. Beyond that the function fails with "std::bad_alloc". Action
    /// "set channel xy dimension".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelXYDimension(ulong handle, ulong group, ulong channel, ulong points, ulong lines);

    /// <summary>
    /// Sets the points per line, at most 65536, and keeps the number of lines. A change DISCARDS all samples.
    /// Action "set channel points".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_Points(ulong handle, ulong group, ulong channel, ulong points);

    /// <summary>Result: the points per line. Action "get channel points".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelData_Points(ulong handle, ulong group, ulong channel);

    /// <summary>
    /// Result: how many points of one line are valid, counted from its start: those that were measured. Action "get
    /// channel points"; for a line outside the channel the failure is "invalid vector&lt;T&gt; subscript".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelData_PointsPerLine(ulong handle, ulong group, ulong channel, ulong line);

    /// <summary>
    /// Sets the number of lines, at most 65536, and keeps the points per line. A change DISCARDS all samples.
    /// Action "set channel lines".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_Lines(ulong handle, ulong group, ulong channel, ulong lines);

    /// <summary>Result: the number of lines. Action "get channel lines".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelData_Lines(ulong handle, ulong group, ulong channel);

    // Axes
    // Names, units, mins and ranges of the three axes of a channel (convention 8). `min` and `range` are in the unit of the
    // axis, and any double is accepted. Setting a name or a unit converts no number. The getters copy texts to `buffer`.
    // The action is "set" or "get", then "channel", the axis ("point", "line" or "signal"), "axis" and the property, for
    // example "get channel point axis unit".

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisName(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_PointAxisName(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisUnit(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string unit);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_PointAxisUnit(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisMin(ulong handle, ulong group, ulong channel, double min);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisMin(ulong handle, ulong group, ulong channel);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisMinPerLine(ulong handle, ulong group, ulong channel, ulong line);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisRange(ulong handle, ulong group, ulong channel, double range);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisRange(ulong handle, ulong group, ulong channel);

    /// <summary>
    /// The point axis, which runs along a line. A file may give each line its own start and span: the functions
    /// "PerLine" read those of one line, and fail with "invalid vector&lt;T&gt; subscript" for a line outside the
    /// channel; their actions are those of the functions for the channel. Setting min or range also moves every
    /// line that still had the channel's old value.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisRangePerLine(ulong handle, ulong group, ulong channel, ulong line);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisName(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineAxisName(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisUnit(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string unit);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineAxisUnit(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisMin(ulong handle, ulong group, ulong channel, double min);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_LineAxisMin(ulong handle, ulong group, ulong channel);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisRange(ulong handle, ulong group, ulong channel, double range);

    /// <summary>The line axis, which runs across the lines.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_LineAxisRange(ulong handle, ulong group, ulong channel);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisName(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_SignalAxisName(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisUnit(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string unit);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_SignalAxisUnit(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisMin(ulong handle, ulong group, ulong channel, double min);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_SignalAxisMin(ulong handle, ulong group, ulong channel);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisRange(ulong handle, ulong group, ulong channel, double range);

    /// <summary>
    /// The signal axis, which scales the samples (convention 7): setting its min or range changes what real values
    /// the raw samples mean. For a missing channel SetChannelData_SignalAxisName has the action "set channel sigal
    /// axis name" (sic).
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_SignalAxisRange(ulong handle, ulong group, ulong channel);

    // Samples

    /// <summary>
    /// Stores one line. <paramref name="values"/> holds GetChannelData_Points raw samples; those outside the raw
    /// range are clamped to it. All points of the line are valid afterwards. Action "set channel line".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineRaw(ulong handle, ulong group, ulong channel, ulong line, [In] int[] values);

    /// <summary>
    /// Stores one line. <paramref name="values"/> holds GetChannelData_Points real values in the unit of the signal
    /// axis. Each is converted by the inverse of the formula in convention 7, with min and range of the signal
    /// axis:
    /// <code>
    ///   raw = (real - min) * 1073741823 / range - 536870912, cut towards zero
    /// </code>
    /// A value outside the axis gives the raw value of its nearer end. With a range of 0, with an axis that is not
    /// finite, and for a NaN, the sample is -536870912. All points of the line are valid afterwards. Action "set
    /// channel line".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineReal(ulong handle, ulong group, ulong channel, ulong line, [In] double[] values);

    /// <summary>
    /// Reads one line of raw samples through <paramref name="lineOp"/> into <paramref name="values"/>, which must
    /// have GetChannelData_Points elements. As many are written as the operator gives: GetChannelData_PointsPerLine
    /// of that line, or none, without an error, when a fit finds fewer samples than it needs. The others keep what
    /// they held. A line that has more valid points than GetChannelData_Points, as a damaged file may say, cannot
    /// be read ("Unknown error"). Action "get channel line".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineRaw(ulong handle, ulong group, ulong channel, ulong line, int lineOp, [In, Out] int[] values);

    /// <summary>
    /// Reads one line like GetChannelData_LineRaw, as real values in the unit of the signal axis (conventions 7 and
    /// 9). Action "get channel line".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineReal(ulong handle, ulong group, ulong channel, ulong line, int lineOp, [In, Out] double[] values);

    /// <summary>
    /// Stores one raw sample, clamped to the raw range. The points up to this one are valid afterwards. Action "set
    /// channel pixel".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PixelRaw(ulong handle, ulong group, ulong channel, ulong point, ulong line, int value);

    /// <summary>
    /// Stores one real value in the unit of the signal axis, converted as by SetChannelData_LineReal. The points up
    /// to this one are valid afterwards. Action "set channel pixel".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PixelReal(ulong handle, ulong group, ulong channel, ulong point, ulong line, double value);

    /// <summary>
    /// Result: one raw sample of the line, after <paramref name="lineOp"/> was applied to the whole line. Action
    /// "get channel pixel".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int GetChannelData_PixelRaw(ulong handle, ulong group, ulong channel, ulong point, ulong line, int lineOp);

    /// <summary>Result: the same sample as a real value in the unit of the signal axis. Action "get channel pixel".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PixelReal(ulong handle, ulong group, ulong channel, ulong point, ulong line, int lineOp);

    // Info groups and items
    // Measurement information, seen as a list of groups with items in them (convention 11). `info` is the position of a
    // top-level group and `item` that of an item in it, both from 0; only their low 32 bits count. Groups inside groups
    // are no items and are not counted here. There are two more reasons:
    //   "No info with given index available. Index: " and the position
    //   "No info item with given index available. Index: " and the position

    /// <summary>Result: the number of top-level groups.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoGroupCount(ulong handle);

    /// <summary>Appends a group without a name and without items. Result: its position.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateInfoGroup(ulong handle);

    /// <summary>
    /// Appends a group without items. Several groups may have the same name. Result: its position. Action "create
    /// info".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateInfoGroupWithName(ulong handle, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>
    /// Result: the position of the first group of this name, whatever the case of its letters A to Z. The failure
    /// for an unknown name is "No info with given name found. Name: " and the name. Action, for a null name, "get
    /// info index".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoGroupIndex(ulong handle, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>Deletes a group with everything in it. Action "delete info".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteInfoGroup(ulong handle, ulong info);

    /// <summary>Deletes all groups.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllInfoGroups(ulong handle);

    /// <summary>
    /// Copies the group's name to <paramref name="buffer"/>. Action "get info name", but "get info item value"
    /// (sic) when the buffer is too short.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetInfoGroupName(ulong handle, ulong info, [In, Out] byte[] buffer, ulong size);

    /// <summary>Renames a group. Action "set info name".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoGroupName(ulong handle, ulong info, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>
    /// Moves a group to the position <paramref name="newIndex"/>; the groups in between move by one. Action "set
    /// new info index"; when there is no group at the new position, the failure is "Error while moving info".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoGroupNewIndex(ulong handle, ulong info, ulong newIndex);

    /// <summary>Result: the number of items in a group. Action "get info item count".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoItemCount(ulong handle, ulong info);

    /// <summary>
    /// Appends an item to a group. Result: its position. Action "create info item"; when an item of the group has
    /// the name already, the reason is "Info item with given name already exists. Name: " and the name.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateInfoItem(ulong handle, ulong info, [MarshalAs(LPUTF8Str)] string name, [MarshalAs(LPUTF8Str)] string value);

    /// <summary>Sets the item's value. Action "set info item value".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoItemValue(ulong handle, ulong info, ulong item, [MarshalAs(LPUTF8Str)] string value);

    /// <summary>Copies the item's value to <paramref name="buffer"/>. Action "get info item value".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetInfoItemValue(ulong handle, ulong info, ulong item, [In, Out] byte[] buffer, ulong size);

    /// <summary>Renames the item. Action "set info item name".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoItemName(ulong handle, ulong info, ulong item, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>Copies the item's name to <paramref name="buffer"/>. Action "get info item name".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetInfoItemName(ulong handle, ulong info, ulong item, [In, Out] byte[] buffer, ulong size);

    /// <summary>
    /// Result: the position of the item whose name is exactly <paramref name="name"/>. Action "get info item
    /// index"; for an unknown name the reason is "No info item with given name available. Name: " and the name.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoItemIndex(ulong handle, ulong info, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>Deletes an item; those behind it move up by one. Action "delete info item".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteInfoItem(ulong handle, ulong info, ulong item);

    /// <summary>Deletes all items of a group; groups inside it stay. Action "delete all info items".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllInfoItems(ulong handle, ulong info);

    // Meta-information tree
    // The same information, seen as a tree of groups and of items with a value. `item` is the handle of a node. 1 is the
    // root, which stands for the list of top-level groups; the functions below return all others. The handle of a node
    // ends with the node and is never given out again. A handle that is not of a living node of this file fails with the
    // function's action and "Unknown error". Failures that stand without an action are given in full.

    /// <summary>Result: 1, the handle of the root.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetMetaInfoTreeRootHandle(ulong handle);

    /// <summary>
    /// Result: whether the node is a group; true for the root. <paramref name="handle"/> is ignored: the node may
    /// be of any open file. Action "evaluate info item".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    [return: MarshalAs(I1)]
    public static extern bool IsMetaInfoItemAGroup(ulong handle, ulong item);

    /// <summary>Result: the number of nodes directly below this one, 0 for an item. Action "get info item child count".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetMetaInfoItemChildCount(ulong handle, ulong item);

    /// <summary>Copies the node's name to <paramref name="buffer"/>, "Root" for the root. Action "get info item name".</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetMetaInfoItemName(ulong handle, ulong item, [In, Out] byte[] buffer, ulong size);

    /// <summary>
    /// Renames the node. Action "set info item name"; the root fails with "Unable to set info item name of ROOT
    /// item".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetMetaInfoItemName(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>
    /// Copies the node's value to <paramref name="buffer"/>, "--------" for a group. Action "get info item value";
    /// the root fails with "Unable to get info item value from ROOT item".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetMetaInfoItemValue(ulong handle, ulong item, [In, Out] byte[] buffer, ulong size);

    /// <summary>
    /// Sets the value of an item. Action "set info item value"; the root fails with "Unable to set info item value
    /// of ROOT item", a group with "Unable to set info item value of group item".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetMetaInfoItemValue(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string value);

    /// <summary>
    /// Result: the handle of the first node below this one. Action "select first child of info item"; when there is
    /// none, the failure is "Item isn't a group or has no childs. Handle: " and the handle of the node.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong SelectFirstChildMetaInfoItem(ulong handle, ulong item);

    /// <summary>
    /// Result: the handle of the next node in the same group. Action "select next info item"; for the last node and
    /// for the root the failure is "No further items in this node available!".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong SelectNextMetaInfoItem(ulong handle, ulong item);

    /// <summary>
    /// Result: the handle of the group that the node is in, 1 for a top-level group. Action "select parent of info
    /// item"; the root fails with "Unable to get parent of ROOT item", whatever the file handle is.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong SelectParentMetaInfoItem(ulong handle, ulong item);

    /// <summary>
    /// Appends an item to a group. Result: its handle. Action "add info item"; the root fails with "Unable to add
    /// non group info item to ROOT item. Only group items are allowed.", whatever the file handle is, and an item
    /// with "Unable to add info item to non group item.".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong AddMetaInfoItem(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string name, [MarshalAs(LPUTF8Str)] string value);

    /// <summary>
    /// Appends a group without a value to a group or to the root. Result: its handle. Action "add info item"; an
    /// item fails with "Unable to add info item to non group item.".
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong AddMetaInfoItemGroup(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string name);

    /// <summary>
    /// Deletes the node with everything below it. Action "delete info item"; the root fails with "Unable to delete
    /// ROOT item.", whatever the file handle is.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteMetaInfoItem(ulong handle, ulong item);

    /// <summary>Deletes all nodes but the root.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllMetaInfoItems(ulong handle);
}
