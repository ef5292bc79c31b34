import type { Input, Options, Result, Warning, pages, convert } from '../index.js';

/** Texts by their keys, those of messages.js; `{count}` and the like stand for values. */
export type Messages = Record<string, string>;

export interface Converter {
  pages: typeof pages;
  convert: typeof convert;
}

export type DownloadFormat = 'html' | 'markdown' | 'text';
export type ViewerState = 'empty' | 'loading' | 'ready' | 'error';

export interface ViewerEvents {
  /** The document is whole. */
  load: CustomEvent<{ result: Result; pages: number }>;
  /** Another page is in sight, from 1 on; `pages`: of what there is by now. */
  page: CustomEvent<{ page: number; pages: number }>;
  /** From 0 to 1. */
  progress: CustomEvent<{ done: number }>;
  warning: CustomEvent<{ warnings: Warning[] }>;
  /** `sentence`: as the reader sees it; `code`: that of PagerexError, or 'unreadable'. */
  error: CustomEvent<{ error: Error; code?: string; sentence: string }>;
  /** The reader, or cancel(), has ended the conversion. */
  cancel: CustomEvent<Record<string, never>>;
}

/** <pagerex-viewer>. Attributes: src, name, theme, lang, zoom, comments, revisions, tools, nodrop. */
export class PagerexViewer extends HTMLElement {
  /** Adds a language, 'it' or 'pt-BR', or changes texts of one. */
  static addMessages(language: string, table: Messages): void;

  /** Where the document is. */
  src: string;
  /** Of the file, for its title and for downloads; as `src` or the file tells if nothing is said. */
  name: string;
  /** As the reader's screen is if nothing is said. */
  theme: '' | 'light' | 'dark' | 'auto';
  comments: '' | 'on' | 'off';
  revisions: '' | 'final' | 'original' | 'all';
  /** Names with blanks between: outline pages zoom search comments changes open print copy download; or none. */
  tools: string;

  /** The bytes of what is shown; set, it shows them. */
  get file(): Blob | undefined;
  set file(value: Input | undefined);
  /** From 1 on; 0 without a document. */
  page: number;
  readonly pageCount: number;
  get zoom(): number;
  set zoom(value: number | 'fit');
  readonly state: ViewerState;
  /** More options of a conversion. */
  options: Options;
  /** What converts in place of the package. */
  converter: Converter | undefined;
  /** Texts of this viewer alone. */
  messages: Messages | undefined;

  /** Resolves with the result, in part where the document is damaged, or with nothing: an event tells why. */
  load(source: string | URL | Input, options?: { name?: string }): Promise<Result | undefined>;
  cancel(): void;
  /** Resolves with the count of what is found. */
  search(query: string): Promise<number>;
  print(): void;
  /** What is marked, or else the whole document. Resolves with whether it was allowed. */
  copy(): Promise<boolean>;
  download(format?: DownloadFormat): Promise<void>;

  addEventListener<K extends keyof ViewerEvents>(
    type: K, listener: (this: PagerexViewer, event: ViewerEvents[K]) => void, options?: boolean | AddEventListenerOptions): void;
  addEventListener(
    type: string, listener: EventListenerOrEventListenerObject, options?: boolean | AddEventListenerOptions): void;
}

declare global {
  interface HTMLElementTagNameMap {
    'pagerex-viewer': PagerexViewer;
  }
}
