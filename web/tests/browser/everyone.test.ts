/// Every panel in both themes has no serious finding of axe, and the app works by keys alone.

import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { expect, test } from 'vitest';
import type { Frame, Page } from 'playwright-core';
import { command, settled, show, useBrowser, type Size } from './browser';
import { fillSession } from './stock';

const { open } = useBrowser();
const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');
const kPanels = ['Console', 'Editor', 'Figure', 'Files', 'Variables', 'Help', 'Settings'];

/// Of the page and of the frame of a help page, which axe itself cannot look into.
async function findings(page: Page): Promise<string[]> {
  return (await Promise.all(page.frames().map(findingsOf))).flat();
}

async function findingsOf(frame: Frame): Promise<string[]> {
  await frame.evaluate(axe); // by the debugger, which the page's policy does not concern
  return frame.evaluate(async () => {
    const { violations } = await (window as unknown as { axe: { run(options: object): Promise<{ violations: any[] }> } }).axe.run({
      preload: false, // it would fetch the styles again
    });
    return violations
      .filter((each) => ['serious', 'critical'].includes(each.impact))
      .map(
        (each) =>
          `${each.id}: ${each.nodes
            .slice(0, 3)
            .map((node: any) => `${node.html.slice(0, 120)} ${node.any[0]?.message ?? ''}`)
            .join(' | ')}`,
      );
  });
}

test.each<[Size, 'light' | 'dark']>([
  ['phone', 'light'],
  ['phone', 'dark'],
  ['lying', 'light'],
  ['lying', 'dark'],
  ['tablet', 'light'],
  ['tablet', 'dark'],
  ['desk', 'light'],
  ['desk', 'dark'],
])('no serious finding: %s, %s', async (size, theme) => {
  const { page } = await open(size, { theme, fill: fillSession });
  await show(page, 'Files');
  await page.locator('.file-row', { hasText: 'wave.m' }).getByRole('button').first().click();
  const found: Record<string, string[]> = {};
  const look = async (name: string) => {
    const all = await findings(page);
    if (all.length) found[name] = all;
  };
  for (const panel of kPanels) {
    await show(page, panel);
    await settled(() => page.locator(`#app`).innerText());
    await look(panel);
  }
  await show(page, 'Help');
  await page.getByRole('button', { name: 'Functions' }).click();
  await page.getByRole('button', { name: 'mean' }).click();
  await page.frameLocator('.help-frame').locator('math').first().waitFor();
  await look('a help page');
  await show(page, 'Variables');
  await page.locator('.variables button').first().click();
  await page.locator('.sheet').waitFor();
  await look('a sheet');
  await show(page, 'Figure');
  await page.getByRole('button', { name: 'Configure' }).click();
  await page.locator('.figure-settings fieldset').first().waitFor();
  await look('settings of a figure');
  await page
    .getByRole('button', { name: 'Close' })
    .or(page.getByRole('button', { name: 'Back to the figure' }))
    .first()
    .click();
  await page.locator('[data-panel="figure"]').getByRole('button', { name: 'More actions' }).click();
  await look('a menu');
  await page.getByRole('menuitem', { name: 'Close' }).click();
  await page.locator('dialog').waitFor();
  await look('a dialog');
  expect(found).toEqual({});
});

