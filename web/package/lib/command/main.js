import { createHash } from 'node:crypto';
import { appendFileSync, createReadStream, existsSync, readFileSync, statSync, writeSync } from 'node:fs';
import { availableParallelism } from 'node:os';
import { basename } from 'node:path';
import { PagerexError, convert, detect, info, init } from '../../index.js';
import { help, readArguments } from './arguments.js';
import { findDocuments, placesFor } from './documents.js';
import { refusalOf, writeResult } from './output.js';

const { version } = JSON.parse(readFileSync(new URL('../../package.json', import.meta.url), 'utf8'));
const done = 0;
const senseless = 1;
const notConverted = 2;

/** Returns the exit code. */
export async function main(given) {
  let request;
  try {
    request = readArguments(given);
  } catch (error) {
    return fail(senseless, error.message);
  }
  if (request.help) return say(`${help()}\n`);
  if (request.version) return say(`pagerex ${version}\n`);
  if (request.files.length === 0) return fail(senseless, 'no file is named; pagerex --help tells more');
  try {
    return await run(request);
  } catch (error) {
    if (error.code === 'EPIPE') return notConverted;
    if (error instanceof PagerexError && error.code === 'invalid_argument') return fail(senseless, error.message);
    return fail(notConverted, error.message);
  }
}

async function run(request) {
  const documents = findDocuments(request.files, request.all);
  if (request.info) return tellAll(documents, request);
  const isFolder = request.output !== undefined && (/[/\\]$/.test(request.output) || isDirectory(request.output));
  if (isFolder) return convertMany(documents, request);
  if (documents.length !== 1 || isDirectory(request.files[0])) return fail(senseless, 'many files need a folder: -o FOLDER/');
  return convertOne(documents[0], request);
}

async function convertOne(path, request) {
  const output = request.output ?? '-';
  const options = { ...request.convert };
  if (output === '-') {
    if (options.format === 'markdown') options.pictures ??= 'none';
  } else {
    const refusal = await refusalOf(output, [path]);
    if (refusal) return fail(senseless, `${refusal}: nothing was written`);
    options.name = basename(output);
  }
  const answer = await attempt(path, options);
  if (!answer.result) return fail(answer.error.code === 'invalid_argument' ? senseless : notConverted, messageOf(path, answer.error));
  for (const warning of answer.result.warnings) if (warning.lost) complain(`${path}: ${warning.sentence}`);
  if (output !== '-') return write(output, answer.result);
  if (answer.result.files.size > 1) return fail(senseless, `${options.format} has more than one file: -o PATH`);
  return say([...answer.result.files.values()][0].bytes);
}

/** A few at a time, each in a worker. */
async function convertMany(documents, request) {
  const places = placesFor(documents, request.output, request.convert.format);
  const jobs = Math.max(1, Math.min(request.jobs ?? availableParallelism(), documents.length));
  await init({ worker: true });
  const rest = documents.map((path, i) => ({ path, output: places[i] }));
  let failures = 0;
  const work = async () => {
    for (let next = rest.shift(); next; next = rest.shift()) if (!(await convertInto(next, documents, request))) ++failures;
  };
  await Promise.all(Array.from({ length: jobs }, work));
  if (failures > 0) complain(`${failures} of ${documents.length} files were not converted`);
  return failures > 0 ? notConverted : done;
}

async function convertInto({ path, output }, documents, request) {
  const begin = performance.now();
  const refusal = await refusalOf(output, documents);
  const answer = refusal
    ? { error: new PagerexError('refused', refusal) }
    : await attempt(path, { ...request.convert, name: basename(output) });
  if (answer.result) {
    const code = write(output, answer.result);
    if (code !== done) answer.error = new PagerexError('cannot_write', `${output} could not be written`);
  } else complain(messageOf(path, answer.error));
  if (request.report) report(path, output, answer, request, performance.now() - begin);
  return !answer.error;
}

function report(path, output, { result, error }, request, milliseconds) {
  const line = {
    path,
    status: error ? error.code : result.complete ? 'ok' : 'partial',
    sentence: (error ?? result).sentence ?? error.message,
    kind: (error ?? result).kind,
    milliseconds: Math.round(milliseconds),
    output: error ? '' : output,
    warnings: result?.warnings ?? [],
    version,
  };
  appendFileSync(request.report, `${JSON.stringify(line)}\n`);
}

async function tellAll(documents, request) {
  let code = done;
  for (const path of documents) {
    try {
      say(`${JSON.stringify(await tell(path, request.convert.limits))}\n`);
    } catch (error) {
      code = fail(notConverted, messageOf(path, error));
    }
  }
  return code;
}

async function tell(path, limits) {
  const bytes = await readAll(path);
  const what = await detect(bytes);
  const known = await info(bytes, { limits }).catch((error) => ({ error }));
  const { counts, summary } = known;
  const hash = createHash('sha256').update(bytes).digest('hex');
  return { path, ...what, bytes: bytes.length, sha256: hash, result: known.error?.code ?? 'ok', counts, summary, version };
}

async function attempt(path, options) {
  try {
    return { result: await convert(path === '-' ? process.stdin : await readAll(path), options) };
  } catch (error) {
    return { error: error instanceof PagerexError ? error : new PagerexError('unreadable', error.message, { cause: error }) };
  }
}

async function readAll(path) {
  const pieces = [];
  for await (const piece of path === '-' ? process.stdin : createReadStream(path)) pieces.push(piece);
  return Buffer.concat(pieces);
}

function write(output, result) {
  try {
    writeResult(output, result);
    return done;
  } catch (error) {
    return fail(notConverted, `${output}: ${error.message}`);
  }
}

const isDirectory = (path) => existsSync(path) && statSync(path).isDirectory();
const messageOf = (path, error) => `${path === '-' ? 'standard input' : path}: ${error.message}`;

/** A pipe may take less than all at once. */
function say(text) {
  const bytes = Buffer.from(text);
  for (let at = 0; at < bytes.length; ) {
    try {
      at += writeSync(1, bytes, at);
    } catch (error) {
      if (error.code !== 'EAGAIN') throw error;
    }
  }
  return done;
}

function complain(message) {
  process.stderr.write(`pagerex: ${message}\n`);
}

function fail(code, message) {
  complain(message);
  return code;
}
