import assert from 'node:assert/strict';
import { test } from 'node:test';
import { PagerexError, convert, convertSync, detect, info, init, pages } from '../package/index.js';
import { collect, encrypted, sample, testBoth, textBytes } from './support.mjs';

const kinds = [
  ['nothing', new Uint8Array(0), 'not_word', 'empty'],
  ['plain text', textBytes('Only a few words'), 'not_word', 'text'],
  ['a PDF', textBytes('%PDF-1.4\n1 0 obj\n'), 'not_word', 'pdf'],
  ['Rich Text', textBytes('{\\rtf1\\ansi Hello}'), 'not_word', 'rtf'],
  ['a web page', textBytes('<!DOCTYPE html><html><body>Hi</body></html>'), 'not_word', 'html'],
  ['an encrypted document', encrypted(), 'encrypted', 'word-encrypted'],
  ['a document cut short', sample.subarray(0, 700), 'not_word', 'compound'],
];

for (const [name, bytes, code, kind] of kinds) {
  testBoth(`Tells what it is instead: ${name}`, async () => {
    const isTold = (error) => error instanceof PagerexError && error.code === code && error.kind === kind && error.message !== '';
    await assert.rejects(convert(bytes), isTold);
    await assert.rejects(convert(new Blob([bytes])), isTold);
    await assert.rejects(collect(pages(bytes)), isTold);
    await assert.rejects(info(bytes), isTold);
    assert.throws(() => convertSync(bytes), isTold);
  });
  test(`Detects ${name}`, async () => assert.equal((await detect(bytes)).kind, kind));
}

const senseless = {
  format: ['docx', 5, null],
  name: ['a/b.html', 'a\nb', 7],
  links: ['some', true],
  pictures: ['big'],
  revisions: ['none'],
  comments: ['yes', 1],
  hiddenText: ['no'],
  pageSize: [-1, 1.5, '5'],
  width: [-20, NaN, 5],
  limits: [7, { memory: -1 }, { milliseconds: 'soon' }],
  signal: [{}],
  onProgress: ['hello'],
};
for (const [key, values] of Object.entries(senseless))
  testBoth(`Refuses what makes no sense: ${key}`, async () => {
    for (const value of values) {
      const format = key === 'width' ? 'text' : undefined;
      await assert.rejects(convert(sample, { format, [key]: value }), (error) => error instanceof PagerexError && error.code === 'invalid_argument', String(value));
    }
  });

testBoth('Refuses inputs that are none', async () => {
  for (const input of [undefined, null, 'letter.doc', 7, {}, [1, 2]])
    await assert.rejects(convert(input), { name: 'PagerexError', code: 'invalid_argument' });
  await assert.rejects(convert(ReadableStream.from(['text'])), { code: 'invalid_argument' });
});

testBoth('A format that cannot have its pictures so says so', async () => {
  await assert.rejects(convert(sample, { format: 'text', pictures: 'embedded' }), { code: 'invalid_argument' });
});

testBoth('An answer of a server that is no document is an error of reading', async () => {
  await assert.rejects(convert(new Response('gone', { status: 404 })), { code: 'unreadable', message: /404/ });
});

testBoth('A response that was read is an error of reading', async () => {
  const response = new Response(sample);
  await response.arrayBuffer();
  await assert.rejects(convert(response), { code: 'unreadable' });
});

testBoth('A stream that fails is an error of reading, and tells why', async () => {
  const cause = new Error('the line broke');
  const stream = new ReadableStream({ pull: (controller) => controller.error(cause) });
  await assert.rejects(convert(stream), { code: 'unreadable', cause });
});

testBoth('A promise that fails is what it was', async () => {
  await assert.rejects(convert(Promise.reject(new TypeError('no network'))), { name: 'TypeError', message: 'no network' });
});

testBoth('Limit of the input', async () => {
  const limits = { inputBytes: sample.length - 1 };
  for (const input of [sample, new Blob([sample]), new Response(sample), ReadableStream.from([sample])])
    await assert.rejects(convert(input, { limits }), { code: 'too_large' });
  assert.throws(() => convertSync(sample, { limits }), { code: 'too_large' });
  assert.ok(await convert(sample, { limits: { inputBytes: sample.length } }));
});

testBoth('An endless stream ends at the limit of the input, and is told', async () => {
  let isCanceled = false;
  const stream = new ReadableStream({
    pull: (controller) => controller.enqueue(new Uint8Array(1000)),
    cancel: () => void (isCanceled = true),
  });
  await assert.rejects(convert(stream, { limits: { inputBytes: 100_000 } }), { code: 'too_large' });
  assert.ok(isCanceled);
});

testBoth('Limit of the output, with what came before it', async () => {
  await assert.rejects(convert(sample, { pageSize: 500, limits: { outputBytes: 20_000 } }), (error) => {
    assert.equal(error.code, 'output_limit');
    assert.equal(error.kind, 'word97');
    assert.match(error.result.content, /^<!doctype html>/);
    assert.equal(error.result.complete, false);
    return true;
  });
});

testBoth('Limit of memory', async () => {
  await assert.rejects(convert(sample, { limits: { memory: 1000 } }), { code: 'memory_limit' });
  assert.ok(await convert(sample, { limits: { memory: 50_000_000 } }));
});

testBoth('Limit of time', async () => {
  // On the loaded machine the first look at the clock is past so short a time; a long one does no harm.
  await assert.rejects(convert(sample, { limits: { milliseconds: 1e-9 }, onProgress: spin }), { code: 'deadline' });
  assert.ok(await convert(sample, { limits: { milliseconds: 1e9 } }));
  assert.ok(await convert(sample, { limits: { milliseconds: Infinity } }));
});

function spin() {
  for (const end = performance.now() + 5; performance.now() < end; );
}

testBoth('What onProgress throws ends the call', async () => {
  const mine = new RangeError('mine');
  const onProgress = () => {
    throw mine;
  };
  await assert.rejects(convert(sample, { onProgress }), (error) => error === mine);
  await assert.rejects(collect(pages(sample, { onProgress })), (error) => error === mine);
  assert.equal((await convert(sample)).complete, true);
});

test('A module that cannot be had is an error, and a later one is taken', async () => {
  await assert.rejects(init({ wasm: new Response('', { status: 500 }) }), /500/);
  await assert.rejects(init({ wasm: new Uint8Array([1, 2, 3]) }), WebAssembly.CompileError);
  await assert.rejects(init({ wasm: 7 }), { code: 'invalid_argument' });
  assert.equal((await convert(sample)).complete, true);
});
