using System;

namespace VELOxd
{
    /// <summary>A failure of the library, in one short sentence.</summary>
    public class OxdException : Exception
    {
        /// <summary>The whole text of the library, with the place in its source code; empty if it was not involved.</summary>
        public string Details { get; }

        /// <summary>A failure that is told in one sentence and, if the library has one, its whole text.</summary>
        public OxdException(string message, string details = "") : base(message)
        {
            Details = details;
        }
    }

    /// <summary>The file is no .oxd file, is damaged or cut short, or is of an unknown version.</summary>
    public sealed class OxdDamagedException : OxdException
    {
        /// <summary>A failure that is told in one sentence and, if the library has one, its whole text.</summary>
        public OxdDamagedException(string message, string details = "") : base(message, details)
        {
        }
    }
}
