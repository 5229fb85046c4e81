/// A browser for the tests: pages at the sizes of devices, on a server of their own. Whatever the
/// page complains of (policy, errors, rejected promises) is collected and fails the test.

import { afterAll, afterEach, beforeAll, expect } from 'vitest';
import { chromium, type Browser, type BrowserContext, type Page } from 'playwright-core';
import type { FakeSession } from '../fake/engine';
import { serve, type TestServer } from './server';

export const kSizes = { phone: [390, 844], lying: [844, 390], tablet: [820, 1180], desk: [1440, 900] } as const;
export type Size = keyof typeof kSizes;
export const kDist = new URL('../../dist', import.meta.url).pathname;

export interface Opened {
  page: Page;
  context: BrowserContext;
  server: TestServer;
  session: FakeSession;
}

export interface Options {
  theme?: 'light' | 'dark';
  tour?: boolean;
  fill?(session: FakeSession): void;
  /// What is done before the page is asked for, and while it loads.
  before?(page: Page): Promise<void>;
  meanwhile?(page: Page): Promise<void>;
}

/// `open` gives a page; `expectRefusals` takes what the page's policy has refused, which else fails.
export function useBrowser() {
  let browser: Browser;
  const faults: string[] = [];
  const opened: Opened[] = [];
  beforeAll(async () => {
    browser = await chromium.launch({
      executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
      args: ['--no-sandbox'],
    });
  });
  afterAll(() => browser.close());
  afterEach(async () => {
    for (const { context, server } of opened.splice(0)) {
      await context.close();
      server.close();
    }
    expect(faults.splice(0)).toEqual([]);
  });

  const expectRefusals = (kind: RegExp) => {
    expect(faults.some((fault) => kind.test(fault))).toBe(true);
    faults.splice(0, faults.length, ...faults.filter((fault) => !kind.test(fault)));
  };
  const open = async (
    size: Size,
    options: Options = {},
  ): Promise<Opened> => {
    const server = await serve(kDist);
    options.fill?.(server.session);
    const [width, height] = kSizes[size];
    const touch = size !== 'desk';
    const context = await browser.newContext({
      viewport: { width, height },
      hasTouch: touch,
      isMobile: touch,
      colorScheme: options.theme ?? 'light',
      acceptDownloads: true,
      reducedMotion: 'reduce',
    });
    if (!options.tour)
      await context.addInitScript(() => {
        if (window !== top) return; // the frame of a help page has no storage
        localStorage.getItem('kelo.preferences') ?? localStorage.setItem('kelo.preferences', '{"tourSeen":true}');
      });
    await context.addInitScript(() => {
      document.addEventListener('securitypolicyviolation', (event) =>
        console.error(`policy: ${event.violatedDirective} ${event.blockedURI}`),
      );
    });
    context.setDefaultTimeout(60_000);
    const page = await context.newPage();
    page.on('console', (message) => {
      if (message.type() === 'error' && !/WebSocket connection|ERR_CONNECTION_REFUSED/.test(message.text()))
        faults.push(message.text());
    });
    page.on('pageerror', (error) => faults.push(String(error.stack ?? error)));
    await options.before?.(page);
    await page.goto(server.address, { waitUntil: options.meanwhile ? 'commit' : 'load' });
    await options.meanwhile?.(page);
    await page.waitForSelector('.composer .cm-content');
    const parts = { page, context, server, session: server.session };
    opened.push(parts);
    return parts;
  };
  return { open, expectRefusals };
}

/// What `read` gives once it has stopped changing.
export async function settled<T>(read: () => T | Promise<T>): Promise<T> {
  let last = await read();
  for (;;) {
    await new Promise((resolve) => setTimeout(resolve, 700));
    const now = await read();
    if (now === last) return now;
    last = now;
  }
}

/// Types into the console and runs it.
export async function command(page: Page, text: string): Promise<void> {
  const input = page.locator('.composer .cm-content');
  await input.click();
  await page.keyboard.insertText(text);
  await page
    .getByRole('button', { name: /^Run$|^Answer$/ })
    .last()
    .click();
}

/// Brings a panel into view by the bar, the tabs or the menu, as the size has it.
export async function show(page: Page, name: string): Promise<void> {
  await page.evaluate(() => (document.activeElement as HTMLElement | null)?.blur());
  await page.locator('.app:not(.editing) nav').first().waitFor(); // the bar makes room for a text field
  const panel = page.locator(`[data-panel="${name === 'Variables' ? 'workspace' : name.toLowerCase()}"]`);
  if (await panel.isVisible()) return;
  const button = page.locator('nav').getByRole('button', { name, exact: true });
  if (await button.isVisible()) await button.click();
  else {
    await page.getByRole('button', { name: 'More', exact: true }).last().click();
    await page.getByRole('menuitem', { name, exact: true }).click();
  }
  await panel.waitFor();
}
