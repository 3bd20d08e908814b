namespace VELOxd
{
    /// <summary>An axis of a channel: what it is called, and the span of its values in its unit.</summary>
    public struct OxdAxis
    {
        /// <summary>What the axis counts, such as "Topography".</summary>
        public string Name { get; set; }

        /// <summary>The unit, such as "m"; empty if there is none.</summary>
        public string Unit { get; set; }

        /// <summary>The value at the first point or line, or of the lowest raw sample.</summary>
        public double Minimum { get; set; }

        /// <summary>From the minimum to the value at the last point or line, or of the highest raw sample.</summary>
        public double Range { get; set; }
    }
}
