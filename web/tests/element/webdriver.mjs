// WebKit's driver, spoken to over HTTP as the WebDriver protocol has it, on a screen that nobody sees.

import { spawn } from 'node:child_process';
import { readdirSync } from 'node:fs';
import { createServer } from 'node:net';

/** WebKit's own little browser lies beside its library, not in the path. */
function miniBrowser() {
  for (const machine of readdirSync('/usr/lib')) {
    for (const version of ['4.1', '4.0']) {
      try {
        const folder = `/usr/lib/${machine}/webkit2gtk-${version}`;
        if (readdirSync(folder).includes('MiniBrowser')) return `${folder}/MiniBrowser`;
      } catch {
        continue;
      }
    }
  }
  throw new Error('there is no MiniBrowser');
}

function freePort() {
  return new Promise((resolve) => {
    const server = createServer().listen(0, '127.0.0.1', () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });
}

/** A screen, whose number the server picks. */
function startScreen(program) {
  const server = spawn(program, ['-displayfd', '3', '-screen', '0', '1600x1200x24', '-nolisten', 'tcp'],
    { stdio: ['ignore', 'ignore', 'ignore', 'pipe'] });
  return new Promise((resolve, reject) => {
    server.once('error', reject);
    server.stdio[3].once('data', (number) => resolve([server, `:${String(number).trim()}`]));
  });
}

async function answers(address) {
  for (let attempt = 0; attempt < 200; attempt += 1) {
    try {
      return await fetch(`${address}/status`);
    } catch {
      await new Promise((resolve) => { setTimeout(resolve, 50); });
    }
  }
  throw new Error(`nobody answers at ${address}`);
}

class Driver {
  constructor(address, processes) {
    this.address = address;
    this.processes = processes;
  }

  async order(method, path, body = method === 'POST' ? {} : undefined) {
    const response = await fetch(`${this.address}${path}`, { method, body: body && JSON.stringify(body) });
    const { value } = await response.json();
    if (!response.ok) throw new Error(`${method} ${path}: ${value.error}: ${value.message}`);
    return value;
  }

  async close() {
    await this.order('DELETE', '');
    for (const each of this.processes) each.kill();
  }
}

export async function startDriver(program, screenProgram) {
  const [screen, display] = await startScreen(screenProgram);
  const port = await freePort();
  const env = { ...process.env, DISPLAY: display, GDK_BACKEND: 'x11', GTK_THEME: 'Adwaita' };
  const server = spawn(program, [`--port=${port}`], { env, stdio: 'ignore' });
  const root = `http://127.0.0.1:${port}`;
  await answers(root);
  const capabilities = { 'webkitgtk:browserOptions': { binary: miniBrowser(), args: ['--automation'] } };
  const driver = new Driver(root, [server, screen]);
  const session = await driver.order('POST', '/session', { capabilities: { alwaysMatch: capabilities } });
  driver.address = `${root}/session/${session.sessionId}`;
  await driver.order('POST', '/timeouts', { script: 60_000 });
  return driver;
}
