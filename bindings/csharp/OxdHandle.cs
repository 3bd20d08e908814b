using System;
using System.Runtime.InteropServices;

namespace VELOxd
{
    // The number of an open data set, which is given back exactly once, by whatever thread lets go of it last.
    internal sealed class OxdHandle : SafeHandle
    {
        public OxdHandle(ulong number) : base(IntPtr.Zero, true)
        {
            SetHandle((IntPtr)(long)number);
        }

        public override bool IsInvalid => handle == IntPtr.Zero;

        public ulong Number => (ulong)(long)handle;

        // Finalizers wait for no longer than a call takes.
        protected override bool ReleaseHandle()
        {
            Library.Close(Number);
            return true;
        }
    }
}
