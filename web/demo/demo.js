import { convert } from './pagerex/index.js';
import './pagerex/element/index.js';

const find = (selector) => document.querySelector(selector);
const viewer = find('pagerex-viewer');
const source = find('.source');
const endings = { html: 'html', markdown: 'md', text: 'txt' };
const shown = { name: '', format: 'page', begin: 0 };

// --- Documents come ---

const open = (input, name) => {
  Object.assign(shown, { name: name ?? input.name ?? 'document.doc', begin: performance.now() });
  show('page');
  return viewer.load(input, { name: shown.name });
};

find('#choose').addEventListener('click', () => find('#chooser').click());
find('#sample').addEventListener('click', () => open('samples/sample.doc', 'sample.doc'));
find('#chooser').addEventListener('change', ({ target }) => {
  if (target.files[0]) open(target.files[0]);
  target.value = '';
});

/** What is dropped or pasted beside the viewer is meant for it too. */
function take(event) {
  const transfer = event.dataTransfer ?? event.clipboardData;
  if (event.defaultPrevented || !Array.from(transfer?.types ?? []).includes('Files')) return;
  event.preventDefault();
  if (event.type !== 'dragover' && transfer.files[0]) open(transfer.files[0]);
}
for (const type of ['dragover', 'drop', 'paste']) document.addEventListener(type, take);
for (const type of ['drop', 'paste']) viewer.addEventListener(type, () => (shown.begin = performance.now()), true);

/** Files that the installed page was asked to open. */
globalThis.launchQueue?.setConsumer(async ({ files }) => {
  if (files.length > 0) open(await files[0].getFile());
});

// --- What is told of them ---

viewer.addEventListener('load', ({ detail }) => {
  // Documents that a script gave to the viewer began nobody knows when.
  const time = shown.begin ? ` · ${Math.round(performance.now() - shown.begin)} ms` : '';
  const pages = detail.pages === 1 ? '1 page' : `${detail.pages} pages`;
  shown.name = viewer.file?.name ?? shown.name;
  find('.told').textContent = `${shown.name} · ${pages}${time}`;
  document.title = detail.result?.summary.title || shown.name;
  shown.begin = 0;
  update(true);
});
viewer.addEventListener('error', () => {
  find('.told').textContent = '';
  update(false);
});

function update(isThere) {
  document.body.classList.toggle('is-empty', viewer.state === 'empty');
  find('.formats').hidden = !isThere;
  find('#again').hidden = viewer.state === 'empty';
}

find('#again').addEventListener('click', () => location.reload());

// --- As text ---

for (const button of document.querySelectorAll('[data-format]'))
  button.addEventListener('click', () => show(button.dataset.format));

async function show(format) {
  shown.format = format;
  for (const button of document.querySelectorAll('[data-format]'))
    button.setAttribute('aria-pressed', String(button.dataset.format === format));
  source.hidden = format === 'page';
  viewer.inert = format !== 'page';
  if (format === 'page') return;
  const { content } = await convert(viewer.file, { format, pictures: format === 'html' ? 'usual' : 'none' });
  if (shown.format !== format) return;
  find('pre').textContent = content;
  find('pre').scrollTop = 0;
}

find('#copy').addEventListener('click', async ({ target }) => {
  await navigator.clipboard.writeText(find('pre').textContent);
  target.textContent = 'Copied';
  setTimeout(() => (target.textContent = 'Copy'), 1500);
});

find('#save').addEventListener('click', () => {
  const name = `${shown.name.replace(/\.[^.]*$/, '')}.${endings[shown.format]}`;
  const address = URL.createObjectURL(new Blob([find('pre').textContent], { type: 'text/plain' }));
  Object.assign(document.createElement('a'), { href: address, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(address), 10_000);
});

// --- At the start ---

update(false);
// A worker that has the module is ready before a document comes.
convert(new Uint8Array()).catch(() => {});
navigator.serviceWorker?.register('sw.js');
