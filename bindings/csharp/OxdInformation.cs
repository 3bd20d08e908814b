using System.Collections.Generic;

namespace VELOxd
{
    /// <summary>The measurement information: texts in groups of any depth, found by paths such as "Scan/Lines".</summary>
    public sealed class OxdInformation
    {
        private readonly OxdFile file;

        internal OxdInformation(OxdFile file)
        {
            this.file = file;
        }

        /// <summary>The text at a path. Setting one adds the item and the groups that it lacks.</summary>
        /// <exception cref="KeyNotFoundException">There is no such item.</exception>
        public string this[string path]
        {
            get
            {
                string value;
                if (!TryGet(path, out value))
                    throw new KeyNotFoundException("There is no information \"" + path + "\".");
                return value;
            }
            set
            {
                string[] names = path.Split('/');
                ulong node = Root;
                for (int i = 0; i + 1 < names.Length; ++i)
                    node = ChildOrNew(node, names[i]);
                ulong item = Child(node, names[names.Length - 1], false);
                if (item != 0)
                    Library.Call(() => VELOxdDll.SetMetaInfoItemValue(file.Number, item, value));
                else
                    Library.Call(() => VELOxdDll.AddMetaInfoItem(file.Number, node, names[names.Length - 1], value));
            }
        }

        /// <summary>Gets the text at a path, if there is an item.</summary>
        public bool TryGet(string path, out string value)
        {
            string[] names = path.Split('/');
            ulong node = Root;
            for (int i = 0; i < names.Length && node != 0; ++i)
                node = Child(node, names[i], i + 1 < names.Length);
            value = node == 0 ? null : Value(node);
            return node != 0;
        }

        /// <summary>The paths of all items in their order.</summary>
        public IEnumerable<string> Paths => PathsBelow(Root, "");

        private ulong Root => Library.Call(() => VELOxdDll.GetMetaInfoTreeRootHandle(file.Number));

        private IEnumerable<string> PathsBelow(ulong node, string prefix)
        {
            foreach (ulong child in Children(node))
            {
                string path = prefix + Name(child);
                if (!IsGroup(child))
                {
                    yield return path;
                    continue;
                }
                foreach (string below in PathsBelow(child, path + "/"))
                    yield return below;
            }
        }

        // 0 if there is none.
        private ulong Child(ulong node, string name, bool isGroup)
        {
            foreach (ulong child in Children(node))
            {
                if (IsGroup(child) == isGroup && Name(child) == name)
                    return child;
            }
            return 0;
        }

        private ulong ChildOrNew(ulong node, string name)
        {
            ulong child = Child(node, name, true);
            return child != 0 ? child : Library.Call(() => VELOxdDll.AddMetaInfoItemGroup(file.Number, node, name));
        }

        private List<ulong> Children(ulong node)
        {
            return Library.Call(() =>
            {
                var children = new List<ulong>();
                ulong count = VELOxdDll.GetMetaInfoItemChildCount(file.Number, node);
                for (ulong i = 0; i < count; ++i)
                    children.Add(i == 0 ? VELOxdDll.SelectFirstChildMetaInfoItem(file.Number, node)
                                        : VELOxdDll.SelectNextMetaInfoItem(file.Number, children[(int)i - 1]));
                return children;
            });
        }

        private bool IsGroup(ulong node)
        {
            return Library.Call(() => VELOxdDll.IsMetaInfoItemAGroup(file.Number, node));
        }

        private string Name(ulong node)
        {
            return Library.Text((buffer, size) => VELOxdDll.GetMetaInfoItemName(file.Number, node, buffer, size));
        }

        private string Value(ulong node)
        {
            return Library.Text((buffer, size) => VELOxdDll.GetMetaInfoItemValue(file.Number, node, buffer, size));
        }
    }
}
