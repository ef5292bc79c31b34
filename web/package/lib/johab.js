// Johab, which platforms do not know: a Hangul syllable is its three parts, five bits each; all else stands in the rows
// of EUC-KR, of which each first byte has two.

const FILL = -1;
const NONE = 0xfffd;
const WON = 0x20a9;

/** Parts by their five bits: numbers from `first` on in each range of codes. */
function parts(first, ...ranges) {
  const table = [];
  for (const [from, to] of ranges) {
    for (let code = from; code <= to; ++code) table[code] = first++;
  }
  return table;
}
const initials = parts(FILL, [1, 20]);
const medials = parts(FILL, [2, 7], [10, 15], [18, 23], [26, 29]);
const finals = parts(0, [1, 17], [19, 29]);

// Letters that stand alone.
const loneInitials = 'ㄱㄲㄴㄷㄸㄹㅁㅂㅃㅅㅆㅇㅈㅉㅊㅋㅌㅍㅎ';
const loneMedial = 0x314f;
const loneFinals = '   ㄳ ㄵㄶ  ㄺㄻㄼㄽㄾㄿㅀ  ㅄ'; // by their number; what can begin a syllable is no final alone

// The last ones of the second row, which not all platforms know.
const lateSymbols = { 70: 0x20ac, 71: 0xae, 72: 0x327e };

function hangul(pair) {
  const [initial, medial, final] = [initials[(pair >> 10) & 31], medials[(pair >> 5) & 31], finals[pair & 31]];
  if (initial === undefined || medial === undefined || final === undefined) return NONE;
  if (initial !== FILL && medial !== FILL) return 0xac00 + (initial * 21 + medial) * 28 + final;
  if (initial === FILL && medial === FILL) return (loneFinals[final] ?? ' ') === ' ' ? NONE : loneFinals.charCodeAt(final);
  if (final !== 0) return NONE;
  return initial === FILL ? loneMedial + medial : loneInitials.charCodeAt(initial);
}

/** Symbols and Hanja. Letters are Hangul, and not here once more. */
function other(lead, trail, rows) {
  const index = trail >= 0x91 ? trail - 0x91 + 78 : trail - 0x31;
  if (index < 0 || (trail > 0x7e && trail < 0x91) || trail > 0xfe || lead === 0xdf || lead > 0xf9) return NONE;
  const row = (lead < 0xdf ? 2 * (lead - 0xd9) + 1 : 2 * (lead - 0xe0) + 42) + (index >= 94 ? 1 : 0);
  const column = (index % 94) + 1;
  if (row === 4 && column <= 51) return NONE;
  if (row === 2 && column in lateSymbols) return lateSymbols[column];
  return rows.decode(Uint8Array.of(0xa0 + row, 0xa0 + column)).charCodeAt(0);
}

/** As a TextDecoder is. */
export class JohabDecoder {
  #rows = new TextDecoder('euc-kr');
  #kept = [];

  decode(bytes, { stream }) {
    const all = Uint8Array.from([...this.#kept, ...bytes]);
    this.#kept = [];
    let text = '';
    for (let i = 0; i < all.length; ++i) {
      const byte = all[i];
      if (byte >= 0x80 && i + 1 === all.length && stream) {
        this.#kept = [byte];
      } else {
        const code = byte < 0x80 ? (byte === 0x5c ? WON : byte) : this.#pair(byte, all[i + 1]);
        if (byte >= 0x80 && code !== NONE) ++i;
        text += String.fromCharCode(code);
      }
    }
    return text;
  }

  #pair(lead, trail) {
    if (trail === undefined) return NONE;
    if (lead >= 0xd9) return other(lead, trail, this.#rows);
    return lead >= 0x84 && lead <= 0xd3 ? hangul((lead << 8) | trail) : NONE;
  }
}
