// The package as it would be published.
import { execFileSync } from 'node:child_process';
import { mkdirSync, renameSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

export const root = fileURLToPath(new URL('../../../', import.meta.url));

/** Packs it into `folder`. Returns the path of the tarball. */
export function pack(folder) {
  mkdirSync(folder, { recursive: true });
  const told = execFileSync('npm', ['pack', '--json', '--silent', '--pack-destination', folder], {
    cwd: join(root, 'web/package'), encoding: 'utf8', stdio: ['ignore', 'pipe', 'ignore'] });
  const answer = JSON.parse(told);
  const [{ filename }] = Array.isArray(answer) ? answer : Object.values(answer);
  const tarball = join(folder, 'pagerex.tgz');
  renameSync(join(folder, filename), tarball);
  return tarball;
}
