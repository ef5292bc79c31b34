// Brings one document after the other into the viewer: reads it, converts it, shows it while it is converted.

import { drawn } from './dom.js';
import { DocumentFrame } from './frame.js';
import { LoadError, bytesOf } from './input.js';
import { stream, unlessAborted } from './stream.js';

export class Reader {
  frame;
  job;
  page = 0;
  state = 'empty';
  #abort;

  /** `events`: what happens in a frame goes to. */
  constructor(host, labels, controls, events) {
    Object.assign(this, { host, labels, controls, events });
  }

  /** `job`: { source, name, base }. Resolves with the result, also with that of a document that is not whole. */
  async open(job, page = 1) {
    this.#abort?.abort();
    const abort = new AbortController();
    this.#abort = abort;
    this.job = job;
    this.#show('loading', { name: job.name });
    this.controls.view.notice();
    let frame;
    try {
      frame = await this.#makeFrame(job, abort.signal);
      const result = await this.#convert(job, frame, { page, signal: abort.signal });
      if (this.#abort === abort) this.#finish(result);
      return result;
    } catch (error) {
      if (this.#abort === abort) this.#fail(error, abort.signal, frame);
      return error.result;
    } finally {
      if (frame !== this.frame) frame?.remove();
    }
  }

  /** The same document with other options; the reader stays where he is. */
  again() {
    if (this.job && this.state !== 'error') this.open(this.job, this.page);
  }

  /** Ends a conversion. What has been shown of the document stays. */
  cancel() {
    this.#abort?.abort();
  }

  /** Ends all, in silence. */
  leave() {
    this.#abort?.abort();
    this.#abort = undefined;
    this.#drop();
    for (const waiting of this.controls.view.stage.querySelectorAll('iframe')) waiting.remove();
  }

  // --- The steps ---

  async #makeFrame(job, signal) {
    job.input ??= await unlessAborted(bytesOf(job.source, signal), signal);
    const frame = await DocumentFrame.open(this.controls.view.stage, {
      title: job.name || this.labels.say('document'), base: job.base, signal,
      on: { ...this.events, scroll: () => this.#moved() } });
    frame.isWaiting = true;
    return frame;
  }

  async #convert(job, frame, { page, signal }) {
    const core = await unlessAborted(this.host.core(), signal);
    const options = { ...this.host.convertOptions, format: 'html', onProgress: (done) => this.#progress(done, signal) };
    return stream(core, job.input, frame, { options, signal, onWritten: (count) => this.#wrote(frame, count, page) });
  }

  #wrote(frame, count, page) {
    if (count === 1) {
      const before = this.frame;
      this.#forget();
      this.frame = frame;
      this.host.dress();
      this.controls.zoom.apply();
      frame.isWaiting = false;
      // A large document takes the browser long to take away.
      if (before) {
        before.isWaiting = true;
        drawn().then(() => before.remove());
      }
    }
    if (page > 1 && this.page < page) frame.showPage(page);
    if (count === 1) this.#moved();
  }

  #progress(done, signal) {
    if (signal.aborted) return;
    this.controls.view.done(done);
    this.#tell('progress', { done });
  }

  #finish(result) {
    this.#abort = undefined;
    this.#show('ready');
    const { frame, labels, controls: { view } } = this;
    const pages = frame?.pages.length ?? 0;
    if (frame) frame.title = result?.summary?.title || this.job.name || labels.say('document');
    view.tell(labels.say('opened', { count: pages }));
    this.controls.grown();
    this.#moved();
    if (result?.warnings?.length > 0) this.#tell('warning', { warnings: result.warnings });
    if (result?.complete === false) this.#incomplete(result.warnings?.find(({ lost }) => lost)?.sentence);
    this.#tell('load', { result, pages });
  }

  #incomplete(sentence = '') {
    this.controls.view.notice(`${this.labels.say('incomplete')} ${sentence}`.trim());
  }

  #fail(error, signal, frame) {
    this.#abort = undefined;
    const isShown = frame !== undefined && frame === this.frame;
    if (signal.aborted) {
      this.#show(this.frame ? 'ready' : 'empty');
      this.controls.view.notice(this.labels.say('canceled'));
      this.#tell('cancel', {});
    } else {
      const sentence = error instanceof LoadError ? this.labels.say('notFound', { reason: error.message }) : error.message;
      if (!isShown) this.#drop();
      this.#show(isShown ? 'ready' : 'error', { sentence });
      if (isShown) this.#incomplete(sentence);
      this.#tell('error', { error, code: error.code, sentence });
    }
    this.controls.grown();
  }

  /** Takes away what is shown. */
  #drop() {
    this.frame?.remove();
    this.#forget();
  }

  #forget() {
    this.controls.find.clear();
    this.frame = undefined;
    this.page = 0;
  }

  #moved() {
    const page = this.frame?.page ?? 0;
    const isNew = page !== this.page;
    this.page = page;
    this.controls.moved();
    if (isNew) this.#tell('page', { page, pages: this.frame.pages.length });
  }

  #show(state, more) {
    this.state = state;
    this.controls.view.show(state, more);
    this.controls.update();
  }

  #tell(type, detail) {
    this.host.dispatchEvent(new CustomEvent(type, { detail }));
  }
}
