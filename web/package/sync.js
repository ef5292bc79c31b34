import { bytesOf } from './lib/input.js';
import { requestOf } from './lib/options.js';
import { giveBack, takeNow } from './lib/pool.js';
import { writeAll } from './lib/run.js';

export { PagerexError } from './lib/errors.js';
export { init } from './lib/init.js';

/** As convert, at once: of bytes, after init. */
export function convertSync(input, options = {}) {
  const request = requestOf(options);
  const { signal, onProgress } = options;
  signal?.throwIfAborted();
  const bytes = bytesOf(input);
  const instance = takeNow();
  try {
    instance.put(bytes);
    return writeAll(instance, request, { progress: onProgress, mayGoOn: () => !signal?.aborted });
  } catch (error) {
    signal?.throwIfAborted();
    throw error;
  } finally {
    giveBack(instance);
  }
}
