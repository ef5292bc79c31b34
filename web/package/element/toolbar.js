// The bar of tools: one stop for the Tab key, arrows within it; what does not fit goes into a menu, the least
// needed first.

import { h, moveAmong } from './dom.js';
import { icon } from './icons.js';
import { Menu } from './menu.js';

/**
 * In their order on the bar. `tool`: the name that a host asks for them by; `keep`: the higher, the longer it stays
 * on a narrow bar; `isToggle`: is on or off; `items`: has a menu.
 */
const BUTTONS = [
  { id: 'outline', tool: 'outline', keep: 6, isToggle: true },
  { id: 'previous', tool: 'pages', keep: 4, group: true },
  { id: 'field', tool: 'pages', keep: 9 },
  { id: 'next', tool: 'pages', keep: 4 },
  { id: 'zoomOut', tool: 'zoom', keep: 3, group: true },
  { id: 'zoomReset', tool: 'zoom', keep: 2, isText: true },
  { id: 'zoomIn', tool: 'zoom', keep: 3 },
  { id: 'fit', tool: 'zoom', keep: 2, isToggle: true },
  { id: 'space' },
  { id: 'search', tool: 'search', keep: 8, isToggle: true },
  { id: 'comments', tool: 'comments', keep: 2, isToggle: true, group: true },
  { id: 'changes', tool: 'changes', keep: 2, isToggle: true },
  { id: 'open', tool: 'open', keep: 1, group: true },
  { id: 'print', tool: 'print', keep: 3 },
  { id: 'copy', tool: 'copy', keep: 1 },
  { id: 'download', tool: 'download', keep: 5, items: ['html', 'markdown', 'text'] },
];

/** The names that a host may ask for. */
export const TOOLS = [...new Set(BUTTONS.map(({ tool }) => tool).filter(Boolean))];

export class Toolbar {
  #byId = new Map();
  #state = {};

  /** `run(id, value)` does what a tool is for. */
  constructor(labels, run) {
    Object.assign(this, { labels, run });
    this.menus = [];
    this.more = this.#button({ id: 'more' });
    this.more.hidden = true;
    this.row = [...BUTTONS.map((button) => this.#make(button)), this.more];
    this.moreMenu = this.#menu(this.more, 'more', () => this.#folded());
    this.element = h('div', {
      class: 'bar', part: 'toolbar', role: 'toolbar',
      onkeydown: (event) => this.#onKey(event), onfocusin: (event) => this.#rove(event.target),
    }, h('slot', { name: 'start' }), ...this.row, h('slot', { name: 'end' }));
    labels.bind(this.element, 'tools', 'aria-label');
    this.more.tabIndex = -1;
    this.#rove(this.#items()[0]);
    this.sizes = new ResizeObserver(() => this.fold());
    this.sizes.observe(this.element);
  }

  // --- Its parts ---

  #make(button) {
    if (button.id === 'space') return h('span', { class: 'space' });
    const element = button.id === 'field' ? this.#field() : this.#button(button);
    if (button.group) element.classList.add('group');
    this.#byId.set(button.id, element);
    if (button.items) {
      this.#menu(element, button.id, () => button.items.map((item) => this.#entry(item, 'download', item)));
    }
    return element;
  }

  #button({ id, isText, isToggle }) {
    const button = h('button', {
      type: 'button', class: isText ? 'button words' : 'button', part: `button button-${id}`, 'data-id': id,
      tabindex: '-1', 'aria-pressed': isToggle ? 'false' : undefined,
      onclick: () => this.#press(id),
    }, isText ? undefined : icon(id));
    return this.labels.bind(button, id, 'aria-label', 'title');
  }

