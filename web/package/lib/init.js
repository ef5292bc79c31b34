import { useModule } from './load.js';
import { forget, prepare } from './pool.js';
import { useWorkers } from './workers.js';

/** Loads the module, from where it is said, and one instance of it. */
export async function init({ wasm, worker } = {}) {
  useWorkers(worker);
  if (wasm !== undefined) {
    forget();
    await useModule(wasm);
  }
  await prepare();
}
