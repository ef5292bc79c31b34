import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

const compiler = fileURLToPath(new URL('../../build/web-npm/node_modules/typescript/lib/tsc.js', import.meta.url));
const uses = fileURLToPath(new URL('types_test.ts', import.meta.url));

for (const resolution of [['nodenext', 'nodenext'], ['esnext', 'bundler']])
  test(`The types hold as they are used: ${resolution[1]}`, () => {
    const [module, moduleResolution] = resolution;
    const given = ['--noEmit', '--strict', '--exactOptionalPropertyTypes', '--noUncheckedIndexedAccess', '--target', 'es2022'];
    const { status, stdout } = spawnSync(
      process.execPath,
      [compiler, ...given, '--lib', 'es2022,dom,dom.asynciterable', '--module', module, '--moduleResolution', moduleResolution, uses],
      { encoding: 'utf8' },
    );
    assert.equal(stdout, '');
    assert.equal(status, 0);
  });
