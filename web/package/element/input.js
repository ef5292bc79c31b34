// Where documents come from: an address, a file, what is dropped or pasted.

/** What is told of a file that is not there, or not to be had. */
export class LoadError extends Error {
  code = 'unreadable';

  constructor(reason) {
    super(reason);
    this.reason = reason;
  }
}

async function fetched(address, signal) {
  const response = await fetch(address, { signal }).catch((error) => {
    throw signal.aborted ? error : new LoadError(error.message);
  });
  if (!response.ok) throw new LoadError([response.status, response.statusText].filter(Boolean).join(' '));
  return response.blob();
}

/** A source as bytes that can be read again: the reader may want other revisions, or a download. */
export async function bytesOf(source, signal) {
  const input = await source;
  if (input instanceof Blob) return input;
  if (typeof input === 'string' || input instanceof URL) return fetched(input, signal);
  if (input instanceof Response) return input.blob();
  if (input instanceof ArrayBuffer || ArrayBuffer.isView(input)) return new Blob([input]);
  if (input instanceof ReadableStream) return new Response(input).blob();
  const parts = [];
  for await (const part of input) parts.push(part);
  return new Blob(parts);
}

/** "letter.doc" of an address. */
export function nameOf(source) {
  if (source instanceof File) return source.name;
  if (typeof source !== 'string' && !(source instanceof URL)) return '';
  try {
    return decodeURIComponent(new URL(source, document.baseURI).pathname.split('/').pop());
  } catch {
    return '';
  }
}

const AROUND = ['dragenter', 'dragover', 'dragend', 'drop'];
const GONE_MILLISECONDS = 1000;

const hasFiles = (transfer) => Array.from(transfer?.types ?? []).includes('Files');

/** Opens what is dropped on `host`, or pasted in it; `isWanted()` tells whether to. */
export class Intake {
  constructor(host, { isWanted, onDrag, onFile }) {
    Object.assign(this, { host, isWanted, onDrag, onFile });
    host.addEventListener('dragover', this);
    host.addEventListener('drop', this);
    host.addEventListener('dragleave', this);
    host.addEventListener('paste', this);
  }

  /** The page around, from which files come: the frame of a document would keep them to itself. */
  connect() {
    for (const type of AROUND) document.addEventListener(type, this.#around);
  }

  disconnect() {
    for (const type of AROUND) document.removeEventListener(type, this.#around);
  }

  #around = (event) => {
    clearTimeout(this.timer);
    // A file that leaves the window tells nobody, but it is no longer dragged over anything.
    this.timer = setTimeout(() => this.#drag(false, false), GONE_MILLISECONDS);
    if (event.type === 'dragend' || event.type === 'drop') {
      this.#drag(false, false);
    } else if (event.type === 'dragenter' && this.isWanted() && hasFiles(event.dataTransfer)) {
      this.#drag(true, this.host.contains(event.target));
    }
  };

  #drag(isDragged, isOver) {
    this.onDrag(isDragged, isOver);
  }

  handleEvent(event) {
    const transfer = event.dataTransfer ?? event.clipboardData;
    if (!this.isWanted() || !hasFiles(transfer)) return;
    if (event.type === 'dragleave') {
      if (!this.host.contains(event.relatedTarget)) this.#drag(true, false);
      return;
    }
    event.preventDefault();
    if (event.type === 'dragover') {
      transfer.dropEffect = 'copy';
      this.#drag(true, true);
      return;
    }
    this.#drag(false, false);
    const [file] = transfer.files;
    if (file) this.onFile(file);
  }
}
