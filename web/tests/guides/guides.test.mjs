// Each guide's project is built with the package as it would be published, and opened in Chromium.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { start } from '../element/engines.mjs';
import { root } from '../publish/pack.mjs';
import { serve } from '../../tools/serve.mjs';
import { build, prepare, work } from './projects.mjs';

const sample = join(root, 'samples/sample.doc');

/** Runs in the page: what the viewer shows, when it is ready. */
async function shown() {
  for (const end = performance.now() + 20_000; performance.now() < end; await new Promise((next) => setTimeout(next, 20))) {
    const viewer = document.querySelector('pagerex-viewer');
    if (viewer?.state === 'error') return viewer.shadowRoot.querySelector('[part=error-sentence]').textContent;
    if (viewer?.state !== 'ready') continue;
    const inner = viewer.shadowRoot.querySelector('iframe').contentDocument;
    return { heading: inner.querySelector('h1').textContent, hasPages: viewer.pageCount > 3 };
  }
  return 'the document did not come';
}

const whole = { heading: 'Characters', hasPages: true };

describe('The guides', () => {
  let engine;
  before(async () => {
    prepare();
    engine = await start('Chromium');
    await engine.size(1200, 800);
  });
  after(() => engine?.close());

  /** Builds the guide, opens it, and has it looked at. All that it asks for is its own. */
  async function open(name, look) {
    const server = await serve(await build(name));
    const errors = [];
    const hear = (error) => errors.push(error.message);
    engine.page.on('pageerror', hear);
    try {
      await engine.open(server.address);
      await look(server);
      assert.deepEqual(errors, []);
      const foreign = engine.requests.filter((address) => !/^(blob|data):/.test(address) && !address.startsWith(server.address));
      assert.deepEqual(foreign, []);
    } finally {
      engine.page.off('pageerror', hear);
      await engine.open('about:blank');
      await server.close();
    }
  }

  const hasWorker = () => engine.page.workers().length > 0;

  for (const name of ['plain-html', 'webpack'])
    test(`${name} shows a document, converted in a worker`, () =>
      open(name, async () => {
        assert.deepEqual(await engine.ask(shown), whole);
        assert.ok(hasWorker());
      }));

  for (const name of ['react', 'vue'])
    test(`${name} shows a document, and hears of it`, () =>
      open(name, async () => {
        assert.deepEqual(await engine.ask(shown), whole);
        assert.equal(await engine.ask(() => document.querySelector('h1').textContent), 'A Sampler');
        assert.ok(hasWorker());
      }));

  test('vite makes Markdown of a file that is chosen', () =>
    open('vite', async () => {
      await choose();
      assert.ok(hasWorker());
    }));

  test('vite does so while it serves the sources', async () => {
    const child = spawn(process.execPath, [join(work, 'node_modules/vite/bin/vite.js'), '--port', '0', '--host', '127.0.0.1'],
      { cwd: join(work, 'vite'), env: { ...process.env, NO_COLOR: '1' } });
    try {
      await engine.open(await told(child, /http:\/\/127\.0\.0\.1:\d+\//));
      await choose();
    } finally {
      await end(child);
    }
  });

  async function choose() {
    const input = await engine.page.$('input[type=file]');
    await input.uploadFile(sample);
    await engine.page.waitForFunction(() => document.querySelector('pre').textContent !== '', { timeout: 10_000 });
    assert.match(await engine.ask(() => document.querySelector('pre').textContent), /^# Characters$/m);
  }

  test('a service worker shows documents as pages', () =>
    open('service-worker', async () => {
      await engine.ask(async () => {
        const isOurs = new Promise((resolve) => navigator.serviceWorker.addEventListener('controllerchange', resolve, { once: true }));
        if (!navigator.serviceWorker.controller) await isOurs;
      });
      await Promise.all([engine.page.waitForNavigation(), engine.page.click('a')]);
      assert.equal(await engine.ask(() => document.querySelector('h1').textContent), 'Characters');
      assert.match(engine.page.url(), /letter\.doc$/);
    }));

  test('the server answers with a page, and says what is none', async () => {
    const child = spawn(process.execPath, ['server.js'], { cwd: join(work, 'node-server'), env: { ...process.env, PORT: '0' } });
    try {
      const address = await told(child, /http:\S+/);
      const good = await fetch(address, { method: 'POST', body: readFileSync(sample) });
      assert.equal(good.status, 200);
      assert.match(await good.text(), /<h1[^>]*>.*Characters/s);
      const bad = await fetch(address, { method: 'POST', body: '%PDF-1.4\n' });
      assert.equal(bad.status, 422);
      assert.match(await bad.text(), /PDF/);
    } finally {
      await end(child);
    }
  });
});

/** What a program writes, until it has written that. */
function told(child, pattern) {
  return new Promise((resolve, reject) => {
    let text = '';
    const hear = (chunk) => {
      text += chunk;
      const match = pattern.exec(text);
      if (match) resolve(match[0]);
    };
    child.stdout.on('data', hear);
    child.stderr.on('data', hear);
    child.once('exit', () => reject(new Error(text)));
  });
}

async function end(child) {
  if (child.exitCode !== null) return;
  child.kill();
  await once(child, 'exit');
}
