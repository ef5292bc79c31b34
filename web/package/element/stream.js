// Writes a document into its frame while the rest of it is still being converted.

import { drawn, slices } from './dom.js';

/** A promise, or the reason of a signal that comes before it. */
export function unlessAborted(promise, signal) {
  return new Promise((resolve, reject) => {
    const stop = () => reject(signal.reason);
    if (signal.aborted) stop();
    signal.addEventListener('abort', stop, { once: true });
    Promise.resolve(promise).then(resolve, reject).finally(() => signal.removeEventListener('abort', stop));
  });
}

/** Resolves with what the conversion tells in the end; `onPiece` is told how many pieces have been written. */
export async function stream(core, input, frame, { options, signal, onPiece }) {
  const pieces = core.pages(input, { ...options, signal });
  const breathe = slices();
  try {
    for (let count = 1; ; count += 1) {
      const { done, value } = await unlessAborted(pieces.next(), signal);
      if (done) return value;
      frame.write(value.content);
      onPiece(count);
      await (count === 1 ? drawn() : breathe());
    }
  } finally {
    if (signal.aborted) Promise.resolve(pieces.return?.()).catch(() => {});
    if (frame.document) frame.end();
  }
}
