using System;

namespace VELOxd
{
    /// <summary>A channel: samples in lines of points, and what their axes mean.</summary>
    public sealed partial class OxdChannel
    {
        private readonly OxdFile file;
        private readonly ulong group;
        private readonly ulong slot;

        internal OxdChannel(OxdFile file, ulong group, ulong slot)
        {
            this.file = file;
            this.group = group;
            this.slot = slot;
        }

        /// <summary>The name of the signal axis, such as "Topography".</summary>
        public string Name => SignalAxis.Name;

        /// <summary>The number of lines.</summary>
        public int Lines => (int)Library.Call(() => VELOxdDll.GetChannelData_Lines(file.Number, group, slot));

        /// <summary>The number of points in each line.</summary>
        public int Points => (int)Library.Call(() => VELOxdDll.GetChannelData_Points(file.Number, group, slot));

        /// <summary>How many points of a line were measured, counted from its start.</summary>
        public int PointsOf(int line)
        {
            return (int)Library.Call(() => VELOxdDll.GetChannelData_PointsPerLine(file.Number, group, slot, Position(line)));
        }

        /// <summary>All samples in the unit of the signal axis, lines x points. Points that were not measured are NaN, and
        /// stay so where NaN is written.</summary>
        public double[,] Values
        {
            get { return Level(LineOperator.Raw); }
            set
            {
                Write(value, (line, point) => double.IsNaN(value[line, point]),
                    (line, rows) => VELOxdBlocks.VELBlockWriteReal(
                        file.Number, group, slot, (ulong)line, IntPtr.Zero, 1, rows, value.GetLength(1)),
                    (line, point) => VELOxdDll.SetChannelData_PixelReal(
                        file.Number, group, slot, (ulong)point, (ulong)line, value[line, point]));
            }
        }

        /// <summary>All samples as they are stored, lines x points: from -536870912 to 536870911. Points that
        /// were not measured are <see cref="int.MinValue"/>.</summary>
        public int[,] Raw
        {
            get
            {
                var values = new int[Lines, Points];
                Move(values, (rows, count, pitch) =>
                    VELOxdBlocks.VELBlockReadRaw(file.Number, group, slot, 0, 0, IntPtr.Zero, count, rows, pitch));
                return values;
            }
            set
            {
                Write(value, (line, point) => value[line, point] == int.MinValue,
                    (line, rows) => VELOxdBlocks.VELBlockWriteRaw(
                        file.Number, group, slot, (ulong)line, IntPtr.Zero, 1, rows, value.GetLength(1)),
                    (line, point) => VELOxdDll.SetChannelData_PixelRaw(
                        file.Number, group, slot, (ulong)point, (ulong)line, value[line, point]));
            }
        }

        /// <summary>All samples through an operator, in the unit of the signal axis, lines x points. Points that were not
        /// measured, and lines that are too short for a fit, are NaN.</summary>
        public double[,] Level(LineOperator lineOperator)
        {
            var values = new double[Lines, Points];
            Move(values, (rows, count, pitch) => VELOxdBlocks.VELBlockReadReal(
                file.Number, group, slot, (int)lineOperator, 0, IntPtr.Zero, count, rows, pitch));
            return values;
        }

        /// <summary>Reads one line through an operator, in the unit of the signal axis, into an array of the caller's.
        /// Elements beyond the measured points keep what they held.</summary>
        public void ReadLine(int line, double[] values, LineOperator lineOperator = LineOperator.Raw)
        {
            if (values == null)
                throw new ArgumentNullException(nameof(values));
            if (values.Length < Points)
                throw new ArgumentException("The array has " + values.Length + " elements, the line " + Points + " points.");
            Library.Call(() =>
                VELOxdDll.GetChannelData_LineReal(file.Number, group, slot, Position(line), (int)lineOperator, values));
        }

        /// <summary>The axis along a line.</summary>
        public OxdAxis PointAxis
        {
            get { return AxisFunctions.Point.Read(file, group, slot); }
            set { AxisFunctions.Point.Write(file, group, slot, value); }
        }

        /// <summary>The axis across the lines.</summary>
        public OxdAxis LineAxis
        {
            get { return AxisFunctions.Line.Read(file, group, slot); }
            set { AxisFunctions.Line.Write(file, group, slot, value); }
        }

        /// <summary>The axis of the samples: setting its minimum or range changes what raw samples mean.</summary>
        public OxdAxis SignalAxis
        {
            get { return AxisFunctions.Signal.Read(file, group, slot); }
            set { AxisFunctions.Signal.Write(file, group, slot, value); }
        }

        private delegate int Transfer(IntPtr rows, ulong count, long pitch);

        // Between the channel and an array, which has a row for each line.
        private static void Move(Array values, Transfer transfer)
        {
            if (values.Length > 0)
                Library.Pinned(values, rows => Library.CallBlocks(() =>
                    transfer(rows, (ulong)values.GetLength(0), values.GetLength(1))));
        }

        // Writes all lines, after all were checked. A line whose last points are missing is written point by point, so that
        // they stay as they are: not measured.
        private void Write(Array values, Func<int, int, bool> isMissing, Func<int, IntPtr, int> writeLine,
            Action<int, int> writePoint)
        {
            RequireShape(values);
            int points = values.GetLength(1);
            var counts = new int[values.GetLength(0)];
            for (int line = 0; line < counts.Length; ++line)
                counts[line] = PointsToWrite(line, points, point => isMissing(line, point));
            int rowSize = points * Buffer.ByteLength(values) / Math.Max(values.Length, 1);
            Library.Pinned(values, rows =>
            {
                for (int line = 0; line < counts.Length; ++line)
                {
                    if (counts[line] == points && points > 0)
                        Library.CallBlocks(() => writeLine(line, new IntPtr(rows.ToInt64() + (long)line * rowSize)));
                    for (int point = 0; point < counts[line] && counts[line] < points; ++point)
                        Library.Call(() => writePoint(line, point));
                }
            });
        }

        // A point that was measured cannot become one that was not.
        private int PointsToWrite(int line, int points, Func<int, bool> isMissing)
        {
            int present = points;
            while (present > 0 && isMissing(present - 1))
                --present;
            bool isWhole = present == points || present >= PointsOf(line);
            for (int point = 0; point < present; ++point)
                isWhole = isWhole && !isMissing(point);
            if (!isWhole)
                throw new ArgumentException("Line " + line + " lacks a sample where there is one in the file.");
            return present;
        }

        private void RequireShape(Array values)
        {
            if (values == null)
                throw new ArgumentNullException(nameof(values));
            if (values.GetLength(0) != Lines || values.GetLength(1) != Points)
                throw new ArgumentException("The array is " + values.GetLength(0) + " x " + values.GetLength(1) +
                    ", the channel " + Lines + " x " + Points + " (lines x points).");
        }

        private static ulong Position(int line)
        {
            if (line < 0)
                throw new ArgumentOutOfRangeException(nameof(line));
            return (ulong)line;
        }
    }
}
