import assert from 'node:assert/strict';
import { test } from 'node:test';
import { convert, convertSync, detect, info, init, pages } from '../package/index.js';
import { collect, sample, testBoth } from './support.mjs';

const isAbort = { name: 'AbortError' };
const never = () => new Promise(() => {});

testBoth('A signal that has been given ends a call before it reads anything', async () => {
  let wasRead = false;
  const stream = new ReadableStream({ pull: () => void (wasRead = true) }, { highWaterMark: 0 });
  const signal = AbortSignal.abort();
  await assert.rejects(convert(stream, { signal }), isAbort);
  await assert.rejects(collect(pages(sample, { signal })), isAbort);
  await assert.rejects(info(sample, { signal }), isAbort);
  await assert.rejects(detect(sample, { signal }), isAbort);
  assert.throws(() => convertSync(sample, { signal }), isAbort);
  assert.equal(wasRead, false);
});

testBoth('The reason of a signal is what comes of it', async () => {
  const reason = new Error('too late');
  await assert.rejects(convert(sample, { signal: AbortSignal.abort(reason) }), (error) => error === reason);
});

testBoth('A signal ends the reading of a stream that hangs, which is told', async () => {
  const controller = new AbortController();
  let told = null;
  const pull = () => {
    setTimeout(() => controller.abort(), 1);
    return never();
  };
  const stream = new ReadableStream({ pull, cancel: (reason) => void (told = reason) }, { highWaterMark: 0 });
  const call = convert(stream, { signal: controller.signal });
  await assert.rejects(call, isAbort);
  assert.equal(told?.name, 'AbortError');
});

testBoth('A signal ends the reading of an iterable that hangs, which is told', async () => {
  const controller = new AbortController();
  let told = false;
  const next = () => {
    setTimeout(() => controller.abort(), 1);
    return never();
  };
  const iterable = { [Symbol.asyncIterator]: () => ({ next, return: async () => ({ done: (told = true) }) }) };
  const call = convert(iterable, { signal: controller.signal });
  await assert.rejects(call, isAbort);
  assert.ok(told);
});

testBoth('A signal during a conversion ends it', async () => {
  const controller = new AbortController();
  const onProgress = () => controller.abort();
  await assert.rejects(convert(sample, { signal: controller.signal, onProgress }), isAbort);
  assert.equal((await convert(sample)).complete, true);
});

testBoth('A signal between pages ends them', async () => {
  const controller = new AbortController();
  const call = pages(sample, { signal: controller.signal, pageSize: 200 });
  assert.equal((await call.next()).value.number, 1);
  controller.abort();
  await assert.rejects(collect(call), isAbort);
});

testBoth('A signal that comes when all is done changes nothing', async () => {
  const controller = new AbortController();
  const result = await convert(sample, { signal: controller.signal });
  controller.abort();
  assert.equal(result.complete, true);
});

testBoth('A consumer of pages may leave early', async () => {
  const seen = [];
  for await (const { number } of pages(sample, { pageSize: 200 })) {
    seen.push(number);
    if (number === 2) break;
  }
  assert.deepEqual(seen, [1, 2]);
  assert.equal((await convert(sample)).complete, true);
});

testBoth('A consumer may leave before the first page', async () => {
  const call = pages(sample);
  assert.deepEqual(await call.return(), { done: true, value: undefined });
  assert.equal((await convert(sample)).complete, true);
});

test('Without a worker nothing is made that nobody asks for', async () => {
  const told = [];
  const call = pages(sample, { pageSize: 200, onProgress: (done) => told.push(done) });
  await call.next();
  await new Promise((resolve) => setTimeout(resolve, 20));
  assert.ok(told.at(-1) < 0.5, `went to ${told.at(-1)}`);
  await call.return();
});

test('Without a worker the event loop breathes between strides', async () => {
  let turns = 0;
  const count = setInterval(() => ++turns, 0);
  await collect(pages(sample, { pageSize: 100 }));
  clearInterval(count);
  assert.ok(turns >= 1);
});

test('Where no worker can be made, this thread does its work', async () => {
  for (const worker of [
    () => {
      throw new Error('not allowed');
    },
    () => deadWorker(),
  ]) {
    await init({ worker });
    assert.equal((await convert(sample)).complete, true);
    assert.equal((await collect(pages(sample))).result.complete, true);
  }
  await init({ worker: false });
});

/** As one whose script cannot be loaded. */
function deadWorker() {
  return {
    addEventListener: (name, hear) => name === 'error' && setTimeout(() => hear({}), 1),
    postMessage() {},
    terminate() {},
  };
}

test('A worker that dies at work is told', async () => {
  await init({ worker: () => dyingWorker() });
  await assert.rejects(convert(sample), { name: 'PagerexError', code: 'crash' });
  await init({ worker: false });
});

function dyingWorker() {
  const hearers = {};
  return {
    addEventListener: (name, hear) => (hearers[name] = hear),
    postMessage({ do: order }) {
      if (order === 'begin') setTimeout(() => hearers.message({ data: { is: 'ready' } }), 1);
      if (order === 'convert') setTimeout(() => hearers.error({}), 1);
    },
    terminate() {},
  };
}

test('A worker that hangs is ended when the time is over', async (context) => {
  let wasEnded = false;
  const hanging = { ...dyingWorker(), terminate: () => (wasEnded = true) };
  const post = hanging.postMessage;
  hanging.postMessage = (message) => message.do === 'begin' && post(message);
  await init({ worker: () => hanging });
  context.mock.timers.enable({ apis: ['setTimeout'] });
  const call = convert(sample, { limits: { milliseconds: 50 } });
  const ticking = setInterval(() => context.mock.timers.tick(200), 1);
  await assert.rejects(call, { code: 'deadline' });
  clearInterval(ticking);
  context.mock.timers.reset();
  assert.ok(wasEnded);
  await init({ worker: false });
});
