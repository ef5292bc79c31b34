import { Deadline } from './clock.js';
import { PagerexError, errorOf } from './errors.js';
import { Files } from './files.js';
import { mainNameOf, resultOrError } from './result.js';

// What a run gives before it stops, at most: the last of these and more, all.
const firstStride = 1;
const strideGrowth = 4;

const mostExpected = 16 << 20;

/** The document in an instance, from its bytes on. Throws where there is none. */
export function openDocument(instance, request) {
  const deadline = new Deadline(request.limits.milliseconds);
  const told = instance.open({ ...request.limits, milliseconds: deadline.left() });
  if (told.code !== 'ok') throw errorOf(told);
  return deadline;
}

/** Writes all in one run. `listener`: progress(done), mayGoOn(). */
export function writeAll(instance, request, listener = {}) {
  const files = new Files();
  const told = writeInto(instance, request, openDocument(instance, request), files, listener);
  return resultOrError(told, files, request);
}

export function writeInto(instance, request, deadline, files, listener) {
  // Pages and texts are about as long as their documents.
  files.expected = Math.min(1.2 * instance.length, mostExpected);
  const host = {
    begin: (name, mediaType) => files.begin(name, mediaType),
    write: (id, bytes) => files.write(id, bytes),
    end: (id, isWhole) => files.end(id, isWhole),
    ...listener,
  };
  return instance.write(request, deadline.left(), host);
}

/** Pages as they are made, in strides: each run begins the document anew and goes further than the one before,
 * so that the time between is the consumer's, and what nobody asks for is not made. */
export async function* writePages(instance, request, listener = {}) {
  const deadline = openDocument(instance, request);
  const files = new Files();
  let given = 0;
  for (let most = firstStride; ; most *= strideGrowth) {
    const { told, pages, isAll } = writeStride(instance, request, deadline, files, most, listener);
    if (isAll && told.code !== 'ok') resultOrError(told, files, request);
    while (given < pages.length) yield pages[given++];
    if (isAll) {
      const result = resultOrError(told, files, request);
      if (given === 0) yield { number: 1, name: mainNameOf(request), content: result.content };
      return result;
    }
    await breathe();
    listener.check?.();
  }
}

function writeStride(instance, request, deadline, files, most, listener) {
  const pages = [];
  let mayGoOn = true;
  const told = writeInto(instance, request, deadline, files, {
    progress: listener.progress,
    page(number, name) {
      pages.push(pageOf(number, name, files.ended.get(name)));
      mayGoOn = pages.length < most;
    },
    mayGoOn: () => mayGoOn && listener.mayGoOn?.() !== false,
  });
  if (listener.isOver?.()) throw new PagerexError('canceled', told.sentence, { kind: told.kind });
  return { told, pages, isAll: mayGoOn };
}

export const pageOf = (number, name, file) => ({ number, name, content: file?.text() ?? '' });

/** Lets the event loop do what waits. */
const breathe = () => new Promise((resolve) => setTimeout(resolve, 0));
