"""A folder of results, each there whole or not at all, under the key of its row."""

from __future__ import annotations

import os
import shutil
from typing import Tuple

from ._rows import Row

_UNFINISHED = ".pagerex-unfinished"


class Store:
    """``objects/ab/KEY.html``; where there are other files ``objects/ab/KEY/document.md`` and they beside it."""

    def __init__(self, folder: str, main_name: str, sync: bool) -> None:
        self._folder = folder
        self._main_name = main_name
        self._extension = os.path.splitext(main_name)[1]
        self._sync = sync
        self._unfinished = os.path.join(folder, _UNFINISHED)
        # What a run has left that was killed.
        shutil.rmtree(self._unfinished, ignore_errors=True)
        os.mkdir(self._unfinished)

    def put(self, row: Row) -> str:
        """The path of its main file from the folder on; empty if there is none."""
        if row.content is None or row.key is None:
            return ""
        place, main = self._place(row)
        target = os.path.join(self._folder, place)
        if not os.path.lexists(target):
            self._make(row, target)
        return main

    def _place(self, row: Row) -> Tuple[str, str]:
        assert row.key is not None
        place = f"objects/{row.key[:2]}/{row.key}"
        if row.assets:
            return place, f"{place}/{self._main_name}"
        return place + self._extension, place + self._extension

    def _make(self, row: Row, target: str) -> None:
        assert row.content is not None
        made = os.path.join(self._unfinished, os.path.basename(target))
        try:
            if row.assets:
                self._write(os.path.join(made, self._main_name), row.content.encode())
                for asset in row.assets:
                    self._write(os.path.join(made, asset.name), asset.data)
            else:
                self._write(made, row.content.encode())
            os.makedirs(os.path.dirname(target), exist_ok=True)
            os.rename(made, target)
        except BaseException:
            shutil.rmtree(made, ignore_errors=True)
            if os.path.lexists(made):
                os.unlink(made)
            raise
        if self._sync:
            sync_folder(os.path.dirname(target))

    def _write(self, path: str, data: bytes) -> None:
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "xb") as file:
            file.write(data)
            if self._sync:
                file.flush()
                os.fsync(file.fileno())

    def close(self) -> None:
        """Leaves nothing but results."""
        shutil.rmtree(self._unfinished, ignore_errors=True)


def sync_folder(path: str) -> None:
    """What lies in it is on the disk."""
    descriptor = os.open(path, os.O_RDONLY | os.O_DIRECTORY)
    try:
        os.fsync(descriptor)
    finally:
        os.close(descriptor)
