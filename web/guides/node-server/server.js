import { createServer } from 'node:http';
import { convert, init, PagerexError } from 'pagerex';

await init({ worker: true }); // Conversions in threads: the server goes on answering.
const limits = { inputBytes: 50e6, milliseconds: 10_000 };

const server = createServer(async (request, response) => {
  try {
    const { content } = await convert(request, { limits });
    response.setHeader('content-type', 'text/html; charset=utf-8');
    response.setHeader('content-security-policy', "default-src 'none'; style-src 'unsafe-inline'; img-src data:");
    response.end(content);
  } catch (error) {
    response.statusCode = error instanceof PagerexError ? 422 : 500;
    response.end(`${error.message}\n`);
  }
});
server.listen(process.env.PORT ?? 8080, '127.0.0.1', () => console.log(`http://127.0.0.1:${server.address().port}/`));
