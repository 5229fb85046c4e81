import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { expect, test } from 'vitest';
import { memoryStore, settle, startApp } from '../../tests/unit/twins';
import { Keyboard } from '../keyboard/core/keyboard';
import { resolveLink } from '../help/core/help';
import { Layout, modeFor } from './core/layout';

test.each([
  [390, 844, 'phone'],
  [844, 390, 'lying'],
  [820, 1180, 'tablet'],
  [1180, 820, 'desk'],
  [1440, 900, 'desk'],
  [1024, 700, 'tablet'],
  [320, 568, 'phone'],
])('%i x %i is laid out as %s', (width, height, mode) => expect(modeFor(width, height)).toBe(mode));

test('panels come into view at every size, and the console can have all the room', () => {
  const layout = new Layout(memoryStore());
  layout.resize(820, 1180);
  layout.choose('figure');
  expect(layout.visible.value).toEqual(['figure', 'console']);
  layout.choose('console');
  expect(layout.visible.value).toEqual(['console']);
  layout.choose('help');
  expect(layout.visible.value).toEqual(['help', 'console']);
  layout.resize(390, 844);
  expect(layout.visible.value).toEqual(['help']);
  layout.resize(1440, 900);
  expect(layout.visible.value).toEqual(['files', 'workspace', 'editor', 'console', 'help']);
});

test('a panel that is resized has all the room until it or another is asked for', () => {
  const layout = new Layout(memoryStore());
  layout.resize(1440, 900);
  layout.resizePanel('figure');
  expect(layout.visible.value).toEqual(['figure']);
  layout.show('console');
  expect(layout.isShown('console')).toBe(true);
  layout.resizePanel('files');
  layout.resizePanel('files');
  expect(layout.visible.value).toHaveLength(5);
});

test('dividers stay within reach and are remembered; a spoilt memory counts as none', () => {
  const store = memoryStore();
  const layout = new Layout(store);
  layout.move('center', 5);
  layout.save();
  expect(new Layout(store).shares.value.center).toBe(0.85);
  store.write('layout', '{"shares":{"center":"x"}');
  expect(new Layout(store).shares.value.center).toBe(0.56);
});

test('the first start shows the tour once', async () => {
  const store = memoryStore();
  const { app } = startApp(() => {}, {
    ...store,
    write: (key, text) => key !== 'preferences' && store.write(key, text),
  });
  await settle();
  expect(app.tour.step.value?.id).toBe('welcome');
  for (let k = 0; k < 6; k++) app.tour.next();
  expect([app.tour.step.value, app.layout.front.value, app.preferences.value.value.tourSeen]).toEqual([
    null,
    'console',
    true,
  ]);
});

test('a press acts before the engine has answered, and its answer holds', async () => {
  const { app, session } = startApp();
  await settle();
  let text = '';
  const keyboard: Keyboard = app.keyboard;
  keyboard.target.value = {
    insert: (more) => (text += more),
    deleteBackward: () => (text = text.slice(0, -1)),
    enter: () => (text += '!'),
    moveCaret: () => {},
  };
  for (const key of ['shift', 'A', 'b', 'z', 'deleteBackward', 'enter', 'numKeyboard', '7', 'abc']) {
    void keyboard.press(key);
  }
  expect([text, keyboard.type.value]).toEqual(['Ab!7', 'alpha']);
  await keyboard.press('shift', 'double');
  await keyboard.press('A');
  expect([text, keyboard.type.value, keyboard.capLocked.value]).toEqual(['Ab!7A', 'alphaCap', true]);

  session.answerPress = () => ({ keyboardType: 'symbol', capLocked: false, insert: 'sin(' });
  const press = keyboard.press('B');
  expect(text).toBe('Ab!7AB');
  await press;
  expect([text, keyboard.type.value]).toEqual(['Ab!7Asin(', 'symbol']);
  session.answerPress = () => {
    throw new Error('lost');
  };
  await keyboard.press('8');
  expect(text).toBe('Ab!7Asin(8');
});

test('links of help pages stay among them', () => {
  expect(resolveLink('functions/sum.html', '../guide/a.html#top')).toBe('guide/a.html');
  expect(resolveLink('functions/sum.html', 'mean.html')).toBe('functions/mean.html');
  for (const link of ['../../etc/passwd', 'javascript:alert(1)', 'https://x.test/', '//x.test/a', '#here']) {
    expect(resolveLink('functions/sum.html', link)).toBeNull();
  }
});

/// All sources of the app with their texts.
function sources(folder: string): [string, string][] {
  return readdirSync(folder, { withFileTypes: true }).flatMap((entry) => {
    const path = join(folder, entry.name);
    return entry.isDirectory() ? sources(path) : [[path, readFileSync(path, 'utf8')] as [string, string]];
  });
}

test('what a person reads stands in the catalogue, and colours stand in one file', () => {
  const all = sources(new URL('..', import.meta.url).pathname).filter(([path]) => !/\.test\./.test(path));
  const words = all
    .filter(([path]) => path.endsWith('.tsx'))
    .flatMap(([path, text]) =>
      (
        text.match(
          /(?:<\w[^<>{}=]*>|<\/\w+>)[ \t]*[A-Za-z][a-z ]{2,}[^<>{}()=;]*<\/|(?:aria-label|title|placeholder)="[A-Za-z][^"]*"/g,
        ) ?? []
      ).map((found) => `${path}: ${found}`),
    );
  expect(words).toEqual([]);
  const colors = all
    .filter(([path]) => path.endsWith('.css') && !path.endsWith('tokens.css'))
    .flatMap(([path, text]) =>
      (text.match(/#[0-9a-f]{3,8}\b|rgb\(/gi) ?? [])
        .filter((found) => found !== '#fff')
        .map((found) => `${path}: ${found}`),
    );
  expect(colors).toEqual([]);
});
