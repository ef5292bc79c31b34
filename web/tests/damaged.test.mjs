import assert from 'node:assert/strict';
import { test } from 'node:test';
import { PagerexError, convertSync, detect, init } from '../package/index.js';
import { Instance } from '../package/lib/instance.js';
import { loadModule } from '../package/lib/load.js';
import { giveBack, take } from '../package/lib/pool.js';
import { requestOf } from '../package/lib/options.js';
import { writeAll } from '../package/lib/run.js';
import { sample, seeded } from './support.mjs';

await init();

/** Bytes changed, a piece moved, or the end cut. */
function damaged(random) {
  const bytes = sample.slice();
  for (let i = random(20); i >= 0; --i) bytes[random(bytes.length)] = random(256);
  if (random(3) === 0) bytes.copyWithin(random(bytes.length), random(bytes.length), random(bytes.length));
  return random(4) === 0 ? bytes.subarray(0, random(bytes.length)) : bytes;
}

const formats = ['html', 'markdown', 'text', 'normal', 'phone', 'preview', 'mulpages'];
const expectedCodes = new Set(['not_word', 'encrypted', 'damaged']);

test('Damaged documents become a result, or an error that says so', () => {
  const random = seeded(20031);
  const codes = new Set();
  for (let i = 0; i < 300; ++i) {
    const bytes = damaged(random);
    try {
      codes.add(convertSync(bytes, { format: formats[i % formats.length], limits: { milliseconds: 20_000 } }).kind);
    } catch (error) {
      assert.ok(error instanceof PagerexError && expectedCodes.has(error.code), `${i}: ${error.code} ${error.message}`);
      codes.add(error.code);
    }
  }
  assert.ok(codes.has('word97') && codes.size > 1, [...codes].join());
});

test('Noise is told apart', async () => {
  const random = seeded(7);
  for (let i = 0; i < 50; ++i) {
    const bytes = Uint8Array.from({ length: random(3000) }, () => random(256));
    assert.equal(typeof (await detect(bytes)).sentence, 'string');
    assert.throws(() => convertSync(bytes), PagerexError);
  }
});

test('What a call leaves behind changes nothing for the next', () => {
  const random = seeded(5);
  const expected = convertSync(sample).content;
  for (let i = 0; i < 20; ++i) {
    try {
      convertSync(damaged(random));
    } catch (error) {
      assert.ok(error instanceof PagerexError);
    }
    assert.equal(convertSync(sample).content, expected);
  }
});

test('Memory does not grow with the number of calls', async () => {
  const instance = await Instance.make(await loadModule());
  const request = requestOf();
  const sizes = [];
  for (let i = 0; i < 30; ++i) {
    instance.put(sample);
    writeAll(instance, request);
    instance.clear();
    sizes.push(instance.size);
  }
  assert.equal(sizes.at(-1), sizes[2]);
});

test('An instance that has grown large, or broke, is not used again', async () => {
  const large = await take();
  large.reserve(100 << 20);
  giveBack(large);
  const broken = await take();
  broken.isBroken = true;
  giveBack(broken);
  const next = await take();
  assert.ok(next !== large && next !== broken);
  assert.ok(next.size < 64 << 20);
});

test('A trap is an error, and the next call is well', async () => {
  const instance = await take();
  instance.put(sample);
  const error = new WebAssembly.RuntimeError('unreachable');
  const host = {
    get begin() {
      throw error;
    },
  };
  instance.open({ memory: 0, inputBytes: 0, milliseconds: 0 });
  assert.throws(() => instance.write(requestOf(), 0, host), (thrown) => thrown === error);
  giveBack(instance);
  assert.equal(convertSync(sample).complete, true);
});

test('More memory than there can be is an error', async () => {
  const instance = await take();
  assert.throws(() => instance.reserve(2 ** 32 - 1000), { code: 'out_of_memory' });
  assert.throws(() => instance.reserve(2 ** 40), { code: 'out_of_memory' });
  instance.clear();
  instance.put(sample);
  assert.equal(writeAll(instance, requestOf()).complete, true);
});
