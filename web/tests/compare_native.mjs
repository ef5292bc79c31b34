#!/usr/bin/env node
// Whether the package writes what the native program writes, byte for byte: each document of a folder, each format.
//
//   web/tests/compare_native.mjs [--native PROGRAM] [--documents FOLDER] [--every N]
//
// Exits with 77 where the program or the folder is not there.
import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, readdirSync, rmSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { basename, dirname, join, relative } from 'node:path';
import { parseArgs } from 'node:util';
import { PagerexError, convertSync, init } from '../package/index.js';

const root = join(import.meta.dirname ?? dirname(new URL(import.meta.url).pathname), '../..');
const { values: given } = parseArgs({
  options: {
    native: { type: 'string', default: join(root, 'build/release/pagerex') },
    documents: { type: 'string', default: join(root, '../shared/corpus') },
    every: { type: 'string', default: '1' },
  },
});

const runs = [
  { format: 'html' },
  { format: 'markdown' },
  { format: 'text' },
  { format: 'normal' },
  { format: 'phone' },
  { format: 'preview' },
  { format: 'mulpages' },
  { format: 'html', pageSize: 5000, pictures: 'files', revisions: 'all', hiddenText: true, links: 'all', darkScheme: true },
  { format: 'markdown', pictures: 'embedded', frontMatter: true, pageBreaks: true, commonMark: true, revisions: 'original' },
  { format: 'text', width: 72, headers: true, comments: false },
  { format: 'normal', pictures: 'web', links: 'none' },
];
const flags = { hiddenText: '--hidden-text', darkScheme: '--dark', frontMatter: '--front-matter', pageBreaks: '--page-breaks', commonMark: '--common-mark', headers: '--headers' };

function argumentsOf({ format, comments, pageSize, ...others }) {
  const found = ['-t', format];
  if (pageSize) found.push('--pagesize', String(pageSize));
  if (comments === false) found.push('--no-comments');
  for (const [key, value] of Object.entries(others)) found.push(...(flags[key] ? [flags[key]] : [`--${key}`, String(value)]));
  return found;
}

/** The files of a document's result: the main one, and the folder beside it. */
function filesOf(output) {
  const folder = join(dirname(output), `${basename(output).replace(/\.[^.]*$/, '')}.files`);
  const files = new Map([[basename(output), output]]);
  if (existsSync(folder))
    for (const name of readdirSync(folder, { recursive: true })) {
      const path = join(folder, name);
      if (statSync(path).isFile()) files.set(join(basename(folder), name), path);
    }
  return files;
}

const nativeStatus = { ok: 'ok', partial: 'ok' };

function differenceOf(line, options) {
  const bytes = readFileSync(line.path);
  const isConverted = nativeStatus[line.status] === 'ok';
  let result;
  try {
    result = convertSync(bytes, { ...options, name: isConverted ? basename(line.output) : '' });
  } catch (error) {
    if (!(error instanceof PagerexError)) throw error;
    return !isConverted && error.code === line.status && error.kind === line.kind ? null : `${error.code}, native ${line.status}`;
  }
  if (!isConverted) return `converted, native ${line.status}`;
  const files = filesOf(line.output);
  const names = [...result.files.keys()].sort().join(' ');
  if (names !== [...files.keys()].sort().join(' ')) return `files ${names}, native ${[...files.keys()].sort().join(' ')}`;
  for (const [name, path] of files) if (!readFileSync(path).equals(result.files.get(name).bytes)) return `${name} differs`;
  if (result.complete !== (line.status === 'ok')) return `complete: ${result.complete}, native ${line.status}`;
  return null;
}

function compare(documents, options, folder) {
  const report = join(folder, 'report.jsonl');
  try {
    execFileSync(given.native, [...argumentsOf(options), '-o', join(folder, 'out/'), '--report', report, ...documents], { stdio: 'ignore' });
  } catch (error) {
    if (error.status !== 2) throw error;
  }
  const lines = readFileSync(report, 'utf8').trim().split('\n').map((line) => JSON.parse(line));
  const faults = lines.map((line) => [line.path, differenceOf(line, options)]).filter(([, fault]) => fault);
  for (const [path, fault] of faults) console.log(`${relative(given.documents, path)} ${JSON.stringify(options)}: ${fault}`);
  return [lines.length, faults.length];
}

if (!existsSync(given.native) || !existsSync(given.documents)) {
  console.log(`Not compared: no ${existsSync(given.native) ? given.documents : given.native}`);
  process.exit(77);
}
const documents = readdirSync(given.documents, { recursive: true })
  .filter((name) => /\.(doc|dot)$/i.test(name))
  .sort()
  .filter((_, index) => index % Number(given.every) === 0)
  .map((name) => join(given.documents, name));
await init();
let compared = 0;
let different = 0;
for (const options of runs) {
  const folder = mkdtempSync(join(tmpdir(), 'pagerex-compare-'));
  const [all, faults] = compare(documents, options, folder);
  compared += all;
  different += faults;
  rmSync(folder, { recursive: true });
}
console.log(`${compared} conversions of ${documents.length} documents compared, ${different} differ`);
process.exit(different > 0 ? 1 : 0);
