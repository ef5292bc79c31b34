// The tests of the viewer in one engine. An engine that is not installed is told, and must be there in continuous
// integration (CI=true).

import { existsSync, readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { after, before, describe, test } from 'node:test';
import { isThere, start } from './engines.mjs';
import { serve } from './server.mjs';
import * as access from './access.mjs';
import * as input from './input.mjs';
import * as reading from './reading.mjs';
import * as safety from './safety.mjs';
import * as tools from './tools.mjs';

const SAMPLE = fileURLToPath(new URL('../../../samples/sample.doc', import.meta.url));
const MODULE = ['../../package/pagerex.wasm', '../../../build/wasm/pagerex.wasm'].map(
  (path) => fileURLToPath(new URL(path, import.meta.url))).find((path) => existsSync(path));

/** The sample with other words of the same length in the place of some: what its pages must not be taken in by. */
function hostile(sample) {
  const words = [['http://www.example.com/', 'javascript:parent.e=1//'], ['This sentence holds ', '<img onerror=evil=1>']];
  return words.reduce((document, [old, evil]) => Buffer.from(
    document.toString('latin1').replaceAll(wide(old), wide(evil)), 'latin1'), sample);
}

const wide = (text) => Buffer.from(text, 'utf16le').toString('latin1');

/** Documents that are none, are not whole, or mean no good. */
function documents() {
  const sample = readFileSync(SAMPLE);
  return {
    '/documents/paper.pdf': Buffer.from('%PDF-1.4\n1 0 obj\n<<>>\nendobj\n%%EOF\n'),
    '/documents/short.doc': sample.subarray(0, 20 * 1024),
    '/documents/hostile.doc': hostile(sample),
    '/documents/empty.doc': Buffer.alloc(0),
  };
}

export function suite(name) {
  const isMissing = !isThere(name) && process.env.CI !== 'true';
  describe(name, { skip: isMissing ? `${name} is not installed` : false }, () => {
    const context = { name, module: MODULE };
    before(async () => {
      context.server = await serve({ documents: documents(), module: MODULE });
      context.engine = await start(name);
      await context.engine.size(1200, 800);
    });
    after(async () => {
      await context.engine?.close();
      context.server?.close();
    });
    /** Opens the page with the viewer, which has these attributes. */
    context.open = async (attributes = {}, page = 'viewer.html') => {
      await context.engine.open(`${context.server.root}/pages/${page}?${new URLSearchParams(attributes)}`);
      await context.engine.ask(() => new Promise((resolve) => {
        const look = () => (window.probe ? resolve() : setTimeout(look, 5));
        look();
      }));
    };
    context.openSample = async (attributes = {}) => {
      await context.open({ src: '/samples/sample.doc', ...attributes });
      await context.engine.ask(() => window.probe.ready());
    };
    for (const group of [reading, tools, input, safety, access]) group.define(test, context);
  });
}
