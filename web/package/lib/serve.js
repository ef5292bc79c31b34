import { PagerexError } from './errors.js';
import { Files } from './files.js';
import { readInto } from './input.js';
import { useModule } from './load.js';
import { giveBack, prepare, take } from './pool.js';
import { openDocument, writeInto } from './run.js';

/** The worker's side of remote.js: one call at a time, its messages in their order. */
export function serve({ listen, post }) {
  let instance = null;
  let failure = null;

  const steps = {
    async begin({ module }) {
      await useModule(module);
      await prepare();
      post({ is: 'ready' });
    },
    async reserve({ size }) {
      instance ??= await take();
      instance.reserve(size);
    },
    async put({ bytes }) {
      instance ??= await take();
      instance.put(bytes);
    },
    async read({ blob, limits }) {
      instance ??= await take();
      await readInto(blob, instance, { limits });
    },
    async convert({ request }) {
      instance ??= await take();
      if (failure) throw failure;
      const told = convert(instance, request, post);
      post({ is: 'end', told });
    },
  };

  /** A step that fails is told where the call ends. */
  async function hear(message) {
    const isLast = message.do === 'convert' || message.do === 'begin';
    try {
      if (!failure || isLast) await steps[message.do](message);
    } catch (error) {
      failure = error;
      if (isLast) post({ is: 'failed', error: plain(error) });
    }
    if (!isLast) return;
    failure = null;
    if (instance) giveBack(instance);
    instance = null;
  }

  let before = Promise.resolve();
  listen((message) => (before = before.then(() => hear(message))));
}

/** Files go as they end, and with them their bytes. */
function convert(instance, request, post) {
  const deadline = openDocument(instance, request);
  const files = new Files(({ name, mediaType, bytes, isWhole }) => {
    post({ is: 'file', name, mediaType, bytes, isWhole }, [bytes.buffer]);
    files.ended.delete(name);
  });
  const progress = request.wantsProgress ? (done) => post({ is: 'progress', done }) : undefined;
  const page = (number, name) => post({ is: 'page', number, name });
  const told = writeInto(instance, request, deadline, files, { progress, page });
  for (const { name, mediaType, bytes, isWhole } of files.ended.values()) post({ is: 'file', name, mediaType, bytes, isWhole });
  return told;
}

const plain = (error) =>
  error instanceof PagerexError
    ? { code: error.code, message: error.message, kind: error.kind }
    : { code: 'crash', message: String(error?.message ?? error), kind: 'unknown' };
