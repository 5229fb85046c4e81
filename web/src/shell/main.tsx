/// Where the app starts: the token is exchanged, the session opened, the page drawn.

import '@preact/signals';
import { render } from 'preact';
import '../styles.css';
import { WebSocketEngine } from '../engine/webSocketEngine';
import { exchangeToken, isRefused, sessionAddress } from '../engine/token';
import { registerWorker } from '../install/register';
import { AppView } from './AppView';
import { App } from './core/app';
import { deviceClock, deviceStore, followPreferences, followSize } from './device';
import { listenToKeys } from './shortcuts';

const token = exchangeToken();
const app = new App(new WebSocketEngine(sessionAddress(), isRefused), deviceStore, deviceClock);
addEventListener('error', (event) => app.dialogs.note(`${event.message} (${event.filename}:${event.lineno})`));
addEventListener('unhandledrejection', (event) => app.dialogs.note(String(event.reason?.stack ?? event.reason)));
addEventListener('pagehide', () => app.editor.keepAll());
addEventListener('beforeunload', (event) => {
  if (!app.editor.keepAll()) event.preventDefault();
});

/// Keys that are typed meanwhile come in between the steps.
const betweenKeys = () => new Promise<void>((resolve) => setTimeout(resolve));

async function begin(): Promise<void> {
  await betweenKeys();
  followPreferences(app);
  followSize(app);
  listenToKeys(app);
  render(<AppView app={app} />, document.getElementById('app')!);
  await betweenKeys();
  await token;
  app.start();
  registerWorker(app);
}
void begin();
