// Three engines behind one face, each with a window of its own:
//
//     const engine = await start('WebKit'); await engine.open(address); await engine.ask(() => document.title);
//
// What is asked is a function that runs in the page, whose promise is waited for. Chromium and Firefox are led by
// puppeteer, WebKit by its own driver.

import { execFileSync } from 'node:child_process';
import { writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { startDriver } from './webdriver.mjs';

/** Where tools/npm-setup puts what it takes from npm. */
const puppeteer = createRequire(new URL('../../../build/npm/', import.meta.url))('puppeteer-core');

const CHROMIUM_FLAGS = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--disable-dev-shm-usage', '--no-proxy-server',
  '--disable-background-networking', '--disable-component-update', '--disable-sync', '--hide-scrollbars',
  '--force-device-scale-factor=1',
];
const FIREFOX_PREFERENCES = { 'network.proxy.type': 0 };

function program(...names) {
  for (const name of names) {
    try {
      return execFileSync('sh', ['-c', `command -v ${name}`], { encoding: 'utf8' }).trim();
    } catch {
      continue;
    }
  }
  return undefined;
}

/** Chromium and Firefox. */
class Puppet {
  constructor(name, browser, page) {
    Object.assign(this, { name, browser, page, requests: [] });
    page.setDefaultTimeout(30_000);
    page.on('request', (request) => this.requests.push(request.url()));
  }

  async open(address) {
    this.requests.length = 0;
    await this.page.goto(address, { waitUntil: 'load' });
  }

  ask(question, ...values) {
    return this.page.evaluate(question, ...values);
  }

  async size(width, height, { touch = false } = {}) {
    await this.page.setViewport({ width, height, hasTouch: touch, isMobile: touch });
  }

  async scheme(value) {
    await this.page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value }]);
  }

  async press(...names) {
    const last = names.pop();
    for (const name of names) await this.page.keyboard.down(name);
    await this.page.keyboard.press(last);
    for (const name of names.reverse()) await this.page.keyboard.up(name);
  }

  type(text) {
    return this.page.keyboard.type(text);
  }

  click(x, y) {
    return this.page.mouse.click(x, y);
  }

  async picture(path) {
    await this.page.screenshot({ path });
  }

  /** Closes the windows that the page has opened. */
  async closeOthers() {
    for (const page of await this.browser.pages()) {
      if (page !== this.page && page.url().startsWith('http')) await page.close();
    }
    await this.page.bringToFront();
  }

  /** How many windows there are. */
  async windows() {
    return (await this.browser.pages()).length;
  }

  async close() {
    await this.browser.close();
  }
}

const KEYS = {
  Enter: '\uE007', Tab: '\uE004', Escape: '\uE00C', Shift: '\uE008', Control: '\uE009', Backspace: '\uE003',
  PageUp: '\uE00E', PageDown: '\uE00F', End: '\uE010', Home: '\uE011',
  ArrowLeft: '\uE012', ArrowUp: '\uE013', ArrowRight: '\uE014', ArrowDown: '\uE015',
};

/** WebKit. */
class Driven {
  name = 'WebKit';
  requests = undefined;

  constructor(driver) {
    this.driver = driver;
  }

  async open(address) {
    await this.driver.order('POST', '/url', { url: address });
  }

  async ask(question, ...args) {
    const script = `const done = arguments[1];
      Promise.resolve().then(() => (${question})(...arguments[0])).then(
        (value) => done({ value }), (error) => done({ error: error + '\\n' + (error?.stack ?? '') }));`;
    const answer = await this.driver.order('POST', '/execute/async', { script, args: [args] });
    if (answer.error) throw new Error(answer.error);
    return answer.value ?? undefined;
  }

  /** The window, which takes its size in its own time, is larger by its bars. */
  async size(width, height) {
    for (let attempt = 0; attempt < 200; attempt += 1) {
      const [inner, bars] = await this.ask(() => [
        [innerWidth, innerHeight], [outerWidth - innerWidth, outerHeight - innerHeight]]);
      if (inner[0] === width && inner[1] === height) return;
      const rect = { width: width + Math.max(bars[0], 0), height: height + Math.max(bars[1], 0) };
      await this.driver.order('POST', '/window/rect', rect);
      await this.ask(() => new Promise((done) => { setTimeout(done, 20); }));
    }
    throw new Error(`the window does not take the size ${width} x ${height}`);
  }

  async press(...names) {
    const keys = names.map((name) => KEYS[name] ?? name);
    await this.#act('key', {}, [
      ...keys.map((value) => ({ type: 'keyDown', value })),
      ...keys.reverse().map((value) => ({ type: 'keyUp', value })),
    ]);
  }

  async type(text) {
    const actions = [...text].flatMap((value) => [{ type: 'keyDown', value }, { type: 'keyUp', value }]);
    await this.#act('key', {}, actions);
  }

  async click(x, y) {
    await this.#act('pointer', { parameters: { pointerType: 'mouse' } }, [
      { type: 'pointerMove', x: Math.round(x), y: Math.round(y) },
      { type: 'pointerDown', button: 0 }, { type: 'pointerUp', button: 0 }]);
  }

  async #act(type, rest, actions) {
    await this.driver.order('POST', '/actions', { actions: [{ type, id: type, ...rest, actions }] });
  }

  async closeOthers() {
    const own = await this.driver.order('GET', '/window');
    for (const handle of await this.driver.order('GET', '/window/handles')) {
      if (handle === own) continue;
      await this.driver.order('POST', '/window', { handle });
      await this.driver.order('DELETE', '/window');
    }
    await this.driver.order('POST', '/window', { handle: own });
  }

  async windows() {
    return (await this.driver.order('GET', '/window/handles')).length;
  }

  async picture(path) {
    writeFileSync(path, Buffer.from(await this.driver.order('GET', '/screenshot'), 'base64'));
  }

  async close() {
    await this.driver.close();
  }
}

async function startPuppet(name, executablePath, options) {
  const browser = await puppeteer.launch({ executablePath, headless: true, ...options });
  const page = await browser.newPage();
  await page.bringToFront(); // keys press nothing in a window without the focus
  return new Puppet(name, browser, page);
}

const STARTS = {
  Chromium: () => startPuppet('Chromium', program('chromium', 'chromium-browser'), { args: CHROMIUM_FLAGS }),
  Firefox: () => startPuppet('Firefox', program('firefox-esr', 'firefox'), {
    browser: 'firefox', extraPrefsFirefox: FIREFOX_PREFERENCES }),
  WebKit: async () => new Driven(await startDriver(program('WebKitWebDriver'), program('Xvfb'))),
};

const NEEDS = { Chromium: ['chromium', 'chromium-browser'], Firefox: ['firefox-esr', 'firefox'],
  WebKit: ['WebKitWebDriver'] };

export const isThere = (name) => Boolean(program(...NEEDS[name]));
export const start = (name) => STARTS[name]();
