namespace VELOxd
{
    // The functions of the library for one of the axes of a channel.
    internal sealed class AxisFunctions
    {
        public static readonly AxisFunctions Point = new AxisFunctions(
            VELOxdDll.GetChannelData_PointAxisName, VELOxdDll.GetChannelData_PointAxisUnit,
            VELOxdDll.GetChannelData_PointAxisMin, VELOxdDll.GetChannelData_PointAxisRange,
            VELOxdDll.SetChannelData_PointAxisName, VELOxdDll.SetChannelData_PointAxisUnit,
            VELOxdDll.SetChannelData_PointAxisMin, VELOxdDll.SetChannelData_PointAxisRange);

        public static readonly AxisFunctions Line = new AxisFunctions(
            VELOxdDll.GetChannelData_LineAxisName, VELOxdDll.GetChannelData_LineAxisUnit,
            VELOxdDll.GetChannelData_LineAxisMin, VELOxdDll.GetChannelData_LineAxisRange,
            VELOxdDll.SetChannelData_LineAxisName, VELOxdDll.SetChannelData_LineAxisUnit,
            VELOxdDll.SetChannelData_LineAxisMin, VELOxdDll.SetChannelData_LineAxisRange);

        public static readonly AxisFunctions Signal = new AxisFunctions(
            VELOxdDll.GetChannelData_SignalAxisName, VELOxdDll.GetChannelData_SignalAxisUnit,
            VELOxdDll.GetChannelData_SignalAxisMin, VELOxdDll.GetChannelData_SignalAxisRange,
            VELOxdDll.SetChannelData_SignalAxisName, VELOxdDll.SetChannelData_SignalAxisUnit,
            VELOxdDll.SetChannelData_SignalAxisMin, VELOxdDll.SetChannelData_SignalAxisRange);

        private delegate void TextGetter(ulong file, ulong group, ulong channel, byte[] buffer, ulong size);

        private delegate double NumberGetter(ulong file, ulong group, ulong channel);

        private delegate void TextSetter(ulong file, ulong group, ulong channel, string text);

        private delegate void NumberSetter(ulong file, ulong group, ulong channel, double number);

        private readonly TextGetter getName, getUnit;
        private readonly NumberGetter getMinimum, getRange;
        private readonly TextSetter setName, setUnit;
        private readonly NumberSetter setMinimum, setRange;

        private AxisFunctions(TextGetter getName, TextGetter getUnit, NumberGetter getMinimum, NumberGetter getRange,
            TextSetter setName, TextSetter setUnit, NumberSetter setMinimum, NumberSetter setRange)
        {
            this.getName = getName;
            this.getUnit = getUnit;
            this.getMinimum = getMinimum;
            this.getRange = getRange;
            this.setName = setName;
            this.setUnit = setUnit;
            this.setMinimum = setMinimum;
            this.setRange = setRange;
        }

        public OxdAxis Read(OxdFile file, ulong group, ulong slot)
        {
            return new OxdAxis
            {
                Name = Library.Text((buffer, size) => getName(file.Number, group, slot, buffer, size)),
                Unit = Library.Text((buffer, size) => getUnit(file.Number, group, slot, buffer, size)),
                Minimum = Library.Call(() => getMinimum(file.Number, group, slot)),
                Range = Library.Call(() => getRange(file.Number, group, slot))
            };
        }

        public void Write(OxdFile file, ulong group, ulong slot, OxdAxis axis)
        {
            Library.Call(() => setName(file.Number, group, slot, axis.Name ?? ""));
            Library.Call(() => setUnit(file.Number, group, slot, axis.Unit ?? ""));
            Library.Call(() => setMinimum(file.Number, group, slot, axis.Minimum));
            Library.Call(() => setRange(file.Number, group, slot, axis.Range));
        }
    }
}
