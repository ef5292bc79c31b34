// Finds words in a document, whatever their case and accents, across the runs that a line is made of. Works in
// slices, so that the page answers meanwhile.

import { slices } from './dom.js';

const BLOCKS = 'p,h1,h2,h3,h4,h5,h6,li,td,th,aside,figure,header,footer,div,section,main,body';
const PLAIN = /^[\x20-\x7e]*$/;
// Marks above and below Latin, Greek and Cyrillic letters; what stands in a word unseen.
const DROPPED = /[\u0300-\u036f\u00ad\u200b-\u200d\ufeff]/g;

const known = new Map();

function foldCharacter(character) {
  let folded = known.get(character);
  if (folded === undefined) {
    folded = /\s/.test(character) ? ' ' : character.normalize('NFD').replace(DROPPED, '').toLowerCase();
    known.set(character, folded);
  }
  return folded;
}

/** Lower case without accents, and for each unit of it the index in `text`, where they differ. */
export function fold(text) {
  if (PLAIN.test(text)) return { folded: text.toLowerCase() };
  const places = [];
  let folded = '';
  let index = 0;
  for (const character of text) {
    const part = foldCharacter(character);
    for (let unit = 0; unit < part.length; unit += 1) places.push(index);
    folded += part;
    index += character.length;
  }
  places.push(text.length);
  return { folded, places };
}

/** What a query finds: its words, with any blanks between them; undefined for an empty one. */
export function patternOf(query) {
  const words = fold(query).folded.trim().split(/\s+/).filter(Boolean);
  if (words.length === 0) return undefined;
  return new RegExp(words.map((word) => word.replace(/[\\^$.*+?()[\]{}|]/g, '\\$&')).join('\\s+'), 'g');
}

/** The text of a block as a row of text nodes; a break of lines stands for a blank. */
class Line {
  constructor(block) {
    this.block = block;
    this.text = '';
    this.parts = [];
  }

  add(node) {
    this.parts.push({ node, start: this.text.length });
    this.text += node.data;
  }

  /** The place of an index, at the end of a node rather than at the beginning of the next where `isEnd`. */
  #place(index, isEnd) {
    let [low, high] = [0, this.parts.length - 1];
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      const { start } = this.parts[middle];
      if (isEnd ? start < index : start <= index) low = middle;
      else high = middle - 1;
    }
    const { node, start } = this.parts[low];
    return [node, Math.min(index - start, node.length)];
  }

  matches(pattern) {
    const { folded, places } = fold(this.text);
    const at = (index) => (places ? places[index] : index);
    return Array.from(folded.matchAll(pattern), ({ index, 0: found }) => {
      let end = index + found.length;
      while (places && places[end] === places[end - 1]) end += 1; // a character is found whole
      const [startContainer, startOffset] = this.#place(at(index), false);
      const [endContainer, endOffset] = this.#place(at(end), true);
      return new StaticRange({ startContainer, startOffset, endContainer, endOffset });
    });
  }
}

/** The lines of what `root` shows. */
function* linesOf(root, isSkipped) {
  const walker = root.ownerDocument.createTreeWalker(root, NodeFilter.SHOW_TEXT + NodeFilter.SHOW_ELEMENT, (node) => {
    if (node.nodeType === Node.TEXT_NODE || node.nodeName === 'BR') return NodeFilter.FILTER_ACCEPT;
    return node.nodeName === 'STYLE' || isSkipped(node) ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_SKIP;
  });
  let line = new Line(root);
  for (let node = walker.nextNode(); node; node = walker.nextNode()) {
    if (node.nodeName === 'BR') {
      line.text += '\n';
      continue;
    }
    const block = node.parentElement.closest(BLOCKS);
    if (block !== line.block) {
      yield line;
      line = new Line(block);
    }
    line.add(node);
  }
  yield line;
}

/** All ranges of a pattern in the order of the document; `isCurrent()` tells whether they are still wanted. */
export async function findAll(root, pattern, { isSkipped, isCurrent, onCount }) {
  const breathe = slices();
  const found = [];
  for (const line of linesOf(root, isSkipped)) {
    if (line.parts.length > 0) {
      for (const range of line.matches(pattern)) found.push(range);
    }
    const breath = breathe();
    if (breath) {
      await breath;
      if (!isCurrent()) return undefined;
      onCount(found.length);
    }
  }
  return found;
}
