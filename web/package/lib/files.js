/** A file of a result. */
class OutputFile {
  #text;
  constructor(name, mediaType, bytes, complete) {
    this.name = name;
    this.mediaType = mediaType;
    this.bytes = bytes;
    Object.defineProperty(this, 'isWhole', { value: complete });
  }
  /** All files of text are UTF-8. */
  text() {
    return (this.#text ??= new TextDecoder('utf-8', { ignoreBOM: true }).decode(this.bytes));
  }
}

/** Files as they are written: the sink of a conversion. */
export class Files {
  #open = new Map();
  #last = 0;
  /** By name, in the order in which they ended. */
  ended = new Map();

  /** `onEnd` is told of each file that is whole. */
  constructor(onEnd = () => {}) {
    this.onEnd = onEnd;
  }

  begin(name, mediaType) {
    // One that an earlier stride wrote whole is not taken again.
    const isKnown = this.ended.get(name)?.isWhole === true;
    this.#open.set(++this.#last, { name, mediaType, isKnown, bytes: new Uint8Array(isKnown ? 0 : 1 << 14), length: 0 });
    return this.#last;
  }

  write(id, bytes) {
    const file = this.#open.get(id);
    if (file.isKnown) return;
    const length = file.length + bytes.length;
    if (length > file.bytes.length) {
      const larger = new Uint8Array(Math.max(length, 2 * file.bytes.length));
      larger.set(file.bytes.subarray(0, file.length));
      file.bytes = larger;
    }
    file.bytes.set(bytes, file.length);
    file.length = length;
  }

  end(id, isWhole) {
    const file = this.#open.get(id);
    this.#open.delete(id);
    if (file.isKnown) return;
    // Rather a copy than twice the memory for as long as the result lives.
    const bytes = file.length * 1.25 < file.bytes.length ? file.bytes.slice(0, file.length) : file.bytes.subarray(0, file.length);
    this.add(file.name, file.mediaType, bytes, isWhole);
  }

  add(name, mediaType, bytes, isWhole) {
    const file = new OutputFile(name, mediaType, bytes, isWhole);
    this.ended.set(name, file);
    if (isWhole) this.onEnd(file);
  }

  /** The main file first. */
  inOrder(mainName) {
    const main = this.ended.get(mainName);
    const others = [...this.ended].filter(([name]) => name !== mainName);
    return new Map(main ? [[mainName, main], ...others] : others);
  }
}
