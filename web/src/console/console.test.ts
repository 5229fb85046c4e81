import { describe, expect, test } from 'vitest';
import { settle, startApp } from '../../tests/unit/twins';
import { History } from './core/history';
import { rowsOf, shownPart } from './core/itemText';
import { VirtualList } from './core/virtualList';

test('the window of a list holds exactly the rows in view, whatever their heights and changes', () => {
  let seed = 7;
  const random = (n: number) => (seed = (seed * 48271) % 2147483647) % n;
  const list = new VirtualList();
  const heights: number[] = [];
  for (let step = 0; step < 3000; step++) {
    if (random(3) || !heights.length) heights.push(10 + random(90)), list.push(heights[heights.length - 1]!);
    else {
      const row = random(heights.length);
      heights[row] = 5 + random(200);
      list.setHeight(row, heights[row]!);
    }
    if (step % 50) continue;
    const total = heights.reduce((a, b) => a + b, 0);
    const offset = random(total);
    const { first, end, before } = list.window(offset, 400, 0);
    const tops = heights.map((_, k) => heights.slice(0, k).reduce((a, b) => a + b, 0));
    expect(list.total).toBe(total);
    expect(before).toBe(tops[first]);
    expect(tops[first]! <= offset && tops[first]! + heights[first]! > offset).toBe(true);
    expect(end === heights.length || tops[end]! > offset + 400).toBe(true);
  }
});

test.each([
  ['', 80, 1],
  ['a', 1, 1],
  ['abc\n\nd', 2, 4],
  ['x'.repeat(81), 80, 2],
  ['end\n', 80, 2],
])('rows of %j in %i cells', (text, cells, rows) => {
  expect(rowsOf(text, cells)).toBe(rows);
});

test('a long text is cut at a line end near the limit and inside a line without one', () => {
  expect(shownPart('short', 10)).toBe('short');
  expect(shownPart('12345678\nabcdefgh', 12)).toBe('12345678');
  expect(shownPart('x'.repeat(50), 12)).toBe('x'.repeat(12));
});

test('the history keeps what was being typed', () => {
  const history = new History();
  history.load(['a', 'b']);
  expect([history.previous('draft'), history.previous('b'), history.previous('a')]).toEqual(['b', 'a', null]);
  expect([history.next(), history.next(), history.next()]).toEqual(['b', 'draft', null]);
});

describe('the run', () => {
  test('goes from a command over its items to idle, and a second command waits for the first', async () => {
    const { app, session } = startApp();
    await settle();
    expect(app.console.run('x = 1')).toBe(true);
    expect(app.console.run('   ')).toBe(false);
    await settle();
    expect(app.console.items.map((item) => item.contentType)).toEqual(['inputText', 'doubleArray']);
    expect(app.console.status.value).toBe('idle');
    expect(app.console.seconds.value).toBeCloseTo(0.0123);
    session.setStatus('running');
    expect(app.console.run('y = 2')).toBe(false);
  });

  test('answers input and ends a pause with the same button, and keeps a text typed during a pause', async () => {
    const { app } = startApp();
    await settle();
    app.console.run('input(1)');
    await settle();
    expect([app.console.status.value, app.console.prompt.value]).toEqual(['waitInput', 'How many?']);
    expect(app.console.run('42')).toBe(true);
    await settle();
    expect(app.console.items[1]!.text).toContain('42');
    expect(app.console.prompt.value).toBe('');
    app.console.run('pause(1)');
    await settle();
    expect(app.console.status.value).toBe('paused');
    expect(app.console.run('kept for later')).toBe(false);
    await settle();
    expect(app.console.status.value).toBe('idle');
  });

  test('is taken up again with the items that were missed', async () => {
    const { app, session, engine } = startApp();
    await settle();
    engine.lose();
    session.add({ contentType: 'doubleArray', text: 'missed' });
    expect(app.console.run('x')).toBe(false);
    expect(app.dialogs.toast.value?.text).toContain('cannot be reached');
    engine.retry();
    await settle();
    expect(app.console.items.map((item) => item.text)).toEqual(['missed']);
  });
});
