import { useEffect } from 'preact/hooks';
import { useSignal } from '@preact/signals';
import type { App } from '../shell/core/app';
import { Select } from '../design/widgets';
import { text as t } from '../texts/texts';
import { linesOf, short, surfacesOf } from './core/model';

const kShown = 1000;

/// The data of the figure as a table: for screen readers and for whoever wants the numbers.
export default function FigureData({ app }: { app: App }) {
  const at = useSignal(0);
  useEffect(() => app.figure.watchModel(), []);
  const model = app.figure.model.value;
  const surface = app.figure.kind.value === 'surface';
  const sets = surface
    ? surfacesOf(model).map((each, k) => ({
        name: t.figure.lineName(k + 1),
        rows: each.points.map(({ x, y, z }) => [x, y, z]),
      }))
    : linesOf(model).map((line, k) => ({
        name: line.attribute.name || t.figure.lineName(k + 1),
        rows: line.points as (number | null)[][],
      }));
  const set = sets[at.value];
  if (!set) return null;
  return (
    <div class="figure-data">
      <Select
        label={t.figure.lines}
        value={at.value}
        options={sets.map((each, k) => [k, each.name])}
        onChange={(k) => {
          at.value = k;
        }}
      />
      {set.rows.length > kShown && <p>{t.figure.rowsShown(kShown, set.rows.length)}</p>}
      <div class="table-frame" tabIndex={0} role="region" aria-label={set.name}>
        <table>
          <thead>
            <tr>
              <th scope="col">{t.figure.index}</th>
              {['x', 'y', 'z'].slice(0, surface ? 3 : 2).map((name) => (
                <th scope="col" key={name}>
                  {name}
                </th>
              ))}
            </tr>
          </thead>
          <tbody>
            {set.rows.slice(0, kShown).map((row, k) => (
              <tr key={k}>
                <th scope="row">{k + 1}</th>
                {row.map((value, j) => (
                  <td key={j}>{short(value)}</td>
                ))}
              </tr>
            ))}
          </tbody>
        </table>
      </div>
    </div>
  );
}
