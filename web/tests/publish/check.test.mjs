// The package as it would be published: what is in it, its entries for all who resolve them, its sizes.
import assert from 'node:assert/strict';
import { execFile, execFileSync } from 'node:child_process';
import { mkdirSync, readFileSync, readdirSync, rmSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { before, test } from 'node:test';
import { promisify } from 'node:util';
import { fileURLToPath } from 'node:url';
import { pack, root } from './pack.mjs';

const work = join(root, 'build/web/publish');
const packed = join(work, 'package');
const tool = (path) => fileURLToPath(new URL(`node_modules/${path}`, import.meta.url));
const run = promisify(execFile);

/** As servers pack files beforehand. */
const gzipped = (path) => execFileSync('gzip', ['-9c', path], { maxBuffer: 1 << 24 }).length;

/** Kilobytes, gzipped, that each part may have. A page that only converts loads the first two. */
const budgets = [
  { name: 'pagerex.wasm', most: 450, files: /^pagerex\.wasm$/ },
  { name: 'JavaScript of conversions', most: 20, files: /^(index|sync|worker)\.js$|^lib\/[^/]*\.js$/ },
  { name: 'JavaScript of the viewer', most: 40, files: /^element\/.*\.js$/ },
];

let tarball;

before(() => {
  rmSync(work, { recursive: true, force: true });
  mkdirSync(work, { recursive: true });
  tarball = pack(work);
  execFileSync('tar', ['-xzf', tarball, '-C', work]);
});

const filesOf = (folder) =>
  readdirSync(folder, { recursive: true }).filter((name) => statSync(join(folder, name)).isFile());

for (const { name, most, files } of budgets)
  test(`${name} keeps within ${most} KB`, (context) => {
    const names = filesOf(packed).filter((path) => files.test(path));
    assert.notEqual(names.length, 0);
    const sum = names.reduce((bytes, path) => bytes + gzipped(join(packed, path)), 0);
    context.diagnostic(`${name}: ${(sum / 1024).toFixed(1)} KB in ${names.length} files`);
    assert.ok(sum <= most * 1024, `${(sum / 1024).toFixed(1)} KB`);
  });

test('every entry is there, with types, for bundlers and for Node', async () => {
  await run(process.execPath, [tool('publint/src/cli.js'), 'run', tarball, '--strict']).catch(show);
});

test('the types agree with what is resolved', async () => {
  const assets = ['./pagerex.wasm', './package.json'];
  await run(process.execPath, [tool('@arethetypeswrong/cli/dist/index.js'), tarball, '--profile', 'esm-only',
    '--exclude-entrypoints', ...assets]).catch(show);
});

test('nothing is needed at run time, and nothing runs while it is installed', () => {
  const manifest = JSON.parse(readFileSync(join(packed, 'package.json')));
  assert.deepEqual(Object.keys(manifest.dependencies ?? {}), []);
  const hooks = Object.keys(manifest.scripts ?? {}).filter((name) => /install|prepare/.test(name));
  assert.deepEqual(hooks, []);
});

test('no file tells of another machine, or is left over', () => {
  const names = filesOf(packed);
  for (const needed of ['README.md', 'LICENSE', 'index.d.ts', 'bin/pagerex.js']) assert.ok(names.includes(needed), needed);
  assert.deepEqual(names.filter((name) => /(^|\/)(\.|node_modules|tests?\/)|\.(tgz|log|map)$/.test(name)), []);
});

function show(error) {
  assert.fail(`${error.stdout}${error.stderr}`);
}
