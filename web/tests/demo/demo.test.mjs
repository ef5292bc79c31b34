// The demo as it is served, in Chromium: documents, no network but its own, and then none at all.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { createServer } from 'node:http';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { start } from '../element/engines.mjs';
import { serve } from '../../tools/serve.mjs';

const root = fileURLToPath(new URL('../../../', import.meta.url));
const axe = readFileSync(fileURLToPath(new URL('../../../build/npm/node_modules/axe-core/axe.min.js', import.meta.url)), 'utf8');

/** Runs in the page. */
const heading = () =>
  document.querySelector('pagerex-viewer').shadowRoot.querySelector('iframe').contentDocument.querySelector('h1').textContent;

describe('The demo', () => {
  let engine;
  let server;
  const folder = join(root, 'build/demo');
  before(async () => {
    execFileSync(process.execPath, [join(root, 'web/tools/make-demo.mjs')], { stdio: 'inherit' });
    server = await serve(folder);
    engine = await start('Chromium');
    await engine.size(1200, 800);
  });
  after(async () => {
    await engine?.close();
    await server?.close();
  });

  const state = (wanted) =>
    engine.page.waitForFunction((name) => document.querySelector('pagerex-viewer').state === name, {}, wanted);
  const click = (selector) => engine.ask((name) => document.querySelector(name).click(), selector);

  async function openSample() {
    await engine.open(server.address);
    await click('#sample');
    await state('ready');
  }

  test('the sample is shown, and its pages are told', async () => {
    await openSample();
    assert.equal(await engine.ask(heading), 'Characters');
    assert.match(await engine.ask(() => document.querySelector('.told').textContent), /^sample\.doc · \d+ pages · \d+ ms$/);
    assert.equal(await engine.ask(() => document.title), 'A Sampler');
  });

  test('a document is shown that is dropped, on the viewer or beside it', async () => {
    for (const place of ['pagerex-viewer', 'header']) {
      await engine.open(server.address);
      await engine.ask(drop, place, 'letter.doc');
      await state('ready');
      assert.equal(await engine.ask(heading), 'Characters');
      assert.match(await engine.ask(() => document.querySelector('.told').textContent), /^letter\.doc/);
    }
  });

  async function drop(place, name) {
    const bytes = await (await fetch('samples/sample.doc')).arrayBuffer();
    const dataTransfer = new DataTransfer();
    dataTransfer.items.add(new File([bytes], name));
    const target = document.querySelector(place);
    for (const type of ['dragenter', 'dragover', 'drop'])
      target.dispatchEvent(new DragEvent(type, { dataTransfer, bubbles: true, cancelable: true, composed: true }));
  }

  test('a document is shown that is chosen, and one that is none is told', async () => {
    await engine.open(server.address);
    const chooser = await engine.page.$('#chooser');
    await chooser.uploadFile(join(folder, 'demo.css'));
    await state('error');
    await chooser.uploadFile(join(folder, 'samples/sample.doc'));
    await state('ready');
    assert.equal(await engine.ask(heading), 'Characters');
  });

  test('a document is shown as Markdown, text and HTML too', async () => {
    await openSample();
    const starts = { markdown: /^# Characters$/m, text: /^Characters$/m, html: /^<!doctype html>/i };
    for (const [format, pattern] of Object.entries(starts)) {
      await click(`[data-format=${format}]`);
      await engine.page.waitForFunction((source) => new RegExp(source.text, source.flags).test(document.querySelector('pre').textContent),
        { timeout: 10_000 }, { text: pattern.source, flags: pattern.flags });
    }
    await click('[data-format=page]');
    assert.ok(await engine.ask(() => document.querySelector('.source').hidden));
  });

  test('nothing is asked of any other place, and nothing can be', async () => {
    await openSample();
    const foreign = engine.requests.filter((address) => !address.startsWith(server.address) && !address.startsWith('data:'));
    assert.deepEqual(foreign, []);
    const asked = [];
    const other = createServer((request, response) => {
      asked.push(request.url);
      response.end();
    });
    await new Promise((resolve) => other.listen(0, '127.0.0.1', resolve));
    const answer = await engine.ask((address) => fetch(address, { mode: 'no-cors' }).then(() => 'sent', () => 'refused'),
      `http://127.0.0.1:${other.address().port}/`);
    other.close();
    assert.equal(answer, 'refused');
    assert.deepEqual(asked, []);
  });

  test('it can be installed, and opens documents then', async () => {
    await engine.open(server.address);
    await engine.ask(() => navigator.serviceWorker.ready.then(() => true));
    const devtools = await engine.page.createCDPSession();
    const { url, errors, data } = await devtools.send('Page.getAppManifest');
    assert.equal(url, `${server.address}manifest.webmanifest`);
    assert.deepEqual(errors, []);
    const { installabilityErrors } = await devtools.send('Page.getInstallabilityErrors');
    assert.deepEqual(installabilityErrors.filter(({ errorId }) => errorId !== 'in-incognito'), []);
    const { icons, file_handlers: handlers } = JSON.parse(data);
    for (const { src, sizes, type } of icons) await assertPicture(src, sizes, type);
    assert.deepEqual(handlers[0].accept['application/msword'], ['.doc', '.dot']);
  });

  async function assertPicture(src, sizes, type) {
    const seen = await engine.ask(async (address) => {
      const image = new Image();
      image.src = address;
      await image.decode();
      return { size: `${image.naturalWidth}x${image.naturalHeight}`, type: (await fetch(address)).headers.get('content-type') };
    }, src);
    assert.equal(seen.type, type);
    if (sizes !== 'any') assert.equal(seen.size, sizes);
  }

  for (const scheme of ['light', 'dark'])
    test(`it is accessible, ${scheme}, wide and narrow`, async () => {
      await engine.scheme(scheme);
      for (const width of [1200, 390]) {
        await engine.size(width, 800);
        await engine.open(server.address);
        await assertAccessible(`${width}, empty`);
        await click('#sample');
        await state('ready');
        await assertAccessible(`${width}, with a document`);
        await click('[data-format=markdown]');
        await engine.page.waitForFunction(() => document.querySelector('pre').textContent !== '');
        await assertAccessible(`${width}, as text`);
        assert.ok(await engine.ask(() => document.documentElement.scrollWidth <= innerWidth));
      }
      await engine.size(1200, 800);
    });

  /** The pages of documents are looked at elsewhere. */
  async function assertAccessible(where) {
    await engine.page.evaluate(axe);
    const found = await engine.ask(async () => (await window.axe.run(document, { iframes: false })).violations
      .map(({ id, nodes }) => `${id}: ${nodes.map(({ target }) => target.join(' ')).join(', ')}`));
    assert.deepEqual(found, [], where);
  }

  test('after the first visit it works without a server', async () => {
    await engine.open(server.address);
    await engine.ask(() => navigator.serviceWorker.ready.then(() => true));
    await server.close();
    await engine.open(server.address);
    await click('#sample');
    await state('ready');
    assert.equal(await engine.ask(heading), 'Characters');
    assert.ok(engine.page.workers().length > 0);
  });
});
