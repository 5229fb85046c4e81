import { useEffect, useRef, useState } from 'preact/hooks';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import { IconButton } from '../design/widgets';
import { text as t } from '../texts/texts';
import { Composer, type ComposerHandle } from './Composer';
import { ItemList } from './ItemList';

export function ConsolePanel() {
  const app = useApp();
  const composer = useRef<ComposerHandle | null>(null);
  return (
    <Panel
      id="console"
      title={t.shell.console}
      aside={<RunState />}
      actions={<IconButton icon="clear" label={t.console.clear} onClick={() => app.console.clear()} />}
    >
      <ItemList app={app} onReuse={(text) => composer.current?.use(text)} />
      <p class="visually-hidden" role="status" aria-live="polite">
        {app.console.announcement.value}
      </p>
      <Composer app={app} handle={composer} />
    </Panel>
  );
}

/// What runs, for how long and how far; behind a run the time that it took.
function RunState() {
  const app = useApp();
  const { status, progress, seconds } = app.console;
  if (status.value !== 'idle') {
    return (
      <span class={`run-state ${status.value}`} role="status">
        <span class="pulse" aria-hidden="true" />
        {progress.value || t.shell.status[status.value]}
        {status.value === 'running' && <Elapsed since={app.console.startedAt.value} />}
      </span>
    );
  }
  if (seconds.value === null) return null;
  return (
    <span class="run-state" title={t.console.finished(secondsText(seconds.value))}>
      {t.console.seconds(secondsText(seconds.value))}
    </span>
  );
}

const secondsText = (seconds: number) =>
  seconds < 0.0995 ? seconds.toFixed(3) : seconds < 9.95 ? seconds.toFixed(2) : seconds.toFixed(0);

function Elapsed({ since }: { since: number }) {
  const { clock } = useApp();
  const [, tick] = useState(0);
  useEffect(() => {
    const timer = setInterval(() => tick((count) => count + 1), 250);
    return () => clearInterval(timer);
  }, []);
  const seconds = (clock.now() - since) / 1000;
  return (
    <span class="elapsed" aria-hidden="true">
      {seconds < 1 ? '' : t.console.seconds(seconds.toFixed(0))}
    </span>
  );
}
