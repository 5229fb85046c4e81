// The service worker. `files` and `version` are filled in by the build: exactly the app's own files.
// Nothing of the person's and nothing of the session is ever kept here.

const version = '%VERSION%';
const files = '%FILES%';
const name = `kelo-${version}`;

self.addEventListener('install', (event) => {
  event.waitUntil(caches.open(name).then((cache) => cache.addAll(files.map((file) => new Request(file, { cache: 'reload' })))));
});

self.addEventListener('activate', (event) => {
  event.waitUntil(caches.keys().then((names) => Promise.all(
    names.filter((each) => each.startsWith('kelo-') && each !== name).map((each) => caches.delete(each)),
  )));
});

self.addEventListener('message', (event) => { if (event.data === 'take over') self.skipWaiting(); });

self.addEventListener('fetch', (event) => {
  const { request } = event;
  const address = new URL(request.url);
  if (request.method !== 'GET' || address.origin !== self.location.origin) return;
  const path = address.pathname;
  if (request.mode === 'navigate' && path === '/') event.respondWith(kept(request, '/'));
  else if (files.includes(path)) event.respondWith(kept(request, path));
});

async function kept(request, path) {
  const cache = await caches.open(name);
  return (await cache.match(path)) ?? fetch(request);
}
