import { PagerexError } from './errors.js';
import { Instance } from './instance.js';
import { loadModule } from './load.js';

// One document each; a module's memory never shrinks, so that those that have grown go.
const mostIdle = 2;
const mostBytes = 64 << 20;

const idle = [];
let module = null;

export async function prepare() {
  module = await loadModule();
  if (idle.length === 0) idle.push(await Instance.make(module));
}

/** Instances of another module are not wanted any more. */
export function forget() {
  module = null;
  idle.length = 0;
}

export async function take() {
  module ??= await loadModule();
  return idle.pop() ?? Instance.make(module);
}

export function takeNow() {
  if (!module) throw new PagerexError('invalid_argument', 'convertSync: call init first, and wait for it');
  return idle.pop() ?? Instance.makeSync(module);
}

export function giveBack(instance) {
  try {
    instance.clear();
  } catch {
    return;
  }
  if (!instance.isBroken && instance.size <= mostBytes && idle.length < mostIdle) idle.push(instance);
}
