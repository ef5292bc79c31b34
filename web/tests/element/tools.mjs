// What the tools on the bar do.

import assert from 'node:assert/strict';

export function define(test, context) {
  const ask = (...question) => context.engine.ask(...question);

  test('the zoom goes in steps, to the width of the window and back', async () => {
    await context.openSample();
    const seen = await ask(() => {
      const { viewer, button, inner, frame } = window.probe;
      const width = () => inner.querySelector('main').getBoundingClientRect().width;
      const told = [];
      const press = (id) => {
        button(id).click();
        told.push(`${button('zoomReset').textContent} ${button('fit').getAttribute('aria-pressed')}`);
      };
      press('zoomIn');
      press('zoomOut');
      press('zoomOut');
      press('zoomReset');
      viewer.zoom = 1.5;
      const zoom = inner.documentElement.style.zoom;
      press('fit');
      const fitted = viewer.zoom;
      press('fit');
      return { told, zoom, fitted, after: viewer.zoom, isShown: width() > 0, room: frame.clientWidth };
    });
    assert.deepEqual(seen.told.slice(0, 4), ['110% false', '100% false', '90% false', '100% false']);
    assert.equal(seen.zoom, '1.5');
    assert.ok(seen.fitted > 1.3 && seen.fitted < 2.5, `fitted: ${seen.fitted}`);
    assert.ok(seen.told[4].endsWith('true') && seen.told[5] === '100% false');
  });

  test('a search finds across runs, whatever case and accents, counts, and goes round', async () => {
    await context.open();
    const seen = await ask(async () => {
      const { viewer, show, text, button, until } = window.probe;
      await show('<p>Gr<b>ü</b>ße an die GRU\u0308SSE, gru<i>\u00df</i>e</p><p>ein<br>Wort und ein Wort</p><p>ﬁn 한글 a+b</p>');
      const counts = {};
      for (const query of ['grüße', 'GRUSSE', 'ein wort', 'a+b', '글', 'ßE an DIE', 'nirgends']) {
        counts[query] = await viewer.search(query);
      }
      await viewer.search('wort');
      const told = [text('.count')];
      for (const id of ['searchNext', 'searchNext', 'searchPrevious']) {
        button(id).click();
        told.push(text('.count'));
      }
      await viewer.search('nirgends');
      told.push(text('.count'), text('.live'));
      button('close').click();
      await until(() => !window.probe.isSeen('.find'));
      return { counts, told };
    });
    assert.deepEqual(seen.counts,
      { 'grüße': 2, 'GRUSSE': 1, 'ein wort': 2, 'a+b': 1, '글': 1, 'ßE an DIE': 1, nirgends: 0 });
    assert.deepEqual(seen.told, ['1 of 2', '2 of 2', '1 of 2', '2 of 2', 'No matches', 'No matches']);
  });

  test('what is found is highlighted, also where the browser has no highlights of its own', async () => {
    await context.open();
    const seen = await ask(async () => {
      const { viewer, show, button } = window.probe;
      await show('<p>one t<b>w</b>o one</p><p>one</p>');
      const { inner } = window.probe;
      const view = inner.defaultView;
      await viewer.search('one');
      const own = [view.CSS.highlights.get('pagerex-match').size, view.CSS.highlights.get('pagerex-current').size];
      button('close').click();
      const after = view.CSS.highlights.has('pagerex-match');
      view.Highlight = undefined;
      const before = inner.querySelector('main').innerHTML;
      await viewer.search('two one');
      const marks = [...inner.querySelectorAll('mark')].map(({ textContent, dataset }) => `${textContent} ${dataset.pagerex}`);
      await viewer.search('one');
      button('searchNext').click();
      const second = [...inner.querySelectorAll('mark')].map(({ dataset }) => dataset.pagerex);
      button('close').click();
      return { own, after, marks, second, isBack: inner.querySelector('main').innerHTML === before };
    });
    assert.deepEqual(seen.own, [3, 1]);
    assert.equal(seen.after, false);
    assert.deepEqual(seen.marks, ['t current', 'w current', 'o one current']);
    assert.deepEqual(seen.second, ['match', 'current', 'match']);
    assert.ok(seen.isBack);
  });

  test('a search leads to what is out of sight', async () => {
    await context.openSample();
    const seen = await ask(async () => {
      const { viewer, inner, until } = window.probe;
      const count = await viewer.search('Marked by hand');
      await until(() => inner.defaultView.scrollY > 0);
      const range = [...inner.defaultView.CSS.highlights.get('pagerex-current')][0];
      const { top } = range.startContainer.parentElement.getBoundingClientRect();
      return { count, isSeen: top > 0 && top < inner.defaultView.innerHeight };
    });
    assert.deepEqual(seen, { count: 1, isSeen: true });
  });

  test('comments and tracked changes come and go', async () => {
    await context.openSample();
    const seen = await ask(async () => {
      const { viewer, button, until } = window.probe;
      const isSeen = () => window.probe.inner.querySelector('.comment').checkVisibility();
      const states = [[isSeen(), button('comments').getAttribute('aria-pressed')]];
      button('comments').click();
      states.push([isSeen(), button('comments').getAttribute('aria-pressed')]);
      const hidden = await viewer.search('clear enough');
      button('comments').click();
      const shown = await viewer.search('clear enough');
      const changes = [window.probe.inner.querySelectorAll('ins,del').length];
      for (const isOn of [true, false]) {
        const before = window.probe.inner;
        button('changes').click();
        await until(() => window.probe.inner !== before && viewer.state === 'ready');
        changes.push(window.probe.inner.querySelectorAll('ins,del').length > 0 === isOn);
      }
      return { states, hidden, shown, changes };
    });
    assert.deepEqual(seen.states, [[true, 'true'], [false, 'false']]);
    assert.deepEqual([seen.hidden, seen.shown], [0, 1]);
    assert.deepEqual(seen.changes, [0, true, true]);
  });

  test('another state of the changes leaves the reader on his page', async () => {
    await context.openSample();
    const page = await ask(async () => {
      const { viewer, until, inner } = window.probe;
      viewer.page = 3;
      await until(() => viewer.page === 3);
      viewer.revisions = 'all';
      await until(() => window.probe.inner !== inner && viewer.state === 'ready');
      return until(() => viewer.page === 3 && viewer.page);
    });
    assert.equal(page, 3);
  });

  test('the document is printed, and not the page around it', async () => {
    await context.openSample();
    const seen = await ask(() => {
      const { button, inner } = window.probe;
      let [printed, around] = [0, 0];
      inner.defaultView.print = () => { printed += 1; };
      window.print = () => { around += 1; };
      button('print').click();
      return { printed, around, mayPrint: window.probe.frame.sandbox.contains('allow-modals') };
    });
    assert.deepEqual(seen, { printed: 1, around: 0, mayPrint: true });
  });

  test('the document is copied as text and as markup', async () => {
    await context.openSample();
    const seen = await ask(async () => {
      const { viewer, text } = window.probe;
      let items;
      Object.defineProperty(navigator, 'clipboard', { configurable: true, value: { write: async (given) => { items = given; } } });
      window.ClipboardItem = class { constructor(parts) { this.parts = parts; } };
      const isDone = await viewer.copy();
      const plain = await (await items[0].parts['text/plain']).text();
      const markup = await (await items[0].parts['text/html']).text();
      return { isDone, plain: plain.includes('A Sampler') && !plain.includes('</'), markup: markup.includes('<h1') && markup.includes('.Title'),
        told: text('.notice') };
    });
    assert.deepEqual(seen, { isDone: true, plain: true, markup: true, told: 'Copied' });
  });

  test('the document is downloaded in three formats', async () => {
    await context.openSample();
    const seen = await ask(async () => {
      const { button, find, until } = window.probe;
      const files = [];
      HTMLAnchorElement.prototype.click = function keep() {
        files.push(fetch(this.href).then(async (response) => [this.download, await response.text()]));
      };
      for (let index = 0; index < 3; index += 1) {
        button('download').click();
        find(`.menu:not([hidden]) .item:nth-child(${index + 1})`).click();
        await until(() => files.length === index + 1);
      }
      return Promise.all(files);
    });
    assert.deepEqual(seen.map(([name]) => name), ['sample.html', 'sample.md', 'sample.txt']);
    const [page, markdown, plain] = seen.map(([, content]) => content);
    assert.match(page, /^<!doctype html>[^]*<\/html>\s*$/);
    assert.match(markdown, /^#+ Characters$/m);
    assert.match(plain, /^A Sampler\n[^<]/);
  });
}