  #menu(button, key, items) {
    const menu = new Menu(button, items, { label: this.labels.say(key) });
    this.labels.bind(menu.element, key, 'aria-label');
    button.pagerexMenu = menu;
    this.menus.push(menu);
    return menu;
  }

  #field() {
    this.input = this.labels.bind(h('input', {
      class: 'field', part: 'page-field', inputmode: 'numeric', autocomplete: 'off', value: '', tabindex: '-1',
      onchange: () => this.#turnTo(Number.parseInt(this.input.value, 10)),
      onfocus: () => this.input.select(),
    }), 'page', 'aria-label', 'title');
    this.total = h('span', { class: 'total' });
    return h('span', { class: 'pages', 'data-id': 'field' }, this.input, this.total);
  }

  #turnTo(number) {
    if (number > 0) this.run('page', number);
    this.input.value = this.#state.page ? String(this.#state.page) : '';
    this.input.select();
  }

  #press(id) {
    const menu = (id === 'more' ? this.more : this.#byId.get(id)).pagerexMenu;
    if (menu) menu.toggle();
    else if (!this.#isOff(id)) this.run(id);
  }

  #isOff(id) {
    return this.#state.off?.has(id) ?? false;
  }

  /** Where the focus goes back to. */
  focus(id) {
    const button = this.#byId.get(id);
    const isThere = button && !button.hidden && !this.element.hidden;
    (isThere ? button : this.more).focus();
  }

  // --- What it shows ---

  /** `state`: { page, pages, percent } and Sets of ids: { on, off, hidden }, the last with names of tools too. */
  update(state) {
    const { page, pages, percent, on, off, hidden } = state;
    const isSame = (key) => String(this.#state[key]) === String(state[key]);
    const digits = (number) => String(number ?? 0).length;
    const keepsRoom = digits(pages) === digits(this.#state.pages) && digits(percent) === digits(this.#state.percent)
      && String([...hidden]) === String([...this.#state.hidden ?? []]);
    if (!isSame('page') || !isSame('pages')) this.#count(page, pages);
    this.#state = state;
    const reset = this.#byId.get('zoomReset');
    if (reset.textContent !== percent) {
      reset.textContent = percent;
      reset.pagerexValues = { percent };
      for (const place of ['aria-label', 'title']) reset.setAttribute(place, this.labels.say('zoomReset', { percent }));
    }
    for (const [id, button] of this.#byId) {
      if (id === 'field') continue;
      if (button.hasAttribute('aria-pressed')) button.setAttribute('aria-pressed', String(on.has(id)));
      button.setAttribute('aria-disabled', String(off.has(id)));
    }
    if (!keepsRoom) this.fold();
  }

  #count(page, pages) {
    this.input.value = page ? String(page) : '';
    this.input.disabled = !pages;
    this.input.style.width = `${Math.max(String(pages).length, 2) + 2.2}ch`;
    this.total.textContent = pages ? this.labels.say('of', { count: pages }) : '';
  }

  /** Hides what does not fit, or is not wanted. */
  fold() {
    const wanted = BUTTONS.filter(({ id, tool }) => tool && !this.#state.hidden?.has(tool) && !this.#state.hidden?.has(id));
    for (const { id } of BUTTONS) {
      if (this.#byId.has(id)) this.#byId.get(id).hidden = true;
    }
    for (const { id } of wanted) this.#byId.get(id).hidden = false;
    this.more.hidden = true;
    this.away = [];
    const order = wanted.map((button, index) => ({ ...button, index })).sort(
      (one, other) => one.keep - other.keep || other.index - one.index);
    while (order.length > 1 && this.element.scrollWidth > this.element.clientWidth) {
      const { keep } = order[0];
      while (order[0]?.keep === keep && order[0].keep < 9) this.#byId.get(this.#putAway(order.shift())).hidden = true;
      this.more.hidden = false;
      if (order[0]?.keep === 9) break;
    }
    if (!this.#items().some((item) => item.tabIndex === 0)) this.#rove(this.#items()[0]);
  }

  #putAway(button) {
    this.away.push(button);
    return button.id;
  }

  /** What the menu has in place of the buttons that do not fit. */
  #folded() {
    const away = this.away.filter(({ id }) => !this.#isOff(id)).sort((one, other) => one.index - other.index);
    return away.flatMap(({ id, items, isToggle }) => (items
      ? items.map((item) => this.#entry(item, id, item))
      : [{ ...this.#entry(id, id), ...(isToggle && { checked: this.#state.on?.has(id) ?? false }) }]));
  }

  #entry(key, id, value) {
    const label = this.labels.say(key, { percent: this.#state.percent });
    return { label: value ? `${this.labels.say('download')}: ${label}` : label, icon: id, run: () => this.run(id, value) };
  }

  // --- Its keys ---

  #items() {
    const own = [...this.element.querySelectorAll('button,input')];
    return own.filter((item) => !item.hidden && !item.closest('[hidden]') && !item.disabled);
  }

  #rove(target) {
    const item = target?.closest('button,input');
    if (!item || !this.element.contains(item)) return;
    for (const other of this.element.querySelectorAll('button,input')) other.tabIndex = other === item ? 0 : -1;
  }

  #onKey(event) {
    const { target, key } = event;
    if (target === this.input && this.#inField(event)) return;
    const next = moveAmong(this.#items(), target, key, false);
    if (!next || event.ctrlKey || event.metaKey || event.altKey) return;
    event.preventDefault();
    next.focus();
  }

  /** The field keeps the keys that move in its text. */
  #inField({ key, target }) {
    if (key === 'ArrowUp' || key === 'ArrowDown') {
      this.run(key === 'ArrowUp' ? 'previous' : 'next');
      target.select();
    } else if (key === 'Enter') {
      this.#turnTo(Number.parseInt(target.value, 10));
    } else if (key === 'Escape') {
      this.input.value = String(this.#state.page ?? '');
    } else {
      const [start, end, length] = [target.selectionStart, target.selectionEnd, target.value.length];
      const isAll = start === 0 && end === length;
      return !isAll && ((key === 'ArrowLeft' && end > 0) || (key === 'ArrowRight' && start < length)
        || key === 'Home' || key === 'End');
    }
    return true;
  }
}
