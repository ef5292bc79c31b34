import { existsSync, mkdirSync, readFileSync, realpathSync, renameSync, rmSync, writeFileSync } from 'node:fs';
import { basename, dirname, join } from 'node:path';
import { detect } from '../../index.js';

/** What must not be written over: an input, and any Word document. */
export async function refusalOf(output, inputs) {
  if (!existsSync(output)) return null;
  const place = realpathSync(output);
  if (inputs.some((input) => existsSync(input) && realpathSync(input) === place)) return `${output} is an input`;
  const { kind } = await detect(readFileSync(output));
  return kind.startsWith('word') && kind !== 'wordml' && kind !== 'wordperfect' ? `${output} is a Word document` : null;
}

/** Each file under another name first, so that none is seen half done; the main file last. */
export function writeResult(output, result) {
  const folder = dirname(output);
  const [main, ...others] = result.files.values();
  for (const file of others) replace(join(folder, file.name), file.bytes);
  replace(join(folder, basename(output)), main.bytes);
}

function replace(path, bytes) {
  const unfinished = `${path}.${process.pid}.tmp`;
  mkdirSync(dirname(path), { recursive: true });
  try {
    writeFileSync(unfinished, bytes);
    renameSync(unfinished, path);
  } catch (error) {
    rmSync(unfinished, { force: true });
    throw error;
  }
}
