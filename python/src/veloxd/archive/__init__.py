"""Archives of many files: catalogues and queries, work on each file, and galleries.

>>> import veloxd.archive
>>> catalogue = veloxd.archive.index("catalogue", ".")
>>> found = catalogue.find("channel = 'Topography' and points = 16")
>>> len(found)
1

It needs the extra ``archive`` of this package, and the tool ``oxd``, which a wheel brings.
"""

from ._update import Report
from ._words import QueryError
from .batch import map
from .catalogue import Catalogue, Found, index
from .gallery import gallery
from .roughness import Heights, heights
from .steps import Export, Selection, Statistics

__all__ = [
    "Catalogue",
    "Export",
    "Found",
    "Heights",
    "QueryError",
    "Report",
    "Selection",
    "Statistics",
    "gallery",
    "heights",
    "index",
    "map",
]
