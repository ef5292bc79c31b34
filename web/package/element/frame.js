// A document's frame: nothing in it runs, leaves it or is loaded from outside. Pieces of a page are written into it
// as they come.

import { FRAME_HEAD, FRAME_STYLE } from './frame-style.js';
import { Paginator, sheetOf } from './paginate.js';
import { unlessAborted } from './stream.js';

const LARGE = 24; // pages, from which on those out of sight are not laid out
const KEPT_ADDRESSES = /^(https?|mailto|ftps?|sftp|tel|sms|news):/i;
const NARROW = 640; // pixels, as in documents
const SIDES = 48;
const EDGE = 12;
const POLL_MILLISECONDS = 150;

/** Adopts a style sheet where a policy of the host's page does not let a style element count. */
function adopt(document, css) {
  const sheet = new document.defaultView.CSSStyleSheet();
  sheet.replaceSync(css);
  document.adoptedStyleSheets = [...document.adoptedStyleSheets, sheet];
}

/** An empty frame in `stage`, when the browser has it ready. One that is no longer in a page never will be. */
function makeFrame(stage, title, signal) {
  const frame = document.createElement('iframe');
  frame.title = title;
  frame.setAttribute('part', 'document');
  // Without allow-scripts; allow-modals lets the host print it.
  frame.setAttribute('sandbox', 'allow-same-origin allow-popups allow-popups-to-escape-sandbox allow-modals');
  const ready = new Promise((resolve) => { frame.addEventListener('load', resolve, { once: true }); });
  stage.append(frame);
  return unlessAborted(ready, signal).then(() => frame, (reason) => {
    frame.remove();
    throw reason;
  });
}

export class DocumentFrame {
  /** `base`: where the document's relative links are from. `on`: { scroll, key, pointer, transfer }. */
  static async open(stage, { title, base, signal, on }) {
    const self = new DocumentFrame();
    self.base = base;
    self.on = on;
    self.frame = await makeFrame(stage, title, signal);
    self.#begin();
    return self;
  }

  get window() {
    return this.frame.contentWindow;
  }

  get document() {
    return this.frame.contentDocument;
  }

  get root() {
    return this.document.documentElement;
  }

  get main() {
    return this.document.querySelector('main') ?? this.document.body;
  }

  /** Elements, in the order of the document. */
  get pages() {
    return this.paginator?.pages ?? [];
  }

