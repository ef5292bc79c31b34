import { JohabDecoder } from './johab.js';

// The other side of web/wasm/code_pages.cpp: names by which the platform knows code pages of documents.
const labels = { 932: 'shift_jis', 936: 'gbk', 949: 'euc-kr', 950: 'big5', 1258: 'windows-1258' };

const vietnamese = 1258;
const johab = 1361;

/** Functions that the module imports. `memory` gives its bytes as they are now. */
export function decoders(memory) {
  const made = new Map();
  return {
    hasCodePage(codePage) {
      try {
        made.set(codePage, codePage === johab ? new JohabDecoder() : new TextDecoder(labels[codePage]));
        return 1;
      } catch {
        return 0;
      }
    },
    decode(codePage, place, length, isLast, units) {
      place >>>= 0;
      const bytes = memory().slice(place, place + length);
      const decoded = made.get(codePage).decode(bytes, { stream: !isLast });
      // Vietnamese letters and their marks stand apart there.
      const text = codePage === vietnamese ? decoded.normalize('NFC') : decoded;
      const target = new Uint16Array(memory().buffer, units >>> 0, text.length);
      for (let i = 0; i < text.length; ++i) target[i] = text.charCodeAt(i);
      return text.length;
    },
  };
}
