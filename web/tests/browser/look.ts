/// Pictures of every panel at four sizes in both themes, to be looked at. `npm run look [NAME...]`

import { mkdir } from 'node:fs/promises';
import { chromium, type Page } from 'playwright-core';
import { serve } from './server';
import { fillSession } from './stock';

const kSizes: Record<string, [number, number, boolean]> = {
  phone: [390, 844, true],
  lying: [844, 390, true],
  tablet: [820, 1180, true],
  desk: [1440, 900, false],
};
const wanted = process.argv.slice(2);
const panels = ['console', 'editor', 'figure', 'files', 'workspace', 'help', 'settings'];
const out = new URL('./out/', import.meta.url).pathname;

async function shoot(page: Page, name: string): Promise<void> {
  await page.waitForTimeout(250);
  await page.screenshot({ path: `${out}${name}.png` });
}

const browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
await mkdir(out, { recursive: true });
for (const [size, [width, height, touch]] of Object.entries(kSizes)) {
  for (const theme of ['light', 'dark'] as const) {
    const names = panels.map((panel) => `${size}-${theme}-${panel}`);
    if (wanted.length && !names.some((name) => wanted.some((word) => name.includes(word)))) continue;
    const server = await serve(new URL('../../dist', import.meta.url).pathname);
    fillSession(server.session);
    const context = await browser.newContext({
      viewport: { width, height },
      hasTouch: touch,
      isMobile: touch,
      colorScheme: theme,
      deviceScaleFactor: touch ? 2 : 1,
    });
    await context.addInitScript(() => {
      if (window !== top) return;
      localStorage.setItem('kelo.preferences', '{"tourSeen":true}');
      localStorage.setItem('kelo.openFiles', '{"paths":["wave.m","projectile.m"],"active":"wave.m"}');
    });
    const page = await context.newPage();
    page.on('console', (message) => {
      if (message.type() === 'error') console.log(size, theme, message.text());
    });
    page.on('pageerror', (error) => console.log(size, theme, error.message));
    await page.goto(server.address);
    await page.waitForSelector('.item');
    for (const [k, panel] of panels.entries()) {
      if (wanted.length && !wanted.some((word) => names[k]!.includes(word))) continue;
      await page.keyboard.press(`Alt+Digit${k + 1}`);
      await page.evaluate(() => (document.activeElement as HTMLElement | null)?.blur());
      if (panel === 'help') await page.locator('.help-row').first().click();
      await shoot(page, names[k]!);
    }
    await context.close();
    server.close();
  }
}
await browser.close();
