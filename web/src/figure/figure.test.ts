import { expect, test } from 'vitest';
import { settle, startApp } from '../../tests/unit/twins';
import { Fingers, mergeGesture, wheelGesture } from './core/gestures';
import { readFileSync } from 'node:fs';
import { codedColor, colorOf, kLineColors } from './core/colors';
import { short } from './core/model';

test('two fingers pan with their middle and pinch along the axis on which they lie', () => {
  const fingers = new Fingers(() => 'plot');
  fingers.down(1, { x: 100, y: 200 });
  fingers.down(2, { x: 200, y: 205 });
  const [pan, pinch] = fingers.move(2, { x: 300, y: 205 });
  expect(pan).toEqual({ kind: 'pan', dx: 50, dy: 0 });
  expect(pinch).toEqual({ kind: 'pinch', x: 200, y: 202.5, scaleX: 2, scaleY: 1 }); // too near in y to tell a scale
  fingers.up(1);
  expect(fingers.move(2, { x: 290, y: 200 })).toEqual([{ kind: 'pan', dx: -10, dy: -5 }]);
  expect(fingers.move(9, { x: 0, y: 0 })).toEqual([]);
});

test('of a surface one finger turns and two zoom', () => {
  const fingers = new Fingers(() => 'surface');
  fingers.down(1, { x: 0, y: 0 });
  expect(fingers.move(1, { x: 5, y: 2 })).toEqual([{ kind: 'rotate', dx: 5, dy: 2 }]);
  fingers.down(2, { x: 105, y: 2 });
  expect(fingers.move(2, { x: 205, y: 2 })).toEqual([{ kind: 'zoom', scale: 2 }]);
});

test('gestures that wait are added up, and a reset takes their place', () => {
  let waiting = mergeGesture([], { kind: 'pan', dx: 1, dy: 2 });
  waiting = mergeGesture(waiting, { kind: 'pan', dx: 3, dy: -1 });
  waiting = mergeGesture(waiting, { kind: 'zoom', scale: 2 });
  waiting = mergeGesture(waiting, { kind: 'zoom', scale: 3 });
  expect(waiting).toEqual([
    { kind: 'pan', dx: 4, dy: 1 },
    { kind: 'zoom', scale: 6 },
  ]);
  expect(mergeGesture(waiting, { kind: 'reset' })).toEqual([{ kind: 'reset' }]);
  expect(wheelGesture('surface', { x: 0, y: 0 }, -1e9)).toEqual({ kind: 'zoom', scale: 4 });
});

test('a slow engine gets the touches in few gestures, and pictures only of what is newest', async () => {
  const { app, session } = startApp(({ state }) => {
    state.model = { lines: [] };
  });
  await settle();
  app.figure.setView({ width: 300, height: 200, theme: 'light' });
  await settle();
  session.requests.length = 0;
  for (let k = 0; k < 100; k++) app.figure.gesture({ kind: 'pan', dx: 1, dy: 0 });
  await settle();
  const sent = session.requests
    .filter(({ method }) => method === 'figure/gesture')
    .map(({ params }) => params as unknown as { dx: number });
  expect(sent.length).toBeLessThan(5);
  expect(sent.reduce((sum, { dx }) => sum + dx, 0)).toBe(100);
});

test('numbers stand in few digits, and what is not finite as a dash', () => {
  expect([short(1 / 3), short(null), short(1e-9), short(1e6)]).toEqual(['0.333333', '–', '1e-9', '1000000']);
});

test('the colours of lines are those of the engine, in the settings and in the tokens', () => {
  const read = (path: string) => readFileSync(new URL(path, import.meta.url), 'utf8');
  const engine = read('../../../src/figures/color.cpp');
  const offered = engine.slice(engine.indexOf('kDefaultColors'));
  const tokens = read('../design/tokens.css');
  expect([...offered.matchAll(/\{"(\w+)", ColorRole/g)].map((match) => match[1])).toEqual(
    kLineColors.map((color) => color.name),
  );
  for (const { role, rgba, tone } of kLineColors.filter((each) => each.role.startsWith('system'))) {
    const code = rgba
      .slice(0, 3)
      .map((value) =>
        Math.round(value * 255)
          .toString(16)
          .padStart(2, '0'),
      )
      .join('');
    expect(engine).toContain(`{"${role}", rgb(0x${code})}`);
    expect(tokens).toContain(`--figure-${tone}: #${code};`);
  }
});

test('a colour goes into its coded form and back', () => {
  for (const color of kLineColors) {
    expect(JSON.parse(Buffer.from(codedColor(color), 'base64').toString())).toEqual({
      role: color.role,
      rgba: color.rgba,
    });
    expect(colorOf(codedColor(color))).toBe(color);
  }
  expect(colorOf(Buffer.from('{"rgba":[0,0,0,1]}').toString('base64'))?.name).toBe('Black');
  for (const other of ['', '!!', Buffer.from('{"rgba":[0.1,0,0,1]}').toString('base64')])
    expect(colorOf(other)).toBeNull();
});

test('the model, which holds all points, is read only while somebody looks at it', async () => {
  const { app, session } = startApp(({ state }) => {
    state.model = { lines: [] };
  });
  await settle();
  const reads = () => session.requests.filter(({ method }) => method === 'figure/get').length;
  const before = reads();
  session.changeFigure();
  await settle();
  expect([reads(), app.figure.model.value]).toEqual([before, null]);
  const stop = app.figure.watchModel();
  await settle();
  session.changeFigure();
  await settle();
  expect(reads()).toBe(before + 2);
  expect(app.figure.model.value).toEqual({ lines: [] });
  stop();
  expect(app.figure.model.value).toBeNull();
});
