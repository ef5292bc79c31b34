// What a reader takes along: the document as a file, or on the clipboard.

const FORMATS = {
  html: { extension: '.html', type: 'text/html;charset=utf-8' },
  markdown: { extension: '.md', type: 'text/markdown;charset=utf-8' },
  text: { extension: '.txt', type: 'text/plain;charset=utf-8' },
};

/** As one file, pictures and all. */
export async function fileOf(core, input, format, name, options) {
  const pictures = format === 'text' ? {} : { pictures: 'embedded' };
  const { content } = await core.convert(input, { ...options, ...pictures, format });
  const { extension, type } = FORMATS[format];
  return new File([content], `${name.replace(/\.\w{1,5}$/, '') || 'document'}${extension}`, { type });
}

/** Hands a file to the browser, which asks where to or knows. */
export function save(file) {
  const address = URL.createObjectURL(file);
  const link = document.createElement('a');
  link.href = address;
  link.download = file.name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(address), 60_000);
}

/** The document's text and its markup; the looks travel in the markup. */
function markupOf(frame) {
  const looks = Array.from(frame.document.querySelectorAll('style:not([data-viewer])'), ({ textContent }) => textContent);
  return `<meta charset=utf-8><style>${looks.join('\n')}</style>${frame.main.outerHTML}`;
}

/** Puts what is marked, or else the whole document, on the clipboard. */
export async function copy(frame, text) {
  if (frame.selection || !navigator.clipboard?.write) {
    if (!frame.selection) frame.document.getSelection().selectAllChildren(frame.main);
    if (!frame.document.execCommand('copy')) throw new Error('not allowed');
    return;
  }
  const markup = new Blob([markupOf(frame)], { type: 'text/html' });
  const plain = text().then((content) => new Blob([content], { type: 'text/plain' }));
  await navigator.clipboard.write([new ClipboardItem({ 'text/html': markup, 'text/plain': plain })]);
}
