// A menu below a button: opens, moves and closes by key and by pointer.

import { h, moveAmong } from './dom.js';
import { icon } from './icons.js';

export class Menu {
  /** `items()`: rows of { label, icon, run, checked }, where `checked` is for those that are on or off. */
  constructor(button, items, { label }) {
    Object.assign(this, { button, items });
    this.element = h('div', {
      class: 'menu', part: 'menu', role: 'menu', hidden: true,
      onkeydown: (event) => this.#onKey(event),
      onfocusout: (event) => {
        if (!this.element.contains(event.relatedTarget) && event.relatedTarget !== button) this.close();
      },
    });
    this.element.setAttribute('aria-label', label);
    button.setAttribute('aria-haspopup', 'menu');
    button.setAttribute('aria-expanded', 'false');
    button.addEventListener('keydown', (event) => {
      if (event.key === 'ArrowDown') {
        event.preventDefault();
        this.open();
      }
    });
  }

  get isOpen() {
    return !this.element.hidden;
  }

  toggle() {
    if (this.isOpen) this.close(true);
    else this.open();
  }

  open() {
    this.element.replaceChildren(...this.items().map((item) => this.#row(item)));
    this.element.hidden = false;
    this.button.setAttribute('aria-expanded', 'true');
    this.#place();
    this.element.firstElementChild?.focus();
  }

  close(givesFocus) {
    this.element.hidden = true;
    this.button.setAttribute('aria-expanded', 'false');
    if (givesFocus) this.button.focus();
  }

  /** Below the button, within the viewer. */
  #place() {
    const around = this.element.offsetParent.getBoundingClientRect();
    const { left, bottom } = this.button.getBoundingClientRect();
    const most = around.width - this.element.offsetWidth - 8;
    this.element.style.left = `${Math.max(8, Math.min(left - around.left, most))}px`;
    this.element.style.top = `${bottom - around.top + 4}px`;
    this.element.style.maxHeight = `${Math.max(around.bottom - bottom - 16, 120)}px`;
  }

  #row({ label, icon: name, run, checked }) {
    const isCheck = checked !== undefined;
    return h('button', {
      type: 'button', class: 'item', part: 'menu-item', tabindex: '-1',
      role: isCheck ? 'menuitemcheckbox' : 'menuitem', 'aria-checked': isCheck ? String(checked) : undefined,
      onclick: () => {
        this.close(true);
        run();
      },
    }, icon(isCheck && checked ? 'check' : name), h('span', {}, label));
  }

  #onKey(event) {
    const items = [...this.element.children];
    const current = event.target.closest('.item');
    const next = moveAmong(items, current, event.key, true);
    if (next) next.focus();
    else if (event.key === 'Escape') this.close(true);
    else if (event.key === 'Tab') this.close(true);
    else return;
    if (event.key !== 'Tab') event.preventDefault();
    event.stopPropagation();
  }
}
