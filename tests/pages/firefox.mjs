// Shows pages in Firefox for engines.py: firefox.mjs PACKAGES_FOLDER FIREFOX dark|light
//
// Reads one order in JSON a line, and answers each with a line: {"value": ...} or {"error": "..."}.

import { createRequire } from 'node:module';
import { createInterface } from 'node:readline';

const [packages, firefox, scheme] = process.argv.slice(2);
const puppeteer = createRequire(`${packages}/`)('puppeteer-core');
const SCHEMES = { dark: 0, light: 1 };

const browser = await puppeteer.launch({
  browser: 'firefox',
  executablePath: firefox,
  headless: true,
  extraPrefsFirefox: {
    'layout.css.prefers-color-scheme.content-override': SCHEMES[scheme],
    'network.proxy.type': 0,
  },
});
const page = await browser.newPage();

const ORDERS = {
  open: ({ address }) => page.goto(address, { waitUntil: 'load' }).then(() => null),
  size: ({ width, height }) => page.setViewport({ width, height }).then(() => null),
  ask: ({ script }) => page.evaluate(script),
  picture: ({ path }) => page.screenshot({ path }).then(() => null),
};

async function answer(line) {
  const { order, ...rest } = JSON.parse(line);
  try {
    return { value: await ORDERS[order](rest) };
  } catch (error) {
    return { error: String(error) };
  }
}

for await (const line of createInterface({ input: process.stdin })) {
  process.stdout.write(`${JSON.stringify(await answer(line))}\n`);
}
await browser.close();
