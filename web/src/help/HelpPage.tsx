/// One page, shown in a sandboxed frame: it has no origin, so that nothing in a page can reach the app.
/// The frame asks for pictures and colours, and tells of links, examples to run and places found.

import { useEffect, useRef } from 'preact/hooks';
import { useSignal, useSignalEffect, type Signal } from '@preact/signals';
import type { App } from '../shell/core/app';
import { IconButton } from '../design/widgets';
import { theme } from '../shell/device';
import { text as t } from '../texts/texts';
import { resolveLink } from './core/help';
import type { FromFrame, ToFrame } from './frame/messages';

const kFrame = '/frame/help.html';

interface Found {
  at: number;
  count: number;
}
type Tell = (message: ToFrame) => void;

export function HelpPage({ app, path }: { app: App; path: string }) {
  const frame = useRef<HTMLIFrameElement>(null);
  const ready = useSignal(false);
  const found = useSignal<Found>({ at: 0, count: 0 });
  // A frame without an origin can be named as a target by "*" alone; it is told nothing secret.
  const tell: Tell = (message) => frame.current?.contentWindow?.postMessage(message, '*');

  useEffect(() => {
    const take = (event: MessageEvent<FromFrame>) => {
      if (event.source !== frame.current?.contentWindow) return;
      if (event.data.kind === 'ready') ready.value = true;
      else if (event.data.kind === 'found') found.value = event.data;
      else void serve(app, path, event.data, tell);
    };
    addEventListener('message', take);
    return () => removeEventListener('message', take);
  }, [path]);
  useSignalEffect(() => {
    const size = app.settings.values.value?.docTextSize ?? 100;
    const { motion } = app.preferences.value.value;
    if (ready.value) tell({ kind: 'look', theme: theme.value, motion, size });
  });
  useSignalEffect(() => {
    if (ready.value) tell({ kind: 'page', html: app.help.html.value, tryIt: t.help.tryIt });
  });
  return (
    <>
      <iframe class="help-frame" ref={frame} src={kFrame} sandbox="allow-scripts" title={t.help.page} />
      <FindInPage tell={tell} found={found} />
    </>
  );
}

async function serve(app: App, path: string, message: FromFrame, tell: Tell): Promise<void> {
  switch (message.kind) {
    case 'ask':
      return tell({ kind: 'answer', id: message.id, value: await answerTo(app, path, message) });
    case 'follow':
      return follow(app, path, message.href);
    case 'run':
      // Only a person's tap runs something; a tap in the frame counts here too.
      if (navigator.userActivation?.isActive !== false) app.runText(message.text);
      return;
    case 'key':
      document.dispatchEvent(new KeyboardEvent('keydown', { ...message, cancelable: true }));
  }
}

async function answerTo(app: App, path: string, { what, text }: { what: string; text: string }): Promise<unknown> {
  if (what === 'picture') return app.help.picture(resolveLink(path, text));
  const answer = await app.session.request('editor/highlight', { text }).catch(() => null);
  return answer?.spans ?? [];
}

function follow(app: App, path: string, href: string): void {
  const page = resolveLink(path, href);
  if (page) void app.help.open(page, app.settings.values.value?.docTextSize ?? 100);
  else if (/^https?:/.test(href)) open(href, '_blank', 'noopener,noreferrer');
}

function FindInPage({ tell, found }: { tell: Tell; found: Signal<Found> }) {
  const query = useSignal('');
  const { at, count } = found.value;
  const step = (by: number) => tell({ kind: 'step', by });
  return (
    <div class="find-bar">
      <input
        class="field small"
        type="search"
        placeholder={t.help.inPage}
        aria-label={t.help.inPage}
        value={query.value}
        onInput={(event) => {
          query.value = event.currentTarget.value;
          tell({ kind: 'find', text: query.value });
        }}
        onKeyDown={(event) => {
          if (event.key === 'Enter') step(event.shiftKey ? -1 : 1);
        }}
      />
      <span role="status">{query.value && (count ? t.help.foundAt(at + 1, count) : t.help.found(0))}</span>
      <IconButton icon="up" label={t.help.previousMatch} disabled={!count} onClick={() => step(-1)} />
      <IconButton icon="down" label={t.help.nextMatch} disabled={!count} onClick={() => step(1)} />
    </div>
  );
}
