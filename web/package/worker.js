import { serve } from './lib/serve.js';

/** What runs in a worker of the package: in browsers, and in Node's worker_threads. */
async function portOfNode() {
  const threads = 'node:worker_threads';
  const { parentPort } = await import(/* @vite-ignore */ /* webpackIgnore: true */ threads);
  return {
    listen: (hear) => parentPort.on('message', hear),
    post: (message, transfer) => parentPort.postMessage(message, transfer),
  };
}

const portOfScope = (scope) => ({
  listen: (hear) => scope.addEventListener('message', ({ data }) => hear(data)),
  post: (message, transfer) => scope.postMessage(message, transfer),
});

const isWebWorker = typeof WorkerGlobalScope === 'function' || (typeof self === 'object' && typeof self.postMessage === 'function');
serve(isWebWorker ? portOfScope(self) : await portOfNode());
