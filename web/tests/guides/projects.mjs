// Fresh copies of the guides' projects, with the packed package and what they need, in build/web/guides.
import { execFile, execFileSync } from 'node:child_process';
import { cpSync, existsSync, mkdirSync, readFileSync, readdirSync, rmSync } from 'node:fs';
import { join } from 'node:path';
import { promisify } from 'node:util';
import { pack, root } from '../publish/pack.mjs';

const run = promisify(execFile);
const sample = join(root, 'samples/sample.doc');
export const guides = join(root, 'web/guides');
export const work = join(root, 'build/web/guides');
const bin = (path) => join(work, 'node_modules', path);

export const names = readdirSync(guides, { withFileTypes: true })
  .filter((entry) => entry.isDirectory() && entry.name !== 'node_modules')
  .map(({ name }) => name);

/** Tools are installed once for all; what was built before goes. */
export function prepare() {
  mkdirSync(work, { recursive: true });
  for (const name of names) rmSync(join(work, name), { recursive: true, force: true });
  cpSync(guides, work, { recursive: true, filter: (path) => !path.includes('node_modules') });
  execFileSync(join(root, 'web/tools/npm-setup'), [work], { stdio: 'inherit' });
  const install = ['install', '--no-save', '--offline', '--ignore-scripts', '--no-audit', '--no-fund', '--loglevel=error'];
  rmSync(bin('pagerex'), { recursive: true, force: true });
  execFileSync('npm', [...install, pack(work)], { cwd: work, stdio: 'ignore' });
  if (!existsSync(bin('pagerex/pagerex.wasm'))) throw new Error('the package was not installed, or is not whole');
  // Where it serves the sources, vite gives nothing from outside of the project.
  cpSync(bin('pagerex'), join(work, 'vite/node_modules/pagerex'), { recursive: true });
}

const vite = async (folder) => {
  cpSync(sample, join(folder, 'public/letter.doc'));
  await run(process.execPath, [bin('vite/bin/vite.js'), 'build'], { cwd: folder });
  return join(folder, 'dist');
};

const webpack = async (folder) => {
  cpSync(sample, join(folder, 'public/letter.doc'));
  await run(process.execPath, [bin('webpack-cli/bin/cli.js')], { cwd: folder });
  return join(folder, 'public');
};

/** The package as a folder of the page, without a build. */
const plain = async (folder) => {
  cpSync(bin('pagerex'), join(folder, 'pagerex'), { recursive: true });
  cpSync(sample, join(folder, 'letter.doc'));
  return folder;
};

const builds = { 'plain-html': plain, 'service-worker': plain, vite, react: vite, vue: vite, webpack };

/** Builds a project. Resolves with the folder to serve. */
export const build = (name) => builds[name](join(work, name));

export const manifestOf = (name) => JSON.parse(readFileSync(join(guides, name, 'package.json')));
