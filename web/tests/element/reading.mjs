// A document comes into view, page by page, and is read.

import assert from 'node:assert/strict';

export function define(test, context) {
  const ask = (...question) => context.engine.ask(...question);

  test('a document is shown as it looks, and its events are told', async () => {
    await context.openSample();
    const seen = await ask(() => {
      const { viewer, inner, events } = window.probe;
      const heading = inner.querySelector('h1');
      return { state: viewer.state, pages: viewer.pageCount, heading: heading.textContent,
        colour: inner.defaultView.getComputedStyle(heading).color, title: window.probe.frame.title,
        types: events.map(({ type }) => type), load: events.find(({ type }) => type === 'load').detail.pages };
    });
    assert.equal(seen.state, 'ready');
    assert.equal(seen.heading, 'Characters');
    assert.equal(seen.colour, 'rgb(31, 78, 121)');
    assert.equal(seen.title, 'A Sampler');
    assert.ok(seen.pages >= 4, `pages: ${seen.pages}`);
    assert.equal(seen.load, seen.pages);
    assert.ok(seen.types.includes('progress') && seen.types.includes('page'));
    assert.equal(seen.types.at(-1), 'load');
  });

  test('the first page is there while the rest is being made', async () => {
    await context.open();
    const seen = await ask(async () => {
      const { viewer, until, converterOf, HEAD, isSeen } = window.probe;
      let release;
      const gate = new Promise((resolve) => { release = resolve; });
      viewer.converter = converterOf([`${HEAD}<p>The first</p><p>and more</p>`], () => gate);
      const loading = viewer.load(new Blob(['x']));
      await until(() => window.probe.inner?.querySelector('p'));
      const early = { state: viewer.state, first: window.probe.inner.querySelector('p').textContent,
        progress: isSeen('[role=progressbar]') };
      release();
      await loading;
      return { early, state: viewer.state, progress: isSeen('[role=progressbar]') };
    });
    assert.deepEqual(seen.early, { state: 'loading', first: 'The first', progress: true });
    assert.deepEqual([seen.state, seen.progress], ['ready', false]);
  });

  test('a long table is there from its first rows on, and whole in the end', async () => {
    await context.open();
    const seen = await ask(async () => {
      const { viewer } = window.probe;
      const row = (number) => `<tr><td><p>row ${number}</p>\n</td><td><p>a short remark</p>\n</td></tr>\n`;
      const rows = Array.from({ length: 4000 }, (_, number) => row(number)).join('');
      const small = `<div class=x><table><tbody>${row('a').repeat(3)}</tbody></table></div>\n`;
      const early = new Promise((resolve) => {
        viewer.addEventListener('page', () => resolve(window.probe.inner.querySelectorAll('tr').length), { once: true });
      });
      await window.probe.show(`<p>before</p>\n${small}<div class=x><table><tbody>${rows}</tbody></table></div>\n<p>behind</p>\n`);
      const { inner } = window.probe;
      const tables = [...inner.querySelectorAll('table')];
      return { early: await early, tables: tables.map((table) => table.rows.length), pages: viewer.pageCount,
        first: inner.querySelector('.pagerex-page').textContent.slice(0, 6), found: await viewer.search('row 3999'),
        last: [...inner.querySelectorAll('.pagerex-page')].at(-1).textContent.trim() };
    });
    assert.ok(seen.early > 3 && seen.early < 2000, `rows at first: ${seen.early}`);
    assert.deepEqual(seen.tables, [3, 4000]);
    assert.deepEqual([seen.pages, seen.first, seen.last, seen.found], [3, 'before', 'behind', 1]);
  });

  test('pages are turned by buttons, by number and by the host', async () => {
    await context.openSample();
    const seen = await ask(async () => {
      const { viewer, button, find, until } = window.probe;
      const pages = [];
      const turn = async (go, page) => {
        go();
        pages.push(await until(() => viewer.page === page && viewer.page, `page ${page}, is ${viewer.page}`));
      };
      await turn(() => button('next').click(), 2);
      await turn(() => button('previous').click(), 1);
      await turn(() => {
        find('.field').value = '3';
        find('.field').dispatchEvent(new Event('change'));
      }, 3);
      await turn(() => { viewer.page = 2; }, 2);
      await turn(() => { viewer.page = 999; }, viewer.pageCount);
      await until(() => find('.field').value === String(viewer.pageCount));
      return { pages, total: viewer.pageCount, told: find('.total').textContent };
    });
    assert.deepEqual(seen.pages, [2, 1, 3, 2, seen.total]);
    assert.equal(seen.told, `of ${seen.total}`);
  });

  test('scrolling by hand tells the page', async () => {
    await context.openSample();
    const page = await ask(async () => {
      const { viewer, inner, until } = window.probe;
      inner.defaultView.scrollTo(0, inner.documentElement.scrollHeight);
      return until(() => viewer.page === viewer.pageCount && viewer.page);
    });
    assert.ok(page > 1);
  });

  test('a document of a thousand pages is there soon, and its pages out of sight are not laid out', async () => {
    await context.open();
    const pages = await ask(async () => {
      const { viewer, converterOf, sample } = window.probe;
      const { convert } = await import('/package/index.js');
      const { content } = await convert(await sample());
      const text = content.slice(content.indexOf('<h1'), content.lastIndexOf('<h1', content.indexOf('>Scripts</h1>')));
      viewer.converter = converterOf([content.slice(0, content.indexOf('<h1')), ...Array(210).fill(text.repeat(8)), '</main>']);
      await viewer.load(new Blob(['x']));
      return viewer.pageCount;
    });
    assert.ok(pages >= 900, `pages: ${pages}`);
    const seen = await ask(async (wanted) => {
      const { viewer, inner, until } = window.probe;
      viewer.page = wanted;
      await until(() => viewer.page === wanted, 'the middle');
      const part = inner.querySelector('.pagerex-page');
      return { way: inner.defaultView.getComputedStyle(part).contentVisibility, found: await viewer.search('small capitals, capitals') };
    }, Math.floor(pages / 2));
    assert.deepEqual(seen, { way: 'auto', found: 1680 });
  });

  test('the outline leads to headings and bookmarks', async () => {
    await context.openSample();
    const seen = await ask(async () => {
      const { viewer, button, shadow, until, inner } = window.probe;
      button('outline').click();
      const rows = await until(() => {
        const all = [...shadow.querySelectorAll('[role=treeitem]')];
        return all.length > 0 && all;
      });
      const row = rows.find(({ textContent }) => textContent === 'A heading of the third level');
      row.click();
      const heading = [...inner.querySelectorAll('h3')].find(({ textContent }) => textContent === row.textContent);
      const { top } = heading.getBoundingClientRect();
      const isSeen = top >= 0 && top < inner.defaultView.innerHeight;
      await until(() => viewer.page > 1);
      const bookmark = rows.find(({ textContent }) => textContent === 'Place');
      bookmark.click();
      const place = inner.getElementById('Place').getBoundingClientRect().top;
      return { level: row.getAttribute('aria-level'), isSeen, place: place >= 0 && place < inner.defaultView.innerHeight,
        current: (await until(() => shadow.querySelector('[aria-current=true]'))).textContent, names: rows.map((each) => each.textContent) };
    });
    assert.equal(seen.level, '3');
    assert.ok(seen.isSeen && seen.place);
    assert.ok(seen.names.includes('Bookmarks') && !seen.names.some((each) => each.startsWith('_')));
  });

  test('links lead within the document, or to a new window', async () => {
    await context.openSample();
    const seen = await ask(() => {
      const { inner } = window.probe;
      const link = inner.querySelector('a[href="#footnote-1"]');
      return { target: link.target, place: window.probe.place(link), y: inner.defaultView.scrollY, top: location.href,
        outer: [...inner.querySelectorAll('a[href^=http]')].map(({ target, rel }) => `${target} ${rel}`) };
    });
    assert.equal(seen.target, '_self');
    assert.ok(seen.outer.length > 0 && seen.outer.every((each) => each === '_blank noopener noreferrer'));
    await ask(() => {
      const { inner } = window.probe;
      inner.querySelector('a[href="#footnote-1"]').scrollIntoView({ block: 'center' });
    });
    await context.engine.click(...await ask(() => window.probe.place(window.probe.inner.querySelector('a[href="#footnote-1"]'))));
    const place = await ask(async () => {
      const { inner, until } = window.probe;
      const note = inner.getElementById('footnote-1');
      await until(() => note.getBoundingClientRect().top < inner.defaultView.innerHeight, 'the footnote in sight');
      return { isThere: note.isConnected && inner.querySelector('main') !== null, top: location.href };
    });
    assert.deepEqual(place, { isThere: true, top: seen.top });
  });
}
