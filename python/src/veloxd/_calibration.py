"""What files tell of the cantilever that their curves were measured with."""

from __future__ import annotations

from .information import Information

# The items of the measurement information, all of one group, by the options of curves that they stand for.
_GROUP = "Tool"
_ITEMS = {"spring_constant": "Spring constant", "sensitivity": "Deflection sensitivity"}

# The same as attributes of labelled arrays.
ATTRIBUTES = {option: f"{_GROUP}::{item}" for option, item in _ITEMS.items()}


def calibration(information: Information) -> dict[str, str]:
    """The texts of those items that the information has, by their options."""
    tool = information.get(_GROUP)
    if not isinstance(tool, Information):
        return {}
    texts = {option: tool.get(item) for option, item in _ITEMS.items()}
    return {option: text for option, text in texts.items() if isinstance(text, str)}
