// Checks the C# declarations: the runtime must find every function and marshal its arguments. Arrays, flags and texts are
// checked by value, since a wrong declaration damages them silently.
using System;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;
using static VELOxdDll;

static class Declarations
{
    static int failures = 0;

    static void Expect(bool condition, string what)
    {
        if (!condition)
        {
            Console.Error.WriteLine("violated: {0} ({1})", what, LastError());
            ++failures;
        }
    }

    static int Main()
    {
        foreach (var library in new[] { typeof(VELOxdDll), typeof(VELOxdBlocks) })
        {
            foreach (var method in library.GetMethods(BindingFlags.Public | BindingFlags.Static))
                Marshal.Prelink(method);
        }

        ulong file = CreateOxdFile("unused.oxd");
        CreateGroup(file, 8);
        ulong group = CreateGroup(file, 32);
        SetChannelCount(file, group, 2);
        SetChannelXYDimension(file, group, 1, 3, 2);
        var ids = new ulong[] { 9, 9, 9 };
        GetAllGroupIds(file, ids);
        Expect(ids.SequenceEqual(new ulong[] { 0, 1, 9 }), "ids are returned, and no more than exist");
        Expect(!HasChannelBuffer(file, group, 0) && HasChannelBuffer(file, group, 1), "flags are returned");

        var raw = new[] { -536870912, -7, 536870911 };
        SetChannelData_LineRaw(file, group, 1, 1, raw);
        var rawRead = new int[4];
        GetChannelData_LineRaw(file, group, 1, 1, 0, rawRead);
        Expect(rawRead.SequenceEqual(raw.Concat(new[] { 0 })), "raw samples are written and read");
        Expect(GetChannelData_PixelRaw(file, group, 1, 1, 1, 0) == -7, "numbers keep their sign");
        SetChannelData_SignalAxisMin(file, group, 1, -1);
        SetChannelData_SignalAxisRange(file, group, 1, 2);
        SetChannelData_LineReal(file, group, 1, 0, new[] { -1.0, 1.0, -1.0 });
        var real = new double[3];
        GetChannelData_LineReal(file, group, 1, 0, 0, real);
        Expect(real.SequenceEqual(new[] { -1.0, 1.0, -1.0 }), "real values are written and read");

        SetGroupName(file, group, "5 µm");
        Expect(GetGroupId(file, "5 µm") == group, "texts are passed");
        var name = new byte[6];
        GetGroupName(file, group, name, (ulong)name.Length);
        Expect(Text(name) == "5 µm", "texts are returned");
        Expect(!VELHasLastError(), "no error");
        GetGroupName(file, group, name, 5);
        Expect(VELHasLastError() && LastError().Contains("Minimum buffer size: 6"), "failures are reported");
        CloseOxdFile(file);
        return failures;
    }
}
