// What the tests ask a page with a viewer: window.probe.

import '/package/element/index.js';

const viewer = document.querySelector('pagerex-viewer');
for (const [name, value] of new URLSearchParams(location.search)) viewer.setAttribute(name, value);

const HEAD = `<!doctype html><html lang=en><head><meta charset=utf-8><title>Pieces</title><style>@layer pagerex{
main{margin:0 auto;max-width:415pt;padding:72pt 90pt}}</style></head><body><main>`;

const shadow = viewer.shadowRoot;
const events = [];
for (const type of ['load', 'page', 'progress', 'warning', 'error', 'cancel']) {
  viewer.addEventListener(type, ({ detail }) => events.push({ type, detail }));
}

async function until(holds, what = holds) {
  const end = performance.now() + 20_000;
  for (;;) {
    const value = await holds();
    if (value) return value;
    if (performance.now() > end) throw new Error(`never: ${what}`);
    await new Promise((resolve) => { setTimeout(resolve, 15); });
  }
}

/** A converter of the tests' own, which gives these pieces; after them, `then` is waited for. */
const converterOf = (pieces, then) => ({
  async* pages(input, { signal, onProgress }) {
    signal.addEventListener('abort', () => { window.ended = signal.reason.name; });
    for (const [index, content] of pieces.entries()) {
      onProgress((index + 1) / (pieces.length + 1));
      yield { number: index + 1, name: '', content };
    }
    await then?.();
    return { content: '', complete: true, warnings: [], summary: {} };
  },
});

window.probe = {
  viewer, shadow, events, until, converterOf, HEAD,
  button: (id) => shadow.querySelector(`[data-id=${id}]`),
  find: (selector) => shadow.querySelector(selector),
  get frame() { return shadow.querySelector('iframe:not(.waiting)'); },
  get inner() { return this.frame?.contentDocument; },
  text: (selector) => shadow.querySelector(selector)?.textContent.trim(),
  isSeen: (selector) => shadow.querySelector(selector)?.checkVisibility() ?? false,
  get focused() { return shadow.activeElement?.dataset.id ?? shadow.activeElement?.className; },
  ready: () => until(() => viewer.state === 'ready' || viewer.state === 'error', 'ready'),
  async sample() { return (await fetch('/samples/sample.doc')).blob(); },
  /** Shows pieces, the head of a page before them. */
  show: (...pieces) => {
    viewer.converter = converterOf([HEAD + pieces[0], ...pieces.slice(1)]);
    return viewer.load(new Blob(['x']));
  },
  /** Where an element is in the window, which a pointer can press. */
  place(element) {
    const own = element.getBoundingClientRect();
    const around = element.ownerDocument === document ? { left: 0, top: 0 } : this.frame.getBoundingClientRect();
    return [own.left + own.width / 2 + around.left, own.top + own.height / 2 + around.top];
  },
};
