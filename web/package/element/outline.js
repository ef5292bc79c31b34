// The panel of headings and bookmarks: a tree of which each row leads to its place.

import { h, moveAmong, slices } from './dom.js';
import { icon } from './icons.js';

const HEADINGS = 'h1,h2,h3,h4,h5,h6';
const BOOKMARKS = 'span[id]:empty:not([id^=_])';

const textOf = (element) => element.textContent.replace(/\s+/g, ' ').trim();

export class Outline {
  #rows = [];
  #turn = 0;

  constructor(labels, { frame, onChoose, onClose }) {
    Object.assign(this, { labels, frame, onChoose, onClose });
    this.tree = labels.bind(h('div', { class: 'tree', role: 'tree', onkeydown: (event) => this.#onKey(event) }),
      'outline', 'aria-label');
    this.none = labels.bind(h('p', { class: 'none', hidden: true }), 'noOutline');
    const title = labels.bind(h('span', { class: 'name' }), 'outline');
    const close = labels.bind(h('button', { type: 'button', class: 'button', 'data-id': 'closeOutline', onclick: () => this.close() },
      icon('close')), 'close', 'aria-label', 'title');
    this.element = labels.bind(h('nav', { class: 'panel', part: 'outline', hidden: true,
      onkeydown: (event) => this.#onEscape(event) },
    h('div', { class: 'head' }, title, close), this.none, this.tree), 'outline', 'aria-label');
  }

  get isOpen() {
    return !this.element.hidden;
  }

  open() {
    this.element.hidden = false;
    this.refresh().then(() => {
      if (this.isOpen) (this.#rows.find(({ row }) => row.tabIndex === 0)?.row ?? this.element.querySelector('button')).focus();
    });
  }

  close() {
    this.element.hidden = true;
    this.onClose();
  }

  /** What the document has by now. */
  async refresh() {
    this.#turn += 1;
    const turn = this.#turn;
    const main = this.isOpen ? this.frame()?.main : undefined;
    if (!main) return;
    const headings = Array.from(main.querySelectorAll(HEADINGS)).filter(textOf);
    const bookmarks = Array.from(main.querySelectorAll(BOOKMARKS));
    const rows = [];
    const breathe = slices();
    for (const target of headings) {
      rows.push(this.#row(target, textOf(target), Number(target.tagName[1])));
      await breathe();
      if (turn !== this.#turn) return;
    }
    if (bookmarks.length > 0) rows.push(this.#row(undefined, this.labels.say('bookmarks'), 1));
    for (const target of bookmarks) rows.push(this.#row(target, target.id, 2));
    this.#show(rows, headings.length);
  }

  #show(rows, headings) {
    this.#rows = rows;
    this.headings = headings;
    this.none.hidden = rows.length > 0;
    this.tree.hidden = rows.length === 0;
    this.tree.replaceChildren(...rows.map(({ row }) => row));
    this.follow();
    if (rows.length > 0 && !rows.some(({ row }) => row.tabIndex === 0)) rows[0].row.tabIndex = 0;
  }

  #row(target, text, level) {
    const row = h('div', {
      class: target ? 'row' : 'row title', part: 'outline-item', role: 'treeitem', 'aria-level': level, tabindex: '-1',
      title: text, onclick: () => this.#choose(target, row),
    }, text);
    row.style.setProperty('--level', level);
    return { target, row };
  }

  #choose(target, row) {
    if (!target) return;
    this.#rove(row);
    this.onChoose(target);
  }

  #rove(row) {
    for (const other of this.#rows) other.row.tabIndex = other.row === row ? 0 : -1;
    row.focus();
  }

  /** Marks the heading that the reader is under. */
  follow() {
    const frame = this.frame();
    if (!this.isOpen || !frame || this.#rows.length === 0) return;
    const above = frame.countAbove(this.#rows.slice(0, this.headings).map(({ target }) => target));
    const current = this.#rows[above - 1]?.row;
    if (current === this.current) return;
    this.current?.removeAttribute('aria-current');
    current?.setAttribute('aria-current', 'true');
    if (current) this.#reveal(current);
    this.current = current;
  }

  /** Within the panel; the host's page does not move. */
  #reveal(row) {
    const [tree, own] = [this.tree.getBoundingClientRect(), row.getBoundingClientRect()];
    if (own.top < tree.top || own.bottom > tree.bottom) this.tree.scrollTop += own.top - tree.top - tree.height / 2;
  }

  #onKey(event) {
    const rows = this.#rows.map(({ row }) => row);
    const next = moveAmong(rows, event.target, event.key, true);
    if (next) this.#rove(next);
    else if (event.key === 'Enter' || event.key === ' ') event.target.click();
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  #onEscape(event) {
    if (event.key !== 'Escape') return;
    event.preventDefault();
    event.stopPropagation();
    this.close();
  }
}
