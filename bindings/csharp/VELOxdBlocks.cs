// The functions of the library VELOxdBlocks, which read and write many lines in one call, for .NET, with what veloxd_blocks.h
// says of each. Pointers are addresses of pinned arrays. docs/reference/blocks.md has the conventions that comments name.
using System;
using System.Runtime.InteropServices;
using static System.Runtime.InteropServices.CallingConvention;
using static System.Runtime.InteropServices.UnmanagedType;

/// <summary>The functions of the library VELOxdBlocks, as C has them.</summary>
public static class VELOxdBlocks
{
    // VELOxdBlocks.dll on Windows, libVELOxdBlocks.so on Linux: the runtime adds what is missing.
    private const string Library = "VELOxdBlocks";

    // The rest is made by scripts/bindings.

    // Results and names

    /// <summary>all was done</summary>
    public const int VEL_BLOCK_OK = 0;
    /// <summary>a function of VELOxdDll has failed: VELGetLastError says why</summary>
    public const int VEL_BLOCK_FAILED = 1;
    /// <summary>an argument is wrong, so nothing was done (convention 2)</summary>
    public const int VEL_BLOCK_BAD_CALL = 2;
    /// <summary>names do not fit into the arrays for them: VELBlockNames says what they take</summary>
    public const int VEL_BLOCK_TOO_SMALL = 3;
    /// <summary>the file has opened as an empty data set, because it has no header</summary>
    public const int VEL_BLOCK_NO_HEADER = 4;

    // Files

    /// <summary>Result: the version of this library, such as "1.2.3". It stays valid and is no VELBlockResult.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern IntPtr VELBlockVersion();

    /// <summary>
    /// Opens a file as OpenOxdFile does and stores its handle in <paramref name="file"/>. With VEL_BLOCK_FAILED and
    /// VEL_BLOCK_NO_HEADER, that is the handle under which the library keeps what it has loaded: to be closed, or
    /// used as any other. It is 0 if there is none.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int VELBlockOpen([MarshalAs(LPStr)] string filename, IntPtr file);

    // Names

    /// <summary>
    /// Ids and names of all groups of a file. With VEL_BLOCK_TOO_SMALL, neither array is of use, and <c>count</c>
    /// and <c>bytes</c> say what the names up to the first take for which there is no room. All of them may take
    /// more than that.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockGroups(ulong file, IntPtr names);

    /// <summary>The same for the channels of a group: positions of slots that hold one, and the names of the signal axes.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockChannels(ulong file, ulong group, IntPtr names);

    // Lines

    /// <summary>Stores how many lines a channel has and how many points each of them has. Otherwise neither is changed.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockShape(ulong file, ulong group, ulong channel, IntPtr lines, IntPtr points);

    /// <summary>
    /// Stores, for each line, how many of its points were acquired. <paramref name="acquired"/> has <paramref
    /// name="count"/> elements.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockAcquired(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr acquired);

    /// <summary>Stores min and range of the point axis of each line. Each array has <paramref name="count"/> elements.</summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockPointAxes(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr minimums, IntPtr ranges);

    /// <summary>
    /// Reads lines through <paramref name="operation"/>, a line operator, as raw samples or real values. What
    /// GetChannelData_LineRaw leaves as it was, because the points were not acquired or the operator takes more
    /// samples, becomes INT32_MIN or a quiet NaN.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockReadRaw(ulong file, ulong group, ulong channel, int operation, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);

    /// <summary>
    /// Reads lines through <paramref name="operation"/>, a line operator, as raw samples or real values. What
    /// GetChannelData_LineRaw leaves as it was, because the points were not acquired or the operator takes more
    /// samples, becomes INT32_MIN or a quiet NaN.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockReadReal(ulong file, ulong group, ulong channel, int operation, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);

    /// <summary>
    /// Writes whole lines of raw samples or real values, as SetChannelData_LineRaw and SetChannelData_LineReal do.
    /// Of several rows for one line, the last one is kept.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockWriteRaw(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);

    /// <summary>
    /// Writes whole lines of raw samples or real values, as SetChannelData_LineRaw and SetChannelData_LineReal do.
    /// Of several rows for one line, the last one is kept.
    /// </summary>
    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockWriteReal(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);
}
