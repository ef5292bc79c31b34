"""Word documents on Apache Spark: ``pip install pagerex[spark]``.

>>> from pagerex.spark import convert, read                                # doctest: +SKIP
>>> pages = convert(read(spark, "s3a://archive/letters"), to="markdown")   # doctest: +SKIP
>>> pages.groupBy("status").count().show()                                 # doctest: +SKIP

:func:`convert` is for frames with ``path`` and ``content``, :func:`read` makes one of files. :func:`convert_files` goes
from files to Parquet, and on where it was broken off; so does the command ``pagerex-spark``. :func:`pictures` has a row
for each picture. Workers need this package too.
"""

from __future__ import annotations

from ._convert import DEFAULTS, convert, key, pictures
from ._files import Report, Wave, convert_files, read, saved_pictures, saved_rows
from ._schema import PICTURES, SCHEMA

__all__ = [
    "DEFAULTS",
    "PICTURES",
    "SCHEMA",
    "Report",
    "Wave",
    "convert",
    "convert_files",
    "key",
    "pictures",
    "read",
    "saved_pictures",
    "saved_rows",
]
