using System.Collections.Generic;
using System.Linq;

namespace VELOxd
{
    /// <summary>A group of channels that were measured together, such as one direction of a scan.</summary>
    public sealed class OxdGroup
    {
        private readonly OxdFile file;
        private readonly ulong id;

        internal OxdGroup(OxdFile file, ulong id)
        {
            this.file = file;
            this.id = id;
        }

        /// <summary>The name of the group. Frames of its channels are renamed with it.</summary>
        public string Name
        {
            get { return Library.Text((buffer, size) => VELOxdDll.GetGroupName(file.Number, id, buffer, size)); }
            set { Library.Call(() => VELOxdDll.SetGroupName(file.Number, id, value)); }
        }

        /// <summary>The channels in their order. Slots without a channel are left out.</summary>
        public IReadOnlyList<OxdChannel> Channels
        {
            get
            {
                var slots = new List<ulong>();
                Library.Call(() =>
                {
                    ulong count = VELOxdDll.GetChannelCount(file.Number, id);
                    for (ulong slot = 0; slot < count; ++slot)
                    {
                        if (VELOxdDll.HasChannelBuffer(file.Number, id, slot))
                            slots.Add(slot);
                    }
                });
                return slots.Select(slot => new OxdChannel(file, id, slot)).ToArray();
            }
        }

        /// <summary>The first channel of this name, which is that of its signal axis.</summary>
        /// <exception cref="KeyNotFoundException">There is none; the message names those that there are.</exception>
        public OxdChannel this[string name]
        {
            get
            {
                IReadOnlyList<OxdChannel> channels = Channels;
                OxdChannel found = channels.FirstOrDefault(channel => channel.Name == name);
                if (found != null)
                    return found;
                string known = string.Join(", ", channels.Select(channel => channel.Name));
                throw new KeyNotFoundException("There is no channel \"" + name + "\", only: " + known);
            }
        }

        /// <summary>Gives a group without channels so many, whose samples are all 0.</summary>
        /// <returns>The channels, without names.</returns>
        public IReadOnlyList<OxdChannel> AddChannels(int count, int lines, int points)
        {
            Library.Call(() =>
            {
                if (VELOxdDll.GetChannelCount(file.Number, id) > 0)
                    throw new OxdException("The group has channels, which another number of channels would discard.");
                VELOxdDll.SetChannelCount(file.Number, id, (ulong)count);
                for (ulong slot = 0; slot < (ulong)count && !VELOxdDll.VELHasLastError(); ++slot)
                    VELOxdDll.SetChannelXYDimension(file.Number, id, slot, (ulong)points, (ulong)lines);
            });
            return Channels;
        }
    }
}
