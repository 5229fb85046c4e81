import { expect, test } from 'vitest';
import { settle, startApp } from '../../tests/unit/twins';
import { sizeText, stemLength, trail } from './core/names';

const picked = (name: string, more = {}) => ({ name, size: 3, isFolder: false, text: async () => 'abc', ...more });

async function started() {
  const parts = startApp(({ state }) => {
    state.files.set('a.m', '1').set('sub', null).set('sub/b.m', '2');
  });
  await settle();
  return parts;
}

test('names of every kind', () => {
  expect([stemLength('a.m'), stemLength('.hidden'), stemLength('plain')]).toEqual([1, 7, 5]);
  expect(trail('a/b').map((step) => step.path)).toEqual(['a', 'a/b']);
  expect([0, 999, 1500, 25_000, 3_000_000].map(sizeText)).toEqual(['0 B', '999 B', '1.5 kB', '25 kB', '3.0 MB']);
});

test("the alert of a bad name is the engine's own, and nothing is made", async () => {
  const { app, session } = await started();
  const making = app.files.newFile();
  app.dialogs.current.value!.answer({ action: 0, field: '1bad.m' });
  await settle();
  expect(app.dialogs.current.value).toMatchObject({ title: 'Invalid File Name' });
  app.dialogs.current.value!.answer(null);
  expect(await making).toBeNull();
  expect(session.state.files.has('1bad.m')).toBe(false);
});

test('an import asks first, and refuses folders, other types, and files that cannot be read', async () => {
  const { app, session } = await started();
  const texts: string[] = [];
  const run = async (file: Parameters<typeof app.files.import>[0][0], agree = true) => {
    const importing = app.files.import([file]);
    await settle();
    while (app.dialogs.current.value) {
      const { text, actions, answer } = app.dialogs.current.value;
      texts.push(text);
      answer(agree && actions.length ? { action: 0, field: '' } : null);
      await settle();
    }
    await importing;
  };
  await run(picked('folder', { isFolder: true }));
  await run(picked('photo.png'));
  await run(picked('no.csv'), false);
  await run(picked('yes.csv'));
  await run(picked('broken.csv', { text: () => Promise.reject(new Error()) }));
  expect(texts).toEqual([
    'Importing a directory (folder) is not supported',
    'Importing a file of non-text type (photo.png)',
    'Importing the item "no.csv" into the folder "Work directory". Proceed?',
    'Importing the item "yes.csv" into the folder "Work directory". Proceed?',
    'Importing the item "broken.csv" into the folder "Work directory". Proceed?',
    'Error occurred while importing "broken.csv"',
  ]);
  expect([...session.state.files.keys()].filter((name) => name.endsWith('.csv'))).toEqual(['yes.csv']);
});

test('a deleted file closes its tab, and what was selected and is gone is selected no more', async () => {
  const { app } = await started();
  await app.openFile('a.m');
  app.files.select(['a.m', 'sub']);
  const removing = app.files.remove(['a.m']);
  await settle();
  expect(app.dialogs.current.value).toMatchObject({ title: 'Delete?', actions: [{ label: 'Delete', danger: true }] });
  app.dialogs.current.value!.answer({ action: 0, field: '' });
  await removing;
  expect(app.editor.files.value).toEqual([]);
  expect([...app.files.selected.value]).toEqual([]);
});
