/// What happens to a page from outside: files dropped on it, its file changed by another window, a
/// crash, a new version of the app.

import { expect, test } from 'vitest';
import type { Page } from 'playwright-core';
import { show, useBrowser, type Size } from './browser';
import { fillSession } from './stock';

const { open } = useBrowser();

async function openWave(page: Page): Promise<void> {
  await show(page, 'Files');
  await page.locator('.file-row', { hasText: 'wave.m' }).getByRole('button').first().click();
  await show(page, 'Editor');
  await page.locator('.file-field .cm-line', { hasText: 'envelope = exp' }).click();
  await page.keyboard.press('End');
}

test('a file that is dropped anywhere is imported, and the page stays', async () => {
  const { page, session } = await open('desk', { fill: fillSession });
  const data = await page.evaluateHandle(() => {
    const held = new DataTransfer();
    held.items.add(new File(['a = 1;\n'], 'dropped.m'));
    return held;
  });
  for (const place of ['.composer .cm-content', '.figure-frame canvas', '.panel-head']) {
    const element = page.locator(place).first();
    await element.dispatchEvent('dragover', { dataTransfer: data });
    await page.locator('.drop-sign').waitFor();
    await element.dispatchEvent('drop', { dataTransfer: data });
    await page.locator('dialog .primary:focus').press('Enter');
    await expect.poll(() => session.state.files.get('dropped.m'), { message: place }).toBe('a = 1;\n');
    session.state.files.delete('dropped.m');
  }
  expect(await page.locator('.composer .cm-content').innerText()).not.toContain('a = 1');
});

test.each<Size>(['phone', 'desk'])('a conflict shows every line of both texts: %s', async (size) => {
  const { page, session } = await open(size, { fill: fillSession });
  await openWave(page);
  await page.keyboard.insertText(' % mine');
  session.state.files.set('wave.m', 'function y = wave(x)\n    y = cos(x);\n    y = y(:);\nend\n');
  await page.keyboard.press('Control+s');
  const box = page.locator('.compare pre').nth(1);
  const { x, width, y, height } = (await box.boundingBox())!;
  for (const text of ['y = cos(x)', 'y = y(:)', 'end']) {
    const line = (await box.locator('span', { hasText: text }).first().boundingBox())!;
    expect(line.x >= x && line.x < x + width && line.y > y && line.y < y + height, text).toBe(true);
  }
  await page.getByRole('button', { name: 'Take the other' }).click();
  await page.locator('.file-field .cm-line', { hasText: 'y = cos(x)' }).waitFor();
});

test('what one window saves is seen in the other, with the caret where it was', async () => {
  const { page, context, server, session } = await open('desk', { fill: fillSession });
  const second = await context.newPage();
  await second.goto(server.address);
  await openWave(page);
  await openWave(second);
  await page.bringToFront();
  await page.keyboard.insertText(' % first window');
  await page.keyboard.press('Control+s');
  await expect.poll(() => session.state.files.get('wave.m')).toContain('first window');
  await second.locator('.file-field .cm-activeLine', { hasText: 'first window' }).waitFor();
  expect(await second.locator('.tab.dirty').count()).toBe(0);
});

test('an unsaved text comes back after the page has crashed', async () => {
  const { page, context, server } = await open('phone', { fill: fillSession });
  await openWave(page);
  await page.keyboard.insertText(' % before the crash');
  await expect.poll(() => page.evaluate(() => localStorage.getItem('kelo.draft:wave.m'))).toContain('before the crash');
  const crashed = page.waitForEvent('crash');
  await Promise.all([crashed, page.goto('chrome://crash').catch(() => {})]);
  const next = await context.newPage();
  await next.goto(server.address);
  await next.getByText(/Unsaved changes of “wave.m”/).waitFor();
  await show(next, 'Editor');
  await next.locator('.file-field .cm-line', { hasText: 'before the crash' }).waitFor();
});

test('a new version is told of when the server comes back, and taken when it is wanted', async () => {
  const { page, server } = await open('phone');
  await page.evaluate(() => navigator.serviceWorker.ready);
  await page.reload();
  await page.waitForFunction(() => navigator.serviceWorker.controller !== null);
  server.renew('another');
  server.drop();
  await page.getByText('A new version is ready').waitFor();
  await page.locator('.composer .cm-content').tap();
  await page.keyboard.insertText('half = a command');
  const names = () => page.evaluate(async () => (await caches.keys()).join());
  expect(await names()).toMatch(/kelo-\w+,kelo-another/);
  await page.getByRole('button', { name: 'Reload' }).click();
  await expect.poll(() => names().catch(() => '')).toBe('kelo-another');
  await page.locator('.composer .cm-line', { hasText: 'half = a command' }).waitFor();
});
