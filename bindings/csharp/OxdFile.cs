using System;
using System.Collections.Generic;
using System.Linq;

namespace VELOxd
{
    /// <summary>An open .oxd file: its groups, its measurement information, and saving.</summary>
    /// <remarks>
    /// Nothing is written before <see cref="Save"/>. Different files may be used in different threads at the same time;
    /// one file is for one thread at a time. After <see cref="Dispose"/>, every use of the file and of what came from it
    /// throws an <see cref="ObjectDisposedException"/>.
    /// </remarks>
    public sealed class OxdFile : IDisposable
    {
        private readonly OxdHandle handle;

        private OxdFile(ulong number, string path)
        {
            handle = new OxdHandle(number);
            Path = path;
            Information = new OxdInformation(this);
        }

        /// <summary>The file that <see cref="Save"/> writes.</summary>
        public string Path { get; private set; }

        /// <summary>The settings of the measurement, by their paths.</summary>
        public OxdInformation Information { get; }

        /// <summary>Opens a file and reads all of it.</summary>
        /// <exception cref="System.IO.FileNotFoundException">There is no such file.</exception>
        /// <exception cref="UnauthorizedAccessException">The file may not be read.</exception>
        /// <exception cref="OxdDamagedException">The file is no .oxd file, is damaged or cut short.</exception>
        /// <exception cref="ArgumentException">The code page of Windows cannot express the name.</exception>
        public static OxdFile Open(string path)
        {
            if (path == null)
                throw new ArgumentNullException(nameof(path));
            var number = new ulong[1];
            try
            {
                Library.Pinned(number, address => Library.CallBlocks(() => VELOxdBlocks.VELBlockOpen(path, address), path));
            }
            catch
            {
                if (number[0] != 0) // a file that opened in part
                    Library.Close(number[0]);
                throw;
            }
            return new OxdFile(number[0], path);
        }

        /// <summary>An empty data set, which <see cref="Save"/> will write to a file of this name.</summary>
        public static OxdFile Create(string path)
        {
            if (path == null)
                throw new ArgumentNullException(nameof(path));
            return new OxdFile(Library.Call(() => VELOxdDll.CreateOxdFile(path)), path);
        }

        /// <summary>The groups in their order.</summary>
        public IReadOnlyList<OxdGroup> Groups
        {
            get
            {
                ulong[] ids = Library.Call(() =>
                {
                    var all = new ulong[VELOxdDll.GetGroupCount(Number)];
                    VELOxdDll.GetAllGroupIds(Number, all);
                    return all;
                });
                return ids.Select(id => new OxdGroup(this, id)).ToArray();
            }
        }

        /// <summary>The first group of this name.</summary>
        /// <exception cref="KeyNotFoundException">There is none; the message names those that there are.</exception>
        public OxdGroup this[string name]
        {
            get
            {
                IReadOnlyList<OxdGroup> groups = Groups;
                OxdGroup found = groups.FirstOrDefault(group => group.Name == name);
                if (found != null)
                    return found;
                string known = string.Join(", ", groups.Select(group => group.Name));
                throw new KeyNotFoundException("There is no group \"" + name + "\", only: " + known);
            }
        }

        /// <summary>Adds a group behind the others.</summary>
        /// <param name="name">What the group is called.</param>
        /// <param name="bits">How many bits of each sample a file keeps: 8, 16 or 32.</param>
        public OxdGroup AddGroup(string name, int bits = 32)
        {
            ulong id = Library.Call(() => VELOxdDll.CreateGroup(Number, bits));
            return new OxdGroup(this, id) { Name = name };
        }

        /// <summary>Writes the data set in place of its old file (convention 13 of VELOxdDll.h).</summary>
        /// <exception cref="UnauthorizedAccessException">The file may not be written.</exception>
        /// <exception cref="System.IO.IOException">The disk is full, for example.</exception>
        public void Save()
        {
            Library.Call(() => VELOxdDll.SaveOxdFile(Number), Path);
        }

        /// <summary>Writes the data set to another file, which is the file from then on, unless that fails. The old one
        /// stays as it is.</summary>
        public void SaveAs(string path)
        {
            if (path == null)
                throw new ArgumentNullException(nameof(path));
            Library.Call(() => VELOxdDll.ChangeOxdFilename(Number, path));
            try
            {
                Library.Call(() => VELOxdDll.SaveOxdFile(Number), path);
            }
            catch
            {
                Library.Call(() => VELOxdDll.ChangeOxdFilename(Number, Path));
                throw;
            }
            Path = path;
        }

        /// <summary>Lets go of the data set, without saving. Doing so again does nothing.</summary>
        public void Dispose()
        {
            handle.Dispose();
        }

        internal ulong Number
        {
            get
            {
                if (handle.IsClosed)
                    throw new ObjectDisposedException(Path, "The file is closed.");
                return handle.Number;
            }
        }
    }
}
