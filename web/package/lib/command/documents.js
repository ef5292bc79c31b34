import { existsSync, readdirSync, statSync } from 'node:fs';
import { basename, dirname, extname, join, relative, resolve, sep } from 'node:path';

const extensions = { markdown: '.md', text: '.txt' };
const isDocument = (name) => /\.(doc|dot|wbk)$/i.test(name);

/** The files that are named, and those in folders that are: { path, below }, `below` being its place there. */
export function findDocuments(given, takeAll) {
  const found = new Map();
  for (const path of given) {
    if (path === '-' || !existsSync(path) || !statSync(path).isDirectory()) found.set(path === '-' ? path : resolve(path), path);
    else for (const one of filesBelow(path)) if (takeAll || isDocument(one)) found.set(resolve(one), one);
  }
  return [...found.values()];
}

function filesBelow(folder) {
  return readdirSync(folder, { withFileTypes: true })
    .sort((a, b) => (a.name < b.name ? -1 : 1))
    .flatMap((entry) => {
      const path = join(folder, entry.name);
      if (entry.isDirectory()) return filesBelow(path);
      return entry.isFile() ? [path] : [];
    });
}

/** Where the result of each lies in the folder: as it lies below the folder that is common to all. */
export function placesFor(paths, folder, format) {
  const common = commonFolder(paths.map((path) => dirname(resolve(path))));
  const taken = new Set();
  return paths.map((path) => {
    const place = relative(common, resolve(path)) || basename(path);
    return join(folder, freeName(place, extensions[format] ?? '.html', taken));
  });
}

function commonFolder(folders) {
  let common = folders[0].split(sep);
  for (const folder of folders) {
    const parts = folder.split(sep);
    const length = common.findIndex((part, i) => part !== parts[i]);
    if (length >= 0) common = common.slice(0, length);
  }
  return common.join(sep) || sep;
}

/** `.doc` gives way to the extension; where that name is taken, the whole one is kept, and then counted. */
function freeName(place, extension, taken) {
  const ending = extname(place);
  const short = ending.toLowerCase() === '.doc' ? place.slice(0, -ending.length) : place;
  for (let count = 1; ; ++count) {
    const stem = count === 1 ? short : count === 2 ? place : `${place}~${count - 1}`;
    if (taken.has(stem)) continue;
    taken.add(stem);
    return stem + extension;
  }
}
