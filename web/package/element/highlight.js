// Shows what was found: by the browser's own highlights, or by mark elements where it has none.

/** A range whose ends the document moves along. */
function liveRange(range) {
  const live = range.startContainer.ownerDocument.createRange();
  live.setStart(range.startContainer, range.startOffset);
  live.setEnd(range.endContainer, range.endOffset);
  return live;
}

class Highlights {
  constructor(inner) {
    this.inner = inner;
    this.registry = inner.CSS.highlights;
  }

  show(ranges) {
    const highlight = new this.inner.Highlight();
    for (const range of ranges) highlight.add(range);
    this.registry.set('pagerex-match', highlight);
    this.registry.delete('pagerex-current');
  }

  point(range) {
    const highlight = new this.inner.Highlight(range);
    highlight.priority = 1;
    this.registry.set('pagerex-current', highlight);
    return liveRange(range);
  }

  clear() {
    this.registry.delete('pagerex-match');
    this.registry.delete('pagerex-current');
  }
}

/** The text nodes of a range, each with the part of it that is meant. */
function partsOf(range) {
  const { startContainer, startOffset, endContainer, endOffset } = range;
  const walker = startContainer.ownerDocument.createTreeWalker(
    liveRange(range).commonAncestorContainer, NodeFilter.SHOW_TEXT);
  const parts = [];
  walker.currentNode = startContainer;
  for (let node = startContainer; node; node = node === endContainer ? null : walker.nextNode()) {
    const start = node === startContainer ? startOffset : 0;
    const end = node === endContainer ? endOffset : node.length;
    if (end > start && node.nodeType === Node.TEXT_NODE) parts.push({ node, start, end });
  }
  return parts;
}

/** From the last range to the first, so that the places of the others stay. */
class Marks {
  #marks = new Map();

  show(ranges) {
    this.clear();
    for (const range of [...ranges].reverse()) {
      this.#marks.set(range, partsOf(range).reverse().map(({ node, start, end }) => {
        const middle = start > 0 ? node.splitText(start) : node;
        if (end - start < middle.length) middle.splitText(end - start);
        const mark = node.ownerDocument.createElement('mark');
        mark.dataset.pagerex = 'match';
        middle.replaceWith(mark);
        mark.append(middle);
        return mark;
      }));
    }
  }

  point(range) {
    for (const mark of this.current ?? []) mark.dataset.pagerex = 'match';
    this.current = this.#marks.get(range) ?? [];
    for (const mark of this.current) mark.dataset.pagerex = 'current';
    const live = range.startContainer.ownerDocument.createRange();
    if (this.current.length > 0) live.selectNodeContents(this.current[this.current.length - 1]);
    return live;
  }

  clear() {
    for (const mark of [...this.#marks.values()].flat()) {
      const { parentNode } = mark;
      mark.replaceWith(...mark.childNodes);
      parentNode?.normalize();
    }
    this.#marks.clear();
    this.current = undefined;
  }
}

export const highlighter = (inner) => (inner.CSS?.highlights && inner.Highlight ? new Highlights(inner) : new Marks());
