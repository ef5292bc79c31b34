// Stands in for the package: converts by the native program, over the tests' server.

async function converted(input, args) {
  const query = args.map((arg) => `arg=${encodeURIComponent(arg)}`).join('&');
  const answer = await (await fetch(`/convert?${query}`, { method: 'POST', body: input })).json();
  if (answer.code) throw Object.assign(new Error(answer.sentence), { code: answer.code });
  return answer.files;
}

const resultOf = (content) => ({ content, files: new Map(), kind: 'word97', sentence: '', complete: true, warnings: [],
  counts: {}, summary: {} });

export const native = {
  async convert(input, { format = 'html' } = {}) {
    return resultOf((await converted(input, ['-t', format]))[0]);
  },
  async* pages(input, { revisions = 'final', pageSize = 4000, onProgress = () => {} } = {}) {
    const files = await converted(input, ['-t', 'html', '--pagesize', String(pageSize), '--revisions', revisions]);
    for (const [index, content] of files.entries()) {
      onProgress((index + 1) / files.length);
      yield { number: index + 1, name: '', content };
    }
    return resultOf(files.join(''));
  },
};
