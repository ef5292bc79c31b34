import { loadModule } from './load.js';

// A conversion keeps one core busy.
const most = Math.min(globalThis.navigator?.hardwareConcurrency || 2, 4);

// Bundlers take what an import.meta.url stands beside: once, for the worker that they make. Some tell a file: here.
const here = import.meta.url;

let make = null;
let isWanted = typeof window === 'object' && typeof document === 'object' && typeof Worker === 'function';
let idle = [];
let running = 0;
let waiting = [];
let made = 0;

/** `worker` of init: whether there are any, or what makes one. Undefined leaves it as it is. */
export function useWorkers(worker) {
  if (worker === undefined) return;
  isWanted = worker !== false;
  make = typeof worker === 'function' ? worker : null;
  for (const one of idle) one.terminate();
  idle = [];
  ++made;
}

export const wantsWorker = () => isWanted;

/** A worker that is ready, for one call; null where there can be none. */
export async function takeWorker() {
  if (running >= most) await new Promise((resolve) => waiting.push(resolve));
  else ++running;
  const worker = idle.pop() ?? (await begin());
  worker?.ref?.();
  if (!worker) free();
  return worker;
}

/** Back for the next call; one that is at work still ends. */
export function leaveWorker(worker, isDone) {
  worker.hear = null;
  if (isDone && isWanted && worker.generation === made) idle.push(worker);
  else worker.terminate();
  worker.unref?.();
  free();
}

function free() {
  const next = waiting.shift();
  if (next) next();
  else --running;
}

/** A page's policy, or where its scripts lie, may allow no workers: then this thread has to do. */
async function begin() {
  const generation = made;
  const module = await loadModule();
  try {
    const worker = new RemoteWorker(await (make ?? usualWorker)(), generation);
    await worker.begin(module);
    return worker;
  } catch {
    if (generation === made) isWanted = false;
    return null;
  }
}

class RemoteWorker {
  #worker;
  /** Is told each message, and null when the worker died. */
  hear = null;

  constructor(worker, generation) {
    this.#worker = worker;
    this.generation = generation;
    worker.addEventListener('message', ({ data }) => this.hear?.(data));
    worker.addEventListener('error', (event) => {
      event.preventDefault?.();
      this.hear?.(null);
    });
  }
  async begin(module) {
    const { promise, settle } = later();
    this.hear = settle;
    this.post({ do: 'begin', module });
    const message = await promise;
    this.hear = null;
    if (message?.is === 'ready') return;
    this.terminate();
    throw new Error('no worker');
  }
  post(message, transfer) {
    this.#worker.postMessage(message, transfer);
  }
  terminate() {
    this.#worker.terminate();
  }
  ref() {
    this.#worker.ref?.();
  }
  unref() {
    this.#worker.unref?.();
  }
}

function later() {
  let settle;
  const promise = new Promise((resolve) => (settle = resolve));
  return { promise, settle };
}

function usualWorker() {
  if (typeof Worker !== 'function') return nodeWorker();
  const { protocol, origin } = new URL(here);
  const isElsewhere = protocol.startsWith('http') && globalThis.location?.origin && origin !== location.origin;
  if (!isElsewhere) return new Worker(new URL('../worker.js', import.meta.url), { type: 'module' });
  // From another origin a worker can be imported, though not begun.
  const script = `import ${JSON.stringify(new URL('../worker.js', here).href)};`;
  return new Worker(URL.createObjectURL(new Blob([script], { type: 'text/javascript' })), { type: 'module' });
}

async function nodeWorker() {
  const threads = 'node:worker_threads';
  const { Worker } = await import(/* @vite-ignore */ /* webpackIgnore: true */ threads);
  const worker = new Worker(new URL('../worker.js', here));
  return {
    addEventListener: (name, hear) => worker.on(name, (value) => hear(name === 'message' ? { data: value } : {})),
    postMessage: (message, transfer) => worker.postMessage(message, transfer),
    terminate: () => void worker.terminate(),
    ref: () => worker.ref(),
    unref: () => worker.unref(),
  };
}
