// <pagerex-viewer>: shows a Word document, with what a reader needs around it.

import { Controls } from './controls.js';
import { Labels } from './dom.js';
import { Intake, nameOf } from './input.js';
import { addMessages, languageOf, speaker } from './messages.js';
import { copy, fileOf, save } from './output.js';
import { Reader } from './reader.js';

const core = () => import('../index.js');

/** Attributes that are properties of the same name. */
const REFLECTED = ['src', 'name', 'theme', 'comments', 'revisions', 'tools'];

export class PagerexViewer extends HTMLElement {
  static observedAttributes = [...REFLECTED, 'lang', 'zoom'];

  /** Adds a language, or changes texts of one. */
  static addMessages = addMessages;

  /** More options of a conversion: hiddenText, limits and so on. */
  options = {};

  /** What converts in place of the package: { pages, convert }. */
  converter;

  #labels = new Labels(speaker('en'));
  #controls = new Controls(this, this.#labels, () => this.#reader?.frame);
  #reader = new Reader(this, this.#labels, this.#controls, {
    key: (event) => this.#controls.key(event),
    pointer: () => this.#controls.closeMenus(),
    transfer: (event) => this.#intake.handleEvent(event),
  });
  #intake = new Intake(this, {
    isWanted: () => !this.hasAttribute('nodrop'),
    onDrag: (isDragged, isOver) => this.#controls.view.dragged(isDragged, isOver),
    onFile: (file) => this.load(file),
  });
  #scheme = matchMedia('(prefers-color-scheme: dark)');
  #messages;

  // --- Its life ---

  connectedCallback() {
    this.#intake.connect();
    this.#controls.connect();
    this.#scheme.addEventListener('change', this.dress);
    this.dress();
    this.#speak();
    this.#controls.view.show(this.#reader.state);
    this.#controls.zoom.set(this.getAttribute('zoom'));
    if (this.#reader.job) this.#reader.open(this.#reader.job);
    else this.#openSource();
  }

  disconnectedCallback() {
    this.#intake.disconnect();
    this.#controls.disconnect();
    this.#scheme.removeEventListener('change', this.dress);
    this.#reader.leave();
  }

  attributeChangedCallback(name, before, value) {
    if (!this.isConnected || before === value) return;
    if (name === 'src') this.#openSource();
    else if (name === 'theme') this.dress();
    else if (name === 'lang') this.#speak();
    else if (name === 'zoom') this.#controls.zoom.set(value);
    else if (name === 'revisions') this.#reader.again();
    this.#controls.update();
  }

  #openSource() {
    if (this.hasAttribute('src')) this.load(this.getAttribute('src'));
  }

  #speak() {
    this.#labels.refresh(speaker(languageOf(this), this.#messages));
    this.#controls.update();
  }

  /** @internal The colours of its theme, or of the reader's screen. */
  dress = () => {
    const isDark = this.theme === 'dark' || (this.theme !== 'light' && this.#scheme.matches);
    this.#controls.view.root.classList.toggle('dark', isDark);
    this.#reader.frame?.mark('dark', isDark);
  };

  /** @internal */
  async core() {
    return this.converter ?? core();
  }

  /** @internal */
  get convertOptions() {
    return { ...this.options, revisions: this.revisions || 'final' };
  }

  // --- A document ---

  /** Shows a document: an address, a File or anything else that convert() takes. Resolves with its Result. */
  load(source, { name } = {}) {
    const isAddress = typeof source === 'string' || source instanceof URL;
    const base = isAddress ? new URL(source, document.baseURI).href : undefined;
    const job = { source, base, name: name ?? (this.name || nameOf(source)) };
    if (this.isConnected) return this.#reader.open(job);
    this.#reader.job = job;
    return Promise.resolve(undefined);
  }

  cancel() {
    this.#reader.cancel();
  }

  get state() {
    return this.#reader.state;
  }

  /** The bytes of what is shown; set, it shows them. */
  get file() {
    return this.#reader.job?.input;
  }

  set file(value) {
    if (value) this.load(value);
  }

  // --- Its reading ---

  get page() {
    return this.#reader.page;
  }

  set page(number) {
    this.#reader.frame?.showPage(Math.min(Math.max(Math.trunc(number) || 1, 1), this.pageCount));
  }

  get pageCount() {
    return this.#reader.frame?.pages.length ?? 0;
  }

  /** A factor; 'fit' may be set. */
  get zoom() {
    return this.#controls.zoom.factor;
  }

  set zoom(value) {
    this.#controls.zoom.set(value);
  }

  /** Searches, and leads to what is found. Resolves with the count of it. */
  search(query) {
    return this.#controls.find.ask(query);
  }

  get messages() {
    return this.#messages;
  }

  /** Texts of this viewer alone. */
  set messages(table) {
    this.#messages = table;
    this.#speak();
  }

  // --- What a reader takes along ---

  print() {
    this.#reader.frame?.print();
  }

  /** What is marked, or else the whole document. Resolves with whether it was allowed. */
  async copy() {
    const { frame, job } = this.#reader;
    if (!frame) return false;
    const text = async () => (await (await this.core()).convert(job.input, { ...this.convertOptions, format: 'text' })).content;
    const isDone = await copy(frame, text).then(() => true, () => false);
    this.#controls.view.notice(this.#labels.say(isDone ? 'copied' : 'copyFailed'));
    return isDone;
  }

  /** As 'html', 'markdown' or 'text'. */
  async download(format = 'html') {
    const { job } = this.#reader;
    if (job?.input) save(await fileOf(await this.core(), job.input, format, job.name, this.convertOptions));
  }
}

for (const name of REFLECTED) {
  Object.defineProperty(PagerexViewer.prototype, name, {
    configurable: true,
    enumerable: true,
    get() {
      return this.getAttribute(name) ?? '';
    },
    set(value) {
      if (value === null || value === undefined) this.removeAttribute(name);
      else this.setAttribute(name, value);
    },
  });
}
