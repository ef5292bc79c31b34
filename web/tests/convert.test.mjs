import assert from 'node:assert/strict';
import { createReadStream, openAsBlob } from 'node:fs';
import { test } from 'node:test';
import { convert, convertSync, detect, info, init, pages } from '../package/index.js';
import { collect, sample, samplePath, testBoth, withDeletions, withHiddenText, withOddLinks } from './support.mjs';

const responseOf = (bytes, headers) => new Response(bytes, { headers });
async function* inPieces(bytes, size) {
  for (let at = 0; at < bytes.length; at += size) yield bytes.subarray(at, at + size);
}
const streamOf = (bytes, size) => ReadableStream.from(inPieces(bytes, size));

/** Bytes that do not begin where their buffer does. */
function shifted(bytes) {
  const buffer = new Uint8Array(bytes.length + 11);
  buffer.set(bytes, 7);
  return buffer.subarray(7, 7 + bytes.length);
}

const inputs = {
  'a typed array': () => sample,
  'a view within a buffer': () => shifted(sample),
  'an ArrayBuffer': () => sample.slice().buffer,
  'a DataView': () => new DataView(sample.slice().buffer),
  'a Buffer': () => Buffer.from(sample),
  'a Blob': () => new Blob([sample]),
  'a File': () => new File([sample], 'a.doc'),
  'a Blob of a file': () => openAsBlob(samplePath),
  'a Response': () => responseOf(sample),
  'a Response that tells its length': () => responseOf(sample, { 'content-length': String(sample.length) }),
  'a Response that tells a wrong length': () => responseOf(sample, { 'content-length': '100' }),
  'a promise of a Response': () => Promise.resolve(responseOf(sample)),
  'a ReadableStream': () => streamOf(sample, 1000),
  'a stream of a byte each': () => streamOf(sample.subarray(0), 1),
  'a stream of Node': () => createReadStream(samplePath),
  'an async iterable': () => inPieces(sample, 4096),
};

const expected = await convert(sample);

for (const [name, make] of Object.entries(inputs))
  testBoth(`Converts ${name}`, async () => {
    const result = await convert(make());
    assert.equal(result.content, expected.content);
    assert.equal(result.complete, true);
  });

testBoth('Leaves the bytes it was given as they were', async () => {
  const mine = sample.slice();
  await convert(mine);
  assert.deepEqual(mine, sample);
});

