// The functions of the library VELOxdBlocks, which read and write many lines in one call, for .NET. What each does says
// veloxd_blocks.h. Pointers are addresses of pinned arrays.
using System;
using System.Runtime.InteropServices;
using static System.Runtime.InteropServices.CallingConvention;
using static System.Runtime.InteropServices.UnmanagedType;

public static class VELOxdBlocks
{
    // VELOxdBlocks.dll on Windows, libVELOxdBlocks.so on Linux: the runtime adds what is missing.
    private const string Library = "VELOxdBlocks";

    // The rest is made by scripts/bindings.
    public const int VEL_BLOCK_OK = 0;
    public const int VEL_BLOCK_FAILED = 1;
    public const int VEL_BLOCK_BAD_CALL = 2;
    public const int VEL_BLOCK_TOO_SMALL = 3;
    public const int VEL_BLOCK_NO_HEADER = 4;

    // Files

    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int VELBlockOpen([MarshalAs(LPStr)] string filename, IntPtr file);

    // Names

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockGroups(ulong file, IntPtr names);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockChannels(ulong file, ulong group, IntPtr names);

    // Lines

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockShape(ulong file, ulong group, ulong channel, IntPtr lines, IntPtr points);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockAcquired(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr acquired);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockPointAxes(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr minimums, IntPtr ranges);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockReadRaw(ulong file, ulong group, ulong channel, int operation, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockReadReal(ulong file, ulong group, ulong channel, int operation, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockWriteRaw(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int VELBlockWriteReal(ulong file, ulong group, ulong channel, ulong first, IntPtr lines, ulong count, IntPtr rows, long pitch);
}