  #begin() {
    const { document: inner } = this;
    inner.open();
    // Pages that allow text as markup only where a policy has judged it: this is the policy.
    this.policy = this.window.trustedTypes?.createPolicy('pagerex', { createHTML: (text) => text });
    this.#put(`${FRAME_HEAD}<style data-viewer>${FRAME_STYLE}</style>`);
    this.counts = { a: 0, area: 0, style: 0 };
    this.#adoptStyles();
    this.#listen();
  }

  #put(text) {
    this.document.write(this.policy ? this.policy.createHTML(text) : text);
  }

  /** A piece of the page, which goes on where the one before it ended; or a part of one, which ends within a block. */
  write(piece, isWhole) {
    this.sheet ??= sheetOf(piece);
    this.#put(piece);
    this.#tidy(false, !isWhole);
    this.#moved();
  }

  end() {
    this.document.close();
    this.#tidy(true);
    this.hasComments = this.document.querySelector('.comments') !== null;
  }

  #tidy(isWhole, isWithinBlock) {
    this.#adoptStyles();
    for (const link of this.#added('a')) this.#judge(link);
    for (const link of this.#added('area')) this.#judge(link);
    if (!this.document.body) return;
    if (!this.paginator && this.document.querySelector('main')) this.#startPages();
    this.paginator?.absorb(isWhole, isWithinBlock);
    if (this.pages.length >= LARGE) this.root.classList.add('pagerex-large');
  }

  #startPages() {
    const { main } = this;
    main.tabIndex = -1;
    this.resized();
    this.paginator = new Paginator(main, this.sheet);
  }

  /** Tells its pages how far the sheet goes beyond the text: pages reach to its edges, which cut off what is beyond. */
  resized() {
    const { paddingInlineStart } = this.window.getComputedStyle(this.main);
    this.root.style.setProperty('--pagerex-in', paddingInlineStart);
    this.root.style.setProperty('--pagerex-out', `-${paddingInlineStart}`);
  }

  /** Elements of a name that have come since; they come in the order of the document. */
  #added(name) {
    const all = this.document.getElementsByTagName(name);
    const added = Array.prototype.slice.call(all, this.counts[name]);
    this.counts[name] = all.length;
    return added;
  }

  #adoptStyles() {
    for (const style of this.#added('style')) {
      if (!style.sheet) adopt(this.document, style.textContent);
    }
  }

  /** A link leads within the document, to a new window, or nowhere. */
  #judge(link) {
    const address = link.getAttribute('href');
    if (address === null) return;
    link.removeAttribute('ping');
    if (address.startsWith('#')) {
      link.target = '_self';
      return;
    }
    const whole = this.#resolve(address);
    if (KEPT_ADDRESSES.test(whole)) {
      link.href = whole;
      link.target = '_blank';
      link.rel = 'noopener noreferrer';
    } else {
      link.removeAttribute('href');
    }
  }

  #resolve(address) {
    try {
      return new URL(address, this.base).href;
    } catch {
      return '';
    }
  }

  // --- What happens in it ---

  /** Some engines call no listeners in a frame without scripts: there, its place is looked up now and then. */
  #listen() {
    const { window: inner, document: page } = this;
    let isHeard = false;
    page.addEventListener('pagerex', () => { isHeard = true; }, { once: true });
    page.dispatchEvent(new Event('pagerex'));
    if (isHeard) {
      inner.addEventListener('scroll', () => this.#moved(), { passive: true });
      page.addEventListener('keydown', (event) => this.on.key(event));
      page.addEventListener('pointerdown', () => this.on.pointer());
      for (const type of ['dragover', 'drop', 'paste']) page.addEventListener(type, (event) => this.on.transfer(event));
    } else {
      this.timer = setInterval(() => this.#look(), POLL_MILLISECONDS);
    }
  }

  #look() {
    const { scrollY } = this.window ?? {};
    if (document.hidden || scrollY === undefined || scrollY === this.lastSeen) return;
    this.lastSeen = scrollY;
    this.#moved();
  }

  /** Has what follows from its place told in the next picture. */
  #moved() {
    if (this.isAsked) return;
    this.isAsked = true;
    requestAnimationFrame(() => {
      this.isAsked = false;
      if (this.window) this.on.scroll();
    });
  }

  // --- Its pages, and how it looks ---

  /** How many of `elements`, which follow one another, begin above a third of the window. */
  countAbove(elements) {
    const line = this.window.innerHeight / 3;
    let [low, high] = [0, elements.length];
    while (low < high) {
      const middle = (low + high) >> 1;
      if (elements[middle].getBoundingClientRect().top <= line) low = middle + 1;
      else high = middle;
    }
    return low;
  }

  /** From 1 on; 0 where there is none yet. */
  get page() {
    const { scrollingElement: scroller } = this.document;
    if (scroller && scroller.scrollTop > 0
      && scroller.scrollTop + this.window.innerHeight >= scroller.scrollHeight - 2) return this.pages.length;
    return Math.min(Math.max(this.countAbove(this.pages), 1), this.pages.length);
  }

  showPage(number) {
    if (number > 1) {
      this.show(this.pages[number - 1]);
    } else {
      this.window.scrollTo(0, 0);
      this.#moved();
    }
  }

  /** At the window's top, or in the middle of it. The host's page does not move. */
  show(element, isCentred) {
    for (let round = 0; element && round < 3; round += 1) {
      const { top } = element.getBoundingClientRect();
      const wanted = isCentred ? this.window.innerHeight / 3 : EDGE;
      // What was an estimate until now has its height after the first round, and has moved what follows.
      if (Math.abs(top - wanted) > 1) this.window.scrollBy(0, top - wanted);
    }
    this.#moved();
  }

  set zoom(factor) {
    this.zoomed = factor;
    this.root.style.zoom = factor;
  }

  /** The factor at which a sheet is as wide as the window; on a narrow one, lines are broken anew instead. */
  get fitting() {
    const { maxWidth, paddingLeft, paddingRight } = this.window.getComputedStyle(this.main);
    const width = [maxWidth, paddingLeft, paddingRight].map(Number.parseFloat).reduce((sum, each) => sum + each);
    const room = this.frame.clientWidth;
    return room <= NARROW || !width ? 1 : (room - SIDES) / width;
  }

  /** By windows, -1 or 1. */
  scroll(direction) {
    this.window.scrollBy(0, direction * this.window.innerHeight * 0.9);
    this.#moved();
  }

  set title(text) {
    this.frame.title = text;
  }

  /** Whether it is still behind the document before it. */
  set isWaiting(isWaiting) {
    this.frame.classList.toggle('waiting', isWaiting);
  }

  showComments(isOn) {
    this.hidesComments = !isOn;
    this.mark('no-comments', !isOn);
  }

  mark(name, isOn) {
    this.root.classList.toggle(`pagerex-${name}`, isOn);
  }

  print() {
    this.window.focus();
    this.window.print();
  }

  /** What the reader has marked. */
  get selection() {
    const selection = this.document.getSelection();
    return selection && !selection.isCollapsed ? selection : undefined;
  }

  remove() {
    clearInterval(this.timer);
    this.frame.remove();
  }
}
