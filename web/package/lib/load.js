import { badArgument } from './errors.js';

let compiled = null;

/** The compiled module: the one that init was given, or pagerex.wasm beside the package. */
export function loadModule() {
  compiled ??= compile(new URL('../pagerex.wasm', import.meta.url));
  // What failed once, as for want of a network, may work the next time.
  compiled.catch(() => (compiled = null));
  return compiled;
}

export function useModule(source) {
  compiled = compile(source);
  return loadModule();
}

async function compile(source) {
  source = await source;
  if (source instanceof WebAssembly.Module) return source;
  if (typeof Response === 'function' && source instanceof Response) return compileResponse(source);
  if (source instanceof ArrayBuffer || ArrayBuffer.isView(source)) return WebAssembly.compile(source);
  if (typeof source === 'string') source = new URL(source, globalThis.location?.href ?? import.meta.url);
  if (!(source instanceof URL)) throw badArgument('wasm: neither an address, nor bytes, a module or a response');
  if (source.protocol === 'file:') return WebAssembly.compile(await readFile(source));
  return compileResponse(await fetch(source));
}

/** Some servers do not tell the media type that streaming insists on. */
async function compileResponse(response) {
  if (!response.ok) throw new Error(`pagerex.wasm: the server answered ${response.status}`);
  const isTold = response.headers.get('content-type')?.startsWith('application/wasm');
  if (isTold && WebAssembly.compileStreaming) return WebAssembly.compileStreaming(response);
  return WebAssembly.compile(await response.arrayBuffer());
}

/** The name stands in a variable so that no bundler looks for the module. */
async function readFile(url) {
  const files = 'node:fs/promises';
  const { readFile } = await import(/* @vite-ignore */ /* webpackIgnore: true */ files);
  return readFile(url);
}
