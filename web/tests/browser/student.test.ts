/// The whole way of a student, at three sizes: open, compute, err, correct, write a function, plot,
/// pinch, save, export, find help, come back after a reload and after the server was gone.

import { expect, test } from 'vitest';
import { command, show, useBrowser, type Size } from './browser';
import { pinch } from './fingers';

const { open } = useBrowser();

test.each<[Size, 'light' | 'dark']>([
  ['phone', 'dark'],
  ['tablet', 'light'],
  ['desk', 'dark'],
  ['lying', 'light'],
])('the way of a student: %s, %s', async (size, theme) => {
  const { page, server, session } = await open(size, { theme, tour: true });

  // The tour, and the examples that come with it.
  await page.getByRole('dialog', { name: 'Tour' }).getByRole('button', { name: 'Next' }).click();
  await page.getByRole('button', { name: 'Leave the tour' }).click();
  await expect.poll(() => [...session.state.files.keys()]).toContain('tour.m');

  // Compute and err.
  await command(page, 'x = 1:3');
  await page.getByText('1.0000 1.5000 1.8333').first().waitFor();
  await expect.poll(() => page.locator('.item.input .tok-green').count()).toBeGreaterThan(0);
  session.state.files.set('drop.m', 'v = 20;\ny = 2*nosuch\n');
  session.notify('files/changed', { path: '' });

  // The tap on an error leads to its place; the corrected file runs.
  await show(page, 'Files');
  await page.locator('.file-row', { hasText: 'drop.m' }).getByRole('button').first().click();
  await page.locator('[data-panel="editor"]').getByRole('button', { name: 'Run', exact: true }).click();
  await show(page, 'Console');
  await page.getByRole('button', { name: 'Open drop.m, line 2' }).click();
  await page.locator('.file-field .cm-activeLine', { hasText: 'nosuch' }).waitFor();
  expect(await page.locator('.mark-sign').getAttribute('aria-label')).toContain('not found');
  await page.locator('.file-field .cm-content').focus();
  await page.keyboard.press('End');
  await page.keyboard.press('Shift+Home');
  await page.keyboard.insertText('y = 2*v');
  await page.getByText('unsaved').first().waitFor({ state: 'attached' });
  await page.keyboard.press('Control+Enter');
  await expect.poll(() => session.state.files.get('drop.m')).toBe('v = 20;\ny = 2*v\n');
  await page.getByText('y =', { exact: false }).last().waitFor();

  // Plot, pinch or turn the wheel, look at a point.
  await show(page, 'Console');
  await command(page, 'plot(x, y)');
  await show(page, 'Figure');
  const canvas = page.locator('.figure-frame canvas');
  const box = (await canvas.boundingBox())!;
  const middle = [box.x + box.width / 2, box.y + box.height / 2] as const;
  if (size === 'desk') {
    await page.mouse.move(...middle);
    await page.mouse.wheel(0, -200);
  } else await pinch(page, ...middle, 1.6);
  await expect
    .poll(() => session.requests.filter(({ method }) => method === 'figure/gesture').length)
    .toBeGreaterThan(0);
  const gesture = session.requests.find(
    ({ method, params }) => method === 'figure/gesture' && (params as unknown as { kind: string }).kind === 'pinch',
  )!;
  expect((gesture.params as unknown as { scaleX: number }).scaleX).toBeGreaterThan(1);
  if (size === 'desk') await page.mouse.move(middle[0] + 30, middle[1]);
  else await page.touchscreen.tap(middle[0] + 30, middle[1]);
  await page.locator('.figure-tip span').waitFor();

  // Save twice under one name, list, export.
  for (const expected of ['Saved as “Fig_1”', 'Figure named "Fig_1" already exists.']) {
    await page.locator('[data-panel="figure"]').getByRole('button', { name: 'Save' }).click();
    expect(await page.locator('dialog').getByRole('button', { name: 'Save' }).isDisabled()).toBe(true);
    await page.getByPlaceholder('Enter a name').fill('Fig_1');
    await page.keyboard.press('Enter');
    await page.getByText(expected).first().waitFor();
  }
  await page.getByRole('button', { name: 'OK' }).click();
  await page.getByRole('button', { name: 'List', exact: true }).click();
  await page.locator('.figure-row', { hasText: 'Fig_1' }).click();
  await page.locator('[data-panel="figure"]').getByRole('button', { name: 'More actions' }).click();
  const download = page.waitForEvent('download');
  await page.getByRole('menuitem', { name: 'Export as Image' }).click();
  expect((await download).suggestedFilename()).toMatch(/\.png$/);

  // Help: search, read, run an example. Nothing of a page runs by itself.
  await show(page, 'Help');
  await page.locator('[data-panel="help"]').getByRole('searchbox').fill('mean');
  await page.locator('.help-row', { hasText: 'mean' }).first().click();
  const frame = page.frameLocator('.help-frame');
  await frame.locator('math').first().waitFor();
  await expect
    .poll(() =>
      frame.locator('img').evaluateAll((all) => all.map((each) => (each as HTMLImageElement).naturalWidth)),
    )
    .toEqual([60]);
  await page.getByRole('searchbox', { name: 'Find in page' }).fill('mean');
  await page.getByText(/1 of \d+ found/).waitFor();
  await frame.locator('mark.current').waitFor();
  await frame.getByRole('link', { name: 'median' }).click();
  await page.getByRole('heading', { name: 'median' }).waitFor();
  await page.locator('[data-panel="help"]').getByRole('button', { name: 'Back' }).click();
  await page.getByRole('heading', { name: 'mean' }).waitFor();
  await frame.getByRole('button', { name: 'Try it' }).click();
  await expect.poll(() => session.state.history.join()).toContain('mean(A)');

  // What is typed and not saved survives a reload; the console is as it was.
  await show(page, 'Editor');
  await page.locator('.file-field .cm-content').focus();
  await page.keyboard.insertText('% not saved');
  await page.reload();
  await page.getByText(/Unsaved changes of “drop.m”/).waitFor();
  await show(page, 'Editor');
  await page.locator('.file-field', { hasText: '% not saved' }).waitFor();
  await show(page, 'Console');
  await page.locator('.item').first().waitFor();

  // The server goes and comes back.
  const { port } = server.server.address() as { port: number };
  server.server.close();
  server.drop();
  await page.getByText('The engine cannot be reached').waitFor();
  await new Promise<void>((resolve) => {
    server.server.listen(port, '127.0.0.1', resolve);
  });
  await page.getByText('Connected again').waitFor();
  await command(page, 'again = 1');
  await page.getByText('again =', { exact: false }).first().waitFor();
});
