// The same package in other runtimes than Node.
import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { cpSync, mkdtempSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { convert } from '../package/index.js';
import { sample, samplePath } from './support.mjs';

const tools = fileURLToPath(new URL('../../build/web-npm/node_modules/', import.meta.url));
const packageFolder = fileURLToPath(new URL('../package/', import.meta.url));
const folder = mkdtempSync(join(tmpdir(), 'pagerex-runtimes-'));
after(() => rmSync(folder, { recursive: true }));

const { content } = await convert(sample);
const hashOf = (text) => createHash('sha256').update(text).digest('hex');
const expected = [hashOf(content), 'not_word', 'document.html'].join(' ');

const script = join(folder, 'use.mjs');
writeFileSync(
  script,
  `import { createHash } from 'node:crypto';
import { readFileSync } from 'node:fs';
import { convert, convertSync, init, pages } from ${JSON.stringify(join(packageFolder, 'index.js'))};
const bytes = readFileSync(${JSON.stringify(fileURLToPath(samplePath))});
const { content } = await convert(new Blob([bytes]));
const { code } = await convert(new TextEncoder().encode('hello')).catch((error) => error);
const first = (await pages(new Response(bytes), { pageSize: 500 }).next()).value.name;
if (convertSync(bytes).content !== content) throw new Error('convertSync differs');
await init({ worker: true });
if ((await convert(bytes)).content !== content) throw new Error('a worker differs');
await init({ worker: false });
console.log(createHash('sha256').update(content).digest('hex'), code, first);
`,
);

const runtimes = {
  Node: [process.execPath, [script]],
  Deno: [join(tools, '@deno/linux-x64-glibc/deno'), ['run', '--quiet', '--allow-read', '--no-remote', script]],
  Bun: [join(tools, '@oven/bun-linux-x64/bin/bun'), [script]],
};
for (const [name, [program, given]] of Object.entries(runtimes))
  test(`Converts in ${name}`, () => {
    const env = { ...process.env, DENO_DIR: join(folder, 'deno'), DENO_NO_UPDATE_CHECK: '1' };
    const { stdout, stderr } = spawnSync(program, given, { encoding: 'utf8', env, timeout: 60_000 });
    assert.equal(stdout.trim(), expected, stderr);
  });

const edgeScript = `import { convert, init } from './index.js';
import wasm from './pagerex.wasm';
await init({ wasm });
export default {
  async fetch(request) {
    const { content } = await convert(request.body);
    return new Response(content);
  },
};
`;

/** All modules of the package, as workerd wants them listed. */
function edgeConfiguration() {
  const place = join(folder, 'edge');
  cpSync(packageFolder, place, { recursive: true });
  writeFileSync(join(place, 'main.js'), edgeScript);
  const names = readdirSync(place, { recursive: true }).filter((name) => /\.js$/.test(name) && !/^(bin|element|lib\/command)\//.test(name));
  const modules = ['main.js', ...names.filter((name) => name !== 'main.js')].map((name) => `(name = "${name}", esModule = embed "${name}")`);
  modules.push('(name = "pagerex.wasm", wasm = embed "pagerex.wasm")');
  const text = `using Workerd = import "/workerd/workerd.capnp";
const config :Workerd.Config = (
  services = [(name = "main", worker = (modules = [${modules.join(', ')}], compatibilityDate = "2025-01-01"))],
  sockets = [(name = "http", address = "127.0.0.1:0", http = (), service = "main")],
);
`;
  const path = join(place, 'config.capnp');
  writeFileSync(path, text);
  return path;
}

test('Converts in an edge worker', async () => {
  const program = join(tools, '@cloudflare/workerd-linux-64/bin/workerd');
  const worker = spawn(program, ['serve', edgeConfiguration(), '--control-fd=3'], { stdio: ['ignore', 'ignore', 'pipe', 'pipe'] });
  try {
    const port = await portOf(worker);
    const response = await fetch(`http://127.0.0.1:${port}/`, { method: 'POST', body: sample });
    assert.equal(hashOf(await response.text()), hashOf(content));
  } finally {
    worker.kill();
  }
});

/** It tells on a pipe of its own where it listens. */
function portOf(worker) {
  return new Promise((resolve, reject) => {
    let complaint = '';
    worker.stderr.on('data', (text) => (complaint += text));
    worker.on('exit', () => reject(new Error(complaint)));
    worker.stdio[3].on('data', (text) => {
      const { port } = /"event":"listen".*"port":(?<port>\d+)/.exec(text)?.groups ?? {};
      if (port) resolve(port);
    });
  });
}
