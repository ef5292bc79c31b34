// Code pages of documents: those that the platform knows, and Johab.
import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import { test } from 'node:test';
import { info } from '../package/index.js';
import { JohabDecoder } from '../package/lib/johab.js';
import { sample } from './support.mjs';

const latin = Buffer.from([0x02, 0, 0, 0, 0xe4, 0x04, 0, 0]);
const title = Buffer.from('A Sampler\0');

/** The sample with a title of so many bytes, in a code page. */
function titled(codePage, bytes) {
  const document = Buffer.from(sample);
  const at = document.indexOf(title);
  const page = document.lastIndexOf(latin, at);
  assert.ok(at > 0 && page > 0);
  document.writeUInt16LE(codePage, page + 4);
  Buffer.from(bytes).copy(document, at);
  return document;
}

async function titleOf(codePage, ...bytes) {
  const padded = [...bytes, ...Buffer.alloc(title.length - 1 - bytes.length, ' ')];
  return (await info(titled(codePage, padded))).summary.title.trim();
}

test('Titles are read in their code pages', async () => {
  assert.equal(await titleOf(1252, 0x80, 0x41), '€A');
  assert.equal(await titleOf(932, 0x93, 0xfa, 0x96, 0x7b), '日本');
  assert.equal(await titleOf(936, 0xd6, 0xd0, 0x41), '中A');
  assert.equal(await titleOf(949, 0xb0, 0xa1), '가');
  assert.equal(await titleOf(950, 0xa4, 0xa4), '中');
  assert.equal(await titleOf(1258, 0x61, 0xec), 'á');
  assert.equal(await titleOf(1361, 0x88, 0x61, 0x41, 0xe0, 0x31, 0x5c), '가A伽₩');
  assert.equal(await titleOf(1361, 0x80, 0x41, 0x88), '\ufffdA\ufffd');
});

test('Each pair of bytes of Johab is what the C library makes of it', () => {
  const decoder = new JohabDecoder();
  let all = '';
  for (let lead = 0x80; lead < 0x100; ++lead) {
    for (let trail = 0; trail < 0x100; ++trail) {
      const text = decoder.decode(Uint8Array.of(lead, trail), { stream: false });
      all += text[0] === '\ufffd' ? '\ufffd' : text;
    }
  }
  assert.equal(all.length, 0x8000);
  assert.equal(all.replaceAll('\ufffd', '').length, 17049);
  assert.equal(createHash('sha256').update(all).digest('hex'),
    '059d906684715db3a5679bc8ab23f0741d46b25b05a27eea5f2f741cd9a09c3f');
});

test('A pair of Johab may come in two parts', () => {
  const decoder = new JohabDecoder();
  assert.equal(decoder.decode(Uint8Array.of(0x41, 0x88), { stream: true }), 'A');
  assert.equal(decoder.decode(Uint8Array.of(0x61, 0x88), { stream: true }), '가');
  assert.equal(decoder.decode(new Uint8Array(0), { stream: false }), '\ufffd');
});
