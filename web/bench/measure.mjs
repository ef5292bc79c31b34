// Lays the package beside the native library, and beside what else reads .doc in npm; prints tables in Markdown.
// web/bench/run calls it: node measure.mjs RUNS NATIVE DOCUMENTS
import { execFileSync } from 'node:child_process';
import { loadavg } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { measureInBrowser } from './browser.mjs';
import { findWords } from './words.mjs';

const [runs, native, generated] = process.argv.slice(2);
const root = fileURLToPath(new URL('../../', import.meta.url));
const documents = {
  'A page': join(root, 'samples/sample.doc'),
  'A letter': join(generated, 'letter.doc'),
  'A novel': join(generated, 'long_text.doc'),
  'A table': join(generated, 'large_table.doc'),
};

const ask = (program, ...args) => JSON.parse(execFileSync(program, args, { encoding: 'utf8', stdio: ['ignore', 'pipe', 'inherit'] }));
const inNode = (tool, format, path) => ask(process.execPath, fileURLToPath(new URL('one.mjs', import.meta.url)), tool, format, runs, path);

const ms = (value) => (value < 10 ? value.toFixed(2) : value.toFixed(0));
const mb = (kilobytes) => (kilobytes / 1024).toFixed(0);
const times = (one, other) => `${(one / other).toFixed(1)}`;
const percent = (part, all) => `${((100 * part) / all).toFixed(1)} %`;

function table(head, rows) {
  const lines = [head, head.map(() => '---'), ...rows];
  console.log(`${lines.map((cells) => `| ${cells.join(' | ')} |`).join('\n')}\n`);
}

console.log(`Node ${process.version}, medians of ${runs}; load of the machine at the start: ${loadavg()[0].toFixed(1)}\n`);

const entries = Object.entries(documents);
for (const format of ['html', 'markdown', 'text']) {
  console.log(`### Format ${format}, processor time in milliseconds\n`);
  const rows = entries.map(([name, path]) => {
    const [here, there] = [ask(native, runs, format, path), inNode('pagerex', format, path)];
    const row = [name, ms(here.first), ms(there.first), ms(here.whole), ms(there.whole), times(there.whole, here.whole), ms(there.text), ms(there.cold),
      mb(here.kilobytes), mb(there.kilobytes)];
    if (format !== 'text') return row;
    const other = inNode('word-extractor', format, path);
    return [...row, ms(other.whole), ms(other.cold), mb(other.kilobytes)];
  });
  const head = ['Document', 'native, first piece', 'Node, first piece', 'native', 'Node', 'Node / native', 'Node, as a string', 'Node, cold', 'native, MB', 'Node, MB'];
  table(format !== 'text' ? head : [...head, 'word-extractor', 'its cold', 'its MB'], rows);
}

const { version, costs } = await measureInBrowser({ folder: join(root, 'build/web/bench/page'), packaged: join(root, 'web/package'),
  documents: Object.fromEntries(entries.map(([name, path]) => [name.replace(' ', '_'), path])), runs: Number(runs) });
console.log(`### ${version}, format html, milliseconds by the clock\n`);
table(['Document', 'first piece', 'whole', 'viewer, first page on the screen', 'cold: loaded, compiled, converted'],
  entries.map(([name]) => {
    const cost = costs[name.replace(' ', '_')];
    return [name, ms(cost.first), ms(cost.whole), ms(cost.shown), ms(cost.cold)];
  }));

const rows = await findWords(process.env.PAGEREX_CORPUS ?? join(root, '../shared/corpus'));
if (rows.length > 0) {
  console.log('### Words found, of a corpus of real documents\n');
  table(['Tool', 'documents read', 'words found'],
    rows.map(({ tool, opened, documents: count, found, words }) => [tool, `${opened} of ${count}`, `${percent(found, words)} of ${words}`]));
}