test('everything by keys: run, recall, leave the field, reach each panel, the list of keys', async () => {
  const { page, session } = await open('desk', { fill: fillSession });
  await page.keyboard.press('Alt+Digit1');
  await page.keyboard.type('for k = 1:3');
  await page.keyboard.press('Enter');
  await page.keyboard.type('end');
  await page.keyboard.press('Enter');
  await expect.poll(() => session.state.history[session.state.history.length - 1]).toBe('for k = 1:3\nend');
  await page.keyboard.type('lins');
  await page.locator('.suggestion').first().waitFor();
  await page.keyboard.press('Tab');
  expect(await page.locator('.composer .cm-content').innerText()).toBe('linspace');
  await page.keyboard.press('Control+a');
  await page.keyboard.press('Delete');
  await page.keyboard.press('ArrowUp');
  expect(await page.locator('.composer .cm-content').innerText()).toContain('for k');
  for (const [k, name] of ['console', 'editor', 'figure', 'files', 'workspace', 'help', 'settings'].entries()) {
    await page.keyboard.press(`Alt+Digit${k + 1}`);
    await expect
      .poll(() =>
        page.evaluate(() => (document.activeElement?.closest('[data-panel]') as HTMLElement | null)?.dataset.panel),
      )
      .toBe(name);
  }
  await page.keyboard.press('?');
  await page.getByRole('heading', { name: 'Keyboard shortcuts' }).waitFor();
  await page.keyboard.press('Escape');
  await expect.poll(() => page.locator('dialog').count()).toBe(0);
  await show(page, 'Help');
  await page.getByRole('button', { name: 'Functions' }).click();
  await page.getByRole('button', { name: 'mean' }).click();
  await page.frameLocator('.help-frame').locator('math').first().waitFor();
  await page.locator('.help-frame').focus();
  // An event of the page: of a real key chromium may lose the acknowledgement when the key hides its frame, and
  // then the press never returns.
  const key = { code: 'Digit3', key: '3', altKey: true };
  await page.frameLocator('.help-frame').locator('body').dispatchEvent('keydown', key);
  await expect.poll(() => page.evaluate(() => document.activeElement?.tagName)).toBe('CANVAS');
  await page.keyboard.press('ArrowRight');
  await page.locator('.figure-tip span').waitFor();
  expect(await page.locator('#figure-summary').textContent()).toContain('Plot “Wave packet” with 2 lines.');
});

test('the own keyboard writes, shifts, repeats delete, and does not cover the line', async () => {
  const { page, session } = await open('phone', { fill: fillSession });
  await page.locator('.composer .cm-content').tap();
  const key = (id: string) => page.locator(`[data-key="${id}"]`);
  await key('q').waitFor();
  expect(await page.locator('.composer .cm-content').getAttribute('inputmode')).toBe('none');
  for (const id of ['shift', 'X', 'x', '=', 'numKeyboard', '1', '2', 'abc', '(', ')', 'deleteBackward'])
    await key(id).tap();
  await expect.poll(() => page.locator('.composer .cm-content').innerText()).toBe('Xx=12(');
  const line = (await page.locator('.composer .cm-line').last().boundingBox())!;
  expect(line.y + line.height).toBeLessThan((await page.locator('.keyboard').boundingBox())!.y);
  await key('deleteBackward').tap();
  await key('enter').tap();
  await expect.poll(() => session.state.history[session.state.history.length - 1]).toBe('Xx=12');
  await page.getByRole('button', { name: 'System keyboard' }).tap();
  await expect.poll(() => page.locator('.composer .cm-content').getAttribute('inputmode')).toBe('text');
  expect(await page.locator('.keyboard').count()).toBe(0);
});

test('a click beside the keyboard hits what it aims at, though the keyboard goes', async () => {
  const { page } = await open('tablet', { fill: fillSession });
  await page.locator('.composer .cm-content').tap();
  await page.locator('.keyboard').waitFor();
  await page.getByRole('button', { name: 'Open projectile.m, line 2' }).click();
  await page.locator('.file-field .cm-activeLine', { hasText: 'nosuch' }).waitFor();
});

test('targets of a finger are large enough', async () => {
  const { page } = await open('phone', { fill: fillSession });
  await command(page, 'x = 1');
  for (const panel of ['Console', 'Files', 'Variables', 'Settings']) {
    await show(page, panel);
    const small = await page.evaluate(() =>
      [...document.querySelectorAll('button, select, a, [role=tab]')]
        .filter((element) => element.checkVisibility() && !element.closest('.visually-hidden'))
        .map((element) => ({ box: element.getBoundingClientRect(), html: element.outerHTML.slice(0, 90) }))
        .filter(({ box }) => box.height < 40 || box.width < 32)
        .map(({ html }) => html),
    );
    expect(small, panel).toEqual([]);
  }
});
