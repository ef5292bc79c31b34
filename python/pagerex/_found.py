"""What belongs together in a document, found once in each view."""

from __future__ import annotations

from typing import Any, Dict, Optional, Tuple, cast

from . import _native
from ._items import COMMENT_END, COMMENT_REFERENCE, COMMENT_START, NOTE, NOTE_REFERENCE, View


def note_of(view: View, reference: int) -> Any:
    """The note that a reference stands for, or None."""
    notes = cast("Optional[Dict[Tuple[int, int], int]]", view.found.get("notes"))
    if notes is None:
        notes = view.found["notes"] = _numbers(view, NOTE)
    facts: _native.NoteFacts = view.tree.facts(reference)
    number = notes.get((facts.kind, facts.index))
    return None if number is None else view.item(number)


def reference_of(view: View, note: _native.NoteFacts) -> Optional[int]:
    """The reference that stands for a note."""
    references = cast("Optional[Dict[Tuple[int, int], int]]", view.found.get("references"))
    if references is None:
        references = view.found["references"] = _numbers(view, NOTE_REFERENCE)
    return references.get((note.kind, note.index))


def _numbers(view: View, kind: int) -> Dict[Tuple[int, int], int]:
    numbers: Dict[Tuple[int, int], int] = {}
    for number in view.tree.find(0, kind):
        facts: _native.NoteFacts = view.tree.facts(number)
        numbers.setdefault((facts.kind, facts.index), number)
    return numbers


def ranges_of(view: View) -> Dict[int, Tuple[int, int]]:
    """Of comments, by their numbers."""
    ranges = cast("Optional[Dict[int, Tuple[int, int]]]", view.found.get("comments"))
    if ranges is None:
        tree = view.tree
        places: Dict[int, Dict[int, int]] = {}
        for kind in (COMMENT_START, COMMENT_END, COMMENT_REFERENCE):
            found = (number for number in tree.find(0, kind) if not tree.is_aside(number))
            places[kind] = {tree.facts(number): tree.span(number)[0] for number in found}
        ranges = {}
        for index, place in places[COMMENT_REFERENCE].items():
            end = places[COMMENT_END].get(index, place)
            ranges[index] = (min(places[COMMENT_START].get(index, end), end), end)
        view.found["comments"] = ranges
    return ranges
