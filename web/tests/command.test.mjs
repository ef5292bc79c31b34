import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { existsSync, mkdirSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, beforeEach, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { convert } from '../package/index.js';
import { encrypted, sample, samplePath, textBytes } from './support.mjs';

const program = fileURLToPath(new URL('../package/bin/pagerex.js', import.meta.url));
const document = fileURLToPath(samplePath);
const all = mkdtempSync(join(tmpdir(), 'pagerex-command-'));
let count = 0;
let folder;
beforeEach(() => mkdirSync((folder = join(all, String(++count)))));
after(() => rmSync(all, { recursive: true }));

function run(given, input) {
  const { status, stdout, stderr } = spawnSync(process.execPath, [program, ...given], { input, cwd: folder });
  return { status, out: stdout.toString(), complaint: stderr.toString() };
}
const put = (name, bytes) => {
  const path = join(folder, name);
  mkdirSync(join(path, '..'), { recursive: true });
  writeFileSync(path, bytes);
  return path;
};
const read = (name) => readFileSync(join(folder, name), 'utf8');

test('A page goes to standard output', async () => {
  const { status, out } = run([document]);
  assert.equal(status, 0);
  assert.equal(out, (await convert(sample)).content);
});

test('Standard input is read, and the format is taken', async () => {
  const { status, out } = run(['-t', 'text', '--width', '40', '-'], sample);
  assert.equal(status, 0);
  assert.equal(out, (await convert(sample, { format: 'text', width: 40 })).content);
});

test('The ending of the output tells the format, and pictures lie beside it', async () => {
  assert.equal(run(['-o', 'a.md', document]).status, 0);
  const { files } = await convert(sample, { format: 'markdown', name: 'a.md' });
  for (const [name, file] of files) assert.deepEqual(new Uint8Array(readFileSync(join(folder, name))), file.bytes);
});

test('Options reach the output', async () => {
  const { out } = run(['--links', 'none', '--pictures', 'none', '--dark', '--no-comments', document]);
  const options = { links: 'none', pictures: 'none', darkScheme: true, comments: false };
  assert.equal(out, (await convert(sample, options)).content);
});

test('Many files go into a folder, each under a name of its own', () => {
  for (const name of ['in/x.doc', 'in/b/x.doc', 'in/x.dot', 'in/note.txt']) put(name, sample);
  const { status, complaint } = run(['-o', 'out/', '-t', 'text', 'in']);
  assert.equal(complaint, '');
  assert.equal(status, 0);
  assert.deepEqual(readdirSync(join(folder, 'out'), { recursive: true }).sort(), ['b', 'b/x.txt', 'x.dot.txt', 'x.txt']);
  assert.match(read('out/b/x.txt'), /^A Sampler/);
});

test('What is not converted is told, and the rest is there', () => {
  put('good.doc', sample);
  put('secret.doc', encrypted());
  put('note.doc', textBytes('hello'));
  const { status, complaint } = run(['-o', 'out/', '--report', 'report.jsonl', 'good.doc', 'secret.doc', 'note.doc']);
  assert.equal(status, 2);
  assert.match(complaint, /secret\.doc: .*password/);
  assert.match(complaint, /note\.doc: This is plain text/);
  assert.deepEqual(readdirSync(join(folder, 'out')), ['good.html']);
  const lines = read('report.jsonl').trim().split('\n').map((line) => JSON.parse(line));
  assert.deepEqual(lines.map(({ status }) => status).sort(), ['encrypted', 'not_word', 'ok']);
});

test('Info is a line of JSON for any file', () => {
  const note = put('note.bin', textBytes('hello'));
  const { status, out } = run(['--info', document, note]);
  assert.equal(status, 0);
  const [one, other] = out.trim().split('\n').map((line) => JSON.parse(line));
  assert.equal(one.kind, 'word97');
  assert.equal(one.counts.tables, 2);
  assert.equal(one.sha256.length, 64);
  assert.equal(other.kind, 'text');
  assert.equal(other.result, 'not_word');
});

test('A document is not written over', () => {
  const path = put('letter.doc', sample);
  for (const given of [['-o', 'letter.doc', 'letter.doc'], ['-o', 'letter.doc', document]]) {
    const { status, complaint } = run(given);
    assert.equal(status, 1);
    assert.match(complaint, /letter\.doc/);
  }
  assert.deepEqual(new Uint8Array(readFileSync(path)), sample);
});

test('An older result is', () => {
  put('a.html', 'older');
  assert.equal(run(['-o', 'a.html', document]).status, 0);
  assert.match(read('a.html'), /^<!doctype html>/);
  assert.deepEqual(readdirSync(folder), ['a.html']);
});

const refused = [
  [[], 1],
  [['--foo', 'a.doc'], 1],
  [['-t', 'docx', document], 1],
  [['--width', 'many', document], 1],
  [['-t', 'text', '--width', '5', document], 1],
  [['--memory', 'lots', document], 1],
  [['--links', 'some', document], 1],
  [[document, 'other.doc'], 1],
  [['-t', 'normal', document], 1],
  [['nosuch.doc'], 2],
];
for (const [given, code] of refused)
  test(`Exit code ${code}: pagerex ${given.map((one) => (one === document ? 'sample.doc' : one)).join(' ')}`, () => {
    const { status, out, complaint } = run(given);
    assert.equal(status, code);
    assert.equal(out, '');
    assert.match(complaint, /^pagerex: /);
    assert.doesNotMatch(complaint, /\bat .*\.js/);
  });

test('A folder that cannot be written to is told', () => {
  put('file', 'in the way');
  const { status, complaint } = run(['-o', 'file/a.html', document]);
  assert.equal(status, 2);
  assert.match(complaint, /file\/a\.html/);
});

test('Help and version', () => {
  assert.match(run(['--help']).out, /^Usage: pagerex/);
  assert.match(run(['--version']).out, /^pagerex \d+\.\d+\.\d+\n$/);
});

test('Limits', () => {
  const { status, complaint } = run(['--memory', '1K', document]);
  assert.equal(status, 2);
  assert.match(complaint, /more memory than it was given/);
  assert.equal(existsSync(join(folder, 'sample.html')), false);
});
