import { parseArgs } from 'node:util';

/** Names and meanings are those of the native program. `option`: of convert. */
export const options = {
  output: { short: 'o', argument: 'PATH', help: 'file to write, or folder for many; "-" is standard output' },
  format: { short: 't', argument: 'FORMAT', option: 'format', help: 'what to write: html, or what the ending of PATH tells' },
  links: { argument: 'WHICH', option: 'links', help: 'addresses to keep: safe (the default), all, none' },
  pictures: { argument: 'WHERE', option: 'pictures', help: 'files, embedded, none or web' },
  pagesize: { argument: 'N', option: 'pageSize', number: true, help: 'characters on a page, or in a piece of html' },
  revisions: { argument: 'WHICH', option: 'revisions', help: 'tracked changes: final (the default), original, all' },
  'hidden-text': { option: 'hiddenText', help: 'write text that Word hides too' },
  'no-comments': { option: 'comments', value: false, help: 'leave out comments' },
  headers: { option: 'headers', help: 'write headers and footers too, in text' },
  width: { argument: 'N', option: 'width', number: true, help: 'wrap the lines of text at N columns' },
  'front-matter': { option: 'frontMatter', help: "begin markdown with the document's properties" },
  'page-breaks': { option: 'pageBreaks', help: 'mark in markdown where pages were broken' },
  'common-mark': { option: 'commonMark', help: 'write markdown as CommonMark alone' },
  dark: { option: 'darkScheme', help: "make html dark where the reader's screen is" },
  info: { help: 'tell what each FILE is, as JSON' },
  all: { help: 'take every file of a folder, whatever its name' },
  jobs: { short: 'j', argument: 'N', number: true, help: 'documents at a time; one for each core by default' },
  timeout: { argument: 'SECONDS', number: true, help: 'give up a document that takes longer' },
  memory: { argument: 'SIZE', size: true, help: 'give up a document that takes more: 64M' },
  report: { argument: 'FILE', help: 'add a line of JSON for each document to FILE' },
  help: { short: 'h', help: 'show this' },
  version: { help: 'show the version' },
};

const formats = ['html', 'markdown', 'text', 'normal', 'phone', 'preview', 'mulpages'];
const endings = { '.html': 'html', '.htm': 'html', '.md': 'markdown', '.markdown': 'markdown', '.txt': 'text' };
const units = { K: 2 ** 10, M: 2 ** 20, G: 2 ** 30 };

/** What the command line asks for: { files, output, convert, ... }; throws an Error that tells what is wrong. */
export function readArguments(given) {
  const { values, positionals } = parseArgs({
    args: given,
    allowPositionals: true,
    options: Object.fromEntries(
      Object.entries(options).map(([name, { short, argument }]) => [name, { type: argument ? 'string' : 'boolean', ...(short && { short }) }]),
    ),
  });
  const convert = {};
  for (const [name, row] of Object.entries(options)) {
    if (values[name] === undefined) continue;
    if (row.number) values[name] = numberOf(name, values[name]);
    if (row.size) values[name] = sizeOf(name, values[name]);
    if (row.option) convert[row.option] = row.value ?? values[name];
  }
  convert.format ??= formatOf(values.output);
  if (!formats.includes(convert.format)) throw new Error(`--format: "${convert.format}" is none of ${formats.join(', ')}`);
  convert.limits = { milliseconds: (values.timeout ?? 0) * 1000, memory: values.memory ?? 0 };
  return { ...values, files: positionals, convert };
}

function formatOf(output = '') {
  const ending = Object.keys(endings).find((one) => output.toLowerCase().endsWith(one));
  return ending ? endings[ending] : 'html';
}

function numberOf(name, text) {
  if (!/^\d+(\.\d+)?$/.test(text)) throw new Error(`--${name}: "${text}" is no number`);
  return Number(text);
}

function sizeOf(name, text) {
  const [, number, unit] = /^(\d+)([KMG]?)$/i.exec(text) ?? [];
  if (!number) throw new Error(`--${name}: "${text}" is no size; as 64M`);
  return Number(number) * (units[unit.toUpperCase()] ?? 1);
}

export function help() {
  const rows = Object.entries(options).map(([name, { short, argument, help }]) => [
    `  ${short ? `-${short}, ` : '    '}--${name}${argument ? ` ${argument}` : ''}`,
    help,
  ]);
  const width = Math.max(...rows.map(([left]) => left.length));
  return `Usage: pagerex [OPTIONS] [-t FORMAT] [-o PATH] FILE
       pagerex [OPTIONS] [-t FORMAT] -o FOLDER FILES...
Word 97-2003 documents to HTML, text and Markdown. Folders are taken whole; "-" is standard input.

${rows.map(([left, right]) => `${left.padEnd(width)}  ${right}`).join('\n')}
FORMAT: ${formats.join(' ')}
  pagerex -o letter.html letter.doc     a page, pictures and all
  pagerex -t text letter.doc            the text, on the terminal
  pagerex -o out/ documents             a whole folder
Exit code: 0 all converted, 1 the arguments make no sense, 2 something was not converted`;
}
