// Where documents come from, and what is told where they are none.

import assert from 'node:assert/strict';

export function define(test, context) {
  const ask = (...question) => context.engine.ask(...question);

  test('a file is opened as a property, by drop, by paste and by choice', async () => {
    await context.open();
    const seen = await ask(async () => {
      const { viewer, sample, ready, find, isSeen, until } = window.probe;
      const file = new File([await sample()], 'letter.doc');
      const transfer = new DataTransfer();
      transfer.items.add(file);
      const pages = [isSeen('.card')];
      const opened = async () => {
        await until(() => viewer.state === 'loading');
        await ready();
        pages.push(viewer.pageCount > 3 && viewer.file.name === 'letter.doc');
        await viewer.load(new Blob(['nothing']));
      };
      viewer.file = file;
      await opened();
      const over = new DragEvent('dragenter', { bubbles: true, composed: true, dataTransfer: transfer });
      viewer.dispatchEvent(over);
      const offers = isSeen('.drop');
      viewer.dispatchEvent(new DragEvent('drop', { bubbles: true, composed: true, cancelable: true, dataTransfer: transfer }));
      await opened();
      const paste = new ClipboardEvent('paste', { bubbles: true, composed: true, cancelable: true });
      Object.defineProperty(paste, 'clipboardData', { value: transfer }); // not all engines take it above
      viewer.dispatchEvent(paste);
      await opened();
      const chooser = find('input[type=file]');
      chooser.files = transfer.files;
      chooser.dispatchEvent(new Event('change'));
      await opened();
      viewer.dispatchEvent(over); // and out of the window, which nobody tells
      const offersAgain = isSeen('.drop');
      return { pages, offers: offers && offersAgain, isGone: await until(() => !isSeen('.drop')) };
    });
    assert.deepEqual(seen, { pages: [true, true, true, true, true], offers: true, isGone: true });
  });

  test('a viewer that takes no files lets them pass', async () => {
    await context.open({ nodrop: '' });
    const isKept = await ask(() => {
      const transfer = new DataTransfer();
      transfer.items.add(new File(['x'], 'letter.doc'));
      const drop = new DragEvent('drop', { bubbles: true, cancelable: true, dataTransfer: transfer });
      window.probe.viewer.dispatchEvent(drop);
      return drop.defaultPrevented || window.probe.viewer.state !== 'empty';
    });
    assert.equal(isKept, false);
  });

  test('what is no document is told in a sentence', async () => {
    for (const [name, sentence] of [['paper.pdf', /PDF/], ['empty.doc', /empty|no bytes/i], ['missing.doc', /404/]]) {
      await context.open({ src: `/documents/${name}` });
      const seen = await ask(async () => {
        await window.probe.ready();
        const { viewer, text, events, isSeen, find } = window.probe;
        return { state: viewer.state, told: text('[part=error-sentence]'), role: find('.card[role]').getAttribute('role'),
          error: events.at(-1), isSeen: isSeen('[part=error]'), frames: window.probe.shadow.querySelectorAll('iframe').length };
      });
      assert.equal(seen.state, 'error');
      assert.match(seen.told, sentence);
      assert.equal(seen.error.type, 'error');
      assert.equal(seen.error.detail.sentence, seen.told);
      assert.deepEqual([seen.role, seen.isSeen, seen.frames], ['alert', true, 0]);
    }
  });

  test('of a damaged document what can be read is shown, and that it is not whole', async () => {
    await context.open({ src: '/documents/short.doc' });
    const seen = await ask(async () => {
      await window.probe.ready();
      const { viewer, text, isSeen, events } = window.probe;
      return { state: viewer.state, told: `${text('.notice')}${text('[part=error-sentence]')}`, types: events.map(({ type }) => type),
        isTold: isSeen('.notice') || isSeen('[part=error]') };
    });
    assert.ok(seen.isTold && seen.told.length > 20, seen.told);
    assert.ok(seen.types.includes('warning') || seen.types.includes('error'));
  });

  test('a conversion that breaks off leaves the pages that it has made', async () => {
    await context.open();
    const seen = await ask(async () => {
      const { viewer, converterOf, HEAD, text } = window.probe;
      const broken = Object.assign(new Error('The file ends too early.'), { code: 'damaged' });
      viewer.converter = converterOf([`${HEAD}<p>What there is</p>`], () => Promise.reject(broken));
      await viewer.load(new Blob(['x']));
      return { state: viewer.state, told: text('.notice'), kept: window.probe.inner.querySelector('p').textContent };
    });
    assert.deepEqual(seen, { state: 'ready', kept: 'What there is',
      told: 'Parts of this document could not be read. The file ends too early.' });
  });

  test('Escape ends a conversion, and so do a button, another document and going away', async () => {
    await context.open();
    const wait = () => ask(async () => {
      const { viewer, converterOf, HEAD, until } = window.probe;
      window.ended = undefined;
      const old = window.probe.inner;
      viewer.converter = converterOf([`${HEAD}<p>The first</p><p>x</p>`], () => new Promise(() => {}));
      viewer.load(new Blob(['x']));
      await until(() => window.probe.inner !== old && window.probe.inner?.querySelector('p'));
      window.probe.button('cancel').focus();
    });
    await wait();
    await context.engine.press('Escape');
    const seen = await ask(async () => {
      const { viewer, until, text } = window.probe;
      await until(() => window.ended);
      await until(() => viewer.state === 'ready');
      return { ended: window.ended, told: text('.notice'), kept: window.probe.inner.querySelector('p').textContent,
        type: window.probe.events.at(-1).type };
    });
    assert.deepEqual(seen, { ended: 'AbortError', told: 'Opening was canceled.', kept: 'The first', type: 'cancel' });
    for (const end of [() => window.probe.button('cancel').click(), () => { window.probe.viewer.src = '/documents/paper.pdf'; },
      () => window.probe.viewer.remove()]) {
      await wait();
      await ask(end);
      assert.equal(await ask(() => window.probe.until(() => window.ended)), 'AbortError');
    }
    assert.equal(await ask(() => window.probe.shadow.querySelectorAll('iframe').length), 0);
  });

  test('a viewer that comes back has its document again', async () => {
    await context.openSample();
    const pages = await ask(async () => {
      const { viewer, ready } = window.probe;
      const parent = viewer.parentNode;
      viewer.remove();
      parent.append(viewer);
      await ready();
      return viewer.pageCount;
    });
    assert.ok(pages > 3);
  });

  test('nothing is asked for but files of the package, and nothing at all for the second document', async () => {
    const { requests } = context.server;
    requests.length = 0;
    await context.openSample();
    const others = requests.filter((path) => !/^\/(package|pages)\//.test(path));
    assert.deepEqual(others, ['/samples/sample.doc']);
    await ask(async () => { window.kept = await window.probe.sample(); });
    requests.length = 0;
    await ask(() => window.probe.viewer.load(window.kept));
    assert.deepEqual(requests, []);
    for (const address of context.engine.requests ?? []) {
      assert.ok(/^(blob|data):/.test(address) || address.startsWith(context.server.root), address);
    }
  });
}
