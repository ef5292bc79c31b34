// Serves the package and the pages of the tests, and remembers what was asked for.

import { readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';

const folder = (path) => fileURLToPath(new URL(path, import.meta.url));
const ROOTS = {
  package: folder('../../package'),
  pages: folder('pages'),
  samples: folder('../../../samples'),
  modules: folder('../../../build/npm/node_modules'),
};
const TYPES = { '.html': 'text/html;charset=utf-8', '.js': 'text/javascript', '.css': 'text/css',
  '.doc': 'application/msword', '.wasm': 'application/wasm' };

/** A page that allows nothing but what is its own, and no text as markup. */
const STRICT = "default-src 'none';script-src 'self' 'wasm-unsafe-eval';style-src 'self';connect-src 'self';"
  + "worker-src 'self';img-src 'self' data:;frame-src 'self';require-trusted-types-for 'script'";

/** `documents`: bytes by their path; `module`: the path of pagerex.wasm. */
export async function serve({ documents = {}, module } = {}) {
  const requests = [];
  const server = createServer((request, response) => {
    const { pathname } = new URL(request.url, 'http://localhost');
    const [, root, ...rest] = pathname.split('/');
    const name = normalize(rest.join('/'));
    if (root === 'asked') { // whether a page has been asked for
      response.statusCode = requests.some((path) => path.endsWith(`/${name}`)) ? 200 : 404;
      response.end();
      return;
    }
    requests.push(pathname);
    try {
      const isModule = pathname === '/package/pagerex.wasm';
      const bytes = documents[pathname] ?? readFileSync(isModule ? module : join(ROOTS[root], name));
      if (name === 'strict.html') response.setHeader('content-security-policy', STRICT);
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
