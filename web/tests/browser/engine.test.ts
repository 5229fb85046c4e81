/// The app on the real server and engine, when the program is built: the token, a run and its stop,
/// what an error leads to, a reload in the middle of a run, and the file that comes of it.

import { type ChildProcess, spawn } from 'node:child_process';
import { existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import type { AddressInfo } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { chromium, type Browser, type Page } from 'playwright-core';
import { afterAll, beforeAll, describe, expect, test } from 'vitest';
import { command, settled, show } from './browser';

const program = process.env.KELO ?? new URL('../../../build/release/kelo', import.meta.url).pathname;

test('the program is there', () => {
  expect(existsSync(program), `${program} is missing: scripts/build release kelo pages`).toBe(true);
});

/// A picture of 40,000 faces takes its time where other programs run.
const kManyFaces = { timeout: 150_000 };

describe('the real engine', () => {
  let folder: string;
  let server: ChildProcess;
  let address: string;
  /// Begins the server, at the port and with the keys of last time; gives its address.
  const start = async (...options: string[]): Promise<string> => {
    const [work, state, documents] = ['work', 'state', 'documents'].map((name) => join(folder, name)) as [
      string,
      string,
      string,
    ];
    const places = ['--workdir', work, '--state', state, '--documents', documents];
    server = spawn(program, ['serve', '--no-open', ...places, ...options]);
    return new Promise<string>((resolve, reject) => {
      createInterface({ input: server.stdout! }).once('line', resolve);
      server.once('exit', () => reject(new Error('the server ended')));
    });
  };
  const end = async (signal: NodeJS.Signals): Promise<void> => {
    const ended = new Promise((resolve) => server.once('exit', resolve));
    server.kill(signal);
    await ended;
  };
  let browser: Browser;
  let page: Page;
  const faults: string[] = [];

  beforeAll(async () => {
    folder = mkdtempSync(join(tmpdir(), 'kelo-web-'));
    for (const name of ['work', 'state', 'documents']) mkdirSync(join(folder, name));
    address = await start();
    browser = await chromium.launch({
      executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
      args: ['--no-sandbox', '--host-resolver-rules=MAP evil.test 127.0.0.1'],
    });
    page = await (await browser.newContext({ viewport: { width: 1440, height: 900 } })).newPage();
    page.setDefaultTimeout(60_000);
    page.on('console', (message) => {
      if (message.type() === 'error') faults.push(`${message.text()} ${JSON.stringify(message.location())}`);
    });
    page.on('pageerror', (error) => faults.push(String(error.stack ?? error)));
    await page.goto(address);
    await page.getByRole('button', { name: 'Leave the tour' }).click();
  });
  afterAll(async () => {
    await browser.close();
    await end('SIGINT');
    rmSync(folder, { recursive: true, force: true });
  });

  test('the token is gone from the address bar, and the examples are in the files', async () => {
    expect(page.url()).not.toContain('#');
    await page.locator('.file-row', { hasText: 'tour.m' }).waitFor();
  });

  test('a command, its colours, its variable, its sheet, and an edited element', async () => {
    await command(page, 'A = [1000 2; 3 4.5]');
    await page.locator('.item', { hasText: 'A =' }).last().waitFor();
    await expect.poll(() => page.locator('.item.input .tok-green').count()).toBeGreaterThan(2);
    await page.locator('.variables button', { hasText: 'A' }).first().click();
    await expect.poll(() => page.locator('.sheet td').count()).toBe(4);
    await page.locator('.sheet td').nth(3).click();
    await page.locator('.sheet td').nth(3).click();
    await page.locator('.sheet td input:focus').waitFor();
    await page.keyboard.type('7');
    await page.keyboard.press('Enter');
    await expect.poll(() => page.locator('.sheet td').nth(3).innerText()).toMatch(/7|0\.007/);
    await page.getByRole('button', { name: 'All variables' }).click();
  });

  test('a run that never ends is stopped at once, also after a reload', async () => {
    await command(page, 'k = 0;\nwhile 1\nk = k + 1;\nend');
    await page.getByRole('button', { name: 'Stop' }).waitFor();
    await page.reload();
    await page.getByRole('button', { name: 'Stop' }).first().click();
    await page.getByText('Terminated by user interruption').first().waitFor();
    await page.getByRole('button', { name: 'Run', exact: true }).last().waitFor();
  });

  test('input asks and takes its answer', async () => {
    await command(page, "n = input('How many? ');\nn * 2");
    await page.locator('.composer .prompt', { hasText: 'How many?' }).waitFor();
    await command(page, '21');
    await page.locator('.item', { hasText: '42' }).last().waitFor();
  });

  test('an error leads to its place; the corrected file is written whole', async () => {
    await page.getByRole('button', { name: 'Add File' }).click();
    await page.getByPlaceholder('Only m, csv, txt or dat file').fill('broken.m');
    await page.keyboard.press('Enter');
    const text = page.locator('.file-field .cm-content');
    await text.waitFor();
    await text.focus();
    await page.keyboard.press('Control+a');
    await page.keyboard.press('Delete'); // else the browser itself edits lines, with styles of its own
    await page.keyboard.insertText('v = 20;\ny = 2*nosuch');
    await page.keyboard.press('Control+Enter');
    await page.getByRole('button', { name: 'Open broken.m, line 2' }).click();
    await page.locator('.mark-sign').waitFor();
    await page.keyboard.press('Shift+End');
    await page.keyboard.press('Home');
    await page.keyboard.press('Shift+End');
    await page.keyboard.insertText('y = 2*v');
    await page.keyboard.press('Control+s');
    await expect.poll(() => readFileSync(join(folder, 'work', 'broken.m'), 'utf8')).toBe('v = 20;\ny = 2*v');
  });

  test('help is read and its examples run', async () => {
    await show(page, 'Help');
    await page.locator('[data-panel="help"]').getByRole('searchbox').fill('sum');
    await page.locator('.help-row', { hasText: /^sum$/ }).first().click();
    await page.frameLocator('.help-frame').getByRole('button', { name: 'Try it' }).first().click();
    await page.locator('.item.input').last().waitFor();
  });

  test('a surface of 200 x 200 is turned in the page', async () => {
    await command(page, '[X, Y] = meshgrid(linspace(-3, 3, 200));\nsurf(X, Y, sin(X) .* cos(Y))');
    await show(page, 'Figure');
    const { x, y } = (await page.locator('.figure-frame canvas').boundingBox())!;
    const canvas = page.locator('.figure-frame canvas');
    const pictureOf = () => canvas.evaluate((each) => (each as HTMLCanvasElement).toDataURL());
    const blank = await canvas.evaluate(({ width, height }: HTMLCanvasElement) =>
      Object.assign(document.createElement('canvas'), { width, height }).toDataURL(),
    );
    await expect.poll(pictureOf, kManyFaces).not.toBe(blank);
    const before = await settled(pictureOf);
    await page.mouse.move(x + 100, y + 200);
    await page.mouse.down();
    await page.mouse.move(x + 120, y + 200);
    for (let k = 0; k < 100; k += 4) await page.mouse.move(x + 120 + k, y + 200 + k / 4);
    await expect.poll(pictureOf, kManyFaces).not.toBe(before);
    const turned = await settled(pictureOf);
    await page.mouse.up();
    await expect.poll(pictureOf, kManyFaces).not.toBe(turned); // the engine's own, with all its faces
    expect(await pictureOf()).not.toBe(before);
  });

  test('a file of 50 MB is refused with a word', async () => {
    writeFileSync(join(folder, 'work', 'large.txt'), 'x = 1;\n'.repeat(50_000_000 / 7));
    await page.locator('.file-row', { hasText: 'large.txt' }).getByRole('button').first().click();
    await page.getByRole('heading', { name: 'File Too Large' }).waitFor();
    await page.keyboard.press('Escape');
    await command(page, 'after = 1');
    await page.locator('.item', { hasText: 'after =' }).last().waitFor();
  });

  test('a name that is made to point here gets nothing', async () => {
    const { port } = new URL(address);
    const site = createServer((_, response) => response.end('<!doctype html>'));
    await new Promise<void>((resolve) => site.listen(0, '127.0.0.1', resolve));
    const other = await page.context().newPage();
    expect((await other.goto(`http://evil.test:${port}/`))!.status()).toBe(403);
    await other.goto(`http://evil.test:${(site.address() as AddressInfo).port}/`);
    const reached = await other.evaluate(async (ours) => {
      const opens = (host: string) =>
        new Promise<boolean>((resolve) => {
          const socket = new WebSocket(`ws://${host}:${ours}/session`);
          socket.onopen = () => resolve(true);
          socket.onerror = () => resolve(false);
        });
      const reads = (host: string) => fetch(`http://${host}:${ours}/`).then(({ ok }) => ok).catch(() => false);
      const hosts = ['127.0.0.1', 'localhost', 'evil.test'];
      return Promise.all([...hosts.map(opens), ...hosts.map(reads)]);
    }, port);
    expect(reached).not.toContain(true);
    await other.close();
    site.close();
  });

  test('nothing was refused by the policy, and nothing failed', () => expect(faults.splice(0)).toEqual([]));

  test('an open page comes back to the next server, unless a new token was asked for', async () => {
    await end('SIGKILL');
    await page.getByText('The engine cannot be reached').waitFor();
    expect(await start()).toBe(address);
    await page.getByText('The engine was started anew').waitFor();
    await command(page, 'again = 1');
    await page.locator('.item', { hasText: 'again =' }).last().waitFor();

    await end('SIGKILL');
    const renewed = await start('--new-token');
    expect(renewed).not.toBe(address);
    await page.getByText('This page is not let in').waitFor();
    const second = await page.context().newPage();
    await second.goto(renewed);
    await page.getByText('The engine was started anew').waitFor();
  });
});
