// Serves the package and the pages of the tests, and converts by the native program for pages that have no module.

import { execFile } from 'node:child_process';
import { mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { extname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';

const HERE = fileURLToPath(new URL('.', import.meta.url));
const ROOTS = {
  package: fileURLToPath(new URL('../../package', import.meta.url)),
  pages: join(HERE, 'pages'),
  samples: fileURLToPath(new URL('../../../samples', import.meta.url)),
  modules: join(HERE, 'node_modules'),
};
const TYPES = { '.html': 'text/html;charset=utf-8', '.js': 'text/javascript', '.mjs': 'text/javascript',
  '.css': 'text/css', '.doc': 'application/msword', '.wasm': 'application/wasm' };

const bodyOf = async (request) => {
  const parts = [];
  for await (const part of request) parts.push(part);
  return Buffer.concat(parts);
};

/** What the native program makes of a document: { code, sentence, files }, the main file first. */
function convertNatively(pagerex, bytes, args) {
  const folder = mkdtempSync(join(tmpdir(), 'pagerex-'));
  const target = join(folder, 'out.html');
  writeFileSync(join(folder, 'in.doc'), bytes);
  return new Promise((resolve) => {
    execFile(pagerex, [...args, '-o', target, join(folder, 'in.doc')], (error, _out, complaint) => {
      if (error) {
        resolve({ code: 'not_word', sentence: String(complaint).replace(/^.*in\.doc: /s, '').trim() });
      } else {
        const read = (path) => readFileSync(path, 'utf8');
        const rest = readdirSync(folder).includes('out.files') ? readdirSync(join(folder, 'out.files')) : [];
        rest.sort((one, other) => Number.parseInt(one, 10) - Number.parseInt(other, 10));
        resolve({ files: [read(target), ...rest.map((name) => read(join(folder, 'out.files', name)))] });
      }
      rmSync(folder, { recursive: true });
    });
  });
}

/** `documents`: bytes by their name, under /documents/. */
export async function serve({ pagerex, documents = {} } = {}) {
  const requests = [];
  const server = createServer(async (request, response) => {
    const { pathname, searchParams } = new URL(request.url, 'http://localhost');
    requests.push(pathname);
    const [, root, ...rest] = pathname.split('/');
    try {
      if (root === 'convert') {
        const answer = await convertNatively(pagerex, await bodyOf(request), searchParams.getAll('arg'));
        response.setHeader('content-type', 'application/json');
        response.end(JSON.stringify(answer));
        return;
      }
      const name = normalize(rest.join('/'));
      const bytes = root === 'documents' ? documents[name] : readFileSync(join(ROOTS[root], name));
      if (searchParams.has('policy')) response.setHeader('content-security-policy', searchParams.get('policy'));
      response.setHeader('content-type', TYPES[extname(name)] ?? 'application/octet-stream');
      response.end(bytes);
    } catch {
      response.statusCode = 404;
      response.end();
    }
  });
  await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
  return { root: `http://127.0.0.1:${server.address().port}`, requests, close: () => server.close() };
}
