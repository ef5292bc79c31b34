import { PagerexError } from './errors.js';

const now = () => globalThis.performance?.now() ?? Date.now();

/** What is left of limits.milliseconds, which count from when the bytes are there; 0 for no limit. */
export class Deadline {
  #end;
  constructor(milliseconds) {
    this.#end = milliseconds ? now() + milliseconds : 0;
  }
  left() {
    if (this.#end === 0) return 0;
    const left = Math.ceil(this.#end - now());
    if (left <= 0) throw new PagerexError('deadline', 'The conversion took longer than it was given.', { kind: 'word97' });
    return left;
  }
}
