"""Many documents: each in a process of its own limits, with one row for each of them.

>>> from pagerex.batch import convert_shard
>>> for row in convert_shard(["sample.doc", ("letter", b"%PDF-1.7")], to="markdown", slots=2):
...     if row.path == "letter":
...         print(row.status, row.kind, row.sentence)
not_word pdf This is a PDF document (.pdf). Only documents of Word 97 to 2003 are converted.

:func:`convert_shard` is what engines for large amounts call on one share of them; :func:`run` writes into a folder, and
goes on where it was ended.
"""

from __future__ import annotations

from ._plan import key_of, key_prefix
from ._rows import STATUSES, Item, Row, RowAsset, RowWarning
from ._run import Summary, rows, run
from ._shard import convert_shard

__all__ = [
    "STATUSES",
    "Item",
    "Row",
    "RowAsset",
    "RowWarning",
    "Summary",
    "convert_shard",
    "key_of",
    "key_prefix",
    "rows",
    "run",
]
