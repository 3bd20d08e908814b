"""The measurement information of a file: nested groups of named texts, such as the settings of a scan."""

from __future__ import annotations

from collections.abc import Iterator, Mapping, MutableMapping
from typing import Any, Union

from ._names import not_found
from ._native.handle import Handle
from ._native.library import LOCK, encode_name
from .errors import DeletedError, Error
from .quantity import Quantity

__all__ = ["Information"]

# What a name can be given: a text, a number, a quantity, or a mapping for a group.
Value = Union[str, float, Quantity, Mapping[str, Any]]


class Information(MutableMapping[str, Any]):
    """A group of measurement information, a mapping from names to texts and to groups like it.

    The information of a file, ``file.info``, holds only groups. Case matters in names. If several have the same name,
    the name means the first of them; :meth:`entries` gives all.

    Assigning a number or a `Quantity` writes it as a text, assigning a mapping makes a group of its content.

    Examples
    --------
    >>> with veloxd.open("scan.oxd") as file:
    ...     file.info["Scan"]["Image size"], file.info["Scan"].quantity("Image size").base
    ('1 µm', Quantity(value=1e-06, unit='m'))
    """

    __slots__ = ("_handle", "_node")

    def __init__(self, handle: Handle, node: int) -> None:
        self._handle = handle
        self._node = node

    def entries(self) -> list[tuple[str, str | Information]]:
        """All names with what they stand for, in order, including those that occur more than once."""
        with LOCK:
            return [(self._text("Name", node), self._value(node)) for node in self._nodes()]

    def quantity(self, name: str) -> Quantity:
        """The item ``name`` as a number with its unit.

        Raises
        ------
        NameNotFoundError
            if there is no such item.
        ValueError
            if it does not begin with a number.
        """
        value = self[name]
        if isinstance(value, Information):
            raise ValueError(f"{name!r} is a group of information, not an item.")
        return Quantity.parse(value)

    def to_dict(self) -> dict[str, Any]:
        """The information as nested dicts of texts. Of several with the same name it has the first one."""
        with LOCK:
            content: dict[str, Any] = {}
            for name, value in self.entries():
                content.setdefault(name, value.to_dict() if isinstance(value, Information) else value)
            return content

    def __getitem__(self, name: str) -> Any:
        with LOCK:
            return self._value(self._find(name))

    def __setitem__(self, name: str, value: Value) -> None:
        with LOCK:
            self._handle.require_writable()
            content = self._checked(name, value)
            if name not in self:
                self._append(name, content)
                return
            node = self._find(name)
            is_group = self._handle.get("IsMetaInfoItemAGroup", node)
            if isinstance(content, str) and not is_group:
                self._handle.change("SetMetaInfoItemValue", node, content.encode("utf-8"))
            elif isinstance(content, dict) and is_group:
                Information(self._handle, node)._replace(content)
            else:
                self._handle.change("DeleteMetaInfoItem", node)
                self._append(name, content)

    def __delitem__(self, name: str) -> None:
        with LOCK:
            self._handle.require_writable()
            self._handle.change("DeleteMetaInfoItem", self._find(name))

    def __iter__(self) -> Iterator[str]:
        with LOCK:
            return iter(dict.fromkeys(self._text("Name", node) for node in self._nodes()))

    def __len__(self) -> int:
        """The number of different names."""
        return len(list(iter(self)))

    def __eq__(self, other: object) -> bool:
        return self is other

    __hash__ = object.__hash__

    def _ipython_key_completions_(self) -> list[str]:
        return list(self)

    def _nodes(self) -> list[int]:
        """The nodes of all entries. Raises `DeletedError` if this group is none of the file's any longer."""
        try:
            count = self._handle.get("GetMetaInfoItemChildCount", self._node)
        except Error as failure:
            if failure.details.rstrip().endswith("Unknown error"):
                raise DeletedError("This group of information was deleted.", failure.details) from None
            raise
        nodes: list[int] = []
        for _ in range(count):
            step = "SelectNextMetaInfoItem" if nodes else "SelectFirstChildMetaInfoItem"
            nodes.append(self._handle.get(step, nodes[-1] if nodes else self._node))
        return nodes

    def _text(self, what: str, node: int) -> str:
        return self._handle.text(f"GetMetaInfoItem{what}", node)

    def _value(self, node: int) -> str | Information:
        if self._handle.get("IsMetaInfoItemAGroup", node):
            return Information(self._handle, node)
        return self._text("Value", node)

    def _find(self, name: str) -> int:
        if not isinstance(name, str):
            raise TypeError(f"Information is found by names, not by {type(name).__name__}; see entries().")
        names = []
        for node in self._nodes():
            names.append(self._text("Name", node))
            if names[-1] == name:
                return node
        raise not_found("information", name, names)

    def _checked(self, name: str, value: Value) -> str | dict[str, Any]:
        encode_name(name, "The name of information")
        if isinstance(value, (Mapping, Information)):
            group = Information(self._handle, 0)
            return {key: group._checked(key, part) for key, part in dict(value).items()}
        if self._node == ROOT:
            raise TypeError(f"file.info holds groups, so {name!r} takes a mapping, not {type(value).__name__}.")
        if "=" in name or name.startswith("["):
            raise ValueError(f"The name of an item contains '=' or begins with '[', which files cannot keep: {name!r}.")
        written = str(value)
        encode_name(written, f"The value of {name!r}")
        return written

    def _append(self, name: str, content: str | dict[str, Any]) -> None:
        if isinstance(content, str):
            text = content.encode("utf-8")
            self._handle.change("AddMetaInfoItem", self._node, name.encode("utf-8"), text)
            return
        node = self._handle.change("AddMetaInfoItemGroup", self._node, name.encode("utf-8"))
        group = Information(self._handle, node)
        for key, part in content.items():
            group._append(key, part)

    def _replace(self, content: dict[str, Any]) -> None:
        for node in self._nodes():
            self._handle.change("DeleteMetaInfoItem", node)
        for key, part in content.items():
            self._append(key, part)

    def __repr__(self) -> str:
        with LOCK:
            return f"<veloxd.Information: {', '.join(self) or 'empty'}>"

    def _repr_html_(self) -> str:
        from ._show.display import information_html

        return information_html(self)


ROOT = 1


def root_of(handle: Handle) -> Information:
    """All information of a data set."""
    return Information(handle, ROOT)
