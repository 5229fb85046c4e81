/// The items of the console. Only those near the view are in the page: their heights are estimated
/// from the text and the width in cells, and corrected by what the page measures.

import { useEffect, useLayoutEffect, useRef, useState } from 'preact/hooks';
import { useSignalEffect } from '@preact/signals';
import type { App } from '../shell/core/app';
import { IconButton, useSize } from '../design/widgets';
import { text as t } from '../texts/texts';
import { kFirstPart, rowsOf, shownPart } from './core/itemText';
import { VirtualList } from './core/virtualList';
import { Item, forgetLimits, limitOf, watchLimits } from './Item';
import { Welcome } from './Welcome';

const kMargin = 600;
const kNearEnd = 48;
const kPadding = 12;
const kMoveTime = 1000;

export function ItemList({ app, onReuse }: { app: App; onReuse(text: string): void }) {
  const { console } = app;
  const list = useRef(new VirtualList()).current;
  const metrics = useRef({ cells: 80, line: 20 }).current;
  const state = useRef({ generation: -1, follow: true, last: -1, moved: -1e9 }).current;
  const [, redraw] = useState(0);
  const rows = useRef<HTMLDivElement>(null);
  const probe = useRef<HTMLSpanElement>(null);
  const again = () => redraw((count) => count + 1);

  const estimate = (row: number) => {
    const { index, text } = console.items[row]!;
    return rowsOf(shownPart(text, limitOf(index, kFirstPart)), metrics.cells) * metrics.line + kPadding;
  };

  const measureWidth = (width: number) => {
    const box = probe.current?.getBoundingClientRect();
    if (!box?.width || !width) return;
    metrics.line = box.height;
    const cells = Math.max(10, Math.floor((width - 44) / (box.width / 10)));
    if (cells !== metrics.cells) {
      metrics.cells = cells;
      list.reset(console.items.map((_, row) => estimate(row)));
    }
    app.settings.setCells(cells);
    again();
  };
  const view = useSize((width) => measureWidth(width));
  useEffect(() => {
    void document.fonts?.ready.then(() => view.current && measureWidth(view.current.clientWidth));
  }, []);

  useSignalEffect(() => {
    console.version.value;
    if (state.generation !== console.generation.value) {
      state.generation = console.generation.value;
      list.reset([]);
      forgetLimits();
    }
    while (list.length < console.items.length) list.push(estimate(list.length));
    again();
  });

  // After each drawing: take the true heights, and stay at the end where the view was there.
  useLayoutEffect(() => {
    let changed = false;
    for (const element of rows.current?.children ?? []) {
      const row = Number((element as HTMLElement).dataset.row);
      changed = list.setHeight(row, (element as HTMLElement).offsetHeight) || changed;
    }
    const scroller = view.current!;
    if (state.follow && console.items.length) scroller.scrollTop = scroller.scrollHeight;
    if (changed) again();
  });

  const onScroll = () => {
    const scroller = view.current!;
    const atEnd = scroller.scrollHeight - scroller.scrollTop - scroller.clientHeight < kNearEnd;
    // Content that grows or shrinks moves the view too; only a person's move means to stay there.
    const follow = atEnd || (state.follow && app.clock.now() - state.moved > kMoveTime);
    const first = list.rowAt(scroller.scrollTop);
    if (follow === state.follow && first === state.last) return;
    state.follow = follow;
    state.last = first;
    again();
  };

  const byHand = () => {
    state.moved = app.clock.now();
  };
  watchLimits();
  const scroller = view.current;
  const height = scroller?.clientHeight ?? 600;
  const top = state.follow ? Math.max(0, list.total - height) : (scroller?.scrollTop ?? 0);
  const { first, end, before, total } = list.window(top, height, kMargin);
  return (
    <div class="items-frame">
      <div
        class="items"
        ref={view}
        onScroll={onScroll}
        onWheel={byHand}
        onTouchMove={byHand}
        onKeyDown={byHand}
        onPointerDown={byHand}
        tabIndex={0}
        role="log"
        aria-live="off"
        aria-label={t.console.output}
      >
        <span class="cell-probe" ref={probe} aria-hidden="true">
          0000000000
        </span>
        {console.items.length === 0 && <Welcome app={app} onUse={onReuse} />}
        <div class="items-space" style={{ height: `${total}px` }}>
          <div class="items-rows" ref={rows} style={{ transform: `translateY(${before}px)` }}>
            {console.items.slice(first, end).map((item, k) => (
              <div key={item.index} data-row={first + k}>
                <Item app={app} item={item} limit={limitOf(item.index, kFirstPart)} onReuse={onReuse} />
              </div>
            ))}
          </div>
        </div>
      </div>
      {!state.follow && (
        <div class="to-end">
          <IconButton
            icon="down"
            label={t.console.toEnd}
            keepFocus
            onClick={() => {
              state.follow = true;
              again();
            }}
          />
        </div>
      )}
    </div>
  );
}