testBoth('Tells all of a result', async () => {
  const result = await convert(sample, { name: 'letter.html', pictures: 'files' });
  assert.equal(result.kind, 'word97');
  assert.equal(result.sentence, 'The document was converted.');
  assert.deepEqual(result.warnings, []);
  assert.equal(result.counts.tables, 2);
  assert.equal(result.summary.title, 'A Sampler');
  assert.equal([...result.files.keys()][0], 'letter.html');
  assert.equal(result.files.get('letter.html').text(), result.content);
  assert.equal(result.files.get('letter.html').mediaType, 'text/html; charset=utf-8');
  const picture = [...result.files.values()].find(({ mediaType }) => mediaType === 'image/png');
  assert.match(picture.name, /^letter\.files\//);
  assert.deepEqual([...picture.bytes.subarray(1, 4)], [...'PNG'].map((c) => c.charCodeAt(0)));
});

const begins = {
  html: /^<!doctype html>/,
  markdown: /^<a id|^#|^\*/,
  text: /^A Sampler/,
  normal: /^<html|^<!DOCTYPE/i,
  phone: /<html/i,
  preview: /./,
  mulpages: /</,
};
for (const [format, beginning] of Object.entries(begins))
  testBoth(`Writes ${format}`, async () => {
    const { content, files } = await convert(sample, { format });
    assert.match(content, beginning);
    assert.ok(files.size > 0);
  });

const changes = [
  ['links: none', sample, {}, { links: 'none' }],
  ['links: all', withOddLinks, {}, { links: 'all' }],
  ['pictures: none', sample, {}, { pictures: 'none' }],
  ['pictures: files', sample, {}, { pictures: 'files' }],
  ['pictures: embedded', sample, { format: 'markdown' }, { format: 'markdown', pictures: 'embedded' }],
  ['revisions: original', withDeletions, {}, { revisions: 'original' }],
  ['revisions: all', withDeletions, {}, { revisions: 'all' }],
  ['comments: false', sample, {}, { comments: false }],
  ['hiddenText', withHiddenText, {}, { hiddenText: true }],
  ['frontMatter', sample, { format: 'markdown' }, { format: 'markdown', frontMatter: true }],
  ['pageBreaks', sample, { format: 'markdown' }, { format: 'markdown', pageBreaks: true }],
  ['commonMark', sample, { format: 'markdown' }, { format: 'markdown', commonMark: true }],
  ['width', sample, { format: 'text' }, { format: 'text', width: 40 }],
  ['darkScheme', sample, {}, { darkScheme: true }],
  ['pageSize', sample, { format: 'preview' }, { format: 'preview', pageSize: 10 }],
  ['pageSize of html', sample, {}, { pageSize: 1000 }],
];
for (const [name, document, without, options] of changes)
  test(`An option reaches the output: ${name}`, async () => {
    await init();
    assert.notEqual(convertSync(document, options).content, convertSync(document, without).content);
  });

/** Without tags and styles: in pieces, each brings the rules that it needs. */
const textOf = (html) => html.replace(/<style[^]*?<\/style>/g, '').replace(/<[^>]*>/g, '').replace(/\s+/g, ' ');

testBoth('Pieces of html are the page', async () => {
  const { pages: pieces, result } = await collect(pages(sample, { pageSize: 500 }));
  assert.ok(pieces.length >= 4);
  assert.deepEqual(pieces.map(({ number }) => number), pieces.map((_, i) => i + 1));
  assert.equal(pieces[0].name, 'document.html');
  const whole = await convert(sample, { pageSize: 500 });
  assert.deepEqual(pieces.map(({ content }) => content), [...whole.files.values()].map((file) => file.text()));
  const joined = pieces.map(({ content }) => content).join('');
  assert.match(joined, /^<!doctype html>[^]*<\/html>\s*$/);
  assert.equal(textOf(joined), textOf(expected.content));
  assert.equal(result.files.size, pieces.length);
  for (const { name, content } of pieces) assert.equal(result.files.get(name).text(), content);
});

testBoth('Pages of another format are its files', async () => {
  const { pages: found, result } = await collect(pages(sample, { format: 'mulpages', pageSize: 500 }));
  assert.ok(found.length >= 2);
  const whole = await convert(sample, { format: 'mulpages', pageSize: 500 });
  assert.deepEqual([...result.files.keys()].sort(), [...whole.files.keys()].sort());
  for (const [name, { bytes }] of whole.files) assert.deepEqual(result.files.get(name).bytes, bytes, name);
});

testBoth('What has no pages is one', async () => {
  const { pages: found, result } = await collect(pages(sample, { format: 'text' }));
  assert.equal(found.length, 1);
  assert.equal(found[0].content, result.content);
});

testBoth('Progress rises from 0 to 1', async () => {
  const told = [];
  await convert(sample, { onProgress: (done) => told.push(done) });
  assert.deepEqual(told, [...told].sort((a, b) => a - b));
  assert.equal(told.at(0), 0);
  assert.equal(told.at(-1), 1);
});

testBoth('Progress of pages rises too', async () => {
  const told = [];
  await collect(pages(sample, { pageSize: 500, onProgress: (done) => told.push(done) }));
  assert.deepEqual(told, [...new Set(told)].sort((a, b) => a - b));
  assert.equal(told.at(-1), 1);
});

testBoth('Many calls at the same time', async () => {
  const formats = ['html', 'text', 'markdown', 'normal', 'html', 'preview', 'text', 'phone'];
  const results = await Promise.all(formats.map((format) => convert(sample, { format })));
  results.forEach(({ content }, i) => assert.equal(content, convertSync(sample, { format: formats[i] }).content));
});

testBoth('A file of many pages and another call go side by side', async () => {
  const one = pages(sample, { pageSize: 300 });
  const first = await one.next();
  assert.equal((await convert(sample)).content, expected.content);
  const { pages: rest } = await collect(one);
  const whole = [...(await convert(sample, { pageSize: 300 })).files.values()];
  assert.equal([first.value, ...rest].map(({ content }) => content).join(''), whole.map((file) => file.text()).join(''));
});

test('Info tells of a document', async () => {
  const told = await info(sample);
  assert.equal(told.kind, 'word97');
  assert.equal(told.inputBytes, sample.length);
  assert.equal(told.counts.tables, 2);
  assert.equal(told.summary.title, 'A Sampler');
  assert.ok(Array.isArray(told.summary.custom));
});

test('Detect tells of a document', async () => {
  assert.deepEqual(await detect(new Blob([sample])), { kind: 'word97', sentence: 'This is a Word 97-2003 document (.doc).' });
});

test('A module may come compiled, as bytes, or as a response', async () => {
  const { readFileSync } = await import('node:fs');
  const bytes = readFileSync(new URL('../package/pagerex.wasm', import.meta.url));
  const response = () => new Response(bytes, { headers: { 'content-type': 'application/wasm' } });
  for (const wasm of [bytes, new WebAssembly.Module(bytes), response(), Promise.resolve(response()), new Response(bytes)]) {
    await init({ wasm });
    assert.equal((await convert(sample)).content, expected.content);
  }
});
