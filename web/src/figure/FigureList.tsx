import { useEffect } from 'preact/hooks';
import type { App } from '../shell/core/app';
import type { SavedFigure } from '../engine/core/protocol';
import { Empty, IconButton, showMenu } from '../design/widgets';
import { text as t } from '../texts/texts';

const kBase64 = /^[A-Za-z0-9+/]+=*$/;
const kEpoch = Date.UTC(2001, 0, 1);
const dateText = (seconds: number) =>
  new Date(kEpoch + seconds * 1000).toLocaleString(undefined, { dateStyle: 'medium', timeStyle: 'short' });

/// The saved figures, in the order of their folder.
export default function FigureList({ app, onShown }: { app: App; onShown(): void }) {
  const { figure } = app;
  useEffect(() => {
    void figure.list();
  }, []);
  const items = figure.saved.value;
  if (!items) return <p class="loading-text">{t.figure.loading}</p>;
  if (!items.length) return <Empty title={t.figure.noPlot} text={t.figure.noPlotText} />;
  const menu = (event: MouseEvent, item: SavedFigure) => {
    event.preventDefault();
    showMenu(event, item.name, [
      { label: t.figure.delete, icon: 'clear', danger: true, onPick: () => void figure.remove(item) },
    ]);
  };
  return (
    <ul class="figure-list">
      {items.map((item) => (
        <li key={item.id} onContextMenu={(event) => menu(event, item)}>
          <button type="button" class="figure-row" onClick={() => void figure.show(item.id).then(onShown)}>
            {kBase64.test(item.thumbnail) && (
              <img src={`data:image/png;base64,${item.thumbnail}`} alt="" width="96" height="72" loading="lazy" />
            )}
            <span>
              <b>{item.name}</b>
              <small>{t.figure.savedAt(dateText(item.timeStamp))}</small>
            </span>
          </button>
          <IconButton icon="more" label={t.files.actionsFor(item.name)} onClick={(event) => menu(event, item)} />
        </li>
      ))}
    </ul>
  );
}
