import { memo } from '../design/memo';
import { signal } from '@preact/signals';
import type { ConsoleItem } from '../engine/core/protocol';
import { Icon } from '../design/icons';
import { showMenu } from '../design/widgets';
import { copyText } from '../design/clipboard';
import type { App } from '../shell/core/app';
import { text as t } from '../texts/texts';
import { kMorePart, shownPart, toneOf } from './core/itemText';
import { InputEcho } from './InputEcho';

/// How much of each long item is shown, by its index.
const limits = new Map<number, number>();
const limitVersion = signal(0);
export const limitOf = (index: number, first: number) => limits.get(index) ?? first;
export const forgetLimits = () => limits.clear();

interface Props {
  app: App;
  item: ConsoleItem;
  limit: number;
  onReuse(text: string): void;
}

/// One item of the console. Its text is shown as text, whatever stands in it.
export const Item = memo(({ app, item, limit, onReuse }: Props) => {
  const tone = toneOf(item);
  const shown = shownPart(item.text, limit);
  const rest = item.text.length - shown.length;
  const copy = () => {
    void copyText(item.text).then((done) => {
      if (done) app.dialogs.say(t.console.copied);
    });
  };
  const menu = (event: MouseEvent) => {
    if (String(getSelection())) return; // a selection keeps the system's menu
    event.preventDefault();
    showMenu(event, t.console.copy, [
      { label: t.console.copy, icon: 'copy', onPick: copy },
      ...(tone === 'input'
        ? [{ label: t.console.useAgain, icon: 'insert' as const, onPick: () => onReuse(item.text) }]
        : []),
    ]);
  };
  return (
    <div class={`item ${tone}`} onContextMenu={menu}>
      {tone === 'input' ? <InputEcho app={app} text={shown} /> : <pre>{shown}</pre>}
      {rest > 0 && (
        <button
          type="button"
          class="button plain"
          onClick={() => {
            limits.set(item.index, limit + kMorePart);
            limitVersion.value++;
          }}
        >
          {t.console.showMore(rest.toLocaleString('en'))}
        </button>
      )}
      <Place app={app} item={item} />
      <button
        type="button"
        class="item-copy"
        aria-label={t.console.copy}
        title={t.console.copy}
        tabIndex={-1}
        onClick={copy}
      >
        <Icon name="copy" />
      </button>
    </div>
  );
});

export const watchLimits = () => limitVersion.value;

/// The way from an error to its place.
function Place({ app, item }: { app: App; item: ConsoleItem }) {
  const { file, line, column } = item.message ?? {};
  if (!file || !line) return null;
  return (
    <button type="button" class="place" onClick={() => void app.openPlace(file, line, column ?? 1)}>
      <span class="visually-hidden">{t.console.openPlace} </span>
      {t.console.place(file, line)}
      <Icon name="forward" />
    </button>
  );
}
