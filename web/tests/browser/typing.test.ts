/// Letters are left to the browser until they are drawn: nothing that comes in between loses one.

import { expect, test } from 'vitest';
import type { Page } from 'playwright-core';
import { command, useBrowser } from './browser';

const { open } = useBrowser();

/// From here on no picture is drawn, as far as the page knows, until `drawPictures`.
const holdPictures = (page: Page) =>
  page.evaluate(() => {
    const waiting: FrameRequestCallback[] = [];
    const { requestAnimationFrame } = window;
    window.requestAnimationFrame = (work) => waiting.push(work) + 1e6;
    (window as never as { draw(): void }).draw = () => {
      window.requestAnimationFrame = requestAnimationFrame;
      waiting.forEach((work) => work(performance.now()));
    };
  });
const drawPictures = (page: Page) => page.evaluate(() => (window as never as { draw(): void }).draw());
const fieldText = (page: Page) => page.locator('.composer .cm-content').innerText();
/// Without waiting for a picture, as `click` would.
const press = (page: Page, selector: string) =>
  page.locator(selector).evaluate((button: HTMLElement) => button.click());

test('a command runs whole, though its last letters are not drawn yet', async () => {
  const { page, session } = await open('desk');
  await page.locator('.composer .cm-content').focus();
  await page.keyboard.type('x=1');
  await holdPictures(page);
  await page.keyboard.type('23+4');
  await press(page, '.run-button');
  await expect.poll(() => session.state.history).toEqual(['x=123+4']);
  expect((await fieldText(page)).trim()).not.toContain('4');
  await drawPictures(page);
});

test('what comes in between takes its place beside the letters', async () => {
  const { page, session } = await open('desk');
  await command(page, 'earlier = 1');
  await page.locator('.composer .cm-content').focus();
  await page.keyboard.type('a');
  await holdPictures(page);
  await page.keyboard.type('bc');
  await page.keyboard.press('ArrowLeft');
  await page.keyboard.type('d');
  await page.keyboard.press('End');
  await page.keyboard.type('(e)+f');
  session.setStatus('paused'); // which dresses the field anew
  const runButton = () => page.evaluate(() => document.querySelector('.run-button')!.textContent);
  await expect.poll(runButton).toBe('Go on');
  session.setStatus('idle');
  await expect.poll(runButton).toBe('Run');
  expect(await fieldText(page)).toBe('abdc(e)+f');
  await page.keyboard.type('g');
  await press(page, '.composer [aria-label="Previous command"]');
  expect(await fieldText(page)).toBe('earlier = 1');
  await press(page, '.composer [aria-label="Next command"]');
  expect(await fieldText(page)).toBe('abdc(e)+fg');
  await drawPictures(page);
  await page.keyboard.press('Control+z');
  expect(await fieldText(page)).not.toBe('abdc(e)+fg');
});

test('a program typed at full speed stands as it was typed, with its colours', async () => {
  const { page, session } = await open('phone');
  await page.evaluate(() => localStorage.setItem('kelo.preferences', '{"tourSeen":true,"keyboard":"system"}'));
  await page.reload();
  await page.locator('.composer .cm-content').focus();
  const lines = ['total = 0;', 'for k = 1:100', 'total = total + k', 'end % the sum'];
  for (const [k, line] of lines.entries()) {
    if (k) await page.keyboard.press('Shift+Enter');
    await page.keyboard.type(line);
  }
  await page.locator('.composer .tok-green').first().waitFor();
  const typed = (await fieldText(page)).split('\n').map((line) => line.trim());
  expect(typed.filter(Boolean)).toEqual(lines);
  await press(page, '.run-button');
  await expect.poll(() => session.state.history.length).toBe(1);
});
