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
  /** How many bytes a file may have that comes in more than one part. */
  expected = 0;

  /** `onEnd` is told of each file that is whole. */
  constructor(onEnd = () => {}) {
    this.onEnd = onEnd;
  }

  begin(name, mediaType) {
    // One that an earlier stride wrote whole is not taken again.
    const isKnown = this.ended.get(name)?.isWhole === true;
    this.#open.set(++this.#last, { name, mediaType, isKnown, bytes: new Uint8Array(0), length: 0 });
    return this.#last;
  }

  write(id, bytes) {
    const file = this.#open.get(id);
    if (file.isKnown) return;
    if (file.length === 0) {
      file.bytes = bytes.slice();
    } else {
      this.#reserve(file, file.length + bytes.length);
      file.bytes.set(bytes, file.length);
    }
    file.length += bytes.length;
  }

  #reserve(file, length) {
    if (length <= file.bytes.length) return;
    const larger = new Uint8Array(Math.max(length, 2 * file.bytes.length, this.expected));
    larger.set(file.bytes.subarray(0, file.length));
    file.bytes = larger;
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
