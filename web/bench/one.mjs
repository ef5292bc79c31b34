// One tool, one document, in a process of its own: node one.mjs TOOL FORMAT RUNS DOCUMENT
// Prints as JSON the milliseconds of processor time until the first piece is there, until all is, as bytes, and
// until that is a string, medians of RUNS;
// those of the very first conversion, with what has to be loaded and compiled for it; and how many kilobytes more
// than before the process took at its peak.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';

const [tool, format, runs, path] = process.argv.slice(2);
const bytes = readFileSync(path);
const warmUps = { runs: 20, milliseconds: 1500 };
const leastMeasured = 20; // milliseconds: shorter work is repeated

const tools = {
  async pagerex() {
    const { convert, pages } = await import('../package/index.js');
    return {
      whole: () => convert(bytes, { format }),
      text: async () => (await convert(bytes, { format })).content,
      first: async () => {
        for await (const { content } of pages(bytes, { format })) return content;
      },
    };
  },
  async 'word-extractor'() {
    const WordExtractor = createRequire(import.meta.url)('word-extractor');
    const whole = async () => {
      const document = await new WordExtractor().extract(bytes);
      const parts = [document.getBody(), document.getFootnotes(), document.getEndnotes(), document.getAnnotations(), document.getTextboxes()];
      return parts.join('\n');
    };
    return { whole, text: whole, first: whole };
  },
};

async function cost(work) {
  const begin = process.cpuUsage();
  await work();
  const { user, system } = process.cpuUsage(begin);
  return (user + system) / 1000;
}

const median = (values) => values.sort((one, other) => one - other)[Math.floor(values.length / 2)];

async function medianCost(work) {
  const values = [];
  const repeats = Math.ceil(leastMeasured / Math.max(await cost(work), 0.05));
  for (let run = 0; run < runs; ++run) {
    const all = await cost(async () => {
      for (let repeat = 0; repeat < repeats; ++repeat) await work();
    });
    values.push(all / repeats);
  }
  return median(values);
}

const before = process.memoryUsage().rss;
let ways;
const cold = await cost(async () => {
  ways = await tools[tool]();
  await ways.text();
});
const end = performance.now() + warmUps.milliseconds;
for (let run = 0; run < warmUps.runs || performance.now() < end; ++run) await ways.text();
// Functions of the module become quicker in the background.
await new Promise((resolve) => setTimeout(resolve, 500));
const whole = await medianCost(ways.whole);
const text = await medianCost(ways.text);
const first = await medianCost(ways.first);
const kilobytes = process.resourceUsage().maxRSS - Math.round(before / 1024);
console.log(JSON.stringify({ first, whole, text, cold, kilobytes }));
