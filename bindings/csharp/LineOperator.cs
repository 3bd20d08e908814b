namespace VELOxd
{
    /// <summary>What is done to each line of samples when it is read (convention 9 of VELOxdDll.h).</summary>
    public enum LineOperator
    {
        /// <summary>Nothing: the samples as they are stored.</summary>
        Raw = 0,

        /// <summary>The line minus its mean.</summary>
        Mean = 1,

        /// <summary>The line minus a straight line that is fitted to it.</summary>
        Line = 2,

        /// <summary>The differences from each sample to the next.</summary>
        Derive = 3,

        /// <summary>The line minus a parabola that is fitted to it.</summary>
        Parabola = 4,

        /// <summary>The line minus a polynomial of degree 4 that is fitted to it.</summary>
        Polynomial = 5
    }
}
