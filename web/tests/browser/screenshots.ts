/// The pictures of the documents: the app on the real server at three sizes.
/// `node build/script.mjs tests/browser/screenshots.ts PROGRAM FOLDER`

import { spawn } from 'node:child_process';
import { cp, mkdtemp, rm } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { chromium, type Browser, type Page } from 'playwright-core';

const [program, folder] = process.argv.slice(2) as [string, string];
const kOscillations = `x = linspace(0, 4*pi, 401);
plot(x, sin(x), x, exp(-x/5).*cos(2*x), 'r--')
title('Two oscillations'); xlabel('Time (s)')
legend('free', 'damped'); grid('on')`;
const kSurface = `[X, Y] = meshgrid(linspace(-3, 3, 60));
surf(X, Y, sin(X).*cos(Y).*exp(-(X.^2 + Y.^2)/9))
title('A surface')`;
const kSolution = `A = [2 1; 1 3]; b = [3; 5];
A \\ b`;

interface Shot {
  name: string;
  size: [number, number];
  theme: 'light' | 'dark';
  commands: string[];
  panel?: string;
  openFile?: string;
}

const kShots: Shot[] = [
  { name: 'desk', size: [1440, 900], theme: 'light', commands: [kSolution, kOscillations], openFile: 'predators.m' },
  { name: 'tablet', size: [820, 1180], theme: 'dark', commands: [kSolution, kSurface], panel: 'Figure' },
  { name: 'phone', size: [390, 844], theme: 'light', commands: [kOscillations], panel: 'Figure' },
  { name: 'phone-console', size: [390, 844], theme: 'dark', commands: [kSolution, 's = cumsum(1 ./ (1:4))', 'y = 2*z'] },
];

async function show(page: Page, panel: string): Promise<void> {
  await page.evaluate(() => (document.activeElement as HTMLElement | null)?.blur());
  await page.locator('nav').getByRole('button', { name: panel, exact: true }).click();
}

async function run(page: Page, command: string): Promise<void> {
  const composer = page.locator('.composer .cm-content');
  await composer.click();
  await page.keyboard.insertText(command);
  await page.getByRole('button', { name: 'Run', exact: true }).last().click();
  await page.waitForTimeout(400);
}

async function photograph(page: Page, shot: Shot): Promise<void> {
  await page.waitForSelector('.composer .cm-content');
  if (shot.openFile) await page.locator('.file-row', { hasText: shot.openFile }).getByRole('button').first().click();
  for (const command of shot.commands) await run(page, command);
  if (shot.panel) await show(page, shot.panel);
  await page.waitForTimeout(600);
  await page.screenshot({ path: join(folder, `${shot.name}.png`) });
}

async function openPage(browser: Browser, { size: [width, height], theme }: Shot, address: string): Promise<Page> {
  const touch = width < 1000;
  const context = await browser.newContext({
    viewport: { width, height },
    hasTouch: touch,
    isMobile: touch,
    colorScheme: theme,
    deviceScaleFactor: width < 500 ? 2 : 1,
    reducedMotion: 'reduce',
  });
  await context.addInitScript(() => {
    if (window === top) localStorage.setItem('kelo.preferences', '{"tourSeen":true}');
  });
  const page = await context.newPage();
  await page.goto(address);
  return page;
}

/// A server of its own for each picture, in a new folder with the examples.
async function take(browser: Browser, shot: Shot): Promise<void> {
  const home = await mkdtemp(join(tmpdir(), 'kelo-pictures-'));
  const workdir = join(home, 'Kelo'); // shown as ~/Kelo
  await cp('../examples', workdir, { recursive: true });
  const options = ['--port', '0', '--no-open', '--workdir', workdir, '--state', join(home, 'state')];
  const documents = ['--documents', join(home, 'documents')];
  const server = spawn(program, ['serve', ...options, ...documents], { env: { ...process.env, HOME: home } });
  try {
    const address = await new Promise<string>((resolve) =>
      createInterface({ input: server.stdout }).once('line', resolve),
    );
    const page = await openPage(browser, shot, address);
    await photograph(page, shot);
    await page.context().close();
  } finally {
    server.kill();
    await rm(home, { recursive: true, force: true });
  }
}

const browser = await chromium.launch({ executablePath: process.env.CHROMIUM, args: ['--no-sandbox'] });
try {
  for (const shot of kShots) await take(browser, shot);
} finally {
  await browser.close();
}
