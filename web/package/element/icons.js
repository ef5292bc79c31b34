// Icons, drawn on a square of 20 with a line of 1.6.

const PATHS = {
  outline: 'M3 5h1M7 5h10M3 10h1M7 10h10M3 15h1M7 15h10',
  previous: 'M5 12.5 10 7.5l5 5',
  next: 'M5 7.5l5 5 5-5',
  zoomOut: 'M5 10h10',
  zoomIn: 'M5 10h10M10 5v10',
  fit: 'M3 4v12M17 4v12M6 10h8M8.5 7.5 6 10l2.5 2.5M11.5 7.5 14 10l-2.5 2.5',
  search: 'M9 3.5a5.5 5.5 0 1 1 0 11 5.5 5.5 0 0 1 0-11zM13 13l4 4',
  comments: 'M4 4.5h12a1 1 0 0 1 1 1v7a1 1 0 0 1-1 1H9l-3.5 3v-3H4a1 1 0 0 1-1-1v-7a1 1 0 0 1 1-1zM6.5 8h7M6.5 10.5h4',
  changes: 'M3.5 16.5l.8-3.3 8.4-8.4a1.4 1.4 0 0 1 2 0l.6.6a1.4 1.4 0 0 1 0 2l-8.4 8.4zM11.5 16.5h5',
  print: 'M6 7V3.5h8V7M6 14H4a1 1 0 0 1-1-1V8a1 1 0 0 1 1-1h12a1 1 0 0 1 1 1v5a1 1 0 0 1-1 1h-2M6 11.5h8v5H6z',
  copy: 'M7.5 7.5h9v9h-9zM12.5 7.5v-4h-9v9h4',
  download: 'M10 3v9M6.5 9 10 12.5 13.5 9M4 16.5h12',
  more: 'M5 10h.01M10 10h.01M15 10h.01',
  close: 'M5.5 5.5l9 9M14.5 5.5l-9 9',
  open: 'M3 15.5v-10a1 1 0 0 1 1-1h4l2 2h6a1 1 0 0 1 1 1v8a1 1 0 0 1-1 1H4a1 1 0 0 1-1-1z',
  check: 'M4.5 10.5 8.5 14.5 15.5 6',
  page: 'M5 2.5h7l3.5 3.5v11.5H5zM12 2.5V6h3.5M7.5 9.5h5.5M7.5 12h5.5M7.5 14.5h3',
  warning: 'M10 3.5l7.5 13h-15zM10 8.5v3.5M10 14.2h.01',
};

const SVG = 'http://www.w3.org/2000/svg';

export function icon(name) {
  const drawing = document.createElementNS(SVG, 'svg');
  drawing.setAttribute('viewBox', '0 0 20 20');
  drawing.setAttribute('aria-hidden', 'true');
  const path = document.createElementNS(SVG, 'path');
  path.setAttribute('d', PATHS[name] ?? '');
  drawing.append(path);
  return drawing;
}
