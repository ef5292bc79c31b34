import { errorOf } from './errors.js';

const extensions = { markdown: '.md', text: '.txt' };

export const mainNameOf = (request) => request.name || `document${extensions[request.format] ?? '.html'}`;

/** Of what the module told and the files that it wrote. */
export class Result {
  #main;
  constructor(told, files, mainName) {
    this.#main = files.ended.get(mainName);
    this.files = files.inOrder(mainName);
    for (const name of ['kind', 'sentence', 'complete', 'warnings', 'counts', 'summary']) this[name] = told[name];
  }
  /** The main file as text. */
  get content() {
    return this.#main ? this.#main.text() : '';
  }
}

/** The result, or the error that tells what came instead of it, with what there is of one. */
export function resultOrError(told, files, request) {
  const mainName = mainNameOf(request);
  if (told.code === 'ok') return new Result(told, files, mainName);
  throw errorOf(told, files.ended.size > 0 ? new Result(told, files, mainName) : undefined);
}
