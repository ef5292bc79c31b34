import { convert, PagerexError } from './pagerex/index.js';

const policy = "default-src 'none'; style-src 'unsafe-inline'; img-src data:";

self.addEventListener('install', () => self.skipWaiting());
self.addEventListener('activate', (event) => event.waitUntil(self.clients.claim()));
self.addEventListener('fetch', (event) => {
  const isDocument = new URL(event.request.url).pathname.endsWith('.doc');
  if (isDocument && event.request.mode === 'navigate') event.respondWith(page(event.request.url));
});

/** The document as a page; as it is, where it is no Word document. */
async function page(address) {
  const response = await fetch(address);
  if (!response.ok) return response;
  try {
    const { content } = await convert(response.clone());
    return new Response(content, {
      headers: { 'content-type': 'text/html; charset=utf-8', 'content-security-policy': policy },
    });
  } catch (error) {
    if (!(error instanceof PagerexError)) throw error;
    return response;
  }
}
