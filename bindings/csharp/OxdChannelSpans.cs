// Spans are in .NET since .NET Core 2.1, and not in .NET Framework. For Mono 6, define VELOXD_SPANS and allow unsafe code.
#if NETCOREAPP || NETSTANDARD2_1 || VELOXD_SPANS
using System;
using System.Runtime.InteropServices;

namespace VELOxd
{
    // Lines from and to memory of the caller's, which is neither allocated nor copied.
    public sealed partial class OxdChannel
    {
        /// <summary>Reads lines through an operator, in the unit of the signal axis, one behind the other. Points that were
        /// not measured, and lines that are too short for a fit, are NaN.</summary>
        /// <param name="first">The first line.</param>
        /// <param name="values">A whole number of lines, of <see cref="Points"/> elements each.</param>
        /// <param name="lineOperator">What is done to each line.</param>
        public unsafe void ReadLines(int first, Span<double> values, LineOperator lineOperator = LineOperator.Raw)
        {
            ulong count = CountOfLines(first, values.Length);
            fixed (double* start = &MemoryMarshal.GetReference(values))
            {
                var rows = new IntPtr(start);
                Library.CallBlocks(() => VELOxdBlocks.VELBlockReadReal(
                    file.Number, group, slot, (int)lineOperator, (ulong)first, IntPtr.Zero, count, rows, Points));
            }
        }

        /// <summary>Reads lines as they are stored, one behind the other: from -536870912 to 536870911. Points that were not
        /// measured are <see cref="int.MinValue"/>.</summary>
        /// <param name="first">The first line.</param>
        /// <param name="values">A whole number of lines, of <see cref="Points"/> elements each.</param>
        public unsafe void ReadRawLines(int first, Span<int> values)
        {
            ulong count = CountOfLines(first, values.Length);
            fixed (int* start = &MemoryMarshal.GetReference(values))
            {
                var rows = new IntPtr(start);
                Library.CallBlocks(() => VELOxdBlocks.VELBlockReadRaw(
                    file.Number, group, slot, 0, (ulong)first, IntPtr.Zero, count, rows, Points));
            }
        }

        /// <summary>Writes whole lines, in the unit of the signal axis. All their points count as measured afterwards, so that
        /// none may be NaN.</summary>
        /// <param name="first">The first line.</param>
        /// <param name="values">A whole number of lines, of <see cref="Points"/> elements each.</param>
        public unsafe void WriteLines(int first, ReadOnlySpan<double> values)
        {
            ulong count = CountOfLines(first, values.Length);
            foreach (double value in values)
                RequireSample(!double.IsNaN(value));
            fixed (double* start = &MemoryMarshal.GetReference(values))
            {
                var rows = new IntPtr(start);
                Library.CallBlocks(() => VELOxdBlocks.VELBlockWriteReal(
                    file.Number, group, slot, (ulong)first, IntPtr.Zero, count, rows, Points));
            }
        }

        /// <summary>Writes whole lines as they are stored. All their points count as measured afterwards, so that none may be
        /// <see cref="int.MinValue"/>.</summary>
        /// <param name="first">The first line.</param>
        /// <param name="values">A whole number of lines, of <see cref="Points"/> elements each.</param>
        public unsafe void WriteRawLines(int first, ReadOnlySpan<int> values)
        {
            ulong count = CountOfLines(first, values.Length);
            foreach (int value in values)
                RequireSample(value != int.MinValue);
            fixed (int* start = &MemoryMarshal.GetReference(values))
            {
                var rows = new IntPtr(start);
                Library.CallBlocks(() => VELOxdBlocks.VELBlockWriteRaw(
                    file.Number, group, slot, (ulong)first, IntPtr.Zero, count, rows, Points));
            }
        }

        private ulong CountOfLines(int first, int elements)
        {
            int points = Points;
            if (first < 0)
                throw new ArgumentOutOfRangeException(nameof(first));
            if (points == 0 ? elements > 0 : elements % points != 0)
                throw new ArgumentException("The span has " + elements + " elements, a line " + points + " points.");
            return points == 0 ? 0 : (ulong)(elements / points);
        }

        private static void RequireSample(bool isThere)
        {
            if (!isThere)
                throw new ArgumentException("A sample is missing in lines that are to be whole.");
        }
    }
}
#endif
