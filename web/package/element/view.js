// What the viewer is made of, without the document: its parts in their shadow, and how they show a state.

import { h } from './dom.js';
import { icon } from './icons.js';
import { dress } from './style.js';

const NARROW = 640; // pixels

export class View {
  /** `bar`, `outline`, `find`: the larger parts; `on`: choose(file), cancel, key. */
  constructor(host, labels, { bar, outline, find, on }) {
    Object.assign(this, { host, labels, bar, outline, find, on });
    const shadow = host.attachShadow({ mode: 'open' });
    dress(shadow);
    this.stage = h('div', { class: 'stage', part: 'stage' },
      this.#makeEmpty(), this.#makeError(), find.element, this.#makeStatus(), this.#makeNotice());
    this.progress = labels.bind(h('div', { class: 'progress', part: 'progress', role: 'progressbar', hidden: true,
      'aria-valuemin': 0, 'aria-valuemax': 100 }), 'opening', 'aria-label');
    this.live = h('div', { class: 'live', role: 'status' });
    this.drop = labels.bind(h('div', { class: 'drop', part: 'drop', hidden: true }), 'drop');
    this.root = h('div', { class: 'viewer', part: 'viewer', onkeydown: on.key }, bar.element, this.progress,
      h('div', { class: 'middle' }, outline.element, this.stage),
      ...bar.menus.map((menu) => menu.element), this.drop, this.live, this.#makeChooser());
    shadow.append(this.root);
  }

  // --- Its parts ---

  #makeChooser() {
    this.chooser = h('input', { type: 'file', accept: '.doc,.dot,application/msword', hidden: true, onchange: () => {
      if (this.chooser.files[0]) this.on.choose(this.chooser.files[0]);
      this.chooser.value = '';
    } });
    return this.chooser;
  }

  #makeEmpty() {
    const { labels } = this;
    this.empty = h('div', { class: 'sheet', part: 'empty' }, h('slot', { name: 'empty' }, h('div', { class: 'card' },
      h('div', { class: 'sign' }, icon('page')), labels.bind(h('strong'), 'empty'), labels.bind(h('p'), 'emptyHint'),
      this.#chooseButton())));
    return this.empty;
  }

  #chooseButton() {
    return this.labels.bind(h('button', { type: 'button', class: 'action', part: 'action', onclick: () => this.choose() }), 'open');
  }

  #makeError() {
    this.sentence = h('p', { part: 'error-sentence' });
    this.again = this.#chooseButton();
    this.error = h('div', { class: 'sheet', part: 'error', hidden: true }, h('div', { class: 'card', role: 'alert' },
      h('div', { class: 'sign' }, icon('warning')), this.labels.bind(h('strong'), 'failed'), this.sentence,
      this.again));
    return this.error;
  }

  #makeStatus() {
    this.doing = h('span');
    this.status = h('div', { class: 'status', part: 'status', hidden: true }, this.doing,
      this.labels.bind(h('button', { type: 'button', class: 'plain', 'data-id': 'cancel', onclick: () => this.on.cancel() }), 'cancel'));
    return this.status;
  }

  #makeNotice() {
    this.told = h('span');
    const close = h('button', { type: 'button', class: 'button', 'data-id': 'closeNotice', onclick: () => this.notice() }, icon('close'));
    this.note = h('div', { class: 'notice', part: 'notice', role: 'status', hidden: true }, this.told,
      this.labels.bind(close, 'close', 'aria-label', 'title'));
    return this.note;
  }

  // --- What they show ---

  choose() {
    this.chooser.click();
  }

  tell(text) {
    this.live.textContent = text;
  }

  /** A sentence at the lower edge, until it is closed; none closes it. */
  notice(text = '') {
    this.told.textContent = text;
    this.note.hidden = text === '';
  }

  /** `state`: empty, loading, ready or error. */
  show(state, { name = '', sentence = '' } = {}) {
    this.empty.hidden = state !== 'empty';
    this.error.hidden = state !== 'error';
    this.status.hidden = state !== 'loading';
    this.progress.hidden = state !== 'loading';
    if (state === 'error') this.sentence.textContent = sentence;
    if (state !== 'loading') return;
    this.doing.textContent = `${this.labels.say('opening')} ${name}`.trim();
    this.tell(this.doing.textContent);
    this.progress.removeAttribute('aria-valuenow');
    this.done(0);
  }

  done(part) {
    this.progress.style.setProperty('--done', part);
    if (part > 0) this.progress.setAttribute('aria-valuenow', Math.round(part * 100));
  }

  dragged(isDragged, isOver) {
    this.root.classList.toggle('dragged', isDragged);
    this.drop.hidden = !isDragged || !isOver;
  }

  get isNarrow() {
    return this.host.clientWidth <= NARROW;
  }

  fit() {
    this.root.classList.toggle('narrow', this.isNarrow);
  }
}
