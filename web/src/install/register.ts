/// The service worker keeps the app's own files, so that it opens without a network. A new version
/// is announced, and taken when the person says so; the app works without a worker. It is looked for
/// when the connection comes back, since the server may be another one then.

import { effect } from '@preact/signals';
import type { App } from '../shell/core/app';
import { text as t } from '../texts/texts';

/// The worker fetches all files again, which must not hold up the page.
function afterLoad(work: () => void): void {
  if (document.readyState === 'complete') work();
  else addEventListener('load', work);
}

export function registerWorker({ dialogs, session }: App): void {
  if (!('serviceWorker' in navigator)) return;
  const hadWorker = navigator.serviceWorker.controller !== null;
  let reloading = false;
  navigator.serviceWorker.addEventListener('controllerchange', () => {
    if (hadWorker && !reloading) {
      reloading = true;
      location.reload();
    }
  });
  afterLoad(() => {
    navigator.serviceWorker
      .register('/worker.js')
      .then((registration) => {
        const offer = () => {
          const waiting = registration.waiting;
          if (waiting) dialogs.say(t.shell.newVersion, t.shell.reload, () => waiting.postMessage('take over'));
        };
        offer();
        registration.addEventListener('updatefound', () => {
          const fresh = registration.installing;
          fresh?.addEventListener('statechange', () => {
            if (fresh.state === 'installed' && hadWorker) offer();
          });
        });
        let wasLost = false;
        effect(() => {
          const isOpen = session.state.value === 'open';
          if (isOpen && wasLost) registration.update().catch(() => {});
          wasLost = !isOpen;
        });
      })
      .catch(() => {}); // private windows refuse workers
  });
}
