// What a reader waits for in Chromium, in milliseconds by the clock.
import { cpSync, mkdirSync, rmSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { start } from '../tests/element/engines.mjs';
import { serve } from '../tools/serve.mjs';

const page = `<!doctype html><html lang="en"><meta charset="utf-8"><title>Measured</title><link rel="icon" href="data:,">
<pagerex-viewer></pagerex-viewer></html>`;

/** `documents`: paths by name. Resolves with { name: { cold, first, whole, shown } }, and the browser's version. */
export async function measureInBrowser({ folder, packaged, documents, runs }) {
  rmSync(folder, { recursive: true, force: true });
  mkdirSync(folder, { recursive: true });
  cpSync(packaged, join(folder, 'package'), { recursive: true });
  for (const [name, path] of Object.entries(documents)) cpSync(path, join(folder, `${name}.doc`));
  writeFileSync(join(folder, 'index.html'), page);
  const server = await serve(folder);
  const engine = await start('Chromium');
  try {
    await engine.size(1200, 800);
    const costs = {};
    for (const name of Object.keys(documents)) {
      await engine.open(server.address);
      costs[name] = await engine.ask(measure, name, runs);
    }
    return { version: await engine.browser.version(), costs };
  } finally {
    await engine.close();
    await server.close();
  }
}

/** Runs in the page. */
async function measure(name, runs) {
  const bytes = await (await fetch(`${name}.doc`)).arrayBuffer();
  const document = () => new File([bytes], `${name}.doc`);
  const begin = performance.now();
  const { convert, pages } = await import('./package/index.js');
  await convert(document());
  const cold = performance.now() - begin;
  await import('./package/element/index.js');
  const viewer = window.document.querySelector('pagerex-viewer');

  async function median(work) {
    const values = [];
    for (let run = -2; run < runs; ++run) {
      const start = performance.now();
      const end = await work();
      if (run >= 0) values.push((end ?? performance.now()) - start);
    }
    return values.sort((one, other) => one - other)[Math.floor(runs / 2)];
  }
  const whole = await median(async () => void (await convert(document())));
  // The worker of a call that is left ends with it: each waits for its end, outside of the time.
  const first = await median(async () => {
    const all = pages(document());
    await all.next();
    const end = performance.now();
    while (!(await all.next()).done);
    return end;
  });
  // From the drop of a file until its first page has been painted.
  function drop() {
    const transfer = new DataTransfer();
    transfer.items.add(document());
    viewer.dispatchEvent(new DragEvent('drop', { dataTransfer: transfer, bubbles: true, cancelable: true }));
  }
  const shown = await median(async () => {
    let end;
    const seen = () => requestAnimationFrame(() => setTimeout(() => (end ??= performance.now())));
    viewer.addEventListener('page', seen, { once: true });
    const isLoaded = new Promise((resolve) => viewer.addEventListener('load', resolve, { once: true }));
    drop();
    await isLoaded;
    while (end === undefined) await new Promise((resolve) => setTimeout(resolve));
    return end;
  });
  return { cold, first, whole, shown };
}
