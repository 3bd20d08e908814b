using System;
using System.IO;
using System.Runtime.InteropServices;
using System.Text.RegularExpressions;

namespace VELOxd
{
    // The library keeps one last error for the whole process. Each call and the look at its failure are one step here,
    // so that every thread gets its own failures.
    internal static class Library
    {
        private static readonly object Lock = new object();

        private const int NoSuchFile = 2;
        private const int NoPermission = 1;
        private const int AccessDenied = 13;
        private const int NoSuchFolder = 20;
        private const int ReadOnlySystem = 30;

        // Calls a function, and throws its failure.
        public static T Call<T>(Func<T> function, string path = "")
        {
            lock (Lock)
            {
                Forget();
                T result = function();
                if (VELOxdDll.VELHasLastError())
                    throw Failure(VELOxdDll.LastError(), path);
                return result;
            }
        }

        public static void Call(Action function, string path = "")
        {
            Call(() => { function(); return true; }, path);
        }

        // Gives a number back, which cannot fail. While another thread opens a file, the number that this one will have must
        // not change.
        public static void Close(ulong number)
        {
            lock (Lock)
                VELOxdDll.CloseOxdFile(number);
        }

        // Calls a function of VELOxdBlocks, and throws what its result says.
        public static void CallBlocks(Func<int> function, string path = "")
        {
            lock (Lock)
            {
                int result = function();
                if (result == VELOxdBlocks.VEL_BLOCK_OK)
                    return;
                string details = VELOxdDll.LastError();
                if (result == VELOxdBlocks.VEL_BLOCK_NO_HEADER)
                    throw new OxdDamagedException(path + ": the file has no header, so it is no .oxd file.", details);
                throw Failure(details, path);
            }
        }

        // The text that a getter copies to a buffer of the size that it asks for.
        public static string Text(Action<byte[], ulong> getter)
        {
            const int usual = 256;
            var buffer = new byte[usual];
            lock (Lock)
            {
                Forget();
                getter(buffer, (ulong)buffer.Length);
                if (VELOxdDll.VELHasLastError())
                {
                    string details = VELOxdDll.LastError();
                    Match needed = Regex.Match(details, "Minimum buffer size: ([0-9]+)");
                    if (!needed.Success)
                        throw Failure(details, "");
                    buffer = new byte[int.Parse(needed.Groups[1].Value)];
                    getter(buffer, (ulong)buffer.Length);
                    VELOxdDll.Check();
                }
            }
            return VELOxdDll.Text(buffer);
        }

        // A failure that somebody else left is none of the next call.
        private static void Forget()
        {
            if (VELOxdDll.VELHasLastError())
                VELOxdDll.LastError();
        }

        // Runs a step while it has the address of an array of numbers, of any rank.
        public static void Pinned(Array numbers, Action<IntPtr> step)
        {
            GCHandle pin = GCHandle.Alloc(numbers, GCHandleType.Pinned);
            try
            {
                step(pin.AddrOfPinnedObject());
            }
            finally
            {
                pin.Free();
            }
        }

        private static Exception Failure(string details, string path)
        {
            Match number = Regex.Match(details, @"errinfo_errno_\*\] = ([0-9]+), ""(.*)""");
            Match what = Regex.Match(details, "std::exception::what: (.*)");
            string reason = what.Success ? what.Groups[1].Value : details.Split('\n')[0];
            if (number.Success && path.Length > 0)
                return SystemFailure(int.Parse(number.Groups[1].Value), path + ": " + number.Groups[2].Value + ".", path);
            if (reason == "std::bad_alloc")
                return new OutOfMemoryException("There is not enough memory.");
            if (path.Length > 0 && reason.StartsWith("basic_ios", StringComparison.Ordinal))
                return new OxdDamagedException(path + ": the file ends before its samples do.", details);
            if (path.Length > 0)
                return new OxdDamagedException(path + ": the file is damaged: " + reason.TrimEnd('.') + ".", details);
            return new OxdException(reason.TrimEnd('.') + ".", details);
        }

        private static Exception SystemFailure(int number, string message, string path)
        {
            switch (number)
            {
                case NoSuchFile:
                case NoSuchFolder:
                    return new FileNotFoundException(message, path);
                case NoPermission:
                case AccessDenied:
                case ReadOnlySystem:
                    return new UnauthorizedAccessException(message);
                default:
                    return new IOException(message);
            }
        }
    }
}
