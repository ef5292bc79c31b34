/** What a document can be read from. A File is a Blob; a Buffer of Node and all typed arrays are views. */
export type InputSource =
  | Blob
  | ArrayBuffer
  | ArrayBufferView
  | Response
  | ReadableStream<Uint8Array>
  | AsyncIterable<Uint8Array>;
export type Input = InputSource | Promise<InputSource>;

export type Format = 'html' | 'markdown' | 'text' | 'normal' | 'phone' | 'preview' | 'mulpages';

/** 0, or nothing, stands for no limit. */
export interface Limits {
  /** Bytes that what is read of a document may take. */
  memory?: number;
  /** Bytes of the input. */
  inputBytes?: number;
  /** Bytes of all files together. */
  outputBytes?: number;
  /** From when the input has been read on. */
  milliseconds?: number;
}

/** What is not said is as usual; an option that a format does not know is not looked at. */
export interface Options {
  /** 'html' if nothing is said: a page for any browser of today. */
  format?: Format;
  /** Of the main file: 'document.html'. Other files go into 'document.files/'. */
  name?: string;
  /** Addresses that are kept. 'safe': of schemes that harm nobody, and relative ones. */
  links?: 'safe' | 'all' | 'none';
  /** 'usual': embedded in 'html', as files in others; 'web', of the older views: beside each a browser's own. */
  pictures?: 'usual' | 'files' | 'embedded' | 'none' | 'web';
  /** Tracked changes: all made, none made, or both states, marked. */
  revisions?: 'final' | 'original' | 'all';
  /** Behind the text, with their authors. True if nothing is said. */
  comments?: boolean;
  /** Text that Word hides. */
  hiddenText?: boolean;
  /** Headers and footers; of 'text'. */
  headers?: boolean;
  /** The document's properties in front; of 'markdown'. */
  frontMatter?: boolean;
  /** As comments; of 'markdown'. */
  pageBreaks?: boolean;
  /** Without GitHub's additions; of 'markdown'. */
  commonMark?: boolean;
  /** Columns of 'text', 20 or more; 0 for a line each paragraph. */
  width?: number;
  /** 'html' that is dark where its reader's screen is. */
  darkScheme?: boolean;
  /** Characters in a piece of 'html', on a page of 'phone' and 'mulpages', or in all of 'preview'. */
  pageSize?: number;
  limits?: Limits;
  /** Ends the call, which rejects with the signal's reason. Without a worker it is looked at between pages. */
  signal?: AbortSignal;
  /** From 0 to 1, in a hundred steps at most. What it throws ends the call. */
  onProgress?: (done: number) => void;
}

export interface OutputFile {
  readonly name: string;
  /** 'text/html; charset=utf-8' */
  readonly mediaType: string;
  readonly bytes: Uint8Array;
  /** The bytes as UTF-8. */
  text(): string;
}

export type WarningCode =
  | 'table_damaged'
  | 'outside'
  | 'ended_early'
  | 'work_limit'
  | 'output_full'
  | 'picture'
  | 'link_removed'
  | 'pictures_off'
  | 'file_short'
  | 'stopped';

/** What was left out, or mended on the way. */
export interface Warning {
  code: WarningCode;
  /** Whether something of the document is missing. */
  lost: boolean;
  /** How often; `where` is the first time. */
  count: number;
  where: string;
  /** In English. */
  sentence: string;
}

export interface Counts {
  /** UTF-16 units, marks of paragraphs, cells and fields among them. */
  characters: number;
  paragraphs: number;
  tables: number;
  pictures: number;
  /** Of a result: that were written. Of info: as Word counted them last. */
  pages: number;
}

export interface Property {
  name: string;
  value: string;
  kind: 'text' | 'integer' | 'real' | 'boolean' | 'time';
}

/** What a document says of itself. Empty, or 0, is what it does not tell; times are '2004-03-01T12:00:00Z'. */
export interface Summary {
  title: string;
  subject: string;
  author: string;
  lastAuthor: string;
  keywords: string;
  comments: string;
  category: string;
  manager: string;
  company: string;
  templateName: string;
  application: string;
  revision: string;
  /** 'de-DE' */
  language: string;
  created: string;
  saved: string;
  printed: string;
  editingMinutes: number;
  pages: number;
  words: number;
  /** Without spaces. */
  characters: number;
  paragraphs: number;
  lines: number;
  /** Bits: 1 password, 2 read-only recommended, 4 read-only enforced, 8 locked. */
  security: number;
  custom: Property[];
}

export interface Result {
  /** The main file as text. */
  readonly content: string;
  /** By name, the main file first. */
  readonly files: Map<string, OutputFile>;
  /** What the input is: 'word97'. */
  readonly kind: string;
  /** In English: what came of the call. */
  readonly sentence: string;
  /** Whether nothing was lost. */
  readonly complete: boolean;
  readonly warnings: Warning[];
  readonly counts: Counts;
  readonly summary: Summary;
}

export interface Page {
  /** From 1 on. */
  number: number;
  /** Of its file. */
  name: string;
  /** Of 'html': the next piece of the one page that all pieces are, one behind the other. */
  content: string;
}

export interface Kind {
  /** 'word97', 'docx', 'pdf', ... */
  kind: string;
  /** 'This is a Word document of 2007 or later (.docx).' */
  sentence: string;
}

export interface Info extends Kind {
  inputBytes: number;
  counts: Counts;
  summary: Summary;
}

export interface InitOptions {
  /** Where the module comes from, if not from beside the package; edge workers bring it compiled. */
  wasm?: WasmSource | Promise<WasmSource>;
  /** Whether conversions run in workers, as they do in browsers; or what makes a worker of 'pagerex/worker'. */
  worker?: boolean | (() => Worker | Promise<Worker>);
}
export type WasmSource = URL | string | BufferSource | WebAssembly.Module | Response;

/** Loads the module before it is needed. Only convertSync, and what is told here, need it. */
export function init(options?: InitOptions): Promise<void>;

/** The whole document. Rejects with a PagerexError, or with the reason of the signal. */
export function convert(input: Input, options?: Options): Promise<Result>;

/** Pages, or the pieces of 'html', while those behind them are still made. The last answer is the result. */
export function pages(input: Input, options?: Options): AsyncGenerator<Page, Result, void>;

/** What is known of a document without writing it. */
export function info(input: Input, options?: Pick<Options, 'limits' | 'signal'>): Promise<Info>;

/** What a file is, by its bytes; never an error for what they are. */
export function detect(input: Input, options?: Pick<Options, 'limits' | 'signal'>): Promise<Kind>;

/** The same as convert, at once; after init. */
export function convertSync(bytes: ArrayBuffer | ArrayBufferView, options?: Options): Result;

export type ErrorCode =
  | 'invalid_argument'
  | 'not_word'
  | 'encrypted'
  | 'damaged'
  | 'unreadable'
  | 'canceled'
  | 'deadline'
  | 'out_of_memory'
  | 'memory_limit'
  | 'output_limit'
  | 'too_large'
  | 'crash';

export class PagerexError extends Error {
  constructor(code: ErrorCode, message: string, more?: { kind?: string; result?: Result; cause?: unknown });
  readonly code: ErrorCode;
  /** What the input is, as far as it was told apart. */
  readonly kind: string;
  /** What was written before the end, with files that may be cut. */
  readonly result?: Result;
}
