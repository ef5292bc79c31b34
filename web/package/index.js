import { requestOf } from './lib/options.js';
import { convertHere, detectHere, infoHere, pagesHere } from './lib/local.js';
import { convertThere, pagesThere } from './lib/remote.js';
import { wantsWorker } from './lib/workers.js';

export { PagerexError } from './lib/errors.js';
export { init } from './lib/init.js';
export { convertSync } from './sync.js';

/** What pages come in where nobody says otherwise: the first one fills a screen. */
const usualPieces = { html: 20000 };

export async function convert(input, options) {
  const call = callOf(options, input);
  return wantsWorker() ? convertThere(input, call) : convertHere(input, call);
}

export async function* pages(input, options = {}) {
  const pageSize = options.pageSize ?? usualPieces[options.format ?? 'html'];
  const call = callOf(pageSize ? { ...options, pageSize } : options, input);
  return yield* wantsWorker() ? pagesThere(input, call) : pagesHere(input, call);
}

export async function info(input, options) {
  return infoHere(input, callOf(options, input));
}

export async function detect(input, options) {
  return detectHere(input, callOf(options, input));
}

function callOf(options, input) {
  // A promise that fails while nothing waits for it yet is no fault of its owner.
  if (typeof input?.then === 'function') input.then(undefined, () => {});
  const request = requestOf(options);
  options?.signal?.throwIfAborted();
  return { request, signal: options?.signal, onProgress: options?.onProgress };
}
