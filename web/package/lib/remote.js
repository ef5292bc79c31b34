import { PagerexError } from './errors.js';
import { Files } from './files.js';
import { readInto } from './input.js';
import { convertHere, pagesHere } from './local.js';
import { mainNameOf, resultOrError } from './result.js';
import { pageOf } from './run.js';
import { leaveWorker, takeWorker } from './workers.js';

/** Calls in a worker. `call` is { request, signal, onProgress }, as in local.js, which stands in for it. */

export async function convertThere(input, call) {
  const worker = await takeWorker();
  if (!worker) return convertHere(input, call);
  const conversation = new Conversation(worker, call);
  try {
    await conversation.send(input);
    for (;;) {
      const result = resultOf(await conversation.next(), conversation);
      if (result) return result;
    }
  } finally {
    conversation.leave();
  }
}

/** Pages come as they end. A consumer that leaves early ends the worker, which would go on otherwise. */
export async function* pagesThere(input, call) {
  const worker = await takeWorker();
  if (!worker) return yield* pagesHere(input, call);
  const conversation = new Conversation(worker, call);
  let given = 0;
  try {
    await conversation.send(input);
    for (;;) {
      const message = await conversation.next();
      if (message.is === 'page') {
        ++given;
        yield pageOf(message.number, message.name, conversation.files.ended.get(message.name));
      }
      const result = resultOf(message, conversation);
      if (!result) continue;
      if (given === 0) yield { number: 1, name: mainNameOf(call.request), content: result.content };
      return result;
    }
  } finally {
    conversation.leave();
  }
}

const resultOf = (message, { files, call }) =>
  message.is === 'end' ? resultOrError(message.told, files, call.request) : undefined;

/** What is said between a call and its worker. */
class Conversation {
  files = new Files();
  #worker;
  #heard = [];
  #wake = null;
  /** What ends the call before its end: a function that throws. */
  #over = null;
  #isDone = false;
  #timer;

  constructor(worker, call) {
    this.call = call;
    this.#worker = worker;
    worker.hear = (message) => this.#hear(message);
    call.signal?.addEventListener('abort', this.#abort);
    if (call.signal?.aborted) this.#abort();
  }

  async send(input) {
    const { request, signal } = this.call;
    const given = await input;
    this.#over?.();
    if (!this.#sendBlob(given)) await readInto(given, this.#sink(), { limits: request.limits, signal });
    this.#over?.();
    this.#worker.post({ do: 'convert', request });
    this.#watch(request.limits.milliseconds);
  }

  /** The worker reads it itself, where it can be handed over. */
  #sendBlob(given) {
    if (typeof Blob !== 'function' || !(given instanceof Blob)) return false;
    try {
      this.#worker.post({ do: 'read', blob: given, limits: this.call.request.limits });
      return true;
    } catch {
      return false;
    }
  }

  /** A copy each, of which the worker is then the owner. */
  #sink() {
    return {
      reserve: (size) => this.#worker.post({ do: 'reserve', size }),
      put: (bytes) => {
        const copy = bytes.slice();
        this.#worker.post({ do: 'put', bytes: copy }, [copy.buffer]);
      },
    };
  }

  async next() {
    while (this.#heard.length === 0 && !this.#over) await new Promise((resolve) => (this.#wake = resolve));
    this.#over?.();
    return this.#heard.shift();
  }

  leave() {
    clearTimeout(this.#timer);
    this.call.signal?.removeEventListener('abort', this.#abort);
    leaveWorker(this.#worker, this.#isDone);
  }

  #hear(message) {
    if (this.#over) return;
    if (message === null) return this.#end(new PagerexError('crash', 'The conversion broke off.'));
    if (message.is === 'failed') {
      this.#isDone = true;
      return this.#end(new PagerexError(message.error.code, message.error.message, { kind: message.error.kind }));
    }
    if (message.is === 'progress') return this.#tell(message.done);
    if (message.is === 'file') this.files.add(message.name, message.mediaType, message.bytes, message.isWhole);
    if (message.is === 'end') this.#isDone = true;
    this.#heard.push(message);
    this.#wake?.();
  }

  #tell(done) {
    try {
      this.call.onProgress?.(done);
    } catch (error) {
      this.#end(error);
    }
  }

  #abort = () => this.#end(this.call.signal.reason);

  #end(error) {
    this.#over ??= () => {
      throw error;
    };
    this.#wake?.();
  }

  /** The worker looks at its clock itself; where it hangs, it is ended. */
  #watch(milliseconds) {
    if (!milliseconds) return;
    const patience = Math.min(2 * milliseconds + 1000, 2 ** 31 - 1);
    const error = new PagerexError('deadline', 'The conversion took longer than it was given.', { kind: 'word97' });
    this.#timer = setTimeout(() => this.#end(error), patience);
  }
}
