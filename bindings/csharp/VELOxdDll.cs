// The functions of the library VELOxdDll, for .NET. What each does says VELOxdDll.h, how to call it docs/using/csharp.md.
using System;
using System.Runtime.InteropServices;
using System.Text;
using static System.Runtime.InteropServices.CallingConvention;
using static System.Runtime.InteropServices.UnmanagedType;

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

    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern ulong OpenOxdFile([MarshalAs(LPStr)] string filename);

    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern ulong CreateOxdFile([MarshalAs(LPStr)] string filename);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SaveOxdFile(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void CloseOxdFile(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern void ChangeOxdFilename(ulong handle, [MarshalAs(LPStr)] string filename);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int GetOxdVersion(ulong handle);

    // Errors

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern IntPtr VELGetLastError();

    [DllImport(Library, CallingConvention = Cdecl)]
    [return: MarshalAs(I1)]
    public static extern bool VELHasLastError();

    // Groups

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetGroupCount(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetAllGroupIds(ulong handle, [In, Out] ulong[] ids);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateGroup(ulong handle, int bitCount);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetGroupId(ulong handle, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteGroup(ulong handle, ulong group);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllGroups(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetLogicalGroupId(ulong handle, ulong group);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetLogicalGroupId(ulong handle, ulong group, ulong id);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetGroupName(ulong handle, ulong group, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetGroupName(ulong handle, ulong group, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelCount(ulong handle, ulong group, ulong count);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelCount(ulong handle, ulong group);

    // Channels

    [DllImport(Library, CallingConvention = Cdecl)]
    [return: MarshalAs(I1)]
    public static extern bool HasChannelBuffer(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteChannelBuffer(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelXYDimension(ulong handle, ulong group, ulong channel, ulong points, ulong lines);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_Points(ulong handle, ulong group, ulong channel, ulong points);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelData_Points(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelData_PointsPerLine(ulong handle, ulong group, ulong channel, ulong line);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_Lines(ulong handle, ulong group, ulong channel, ulong lines);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetChannelData_Lines(ulong handle, ulong group, ulong channel);

    // Axes

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisName(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_PointAxisName(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisUnit(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string unit);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_PointAxisUnit(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisMin(ulong handle, ulong group, ulong channel, double min);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisMin(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisMinPerLine(ulong handle, ulong group, ulong channel, ulong line);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PointAxisRange(ulong handle, ulong group, ulong channel, double range);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisRange(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PointAxisRangePerLine(ulong handle, ulong group, ulong channel, ulong line);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisName(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineAxisName(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisUnit(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string unit);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineAxisUnit(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisMin(ulong handle, ulong group, ulong channel, double min);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_LineAxisMin(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineAxisRange(ulong handle, ulong group, ulong channel, double range);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_LineAxisRange(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisName(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_SignalAxisName(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisUnit(ulong handle, ulong group, ulong channel, [MarshalAs(LPUTF8Str)] string unit);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_SignalAxisUnit(ulong handle, ulong group, ulong channel, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisMin(ulong handle, ulong group, ulong channel, double min);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_SignalAxisMin(ulong handle, ulong group, ulong channel);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_SignalAxisRange(ulong handle, ulong group, ulong channel, double range);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_SignalAxisRange(ulong handle, ulong group, ulong channel);

    // Samples

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineRaw(ulong handle, ulong group, ulong channel, ulong line, [In] int[] values);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_LineReal(ulong handle, ulong group, ulong channel, ulong line, [In] double[] values);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineRaw(ulong handle, ulong group, ulong channel, ulong line, int lineOp, [In, Out] int[] values);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetChannelData_LineReal(ulong handle, ulong group, ulong channel, ulong line, int lineOp, [In, Out] double[] values);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PixelRaw(ulong handle, ulong group, ulong channel, ulong point, ulong line, int value);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetChannelData_PixelReal(ulong handle, ulong group, ulong channel, ulong point, ulong line, double value);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern int GetChannelData_PixelRaw(ulong handle, ulong group, ulong channel, ulong point, ulong line, int lineOp);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern double GetChannelData_PixelReal(ulong handle, ulong group, ulong channel, ulong point, ulong line, int lineOp);

    // Info groups and items

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoGroupCount(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateInfoGroup(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateInfoGroupWithName(ulong handle, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoGroupIndex(ulong handle, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteInfoGroup(ulong handle, ulong info);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllInfoGroups(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetInfoGroupName(ulong handle, ulong info, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoGroupName(ulong handle, ulong info, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoGroupNewIndex(ulong handle, ulong info, ulong newIndex);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoItemCount(ulong handle, ulong info);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong CreateInfoItem(ulong handle, ulong info, [MarshalAs(LPUTF8Str)] string name, [MarshalAs(LPUTF8Str)] string value);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoItemValue(ulong handle, ulong info, ulong item, [MarshalAs(LPUTF8Str)] string value);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetInfoItemValue(ulong handle, ulong info, ulong item, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetInfoItemName(ulong handle, ulong info, ulong item, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetInfoItemName(ulong handle, ulong info, ulong item, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetInfoItemIndex(ulong handle, ulong info, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteInfoItem(ulong handle, ulong info, ulong item);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllInfoItems(ulong handle, ulong info);

    // Meta-information tree

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetMetaInfoTreeRootHandle(ulong handle);

    [DllImport(Library, CallingConvention = Cdecl)]
    [return: MarshalAs(I1)]
    public static extern bool IsMetaInfoItemAGroup(ulong handle, ulong item);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong GetMetaInfoItemChildCount(ulong handle, ulong item);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetMetaInfoItemName(ulong handle, ulong item, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetMetaInfoItemName(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void GetMetaInfoItemValue(ulong handle, ulong item, [In, Out] byte[] buffer, ulong size);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void SetMetaInfoItemValue(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string value);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong SelectFirstChildMetaInfoItem(ulong handle, ulong item);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong SelectNextMetaInfoItem(ulong handle, ulong item);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong SelectParentMetaInfoItem(ulong handle, ulong item);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong AddMetaInfoItem(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string name, [MarshalAs(LPUTF8Str)] string value);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern ulong AddMetaInfoItemGroup(ulong handle, ulong item, [MarshalAs(LPUTF8Str)] string name);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteMetaInfoItem(ulong handle, ulong item);

    [DllImport(Library, CallingConvention = Cdecl)]
    public static extern void DeleteAllMetaInfoItems(ulong handle);
}
