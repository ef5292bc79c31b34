import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

const folder = fileURLToPath(new URL('../package/', import.meta.url));
const about = JSON.parse(readFileSync(join(folder, 'package.json'), 'utf8'));
const module = readFileSync(join(folder, 'pagerex.wasm'));
const packed = JSON.parse(execFileSync('npm', ['pack', '--dry-run', '--json'], { cwd: folder, stdio: ['ignore', 'pipe', 'ignore'] }))[0];
const files = packed.files.map(({ path }) => path);
const scripts = files.filter((path) => path.endsWith('.js'));

test('The module takes at most 450 KB on the way', () => {
  // As servers pack it beforehand; what Node has packs a hundredth worse.
  assert.ok(execFileSync('gzip', ['-9c'], { input: module, maxBuffer: 1 << 24 }).length <= 450 * 1024);
});

test('The module imports nothing but what the package gives it', () => {
  const imports = WebAssembly.Module.imports(new WebAssembly.Module(module)).map(({ module, name }) => `${module}.${name}`);
  const known = /^(host\.\w+|env\.emscripten_notify_memory_growth|wasi_snapshot_preview1\.(proc_exit|fd_close))$/;
  assert.deepEqual(imports.filter((name) => !known.test(name)), []);
});

test('Nothing in it makes code of text', () => {
  for (const path of scripts) assert.doesNotMatch(readFileSync(join(folder, path), 'utf8'), /\beval\s*\(|new Function\b|Function\s*\(['"`]/, path);
});

test('It runs where code of text is forbidden', () => {
  const script = `import('${new URL('../package/index.js', import.meta.url)}').then(async ({ convert }) => {
    const bytes = require('node:fs').readFileSync(${JSON.stringify(fileURLToPath(new URL('../../samples/sample.doc', import.meta.url)))});
    console.log((await convert(bytes)).sentence);
  })`;
  const out = execFileSync(process.execPath, ['--disallow-code-generation-from-strings', '-e', script], { encoding: 'utf8' });
  assert.equal(out, 'The document was converted.\n');
});

test('It depends on nothing, and runs nothing when it is installed', () => {
  for (const key of ['dependencies', 'peerDependencies', 'optionalDependencies', 'scripts']) assert.equal(about[key], undefined, key);
});

test('All that it names is packed', () => {
  const named = Object.entries(about.exports)
    .filter(([name]) => name !== './element' || existsSync(join(folder, 'element')))
    .flatMap(([, value]) => (typeof value === 'string' ? [value] : Object.values(value)));
  for (const path of [...named, about.main, about.types, about.bin.pagerex]) assert.ok(files.includes(path.replace(/^\.\//, '')), path);
  for (const path of ['LICENSE', 'README.md']) assert.ok(files.includes(path), path);
});

test('What a script imports is packed, and no address is in it', () => {
  for (const path of scripts) {
    const text = readFileSync(join(folder, path), 'utf8');
    for (const [, name] of text.matchAll(/(?:from|import)\s+'(\.[^']+)'/g)) assert.ok(files.includes(join(path, '..', name)), `${path}: ${name}`);
    if (!path.startsWith('bin/') && !path.startsWith('lib/command/')) assert.doesNotMatch(text, /from 'node:|require\(/, path);
  }
});

test('Its version is that of the library', () => {
  const project = readFileSync(new URL('../../CMakeLists.txt', import.meta.url), 'utf8');
  assert.equal(about.version, /project\(pagerex VERSION (\S+)/.exec(project)[1]);
  assert.ok(readdirSync(folder).includes('LICENSE'));
});
