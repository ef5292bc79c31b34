// The bar that words are searched in: finds while one types, counts, and leads from one to the next.

import { h } from './dom.js';
import { highlighter } from './highlight.js';
import { icon } from './icons.js';
import { findAll, patternOf } from './search.js';

const TYPING_MILLISECONDS = 120;

export class FindBar {
  #turn = 0;
  #matches = [];
  #index = -1;

  /** `frame()`: that of the document, if there is one; `tell`: to who listens. */
  constructor(labels, { frame, tell, onOpen, onClose }) {
    Object.assign(this, { labels, frame, tell, onOpen, onClose });
    this.input = labels.bind(h('input', {
      type: 'search', class: 'query', part: 'search-field', autocomplete: 'off', spellcheck: 'false', enterkeyhint: 'search',
      oninput: () => this.#typed(),
    }), 'searchIn', 'aria-label', 'placeholder');
    this.count = h('span', { class: 'count' });
    this.element = h('div', {
      class: 'find', part: 'search', role: 'search', hidden: true, onkeydown: (event) => this.#onKey(event),
    }, icon('search'), this.input, this.count, this.#button('searchPrevious', 'previous', () => this.move(-1)),
    this.#button('searchNext', 'next', () => this.move(1)), this.#button('close', 'close', () => this.close()));
  }

  #button(key, name, onclick) {
    return this.labels.bind(h('button', { type: 'button', class: 'button', part: `button button-${key}`, 'data-id': key,
      onclick }, icon(name)), key, 'aria-label', 'title');
  }

  get isOpen() {
    return !this.element.hidden;
  }

  open() {
    this.element.hidden = false;
    const marked = this.frame()?.selection?.toString().trim();
    if (marked && marked.length < 80 && !marked.includes('\n')) this.input.value = marked;
    this.input.focus();
    this.input.select();
    if (this.input.value) this.find(this.input.value);
    this.onOpen();
  }

  /** Opens for a query of the host's. */
  ask(query) {
    this.element.hidden = query === '';
    this.input.value = query;
    this.onOpen();
    return this.find(query);
  }

  close() {
    this.element.hidden = true;
    this.clear();
    this.onClose();
  }

  clear() {
    this.#turn += 1;
    clearTimeout(this.timer);
    this.highlighter?.clear();
    this.highlighter = undefined;
    [this.#matches, this.#index] = [[], -1];
    this.count.textContent = '';
  }

  #typed() {
    clearTimeout(this.timer);
    this.timer = setTimeout(() => this.find(this.input.value), TYPING_MILLISECONDS);
  }

  /** Finds all of a query, and goes to the first behind the place where the reader is. Resolves with their count. */
  async find(query) {
    this.clear();
    const frame = this.frame();
    const pattern = patternOf(query);
    if (!frame || !pattern) return 0;
    const turn = this.#turn;
    const matches = await findAll(frame.main, pattern, {
      isSkipped: (node) => frame.hidesComments && node.matches('.comments,.cr'),
      isCurrent: () => turn === this.#turn && frame.window !== null,
      onCount: (count) => { this.count.textContent = String(count); },
    });
    if (!matches || turn !== this.#turn) return 0;
    this.query = query;
    this.#matches = matches;
    this.highlighter = highlighter(frame.window);
    this.highlighter.show(matches);
    if (matches.length > 0) this.#goTo(this.#firstInSight());
    else this.#say();
    return matches.length;
  }

  /** The same again where a document has grown or changed; the reader stays where he is. */
  refresh() {
    if (this.isOpen && this.input.value) this.find(this.input.value);
  }

  move(step) {
    if (this.query !== this.input.value) return this.find(this.input.value);
    if (this.#matches.length > 0) this.#goTo((this.#index + step + this.#matches.length) % this.#matches.length);
    return undefined;
  }

  #firstInSight() {
    let [low, high] = [0, this.#matches.length];
    while (low < high) {
      const middle = (low + high) >> 1;
      const { bottom } = this.#matches[middle].startContainer.parentElement.getBoundingClientRect();
      if (bottom < 0) low = middle + 1;
      else high = middle;
    }
    return low % this.#matches.length;
  }

  #goTo(index) {
    this.#index = index;
    const range = this.highlighter.point(this.#matches[index]);
    const node = range.startContainer;
    const element = node.nodeType === Node.TEXT_NODE ? node.parentElement : node;
    if (!this.#isSeen(range)) this.frame().show(element, true);
    this.#say();
  }

  #isSeen(range) {
    const { top, bottom, height } = range.getBoundingClientRect();
    return height > 0 && top >= 60 && bottom <= this.frame().window.innerHeight - 40;
  }

  #say() {
    const [count, index] = [this.#matches.length, this.#index + 1];
    const text = count > 0 ? this.labels.say('matches', { index, count }) : this.labels.say('noMatches');
    this.count.textContent = text;
    this.element.classList.toggle('none', count === 0);
    this.tell(text);
  }

  #onKey(event) {
    if (event.key === 'Enter' && event.target === this.input) this.move(event.shiftKey ? -1 : 1);
    else if (event.key === 'Escape') this.close();
    else return;
    event.preventDefault();
    event.stopPropagation();
  }
}
