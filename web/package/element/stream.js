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

const FIRST_SLICE = 20_000; // characters
const SLICE = 60_000;
const ROW_END = '</tr>\n';
const TABLE_END = '</table>';

/** Behind a row from `at` on with much of its table to come; the end of the piece where there is none. */
function cutOf(piece, at) {
  for (;;) {
    const row = piece.indexOf(ROW_END, at);
    if (row < 0) return piece.length;
    const end = row + ROW_END.length;
    const tableEnd = piece.indexOf(TABLE_END, end);
    if (tableEnd < 0 || tableEnd - end >= SLICE) return end;
    at = tableEnd;
  }
}

/** A piece is blocks that are whole, and a long table is one: its first rows are there at once, the others in slices. */
function* slicesOf(piece) {
  let begin = 0;
  for (let most = FIRST_SLICE; piece.length - begin > most + SLICE; most = SLICE) {
    const end = cutOf(piece, begin + most);
    yield piece.slice(begin, end);
    begin = end;
  }
  if (begin < piece.length || begin === 0) yield piece.slice(begin);
}

/** Resolves with what the conversion tells in the end; `onWritten` is told how often something has been written. */
export async function stream(core, input, frame, { options, signal, onWritten }) {
  const pieces = core.pages(input, { ...options, signal });
  const breathe = slices();
  let count = 0;
  async function write(slice, isWhole) {
    frame.write(slice, isWhole);
    onWritten((count += 1));
    await (count === 1 || !isWhole ? drawn() : breathe());
    signal.throwIfAborted();
  }
  try {
    for (;;) {
      const { done, value } = await unlessAborted(pieces.next(), signal);
      if (done) return value;
      let left = value.content.length;
      for (const slice of slicesOf(value.content)) {
        left -= slice.length;
        await write(slice, left === 0);
      }
    }
  } finally {
    if (signal.aborted) Promise.resolve(pieces.return?.()).catch(() => {});
    if (frame.document) frame.end();
  }
}
