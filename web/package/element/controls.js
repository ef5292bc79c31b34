// The tools around the document: what each does, what they show of its state, and the keys for them.

import { FindBar } from './find.js';
import { Outline } from './outline.js';
import { TOOLS, Toolbar } from './toolbar.js';
import { View } from './view.js';
import { Zoom } from './zoom.js';

const NEED_DOCUMENT = ['outline', 'previous', 'next', 'zoomOut', 'zoomIn', 'zoomReset', 'fit', 'search', 'comments',
  'changes', 'print', 'copy', 'download'];

export class Controls {
  /** `host`: the element, whose interface the tools use; `frame()`: that of the document, if there is one. */
  constructor(host, labels, frame) {
    Object.assign(this, { host, labels, frame });
    this.bar = new Toolbar(labels, (id, value) => this.#use(id, value));
    this.zoom = new Zoom(frame, () => this.update());
    this.outline = new Outline(labels, { frame, onChoose: (target) => this.#goTo(target),
      onClose: () => this.#closed('outline') });
    this.find = new FindBar(labels, { frame, tell: (text) => this.view.tell(text), onOpen: () => this.update(),
      onClose: () => this.#closed('search') });
    this.view = new View(host, labels, { bar: this.bar, outline: this.outline, find: this.find, on: {
      choose: (file) => host.load(file), cancel: () => host.cancel(), key: (event) => this.key(event) } });
    this.sizes = new ResizeObserver(() => {
      this.view.fit();
      this.zoom.resized();
      if (this.frame()?.main) this.frame().resized();
    });
  }

  connect() {
    this.sizes.observe(this.host);
    this.sizes.observe(this.view.stage);
  }

  disconnect() {
    this.sizes.disconnect();
  }

  // --- What they show ---

  update() {
    const { host, bar } = this;
    const frame = this.frame();
    const hidesComments = host.getAttribute('comments') === 'off';
    frame?.showComments(!hidesComments);
    const tools = host.getAttribute('tools')?.split(/\s+/) ?? TOOLS;
    bar.element.hidden = tools.includes('none');
    bar.update({
      page: host.page, pages: host.pageCount, percent: this.labels.percent(this.zoom.factor),
      on: this.#those({ outline: this.outline.isOpen, search: this.find.isOpen, comments: !hidesComments,
        changes: host.getAttribute('revisions') === 'all', fit: this.zoom.isFit }),
      off: new Set(frame ? [] : NEED_DOCUMENT),
      hidden: new Set(TOOLS.filter((tool) => !tools.includes(tool) || !this.#isOfUse(tool, frame))),
    });
  }

  #those(states) {
    return new Set(Object.keys(states).filter((id) => states[id]));
  }

  #isOfUse(tool, frame) {
    if (tool === 'comments') return frame?.hasComments ?? false;
    return tool !== 'zoom' || this.zoom.isThere;
  }

  /** The document has another page in sight. */
  moved() {
    this.outline.follow();
    this.update();
  }

  /** The document has changed. */
  grown() {
    this.outline.refresh();
    this.find.refresh();
    this.update();
  }

  // --- What they do ---

  #use(id, value) {
    const { host, zoom } = this;
    const uses = {
      page: () => { host.page = value; },
      previous: () => { host.page -= 1; },
      next: () => { host.page += 1; },
      zoomOut: () => zoom.step(-1),
      zoomIn: () => zoom.step(1),
      zoomReset: () => zoom.set(1),
      fit: () => zoom.set(zoom.isFit ? 1 : 'fit'),
      outline: () => this.#toggle(this.outline),
      search: () => this.#toggle(this.find),
      comments: () => this.#switch('comments', 'off', 'on'),
      changes: () => this.#switch('revisions', 'all', 'final'),
      open: () => this.view.choose(),
      print: () => host.print(),
      copy: () => host.copy(),
      download: () => host.download(value),
    };
    uses[id]();
  }

  #toggle(part) {
    if (part.isOpen) part.close();
    else part.open();
    this.update();
  }

  #switch(name, one, other) {
    this.host.setAttribute(name, this.host.getAttribute(name) === one ? other : one);
  }

  #goTo(target) {
    this.frame()?.show(target);
    if (this.view.isNarrow) this.outline.close();
  }

  #closed(tool) {
    this.update();
    this.bar.focus(tool);
  }

  closeMenus() {
    for (const menu of this.bar.menus) menu.close();
  }

  /** A key that was pressed in the viewer or in its document. */
  key(event) {
    if (event.defaultPrevented || !this.#isTaken(event)) return;
    event.preventDefault();
    event.stopPropagation();
  }

  #isTaken(event) {
    const { find, host } = this;
    const frame = this.frame();
    const command = (event.ctrlKey || event.metaKey) && !event.altKey ? event.key.toLowerCase() : '';
    if (event.key === 'Escape') return this.#escape();
    if (!frame) return false;
    if (command === 'f') find.open();
    else if (command === 'p') host.print();
    else if ((event.key === 'F3' || command === 'g') && find.isOpen) find.move(event.shiftKey ? -1 : 1);
    else if (event.view === window && /^Page(Up|Down)$/.test(event.key)) frame.scroll(event.key === 'PageUp' ? -1 : 1);
    else return false;
    return true;
  }

  #escape() {
    if (this.host.state === 'loading') this.host.cancel();
    else if (this.find.isOpen) this.find.close();
    else if (this.outline.isOpen) this.outline.close();
    else return false;
    return true;
  }
}
