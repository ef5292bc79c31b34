// Which of a corpus's words each tool finds: FOLDER/NAME.doc beside FOLDER/words/NAME.tsv (word, count).
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync, readdirSync } from 'node:fs';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import { convert } from '../package/index.js';

const readers = {
  pagerex: async (path) => (await convert(readFileSync(path), { format: 'text' })).content,
  'word-extractor': async (path) => {
    const WordExtractor = createRequire(import.meta.url)('word-extractor');
    const document = await new WordExtractor().extract(readFileSync(path));
    return [document.getBody(), document.getFootnotes(), document.getEndnotes(), document.getHeaders({ includeFooters: true }),
      document.getAnnotations(), document.getTextboxes()].join('\n');
  },
  catdoc: async (path) => execFileSync('catdoc', ['-w', '-d', 'utf-8', path], { encoding: 'utf8', stdio: ['ignore', 'pipe', 'ignore'], maxBuffer: 1 << 28 }),
};

/** How often each word stands in a text. */
function countsOf(text) {
  const counts = new Map();
  for (const [word] of text.matchAll(/[\p{L}\p{N}]+/gu)) counts.set(word, (counts.get(word) ?? 0) + 1);
  return counts;
}

function wordsOf(path) {
  const counts = new Map();
  for (const line of readFileSync(path, 'utf8').split('\n').filter(Boolean)) {
    const [text, count] = line.split('\t');
    for (const [word] of text.matchAll(/[\p{L}\p{N}]+/gu)) counts.set(word, (counts.get(word) ?? 0) + Number(count));
  }
  return counts;
}

const isThere = (tool) => tool !== 'catdoc' || process.env.PATH.split(':').some((folder) => existsSync(join(folder, 'catdoc')));

/** Rows { tool, opened, documents, found, words }; none where there is no such corpus. */
export async function findWords(folder) {
  const lists = join(folder, 'words');
  if (!existsSync(lists)) return [];
  const names = readdirSync(lists).map((name) => name.replace(/\.tsv$/, ''));
  const documents = names.filter((name) => existsSync(join(folder, `${name}.doc`)));
  const rows = [];
  for (const [tool, read] of Object.entries(readers).filter(([name]) => isThere(name))) {
    const row = { tool, opened: 0, documents: documents.length, found: 0, words: 0 };
    for (const name of documents) await addTo(row, read, join(folder, `${name}.doc`), wordsOf(join(lists, `${name}.tsv`)));
    rows.push(row);
  }
  return rows;
}

async function addTo(row, read, path, wanted) {
  for (const count of wanted.values()) row.words += count;
  const text = await read(path).catch(() => undefined);
  if (text === undefined) return;
  ++row.opened;
  const counts = countsOf(text);
  for (const [word, count] of wanted) row.found += Math.min(count, counts.get(word) ?? 0);
}
