// Uses of the types that must pass, and misuses that must not. Only tsc reads it.
import { PagerexError, convert, convertSync, detect, info, init, pages } from '../package/index.js';
import type { Format, Input, Options, OutputFile, Page, Result, Warning } from '../package/index.js';
import { convertSync as alsoSync } from '../package/sync.js';

declare const file: File;
declare const stream: ReadableStream<Uint8Array>;
declare const pieces: AsyncIterable<Uint8Array>;
declare const bytes: Uint8Array;

export async function uses(): Promise<void> {
  await init();
  await init({ wasm: new URL('a.wasm', 'https://example.com'), worker: false });
  await init({ wasm: fetch('/a.wasm'), worker: () => new Worker('/worker.js', { type: 'module' }) });
  const inputs: Input[] = [file, bytes, bytes.buffer as ArrayBuffer, new DataView(new ArrayBuffer(1)), stream, pieces, fetch('/a.doc')];
  const options: Options = {
    format: 'markdown',
    name: 'a.md',
    links: 'none',
    pictures: 'embedded',
    revisions: 'all',
    comments: false,
    hiddenText: true,
    headers: true,
    frontMatter: true,
    pageBreaks: true,
    commonMark: true,
    width: 72,
    darkScheme: true,
    pageSize: 2000,
    limits: { memory: 1, inputBytes: 1, outputBytes: 1, milliseconds: 1 },
    signal: AbortSignal.timeout(1000),
    onProgress: (done: number) => void done.toFixed(),
  };
  const result: Result = await convert(inputs[0]!, options);
  const content: string = result.content;
  const one: OutputFile | undefined = result.files.get('a');
  const warnings: Warning[] = result.warnings;
  const title: string = (await info(file)).summary.title;
  const kind: string = (await detect(stream)).kind;
  const at: Result = convertSync(bytes);
  alsoSync(new ArrayBuffer(1), { format: 'text' });
  for await (const page of pages(file)) {
    const { number, name, content: html }: Page = page;
    [number.toFixed(), name, html].join();
  }
  const last = await pages(file).next();
  if (last.done) last.value.counts.pages.toFixed();
  else last.value.number.toFixed();
  const format: Format = 'html';
  [content, one?.text(), one?.bytes.length, warnings[0]?.lost, title, kind, at.complete, format].join();
}

export function caught(error: unknown): string | undefined {
  if (!(error instanceof PagerexError)) return undefined;
  if (error.code === 'not_word') return error.kind;
  return error.result?.content;
}

export async function misuses(): Promise<void> {
  // @ts-expect-error a path is no input
  await convert('letter.doc');
  // @ts-expect-error no such format
  await convert(file, { format: 'docx' });
  // @ts-expect-error a misspelt option
  await convert(file, { formats: 'html' });
  // @ts-expect-error a number, not a text
  await convert(file, { width: '72' });
  // @ts-expect-error not one of the choices
  await convert(file, { links: 'some' });
  // @ts-expect-error no such limit
  await convert(file, { limits: { seconds: 1 } });
  // @ts-expect-error at once only bytes are taken
  convertSync(file);
  // @ts-expect-error pages are no promise
  (await pages(file)).content;
  // @ts-expect-error a result does not change
  (await convert(file)).content = '';
  // @ts-expect-error no such code
  caught(new PagerexError('oops', ''));
  // @ts-expect-error neither true nor false
  await init({ worker: 'yes' });
}
