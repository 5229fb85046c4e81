import { expect, test } from 'vitest';
import { settle, startApp } from '../../tests/unit/twins';
import { Fingers, mergeGesture, type PendingGesture, wheelGesture } from './core/gestures';
import { readFileSync } from 'node:fs';
import { codedColor, colorOf, kLineColors } from './core/colors';
import { base64 } from './core/base64';
import { short } from './core/model';
import { axisTexts } from './core/turnedAxes';
import { TurnedSurface } from './core/turning';
import type { Mesh } from '../engine/core/protocol';

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
  const pinch = { kind: 'pinch', x: 9, y: 9, scaleX: 2, scaleY: 1 } as const;
  const pan = { kind: 'pan', dx: 1, dy: 0 } as const;
  expect([pan, pinch, pan, pinch].reduce<PendingGesture[]>(mergeGesture, [])).toEqual([
    { kind: 'pan', dx: 2, dy: 0 },
    { ...pinch, scaleX: 4 },
  ]);
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

/// Four points of a plane, x and y from 0 to 1, z as given; base64 of 32-bit floats.
const meshOf = (z: number[]): Mesh => ({
  surfaces: [
    {
      numRows: 2,
      numCols: 2,
      points: base64(
        String.fromCharCode(
          ...new Uint8Array(new Float32Array([0, 0, z[0]!, 1, 0, z[1]!, 0, 1, z[2]!, 1, 1, z[3]!]).buffer),
        ),
      ),
    },
  ],
  xlims: { lower: 0, upper: 1 },
  ylims: { lower: 0, upper: 1 },
  zlims: { lower: 0, upper: 1 },
  view: { rotation: [0, 0, 0], translation: [0, 0], zoom: 1 },
  colors: ['#000000', '#808080', '#ffffff'],
  revision: 1,
});

test('a surface under the finger is seen as the engine has it, turned and zoomed', () => {
  const surface = new TurnedSurface(meshOf([1, 1, 1, 1]), [0, 0, 200, 200]);
  // Seen from above the box fills the room: x to the right, y upwards.
  expect([...surface.faces().corners].map(Math.round)).toEqual([0, 200, 200, 200, 200, 0, 0, 0]);
  expect(surface.faces().colors[0]).toBe(2);
  const [wall] = surface.walls([[0, 0.25, 1], [0.5], [0.5]]);
  expect([...wall!.corners].map(Math.round)).toEqual([0, 200, 200, 200, 200, 0, 0, 0]);
  expect([...wall!.grid].map(Math.round)).toEqual([50, 200, 50, 0, 0, 100, 200, 100]);
  // A quarter turn about z takes x to y; half the zoom halves it about the middle.
  expect(surface.apply({ kind: 'rotate', dx: 100, dy: 0 }, 200, 200)).toBe(true);
  expect(surface.apply({ kind: 'zoom', scale: 0.5 }, 200, 200)).toBe(true);
  expect([...surface.faces().corners].map(Math.round)).toEqual([150, 150, 150, 50, 50, 50, 50, 150]);
  // From the side the far face is painted first, and what lies outside of the box not at all.
  expect(surface.apply({ kind: 'rotate', dx: 0, dy: -100 }, 200, 200)).toBe(true);
  expect(surface.walls()).toHaveLength(1);
  expect(new TurnedSurface(meshOf([1, 1, 1, 2]), [0, 0, 200, 200]).faces().count).toBe(0);
  expect(surface.apply({ kind: 'reset' }, 200, 200)).toBe(false);
});

test('the axes of a turned surface run along its outline, with the texts at their places', () => {
  for (const [dx, dy] of [[10, -60], [55, -35], [130, -90], [199, -150]] as const) {
    const surface = new TurnedSurface(meshOf([0, 0, 0, 0]), [0, 0, 200, 200]);
    surface.apply({ kind: 'rotate', dx, dy }, 200, 200);
    const corners = surface.walls().flatMap(({ corners: wall }) => [0, 2, 4, 6].map((k) => [wall[k]!, wall[k + 1]!] as const));
    const edges = surface.edges();
    expect(edges.filter(Boolean).length).toBeGreaterThan(1);
    for (const edge of edges) {
      if (!edge) continue;
      const { lower, outward } = edge;
      for (const [x, y] of corners)
        expect((x - lower.x) * outward.x + (y - lower.y) * outward.y).toBeLessThan(1e-3);
    }
  }
  const line = { kind: 'path' as const, role: 'x axis', points: [0, 100, 100, 200] };
  const text = { kind: 'text' as const, role: 'x tick label', text: '1', x: 15, y: 135 + 0.36 * 10, size: 10 };
  const size = { width: 200, height: 200, plotArea: [0, 0, 200, 200] as [number, number, number, number] };
  const [x, y] = axisTexts({ ...size, title: '', description: '', items: [line, text] });
  expect(x!.texts[0]!.share).toBeCloseTo(0.25);
  expect(y).toBeNull();
});
