/// A matrix as a sheet. Only the rows in view are in the page. Arrows move, Enter or a second tap
/// edits an element, and the edit runs as a command.

import { useLayoutEffect, useRef } from 'preact/hooks';
import { useSignal } from '@preact/signals';
import type { App } from '../shell/core/app';
import type { Variable } from '../engine/core/protocol';
import { isTouch } from '../code/useOwnKeyboard';
import { useSize } from '../design/widgets';
import { text as t } from '../texts/texts';
import { type ValueTable, writtenOut } from './core/valueTable';

const kMargin = 10;
/// Rows come into the page as they come into view, columns all at once.
const kMostColumns = 250;

export function Sheet({ app, variable, table }: { app: App; variable: Variable; table: ValueTable }) {
  const rowHeight = isTouch.value ? 44 : 28;
  const at = useSignal({ row: 0, column: 0 });
  const editing = useSignal(false);
  const top = useSignal(0);
  const height = useSignal(400);
  const frame = useSize((_, tall) => {
    height.value = tall;
  });
  const grid = useRef<HTMLTableElement>(null);
  const numRows = table.rows.length;
  const allCols = table.rows[0]?.length ?? 0;
  const numCols = Math.min(allCols, kMostColumns);
  const first = Math.max(0, Math.floor(top.value / rowHeight) - kMargin);
  const end = Math.min(numRows, Math.ceil((top.value + height.value) / rowHeight) + kMargin);

  const move = (row: number, column: number) => {
    at.value = { row: Math.max(0, Math.min(numRows - 1, row)), column: Math.max(0, Math.min(numCols - 1, column)) };
    editing.value = false;
    const scroller = frame.current!;
    const y = at.value.row * rowHeight;
    if (y < scroller.scrollTop) scroller.scrollTop = y;
    else if (y + 2 * rowHeight > scroller.scrollTop + scroller.clientHeight)
      scroller.scrollTop = y + 2 * rowHeight - scroller.clientHeight;
    requestAnimationFrame(() => grid.current?.querySelector<HTMLElement>('[aria-selected="true"]')?.focus());
  };
  const onKey = (event: KeyboardEvent) => {
    if (editing.value) return;
    const step = {
      ArrowLeft: [0, -1],
      ArrowRight: [0, 1],
      ArrowUp: [-1, 0],
      ArrowDown: [1, 0],
      PageDown: [10, 0],
      PageUp: [-10, 0],
    }[event.key];
    const { row, column } = at.value;
    if (step) move(row + step[0]!, column + step[1]!);
    else if (event.key === 'Enter' || event.key === 'F2') editing.value = true;
    else return;
    event.preventDefault();
  };
  const pick = (row: number, column: number) => {
    const again = at.value.row === row && at.value.column === column;
    at.value = { row, column };
    editing.value = again && !app.console.busy.value;
  };
  const finish = (text: string | null) => {
    const { row, column } = at.value;
    if (text !== null && text !== writtenOut(table.rows[row]![column]!, table.scale)) app.workspace.setElement(row, column, text);
    move(row, column);
  };
  return (
    <>
      {table.scale && <p class="sheet-scale">{t.workspace.times(table.scale)}</p>}
      <div
        class="sheet"
        ref={frame}
        onScroll={(event) => {
          top.value = event.currentTarget.scrollTop;
        }}
      >
        <table
          role="grid"
          aria-label={t.workspace.sheet(variable.name)}
          aria-rowcount={numRows}
          aria-colcount={allCols}
          ref={grid}
          onKeyDown={onKey}
        >
          <thead>
            <tr>
              <th />
              {Array.from({ length: numCols }, (_, k) => (
                <th scope="col" key={k}>
                  {k + 1}
                </th>
              ))}
            </tr>
          </thead>
          <tbody>
            {first > 0 && <tr aria-hidden="true" style={{ height: `${first * rowHeight}px` }} />}
            {table.rows.slice(first, end).map((cells, k) => {
              const row = first + k;
              return (
                <tr key={row} style={{ height: `${rowHeight}px` }}>
                  <th scope="row">{row + 1}</th>
                  {cells.slice(0, numCols).map((cell, column) => {
                    const on = at.value.row === row && at.value.column === column;
                    return (
                      <td
                        key={column}
                        role="gridcell"
                        aria-selected={on}
                        tabIndex={on ? 0 : -1}
                        onClick={() => pick(row, column)}
                      >
                        {on && editing.value ? (
                          <Cell
                            label={t.workspace.element(variable.name, row + 1, column + 1)}
                            value={writtenOut(cell, table.scale)}
                            finish={finish}
                          />
                        ) : (
                          cell
                        )}
                      </td>
                    );
                  })}
                </tr>
              );
            })}
            {end < numRows && <tr aria-hidden="true" style={{ height: `${(numRows - end) * rowHeight}px` }} />}
          </tbody>
        </table>
      </div>
      <p class="sheet-note">
        {allCols > numCols && `${t.workspace.columnsShown(numCols, allCols)} `}
        {t.workspace.edit}
      </p>
    </>
  );
}

function Cell({ label, value, finish }: { label: string; value: string; finish(text: string | null): void }) {
  const input = useRef<HTMLInputElement>(null);
  useLayoutEffect(() => {
    input.current?.select();
    input.current?.focus();
  }, []);
  return (
    <input
      ref={input}
      aria-label={label}
      defaultValue={value}
      size={Math.max(4, value.length)}
      autocomplete="off"
      inputMode="decimal"
      onKeyDown={(event) => {
        event.stopPropagation();
        if (event.key === 'Enter') finish(event.currentTarget.value);
        if (event.key === 'Escape') finish(null);
      }}
      onBlur={() => finish(null)}
    />
  );
}
