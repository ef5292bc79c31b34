// Keeps the page for times without a network. The build tells the version and the files.
const version = '@VERSION@';
const files = ['@FILES@'];
const cacheName = `pagerex-demo-${version}`;

self.addEventListener('install', (event) => event.waitUntil(fill()));
self.addEventListener('activate', (event) => event.waitUntil(begin()));
self.addEventListener('fetch', (event) => {
  const isOurs = event.request.method === 'GET' && new URL(event.request.url).origin === location.origin;
  if (isOurs) event.respondWith(answer(event.request));
});

async function fill() {
  const cache = await caches.open(cacheName);
  await cache.addAll(files.map((name) => new Request(name, { cache: 'reload' })));
}

async function begin() {
  for (const name of await caches.keys())
    if (name.startsWith('pagerex-demo-') && name !== cacheName) await caches.delete(name);
  await self.clients.claim();
}

async function answer(request) {
  const cache = await caches.open(cacheName);
  return (await cache.match(request, { ignoreSearch: true })) ?? fetch(request);
}
