import { badArgument } from './errors.js';

const formats = ['html', 'markdown', 'text', 'normal', 'phone', 'preview', 'mulpages'];
const mostOfInt32 = 2 ** 31 - 1;

/** Options that are numbers to the module, in the order of Choices in web/wasm/exports.cpp. A list is of names
 * whose places are the numbers, the first one being usual. */
const choices = [
  ['pageSize', 'count'],
  ['links', ['safe', 'all', 'none']],
  ['pictures', ['usual', 'files', 'embedded', 'none', 'web']],
  ['revisions', ['final', 'original', 'all']],
  ['comments', 'unless'],
  ['hiddenText', 'flag'],
  ['headers', 'flag'],
  ['frontMatter', 'flag'],
  ['pageBreaks', 'flag'],
  ['commonMark', 'flag'],
  ['width', 'count'],
  ['darkScheme', 'flag'],
];
const limitNames = ['memory', 'inputBytes', 'outputBytes', 'milliseconds'];

/** Options as the module takes them: plain, so that they can be posted to a worker. */
export function requestOf(options = {}) {
  if (options === null || typeof options !== 'object') throw badArgument('options: not an object');
  const { format = 'html', name = '', limits = {}, signal, onProgress } = options;
  if (!formats.includes(format)) throw badArgument(`format: ${shown(format)} is none of ${formats.join(', ')}`);
  if (typeof name !== 'string' || /[/\0-\x1f]/.test(name)) throw badArgument(`name: ${shown(name)} is no name of a file`);
  if (signal !== undefined && typeof signal?.addEventListener !== 'function') throw badArgument('signal: no AbortSignal');
  if (onProgress !== undefined && typeof onProgress !== 'function') throw badArgument('onProgress: no function');
  return {
    format,
    name,
    choices: choices.map(([key, kind]) => choiceOf(key, kind, options[key])),
    limits: limitsOf(limits),
    wantsProgress: onProgress !== undefined,
  };
}

function choiceOf(key, kind, value) {
  if (kind === 'unless') return Number(!flagOf(key, value ?? true));
  if (value === undefined) return 0;
  if (kind === 'flag') return Number(flagOf(key, value));
  if (kind === 'count') return countOf(key, value, mostOfInt32);
  const place = kind.indexOf(value);
  if (place < 0) throw badArgument(`${key}: ${shown(value)} is none of ${kind.join(', ')}`);
  return place;
}

function flagOf(key, value) {
  if (typeof value !== 'boolean') throw badArgument(`${key}: ${shown(value)} is neither true nor false`);
  return value;
}

function countOf(key, value, most) {
  if (!Number.isInteger(value) || value < 0) throw badArgument(`${key}: ${shown(value)} is no whole number from 0 on`);
  return Math.min(value, most);
}

function limitsOf(limits) {
  if (limits === null || typeof limits !== 'object') throw badArgument('limits: not an object');
  return Object.fromEntries(
    limitNames.map((key) => {
      const value = limits[key] ?? 0;
      if (typeof value !== 'number' || !(value >= 0)) throw badArgument(`limits.${key}: ${shown(value)} is no number from 0 on`);
      // No limit is 0 to the module; what is between 0 and 1 is one all the same.
      return [key, value === Infinity ? 0 : Math.min(Math.ceil(value), Number.MAX_SAFE_INTEGER)];
    }),
  );
}

const shown = (value) => (typeof value === 'string' ? `"${value}"` : String(value));
