// Serves a folder, for tests and for a look: node web/tools/serve.mjs FOLDER [PORT]
import { createReadStream, realpathSync, statSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, sep } from 'node:path';
import { fileURLToPath } from 'node:url';

const types = {
  '.html': 'text/html; charset=utf-8',
  '.js': 'text/javascript; charset=utf-8',
  '.mjs': 'text/javascript; charset=utf-8',
  '.css': 'text/css; charset=utf-8',
  '.json': 'application/json',
  '.webmanifest': 'application/manifest+json',
  '.svg': 'image/svg+xml',
  '.png': 'image/png',
  '.wasm': 'application/wasm',
  '.doc': 'application/msword',
};

/** The file that an address names, or nothing: what lies outside the folder is not there. */
function fileOf(folder, address) {
  try {
    const name = decodeURIComponent(new URL(address, 'http://localhost').pathname);
    const path = realpathSync(join(folder, name.endsWith('/') ? `${name}index.html` : name));
    return path.startsWith(folder + sep) && statSync(path).isFile() ? path : undefined;
  } catch {
    return undefined;
  }
}

/** On this machine alone. Resolves with { address, requests, close }; port 0 is any that is free. */
export async function serve(folder, port = 0) {
  const root = realpathSync(folder);
  const requests = [];
  const server = createServer((request, response) => {
    requests.push(request.url);
    const path = fileOf(root, request.url);
    const type = types[extname(path ?? '')] ?? 'application/octet-stream';
    response.writeHead(path ? 200 : 404, { 'content-type': type, 'cache-control': 'no-cache' });
    if (path) createReadStream(path).pipe(response);
    else response.end();
  });
  await new Promise((resolve, reject) => {
    server.once('error', reject);
    server.listen(port, '127.0.0.1', resolve);
  });
  const close = () => {
    server.closeAllConnections();
    return new Promise((resolve) => server.close(resolve));
  };
  return { address: `http://127.0.0.1:${server.address().port}/`, requests, close };
}

if (process.argv[1] && realpathSync(process.argv[1]) === fileURLToPath(import.meta.url)) {
  const [folder, port = '8000'] = process.argv.slice(2);
  try {
    const { address } = await serve(folder, Number(port));
    console.log(`${address}   (Ctrl-C ends it)`);
  } catch (error) {
    console.error(error.code === 'EADDRINUSE' ? `Port ${port} is taken: name another one.` : error.message);
    process.exitCode = 1;
  }
}
