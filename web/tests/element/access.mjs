// For everyone: by keys alone, by screen readers, in the dark, in one's own language, on a phone.

import assert from 'node:assert/strict';

const NARROW = { Chromium: 390, Firefox: 390, WebKit: 450 }; // as narrow as a window of the engine can be

export function define(test, context) {
  const ask = (...question) => context.engine.ask(...question);
  const press = (...keys) => context.engine.press(...keys);
  const focused = () => ask(() => window.probe.focused);

  test('all tools are reached and used by keys', async () => {
    await context.openSample();
    await ask(() => window.probe.button('outline').focus());
    for (const key of ['ArrowRight', 'ArrowRight', 'ArrowRight']) await press(key);
    assert.equal(await focused(), 'next');
    await press(' ');
    await ask(() => window.probe.until(() => window.probe.viewer.page === 2));
    await press('End');
    assert.equal(await focused(), 'download');
    await press('ArrowRight');
    assert.equal(await focused(), 'outline');
    await press(' ');
    await ask(() => window.probe.until(() => window.probe.focused === 'row'));
    await press('ArrowDown');
    await press('Enter');
    await press('Escape');
    assert.deepEqual(await ask(() => [window.probe.focused, window.probe.isSeen('nav')]), ['outline', false]);
    const stops = await ask(() => [...window.probe.find('.bar').querySelectorAll('button,input')].filter(({ tabIndex }) => tabIndex === 0).length);
    assert.equal(stops, 1);
  });

  test('a menu opens, moves and closes by keys', async () => {
    await context.openSample();
    await ask(() => window.probe.button('download').focus());
    await press('ArrowDown');
    await press('ArrowDown');
    const item = () => ask(() => window.probe.shadow.activeElement.textContent);
    assert.equal(await item(), 'Download: Markdown');
    await press('Escape');
    assert.deepEqual(await ask(() => [window.probe.focused, window.probe.isSeen('.menu')]), ['download', false]);
  });

  test('keys search, go on and close', async () => {
    await context.openSample();
    await ask(() => window.probe.button('outline').focus());
    await press('Control', 'f');
    assert.equal(await focused(), 'query');
    await context.engine.type('page');
    const count = await ask(() => window.probe.until(() => /^1 of \d+$/.test(window.probe.text('.count')) && window.probe.text('.count')));
    await press('Enter');
    assert.equal(await ask(() => window.probe.text('.count')), count.replace('1', '2'));
    assert.equal(await ask(() => window.probe.text('[role=status].live')), count.replace('1', '2'));
    await press('Shift', 'Enter');
    assert.equal(await ask(() => window.probe.text('.count')), count);
    await press('Escape');
    assert.deepEqual(await ask(() => [window.probe.focused, window.probe.isSeen('.find')]), ['search', false]);
  });

  test('page keys turn the document while the tools have the focus', async () => {
    await context.openSample();
    await ask(() => window.probe.button('outline').focus());
    await press('PageDown');
    assert.ok(await ask(() => window.probe.until(() => window.probe.inner.defaultView.scrollY)) > 100);
    await press('PageUp');
    await ask(() => window.probe.until(() => window.probe.inner.defaultView.scrollY === 0));
  });

  for (const theme of ['light', 'dark']) {
    test(`no rule of accessibility is broken, ${theme}`, async () => {
      await context.open({ theme });
      await ask(() => new Promise((resolve, reject) => {
        const script = document.createElement('script');
        Object.assign(script, { src: '/modules/axe-core/axe.min.js', onload: resolve, onerror: reject });
        document.head.append(script);
      }));
      const broken = () => ask(async () => {
        const { violations } = await window.axe.run(document, { iframes: false });
        return violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html.slice(0, 120)).join(' | ')}`);
      });
      assert.deepEqual(await broken(), []);
      await ask(() => window.probe.viewer.load('/samples/sample.doc'));
      await ask(async () => {
        const { viewer, button, until, shadow } = window.probe;
        button('outline').click();
        await viewer.search('page');
        await until(() => shadow.querySelector('[role=treeitem]'));
        button('download').click();
      });
      assert.deepEqual(await broken(), []);
      await ask(() => window.probe.viewer.load('/documents/paper.pdf'));
      assert.deepEqual(await broken(), []);
    });
  }

  test('it is dark where its reader wants it', async () => {
    const colours = async (theme) => {
      await context.openSample({ theme });
      return ask(() => {
        const { find, frame, inner } = window.probe;
        return [window.getComputedStyle(find('.bar')).backgroundColor !== 'rgb(255, 255, 255)',
          window.getComputedStyle(frame).filter !== 'none', inner.documentElement.classList.contains('pagerex-dark'),
          window.getComputedStyle(find('.viewer')).backgroundColor !== 'rgb(255, 255, 255)'];
      });
    };
    assert.deepEqual((await colours('dark')).slice(1), [true, true, true]);
    assert.deepEqual((await colours('light')).slice(1), [false, false, false]);
    const auto = await colours('auto');
    assert.equal(auto[1], await ask(() => matchMedia('(prefers-color-scheme: dark)').matches));
  });

  test('it speaks the language of the page around it, and what the host says', async () => {
    await context.open({ lang: 'de-AT' });
    const seen = await ask(() => {
      const { viewer, button, text } = window.probe;
      const said = () => button('search').getAttribute('aria-label');
      const all = [said()];
      viewer.removeAttribute('lang');
      document.documentElement.lang = 'fr';
      viewer.lang = '';
      viewer.messages = {};
      all.push(said());
      viewer.lang = 'zh-Hans-CN';
      all.push(said());
      viewer.constructor.addMessages('it', { search: 'Cerca' });
      viewer.lang = 'it';
      all.push(said(), button('print').title);
      viewer.messages = { search: 'Suchen & finden' };
      all.push(said());
      viewer.messages = undefined;
      viewer.lang = 'es';
      return [...all, said(), text('.action')];
    });
    assert.deepEqual(seen, ['Suchen', 'Rechercher', '搜索', 'Cerca', 'Print', 'Suchen & finden', 'Buscar', 'Abrir un archivo']);
  });

  test('on a phone, what does not fit is in a menu, and all can be touched', async () => {
    const width = NARROW[context.name];
    await context.engine.size(width, 800, { touch: true });
    try {
      await context.openSample();
      const seen = await ask(async () => {
        const { button, find, shadow, until, viewer, isSeen } = window.probe;
        await until(() => isSeen('[data-id=more]'));
        const bar = find('.bar');
        const targets = [...bar.querySelectorAll('button,input')].filter((each) => each.checkVisibility()).map((each) => {
          const { width: wide, height } = each.getBoundingClientRect();
          return Math.min(wide, height);
        });
        button('more').click();
        const items = [...shadow.querySelectorAll('.menu:not([hidden]) .item'), ...bar.querySelectorAll('button:not([hidden])')]
          .map((each) => each.textContent || each.title);
        const menu = find('.menu:not([hidden])').getBoundingClientRect();
        find('.menu:not([hidden]) .item').click();
        return { fits: bar.scrollWidth <= bar.clientWidth, least: Math.min(...targets), items, zoom: viewer.zoom,
          inside: menu.left >= 0 && menu.right <= innerWidth, page: document.documentElement.scrollWidth <= innerWidth,
          text: window.probe.inner.documentElement.scrollWidth <= window.probe.frame.clientWidth, coarse: matchMedia('(pointer:coarse)').matches };
      });
      assert.ok(seen.fits && seen.inside && seen.page && seen.text, JSON.stringify(seen));
      assert.ok(seen.least >= (seen.coarse ? 34 : 24), `targets: ${seen.least}`);
      for (const item of ['Zoom in', 'Print', 'Copy']) assert.ok(seen.items.includes(item), seen.items.join());
    } finally {
      await context.engine.size(1200, 800);
    }
  });
}
