import assert from 'node:assert/strict';
import { test } from 'node:test';
import { PagerexError, convertSync, init as initOfSync } from '../package/sync.js';
import { convert, convertSync as again, init } from '../package/index.js';
import { sample } from './support.mjs';

test('Before init, convertSync says what is missing', () => {
  assert.throws(() => convertSync(sample), (error) => error instanceof PagerexError && error.code === 'invalid_argument' && /init/.test(error.message));
});

test('After init, it is convert at once', async () => {
  await init();
  assert.equal(again, convertSync);
  assert.equal(init, initOfSync);
  const expected = (await convert(sample)).content;
  for (const bytes of [sample, sample.slice().buffer, Buffer.from(sample), new DataView(sample.slice().buffer)])
    assert.equal(convertSync(bytes).content, expected);
});

test('It takes bytes alone', () => {
  for (const input of [new Blob([sample]), Promise.resolve(sample), 'letter.doc', undefined])
    assert.throws(() => convertSync(input), { code: 'invalid_argument' });
});

test('One may be called while another is at work', () => {
  const inner = [];
  const outer = convertSync(sample, { onProgress: () => inner.length < 3 && inner.push(convertSync(sample, { format: 'text' }).content) });
  assert.equal(outer.complete, true);
  assert.deepEqual(new Set(inner), new Set([convertSync(sample, { format: 'text' }).content]));
});
