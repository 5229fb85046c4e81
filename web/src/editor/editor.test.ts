import { expect, test } from 'vitest';
import { memoryStore, settle, startApp } from '../../tests/unit/twins';
import type { FakeSession } from '../../tests/fake/engine';
import { isDirty } from './core/editor';

const withFile = ({ state }: FakeSession) => {
  state.files.set('f.m', 'a = 1\nb = nosuch\n');
};

async function opened(store = memoryStore()) {
  const parts = startApp(withFile, store);
  await settle();
  await parts.app.openFile('f.m');
  return parts;
}
const fileOf = ({ app }: Awaited<ReturnType<typeof opened>>) => app.editor.files.value[0]!;

test('an unsaved text becomes a draft, comes back after a crash, and can be dropped', async () => {
  const store = memoryStore();
  const first = await opened(store);
  first.app.editor.changed('f.m', 'changed');
  first.clock.pass(1000);
  const second = startApp(withFile, store);
  await settle();
  expect(second.app.editor.active.value).toMatchObject({ path: 'f.m', text: 'changed' });
  expect(isDirty(second.app.editor.active.value!)).toBe(true);
  second.app.dialogs.toast.value!.onAction!();
  expect(second.app.editor.active.value!.text).toContain('nosuch');
  expect(store.keys()).not.toContain('draft:f.m');
});

test('a saved text leaves no draft; a full store costs nothing but the draft', async () => {
  const parts = await opened(memoryStore(60));
  parts.app.editor.changed('f.m', 'y');
  expect(parts.app.editor.keepAll()).toBe(true);
  parts.app.editor.changed('f.m', 'x'.repeat(200));
  expect(parts.app.editor.keepAll()).toBe(false);
  parts.clock.pass(1000);
  expect(await parts.app.editor.save('f.m')).toBe(true);
  expect(parts.session.state.files.get('f.m')).toBe('x'.repeat(200));
  expect(isDirty(fileOf(parts))).toBe(false);
  expect(parts.store.keys()).not.toContain('draft:f.m');
});

test.each([
  [0, 'mine'],
  [1, 'theirs, which is longer'],
])('a conflict shows both texts and keeps the chosen one', async (action, kept) => {
  const parts = await opened();
  parts.session.state.files.set('f.m', 'theirs, which is longer');
  parts.app.editor.changed('f.m', 'mine');
  const saving = parts.app.editor.save('f.m');
  await settle();
  const dialog = parts.app.dialogs.current.value!;
  expect(dialog.compare).toMatchObject({ left: 'mine', right: 'theirs, which is longer' });
  dialog.answer({ action, field: '' });
  expect(await saving).toBe(true);
  expect(parts.session.state.files.get('f.m')).toBe(kept);
  expect(fileOf(parts)).toMatchObject({ text: kept, savedText: kept });
});

test('what another window makes of a file is taken over, but not over unsaved text', async () => {
  const parts = await opened();
  const write = async (text: string) => {
    parts.session.state.files.set('f.m', text);
    parts.session.notify('files/changed', { path: '' });
    await settle();
  };
  await write('theirs');
  expect(fileOf(parts)).toMatchObject({ text: 'theirs', savedText: 'theirs' });
  parts.app.editor.changed('f.m', 'mine');
  await write('theirs again');
  expect(fileOf(parts)).toMatchObject({ text: 'mine', savedText: 'theirs' });
});

test('errors of a run stand in the margin until the next run', async () => {
  const parts = await opened();
  const running = parts.app.runFile('f.m');
  await running;
  expect(fileOf(parts).marks).toMatchObject([{ line: 2, warning: false }]);
  parts.app.console.run('x = 1');
  await settle();
  expect(fileOf(parts).marks).toEqual([]);
});

test('closing asks about unsaved text, and a file that is moved or deleted takes its tab along', async () => {
  const parts = await opened();
  parts.app.editor.changed('f.m', 'unsaved');
  const closing = parts.app.editor.close('f.m');
  await settle();
  parts.app.dialogs.current.value!.answer(null);
  await closing;
  expect(parts.app.editor.files.value).toHaveLength(1);
  parts.app.editor.moved('f.m', 'sub/g.m');
  expect(parts.app.editor.activePath.value).toBe('sub/g.m');
  parts.app.editor.moved('sub', null);
  expect(parts.app.editor.files.value).toHaveLength(0);
});
