// Draws the icons of the demo: node web/tools/make-icons.mjs FOLDER
// One shape, a page with a folded corner, as SVG and as PNG for systems that want that.
import { mkdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { deflateSync } from 'node:zlib';

const blue = [0x1a, 0x5f, 0xd0];
const deep = [0x14, 0x48, 0xa8];
const white = [0xff, 0xff, 0xff];
const pale = [0xbf, 0xd5, 0xf7];

/** On a square of 64: x, y, width, height, radius, colour; the later over the earlier. */
const page = { x: 16, y: 10, right: 48, bottom: 54, radius: 4, fold: 11 };
const lines = [
  { x: 22, y: 28, width: 14, height: 3.4, colour: blue },
  { x: 22, y: 35, width: 20, height: 2.6, colour: pale },
  { x: 22, y: 40.5, width: 20, height: 2.6, colour: pale },
  { x: 22, y: 46, width: 12, height: 2.6, colour: pale },
];

const inRounded = (x, y, left, top, right, bottom, radius) => {
  const dx = Math.max(left + radius - x, x - (right - radius), 0);
  const dy = Math.max(top + radius - y, y - (bottom - radius), 0);
  return x >= left && x <= right && y >= top && y <= bottom && dx * dx + dy * dy <= radius * radius;
};

/** The colour at a point, or nothing outside of the icon. */
function colourAt(x, y, { radius, scale }) {
  if (!inRounded(x, y, 0, 0, 64, 64, radius)) return undefined;
  const [px, py] = [(x - 32) / scale + 32, (y - 32) / scale + 32];
  for (const { x: left, y: top, width, height, colour } of lines)
    if (inRounded(px, py, left, top, left + width, top + height, height / 2)) return colour;
  const cut = px - page.right + page.fold - (py - page.y);
  if (!inRounded(px, py, page.x, page.y, page.right, page.bottom, page.radius) || cut > 0) return mix(blue, deep, y / 64);
  const inFold = px > page.right - page.fold && py < page.y + page.fold;
  return inFold ? pale : white;
}

const mix = (one, other, part) => one.map((value, channel) => Math.round(value + (other[channel] - value) * part));

/** RGBA, each pixel of `grain` x `grain` points. */
function draw(size, look, grain = 4) {
  const pixels = Buffer.alloc(size * size * 4);
  for (let row = 0; row < size; ++row)
    for (let column = 0; column < size; ++column) {
      const sum = [0, 0, 0];
      let count = 0;
      for (let point = 0; point < grain * grain; ++point) {
        const x = ((column + ((point % grain) + 0.5) / grain) * 64) / size;
        const y = ((row + (Math.floor(point / grain) + 0.5) / grain) * 64) / size;
        const colour = colourAt(x, y, look);
        if (!colour) continue;
        ++count;
        colour.forEach((value, channel) => (sum[channel] += value));
      }
      if (count === 0) continue;
      const pixel = [...sum.map((value) => Math.round(value / count)), Math.round((255 * count) / (grain * grain))];
      pixels.set(pixel, (row * size + column) * 4);
    }
  return pixels;
}

function png(size, pixels) {
  const rows = Buffer.alloc(size * (size * 4 + 1));
  for (let row = 0; row < size; ++row) pixels.copy(rows, row * (size * 4 + 1) + 1, row * size * 4, (row + 1) * size * 4);
  const header = Buffer.alloc(13);
  header.writeUInt32BE(size, 0);
  header.writeUInt32BE(size, 4);
  header.set([8, 6, 0, 0, 0], 8);
  const signature = Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]);
  return Buffer.concat([signature, chunk('IHDR', header), chunk('IDAT', deflateSync(rows, { level: 9 })), chunk('IEND', Buffer.alloc(0))]);
}

function chunk(type, data) {
  const body = Buffer.concat([Buffer.from(type, 'latin1'), data]);
  const [length, sum] = [Buffer.alloc(4), Buffer.alloc(4)];
  length.writeUInt32BE(data.length);
  sum.writeUInt32BE(crc32(body));
  return Buffer.concat([length, body, sum]);
}

function crc32(bytes) {
  let sum = ~0;
  for (const byte of bytes) {
    sum ^= byte;
    for (let bit = 0; bit < 8; ++bit) sum = (sum >>> 1) ^ (sum & 1 ? 0xedb88320 : 0);
  }
  return ~sum >>> 0;
}

const hex = (colour) => `#${colour.map((value) => value.toString(16).padStart(2, '0')).join('')}`;

function svg() {
  const { x, y, right, bottom, radius, fold } = page;
  const outline = `M${x + radius} ${y}H${right - fold}L${right} ${y + fold}V${bottom - radius}a${radius} ${radius} 0 0 1-${radius} ${radius}`
    + `H${x + radius}a${radius} ${radius} 0 0 1-${radius}-${radius}V${y + radius}a${radius} ${radius} 0 0 1 ${radius}-${radius}z`;
  const bars = lines.map((line) => `<rect x="${line.x}" y="${line.y}" width="${line.width}" height="${line.height}"`
    + ` rx="${line.height / 2}" fill="${hex(line.colour)}"/>`);
  return `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 64 64">
<linearGradient id="g" x2="0" y2="1"><stop stop-color="${hex(blue)}"/><stop offset="1" stop-color="${hex(deep)}"/></linearGradient>
<rect width="64" height="64" rx="14" fill="url(#g)"/>
<path d="${outline}" fill="${hex(white)}"/>
<path d="M${right - fold} ${y}V${y + fold}H${right}z" fill="${hex(pale)}"/>
${bars.join('\n')}
</svg>
`;
}

const [folder] = process.argv.slice(2);
mkdirSync(folder, { recursive: true });
const usual = { radius: 14, scale: 1 };
writeFileSync(join(folder, 'icon.svg'), svg());
for (const size of [192, 512]) writeFileSync(join(folder, `icon-${size}.png`), png(size, draw(size, usual)));
// Systems cut these to shapes of their own.
writeFileSync(join(folder, 'icon-maskable-512.png'), png(512, draw(512, { radius: 0, scale: 0.86 })));
writeFileSync(join(folder, 'icon-180.png'), png(180, draw(180, { radius: 0, scale: 1 })));
