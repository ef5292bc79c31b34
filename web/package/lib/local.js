import { errorOf } from './errors.js';
import { readInto } from './input.js';
import { giveBack, take } from './pool.js';
import { openDocument, writeAll, writePages } from './run.js';

/** Calls on this thread. `call` is { request, signal, onProgress }. */

export const convertHere = (input, call) =>
  withInput(input, call, (instance) => writeAll(instance, call.request, listenerOf(call)));

export const detectHere = (input, call) => withInput(input, call, (instance) => instance.detect());

export const infoHere = (input, call) =>
  withInput(input, call, (instance) => {
    openDocument(instance, call.request);
    const told = instance.info();
    if (told.code !== undefined) throw errorOf(told);
    return told;
  });

export async function* pagesHere(input, call) {
  const instance = await take();
  try {
    await readInto(input, instance, { limits: call.request.limits, signal: call.signal });
    call.signal?.throwIfAborted();
    return yield* writePages(instance, call.request, listenerOf(call));
  } finally {
    giveBack(instance);
  }
}

async function withInput(input, call, use) {
  const instance = await take();
  try {
    await readInto(input, instance, { limits: call.request.limits, signal: call.signal });
    call.signal?.throwIfAborted();
    const told = use(instance);
    call.signal?.throwIfAborted();
    return told;
  } catch (error) {
    call.signal?.throwIfAborted();
    throw error;
  } finally {
    giveBack(instance);
  }
}

/** Progress only rises, though strides begin again. */
function listenerOf({ signal, onProgress }) {
  let told = -1;
  return {
    progress: onProgress && ((done) => done > told && onProgress((told = done))),
    mayGoOn: () => !signal?.aborted,
    check: () => signal?.throwIfAborted(),
  };
}
