// What the package's README shows of the guides is what their projects have.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { root } from '../publish/pack.mjs';
import { guides, manifestOf, names } from './projects.mjs';

const readme = readFileSync(join(root, 'web/package/README.md'), 'utf8');
const shown = [...readme.matchAll(/<!-- web\/guides\/(\S+) -->\s*```\w+\n(.*?)```/gs)].map(([, path, code]) => ({ path, code }));

for (const { path, code } of shown)
  test(`${path} is as the README has it`, () => {
    assert.equal(code, readFileSync(join(guides, path), 'utf8'));
  });

test('each guide is in the README', () => {
  assert.deepEqual([...new Set(shown.map(({ path }) => path.split('/')[0]))].sort(), [...names].sort());
});

test('the guides are tried with what they ask for', () => {
  const tried = JSON.parse(readFileSync(join(guides, 'package.json'))).devDependencies;
  const asked = Object.assign({}, ...names.map((name) => ({ ...manifestOf(name).dependencies, ...manifestOf(name).devDependencies })));
  delete asked.pagerex;
  assert.deepEqual(Object.entries(asked).sort(), Object.entries(tried).sort());
});
