/// Times of the app at a sixfold slower processor: `npm run measure [ADDRESS]`, the address of a
/// running `kelo serve` with its token, or else the engine in memory. Prints a table.

import { chromium, type CDPSession, type Page } from 'playwright-core';
import { keyToScreen, processorTime } from './keyTimes';
import { serve } from './server';

const kTurns = 9;
const median = (all: number[]) => all.sort((a, b) => a - b)[all.length >> 1]!;
const row = (what: string, all: number[]) =>
  console.log(`| ${what} | ${median(all).toFixed(0)} ms | ${Math.max(...all).toFixed(0)} ms |`);

const given = process.argv[2];
const server = given ? null : await serve(new URL('../../dist', import.meta.url).pathname);
const address = given ?? server!.address;
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
  args: ['--no-sandbox'],
});
const context = await browser.newContext({ viewport: { width: 390, height: 844 }, serviceWorkers: 'block' });
await context.addInitScript(() => localStorage.setItem('kelo.preferences', '{"tourSeen":true,"keyboard":"system"}'));

interface Times {
  first?: number;
  taken?: number;
}
/// Types a character as soon as there is a field, and notes when it was drawn, and when it stood in
/// the console's own field. It runs in the page, so that nothing of the measurement comes in between.
function typeAtOnce(): void {
  const times: Times = ((window as never as { times: Times }).times = {});
  const look = () => {
    const field = document.querySelector<HTMLElement>('#first textarea, .composer .cm-content');
    if (field && times.first === undefined) {
      field.focus();
      document.execCommand('insertText', false, 'x');
      times.first = Infinity;
      requestAnimationFrame(() => {
        times.first = performance.now();
      });
    }
    if (document.querySelector('.composer .cm-content')?.textContent === 'x') {
      times.taken = performance.now();
    } else requestAnimationFrame(look);
  };
  requestAnimationFrame(look);
}

async function open(rate: number, script?: () => void): Promise<[Page, CDPSession]> {
  const page = await context.newPage();
  if (script) await page.addInitScript(script);
  const client = await context.newCDPSession(page);
  await client.send('Emulation.setCPUThrottlingRate', { rate });
  await page.goto(address);
  return [page, client];
}

/// From the start of the navigation until a typed character is drawn, and until it has come into the
/// console's own field.
async function firstInput(): Promise<Required<Times>> {
  const [page] = await open(6, typeAtOnce);
  await page.waitForTimeout(4000);
  const times = await page.evaluate(() => (window as never as { times: Required<Times> }).times);
  await page.close();
  return times;
}

/// The browser's own part: a page of plain text from the same server.
async function plainPage(): Promise<number> {
  const page = await context.newPage();
  const client = await context.newCDPSession(page);
  await client.send('Emulation.setCPUThrottlingRate', { rate: 6 });
  await page.goto(new URL('/licences.txt', address).href);
  await page.waitForTimeout(1500);
  const time = await page.evaluate(() => performance.getEntriesByType('paint')[0]?.startTime ?? NaN);
  await page.close();
  return time;
}

/// The browser's own part of a key: a plain field.
async function plainField(): Promise<Page> {
  const plain = await context.newPage();
  await plain.setContent('<div class="cm-content" contenteditable>text</div>');
  return plain;
}

/// Key to screen in the console beside the browser's own part, by turns, since other programs run too.
async function keys(inConsole: Page): Promise<void> {
  const part = async (name: string, field: Page) => ({
    ...{ name, field, client: await context.newCDPSession(field) },
    ...{ clock: [] as number[], processor: [] as number[] },
  });
  const fields = [await part('a plain field', await plainField()), await part('the console', inConsole)];
  for (let round = 0; round < 3; round++) {
    for (const { field, client, clock, processor } of fields) {
      await field.bringToFront();
      await field.locator('.cm-content').first().focus();
      await client.send('Emulation.setCPUThrottlingRate', { rate: 1 });
      processor.push(...(await processorTime(browser, field, 10)));
      await client.send('Emulation.setCPUThrottlingRate', { rate: 6 });
      await field.waitForTimeout(300);
      clock.push(...(await keyToScreen(browser, field, 10)));
    }
  }
  for (const { name, clock, processor } of fields) {
    row(`key to screen in ${name}`, clock);
    row(`key to screen in ${name}, processor time x 6`, processor.map((time) => 6 * time));
  }
  await fields[0]!.field.close();
}

await open(1).then(([page]) => page.waitForTimeout(500).then(() => page.close()));
console.log('| at a sixfold slower processor | median | longest |\n|---|---|---|');
const plain: number[] = [];
const times: Required<Times>[] = [];
for (let k = 0; k < kTurns; k++) {
  plain.push(await plainPage());
  times.push(await firstInput());
}
row('a page of plain text, drawn', plain);
row('first input accepted and drawn', times.map(({ first }) => first));
row("the console's own field has taken it over", times.map(({ taken }) => taken));

const [page] = await open(6);
await page.locator('.composer .cm-content').click();
await keys(page);
await page.bringToFront();

if (given) {
  const stops: number[] = [];
  for (let k = 0; k < kTurns; k++) {
    await page.keyboard.press('Control+a');
    await page.keyboard.insertText('k = 0; while 1 k = k + 1; end'.replace('1 k', '1\nk').replace('; end', ';\nend'));
    await page.keyboard.press('Control+Enter');
    await page.getByRole('button', { name: 'Stop' }).waitFor();
    await page.waitForTimeout(300);
    stops.push(
      await page.evaluate(
        () =>
          new Promise<number>((resolve) => {
            const began = performance.now();
            document.querySelector<HTMLElement>('.run-button.danger')!.click();
            const look = () => {
              if (document.querySelector('.run-button.danger')) requestAnimationFrame(look);
              else resolve(performance.now() - began);
            };
            look();
          }),
      ),
    );
  }
  row('Stop of an endless loop', stops);
  await frames('x = linspace(0, 100, 1e6);\nplot(x, sin(x) + 0.1*rand(size(x)))', 'pan of 1e6 points');
  await frames('[X, Y] = meshgrid(linspace(-3, 3, 200));\nsurf(X, Y, sin(X) .* cos(Y))', 'turn of 200 x 200 points');
}

/// The times between pictures while the mouse drags a figure, at the processor's own speed.
async function frames(text: string, what: string): Promise<void> {
  const wide = await browser.newContext({ viewport: { width: 1440, height: 900 }, serviceWorkers: 'block' });
  const figure = await wide.newPage();
  await figure.goto(address);
  await figure.keyboard.press('Escape'); // the tour
  await figure.locator('.composer .cm-content').click();
  await figure.keyboard.insertText(text);
  await figure.keyboard.press('Control+Enter');
  await figure.waitForTimeout(4000);
  const { x, y } = (await figure.locator('.figure-frame canvas').boundingBox())!;
  await figure.mouse.move(x + 100, y + 300);
  await figure.mouse.down();
  await figure.mouse.move(x + 115, y + 300);
  await figure.waitForTimeout(700);
  const times = figure.evaluate(async () => {
    const all: number[] = [];
    for (let k = 0, last = performance.now(); k < 90; k++) {
      const now = await new Promise<number>(requestAnimationFrame);
      all.push(now - last);
      last = now;
    }
    return all;
  });
  for (let k = 0; k < 200; k++) {
    await figure.mouse.move(x + 115 + k, y + 300);
    await figure.waitForTimeout(6);
  }
  row(`between pictures, ${what}`, await times);
  await wide.close();
}
await browser.close();
server?.close();
