import { useRef } from 'preact/hooks';
import type { Divider as DividerName } from './core/layout';
import { text as t } from '../texts/texts';
import { useApp } from './context';

/// A divider between two panels: moved by a drag or the arrow keys, set back by a double click.
/// `reversed` when the share counts from the far end.
export function Divider({ name, vertical, reversed }: { name: DividerName; vertical: boolean; reversed?: boolean }) {
  const { layout } = useApp();
  const drag = useRef<number | null>(null);
  const sizeOf = (element: Element) => {
    const box = element.parentElement!.getBoundingClientRect();
    return vertical ? box.width : box.height;
  };
  const place = (event: PointerEvent) => (vertical ? event.clientX : event.clientY);
  const by = (delta: number) => layout.move(name, layout.shares.value[name] + (reversed ? -delta : delta));
  return (
    <div
      class={`divider ${vertical ? 'vertical' : 'horizontal'}`}
      role="separator"
      tabIndex={0}
      aria-label={t.shell.divider}
      aria-orientation={vertical ? 'vertical' : 'horizontal'}
      aria-valuenow={Math.round(layout.shares.value[name] * 100)}
      aria-valuemin={0}
      aria-valuemax={100}
      onPointerDown={(event) => {
        drag.current = place(event);
        event.currentTarget.setPointerCapture(event.pointerId);
      }}
      onPointerMove={(event) => {
        if (drag.current === null) return;
        by((place(event) - drag.current) / sizeOf(event.currentTarget));
        drag.current = place(event);
      }}
      onPointerUp={() => {
        drag.current = null;
        layout.save();
      }}
      onDblClick={() => {
        layout.move(name, NaN);
        layout.save();
      }}
      onKeyDown={(event) => {
        const step = { ArrowLeft: -1, ArrowUp: -1, ArrowRight: 1, ArrowDown: 1 }[event.key];
        if (!step) return;
        event.preventDefault();
        by(step * 0.02);
        layout.save();
      }}
    />
  );
}
