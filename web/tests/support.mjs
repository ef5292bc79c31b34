// What the tests share: the sample, documents made of it, and the two ways of running.
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { init } from '../package/index.js';

export const root = new URL('../../', import.meta.url);
export const samplePath = new URL('samples/sample.doc', root);
export const sample = new Uint8Array(readFileSync(samplePath));

/** The sample with all of one sequence of bytes in the place of another. */
export function replaced(from, to) {
  const bytes = Buffer.from(sample);
  let count = 0;
  for (let at = bytes.indexOf(from); at >= 0; at = bytes.indexOf(from, at + 1), ++count) Buffer.from(to).copy(bytes, at);
  if (count === 0) throw new Error('the sample has changed: nothing to replace');
  return new Uint8Array(bytes);
}

// Characters that are bold become others: sprmCFBold, and those of the same form.
const bold = Buffer.from([0x35, 0x08, 1]);
export const withHiddenText = replaced(bold, [0x3c, 0x08, 1]);
export const withDeletions = replaced(bold, [0x00, 0x08, 1]);
export const withOddLinks = replaced(Buffer.from('http:', 'utf16le'), Buffer.from('java:', 'utf16le'));

/** The bit of the FIB that tells. */
export function encrypted() {
  const bytes = sample.slice();
  const fib = Buffer.from(bytes.buffer).indexOf(Buffer.from([0xec, 0xa5, 0xc1, 0x00]));
  bytes[fib + 0x0b] |= 1;
  return bytes;
}

export const textBytes = (text) => new TextEncoder().encode(text);

export async function collect(pages) {
  const all = [];
  for (;;) {
    const { done, value } = await pages.next();
    if (done) return { pages: all, result: value };
    all.push(value);
  }
}

/** The same test on this thread and in workers. */
export function testBoth(name, run) {
  for (const worker of [false, true])
    test(`${name}${worker ? ', in a worker' : ''}`, async (context) => {
      await init({ worker });
      try {
        await run(context, worker);
      } finally {
        await init({ worker: false });
      }
    });
}

/** The same numbers each time. */
export function seeded(seed) {
  let state = seed >>> 0;
  return (below) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * below);
  };
}
