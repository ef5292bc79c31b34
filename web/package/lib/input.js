import { PagerexError, badArgument } from './errors.js';

const isBytes = (input) => input instanceof ArrayBuffer || ArrayBuffer.isView(input);
const isShared = (input) => typeof SharedArrayBuffer === 'function' && input instanceof SharedArrayBuffer;
const isBlob = (input) => typeof Blob === 'function' && input instanceof Blob;
const isResponse = (input) => typeof Response === 'function' && input instanceof Response;

/** A view of bytes, in place. */
export function bytesOf(input) {
  if (ArrayBuffer.isView(input)) return new Uint8Array(input.buffer, input.byteOffset, input.byteLength);
  if (input instanceof ArrayBuffer || isShared(input)) return new Uint8Array(input);
  throw badArgument('input: no bytes');
}

/** Reads an input of any kind to its end, into a sink with reserve(size) and put(bytes). */
export async function readInto(given, sink, { limits, signal }) {
  const input = await given;
  const most = limits.inputBytes || Infinity;
  if (isBytes(input) || isShared(input)) return put(bytesOf(input), sink, most);
  if (isBlob(input) && input.size <= Math.min(most, mostAtOnce)) return put(await bytesOfBlob(input), sink, most);
  const { size, stream } = partsOf(input);
  if (size > most) throw tooLarge();
  if (size) sink.reserve(size);
  await readAll(stream, sink, most, signal);
}

/** In parts it takes many turns of the event loop. */
const mostAtOnce = 64 << 20;

async function bytesOfBlob(blob) {
  try {
    return new Uint8Array(await blob.arrayBuffer());
  } catch (error) {
    throw unreadable(error);
  }
}

function put(bytes, sink, most) {
  if (bytes.length > most) throw tooLarge();
  sink.reserve(bytes.length);
  sink.put(bytes);
}

/** The size is 0 where nobody tells it. */
function partsOf(input) {
  if (isBlob(input)) return { size: input.size, stream: input.stream() };
  if (isResponse(input)) {
    if (!input.ok) throw new PagerexError('unreadable', `The input could not be read: the server answered ${input.status}.`);
    if (input.bodyUsed) throw new PagerexError('unreadable', 'The input could not be read: the response has been read already.');
    return { size: sizeOfBody(input), stream: input.body };
  }
  if (typeof input?.getReader === 'function' || typeof input?.[Symbol.asyncIterator] === 'function')
    return { size: 0, stream: input };
  throw badArgument('input: neither bytes, nor a Blob, a Response or a stream');
}

/** A compressed body grows on the way; and what a server tells is not to be relied on. */
function sizeOfBody(response) {
  const mostTrusted = 64 << 20;
  const told = Number(response.headers.get('content-length'));
  return !response.headers.has('content-encoding') && told > 0 && told <= mostTrusted ? told : 0;
}

async function readAll(stream, sink, most, signal) {
  if (!stream) return;
  const source = typeof stream.getReader === 'function' ? readerOf(stream) : iteratorOf(stream);
  let wanted = true;
  const onAbort = () => source.cancel(signal.reason);
  signal?.addEventListener('abort', onAbort, { once: true });
  try {
    for (let size = 0; ; ) {
      const { done, value } = await source.next();
      signal?.throwIfAborted();
      if (done) break;
      const bytes = bytesOfChunk(value);
      size += bytes.length;
      if (size > most) throw tooLarge();
      sink.put(bytes);
    }
    wanted = false;
  } catch (error) {
    signal?.throwIfAborted();
    throw error instanceof PagerexError ? error : unreadable(error);
  } finally {
    signal?.removeEventListener('abort', onAbort);
    if (wanted) source.cancel();
    source.end();
  }
}

function readerOf(stream) {
  const reader = stream.getReader();
  return {
    next: () => reader.read(),
    cancel: (reason) => void reader.cancel(reason).catch(() => {}),
    end: () => reader.releaseLock(),
  };
}

/** An abort does not wait for the next piece, which may never come. */
function iteratorOf(iterable) {
  const iterator = iterable[Symbol.asyncIterator]();
  let giveUp;
  const given = new Promise((_, reject) => (giveUp = reject));
  given.catch(() => {});
  return {
    next: () => Promise.race([iterator.next(), given]),
    cancel: (reason) => {
      giveUp(reason);
      Promise.resolve(iterator.return?.()).catch(() => {});
    },
    end: () => {},
  };
}

function bytesOfChunk(chunk) {
  if (!isBytes(chunk)) throw badArgument('input: a piece of the stream is no bytes');
  return bytesOf(chunk);
}

const tooLarge = () => new PagerexError('too_large', 'The input is larger than was allowed.');
const unreadable = (cause) =>
  new PagerexError('unreadable', `The input could not be read: ${cause?.message ?? cause}`, { cause });
