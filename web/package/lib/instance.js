import { decoders } from './code_pages.js';
import { PagerexError } from './errors.js';

const encoder = new TextEncoder();
const decoder = new TextDecoder('utf-8', { ignoreBOM: true });
const goOn = 1;
const stop = -1;
const badDescriptor = 8;

/** An instance of the module, which holds one document: the other side of web/wasm/exports.cpp. */
export class Instance {
  #exports;
  #bytes = new Uint8Array(0);
  #input = 0;
  #room = 0;
  #length = 0;
  /** Who is told what a conversion writes: an object with begin, write, end, page, progress and mayGoOn. */
  #host = null;
  /** What a function of the host threw, which ends the conversion. */
  #thrown = null;
  /** After a trap nothing of it can be relied on. */
  isBroken = false;

  static async make(module) {
    const made = new Instance();
    return made.#begin(await WebAssembly.instantiate(module, made.#imports()));
  }

  static makeSync(module) {
    const made = new Instance();
    return made.#begin(new WebAssembly.Instance(module, made.#imports()));
  }

  #begin(instance) {
    this.#exports = instance.exports;
    this.#exports._initialize();
    return this;
  }

  /** Bytes of memory that it has taken: it never gives any back. */
  get size() {
    return this.#exports.memory.buffer.byteLength;
  }

  /** Bytes of input. */
  get length() {
    return this.#length;
  }

  /** Makes room for input, whose size may be a guess; puts some there; forgets it. */
  reserve(size) {
    if (size <= this.#room) return;
    const place = size < 2 ** 32 ? this.#call('resize', this.#input, size) >>> 0 : 0;
    if (place === 0) throw new PagerexError('out_of_memory', 'There is not enough memory for the input.');
    this.#input = place;
    this.#room = size;
  }
  put(bytes) {
    const length = this.#length + bytes.length;
    if (length > this.#room) this.reserve(Math.max(length, 2 * this.#room, 1 << 16));
    this.#memory().set(bytes, this.#input + this.#length);
    this.#length = length;
  }
  clear() {
    if (this.isBroken) return;
    this.#call('close');
    this.#call('resize', this.#input, 0);
    this.#input = this.#room = this.#length = 0;
  }

  /** All of these return what the module tells, as web/wasm/json.cpp puts it. */
  open({ memory, inputBytes, milliseconds }) {
    this.reserve(1);
    this.#call('open', this.#input, this.#length, memory, inputBytes, milliseconds);
    return this.#report();
  }
  write(request, milliseconds, host) {
    const names = [request.format, request.name].map((text) => encoder.encode(`${text}\0`));
    const block = this.#call('resize', 0, 4 * request.choices.length + names[0].length + names[1].length) >>> 0;
    if (block === 0) throw outOfMemory();
    new Int32Array(this.#memory().buffer, block, request.choices.length).set(request.choices);
    const format = block + 4 * request.choices.length;
    const name = format + names[0].length;
    this.#memory().set(names[0], format);
    this.#memory().set(names[1], name);
    this.#host = host;
    this.#call('write', format, request.name ? name : 0, block, request.limits.outputBytes, milliseconds);
    this.#host = null;
    this.#call('resize', block, 0);
    return this.#report();
  }
  info() {
    this.#call('info');
    return this.#report();
  }
  detect() {
    this.reserve(1);
    const kind = this.#call('detect', this.#input, this.#length);
    return { kind: this.#text(this.#call('kindName', kind)), sentence: this.#text(this.#call('kindSentence', kind)) };
  }
  version() {
    return this.#text(this.#call('version'));
  }

  #report() {
    const text = this.#text(this.#call('report'));
    if (text === '') throw outOfMemory();
    return JSON.parse(text);
  }

  /** Faults of the module end its life, and are told as such. */
  #call(name, ...values) {
    let value;
    try {
      value = this.#exports[name](...values);
    } catch (error) {
      this.isBroken = true;
      throw new PagerexError('crash', `The conversion broke off: ${error?.message ?? error}`, { cause: error });
    }
    if (this.#thrown) {
      const { error } = this.#thrown;
      this.#thrown = null;
      throw error;
    }
    return value;
  }

  /** Memory that has grown is a new buffer. */
  #memory() {
    const { buffer } = this.#exports.memory;
    if (this.#bytes.buffer !== buffer) this.#bytes = new Uint8Array(buffer);
    return this.#bytes;
  }
  #text(place) {
    const memory = this.#memory();
    place >>>= 0;
    return decoder.decode(memory.subarray(place, memory.indexOf(0, place)));
  }

  /** What a host's function throws stays here until the module has come back: it must not pass through it. */
  #ask(refusal, ask) {
    if (this.#thrown) return refusal;
    try {
      return ask(this.#host);
    } catch (error) {
      this.#thrown = { error };
      return refusal;
    }
  }

  #imports() {
    return {
      host: {
        ...this.#sink(),
        ...decoders(() => this.#memory()),
        milliseconds: () => globalThis.performance?.now() ?? Date.now(),
        number: (text) => Number(this.#text(text)),
      },
      env: { emscripten_notify_memory_growth() {} },
      wasi_snapshot_preview1: {
        fd_close: () => badDescriptor,
        proc_exit() {
          throw new Error('the module gave up');
        },
      },
    };
  }

  #sink() {
    return {
      begin: (_, name, mediaType) => this.#ask(0, (host) => host.begin(this.#text(name), this.#text(mediaType))),
      write: (_, file, data, length) =>
        this.#ask(1, (host) => {
          data >>>= 0;
          host.write(file, this.#memory().subarray(data, data + (length >>> 0)));
          return 0;
        }),
      end: (_, file, isWhole) =>
        this.#ask(1, (host) => {
          host.end(file, isWhole !== 0);
          return 0;
        }),
      page: (_, number, name) => this.#ask(0, (host) => void host.page?.(number, this.#text(name))),
      goOn: () => this.#ask(stop, (host) => (host.mayGoOn?.() === false ? stop : goOn)),
      progress: (_, done) => this.#ask(0, (host) => void host.progress?.(done)),
    };
  }
}

const outOfMemory = () => new PagerexError('out_of_memory', 'There is not enough memory.');
