// Puts the demo together from web/demo, the package and the sample: node web/tools/make-demo.mjs [FOLDER]
// FOLDER, by default build/demo, is then all that a server of static files needs.
import { execFileSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { cpSync, existsSync, readFileSync, readdirSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { join, sep } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../../', import.meta.url));
const target = process.argv[2] ?? join(root, 'build/demo');
const packaged = join(root, 'web/package');

/** Of the package, what a browser asks for. */
const needed = ['index.js', 'sync.js', 'worker.js', 'lib', 'element', 'pagerex.wasm'];
const isForBrowsers = (path) => !path.endsWith('.d.ts') && !path.endsWith(join('lib', 'command'));

if (!existsSync(join(packaged, 'pagerex.wasm'))) throw new Error('web/package/pagerex.wasm is not there: web/build makes it');
rmSync(target, { recursive: true, force: true });
cpSync(join(root, 'web/demo'), target, { recursive: true });
for (const name of needed) cpSync(join(packaged, name), join(target, 'pagerex', name), { recursive: true, filter: isForBrowsers });
cpSync(join(root, 'samples/sample.doc'), join(target, 'samples/sample.doc'));
execFileSync(process.execPath, [join(root, 'web/tools/make-icons.mjs'), join(target, 'icons')]);

const files = readdirSync(target, { recursive: true })
  .filter((name) => statSync(join(target, name)).isFile())
  .map((name) => name.split(sep).join('/'))
  .sort();

/** Another version as soon as one byte differs. */
const hash = createHash('sha256');
for (const name of files) hash.update(`${name}\0`).update(readFileSync(join(target, name)));

const modules = files.filter((name) => /^pagerex\/(index|sync|lib\/.*|element\/.*)\.?js$/.test(name));
const page = readFileSync(join(target, 'index.html'), 'utf8');
const links = modules.map((name) => `<link rel="modulepreload" href="${name}">\n`).join('');
writeFileSync(join(target, 'index.html'), page.replace('</head>', `${links}</head>`));

const worker = readFileSync(join(target, 'sw.js'), 'utf8');
const kept = ['./', ...files.filter((name) => name !== 'sw.js' && name !== 'index.html')];
writeFileSync(join(target, 'sw.js'), worker
  .replace('@VERSION@', hash.digest('hex').slice(0, 16))
  .replace("['@FILES@']", JSON.stringify(kept, null, 2)));
