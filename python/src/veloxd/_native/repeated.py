"""Calls a function of the library many times, such as once for each line of a channel.

What ctypes does with the arguments of a call takes longer than the library needs for a short line. So they are
converted beforehand, those that stay the same only once, and no Python code runs between the calls.
"""

from __future__ import annotations

import functools
from collections.abc import Iterable, Sequence
from ctypes import c_uint64
from itertools import repeat
from typing import Any, Union

from .declarations import FUNCTIONS
from .library import library

# An argument that is the same in all calls, one for each call, or what `positions` has made of these.
Argument = Union[int, Iterable[Any]]

_MOST_KEPT = 4096


def call_for_each(name: str, *arguments: Argument) -> list[Any]:
    """The results of one call after the other of the function ``name``, while :data:`LOCK` is held.

    At least one argument must end. Failures stay with the library, for :func:`check`.
    """
    kinds = FUNCTIONS[name][1]
    return list(map(_without_conversion(name), *map(_converted, kinds, arguments)))


def positions(numbers: Sequence[int]) -> list[Any]:
    """Positions as arguments for several functions."""
    if isinstance(numbers, range) and numbers.step == 1 and numbers.stop <= _MOST_KEPT:
        return _kept()[numbers.start : numbers.stop]
    return list(map(c_uint64.from_param, numbers))


def _converted(kind: Any, argument: Argument) -> Iterable[Any]:
    if isinstance(argument, int):
        return repeat(kind.from_param(argument))
    return argument if isinstance(argument, list) else map(kind.from_param, argument)


@functools.cache
def _kept() -> list[Any]:
    return list(map(c_uint64.from_param, range(_MOST_KEPT)))


@functools.cache
def _without_conversion(name: str) -> Any:
    """The function without the types of its arguments, which must have them already."""
    function = library()[name]
    function.restype = FUNCTIONS[name][0]
    return function
